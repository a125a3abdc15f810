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
    void spacingIsSetInUnitsOfTheFont() {
        struct Spacing {
            QString name;
            double side;
            double end;
            double across;
            double down;
        };
        for (const Spacing &spacing :
             {Spacing{u"window"_s, 3, 2.25, 1, 1.8}, Spacing{u"flush"_s, 0, 0, 0, 0},
              Spacing{u"section"_s, 0, 0, 2, 2}, Spacing{u"panel"_s, 2, 2, 2, 1},
              Spacing{u"row"_s, 1.5, 1, 1.5, 0}, Spacing{u"step"_s, 1.5, 0.75, 1.5, 0},
              Spacing{u"list"_s, 0, 0, 1, 0.6}, Spacing{u"page"_s, 2, 2, 0, 0.5},
              Spacing{u"text"_s, 1, 1, 2, 0.8}, Spacing{u"foot"_s, 3, 2, 1, 1},
              Spacing{u"edge"_s, 0, 0, 3, 1}, Spacing{u"dialog"_s, 3, 2.25, 1, 3},
              Spacing{u"figures"_s, 0, 0, 3, 0.25}, Spacing{u"levels"_s, 2.5, 2.25, 3, 2},
              Spacing{QString(), 0, 0, 1, 1}}) {
            for (const double points : {8.0, 21.0}) {
                QWidget window;
                setPointSize(window, points);
                auto *control = new QWidget(&window);
                control->setProperty("spacing",
                                     spacing.name.isEmpty() ? QVariant() : QVariant(spacing.name));
                auto *grid = new QGridLayout(control);
                platform::look::polish(window);
                QVERIFY2(grid->contentsMargins() == margins(spacing.side, spacing.end, window) &&
                             grid->horizontalSpacing() == pixels(spacing.across, window) &&
                             grid->verticalSpacing() == pixels(spacing.down, window),
                         qPrintable(spacing.name));
            }
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

    void everyNameInALayoutIsKnown() {
        for (const auto &[layout, builder] : platform::layouts()) {
            QMainWindow window;
            builder(window);
            for (const QWidget *control : window.findChildren<QWidget *>()) {
                const QVariant spacing = control->property("spacing");
                const QVariant style = control->property("textStyle");
                QWidget probe;
                auto *part = new QLabel(&probe);
                auto *line = new QHBoxLayout(part);
                line->setContentsMargins(99, 99, 99, 99);
                const QFont font = part->font();
                part->setProperty("spacing", spacing);
                part->setProperty("textStyle", style);
                platform::look::polish(probe);
                QVERIFY2(line->contentsMargins().left() != 99, qPrintable(spacing.toString()));
                QVERIFY2(style.isValid() == (part->font() != font), qPrintable(style.toString()));
            }
        }
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
            const QAbstractButton &ok = *buttons.first();
            const int text = ok.fontMetrics().horizontalAdvance(ok.text());
            QVERIFY(ok.minimumWidth() >= text + pixels(3, window));
        }
    }

    void roomIsKeptOnlyWhereItIsWanted() {
        QWidget window;
        QLabel verdict(&window);
        verdict.setProperty("keepsRoom", true);
        const QLabel another(&window);
        platform::look::polish(window);
        QVERIFY(verdict.sizePolicy().retainSizeWhenHidden());
        QVERIFY(!another.sizePolicy().retainSizeWhenHidden());
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
