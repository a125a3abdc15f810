#include "support/standarderror.h"

#include <cstdio>
#include <unistd.h>

StandardError::StandardError() {
    if (!file_.open()) {
        qFatal("No temporary file for standard error");
    }
    std::fflush(stderr);
    original_ = dup(STDERR_FILENO);
    dup2(file_.handle(), STDERR_FILENO);
}

StandardError::~StandardError() {
    std::fflush(stderr);
    dup2(original_, STDERR_FILENO);
    ::close(original_);
}

QStringList StandardError::lines() {
    std::fflush(stderr);
    QFile written(file_.fileName());
    if (!written.open(QIODevice::ReadOnly)) {
        return {QStringLiteral("(standard error cannot be read)")};
    }
    QStringList lines = QString::fromUtf8(written.readAll()).split(u'\n');
    // The text after the last line break is not a line.
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}
