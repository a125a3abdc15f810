#include <QAccessible>
#include <QTest>
#include <QWindow>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

constexpr bool repeated = true;

/// The widget that gets the window's keys.
QWidget *focused(QWidget *window) {
    return window->focusWidget() == nullptr ? window : window->focusWidget();
}

/// Sends a key as a keyboard repeats it while it is held down.
void hold(QWidget *window, Qt::Key key, const QString &text) {
    QTest::simulateEvent(focused(window), true, key, Qt::NoModifier, text, repeated);
    QTest::simulateEvent(focused(window), false, key, Qt::NoModifier, text, repeated);
}

/// Clicks at a point of the control, on whatever is on top there.
void clickAt(const QWidget &control, const QPoint &point) {
    QTest::mouseClick(control.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      control.mapTo(control.window(), point));
}

QString spoken(QWidget &control, QAccessible::Text text) {
    return QAccessible::queryAccessibleInterface(&control)->text(text);
}

/// What is read with the focus: nothing if Qt can announce the verdict, or it would be heard twice.
QString readWithTheFocus(const QString &verdict) {
    return QT_VERSION >= QT_VERSION_CHECK(6, 8, 0) ? QString() : verdict;
}

}  // namespace

class tst_quizcontrols final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() {
        quiz_.reset();
        WindowTest::cleanup();
    }

    void keysChooseAnAnswer_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<int>("choice");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
        QTest::newRow("A") << Qt::Key_A << none << 1;
        QTest::newRow("B") << Qt::Key_B << none << 2;
        QTest::newRow("C") << Qt::Key_C << none << 3;
        QTest::newRow("1") << Qt::Key_1 << none << 1;
        QTest::newRow("2") << Qt::Key_2 << none << 2;
        QTest::newRow("3") << Qt::Key_3 << none << 3;
        QTest::newRow("1 on the keypad") << Qt::Key_1 << keypad << 1;
        QTest::newRow("3 on the keypad") << Qt::Key_3 << keypad << 3;
    }

    void keysChooseAnAnswer() {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(int, choice);
        MainTest &quiz = openActive(u"1"_s);
        // Only the answer that the key should choose is right.
        quizRun().correctAnswerNumber = choice;
        QTest::keyClick(focused(quiz.window()), key, modifiers);
        QCOMPARE(desk::text(quiz.window(), u"lblStatus"_s), u"correct");
        QVERIFY(desk::isShown(quiz.window(), u"lblStatus"_s));
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void keysDoNotChooseAnAnswerThatIsOff() {
        MainTest &quiz = openActive(u"4"_s);
        QCOMPARE(quizdesk::answersEnabled(quiz.window()), quizdesk::twoAnswers);
        QTest::keyClick(focused(quiz.window()), Qt::Key_C);
        QTest::keyClick(focused(quiz.window()), Qt::Key_3);
        QCOMPARE(quizRun().questionIndex, 0);
        QVERIFY(!desk::isShown(quiz.window(), u"lblStatus"_s));
    }

    void keysDoNotAnswerTwice() {
        MainTest &quiz = openActive(u"1"_s);
        QTest::keyClick(focused(quiz.window()), Qt::Key_A);
        QTest::keyClick(focused(quiz.window()), Qt::Key_B);
        QCOMPARE(desk::text(quiz.window(), u"lblStatus"_s), u"wrong");
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void aHeldKeyAnswersOnlyOnce_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("text");
        QTest::newRow("A") << Qt::Key_A << u"a"_s;
        QTest::newRow("2") << Qt::Key_2 << u"2"_s;
    }

    void aHeldKeyAnswersOnlyOnce() {
        QFETCH(Qt::Key, key);
        QFETCH(QString, text);
        MainTest &quiz = openActive(u"1"_s);
        QTest::keyPress(focused(quiz.window()), key);
        QCOMPARE(quizRun().questionIndex, 1);
        hold(quiz.window(), key, text);
        quizdesk::goOn(quiz.window());
        for (int i = 0; i < 3; ++i) {
            hold(quiz.window(), key, text);
        }
        QCOMPARE(quizRun().questionIndex, 1);
        QCOMPARE(quizdesk::answersEnabled(quiz.window()), quizdesk::threeAnswers);

        QTest::keyRelease(focused(quiz.window()), key);
        QTest::keyClick(focused(quiz.window()), key);
        QCOMPARE(quizRun().questionIndex, 2);
    }

    void returnAndEnterGoOn_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::NoModifier);
        QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    }

    void returnAndEnterGoOn() {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        MainTest &quiz = openActive(u"1"_s);
        quizdesk::answerRight(quiz.window());
        QVERIFY(desk::isShown(quiz.window(), u"btnNextQuestion"_s));
        QTest::keyClick(focused(quiz.window()), key, modifiers);
        QCOMPARE(desk::text(quiz.window(), u"lblProgressPercent"_s), u"2/14");
        QVERIFY(!desk::isShown(quiz.window(), u"btnNextQuestion"_s));
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void returnAndEnterGoOnWhereverTheFocusIs_data() { returnAndEnterGoOn_data(); }

    void returnAndEnterGoOnWhereverTheFocusIs() {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        MainTest &quiz = openActive(u"1"_s);
        quizdesk::answerRight(quiz.window());
        quiz.window()->setFocus();
        QCOMPARE(quiz.window()->focusWidget(), quiz.window());
        QTest::keyClick(quiz.window(), key, modifiers);
        QCOMPARE(desk::text(quiz.window(), u"lblProgressPercent"_s), u"2/14");
    }

    void returnDoesNothingBeforeAnAnswer_data() { returnAndEnterGoOn_data(); }

    void returnDoesNothingBeforeAnAnswer() {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        MainTest &quiz = openActive(u"1"_s);
        const QList<QWidget *> places{&desk::control(quiz.window(), u"btnAnswer1"_s),
                                      quiz.window()};
        for (QWidget *widget : places) {
            widget->setFocus();
            QTest::keyClick(widget, key, modifiers);
            QCOMPARE(desk::text(quiz.window(), u"lblProgressPercent"_s), u"1/14");
            QCOMPARE(quizRun().questionIndex, 0);
        }
    }

    void aHeldReturnGoesOnOnce() {
        MainTest &quiz = openActive(u"1"_s);
        quizdesk::answerRight(quiz.window());
        QTest::keyPress(focused(quiz.window()), Qt::Key_Return);
        for (int i = 0; i < 3; ++i) {
            hold(quiz.window(), Qt::Key_Return, u"\r"_s);
        }
        QCOMPARE(quizRun().questionIndex, 1);
        QCOMPARE(desk::text(quiz.window(), u"lblProgressPercent"_s), u"2/14");

        quizdesk::answerRight(quiz.window());
        hold(quiz.window(), Qt::Key_Return, u"\r"_s);
        QCOMPARE(desk::text(quiz.window(), u"lblProgressPercent"_s), u"2/14");
    }

    void anAnswersTextChoosesIt_data() {
        QTest::addColumn<int>("choice");
        QTest::newRow("first") << 1;
        QTest::newRow("second") << 2;
        QTest::newRow("third") << 3;
    }

    void anAnswersTextChoosesIt() {
        QFETCH(int, choice);
        MainTest &quiz = openActive(u"1"_s);
        quizRun().correctAnswerNumber = choice;
        const auto &label = desk::control(quiz.window(), u"lblAnswer%1"_s.arg(choice));
        clickAt(label, QPoint(label.fontMetrics().averageCharWidth(), label.height() / 2));
        QCOMPARE(desk::text(quiz.window(), u"lblStatus"_s), u"correct");
        QVERIFY(desk::isShown(quiz.window(), u"lblStatus"_s));
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void theEdgeOfAnAnswersRowChoosesIt_data() { anAnswersTextChoosesIt_data(); }

    void theEdgeOfAnAnswersRowChoosesIt() {
        QFETCH(int, choice);
        MainTest &quiz = openActive(u"1"_s);
        quizRun().correctAnswerNumber = choice;
        const auto &row =
            *desk::control(quiz.window(), u"btnAnswer%1"_s.arg(choice)).parentWidget();
        clickAt(row, row.rect().bottomRight() - QPoint(2, 2));
        QCOMPARE(desk::text(quiz.window(), u"lblStatus"_s), u"correct");
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void theRowOfAnAnswerThatIsOffChoosesNothing() {
        MainTest &quiz = openActive(u"4"_s);
        const auto &button = desk::control(quiz.window(), u"btnAnswer3"_s);
        QVERIFY(!button.isEnabled());
        const auto &row = *button.parentWidget();
        clickAt(row, row.rect().center());
        clickAt(button, button.rect().center());
        QCOMPARE(quizRun().questionIndex, 0);
        QVERIFY(!desk::isShown(quiz.window(), u"lblStatus"_s));
    }

    void answersAreReadOutWithLetterAndText() {
        MainTest &quiz = openActive(u"1"_s);
        const auto name = [&](int choice) {
            return spoken(desk::control(quiz.window(), u"btnAnswer%1"_s.arg(choice)),
                          QAccessible::Name);
        };
        QCOMPARE(name(1), u"A: Private Hypertext Processor");
        QCOMPARE(name(2), u"B: PHP: Hypertext Preprocessor");
        QCOMPARE(name(3), u"C: Perl Hypertext Preprocessor");
        quizdesk::answerRight(quiz.window());
        quizdesk::goOn(quiz.window());
        QCOMPARE(name(1), u"A: echo 'Hello World'");
        QCOMPARE(name(3), u"C: printline('Hello World')");
    }

    void theAnswersStandInAGroupNamedAfterTheQuestion() {
        MainTest &quiz = openActive(u"1"_s);
        auto &group = desk::control(quiz.window(), u"question"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(&group)->role(), QAccessible::Grouping);
        for (const int choice : {1, 2, 3}) {
            QVERIFY(
                group.isAncestorOf(&desk::control(quiz.window(), u"btnAnswer%1"_s.arg(choice))));
        }
        QCOMPARE(spoken(group, QAccessible::Name), u"What does PHP stand for?"_s);

        quizdesk::answerRight(quiz.window());
        QCOMPARE(spoken(group, QAccessible::Name), u"What does PHP stand for?"_s);
        quizdesk::goOn(quiz.window());
        QCOMPARE(spoken(group, QAccessible::Name), u"How would you write 'Hello World' in PHP?"_s);

        QVERIFY(golden::question(74).text.contains(u"&&"));
        quiz.Question74();
        QCOMPARE(spoken(group, QAccessible::Name), golden::question(74).text);
    }

    void theQuestionsNumberIsReadOutWithTheFirstAnswer() {
        MainTest &quiz = openActive(u"1"_s);
        QCOMPARE(quiz.window()->focusWidget(), &desk::control(quiz.window(), u"btnAnswer1"_s));
        QCOMPARE(descriptions(quiz), QStringList({u"Question 1 of 14"_s, QString(), QString()}));

        quizdesk::answerRight(quiz.window());
        quizdesk::goOn(quiz.window());
        QCOMPARE(quiz.window()->focusWidget(), &desk::control(quiz.window(), u"btnAnswer1"_s));
        QCOMPARE(descriptions(quiz), QStringList({u"Question 2 of 14"_s, QString(), QString()}));
    }

    void aRightAnswerIsReadOutWithTheWayOn() {
        MainTest &quiz = openActive(u"1"_s);
        auto &next = desk::control(quiz.window(), u"btnNextQuestion"_s);
        quizdesk::answerRight(quiz.window());
        QCOMPARE(quiz.window()->focusWidget(), &next);
        QCOMPARE(spoken(next, QAccessible::Description),
                 readWithTheFocus(u"correct, score 100 %"_s));
    }

    void aWrongAnswerIsReadOutWithTheRightOne() {
        MainTest &quiz = openActive(u"1"_s);
        auto &next = desk::control(quiz.window(), u"btnNextQuestion"_s);
        quizdesk::answerWrong(quiz.window());
        QCOMPARE(quiz.window()->focusWidget(), &next);
        QCOMPARE(spoken(next, QAccessible::Description),
                 readWithTheFocus(
                     u"wrong, the right answer is B: PHP: Hypertext Preprocessor, score 0%"_s));
    }

    void theRightAnswerIsSaidUntilTheNextQuestion_data() {
        QTest::addColumn<int>("right");
        QTest::addColumn<int>("chosen");
        for (const int right : {1, 2, 3}) {
            for (const int chosen : {1, 2, 3}) {
                QTest::addRow("%d is right, %d is chosen", right, chosen) << right << chosen;
            }
        }
    }

    void theRightAnswerIsSaidUntilTheNextQuestion() {
        QFETCH(const int, right);
        QFETCH(const int, chosen);
        MainTest &quiz = openActive(u"1"_s);
        quizRun().correctAnswerNumber = right;
        quizdesk::answer(quiz.window(), chosen);
        QStringList expected{QString(), QString(), QString()};
        expected[right - 1] = u"the right answer"_s;
        QCOMPARE(descriptions(quiz), expected);
        quizdesk::goOn(quiz.window());
        QCOMPARE(descriptions(quiz), QStringList({u"Question 2 of 14"_s, QString(), QString()}));
    }

    void progressIsReadOutInWords() {
        MainTest &quiz = openActive(u"1"_s);
        quizdesk::answerQuestions(quiz.window(), 3, 3);
        quizdesk::goOn(quiz.window());
        QVERIFY(spoken(desk::control(quiz.window(), u"progressbarMain"_s), QAccessible::Name)
                    .contains(u"3 of 14"));
        QVERIFY(spoken(desk::control(quiz.window(), u"lblProgressPercent"_s), QAccessible::Name)
                    .contains(u"4 of 14"));
    }

 private:
    MainTest &openActive(const QString &quizId) {
        quiz_ = quizdesk::open(quizId);
        quiz_->window()->activateWindow();
        if (!QTest::qWaitForWindowActive(quiz_->window())) {
            qFatal("The quiz window is not active");
        }
        return *quiz_;
    }

    /// What a screen reader reads of each of the three answers after its name.
    static QStringList descriptions(const MainTest &quiz) {
        QStringList descriptions;
        for (const int choice : {1, 2, 3}) {
            descriptions << spoken(desk::control(quiz.window(), u"btnAnswer%1"_s.arg(choice)),
                                   QAccessible::Description);
        }
        return descriptions;
    }

    std::shared_ptr<MainTest> quiz_;
};

ZORVAN_TEST(tst_quizcontrols)
#include "tst_quizcontrols.moc"
