#include <algorithm>

#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolButton>

#include "look/palette.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/palettes.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// An open menu.
struct OpenMenu {
    QMenu menu;
    QAction *terminology = menu.addAction(u"Terminology"_s);
    QAction *syntax = menu.addAction(u"Syntax"_s);
    QAction *separator = menu.addSeparator();
    QAction *mainTest = menu.addAction(u"Main Test"_s);

    OpenMenu() {
        terminology->setShortcut(Qt::CTRL | Qt::Key_1);
        syntax->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_6);
    }

    void open() {
        menu.popup(QPoint());
        if (!QTest::qWaitForWindowExposed(&menu)) {
            qFatal("The menu does not open");
        }
    }

    QImage picture() { return menu.grab().toImage(); }

    QRect placeOf(const QString &text) {
        for (const optics::Text &drawn : optics::texts(menu)) {
            if (drawn.text == text && drawn.whole) {
                return drawn.place;
            }
        }
        qFatal("\"%s\" is not shown", qUtf8Printable(text));
    }

    /// How many pixels of an item a change of it changes.
    template <class Change>
    int changed(QAction &item, Change change) {
        open();
        const QRect place = menu.actionGeometry(&item);
        const QImage before = picture().copy(place);
        change();
        const QImage after = picture().copy(place);
        int pixels = 0;
        for (int y = 0; y < place.height(); ++y) {
            for (int x = 0; x < place.width(); ++x) {
                pixels += before.pixel(x, y) == after.pixel(x, y) ? 0 : 1;
            }
        }
        return pixels;
    }
};

}  // namespace

