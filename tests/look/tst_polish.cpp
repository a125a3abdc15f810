#include <QDialog>
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
#include "support/openwindow.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

namespace {

/// Half the height of a line.
double unitOf(const QWidget &widget) {
    return QFontMetricsF(widget.font()).height() / 2;
}

/// That many units in pixels.
int pixels(double units, const QWidget &widget) {
    return qRound(units * unitOf(widget));
}

QMargins margins(double side, double end, const QWidget &widget) {
    return {pixels(side, widget), pixels(end, widget), pixels(side, widget), pixels(end, widget)};
}

void setPointSize(QWidget &widget, double points) {
    QFont font = widget.font();
    font.setPointSizeF(points);
    widget.setFont(font);
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
            setPointSize(window, points);
            auto *control = new QWidget(&window);
            if (!name.isEmpty()) {
                control->setProperty("spacing", name);
            }
            auto *grid = new QGridLayout(control);
            platform::look::polish(window);
            QCOMPARE(grid->contentsMargins(), margins(side, end, window));
            QCOMPARE(grid->horizontalSpacing(), pixels(across, window));
            QCOMPARE(grid->verticalSpacing(), pixels(down, window));
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
        QCOMPARE(column->spacing(), pixels(1, window));
        QCOMPARE(line->spacing(), pixels(3, window));
        QCOMPARE(deeper->spacing(), pixels(1, window));
    }

    void unknownSpacingLeavesTheLayoutAlone() {
        QWidget window;
        auto *control = new QWidget(&window);
        control->setProperty("spacing", u"windows"_s);
        auto *line = new QHBoxLayout(control);
        line->setContentsMargins(1, 2, 3, 4);
        line->setSpacing(5);
        platform::look::polish(window);
        QCOMPARE(line->contentsMargins(), QMargins(1, 2, 3, 4));
        QCOMPARE(line->spacing(), 5);
    }

    void everyNameInALayoutIsKnown_data() {
        QTest::addColumn<QString>("layout");
        for (const QString &layout : openwindow::layouts) {
            QTest::newRow(qUtf8Printable(layout)) << layout;
        }
    }

    void everyNameInALayoutIsKnown() {
        QFETCH(const QString, layout);
        QMainWindow window;
        platform::layoutNamed(layout)(window);
        const QMargins untouched(99, 99, 99, 99);
        for (const QWidget *control : window.findChildren<QWidget *>()) {
            QWidget probe;
            auto *part = new QLabel(&probe);
            auto *line = new QHBoxLayout(part);
            line->setContentsMargins(untouched);
            const QFont font = part->font();
            const QVariant spacing = control->property("spacing");
            const QVariant style = control->property("textStyle");
            part->setProperty("spacing", spacing);
            part->setProperty("textStyle", style);
            platform::look::polish(probe);
            QVERIFY2(line->contentsMargins() != untouched, qPrintable(spacing.toString()));
            QVERIFY2(style.isValid() == (part->font() != font), qPrintable(style.toString()));
        }
    }

    void dialogIsSpacedAsAWindow() {
        QDialog dialog;
        auto *column = new QVBoxLayout(&dialog);
        platform::look::polish(dialog);
        QCOMPARE(column->contentsMargins(), margins(3, 2.25, dialog));
        QCOMPARE(column->spacing(), pixels(1.8, dialog));
    }

    void textStylesAreAScale() {
        QWidget window;
        const auto label = [&](const QString &style) {
            auto *made = new QLabel(&window);
            made->setProperty("textStyle", style);
            return made;
        };
        const QLabel &caption = *label(u"caption"_s);
        const QLabel &body = *label(QString());
        const QLabel &heading = *label(u"heading"_s);
        const QLabel &question = *label(u"question"_s);
        const QLabel &title = *label(u"title"_s);
        platform::look::polish(window);
        const auto isAStepAbove = [](const QLabel &one, const QLabel &other) {
            const double step = one.font().pointSizeF() / other.font().pointSizeF();
            return step > 1.13 && step < 1.2;
        };
        QCOMPARE(body.font(), window.font());
        QVERIFY(isAStepAbove(body, caption));
        QVERIFY(isAStepAbove(heading, body));
        QVERIFY(isAStepAbove(question, heading));
        QVERIFY(isAStepAbove(title, question));
        for (const QLabel *bold : {&title, &heading}) {
            QCOMPARE(bold->font().weight(), QFont::DemiBold);
        }
        for (const QLabel *normal : {&question, &caption}) {
            QCOMPARE(normal->font().weight(), QFont::Normal);
        }
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

    void everyButtonIsLargeEnoughToHit() {
        for (const double points : {7.0, 24.0}) {
            QWidget window;
            setPointSize(window, points);
            const QList<QAbstractButton *> buttons{new QPushButton(u"OK"_s, &window),
                                                   new QRadioButton(u"Timed"_s, &window),
                                                   new platform::RowButton(u"A"_s, &window)};
            platform::look::polish(window);
            for (const QAbstractButton *button : buttons) {
                QVERIFY2(qMax(button->minimumHeight(), button->minimumSizeHint().height()) >=
                             pixels(4.5, window),
                         qPrintable(button->text()));
            }
        }
    }

    void buttonHasRoomBesideItsText() {
        QWidget window;
        const QPushButton button(u"Start the quiz anew"_s, &window);
        platform::look::polish(window);
        const int text = button.fontMetrics().horizontalAdvance(button.text());
        QVERIFY(button.minimumWidth() >= text + pixels(3, window));
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
        QVERIFY(area->minimumWidth() >=
                page->minimumSizeHint().width() + area->verticalScrollBar()->sizeHint().width());
        QCOMPARE(area->verticalScrollBar()->accessibleName(), u"Help text"_s);
    }
};

ZORVAN_TEST(tst_polish)
#include "tst_polish.moc"
