#include <algorithm>

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionSlider>

#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/rowbutton.h"
#include "controls/statusicon.h"
#include "controls/textlabel.h"
#include "shell/appdelegate.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// What is measured, and how much contrast it needs.
struct Kind {
    const char *name;
    double wanted;
};

constexpr Kind text{"text", 4.5};
constexpr Kind largeText{"large text", 3};
constexpr Kind halfOpacityText{"half-opacity text", 3};
constexpr Kind control{"control", 3};
constexpr Kind levelSegment{"level segment", 3};
constexpr Kind mark{"mark", 3};
constexpr Kind focusRing{"focus ring", 3};

/// The lowest contrast of each kind, and what has too little.
class Findings final {
 public:
    void add(const Kind &kind, const QString &place, std::optional<double> contrast) {
        const QString where = u"%1, %2"_s.arg(palette_, place);
        if (!contrast) {
            flaws_ << u"%1: no %2 is drawn"_s.arg(where, QLatin1StringView(kind.name));
            return;
        }
        if (*contrast < kind.wanted) {
            flaws_ << u"%1: %2 with a contrast of %3, wanted is %4"_s
                          .arg(where, QLatin1StringView(kind.name))
                          .arg(*contrast, 0, 'f', 2)
                          .arg(kind.wanted);
        }
        Least &least = least_[palette_ + u": "_s + QLatin1StringView(kind.name)];
        if (least.place.isEmpty() || *contrast < least.contrast) {
            least = {*contrast, place};
        }
    }

    /// The palette of what is added from now on.
    void setPalette(const QString &palette) { palette_ = palette; }

    QString takeFlaws() { return std::exchange(flaws_, {}).join(u'\n'); }

    void print() const {
        for (auto least = least_.begin(); least != least_.end(); ++least) {
            qInfo("%s %.2f (%s)", qUtf8Printable(least.key()), least->contrast,
                  qUtf8Printable(least->place));
        }
    }

 private:
    struct Least {
        double contrast = 0;
        QString place;
    };

    QString palette_;
    QMap<QString, Least> least_;
    QStringList flaws_;
};

QString nameOf(const QWidget &widget) {
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    if (button != nullptr && widget.objectName().isEmpty()) {
        return u"\"%1\""_s.arg(button->text());
    }
    return widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                         : widget.objectName();
}

/// The controls of that class that are shown and not scrolled out of sight.
template <class Control>
QList<Control *> shown(const QWidget &window) {
    QList<Control *> controls = window.findChildren<Control *>();
    controls.removeIf(
        [](const Control *one) { return !one->isVisible() || one->visibleRegion().isEmpty(); });
    return controls;
}

QRect placeIn(const QWidget &window, const QWidget &widget) {
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

/// The control's place with a small margin.
QRect roomIn(const QWidget &window, const QWidget &widget) {
    constexpr int margin = 2;
    return placeIn(window, widget).adjusted(-margin, -margin, margin, margin) & window.rect();
}

const QWidget &innermostAt(const QWidget &window, QPoint spot) {
    const QWidget *innermost = &window;
    for (const QWidget *widget : shown<QWidget>(window)) {
        if (innermost->isAncestorOf(widget) && placeIn(window, *widget).contains(spot)) {
            innermost = widget;
        }
    }
    return *innermost;
}

const Kind &kindOf(const optics::Text &drawn, const QWidget &widget) {
    const auto *label = qobject_cast<const platform::TextLabel *>(&widget);
    const bool disabledAnswer =
        qobject_cast<const platform::RowButton *>(&widget) != nullptr && !widget.isEnabled();
    if (disabledAnswer || (label != nullptr && label->alphaValue() < 1)) {
        return halfOpacityText;
    }
    const double size = QFontInfo(drawn.font).pixelSize();
    const bool large = size >= 24 || (size >= 18.66 && drawn.font.weight() >= QFont::Bold);
    return large ? largeText : text;
}

/// Takes the focus from the control that has it.
void leaveFocus(const QWidget &window) {
    if (QWidget *focused = window.focusWidget()) {
        focused->clearFocus();
    }
}

}  // namespace

