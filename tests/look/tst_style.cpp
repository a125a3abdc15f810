#include <algorithm>

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "look/palette.h"
#include "support/drawing.h"
#include "support/pointer.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A button in the middle of an active window.
struct ShownButton {
    QWidget window;
    QPushButton button{u"Next question"_s, &window};
    QPushButton another{u"another"_s, &window};

    explicit ShownButton(bool isDefault) {
        auto *inWindow = new QVBoxLayout(&window);
        inWindow->addWidget(&button);
        inWindow->addWidget(&another);
        button.setAutoDefault(false);
        button.setDefault(isDefault);
        button.setMinimumHeight(36);
        another.setFocus();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The button's window is not active");
        }
    }

    /// The colour above the text.
    QColor background() {
        return button.grab().toImage().pixelColor(button.width() / 2, button.height() / 6);
    }
};

/// A scroll bar for a page that is five times as long as its visible part.
struct ShownBar {
    QScrollBar bar;

    explicit ShownBar(Qt::Orientation orientation) : bar(orientation) {
        bar.setRange(0, 400);
        bar.setPageStep(100);
        bar.setSingleStep(7);
        const int across = bar.sizeHint().expandedTo({16, 16}).boundedTo({24, 24}).width();
        bar.resize(isUpright() ? QSize(across, 500) : QSize(500, across));
        bar.show();
    }

    bool isUpright() const { return bar.orientation() == Qt::Vertical; }
    QRect part(QStyle::SubControl part) const {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.subControls = QStyle::SC_All;
        option.orientation = bar.orientation();
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.sliderPosition = bar.sliderPosition();
        option.sliderValue = bar.value();
        option.pageStep = bar.pageStep();
        option.singleStep = bar.singleStep();
        if (!isUpright()) {
            option.state |= QStyle::State_Horizontal;
        }
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
    }
    int start(const QRect &rect) const { return isUpright() ? rect.top() : rect.left(); }
    int length(const QRect &rect) const { return isUpright() ? rect.height() : rect.width(); }
    QPoint at(int along) const {
        return isUpright() ? QPoint(bar.width() / 2, along) : QPoint(along, bar.height() / 2);
    }
};

}  // namespace

