#include <QDialog>
#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "controls/rowbutton.h"
#include "look/polish.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

namespace {

/// Half the height of a line.
double unitOf(const QWidget &widget) {
    return QFontMetricsF(widget.font()).height() / 2;
}

/// Whether a length is that many units, apart from rounding.
bool measures(double pixels, double units, const QWidget &widget) {
    return qAbs(pixels - units * unitOf(widget)) <= 0.51;
}

}  // namespace

class tst_polish final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void spacingIsSetInUnitsOfTheFont_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("side");
        QTest::addColumn<double>("end");
        QTest::addColumn<double>("across");
        QTest::addColumn<double>("down");
        QTest::newRow("window") << u"window"_s << 3.0 << 2.25 << 1.0 << 1.8;
        QTest::newRow("flush") << u"flush"_s << 0.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("section") << u"section"_s << 0.0 << 0.0 << 2.0 << 2.0;
        QTest::newRow("panel") << u"panel"_s << 2.0 << 2.0 << 2.0 << 1.0;
        QTest::newRow("row") << u"row"_s << 1.5 << 1.0 << 1.5 << 0.0;
        QTest::newRow("step") << u"step"_s << 1.5 << 0.5 << 1.5 << 0.0;
        QTest::newRow("list") << u"list"_s << 0.0 << 0.0 << 1.0 << 0.6;
        QTest::newRow("page") << u"page"_s << 2.0 << 2.0 << 0.0 << 0.5;
        QTest::newRow("text") << u"text"_s << 1.0 << 1.0 << 2.0 << 0.8;
        QTest::newRow("foot") << u"foot"_s << 3.0 << 2.0 << 1.0 << 1.0;
        QTest::newRow("edge") << u"edge"_s << 0.0 << 0.0 << 3.0 << 1.0;
        QTest::newRow("none") << QString() << 0.0 << 0.0 << 1.0 << 1.0;
    }

    void spacingIsSetInUnitsOfTheFont() {
        QFETCH(const QString, name);
        QFETCH(const double, side);
        QFETCH(const double, end);
        QFETCH(const double, across);
        QFETCH(const double, down);
        for (const double points : {8.0, 10.0, 21.0}) {
            QWidget window;
            QFont font = window.font();
            font.setPointSizeF(points);
            window.setFont(font);
            auto *control = new QWidget(&window);
            if (!name.isEmpty()) {
                control->setProperty("spacing", name);
            }
            auto *grid = new QGridLayout(control);
            platform::look::polish(window);
            const QMargins found = margins(*grid);
            QVERIFY2(measures(found.left(), side, window) && measures(found.right(), side, window),
                     qPrintable(u"%1 points: sides of %2 and %3 pixels, wanted %4 units of %5"_s
                                    .arg(points)
                                    .arg(found.left())
                                    .arg(found.right())
                                    .arg(side)
                                    .arg(unitOf(window))));
            QVERIFY2(measures(found.top(), end, window) && measures(found.bottom(), end, window),
                     qPrintable(
                         u"%1 points: ends of %2 and %3 pixels, wanted %4 units of %5"_s.arg(points)
                             .arg(found.top())
                             .arg(found.bottom())
                             .arg(end)
                             .arg(unitOf(window))));
            QVERIFY2(measures(grid->horizontalSpacing(), across, window),
                     qPrintable(u"%1 points: %2 pixels across, wanted %3 units of %4"_s.arg(points)
                                    .arg(grid->horizontalSpacing())
                                    .arg(across)
                                    .arg(unitOf(window))));
            QVERIFY2(measures(grid->verticalSpacing(), down, window),
                     qPrintable(u"%1 points: %2 pixels down, wanted %3 units of %4"_s.arg(points)
                                    .arg(grid->verticalSpacing())
                                    .arg(down)
                                    .arg(unitOf(window))));
        }
    }

    void spacingHoldsForEveryKindOfLayout() {
        QWidget window;
        window.setProperty("spacing", u"edge"_s);
        auto *column = new QVBoxLayout(&window);
        auto *line = new QHBoxLayout;
        auto *deeper = new QVBoxLayout;
        column->addLayout(line);
        line->addLayout(deeper);
        platform::look::polish(window);
        QVERIFY(measures(column->spacing(), 1, window));
        QVERIFY(measures(line->spacing(), 3, window));
        QVERIFY(measures(deeper->spacing(), 1, window));
    }

    void unknownSpacingLeavesTheLayoutAlone() {
        QWidget window;
        auto *control = new QWidget(&window);
        control->setProperty("spacing", u"windows"_s);
        auto *line = new QHBoxLayout(control);
        line->setContentsMargins(1, 2, 3, 4);
        line->setSpacing(5);
        platform::look::polish(window);
        QCOMPARE(margins(*line), QMargins(1, 2, 3, 4));
        QCOMPARE(line->spacing(), 5);
    }

    void everyNameInALayoutIsKnown_data() {
        QTest::addColumn<QString>("layout");
        for (const QString &layout : {u"MainMenu"_s, u"MainTest"_s, u"QuizComplete"_s,
                                      u"progress"_s, u"Settings"_s, u"Help"_s, u"MainLayout"_s}) {
            QTest::newRow(qUtf8Printable(layout)) << layout;
        }
    }

    void everyNameInALayoutIsKnown() {
        QFETCH(const QString, layout);
        QMainWindow window;
        platform::layoutNamed(layout)(window);
        int spacings = 0;
        for (const QWidget *control : window.findChildren<QWidget *>()) {
            QWidget probe;
            auto *part = new QLabel(&probe);
            auto *line = new QHBoxLayout(part);
            line->setContentsMargins(99, 99, 99, 99);
            const QFont font = part->font();
            part->setProperty("spacing", control->property("spacing"));
            part->setProperty("textStyle", control->property("textStyle"));
            platform::look::polish(probe);
            spacings += control->property("spacing").isValid() ? 1 : 0;
            QVERIFY2(line->contentsMargins() != QMargins(99, 99, 99, 99),
                     qPrintable(u"%1, %2: the spacing \"%3\" is unknown"_s.arg(
                         layout, control->objectName(), control->property("spacing").toString())));
            QVERIFY2(
                control->property("textStyle").isValid() == (part->font() != font),
                qPrintable(u"%1, %2: the text style \"%3\" is unknown"_s.arg(
                    layout, control->objectName(), control->property("textStyle").toString())));
        }
        QVERIFY(spacings > 0);
    }

    void dialogIsSpacedAsAWindow() {
        QDialog dialog;
        auto *column = new QVBoxLayout(&dialog);
        platform::look::polish(dialog);
        QVERIFY(measures(margins(*column).left(), 3, dialog));
        QVERIFY(measures(margins(*column).top(), 2.25, dialog));
        QVERIFY(measures(column->spacing(), 1.8, dialog));
    }

    void textStylesAreAScale() {
        QWidget window;
        const auto label = [&](const QString &style) {
            auto *made = new QLabel(&window);
            made->setProperty("textStyle", style);
            return made;
        };
        const QList<QLabel *> labels{label(u"caption"_s), label(QString()), label(u"heading"_s),
                                     label(u"question"_s), label(u"title"_s)};
        platform::look::polish(window);
        const double body = QFontInfo(window.font()).pointSizeF();
        QCOMPARE(QFontInfo(labels[1]->font()).pointSizeF(), body);
        for (qsizetype i = 1; i < labels.size(); ++i) {
            const double step = labels[i]->font().pointSizeF() / labels[i - 1]->font().pointSizeF();
            QVERIFY2(step > 1.1 && step < 1.25,
                     qPrintable(u"\"%1\" is %2 times the style below it"_s
                                    .arg(labels[i]->property("textStyle").toString())
                                    .arg(step)));
        }
        QVERIFY(labels[4]->font().weight() > QFont::Medium);
        QVERIFY(labels[2]->font().weight() > QFont::Medium);
        QCOMPARE(labels[3]->font().weight(), QFont::Normal);
        QCOMPARE(labels[0]->font().weight(), QFont::Normal);
    }

    void textStyleFollowsAFontInPixels() {
        QWidget window;
        QFont font = window.font();
        font.setPixelSize(40);
        window.setFont(font);
        QLabel title(&window);
        title.setProperty("textStyle", u"title"_s);
        platform::look::polish(window);
        const double times = QFontMetricsF(title.font()).height() / QFontMetricsF(font).height();
        QVERIFY2(times > 1.5 && times < 1.7, qPrintable(QString::number(times)));
    }

    void polishedTwiceLooksTheSame() {
        QWidget window;
        auto *column = new QVBoxLayout(&window);
        auto *title = new QLabel(u"Which quiz today?"_s);
        title->setProperty("textStyle", u"title"_s);
        column->addWidget(title);
        column->addWidget(new QPushButton(u"OK"_s));
        platform::look::polish(window);
        const QFont font = title->font();
        const QSize size = window.sizeHint();
        QVERIFY(font != window.font());
        platform::look::polish(window);
        QCOMPARE(title->font(), font);
        QCOMPARE(window.sizeHint(), size);
    }

    void everyButtonIsLargeEnoughToHit_data() {
        QTest::addColumn<double>("points");
        QTest::newRow("small text") << 7.0;
        QTest::newRow("large text") << 24.0;
    }

    void everyButtonIsLargeEnoughToHit() {
        QFETCH(const double, points);
        QWidget window;
        QFont font = window.font();
        font.setPointSizeF(points);
        window.setFont(font);
        const QList<QAbstractButton *> buttons{new QPushButton(u"OK"_s, &window),
                                               new QRadioButton(u"Timed"_s, &window),
                                               new platform::RowButton(u"A"_s, &window)};
        platform::look::polish(window);
        for (const QAbstractButton *button : buttons) {
            const double height = qMax(button->minimumHeight(), button->minimumSizeHint().height());
            QVERIFY2(
                height >= 4.5 * unitOf(window) - 0.51,
                qPrintable(u"\"%1\" is %2 pixels high, wanted 4.5 units of %3"_s.arg(button->text())
                               .arg(height)
                               .arg(unitOf(window))));
        }
    }

    void buttonHasRoomBesideItsText() {
        QWidget window;
        const QPushButton button(u"Start the quiz anew"_s, &window);
        platform::look::polish(window);
        const int text = button.fontMetrics().horizontalAdvance(button.text());
        QVERIFY2(button.minimumWidth() >= text + 3 * unitOf(window),
                 qPrintable(u"%1 pixels for a text of %2"_s.arg(button.minimumWidth()).arg(text)));
    }

    void roomIsKeptOnlyWhereItIsWanted() {
        for (const bool kept : {false, true}) {
            QWidget window;
            auto *column = new QVBoxLayout(&window);
            auto *control = new QLabel(u"verdict"_s);
            control->setProperty("keepsRoom", kept);
            column->addWidget(control);
            column->addWidget(new QLabel(u"below"_s));
            platform::look::polish(window);
            const int shown = column->sizeHint().height();
            control->hide();
            QCOMPARE(column->sizeHint().height() == shown, kept);
        }
    }

    void widestIsInCharacters() {
        QWidget window;
        QWidget column(&window);
        QWidget another(&window);
        column.setProperty("widest", 100);
        platform::look::polish(window);
        // The font's size in pixels.
        const double em = column.font().pointSizeF() * column.logicalDpiY() / 72;
        QCOMPARE(column.maximumWidth(), qRound(55.5 * em));
        QCOMPARE(another.maximumWidth(), QWIDGETSIZE_MAX);
    }

    void scrolledPageIsNeverCutOffAtItsSide() {
        QWidget window;
        auto *area = new QScrollArea(&window);
        area->setAccessibleName(u"Help text"_s);
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        auto *page = new QWidget;
        auto *inPage = new QVBoxLayout(page);
        inPage->addWidget(new QLabel(u"A line that is not to be wrapped, however long it is"_s));
        area->setWidget(page);
        platform::look::polish(window);
        QVERIFY2(area->minimumWidth() >= page->minimumSizeHint().width() +
                                             area->verticalScrollBar()->sizeHint().width(),
                 qPrintable(u"at least %1 pixels for a page of %2"_s.arg(area->minimumWidth())
                                .arg(page->minimumSizeHint().width())));
        QCOMPARE(area->verticalScrollBar()->accessibleName(), u"Help text"_s);
    }

 private:
    static QMargins margins(const QLayout &layout) { return layout.contentsMargins(); }
};

ZORVAN_TEST(tst_polish)
#include "tst_polish.moc"
