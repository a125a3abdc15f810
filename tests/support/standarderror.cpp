#include "support/standarderror.h"

#include <cstdlib>

StandardError::StandardError() {
    stderr = open_memstream(&written_, &size_);
}

StandardError::~StandardError() {
    std::fclose(stderr);
    std::free(written_);  // NOLINT(cppcoreguidelines-no-malloc): the C library made it
    stderr = terminal_;
}

QStringList StandardError::lines() const {
    return linesFrom(0);
}

QStringList StandardError::take() {
    QStringList lines = linesFrom(taken_);
    taken_ = size_;
    return lines;
}

QStringList StandardError::linesFrom(std::size_t start) const {
    std::fflush(stderr);
    QStringList lines = QString::fromUtf8(written_ + start, qsizetype(size_ - start)).split(u'\n');
    // The text after the last line break is not a line.
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}
