#pragma once

#include <QTranslator>

namespace platform {

/// Names keys as PC keyboards and the programs of Windows do: "Enter" and "Esc" where other texts
/// say "Return" and "Escape".
class PcKeyNames final : public QTranslator {
    Q_OBJECT

 public:
    using QTranslator::QTranslator;

    bool isEmpty() const override;
    /// The name of the key, or nothing if the text is not one of the two.
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override;
};

}  // namespace platform
