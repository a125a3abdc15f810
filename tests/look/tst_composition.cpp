#include <algorithm>

#include <QLabel>
#include <QPushButton>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/statusicon.h"
#include "look/metrics.h"
#include "shell/appdelegate.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using platform::RowState;

namespace {

QString iconInWords(const platform::StatusIcon &icon) {
    switch (platform::ActionRow::around(icon).state()) {
        case RowState::Done:
        case RowState::Right:
            return u"(tick)"_s;
        case RowState::Wrong:
            return u"(cross)"_s;
        default:
            return icon.property("label").toString();
    }
}

/// What a control shows; empty if that is nothing, or if its parts show it.
QString inWords(const QWidget &control) {
    if (const auto *icon = qobject_cast<const platform::StatusIcon *>(&control)) {
        return iconInWords(*icon);
    }
    if (const auto *image = qobject_cast<const platform::ImageLabel *>(&control)) {
        return image->image().isNull() ? QString() : u"(%1)"_s.arg(image->accessibleName());
    }
    if (const auto *level = qobject_cast<const platform::LevelIndicator *>(&control)) {
        return u"(level %1/%2)"_s.arg(level->doubleValue()).arg(level->maximum());
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
        return button->text().remove(u'&');
    }
    const auto *label = qobject_cast<const QLabel *>(&control);
    return label == nullptr ? QString() : label->text().replace(u'\n', u' ');
}

/// The controls in a window that show something.
QList<const QWidget *> controlsOf(const QWidget &window) {
    QList<const QWidget *> controls = window.findChildren<const QWidget *>();
    controls.removeIf([&](const QWidget *control) {
        return !control->isVisible() || control->window() != &window ||
               control->parentWidget()->inherits("QMenuBar") || inWords(*control).isEmpty();
    });
    return controls;
}

/// What a window shows, line by line from the top, each from the left.
QStringList linesOf(const QWidget &window) {
    const auto middle = [&](const QWidget *control) {
        return desk::placeIn(window, *control).center();
    };
    QList<const QWidget *> rest = controlsOf(window);
    QStringList lines;
    while (!rest.isEmpty()) {
        const QWidget *top = *std::ranges::min_element(
            rest, {}, [&](const QWidget *control) { return middle(control).y(); });
        QList<const QWidget *> line;
        for (const QWidget *control : std::as_const(rest)) {
            if (qAbs(middle(control).y() - middle(top).y()) < top->fontMetrics().height() / 2) {
                line << control;
            }
        }
        std::ranges::sort(line, {}, [&](const QWidget *control) { return middle(control).x(); });
        QStringList words;
        for (const QWidget *control : std::as_const(line)) {
            words << inWords(*control);
            rest.removeOne(control);
        }
        lines << words.join(u" | "_s);
    }
    return lines;
}

}  // namespace

