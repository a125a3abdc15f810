#include <QTest>

#include "progress/quizcomplete.h"
#include "quizrun/quizdesk.h"
#include "support/alerts.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_twoquizwindows final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void theyShareOneRun();
    void onlyTheNewerClockRuns();
    void anUntimedWindowLeavesTheOthersClockRunning();
    void closingOneStopsTheOneClock();
    void endingOneLeavesTheOtherOpen();

 private:
    QString timeShown(const MainTest &quiz) { return desk::text(quiz.window(), u"lblTimeLeft"_s); }

    std::unique_ptr<Alerts> alerts_;
};

void tst_twoquizwindows::init() {
    quizdesk::prepare();
    alerts_ = std::make_unique<Alerts>();
}

void tst_twoquizwindows::cleanup() {
    desk::clear();
    QVERIFY(alerts_->verify());
}

void tst_twoquizwindows::theyShareOneRun() {
    const auto older = quizdesk::open(u"1"_s);
    const auto newer = quizdesk::open(u"2"_s);
    QVERIFY(older->window()->isVisible());
    QCOMPARE(quizRun().questionCount, 19);
    QCOMPARE(quizdesk::questionShown(older->window()), golden::question(1).text);

    // The window shows question 1, but the answer is graded as one to question 15.
    quizdesk::answer(older->window(), 1);
    QCOMPARE(desk::text(older->window(), u"lblStatus"_s), u"correct");
    QVERIFY(!desk::isShown(newer->window(), u"lblStatus"_s));
    QCOMPARE(quizRun().questionIndex, 1);

    quizdesk::answer(newer->window(), 2);
    QCOMPARE(desk::text(newer->window(), u"lblStatus"_s), u"wrong");
    QCOMPARE(desk::text(newer->window(), u"lblCorrectPercent"_s), u"50%");
    QCOMPARE(quizRun().questionIndex, 2);

    quizdesk::goOn(older->window());
    QCOMPARE(quizdesk::questionShown(older->window()), golden::question(17).text);
    QCOMPARE(desk::text(older->window(), u"lblProgressPercent"_s), u"3/19");
}

void tst_twoquizwindows::onlyTheNewerClockRuns() {
    const auto older = quizdesk::openTimed(u"1"_s);
    quizRun().quizTimer->fire();
    QCOMPARE(timeShown(*older), u"3:32");
    const auto newer = quizdesk::openTimed(u"5"_s);
    quizRun().quizTimer->fire();
    QCOMPARE(timeShown(*newer), u"1:45");
    QCOMPARE(timeShown(*older), u"3:32");
}

void tst_twoquizwindows::anUntimedWindowLeavesTheOthersClockRunning() {
    const auto older = quizdesk::openTimed(u"1"_s);
    store::set(u"timedQuizzes"_s, u"no"_s);
    const auto newer = quizdesk::open(u"5"_s);
    QVERIFY(quizRun().quizTimer);
    quizRun().quizTimer->fire();
    QCOMPARE(timeShown(*older), u"3:32");
    QVERIFY(!desk::isShown(newer->window(), u"lblTimeLeft"_s));
}

void tst_twoquizwindows::closingOneStopsTheOneClock() {
    const auto older = quizdesk::openTimed(u"1"_s);
    const auto newer = quizdesk::openTimed(u"5"_s);
    alerts_->answer(u"Yes"_s);
    older->window()->close();
    QVERIFY(!older->window()->isVisible());
    QVERIFY(newer->window()->isVisible());
    QVERIFY(quizRun().quizTimer && !quizRun().quizTimer->isValid());
}

void tst_twoquizwindows::endingOneLeavesTheOtherOpen() {
    const auto older = quizdesk::openTimed(u"1"_s);
    const auto newer = quizdesk::openTimed(u"5"_s);
    quizdesk::answerQuestions(newer->window(), 7, 7);
    QVERIFY(!newer->window()->isVisible());
    QVERIFY(older->window()->isVisible());
    QVERIFY(!quizRun().quizTimer);
    QVERIFY(!older->quizComplete);
    QVERIFY(newer->quizComplete != nullptr);
}

ZORVAN_TEST_MAIN(tst_twoquizwindows)
#include "tst_twoquizwindows.moc"
