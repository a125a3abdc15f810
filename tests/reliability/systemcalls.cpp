#include "systemcalls.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using systemcalls::Call;
using systemcalls::Kind;

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the system calls ask it
systemcalls::Watcher *watcher = nullptr;

/// The path by which the system knows the open file at this moment.
QByteArray pathOf(int descriptor) {
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const auto size = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), qMax(size, ssize_t(0))};
}

/// Calls the system's own function of that name, if the watcher lets it.
template <class Function, class Describe, class... Arguments>
auto watched(const char *name, Describe describe, Arguments... arguments) {
    auto *const perform = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
    if (watcher == nullptr) {
        return perform(arguments...);
    }
    Call call = describe();
    const QByteArray &folder = watcher->folder();
    if (!(call.path + '/').startsWith(folder + '/')) {
        return perform(arguments...);
    }
    call.path = call.path.mid(folder.size() + 1);
    call.oldPath = call.oldPath.mid(folder.size() + 1);
    call.name = name;
    if (const int error = watcher->errorOf(call)) {
        errno = error;
        return decltype(perform(arguments...))(-1);
    }
    const auto result = perform(arguments...);
    if (result >= 0) {
        call.bytes.truncate(result);
        watcher->succeeded(call);
    }
    return result;
}

template <class Function>
int watchedOpen(const char *name, const char *path, int flags, std::va_list arguments) {
    const auto describe = [&] {
        const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
        return Call{.kind = changes ? Kind::Open : Kind::Read,
                    .path = path,
                    .empties = (flags & O_TRUNC) != 0};
    };
    const auto mode = va_arg(arguments, mode_t);
    return watched<Function>(name, describe, path, flags, mode);
}

}  // namespace

namespace systemcalls {

Watcher::Watcher(const QString &folder) : folder_(folder.toUtf8()) {
    watcher = this;
}

Watcher::~Watcher() {
    watcher = nullptr;
}

}  // namespace systemcalls

// These replace the system's own functions.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

int open(const char *path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int result = watchedOpen<decltype(::open)>("open", path, flags, arguments);
    va_end(arguments);
    return result;
}

int open64(const char *path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int result = watchedOpen<decltype(::open64)>("open64", path, flags, arguments);
    va_end(arguments);
    return result;
}

ssize_t read(int descriptor, void *bytes, size_t size) {
    const auto describe = [&] { return Call{.kind = Kind::Read, .path = pathOf(descriptor)}; };
    return watched<decltype(::read)>("read", describe, descriptor, bytes, size);
}

ssize_t write(int descriptor, const void *bytes, size_t size) {
    const auto describe = [&] {
        return Call{.kind = Kind::Write,
                    .path = pathOf(descriptor),
                    .bytes = {static_cast<const char *>(bytes), qsizetype(size)},
                    .offset = ::lseek(descriptor, 0, SEEK_CUR)};
    };
    return watched<decltype(::write)>("write", describe, descriptor, bytes, size);
}

int fsync(int descriptor) {
    const auto describe = [&] { return Call{.kind = Kind::Sync, .path = pathOf(descriptor)}; };
    return watched<decltype(::fsync)>("fsync", describe, descriptor);
}

int rename(const char *from, const char *to) noexcept {
    const auto describe = [&] { return Call{.kind = Kind::Rename, .path = to, .oldPath = from}; };
    return watched<decltype(::rename)>("rename", describe, from, to);
}

int unlink(const char *path) noexcept {
    const auto describe = [&] { return Call{.kind = Kind::Remove, .path = path}; };
    return watched<decltype(::unlink)>("unlink", describe, path);
}

int mkdir(const char *path, mode_t mode) noexcept {
    const auto describe = [&] { return Call{.kind = Kind::MakeFolder, .path = path}; };
    return watched<decltype(::mkdir)>("mkdir", describe, path, mode);
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