class tst_style final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { QApplication::setPalette(palette_); }

    void focusIsDrawnInTheAccentColour_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<bool>("radio");
        for (const bool radio : {false, true}) {
            const char *control = radio ? "radio button" : "push button";
            QTest::addRow("%s, light", control) << QApplication::palette() << radio;
            QTest::addRow("%s, dark", control) << drawing::darkPalette() << radio;
        }
    }

    void focusIsDrawnInTheAccentColour() {
        QFETCH(const QPalette, palette);
        QFETCH(const bool, radio);
        QApplication::setPalette(palette);
        QWidget window;
        auto *inWindow = new QVBoxLayout(&window);
        QAbstractButton *focused = nullptr;
        QAbstractButton *other = nullptr;
        if (radio) {
            focused = new QRadioButton(u"Untimed"_s, &window);
            other = new QRadioButton(u"Timed"_s, &window);
        } else {
            focused = new QPushButton(u"Progress"_s, &window);
            other = new QPushButton(u"Settings"_s, &window);
        }
        inWindow->addWidget(focused);
        inWindow->addWidget(other);
        focused->setFocus();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(focused->hasFocus());

        const QColor accent = platform::look::accent(palette);
        // At least the lines above and below the text.
        const int enough = 2 * focused->fontMetrics().horizontalAdvance(focused->text());
        QVERIFY(drawing::pixels(*focused, accent) >= enough);
        QCOMPARE(drawing::pixels(*other, accent), 0);

        other->setFocus();
        QCOMPARE(drawing::pixels(*focused, accent), 0);
        QVERIFY(drawing::pixels(*other, accent) > 0);
    }

    void sizesAreKnownWithoutAControl() {
        const QStyle &style = *QApplication::style();
        QVERIFY(style.pixelMetric(QStyle::PM_ScrollBarExtent) > 0);
        QVERIFY(style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) > 0);
    }

    void optionIsPressedAnywhereOnItsRow_data() {
        QTest::addColumn<bool>("right");
        QTest::addColumn<bool>("bottom");
        QTest::newRow("top left") << false << false;
        QTest::newRow("top right") << true << false;
        QTest::newRow("bottom left") << false << true;
        QTest::newRow("bottom right") << true << true;
    }

    void optionIsPressedAnywhereOnItsRow() {
        QFETCH(const bool, right);
        QFETCH(const bool, bottom);
        QRadioButton option(u"Timed"_s);
        option.resize(2 * option.sizeHint());
        QTest::mouseClick(&option, Qt::LeftButton, {},
                          QPoint(right ? option.width() - 1 : 0, bottom ? option.height() - 1 : 0));
        QVERIFY(option.isChecked());
    }

    void onlyTheOptionThatIsOnIsFilled() {
        QRadioButton option(u"Timed"_s);
        const QColor accent = platform::look::accent(option.palette());
        QCOMPARE(drawing::pixels(option, accent), 0);
        option.setChecked(true);
        const int line = option.fontMetrics().height();
        QVERIFY2(drawing::pixels(option, accent) > line * line / 4,
                 "the option that is on is not filled");
        // The dot inside.
        QVERIFY(drawing::pixels(option, platform::look::onAccent(option.palette())) > 0);
        option.setChecked(false);
        option.setAutoExclusive(false);
        option.setChecked(false);
        QCOMPARE(drawing::pixels(option, accent), 0);
    }

    void optionInFocusHasARingRoundItsRow() {
        QWidget window;
        QRadioButton option(u"Timed"_s, &window);
        option.setGeometry(10, 10, 300, 40);
        option.setFocus();
        window.resize(320, 60);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QColor accent = platform::look::accent(option.palette());
        const QImage picture = option.grab().toImage();
        const QPoint middle = option.rect().center();
        for (const QPoint &edge : {QPoint(middle.x(), 0), QPoint(middle.x(), option.height() - 1),
                                   QPoint(0, middle.y()), QPoint(option.width() - 1, middle.y())}) {
            QVERIFY2(picture.pixelColor(edge) == accent,
                     qPrintable(u"no focus at %1, %2 of an option of %3 by %4"_s.arg(edge.x())
                                    .arg(edge.y())
                                    .arg(option.width())
                                    .arg(option.height())));
        }
    }

    void defaultButtonIsFilledWithTheAccent_data() { addPalettes(); }

    void defaultButtonIsFilledWithTheAccent() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        for (const bool isDefault : {false, true}) {
            ShownButton shown(isDefault);
            const QColor accent = platform::look::accent(palette);
            const int area = shown.button.width() * shown.button.height();
            QCOMPARE(drawing::pixels(shown.button, accent) > area / 2, isDefault);
            QCOMPARE(shown.background() == accent, isDefault);
            if (isDefault) {
                QVERIFY2(drawing::pixels(shown.button, platform::look::onAccent(palette)) > 0,
                         "its text is not in the colour for the accent");
            }
        }
    }

    void focusStandsOffTheDefaultButton_data() { addPalettes(); }

    void focusStandsOffTheDefaultButton() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        ShownButton shown(true);
        shown.button.setFocus();
        const QImage picture = shown.button.grab().toImage();
        const QColor accent = platform::look::accent(palette);
        const auto lengths = [&](const QPoint &from, const QPoint &inwards) {
            // The widths of the ring and the gap, and the beginning of the fill.
            QList<int> found{0, 0, 0};
            int part = 0;
            for (QPoint at = from; part < 3 && found[2] < 3 && picture.rect().contains(at);
                 at += inwards) {
                if ((picture.pixelColor(at) == accent) != (part != 1)) {
                    ++part;
                }
                if (part < 3) {
                    ++found[part];
                }
            }
            return found;
        };
        const int right = picture.width() - 1;
        const int bottom = picture.height() - 1;
        const QList<std::pair<QPoint, QPoint>> sides{{{0, bottom / 2}, {1, 0}},
                                                     {{right, bottom / 2}, {-1, 0}},
                                                     {{right / 2, 0}, {0, 1}},
                                                     {{right / 2, bottom}, {0, -1}}};
        for (const auto &[from, inwards] : sides) {
            const QList<int> found = lengths(from, inwards);
            const bool isRing = found[0] >= 2 && found[0] <= picture.height() / 8;
            QVERIFY2(
                isRing && found[1] >= 2 && found[2] >= 2,
                qPrintable(u"from %1, %2 inwards: a ring of %3 pixels, a gap of %4, a fill of %5"_s
                               .arg(from.x())
                               .arg(from.y())
                               .arg(found[0])
                               .arg(found[1])
                               .arg(found[2])));
        }
    }

    void pointerAndPressAreSeenOnAButton_data() {
        QTest::addColumn<bool>("isDefault");
        QTest::newRow("default") << true;
        QTest::newRow("another") << false;
    }

    void pointerAndPressAreSeenOnAButton() {
        QFETCH(const bool, isDefault);
        ShownButton shown(isDefault);
        pointer::moveTo(shown.another);
        const QColor usual = shown.background();
        pointer::moveTo(shown.button);
        const QColor lit = shown.background();
        QVERIFY2(lit != usual, "the pointer is not seen");
        shown.button.setDown(true);
        QVERIFY2(shown.background() != usual, "the press is not seen");
        shown.button.setDown(false);
        pointer::moveTo(shown.another);
        QCOMPARE(shown.background(), usual);
    }

    void chosenMenuItemIsFilledWithTheAccent_data() { addPalettes(); }

    void chosenMenuItemIsFilledWithTheAccent() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        QMenu menu;
        QAction *item = menu.addAction(u"Terminology"_s);
        menu.addAction(u"Variables"_s);
        menu.popup(QPoint());
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        const QColor accent = platform::look::accent(palette);
        QCOMPARE(drawing::pixels(menu, accent), 0);
        menu.setActiveAction(item);
        const QRect place = menu.actionGeometry(item);
        QVERIFY(drawing::pixels(menu, accent) > place.width() * place.height() / 2);
        QVERIFY(drawing::pixels(menu, platform::look::onAccent(palette)) > 0);
    }

    void chosenMenuIsSetOff_data() { addPalettes(); }

    void chosenMenuIsSetOff() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        QMenuBar bar;
        QAction *quizzes = bar.addAction(u"Quizzes"_s);
        QAction *help = bar.addAction(u"Help"_s);
        bar.resize(bar.sizeHint().expandedTo({300, 0}));
        bar.show();
        const QImage usual = bar.grab().toImage();
        const auto isSetOff = [&](QAction *item) {
            const QPoint spot = bar.actionGeometry(item).center();
            // A spot above its text.
            const QPoint background(spot.x(), bar.actionGeometry(item).top() + 2);
            return bar.grab().toImage().pixel(background) != usual.pixel(background);
        };
        bar.setActiveAction(quizzes);
        QVERIFY(isSetOff(quizzes));
        QVERIFY(!isSetOff(help));
    }

    void menuBarWithoutRoomShowsThatThereIsMore_data() { addPalettes(); }

    void menuBarWithoutRoomShowsThatThereIsMore() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        QMenuBar bar;
        for (const QString &title : {u"Zorvan"_s, u"Quizzes"_s, u"Window"_s, u"Help"_s}) {
            bar.addMenu(title);
        }
        bar.resize(bar.sizeHint().width() / 2, bar.sizeHint().height());
        bar.show();
        const auto buttons = bar.findChildren<QToolButton *>();
        const auto rest = std::ranges::find_if(buttons, &QToolButton::isVisible);
        QVERIFY(rest != buttons.end());
        // How far the darkest or lightest pixel is from the background.
        const QImage picture = (*rest)->grab().toImage();
        const float background = picture.pixelColor(0, picture.height() / 2).lightnessF();
        float farthest = 0;
        for (int y = 4; y < picture.height() - 4; ++y) {
            for (int x = 4; x < picture.width() - 4; ++x) {
                farthest = qMax(farthest, qAbs(picture.pixelColor(x, y).lightnessF() - background));
            }
        }
        QVERIFY2(farthest > 0.4F, qPrintable(QString::number(double(farthest))));
    }

    void textOfAnOptionHasItsRoom() {
        QRadioButton option(u"A clock of 15 seconds a question"_s);
        option.resize(option.sizeHint());
        QStyleOptionButton here;
        here.initFrom(&option);
        here.text = option.text();
        const QRect text =
            option.style()->subElementRect(QStyle::SE_RadioButtonContents, &here, &option);
        QVERIFY2(text.width() >= option.fontMetrics().horizontalAdvance(option.text()),
                 qPrintable(u"%1 pixels for a text of %2"_s.arg(text.width())
                                .arg(option.fontMetrics().horizontalAdvance(option.text()))));
        QVERIFY(option.rect().contains(text));
    }

    void scrollBarIsAllGroove_data() { addOrientations(); }

    void scrollBarIsAllGroove() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        QCOMPARE(shown.part(QStyle::SC_ScrollBarGroove), shown.bar.rect());
        QVERIFY(shown.part(QStyle::SC_ScrollBarAddLine).isEmpty());
        QVERIFY(shown.part(QStyle::SC_ScrollBarSubLine).isEmpty());
        for (const int value : {0, 150, 400}) {
            shown.bar.setValue(value);
            const QRect before = shown.part(QStyle::SC_ScrollBarSubPage);
            const QRect slider = shown.part(QStyle::SC_ScrollBarSlider);
            const QRect after = shown.part(QStyle::SC_ScrollBarAddPage);
            // They follow one another from end to end, each as wide as the bar.
            QCOMPARE(shown.length(before), shown.start(slider));
            QCOMPARE(shown.start(slider) + shown.length(slider), shown.start(after));
            QCOMPARE(shown.start(after) + shown.length(after), shown.length(shown.bar.rect()));
            QCOMPARE(slider.size().transposed().boundedTo(slider.size()).width(),
                     shown.bar.size().transposed().boundedTo(shown.bar.size()).width());
        }
    }

    void sliderGoesFromEndToEnd_data() { addOrientations(); }

    void sliderGoesFromEndToEnd() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        const auto slider = [&] { return shown.part(QStyle::SC_ScrollBarSlider); };
        QCOMPARE(shown.start(slider()), 0);
        shown.bar.setValue(400);
        QCOMPARE(shown.start(slider()) + shown.length(slider()), 500);
        shown.bar.setValue(200);
        QVERIFY2(
            qAbs(2 * shown.start(slider()) + shown.length(slider()) - 500) <= 2,
            qPrintable(u"half way, the slider is at %1 to %2 of 500"_s.arg(shown.start(slider()))
                           .arg(shown.start(slider()) + shown.length(slider()))));
    }

    void sliderIsAsLongAsItsShare_data() { addOrientations(); }

    void sliderIsAsLongAsItsShare() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        // 100 of 500 are visible.
        QCOMPARE(shown.length(shown.part(QStyle::SC_ScrollBarSlider)), 100);
        shown.bar.setRange(0, 100);
        QCOMPARE(shown.length(shown.part(QStyle::SC_ScrollBarSlider)), 250);
        shown.bar.setRange(0, 0);
        QCOMPARE(shown.length(shown.part(QStyle::SC_ScrollBarSlider)), 500);
    }

    void sliderOfALongPageCanStillBeHeld_data() { addOrientations(); }

    void sliderOfALongPageCanStillBeHeld() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        shown.bar.setRange(0, 100000);
        const int length = shown.length(shown.part(QStyle::SC_ScrollBarSlider));
        QVERIFY2(length >= shown.bar.fontMetrics().height(),
                 qPrintable(u"the slider is %1 pixels long"_s.arg(length)));
        shown.bar.setValue(100000);
        const QRect slider = shown.part(QStyle::SC_ScrollBarSlider);
        QCOMPARE(shown.start(slider) + shown.length(slider), 500);
    }

    void clickBesideTheSliderTurnsAPage_data() { addOrientations(); }

    void clickBesideTheSliderTurnsAPage() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        // At the very ends, where arrows would be.
        QTest::mouseClick(&shown.bar, Qt::LeftButton, {}, shown.at(498));
        QCOMPARE(shown.bar.value(), 100);
        QTest::mouseClick(&shown.bar, Qt::LeftButton, {}, shown.at(498));
        QCOMPARE(shown.bar.value(), 200);
        QTest::mouseClick(&shown.bar, Qt::LeftButton, {}, shown.at(1));
        QCOMPARE(shown.bar.value(), 100);
    }

    void sliderIsDrawnWhereItIs_data() { addOrientations(); }

    void sliderIsDrawnWhereItIs() {
        QFETCH(const Qt::Orientation, orientation);
        ShownBar shown(orientation);
        for (const int value : {0, 200, 400}) {
            shown.bar.setValue(value);
            const QRect slider = shown.part(QStyle::SC_ScrollBarSlider);
            const QImage picture = shown.bar.grab().toImage();
            const QColor background = shown.bar.palette().color(QPalette::Window);
            for (int along = 0; along < 500; ++along) {
                const int from = along - shown.start(slider);
                const int to = shown.start(slider) + shown.length(slider) - along;
                // Its round ends are left out.
                if (qAbs(from) > 16 && qAbs(to) > 16) {
                    QCOMPARE(picture.pixelColor(shown.at(along)) != background, from > 0 && to > 0);
                }
            }
        }
    }

 private:
    static void addPalettes() {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << QApplication::palette();
        QTest::newRow("dark") << drawing::darkPalette();
    }

    static void addOrientations() {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("upright") << Qt::Vertical;
        QTest::newRow("across") << Qt::Horizontal;
    }

    QPalette palette_ = QApplication::palette();
};

ZORVAN_TEST(tst_style)
#include "tst_style.moc"
