#include <algorithm>

#include <QSet>
#include <QTest>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

QStringList numbers(int first, int last) {
    QStringList numbers;
    for (int number = first; number <= last; ++number) {
        numbers << QString::number(number);
    }
    return numbers;
}

QStringList sorted(QStringList list) {
    std::sort(list.begin(), list.end(),
              [](const QString &a, const QString &b) { return a.toInt() < b.toInt(); });
    return list;
}

/// A random source that picks the last place at every step of shuffling `entries` entries.
content::RandomSource alwaysLast(std::uint32_t entries) {
    return [left = entries]() mutable { return --left; };
}

}  // namespace

class tst_questionorder final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuizShowsItsNameAndDrawsOnItsNumbers_data() { golden::quizRows(); }

    void everyQuizShowsItsNameAndDrawsOnItsNumbers() {
        QFETCH(QString, name);
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(int, questionCount);
        const auto quiz = quizdesk::open(QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(desk::text(quiz->window(), u"lblQuizName"_s), name);
        QCOMPARE(quizRun().questionCount, questionCount);
        QCOMPARE(quizRun().questionOrder, numbers(first, last));
        QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(first).text);
        QCOMPARE(desk::text(quiz->window(), u"lblProgressPercent"_s), u"1/%1"_s.arg(questionCount));
        QCOMPARE(quizdesk::maxLevel(quiz->window()), double(questionCount));
    }

    void theSmallestQuizHoldsItsSevenEachOnce() {
        quizRun().random = alwaysLast(7);
        const auto quiz = quizdesk::open(u"5"_s);
        const QStringList expected{u"61"_s, u"55"_s, u"56"_s, u"57"_s, u"58"_s, u"59"_s, u"60"_s};
        QCOMPARE(quizRun().questionOrder, expected);
        QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(61).text);
    }

    void mainTestShufflesAllAndAsksTheFirstThirty() {
        quizRun().random = alwaysLast(77);
        const auto quiz = quizdesk::open(u"7"_s);
        QCOMPARE(quizRun().questionOrder, QStringList(u"77"_s) + numbers(1, 76));

        // The first entry is 77, in whose place question 74 is asked.
        QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(74).text);
        for (int number = 1; number <= 29; ++number) {
            quizdesk::answerRight(quiz->window());
            quizdesk::goOn(quiz->window());
            QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(number).text);
        }
        QVERIFY(quiz->window()->isVisible());
        quizdesk::answerRight(quiz->window());
        QVERIFY(!quiz->window()->isVisible());
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
    }

    void syntaxAsksQuestion74FourTimes() {
        const auto quiz = quizdesk::open(u"6"_s);
        QStringList asked{quizdesk::questionShown(quiz->window())};
        for (int i = 1; i < 16; ++i) {
            quizdesk::answerRight(quiz->window());
            quizdesk::goOn(quiz->window());
            asked << quizdesk::questionShown(quiz->window());
        }
        QCOMPARE(asked.count(u"What does the logical operator && stand for?"), 4);
        QCOMPARE(QSet<QString>(asked.begin(), asked.end()).size(), 13);
    }

    void mainTestCanAskQuestion74FourTimes() {
        quizRun().random = [] { return 73U; };
        const auto quiz = quizdesk::open(u"7"_s);
        QCOMPARE(quizRun().questionOrder.first(4), numbers(74, 77));
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(quizdesk::questionShown(quiz->window()),
                     u"What does the logical operator && stand for?");
            quizdesk::answer(quiz->window(), 3);
            QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), u"correct");
            quizdesk::goOn(quiz->window());
        }
        QVERIFY(quizdesk::questionShown(quiz->window()) !=
                u"What does the logical operator && stand for?");
    }

    void aSecondRunIsShuffledAfresh() {
        const auto first = quizdesk::open(u"2"_s);
        QCOMPARE(quizRun().questionOrder, numbers(15, 33));
        for (const int again : {1, 2}) {
            quizRun().random = alwaysLast(19);
            const auto next = quizdesk::open(u"2"_s);
            // If the last order were shuffled again, it would rotate once more each time.
            QVERIFY2(quizRun().questionOrder == QStringList(u"33"_s) + numbers(15, 32),
                     qPrintable(QString::number(again)));
        }
    }

    void aRunReplacesTheOrderOfTheLast() {
        const auto syntax = quizdesk::open(u"6"_s);
        QCOMPARE(quizRun().questionOrder.size(), 16);
        const auto methods = quizdesk::open(u"3"_s);
        QCOMPARE(quizRun().questionOrder, numbers(34, 43));
    }

    void anUnknownQuizLeavesTheOrderAndHasNoQuestions_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("id");
        QTest::newRow("eight") << u"8"_s << u"8"_s;
        QTest::newRow("zero") << u"0"_s << u"0"_s;
        QTest::newRow("nothing") << u""_s << u""_s;
        QTest::newRow("leading zero") << u"01"_s << u"01"_s;
        QTest::newRow("leading blank") << u"\" 1\""_s << u" 1"_s;
        QTest::newRow("trailing blank") << u"\"1 \""_s << u"1 "_s;
    }

    void anUnknownQuizLeavesTheOrderAndHasNoQuestions() {
        QFETCH(QString, stored);
        QFETCH(QString, id);
        int draws = 0;
        quizRun().random = [&draws] {
            ++draws;
            return 0U;
        };
        const QStringList before{u"12"_s, u"3"_s};
        quizRun().questionOrder = before;
        const auto quiz = quizdesk::open(stored);
        QCOMPARE(quizRun().currentTestId, id);
        QCOMPARE(quizRun().questionOrder, before);
        QCOMPARE(quizRun().questionCount, 0);
        QCOMPARE(draws, 0);
        QCOMPARE(desk::text(quiz->window(), u"lblQuizName"_s),
                 quizdesk::layoutText(u"lblQuizName"_s));
    }

    void theOrderOutlivesItsWindow() {
        quizRun().random = alwaysLast(7);
        const auto quiz = quizdesk::open(u"5"_s);
        quizdesk::answerQuestions(quiz->window(), 7, 7);
        QVERIFY(!quiz->window()->isVisible());
        QCOMPARE(quizRun().questionOrder, QStringList(u"61"_s) + numbers(55, 60));
    }

    void theSystemsSourceIsTheOneDrawnFrom() {
        quizRun() = QuizRun();
        const auto quiz = quizdesk::open(u"7"_s);
        const QStringList order = quizRun().questionOrder;
        QCOMPARE(sorted(order), numbers(1, 77));
        QVERIFY(order != numbers(1, 77));
        const auto again = quizdesk::open(u"7"_s);
        QVERIFY(quizRun().questionOrder != order);
    }
};

ZORVAN_TEST(tst_questionorder)
#include "tst_questionorder.moc"
