#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "content/catalogue.h"
#include "controls/keylabel.h"
#include "controls/textlabel.h"
#include "progress/progressstore.h"
#include "quizrun/quizrun.h"
#include "shell/help.h"
#include "support/learner.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

// As keyboards say it.
#ifdef Q_OS_WIN
constexpr QLatin1String returnKey("Enter");
constexpr QLatin1String escapeKey("Esc");
#else
constexpr QLatin1String returnKey("Return");
constexpr QLatin1String escapeKey("Escape");
#endif

}  // namespace

/// The help: its text is longer than its window, and says what the program does.
class tst_help final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        ProgramTest::init();
        delegate_->ShowHelp();
        help_ = delegate_->theHelp->window();
        QVERIFY(QTest::qWaitForWindowActive(help_));
        QVERIFY(scrollBar().maximum() > 0);
    }

    void tabGoesThroughTheSectionsAndShowsEach() {
        for (const QString &section :
             {u"quizzes"_s, u"attempt"_s, u"passing"_s, u"timing"_s, u"progress"_s, u"keys"_s}) {
            QCOMPARE(focused(), section);
            QVERIFY2(isInView(section), qUtf8Printable(section));
            learner::type(help_, Qt::Key_Tab);
        }
        QCOMPARE(focused(), u"btnClose"_s);
    }

    void sectionIsInViewWhicheverWayTheFocusComes() {
        struct Way {
            QString from;
            Qt::Key key;
            QString section;
        };
        const std::array ways{Way{u"btnClose"_s, Qt::Key_Backtab, u"keys"_s},
                              Way{u"btnClose"_s, Qt::Key_Tab, u"quizzes"_s},
                              Way{u"keys"_s, Qt::Key_Backtab, u"progress"_s}};
        for (const auto &[from, key, section] : ways) {
            desk::control(help_, from).setFocus();
            scrollBar().setValue(key == Qt::Key_Tab ? scrollBar().maximum() : 0);
            QVERIFY2(!isInView(section), qUtf8Printable(section));
            learner::type(help_, key);
            QCOMPARE(focused(), section);
            QVERIFY2(isInView(section), qUtf8Printable(section));
        }
    }

    void textNeverScrollsSideways() {
        help_->resize(1, 1);
        QCoreApplication::processEvents();
        QCOMPARE(scrollArea().horizontalScrollBar()->maximum(), 0);
    }

    void quizzesAreTold() {
        QStringList names;
        for (const content::Quiz &quiz : content::quizzes) {
            names << quiz.name.toString();
        }
        const QString final = names.takeLast();
        const QString last = names.takeLast();
        const QString told = text(u"quizzes"_s);
        QVERIFY2(told.contains(names.join(u", "_s) + u" and "_s + last), qUtf8Printable(told));
        QVERIFY2(told.contains(final + u" is the final"_s), qUtf8Printable(told));
        QCOMPARE(figure(u"quizzes"_s, u"it asks (\\d+) questions"_s),
                 content::quizzes.back().questionCount);
    }

    void shareThatPassesIsTold() {
        int leastOfTen = 10;
        while (passesMethodsWith(leastOfTen - 1)) {
            --leastOfTen;
        }
        QCOMPARE(figure(u"passing"_s, u"at least (\\d+) % of its questions"_s), 10 * leastOfTen);
    }

    void passesToMasterAreTold() {
        const QString number = QStringList({u"no"_s, u"one"_s, u"two"_s, u"three"_s})
                                   .at(progressstore::passesToMaster);
        const QString told = text(u"passing"_s);
        QVERIFY2(told.contains(u"up to %1; with %1 marks the quiz is mastered"_s.arg(number)),
                 qUtf8Printable(told));
    }

    void timeOfAQuestionIsTold() {
        const auto quiz = quizdesk::openTimed(u"7"_s);
        const int seconds = quizRun().minutesLeft * 60 + quizRun().secondsLeft;
        QCOMPARE(figure(u"timing"_s, u"about (\\d+) seconds a question"_s),
                 qRound(double(seconds) / quizRun().questionCount));
    }

    void keysAreTold() {
        const QString toQuizzes = shortcut(u"GoTest1"_s) + u" to "_s + shortcut(u"GoTest7"_s);
        const QStringList keys{answerKeys() + u": choose an answer"_s,
                               returnKey + u": go on to the next question"_s,
                               u"Tab, Shift+Tab: move between controls; Space presses one"_s,
                               toQuizzes + u": start a quiz, in the order of the main menu"_s,
                               shortcut(u"GoMainMenu"_s) + u": main menu"_s,
                               shortcut(u"goPreferences"_s) + u": settings"_s,
                               shortcut(u"ShowHelp"_s) + u": this help"_s,
                               escapeKey + u": close a window other than the main menu or a quiz"_s,
                               shortcut(u"closeWindow"_s) + u": close the window"_s,
                               shortcut(u"quit"_s) + u": quit"_s};
        QWidget &section = desk::control(help_, u"keys"_s);
        const auto drawn = section.findChildren<platform::KeyLabel *>();
        QList<platform::TextLabel *> meanings = section.findChildren<platform::TextLabel *>();
        meanings.removeIf(
            [](const platform::TextLabel *label) { return label->caption().isEmpty(); });
        QCOMPARE(drawn.size(), keys.size());
        QCOMPARE(meanings.size(), keys.size());
        for (qsizetype i = 0; i < keys.size(); ++i) {
            QCOMPARE(drawn.at(i)->text() + u": "_s + meanings.at(i)->text(), keys.at(i));
        }
        QCOMPARE(text(u"keys"_s), u"Keys. "_s + keys.join(u". "_s));
    }

 private:
    QScrollArea &scrollArea() const { return desk::control<QScrollArea>(help_, u"scrollArea"_s); }
    QScrollBar &scrollBar() const { return *scrollArea().verticalScrollBar(); }

    /// Whether the whole section is on screen.
    bool isInView(const QString &section) const {
        const QWidget *viewport = scrollArea().viewport();
        const QWidget &shown = desk::control(help_, section);
        return viewport->rect().contains(QRect(shown.mapTo(viewport, QPoint()), shown.size()));
    }

    QString focused() const {
        const QWidget *focus = help_->focusWidget();
        return focus == nullptr ? u"(nothing)"_s : focus->objectName();
    }

    /// The text of a section, as it is read out.
    QString text(const QString &section) const {
        return desk::control(help_, section).accessibleName();
    }

    int figure(const QString &section, const QString &words) const {
        return QRegularExpression(words).match(text(section)).captured(1).toInt();
    }

    QString shortcut(const QString &action) const {
        return learner::menuItem(help_, action).shortcut().toString().replace(u","_s, u"comma"_s);
    }

    static QString answerKeys() {
        const auto quiz = quizdesk::open(u"1"_s);
        QStringList letters;
        QStringList digits;
        for (const QString &button : {u"btnAnswer1"_s, u"btnAnswer2"_s, u"btnAnswer3"_s}) {
            const QString keys =
                desk::control(quiz->window(), button).property("shortcuts").toString();
            letters << keys.section(u' ', 0, 0);
            digits << keys.section(u' ', -1);
        }
        return letters.join(u", "_s) + u" or "_s + digits.join(u", "_s);
    }

    static bool passesMethodsWith(int right) {
        const auto quiz = quizdesk::open(u"3"_s);
        quizdesk::answerQuestions(quiz->window(), 10, right);
        return store::value(u"currentStatus"_s) == u"pass";
    }

    platform::Window *help_ = nullptr;
};

ZORVAN_TEST(tst_help)
#include "tst_help.moc"
