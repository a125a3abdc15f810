#include <QFontInfo>
#include <QPushButton>
#include <QRadioButton>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/rowbutton.h"
#include "controls/statusicon.h"
#include "controls/textlabel.h"
#include "shell/appdelegate.h"
#include "support/keyboard.h"
#include "support/optics.h"
#include "support/palettes.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using platform::RowState;
using states::nameOf;

namespace {

/// The controls of that class that are shown and not scrolled out of sight.
template <class Control>
QList<Control *> shown(const QWidget &window) {
    QList<Control *> controls = window.findChildren<Control *>();
    controls.removeIf(
        [](const Control *one) { return !one->isVisible() || one->visibleRegion().isEmpty(); });
    return controls;
}

/// The control's place with a small margin.
QRect roomIn(const QWidget &window, const QWidget &widget) {
    constexpr int margin = 2;
    return desk::placeIn(window, widget).adjusted(-margin, -margin, margin, margin) & window.rect();
}

bool isInRow(const QWidget &widget) {
    return qobject_cast<const platform::RowButton *>(&widget) != nullptr;
}

bool isAtHalfOpacity(const QWidget &widget) {
    const auto *label = qobject_cast<const platform::TextLabel *>(&widget);
    return (isInRow(widget) && !widget.isEnabled()) ||
           (label != nullptr && label->alphaValue() < 1);
}

/// Less only if the desktop's own text has less.
double contrastWanted(const optics::Text &drawn, const QWidget &widget) {
    const QPalette palette = QApplication::palette();
    const double usual = optics::contrast(palette.color(QPalette::WindowText).rgb(),
                                          palette.color(QPalette::Window).rgb());
    const double size = QFontInfo(drawn.font).pixelSize();
    const bool large = size >= 24 || (size >= 18.66 && drawn.font.weight() >= QFont::Bold);
    return qMin(usual, isAtHalfOpacity(widget) || large ? 3 : 4.5);
}

}  // namespace

/// Everything has enough contrast to its background, whatever the desktop's colours, also if they
/// change while the windows are open.
class tst_contrast final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() { platform::Application::shared().loadMainLayout(delegate_); }

    void cleanup() { QApplication::setPalette(palettes_.constFirst().palette); }

    void cleanupTestCase() {
        for (auto palette = least_.cbegin(); palette != least_.cend(); ++palette) {
            for (auto kind = palette->cbegin(); kind != palette->cend(); ++kind) {
                qInfo("%s: the least contrast of %s is %.2f", qUtf8Printable(palette.key()),
                      qUtf8Printable(kind.key()), *kind);
            }
        }
    }

    void everythingIsSeen_data() {
        QTest::addColumn<QString>("state");
        const QStringList names = states_.keys();
        for (const QString &state : names) {
            QTest::newRow(qUtf8Printable(state)) << state;
        }
    }

    void everythingIsSeen() {
        QFETCH(const QString, state);
        flaws_.clear();
        states_[state]([&](QWidget &window) {
            for (const auto &[name, palette] : palettes_) {
                QApplication::setPalette(palette);
                QCoreApplication::processEvents();
                palette_ = QString::fromLatin1(name);
                measureTexts(window);
                measureFocus(window);
                measureControls(window);
            }
        });
        QCOMPARE(flaws_.join(u'\n'), QString());
    }

 private:
    void demand(const QString &what, std::optional<double> contrast, double wanted = 3,
                const QString &kind = u"shapes"_s) {
        double &least = least_[palette_][kind];
        least = qMin(least == 0 ? contrast.value_or(0) : least, contrast.value_or(0));
        if (!contrast) {
            flaws_ << u"%1, %2 is not drawn"_s.arg(palette_, what);
        } else if (*contrast < wanted) {
            flaws_ << u"%1, %2 has a contrast of %3, wanted is %4"_s.arg(palette_, what)
                          .arg(*contrast, 0, 'f', 2)
                          .arg(wanted);
        }
    }

    void measureTexts(QWidget &window) {
        const optics::Picture with = optics::picture(window);
        const QImage without = optics::picture(window, {.texts = true}).pixels;
        for (const optics::Text &drawn : with.texts) {
            const auto contrast = optics::inkContrast(with.pixels, without, drawn.place);
            const QWidget *child = window.childAt(drawn.place.center() / optics::ratio);
            const QWidget &widget = child == nullptr ? window : *child;
            if (contrast || drawn.whole) {
                demand(u"the text \"%1\" of %2"_s.arg(drawn.text, nameOf(widget)), contrast,
                       contrastWanted(drawn, widget),
                       isAtHalfOpacity(widget) ? u"text at half opacity"_s : u"text"_s);
            }
        }
    }

    void measureFocus(QWidget &window) {
        keyboard::use(window);
        QWidget *focused = window.focusWidget();
        for (QWidget *widget : shown<QWidget>(window)) {
            if (!widget->isEnabled() || (widget->focusPolicy() & Qt::TabFocus) == 0) {
                continue;
            }
            widget->setFocus(Qt::TabFocusReason);
            QVERIFY2(widget->hasFocus(), qPrintable(nameOf(*widget)));
            // The focus of a row's button is drawn by the row.
            const QRect room = roomIn(window, isInRow(*widget) ? *widget->parentWidget() : *widget);
            const QImage with = shapes(window, room);
            widget->clearFocus();
            demand(u"the focus on "_s + nameOf(*widget),
                   optics::shapeContrast(with, shapes(window, room)));
        }
        if (focused != nullptr) {
            focused->setFocus();
        }
    }

    void measureControls(QWidget &window) {
        // The focus must not be taken for a control's shape.
        if (QWidget *focused = window.focusWidget()) {
            focused->clearFocus();
        }
        for (QPushButton *button : shown<QPushButton>(window)) {
            const bool answer = button->objectName().startsWith(u"btnAnswer");
            // A button that fills its row is recognised by its text, a disabled one by its letter.
            if (button->isEnabled() && (answer || !isInRow(*button))) {
                measureShape(window, *button);
            }
        }
        for (QRadioButton *option : shown<QRadioButton>(window)) {
            measureShape(window, *option);
        }
        for (platform::LevelIndicator *level : shown<platform::LevelIndicator>(window)) {
            const QRect room = desk::placeIn(window, *level);
            demand(nameOf(*level),
                   optics::inkContrast(shapes(window, room), shapes(window, room, level),
                                       QRect({}, room.size() * optics::ratio)));
        }
        for (platform::ImageLabel *image : shown<platform::ImageLabel>(window)) {
            measureShape(window, *image);
        }
        for (platform::StatusIcon *icon : shown<platform::StatusIcon>(window)) {
            const RowState state = platform::ActionRow::around(*icon).state();
            const bool marked = state != RowState::Open && state != RowState::Other;
            if (marked || !icon->property("label").toString().isEmpty()) {
                measureShape(window, *icon);
            }
        }
    }

    /// A part of the window without its texts.
    static QImage shapes(QWidget &window, const QRect &room, QWidget *without = nullptr) {
        return optics::picture(window, room, {.texts = true, .control = without}).pixels;
    }

    void measureShape(QWidget &window, QWidget &widget) {
        const QRect room = roomIn(window, widget);
        demand(nameOf(widget),
               optics::shapeContrast(shapes(window, room), shapes(window, room, &widget)));
    }

    const QList<palettes::Named> palettes_ = palettes::all();
    const QMap<QString, states::State> states_ = states::all();
    QString palette_;
    /// Of each palette and kind.
    QMap<QString, QMap<QString, double>> least_;
    QStringList flaws_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_contrast)
#include "tst_contrast.moc"
