#include <QTest>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

using Writes = QList<store::Write>;

namespace {

/// Sees how many results windows are on screen when another window goes.
class Leaving final : public QObject {
 public:
    explicit Leaving(QWidget &window) { window.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Hide) {
            results_ = desk::windows(u"QuizComplete"_s).size();
        }
        return false;
    }
    std::optional<qsizetype> results() const { return results_; }

 private:
    std::optional<qsizetype> results_;
};

}  // namespace

class tst_quizend final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void fourFifthsOfTheAnswersPass() {
        struct Row {
            QString quizId;
            int questions;
            int fewest;
        };
        const QList<Row> rows{{u"1"_s, 14, 12}, {u"2"_s, 19, 16}, {u"3"_s, 10, 8}, {u"4"_s, 11, 9},
                              {u"5"_s, 7, 6},   {u"6"_s, 16, 13}, {u"7"_s, 30, 24}};
        for (const auto &[id, questions, fewest] : rows) {
            QCOMPARE(writesOfAnAttempt(id, questions, fewest - 1),
                     (Writes{{u"currentStatus"_s, u"fail"_s}, {u"currentTest"_s, id}}));
            QCOMPARE(writesOfAnAttempt(id, questions, fewest),
                     (Writes{{u"currentStatus"_s, u"pass"_s},
                             {u"quiz"_s + id, u"1"_s},
                             {u"currentTest"_s, id}}));
        }
    }

    void thePassMarkIsPassedByMoreOnly() {
        const auto quiz = quizdesk::open(u"5"_s);
        quizRun().questionCount = 1000;
        quizRun().correctCount = 798;
        quiz->GameOver();
        QCOMPARE(store::value(u"currentStatus"_s), u"fail");
        // The nearest float is greater.
        quizRun().correctCount = 799;
        quiz->GameOver();
        QCOMPARE(store::value(u"currentStatus"_s), u"pass");
    }

    void aPassRaisesThePassCountUpToThree() {
        for (const QString &before : {u"0"_s, u"1"_s, u"2"_s}) {
            store::set(u"quiz3"_s, before);
            writesOfAnAttempt(u"3"_s, 10, 10);
            QCOMPARE(store::value(u"quiz3"_s), QString::number(before.toInt() + 1));
        }
        // Another one is left alone, and so is one that is not there.
        const Writes withoutCount{{u"currentStatus"_s, u"pass"_s}, {u"currentTest"_s, u"3"_s}};
        for (const QString &before : {u"3"_s, u"4"_s, u""_s, u"one"_s, u"01"_s}) {
            store::set(u"quiz3"_s, before);
            QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), withoutCount);
        }
        store::fill({{u"firstRun"_s, u"false"_s}});
        QCOMPARE(writesOfAnAttempt(u"3"_s, 10, 10), withoutCount);
    }

    void withoutQuestionsOneAnswerDecides() {
        // No quiz has that key.
        store::set(u"quiz0"_s, u"1"_s);
        quizRun().questionOrder = QStringList{u"55"_s};
        QCOMPARE(writesOfAnAttempt(u"0"_s, 1, 1),
                 (Writes{{u"currentStatus"_s, u"pass"_s}, {u"currentTest"_s, u"0"_s}}));
        QCOMPARE(writesOfAnAttempt(u"0"_s, 1, 0),
                 (Writes{{u"currentStatus"_s, u"fail"_s}, {u"currentTest"_s, u"0"_s}}));
    }

    void anAbsentIdStaysAbsent() {
        quizRun().questionOrder = QStringList{u"55"_s};
        store::fill({{u"firstRun"_s, u"false"_s}});
        const auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
        quiz->showWindow();
        quizdesk::answerQuestions(quiz->window(), 1, 1);
        QCOMPARE(store::writes(), (Writes{{u"currentStatus"_s, u"pass"_s}}));
    }

    // Otherwise the program would have no window for a moment, and the desktop would turn to
    // another one.
    void theResultsAreShownBeforeTheQuizWindowGoes() {
        const auto quiz = quizdesk::open(u"5"_s);
        const Leaving leaving(*quiz->window());
        quizdesk::answerQuestions(quiz->window(), 7, 7);
        QCOMPARE(leaving.results(), 1);
    }

 private:
    static Writes writesOfAnAttempt(const QString &quizId, int questions, int right) {
        const auto quiz = quizdesk::open(quizId);
        store::forgetWrites();
        quizdesk::answerQuestions(quiz->window(), questions, right);
        return store::writes();
    }
};

ZORVAN_TEST(tst_quizend)
#include "tst_quizend.moc"
