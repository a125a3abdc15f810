#include <QTest>

#include "progress/quizcomplete.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_quizend final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void theFewestRightAnswersPass_data() {
        QTest::addColumn<int>("questions");
        QTest::addColumn<int>("fewest");
        QTest::newRow("1") << 14 << 12;
        QTest::newRow("2") << 19 << 16;
        QTest::newRow("3") << 10 << 8;
        QTest::newRow("4") << 11 << 9;
        QTest::newRow("5") << 7 << 6;
        QTest::newRow("6") << 16 << 13;
        QTest::newRow("7") << 30 << 24;
    }

    void theFewestRightAnswersPass() {
        QFETCH(int, questions);
        QFETCH(int, fewest);
        const QString id = QString::fromLatin1(QTest::currentDataTag());
        const QList<store::Write> expected{
            {u"currentStatus"_s, u"pass"_s}, {u"quiz"_s + id, u"1"_s}, {u"currentTest"_s, id}};
        QCOMPARE(writesOfAnAttempt(id, questions, fewest), expected);
    }

    void oneFewerFails_data() { theFewestRightAnswersPass_data(); }

    void oneFewerFails() {
        QFETCH(int, questions);
        QFETCH(int, fewest);
        const QString id = QString::fromLatin1(QTest::currentDataTag());
        const QList<store::Write> expected{{u"currentStatus"_s, u"fail"_s}, {u"currentTest"_s, id}};
        QCOMPARE(writesOfAnAttempt(id, questions, fewest - 1), expected);
        QCOMPARE(store::value(u"quiz"_s + id), u"0");
    }

    void thePassMarkIsPassedByMoreOnly_data() {
        QTest::addColumn<int>("right");
        QTest::addColumn<QString>("status");
        QTest::newRow("0.798") << 798 << u"fail"_s;
        // The nearest float is greater.
        QTest::newRow("0.799") << 799 << u"pass"_s;
        QTest::newRow("0.7995") << 1599 << u"pass"_s;
    }

    void thePassMarkIsPassedByMoreOnly() {
        QFETCH(int, right);
        QFETCH(QString, status);
        const auto quiz = quizdesk::open(u"5"_s);
        quizRun().correctCount = right;
        quizRun().questionCount = right > 1000 ? 2000 : 1000;
        quiz->GameOver();
        QCOMPARE(store::value(u"currentStatus"_s), status);
    }

    void aPassRaisesThePassCountByOne_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("first pass") << u"0"_s << u"1"_s;
        QTest::newRow("second pass") << u"1"_s << u"2"_s;
        QTest::newRow("third pass") << u"2"_s << u"3"_s;
    }

    void aPassRaisesThePassCountByOne() {
        QFETCH(QString, before);
        QFETCH(QString, after);
        store::set(u"quiz3"_s, before);
        const QList<store::Write> expected{
            {u"currentStatus"_s, u"pass"_s}, {u"quiz3"_s, after}, {u"currentTest"_s, u"3"_s}};
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), expected);
        store::Contents stored = store::seeded();
        stored[u"currentStatus"_s] = u"pass"_s;
        stored[u"quiz3"_s] = after;
        stored[u"currentTest"_s] = u"3"_s;
        QCOMPARE(store::contents(), stored);
    }

    void aMasteredQuizStaysMastered() {
        store::set(u"quiz3"_s, u"3"_s);
        const QList<store::Write> expected{{u"currentStatus"_s, u"pass"_s},
                                           {u"currentTest"_s, u"3"_s}};
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), expected);
        QCOMPARE(store::value(u"quiz3"_s), u"3");
    }

    void anAbsentPassCountStaysAbsent() {
        store::Contents withoutQuiz3 = store::seeded();
        withoutQuiz3.remove(u"quiz3"_s);
        store::fill(withoutQuiz3);
        const QList<store::Write> expected{{u"currentStatus"_s, u"pass"_s},
                                           {u"currentTest"_s, u"3"_s}};
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), expected);
        QCOMPARE(store::value(u"quiz3"_s), std::nullopt);
    }

    void anotherPassCountIsLeftAlone_data() {
        QTest::addColumn<QString>("passCount");
        QTest::newRow("four") << u"4"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("word") << u"one"_s;
        QTest::newRow("leading zero") << u"01"_s;
    }

    void anotherPassCountIsLeftAlone() {
        QFETCH(QString, passCount);
        store::set(u"quiz3"_s, passCount);
        const QList<store::Write> expected{{u"currentStatus"_s, u"pass"_s},
                                           {u"currentTest"_s, u"3"_s}};
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), expected);
        QCOMPARE(store::value(u"quiz3"_s), passCount);
    }

    void aFailLeavesThePassCountAlone() {
        store::set(u"quiz3"_s, u"1"_s);
        const QList<store::Write> expected{{u"currentStatus"_s, u"fail"_s},
                                           {u"currentTest"_s, u"3"_s}};
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 0), expected);
        QCOMPARE(store::value(u"quiz3"_s), u"1");
    }

    void withoutQuestionsARightAnswerPasses() {
        // No quiz has that key.
        store::set(u"quiz0"_s, u"1"_s);
        quizRun().questionOrder = QStringList{u"55"_s};
        const QList<store::Write> expected{{u"currentStatus"_s, u"pass"_s},
                                           {u"currentTest"_s, u"0"_s}};
        QCOMPARE(writesOfAnAttempt(u"0"_s, 1, 1), expected);
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
    }

    void withoutQuestionsAWrongAnswerFails() {
        quizRun().questionOrder = QStringList{u"55"_s};
        const QList<store::Write> expected{{u"currentStatus"_s, u"fail"_s},
                                           {u"currentTest"_s, u"0"_s}};
        QCOMPARE(writesOfAnAttempt(u"0"_s, 1, 0), expected);
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
    }

    void anAbsentIdStaysAbsent() {
        quizRun().questionOrder = QStringList{u"55"_s};
        store::Contents wiped = store::seeded();
        wiped.remove(u"currentTest"_s);
        store::fill(wiped);
        const auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
        quiz->showWindow();
        quizdesk::answerQuestions(quiz->window(), 1, 1);
        QCOMPARE(store::value(u"currentStatus"_s), u"pass");
        QCOMPARE(store::value(u"currentTest"_s), std::nullopt);
    }

    void theResultsAreHeldByTheQuiz() {
        const auto quiz = quizdesk::open(u"5"_s);
        QVERIFY(!quiz->quizComplete);
        quizdesk::answerQuestions(quiz->window(), 7, 7);
        QVERIFY(quiz->quizComplete);
        QCOMPARE(quiz->quizComplete->window(), desk::window(u"QuizComplete"_s));
        QCOMPARE(desk::text(quiz->quizComplete->window(), u"lblQuizName"_s), u"Structure");
    }

    void endingAgainReplacesTheResults() {
        const auto quiz = quizdesk::open(u"5"_s);
        quiz->GameOver();
        const std::shared_ptr<QuizComplete> first = quiz->quizComplete;
        quiz->GameOver();
        QVERIFY(quiz->quizComplete != first);
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 2);
    }

 private:
    QList<store::Write> writesOfAnAttempt(const QString &quizId, int questions, int right) {
        const auto quiz = quizdesk::open(quizId);
        store::forgetWrites();
        quizdesk::answerQuestions(quiz->window(), questions, right);
        return store::writes();
    }
};

ZORVAN_TEST(tst_quizend)
#include "tst_quizend.moc"
