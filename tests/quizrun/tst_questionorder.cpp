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

/// A random source that picks the last place at every step of shuffling `entries` entries.
content::RandomSource alwaysLast(std::uint32_t entries) {
    return [left = entries]() mutable { return --left; };
}

}  // namespace

class tst_questionorder final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void mainTestShufflesAllAndAsksTheFirstThirty() {
        quizRun().random = alwaysLast(77);
        const auto quiz = quizdesk::open(u"7"_s);
        QCOMPARE(quizRun().questionOrder, QStringList(u"77"_s) + numbers(1, 76));
        quizdesk::answerRight(quiz->window());
        for (int number = 1; number <= 29; ++number) {
            quizdesk::goOn(quiz->window());
            QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(number).text);
            QVERIFY(quiz->window()->isVisible());
            quizdesk::answerRight(quiz->window());
        }
        QVERIFY(!quiz->window()->isVisible());
    }

    void question74IsAskedInThePlaceOfTheThreeAfterItToo() {
        const auto quiz = quizdesk::open(u"6"_s);
        QCOMPARE(quizRun().questionOrder, numbers(62, 77));
        quizdesk::answerQuestions(quiz->window(), 12, 12);
        for (int place = 12; place < 16; ++place) {
            quizdesk::goOn(quiz->window());
            QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(74).text);
            quizdesk::answer(quiz->window(), 3);
            QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), u"correct");
        }
    }

    void everyAttemptIsShuffledAfresh() {
        for (int attempt = 0; attempt < 3; ++attempt) {
            quizRun().random = alwaysLast(7);
            const auto quiz = quizdesk::open(u"5"_s);
            // If the last order were shuffled again, it would rotate once more each time.
            QCOMPARE(quizRun().questionOrder, QStringList(u"61"_s) + numbers(55, 60));
        }
    }

    void theSystemsSourceIsTheOneDrawnFrom() {
        quizRun() = QuizRun();
        const auto quiz = quizdesk::open(u"7"_s);
        const QStringList order = quizRun().questionOrder;
        QVERIFY(order != numbers(1, 77));
        const auto again = quizdesk::open(u"7"_s);
        QVERIFY(quizRun().questionOrder != order);
    }
};

ZORVAN_TEST(tst_questionorder)
#include "tst_questionorder.moc"
