#include <QTest>

#include "platform/windowcontroller.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/standarderror.h"
#include "support/store.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_questionflow final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void firstAnswerRightSaysCorrectAndHundredWithABlank();

 private:
    std::shared_ptr<MainTest> open(const QString &quizId);

    std::unique_ptr<Alerts> alerts_;
};

void tst_questionflow::init() {
    store::fill(store::seeded());
    // A source that always gives 0 leaves the questions in ascending order.
    quizRun().random = [] { return 0U; };
    alerts_ = std::make_unique<Alerts>();
}

void tst_questionflow::cleanup() {
    desk::clear();
    QVERIFY(alerts_->verify());
}

std::shared_ptr<MainTest> tst_questionflow::open(const QString &quizId) {
    store::set(u"currentTest"_s, quizId);
    auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
    quiz->showWindow();
    return quiz;
}

void tst_questionflow::firstAnswerRightSaysCorrectAndHundredWithABlank() {
    const auto quiz = open(u"1"_s);
    desk::click(quiz->window(), u"btnAnswer2"_s);
    QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), u"correct"_s);
    QVERIFY(desk::isShown(quiz->window(), u"lblStatus"_s));
    QCOMPARE(desk::text(quiz->window(), u"lblCorrectPercent"_s), u"100 %"_s);
}

ZORVAN_TEST_MAIN(tst_questionflow)
#include "tst_questionflow.moc"
