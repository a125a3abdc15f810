#include "look/style.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QWidget>

#include "look/focus.h"
#include "look/menupainting.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

namespace platform::look {

namespace {

/// Between the border of a row and its content.
int padding(const QStyleOption &option) {
    return qRound(look::unit(option));
}

bool isDefault(const QStyleOptionButton &button) {
    return button.features.testFlag(QStyleOptionButton::DefaultButton);
}

void drawFocus(const QStyleOption &option, QPainter &painter) {
    Panel ring = controlPanel(option, option.rect);
    ring.border = Border::Focus;
    paintPanel(painter, option.palette, ring);
}

void drawPushButton(const QStyleOptionButton &button, QPainter &painter, bool focused) {
    Panel panel = controlPanel(button, button.rect);
    const bool pressed = button.state.testFlag(QStyle::State_Sunken);
    const bool hovered = button.state.testFlag(QStyle::State_MouseOver);
    if (isDefault(button)) {
        panel.fill = pressed || hovered ? Fill::HoveredAccent : Fill::Accent;
        if (focused) {
            // The ring is set off from the accent, on which it would not be visible.
            drawFocus(button, painter);
            const double inset = (focusWidth + focusGap) * panel.unit;
            panel.rect.adjust(inset, inset, -inset, -inset);
            panel.radius -= inset / panel.unit;
        }
    } else {
        panel.fill = pressed ? Fill::Pressed : hovered ? Fill::Hovered : Fill::Surface;
        panel.border = focused ? Border::Focus : Border::Outline;
    }
    paintPanel(painter, button.palette, panel);
}

void drawFill(const QStyleOption &option, Fill fill, QPainter &painter) {
    Panel panel = controlPanel(option, option.rect);
    panel.fill = fill;
    paintPanel(painter, option.palette, panel);
}

void drawRadioIndicator(const QStyleOption &option, QPainter &painter) {
    Panel circle = controlPanel(option, option.rect);
    circle.radius = option.rect.width() / circle.unit / 2;
    circle.border = Border::Outline;
    circle.fill = Fill::Surface;
    if (option.state.testFlag(QStyle::State_On)) {
        circle.fill = Fill::Accent;
        circle.border = Border::None;
    }
    paintPanel(painter, option.palette, circle);
    if (option.state.testFlag(QStyle::State_On)) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(onAccent(option.palette));
        const double dot = option.rect.width() / 5.0;
        painter.drawEllipse(QRectF(option.rect).center(), dot, dot);
        painter.restore();
    }
}

}  // namespace

