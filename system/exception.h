#pragma once

#include <stdexcept>

#include <QString>

namespace platform {

/// Raised where the platform cannot do what was asked of it: an unknown layout, controller or
/// action, an index out of range. The program's guards catch this class and no other.
class Exception final : public std::runtime_error {
 public:
    explicit Exception(const QString &message) : std::runtime_error(message.toStdString()) {}
};

}  // namespace platform
