#include "support/standarderror.h"

#include <cstdlib>

#ifdef Q_OS_WIN

#include <io.h>

#include <QFile>

// There the stream cannot be replaced, only what is behind it.
StandardError::StandardError() : file_(_wfopen(qUtf16Printable(path()), L"wb")) {
    std::fflush(stderr);
    terminal_ = _fdopen(_dup(_fileno(stderr)), "w");
    _dup2(_fileno(file_), _fileno(stderr));
}

StandardError::~StandardError() {
    std::fflush(stderr);
    _dup2(_fileno(terminal_), _fileno(stderr));
    std::fclose(terminal_);
    std::fclose(file_);
}

QString StandardError::path() const {
    return folder_.filePath(QStringLiteral("standard-error"));
}

QByteArray StandardError::written() const {
    std::fflush(stderr);
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("Standard error cannot be read back");
    }
    return file.readAll();
}

#else

StandardError::StandardError() {
    stderr = open_memstream(&written_, &size_);
}

StandardError::~StandardError() {
    std::fclose(stderr);
    std::free(written_);  // NOLINT(cppcoreguidelines-no-malloc): the C library made it
    stderr = terminal_;
}

QByteArray StandardError::written() const {
    std::fflush(stderr);
    return {written_, qsizetype(size_)};
}

#endif

QStringList StandardError::lines() const {
    return linesFrom(0);
}

QStringList StandardError::take() {
    QStringList lines = linesFrom(taken_);
    taken_ = written().size();
    return lines;
}

QStringList StandardError::linesFrom(qsizetype start) const {
    QStringList lines = QString::fromUtf8(written().sliced(start)).split(u'\n');
    // The text after the last line break is not a line.
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}