void Style::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                        const QWidget *widget) const {
    if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
        if (element == CE_PushButtonBevel) {
            drawPushButton(*button, *painter, showsFocus(widget));
            return;
        }
        if (element == CE_PushButtonLabel) {
            // It stands on our fill, not on the palette's.
            QStyleOptionButton label(*button);
            label.palette.setColor(QPalette::ButtonText, isDefault(*button)
                                                             ? onAccent(label.palette)
                                                             : text(label.palette));
            QProxyStyle::drawControl(element, &label, painter, widget);
            return;
        }
    }
    if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
        if (element == CE_MenuItem) {
            paintMenuItem(*painter, *item);
            return;
        }
        if (element == CE_MenuBarItem) {
            paintMenuBarItem(*painter, *item);
            return;
        }
        if (element == CE_MenuBarEmptyArea || element == CE_MenuEmptyArea) {
            return;
        }
    }
    if (element == CE_RadioButton) {
        drawRadioButton(*option, *painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawRadioButton(const QStyleOption &option, QPainter &painter,
                            const QWidget *widget) const {
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    if (button == nullptr) {
        return;
    }
    // The base style would ask itself where the parts are, not this style.
    QStyleOptionButton part(*button);
    if (button->state.testFlag(State_MouseOver)) {
        drawFill(*button, Fill::Hovered, painter);
    }
    part.rect = subElementRect(SE_RadioButtonIndicator, button, widget);
    drawPrimitive(PE_IndicatorRadioButton, &part, &painter, widget);
    part.rect = subElementRect(SE_RadioButtonContents, button, widget);
    part.palette.setColor(QPalette::WindowText, text(part.palette));
    drawControl(CE_RadioButtonLabel, &part, &painter, widget);
    if (showsFocus(widget)) {
        drawFocus(*button, painter);
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                          const QWidget *widget) const {
    if (element == PE_PanelMenuBar || element == PE_PanelScrollAreaCorner ||
        element == PE_FrameMenu) {
        return;
    }
    if (element == PE_PanelMenu) {
        paintMenuPanel(*painter, *option);
        return;
    }
    if (element == PE_IndicatorRadioButton) {
        drawRadioIndicator(*option, *painter);
    } else if (element != PE_FrameFocusRect) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    } else if (showsFocus(widget) && qobject_cast<const QPushButton *>(widget) == nullptr) {
        drawFocus(*option, *painter);
    }
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                               QPainter *painter, const QWidget *widget) const {
    if (const auto *button = qstyleoption_cast<const QStyleOptionToolButton *>(option);
        button != nullptr && button->icon.isNull() && button->text.isEmpty()) {
        // Opens the rest of a menu bar that is too narrow for all of its menus.
        QStyleOptionToolButton rest(*button);
        rest.features |= QStyleOptionToolButton::Arrow;
        rest.arrowType = Qt::DownArrow;
        // The base style draws arrows half transparent.
        rest.palette.setColor(QPalette::WindowText, fadedText(rest.palette));
        QProxyStyle::drawComplexControl(control, &rest, painter, widget);
        return;
    }
    if (control != CC_ScrollBar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    painter->fillRect(option->rect, option->palette.window());
    const QRectF slider = proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget);
    const double margin = qMin(slider.width(), slider.height()) / 4;
    Panel handle = controlPanel(*option, slider.adjusted(margin, margin, -margin, -margin));
    handle.radius = margin / handle.unit;
    handle.fill = option->state.testFlag(State_MouseOver) ? Fill::Accent : Fill::Outline;
    paintPanel(*painter, option->palette, handle);
}

QRect Style::subElementRect(SubElement element, const QStyleOption *option,
                            const QWidget *widget) const {
    switch (element) {
        case SE_RadioButtonClickRect:
            return option->rect;
        case SE_RadioButtonIndicator:
        case SE_RadioButtonContents:
            if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
                QStyleOptionButton within(*button);
                within.rect.adjust(padding(*option), 0, -padding(*option), 0);
                return QProxyStyle::subElementRect(element, &within, widget);
            }
            break;
        default:
            break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                            SubControl subControl, const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        return QProxyStyle::subControlRect(control, option, subControl, widget);
    }
    // No arrows: the whole length is the groove.
    const bool upright = bar->orientation == Qt::Vertical;
    const int length = upright ? bar->rect.height() : bar->rect.width();
    const int steps = bar->maximum - bar->minimum;
    const int handle = qMax(3 * padding(*option),
                            int(qint64(length) * bar->pageStep / qMax(1, steps + bar->pageStep)));
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - handle, bar->upsideDown);
    const auto stretch = [&](int from, int to) {
        return upright ? QRect(0, from, bar->rect.width(), to - from)
                       : QRect(from, 0, to - from, bar->rect.height());
    };
    switch (subControl) {
        case SC_ScrollBarGroove:
            return stretch(0, length);
        case SC_ScrollBarSlider:
            return stretch(start, start + handle);
        case SC_ScrollBarSubPage:
            return stretch(0, start);
        case SC_ScrollBarAddPage:
            return stretch(start + handle, length);
        default:
            return {};
    }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                              const QWidget *widget) const {
    if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        type == CT_MenuItem && item != nullptr) {
        return menuItemSize(*item, contents);
    }
    if (type == CT_MenuBarItem) {
        return menuBarItemSize(*option, contents);
    }
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    return type == CT_RadioButton ? size + QSize(2 * padding(*option), 0) : size;
}

QIcon Style::standardIcon(StandardPixmap standardIcon, const QStyleOption *option,
                          const QWidget *widget) const {
    // Every menu bar asks for this icon. To read it from an image file, Qt would load its plugins
    // for every image format.
    return standardIcon == SP_ToolBarHorizontalExtensionButton
               ? QIcon()
               : QProxyStyle::standardIcon(standardIcon, option, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption *option,
                       const QWidget *widget) const {
    if (widget == nullptr) {
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
    const double unit = look::unit(*widget);
    switch (metric) {
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return qRound(optionSize * unit);
        case PM_RadioButtonLabelSpacing:
            return qRound(unit);
        case PM_ScrollBarExtent:
            return qRound(scrollBarWidth * unit);
        case PM_MenuPanelWidth:
            return 1;
        case PM_MenuHMargin:
            return 0;
        case PM_MenuVMargin:
            return qRound(menuInset * unit);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                     QStyleHintReturn *returned) const {
    // Text only, because not every desktop has the icons.
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace platform::look
