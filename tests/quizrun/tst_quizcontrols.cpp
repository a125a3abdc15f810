#include <QTest>
#include <QWindow>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

/// The widget that gets the window's keys.
QWidget *focused(QWidget *window) {
    return window->focusWidget() == nullptr ? window : window->focusWidget();
}

/// Sends a key as a keyboard repeats it while it is held down.
void hold(QWidget *window, Qt::Key key, const QString &text) {
    constexpr bool repeated = true;
    QTest::simulateEvent(focused(window), true, key, Qt::NoModifier, text, repeated);
    QTest::simulateEvent(focused(window), false, key, Qt::NoModifier, text, repeated);
}

/// Clicks at a point of the control, on whatever is on top there.
void clickAt(const QWidget &control, const QPoint &point) {
    QTest::mouseClick(control.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      control.mapTo(control.window(), point));
}

QString nameRead(const QWidget *window, const QString &name) {
    return quizdesk::spoken(desk::control(window, name), QAccessible::Name);
}

QString position(const QWidget *window) {
    return desk::text(window, u"lblProgressPercent"_s);
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
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<int>("choice");
        QTest::newRow("A") << QKeyCombination(Qt::Key_A) << 1;
        QTest::newRow("B") << QKeyCombination(Qt::Key_B) << 2;
        QTest::newRow("C") << QKeyCombination(Qt::Key_C) << 3;
        QTest::newRow("1") << QKeyCombination(Qt::Key_1) << 1;
        QTest::newRow("2") << QKeyCombination(Qt::Key_2) << 2;
        QTest::newRow("3") << QKeyCombination(Qt::Key_3) << 3;
        QTest::newRow("1 on the keypad") << (Qt::KeypadModifier | Qt::Key_1) << 1;
    }

    void keysChooseAnAnswer() {
        QFETCH(const QKeyCombination, key);
        QFETCH(const int, choice);
        QWidget *window = openActive(u"1"_s);
        // Only the answer that the key should choose is right.
        quizRun().correctAnswerNumber = choice;
        QTest::keyClick(focused(window), key.key(), key.keyboardModifiers());
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"correct");
        // Not twice.
        QTest::keyClick(focused(window), key.key(), key.keyboardModifiers());
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void anAnswersRowChoosesItFromItsTextToItsEdge() {
        for (const int choice : {1, 2, 3}) {
            for (const bool atEdge : {false, true}) {
                QWidget *window = openActive(u"1"_s);
                quizRun().correctAnswerNumber = choice;
                const auto &row = desk::control(window, u"rowAnswer%1"_s.arg(choice));
                const auto &text = desk::control(window, u"lblAnswer%1"_s.arg(choice));
                atEdge ? clickAt(row, row.rect().bottomRight() - QPoint(2, 2))
                       : clickAt(text,
                                 QPoint(text.fontMetrics().averageCharWidth(), text.height() / 2));
                QCOMPARE(desk::text(window, u"lblStatus"_s), u"correct");
                QCOMPARE(quizRun().questionIndex, 1);
            }
        }
    }

    void anAnswerThatIsOffCannotBeChosen() {
        QWidget *window = openActive(u"4"_s);
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::twoAnswers);
        QTest::keyClick(focused(window), Qt::Key_C);
        QTest::keyClick(focused(window), Qt::Key_3);
        const auto &row = desk::control(window, u"rowAnswer3"_s);
        clickAt(row, row.rect().center());
        QCOMPARE(quizRun().questionIndex, 0);
    }

    void aHeldKeyAnswersOnlyOnce() {
        QWidget *window = openActive(u"1"_s);
        QTest::keyPress(focused(window), Qt::Key_A);
        quizdesk::goOn(window);
        hold(window, Qt::Key_A, u"a"_s);
        QCOMPARE(quizRun().questionIndex, 1);
        QTest::keyRelease(focused(window), Qt::Key_A);
        QTest::keyClick(focused(window), Qt::Key_A);
        QCOMPARE(quizRun().questionIndex, 2);
    }

    void returnGoesOnWhereverTheFocusIsButOnlyAfterAnAnswer_data() {
        QTest::addColumn<QKeyCombination>("key");
        QTest::newRow("Return") << QKeyCombination(Qt::Key_Return);
        QTest::newRow("Enter") << (Qt::KeypadModifier | Qt::Key_Enter);
    }

    void returnGoesOnWhereverTheFocusIsButOnlyAfterAnAnswer() {
        QFETCH(const QKeyCombination, key);
        QWidget *window = openActive(u"1"_s);
        const auto press = [&](QWidget &place) {
            place.setFocus();
            QTest::keyClick(&place, key.key(), key.keyboardModifiers());
        };
        press(desk::control(window, u"btnAnswer1"_s));
        press(*window);
        QCOMPARE(quizRun().questionIndex, 0);
        QCOMPARE(position(window), u"1/14");

        quizdesk::answerRight(window);
        press(*window);
        QCOMPARE(position(window), u"2/14");
        quizdesk::answerRight(window);
        press(desk::control(window, u"btnNextQuestion"_s));
        QCOMPARE(position(window), u"3/14");
        QCOMPARE(quizRun().questionIndex, 2);
    }

    void aHeldReturnGoesOnOnce() {
        QWidget *window = openActive(u"1"_s);
        quizdesk::answerRight(window);
        QTest::keyPress(focused(window), Qt::Key_Return);
        hold(window, Qt::Key_Return, u"\r"_s);
        QCOMPARE(quizRun().questionIndex, 1);
        quizdesk::answerRight(window);
        hold(window, Qt::Key_Return, u"\r"_s);
        QCOMPARE(position(window), u"2/14");
    }

    void answersAreReadOutWithLetterAndText() {
        const QWidget *window = openActive(u"1"_s);
        QCOMPARE(nameRead(window, u"btnAnswer1"_s), u"A: Private Hypertext Processor");
        QCOMPARE(nameRead(window, u"btnAnswer2"_s), u"B: PHP: Hypertext Preprocessor");
        QCOMPARE(nameRead(window, u"btnAnswer3"_s), u"C: Perl Hypertext Preprocessor");
        quiz_->Question4();
        quiz_->Question55();
        QCOMPARE(nameRead(window, u"btnAnswer3"_s), u"C: empty");
    }

    void theAnswersStandInAGroupNamedAfterTheQuestion() {
        const QWidget *window = openActive(u"1"_s);
        auto &group = desk::control(window, u"question"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(&group)->role(), QAccessible::Grouping);
        for (const QString &name : {u"btnAnswer1"_s, u"btnAnswer2"_s, u"btnAnswer3"_s}) {
            QVERIFY(group.isAncestorOf(&desk::control(window, name)));
        }
        quizdesk::answerRight(window);
        QCOMPARE(nameRead(window, u"question"_s), u"What does PHP stand for?");
        quiz_->Question74();
        QCOMPARE(nameRead(window, u"question"_s), u"What does the logical operator && stand for?");
    }

    void theQuestionsPlaceIsReadOutWithTheFirstAnswer() {
        const QWidget *window = openActive(u"1"_s);
        const QWidget &first = desk::control(window, u"btnAnswer1"_s);
        QCOMPARE(window->focusWidget(), &first);
        QCOMPARE(quizdesk::answerDescriptions(window),
                 (QStringList{u"Question 1 of 14"_s, QString(), QString()}));
        quizdesk::answerRight(window);
        quizdesk::goOn(window);
        QCOMPARE(window->focusWidget(), &first);
        QCOMPARE(nameRead(window, u"lblProgressPercent"_s), u"Question 2 of 14");
        QCOMPARE(nameRead(window, u"progressbarMain"_s), u"Progress, 1 of 14 questions");
    }

    void theVerdictIsReadOutWithTheWayOn() {
        QWidget *window = openActive(u"1"_s);
        auto &next = desk::control(window, u"btnNextQuestion"_s);
        // Nothing is read with the focus if Qt can announce the verdict, or it would be heard
        // twice.
        const bool announced = QT_VERSION >= QT_VERSION_CHECK(6, 8, 0);
        const auto verdict = [&] { return quizdesk::spoken(next, QAccessible::Description); };
        quizdesk::answerRight(window);
        QCOMPARE(window->focusWidget(), &next);
        QCOMPARE(verdict(), announced ? QString() : u"correct, score 100 %"_s);
        quizdesk::goOn(window);
        quizdesk::answerWrong(window);
        QCOMPARE(window->focusWidget(), &next);
        QCOMPARE(verdict(), announced
                                ? QString()
                                : u"wrong, the right answer is A: echo 'Hello World', score 50%"_s);
    }

 private:
    QWidget *openActive(const QString &quizId) {
        quiz_ = quizdesk::open(quizId);
        quiz_->window()->activateWindow();
        if (!QTest::qWaitForWindowActive(quiz_->window())) {
            qFatal("The quiz window is not active");
        }
        return quiz_->window();
    }

    std::shared_ptr<MainTest> quiz_;
};

ZORVAN_TEST(tst_quizcontrols)
#include "tst_quizcontrols.moc"