/// Everything has enough contrast to its background, in light and in dark colours, also if the
/// colours change while the windows are open.
class tst_contrast final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        light_ = QApplication::palette();
        platform::Application::shared().loadMainLayout(delegate_);
        states_ = states::all();
    }

    void cleanup() {
        QApplication::setPalette(light_);
        desk::clear();
    }

    void cleanupTestCase() { findings_.print(); }

    void pictureIsWhatTheWindowDraws() {
        states_[u"main menu, mixed"_s]([](QWidget &window) {
            QImage drawn(window.size() * optics::ratio, QImage::Format_RGB32);
            drawn.setDevicePixelRatio(optics::ratio);
            window.render(&drawn);
            const QImage measured = optics::picture(window).pixels;
            int different = 0;
            for (int y = 0; y < drawn.height(); ++y) {
                for (int x = 0; x < drawn.width(); ++x) {
                    different +=
                        optics::contrast(drawn.pixel(x, y), measured.pixel(x, y)) > 1.1 ? 1 : 0;
                }
            }
            // Antialiased lines may be rounded differently.
            const int few = drawn.width() * drawn.height() / 500;
            QVERIFY2(different < few, qPrintable(u"%1 pixels differ"_s.arg(different)));
        });
    }

    void measureKnowsContrastsOfKnownColours() {
        // Its contrast on white is 4.54 to 1.
        const QColor grey(0x76, 0x76, 0x76);
        const auto isGrey = [](std::optional<double> contrast) {
            return contrast && qAbs(*contrast - 4.54) < 0.05;
        };

        QLabel label(u"Terminology"_s);
        label.setPalette(
            QPalette(grey, Qt::white, Qt::white, Qt::white, Qt::white, grey, Qt::white));
        label.adjustSize();
        const optics::Picture with = optics::picture(label);
        const QImage without = optics::picture(label, {.texts = true}).pixels;
        QCOMPARE(with.texts.size(), 1);
        QCOMPARE(with.texts.first().text, label.text());
        QVERIFY(with.texts.first().whole);
        QVERIFY(isGrey(optics::inkContrast(with.pixels, without, with.texts.first().place)));
        QVERIFY(!optics::inkContrast(without, without, without.rect()));

        QImage background(120, 120, QImage::Format_RGB32);
        background.fill(Qt::white);
        const auto drawnOn = [](QImage picture, const QPen &pen, const QBrush &brush,
                                const QRectF &box) {
            QPainter painter(&picture);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(pen);
            painter.setBrush(brush);
            painter.drawEllipse(box);
            return picture;
        };
        const QImage ring =
            drawnOn(background, QPen(grey, 6), Qt::NoBrush, QRectF(10.3, 10.3, 99, 99));
        QVERIFY(isGrey(optics::ringContrast(ring, background)));
        QVERIFY(isGrey(optics::shapeContrast(ring, background)));
        QVERIFY(isGrey(optics::piecesContrast(ring, background)));
        const QImage filled =
            drawnOn(background, Qt::NoPen, QColor(0x60, 0x60, 0x60), background.rect());
        const QImage ringOnDark =
            drawnOn(filled, QPen(grey, 6), Qt::NoBrush, QRectF(3, 3, 114, 114));
        QVERIFY(*optics::ringContrast(ringOnDark, filled) < 1.5);
        const QImage disc = drawnOn(background, Qt::NoPen, grey, background.rect());
        QVERIFY(isGrey(optics::markContrast(disc, background)));
        const QImage spot =
            drawnOn(disc, Qt::NoPen, QColor(0x60, 0x60, 0x60), QRectF(40, 40, 50, 50));
        QVERIFY(*optics::markContrast(spot, background) < 1.5);
        QVERIFY(!optics::markContrast(background, background));
    }

    void everyTextIsReadable_data() { addStates(); }

    void everyTextIsReadable() { measureEveryState(&tst_contrast::measureTexts); }

    void everyControlIsSeen_data() { addStates(); }

    void everyControlIsSeen() { measureEveryState(&tst_contrast::measureControls); }

    void focusIsSeen_data() { addStates(); }

    void focusIsSeen() { measureEveryState(&tst_contrast::measureFocus); }

    void markAtAnAnswerIsSeen_data() {
        QTest::addColumn<int>("right");
        QTest::newRow("right") << 1;
        QTest::newRow("wrong") << 2;
    }

    void markAtAnAnswerIsSeen() {
        QFETCH(const int, right);
        states::quiz(u"56"_s)([&](QWidget &window) {
            inEveryPalette(window, [&](QWidget &) { measureMarks(window, right); });
        });
        const QString flaws = findings_.takeFlaws();
        QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
    }

 private:
    void addStates() {
        QTest::addColumn<QString>("state");
        for (auto state = states_.keyBegin(); state != states_.keyEnd(); ++state) {
            QTest::addRow("%s", qUtf8Printable(*state)) << *state;
        }
    }

    void inEveryPalette(QWidget &window, const states::Look &look) {
        for (const auto &[name, palette] :
             {std::pair{u"light"_s, light_}, std::pair{u"dark"_s, drawing::darkPalette()}}) {
            QApplication::setPalette(palette);
            QCoreApplication::processEvents();
            findings_.setPalette(name);
            look(window);
        }
        QApplication::setPalette(light_);
    }

    void measureEveryState(void (tst_contrast::*measure)(QWidget &)) {
        QFETCH(const QString, state);
        states_[state]([&](QWidget &window) {
            inEveryPalette(window, [&](QWidget &look) { (this->*measure)(look); });
        });
        const QString flaws = findings_.takeFlaws();
        QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
    }

    QString in(const QWidget &window, const QString &name) const {
        return u"%1, %2, %3"_s.arg(QString::fromUtf8(QTest::currentDataTag()), nameOf(window),
                                   name);
    }

    template <class Control>
    void requireText(const QWidget &window, const optics::Picture &picture) {
        for (const Control *one : shown<Control>(window)) {
            const QRect place = placeIn(window, *one);
            const bool wanted =
                !one->text().trimmed().isEmpty() && one->visibleRegion() == one->rect();
            const auto isThere = [&](const optics::Text &drawn) {
                return place.contains(drawn.place.center() / optics::ratio);
            };
            if (wanted && std::ranges::none_of(picture.texts, isThere)) {
                findings_.add(text, in(window, nameOf(*one)), std::nullopt);
            }
        }
    }

    void measureTexts(QWidget &window) {
        const optics::Picture with = optics::picture(window);
        const QImage without = optics::picture(window, {.texts = true}).pixels;
        requireText<QLabel>(window, with);
        requireText<QAbstractButton>(window, with);
        for (const optics::Text &drawn : with.texts) {
            const auto contrast = optics::inkContrast(with.pixels, without, drawn.place);
            if (!contrast && !drawn.whole) {
                continue;
            }
            const QWidget &widget = innermostAt(window, drawn.place.center() / optics::ratio);
            findings_.add(kindOf(drawn, widget),
                          in(window, u"%1 \"%2\""_s.arg(nameOf(widget), drawn.text)), contrast);
        }
    }

    void measureControls(QWidget &window) {
        // The focus must not be taken for a control's shape.
        leaveFocus(window);
        for (QPushButton *button : shown<QPushButton>(window)) {
            const bool answer = button->objectName().startsWith(u"btnAnswer");
            // A button that fills its row is recognised by its text, a disabled one by its letter.
            if (button->isEnabled() &&
                (answer || qobject_cast<platform::RowButton *>(button) == nullptr)) {
                measureShape(window, *button);
            }
        }
        for (QRadioButton *option : shown<QRadioButton>(window)) {
            measureShape(window, *option);
            measureOption(window, *option);
        }
        for (QScrollBar *bar : shown<QScrollBar>(window)) {
            measureSlider(window, *bar);
        }
        for (platform::LevelIndicator *level : shown<platform::LevelIndicator>(window)) {
            measureLevel(window, *level);
        }
        for (platform::ImageLabel *image : shown<platform::ImageLabel>(window)) {
            if (!image->image().isNull()) {
                measureMark(window, *image, nameOf(*image));
            }
        }
        for (platform::StatusIcon *sign : shown<platform::StatusIcon>(window)) {
            if (!sign->property("label").toString().isEmpty()) {
                measureShape(window, *sign);
            }
        }
    }

    void measureFocus(QWidget &window) {
        QWidget *focused = window.focusWidget();
        for (QWidget *widget : shown<QWidget>(window)) {
            if (!widget->isEnabled() || (widget->focusPolicy() & Qt::TabFocus) == 0) {
                continue;
            }
            widget->setFocus(Qt::TabFocusReason);
            QVERIFY2(widget->hasFocus(), qPrintable(in(window, nameOf(*widget))));
            QCoreApplication::processEvents();
            // The focus of a row's button is drawn by the row.
            const bool inRow = qobject_cast<platform::RowButton *>(widget) != nullptr;
            const QRect room = roomIn(window, inRow ? *widget->parentWidget() : *widget);
            const QImage with = optics::picture(window, room, {.texts = true}).pixels;
            widget->clearFocus();
            QCoreApplication::processEvents();
            const QImage without = optics::picture(window, room, {.texts = true}).pixels;
            findings_.add(focusRing, in(window, nameOf(*widget)),
                          optics::ringContrast(with, without));
        }
        if (focused != nullptr) {
            focused->setFocus();
        }
    }

    void measureShape(QWidget &window, QWidget &widget) {
        const QRect room = roomIn(window, widget);
        const QImage with = optics::picture(window, room, {.texts = true}).pixels;
        const QImage without =
            optics::picture(window, room, {.texts = true, .control = &widget}).pixels;
        findings_.add(control, in(window, nameOf(widget)), optics::shapeContrast(with, without));
    }

    void measureOption(QWidget &window, QRadioButton &option) {
        const QRect room = roomIn(window, option);
        const bool checked = option.isChecked();
        const QSignalBlocker blocker(option);
        option.setAutoExclusive(false);
        const auto pictureWhile = [&](bool on) {
            option.setChecked(on);
            return optics::picture(window, room, {.texts = true}).pixels;
        };
        const QImage on = pictureWhile(true);
        const QImage off = pictureWhile(false);
        option.setChecked(checked);
        option.setAutoExclusive(true);
        findings_.add(control, in(window, nameOf(option) + u", on to off"_s),
                      optics::inkContrast(on, off, on.rect()));
    }

    void measureSlider(QWidget &window, QScrollBar &bar) {
        const int value = bar.value();
        const int maximum = bar.maximum();
        const QSignalBlocker blocker(bar);
        // With more to scroll the slider is short: at one end it leaves the other half free.
        bar.setMaximum(10 * bar.pageStep());
        QRect half = placeIn(window, bar);
        half.setHeight(half.height() / 2);
        const auto pictureAt = [&](int position) {
            bar.setValue(position);
            return optics::picture(window, half).pixels;
        };
        const QImage there = pictureAt(bar.minimum());
        const QImage gone = pictureAt(bar.maximum());
        bar.setMaximum(maximum);
        bar.setValue(value);
        findings_.add(control, in(window, u"scroll bar"_s), optics::shapeContrast(there, gone));
    }

    void measureLevel(QWidget &window, platform::LevelIndicator &level) {
        const QRect room = placeIn(window, level);
        const double value = level.doubleValue();
        const QSignalBlocker blocker(level);
        const auto pictureWith = [&](double shownValue) {
            level.setDoubleValue(shownValue);
            return optics::picture(window, room).pixels;
        };
        const QImage filled = pictureWith(level.maximum());
        const QImage empty = pictureWith(0);
        level.setDoubleValue(value);
        const QImage background = optics::picture(window, room, {.control = &level}).pixels;
        const QString name = in(window, nameOf(level));
        findings_.add(levelSegment, name + u", filled"_s,
                      optics::piecesContrast(filled, background));
        findings_.add(levelSegment, name + u", empty"_s, optics::piecesContrast(empty, background));
        findings_.add(levelSegment, name + u", filled to empty"_s,
                      optics::inkContrast(filled, empty, filled.rect()));
    }

    void measureMark(QWidget &window, QWidget &widget, const QString &name) {
        const QRect room = placeIn(window, widget);
        const QImage with = optics::picture(window, room, {.texts = true}).pixels;
        const QImage without =
            optics::picture(window, room, {.texts = true, .control = &widget}).pixels;
        findings_.add(mark, in(window, name), optics::markContrast(with, without));
    }

    void measureMarks(QWidget &window, int right) {
        states::answered(right)(window);
        // Answer 1 is the one that was chosen.
        for (const int answer : {1, right}) {
            const QWidget &button = desk::control(&window, u"btnAnswer%1"_s.arg(answer));
            auto *sign = button.parentWidget()->findChild<platform::StatusIcon *>();
            QVERIFY(sign != nullptr);
            measureMark(window, *sign, u"answer %1"_s.arg(answer));
        }
        desk::click(&window, u"btnNextQuestion"_s);
    }

    QPalette light_;
    QMap<QString, states::State> states_;
    Findings findings_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_contrast)
#include "tst_contrast.moc"
