#pragma once

#include <QProxyStyle>

namespace platform {

/// The desktop's own style, with a focus that nobody can overlook and options that can be pressed
/// anywhere on their row.
class Style final : public QProxyStyle {
    Q_OBJECT

 public:
    using QProxyStyle::QProxyStyle;

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
};

}  // namespace platform
