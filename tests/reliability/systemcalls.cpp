#include "reliability/systemcalls.h"

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

template <class Function>
Function *original(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <class Describe, class Perform>
auto watched(Describe describe, Perform perform) -> decltype(perform()) {
    if (watcher == nullptr) {
        return perform();
    }
    Call call = describe();
    if (const int error = watcher->errorOf(call)) {
        errno = error;
        return -1;
    }
    const auto result = perform();
    if (result >= 0) {
        if (call.kind == Kind::Write) {
            call.bytes.truncate(result);
        }
        watcher->succeeded(call);
    }
    return result;
}

template <class Open>
int opened(Open *open, const char *path, int flags, mode_t mode) {
    const auto perform = [&] { return open(path, flags, mode); };
    if ((flags & (O_CREAT | O_TRUNC)) == 0) {
        return perform();
    }
    return watched(
        [&] {
            const bool empties = (flags & O_TRUNC) != 0;
            return Call{.kind = Kind::Open, .name = "open", .path = path, .empties = empties};
        },
        perform);
}

}  // namespace

namespace systemcalls {

Watcher::Watcher() {
    watcher = this;
}

Watcher::~Watcher() {
    watcher = nullptr;
}

bool isIn(const QByteArray &folder, const QByteArray &path) {
    return path == folder || path.startsWith(folder + '/');
}

}  // namespace systemcalls

// These replace the system's own functions.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

int open(const char *path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return opened(original<decltype(::open)>("open"), path, flags, mode);
}

int open64(const char *path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return opened(original<decltype(::open64)>("open64"), path, flags, mode);
}

ssize_t read(int descriptor, void *bytes, size_t size) {
    return watched(
        [&] { return Call{.kind = Kind::Read, .name = "read", .path = pathOf(descriptor)}; },
        [&] { return original<decltype(::read)>("read")(descriptor, bytes, size); });
}

ssize_t write(int descriptor, const void *bytes, size_t size) {
    return watched(
        [&] {
            return Call{.kind = Kind::Write,
                        .name = "write",
                        .path = pathOf(descriptor),
                        .bytes = {static_cast<const char *>(bytes), qsizetype(size)},
                        .offset = ::lseek(descriptor, 0, SEEK_CUR)};
        },
        [&] { return original<decltype(::write)>("write")(descriptor, bytes, size); });
}

int fsync(int descriptor) {
    return watched(
        [&] { return Call{.kind = Kind::Sync, .name = "fsync", .path = pathOf(descriptor)}; },
        [&] { return original<decltype(::fsync)>("fsync")(descriptor); });
}

int fdatasync(int descriptor) {
    return watched(
        [&] { return Call{.kind = Kind::Sync, .name = "fdatasync", .path = pathOf(descriptor)}; },
        [&] { return original<decltype(::fdatasync)>("fdatasync")(descriptor); });
}

int rename(const char *from, const char *to) noexcept {
    return watched(
        [&] { return Call{.kind = Kind::Rename, .name = "rename", .path = to, .oldPath = from}; },
        [&] { return original<decltype(::rename)>("rename")(from, to); });
}

int link(const char *from, const char *to) noexcept {
    return watched(
        [&] { return Call{.kind = Kind::Link, .name = "link", .path = to, .oldPath = from}; },
        [&] { return original<decltype(::link)>("link")(from, to); });
}

int unlink(const char *path) noexcept {
    return watched([&] { return Call{.kind = Kind::Remove, .name = "unlink", .path = path}; },
                   [&] { return original<decltype(::unlink)>("unlink")(path); });
}

int mkdir(const char *path, mode_t mode) noexcept {
    return watched([&] { return Call{.kind = Kind::MakeFolder, .name = "mkdir", .path = path}; },
                   [&] { return original<decltype(::mkdir)>("mkdir")(path, mode); });
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
