#include <QRadioButton>
#include <QTest>

#include "shell/help.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_settings final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void onlyTheExactYesShowsAsTimed() {
        for (const QString &value : {u"yes"_s, u"no"_s, u"Yes"_s, u"true"_s, u"yes!"_s, u""_s}) {
            store::set(u"timedQuizzes"_s, value);
            open();
            QVERIFY2(timed().isChecked() == (value == u"yes"), qUtf8Printable(value));
            QVERIFY2(untimed().isChecked() == (value != u"yes"), qUtf8Printable(value));
            QCOMPARE(settings_->focusWidget(), value == u"yes" ? &timed() : &untimed());
        }
    }

    void clickWritesWhatTheOptionSays() {
        open();
        for (int round = 0; round < 2; ++round) {
            for (const auto &[option, said, value] :
                 {std::tuple{&timed(), u"&Timed: "_s, u"yes"_s},
                  std::tuple{&untimed(), u"&Untimed: "_s, u"no"_s}}) {
                QVERIFY2(option->text().startsWith(said), qUtf8Printable(option->text()));
                // On the circle, in every style; the second click finds it on.
                for (int click = 0; click < 2; ++click) {
                    QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(8, option->height() / 2));
                    QVERIFY(option->isChecked());
                    QCOMPARE(store::writes(), QList<store::Write>({{u"timedQuizzes"_s, value}}));
                    store::forgetWrites();
                }
            }
        }
    }

    void wholeRowOfAnOptionChoosesIt() {
        open();
        for (QRadioButton *option : {&timed(), &untimed()}) {
            QVERIFY(option->height() >= 24);
            // Below the text and beyond its end.
            QTest::mouseClick(option, Qt::LeftButton, {}, option->rect().bottomRight());
            QVERIFY(option->isChecked());
        }
    }

    void clearingAsksAndReportsOverTheSettings() {
        open();
        delegate_->ShowHelp();
        QVERIFY(QTest::qWaitForWindowActive(delegate_->theHelp->window()));
        // Even if another window comes to the front meanwhile.
        alerts_->answer(u"Yes"_s, [this] { delegate_->ShowHelp(); });
        alerts_->answer(u"OK"_s);
        learner::press(settings_, u"resetProgress"_s);
        const ShownAlert question{.message =
                                      u"This will reset all progress. Are you sure you want "
                                      "to clear your progress?"_s,
                                  .buttons = {u"Yes"_s, u"No"_s},
                                  .over = u"Settings"_s};
        const ShownAlert report{.message = u"All progress on quizzes has been reset"_s,
                                .buttons = {u"OK"_s},
                                .over = u"Settings"_s};
        QCOMPARE(alerts_->shown(), QList<ShownAlert>({question, report}));
    }

 private:
    void open() {
        delegate_->goPreferences();
        settings_ = delegate_->theSettings->window();
    }

    QRadioButton &timed() const { return desk::control<QRadioButton>(settings_, u"yesRadio"_s); }
    QRadioButton &untimed() const { return desk::control<QRadioButton>(settings_, u"noRadio"_s); }

    platform::Window *settings_ = nullptr;
};

ZORVAN_TEST(tst_settings)
#include "tst_settings.moc"
