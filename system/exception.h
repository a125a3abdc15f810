#pragma once

#include <stdexcept>

#include <QString>

namespace platform {

/// Thrown when the platform cannot do what was asked: an unknown layout, controller or action, or
/// an index out of range. The program's own handlers catch this class only; runGuarded() logs
/// whatever else escapes.
class Exception final : public std::runtime_error {
 public:
    explicit Exception(const QString &message) : std::runtime_error(message.toStdString()) {}
};

}  // namespace platform