class tst_menus final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() { palettes::addAll(); }

    void init() {
        QFETCH_GLOBAL(const QPalette, palette);
        QApplication::setPalette(palette);
    }

    void itemHasRoomAroundItsText() {
        OpenMenu shown;
        shown.open();
        const QRect text = shown.placeOf(u"Syntax"_s);
        const QRect item = shown.menu.actionGeometry(shown.syntax);
        const int line = shown.menu.fontMetrics().height();
        QVERIFY(item.height() >= 1.5 * line);
        QVERIFY(text.left() / optics::ratio - item.left() >= line / 2);
        QVERIFY(shown.menu.actionGeometry(shown.terminology).top() >= line / 6);
    }

    void titlesStandApart() {
        QMenuBar bar;
        bar.addMenu(u"Quizzes"_s);
        bar.addMenu(u"Window"_s);
        bar.resize(bar.sizeHint());
        bar.show();
        const QList<optics::Text> titles = optics::texts(bar);
        QCOMPARE(titles.size(), 2);
        const int line = bar.fontMetrics().height();
        const int gap = titles.last().place.left() - titles.first().place.right();
        QVERIFY(gap > line / 2 * optics::ratio && gap < 2 * line * optics::ratio);
        QVERIFY(bar.height() >= 1.5 * line);
    }

    void shortcutsEndInOneLineOffTheTexts() {
        OpenMenu shown;
        shown.open();
        const QRect first = shown.placeOf(u"Ctrl+1"_s);
        const QRect second = shown.placeOf(u"Ctrl+Shift+6"_s);
        QVERIFY(qAbs(first.right() - second.right()) <= optics::ratio);
        const int line = shown.menu.fontMetrics().height() * optics::ratio;
        QVERIFY(second.left() - shown.placeOf(u"Terminology"_s).right() > line);
        QVERIFY(shown.menu.width() * optics::ratio - second.right() >= line / 2);
    }

    void separatorAndBorderAreSeen() {
        OpenMenu shown;
        shown.open();
        const QImage picture = shown.picture();
        const QRect place = shown.menu.actionGeometry(shown.separator);
        const QRgb panel = picture.pixel(place.center().x(), place.top());
        QVERIFY(optics::contrast(picture.pixel(place.center()), panel) >= 1.4);
        for (const QPoint &edge :
             {QPoint(0, place.top()), QPoint(picture.width() - 1, place.top()),
              QPoint(place.center().x(), 0), QPoint(place.center().x(), picture.height() - 1)}) {
            QVERIFY(optics::contrast(picture.pixel(edge), panel) >= 1.4);
        }
    }

    void itemThatIsCheckedHasATick() {
        OpenMenu shown;
        shown.syntax->setCheckable(true);
        const int line = shown.menu.fontMetrics().height();
        QVERIFY(shown.changed(*shown.syntax, [&] { shown.syntax->setChecked(true); }) > line);
        // Its text stands below those of the others.
        QCOMPARE(shown.placeOf(u"Syntax"_s).left(), shown.placeOf(u"Terminology"_s).left());
    }

    void itemThatOpensAMenuSaysSo() {
        OpenMenu shown;
        QMenu more;
        more.addAction(u"Variables"_s);
        const int line = shown.menu.fontMetrics().height();
        QVERIFY(shown.changed(*shown.mainTest, [&] { shown.mainTest->setMenu(&more); }) > line);
    }

    void itemThatCannotBeChosenIsFaint() {
        OpenMenu shown;
        shown.open();
        const QRect place = shown.menu.actionGeometry(shown.mainTest);
        const auto strongest = [&] {
            const QImage picture = shown.picture().copy(place);
            const QRgb panel = optics::mainColor(picture);
            double contrast = 1;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 2; x < picture.width() - 2; ++x) {
                    contrast = qMax(contrast, optics::contrast(picture.pixel(x, y), panel));
                }
            }
            return contrast;
        };
        const double usual = strongest();
        shown.mainTest->setEnabled(false);
        QVERIFY(strongest() < 0.75 * usual);
        const QImage before = shown.picture();
        shown.menu.setActiveAction(shown.mainTest);
        QCOMPARE(shown.picture(), before);
    }

    void chosenMenuItemIsFilledWithTheAccent() {
        OpenMenu shown;
        shown.open();
        QMenu &menu = shown.menu;
        QAction *item = shown.terminology;
        QCOMPARE(drawing::pixels(menu, accent()), 0);
        menu.setActiveAction(item);
        const QRect place = menu.actionGeometry(item);
        QVERIFY(drawing::pixels(menu, accent()) > place.width() * place.height() / 2);
        QVERIFY(drawing::pixels(menu, onAccent()) > 0);
    }

    void chosenMenuIsSetOff() {
        QMenuBar bar;
        QAction *quizzes = bar.addAction(u"Quizzes"_s);
        QAction *help = bar.addAction(u"Help"_s);
        bar.resize(bar.sizeHint().expandedTo({300, 0}));
        bar.show();
        const QImage usual = bar.grab().toImage();
        bar.setActiveAction(quizzes);
        const QImage chosen = bar.grab().toImage();
        const auto isSetOff = [&](QAction *item) {
            // A spot above its text.
            const QRect place = bar.actionGeometry(item);
            const QPoint spot(place.center().x(), place.top() + 2);
            return chosen.pixel(spot) != usual.pixel(spot);
        };
        QVERIFY(isSetOff(quizzes));
        QVERIFY(!isSetOff(help));
    }

    void menuBarWithoutRoomShowsThatThereIsMore() {
        QMenuBar bar;
        for (const QString &title : {u"Zorvan"_s, u"Quizzes"_s, u"Window"_s, u"Help"_s}) {
            bar.addMenu(title);
        }
        bar.resize(bar.sizeHint().width() / 2, bar.sizeHint().height());
        bar.show();
        const auto buttons = bar.findChildren<QToolButton *>();
        const auto rest = std::ranges::find_if(buttons, &QToolButton::isVisible);
        QVERIFY(rest != buttons.end());
        const QImage with = optics::picture(bar).pixels;
        const QImage without = optics::picture(bar, {.control = *rest}).pixels;
        QVERIFY(optics::shapeContrast(with, without) >= 3);
    }

 private:
    static QColor accent() { return platform::look::accent(QApplication::palette()); }
    static QColor onAccent() { return platform::look::onAccent(QApplication::palette()); }
};

ZORVAN_TEST(tst_menus)
#include "tst_menus.moc"