/// What stands where in the windows.
class tst_composition final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() { platform::Application::shared().loadMainLayout(delegate_); }

    void everythingStandsInItsLine_data() {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("main menu")
            << u"main menu"_s
            << QStringList{u"Which quiz today? | Pass a quiz three times and it is mastered."_s,
                           u"All quizzes | (level 9/21) | 9 of 21 passes"_s,
                           u"(tick) | Terminology | 14 questions | Mastered | (level 3/3)"_s,
                           u"2 | Variables | 19 questions | Next | (level 2/3)"_s,
                           u"3 | Methods | 10 questions | (level 1/3)"_s,
                           u"4 | Functions | 11 questions | (level 0/3)"_s,
                           u"(tick) | Structure | 7 questions | Mastered | (level 3/3)"_s,
                           u"6 | Syntax | 16 questions | (level 0/3)"_s,
                           u"7 | Main Test | The final: 30 questions drawn from all six | "
                           "(level 0/3)"_s,
                           u"Progress | Settings | Refresh"_s};
        QTest::newRow("verdict")
            << u"quiz, wrong"_s
            << QStringList{u"Main Test | Time left | Score"_s,
                           u"12/30 | 7:36 | 67%"_s,
                           u"(level 11/30)"_s,
                           u"What will be displayed in a browser when the following is executed: "
                           "if !(8 >= 7 || 'Hello' == 'World') { echo 'Hello World'; }"_s,
                           u"A | Hello World | (cross)"_s,
                           u"B | Nothing | (tick)"_s,
                           u"C"_s,
                           u"wrong | Next Question"_s};
        QTest::newRow("results")
            << u"results, pass"_s
            << QStringList{u"Variables"_s,
                           u"(Pass mark 1: earned) | (Pass mark 2: earned) | "
                           "(Pass mark 3: missing)"_s,
                           u"Congratulations you have passed this quiz. Only one more pass needed "
                           "to have this quiz mastered."_s,
                           u"Home"_s};
        QTest::newRow("progress") << u"progress"_s
                                  << QStringList{
                                         u"Progress"_s,
                                         u"Terminology | (level 3/3) | 100%"_s,
                                         u"Variables | (level 2/3) | 67%"_s,
                                         u"Methods | (level 1/3) | 33%"_s,
                                         u"Functions | (level 0/3) | 0%"_s,
                                         u"Structure | (level 3/3) | 100%"_s,
                                         u"Syntax | (level 0/3) | 0%"_s,
                                         u"The main menu shows how far Main Test has come."_s};
        QTest::newRow("settings")
            << u"settings"_s
            << QStringList{u"Timing"_s,
                           u"Untimed: take as long as you like"_s,
                           u"Timed: about 15 seconds a question"_s,
                           u"A quiz that is open already keeps its timing."_s,
                           u"Progress"_s,
                           u"Takes back every pass of every quiz. It cannot be undone."_s,
                           u"Clear Progress…"_s};
        QTest::newRow("way back")
            << u"way back"_s
            << QStringList{u"No window is open."_s,
                           u"Go back to the main menu, pick a quiz from the menu bar, or quit."_s,
                           u"Main Menu | Quit"_s};
        QTest::newRow("alert")
            << u"alert"_s
            << QStringList{
                   u"This will reset all progress. Are you sure you want to clear your "
                   "progress?"_s,
                   u"Yes | No"_s};
    }

    void everythingStandsInItsLine() {
        QFETCH(const QString, state);
        QFETCH(const QStringList, lines);
        states_[state](
            [&](QWidget &window) { QCOMPARE(linesOf(window).join(u'\n'), lines.join(u'\n')); });
    }

    void contentStandsOffTheEdges() {
        for (const QString &state : {u"main menu"_s, u"quiz, wrong"_s, u"results, pass"_s,
                                     u"progress"_s, u"settings"_s, u"way back"_s}) {
            states_[state](expectMargins);
        }
    }

    void largestTextIsWhatTheWindowIsAbout_data() {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("largest");
        QTest::newRow("main menu") << u"main menu"_s << u"textLabel15"_s;
        QTest::newRow("quiz") << u"quiz, short"_s << u"lblQuestion"_s;
        QTest::newRow("results") << u"results, fail"_s << u"lblQuizName"_s;
        QTest::newRow("progress") << u"progress"_s << u"textLabel7"_s;
    }

    void largestTextIsWhatTheWindowIsAbout() {
        QFETCH(const QString, state);
        QFETCH(const QString, largest);
        states_[state]([&](QWidget &window) {
            const auto size = [](const QWidget *control) { return control->font().pointSizeF(); };
            QList<const QWidget *> controls = controlsOf(window);
            std::ranges::sort(controls, std::greater(), size);
            QCOMPARE(controls[0]->objectName(), largest);
            QVERIFY(size(controls[0]) > 1.1 * size(controls[1]));
        });
    }

    void finalStandsApart() {
        states_[u"main menu"_s]([&](QWidget &window) {
            const auto gapAbove = [&](int quiz) {
                const auto &row = desk::control(&window, u"rowQuiz%1"_s.arg(quiz));
                const auto &above = desk::control(&window, u"rowQuiz%1"_s.arg(quiz - 1));
                return desk::placeIn(window, row).top() - desk::placeIn(window, above).bottom();
            };
            for (int quiz = 3; quiz <= 6; ++quiz) {
                QCOMPARE(gapAbove(quiz), gapAbove(2));
            }
            QVERIFY(gapAbove(7) > 2 * gapAbove(2));
        });
    }

 private:
    static void expectMargins(QWidget &window) {
        const auto &content = desk::control(&window, u"content");
        QRect taken;
        for (const QWidget *control : content.findChildren<QWidget *>()) {
            if (control->isVisible() && control->objectName() != u"column") {
                taken |= desk::placeIn(content, *control);
            }
        }
        const double unit = platform::look::unit(window);
        QCOMPARE(taken.left(), qRound(3 * unit));
        QCOMPARE(content.width() - taken.right() - 1, qRound(3 * unit));
        QCOMPARE(taken.top(), qRound(2.25 * unit));
    }

    QMap<QString, states::State> states_ = states::all();
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_composition)
#include "tst_composition.moc"
