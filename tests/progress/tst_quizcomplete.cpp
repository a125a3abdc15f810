#include <stdexcept>

#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "controls/banner.h"
#include "controls/imagelabel.h"
#include "progress/quizcomplete.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/controllertable.h"
#include "shell/mainmenu.h"
#include "support/learner.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/controllers.h"
#include "windowing/layouts.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

namespace {

const QString failed = u"Unfortunately you did not pass the quiz this time. Please try again."_s;

}  // namespace

class tst_quizcomplete final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void freshlyClearedStoreCountsAsNotPassed() {
        const auto results = open({{u"currentTest"_s, u"1"_s}, {u"currentStatus"_s, u"0"_s}});
        QCOMPARE(marks(results), QStringList({u"blank"_s, u"blank"_s, u"blank"_s}));
        QCOMPARE(text(results, u"lblTheStatus"_s), failed);
    }

    void marksSentenceAndMoodFollowCountAndOutcome_data() {
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QStringList>("marks");
        QTest::addColumn<QString>("sentence");
        QTest::addColumn<platform::Banner::Tone>("tone");
        constexpr auto quiet = platform::Banner::Tone::Neutral;
        constexpr auto glad = platform::Banner::Tone::Positive;
        constexpr auto festive = platform::Banner::Tone::Festive;
        const QString check = u"check"_s;
        const QString blank = u"blank"_s;
        const QStringList none{blank, blank, blank};
        const QStringList one{check, blank, blank};
        const QStringList two{check, check, blank};
        const QStringList three{check, check, check};
        const QString pass = u"pass"_s;
        QTest::newRow("passed, 0")
            << pass << u"0"_s << none << u"Congratulations you have passed this quiz."_s << glad;
        QTest::newRow("passed, 1") << pass << u"1"_s << one
                                   << u"Congratulations you have passed this quiz. Only two more "
                                      "passes needed to have this quiz mastered."_s
                                   << glad;
        QTest::newRow("passed, 2") << pass << u"2"_s << two
                                   << u"Congratulations you have passed this quiz. Only one more "
                                      "pass needed to have this quiz mastered."_s
                                   << glad;
        QTest::newRow("passed, 3")
            << pass << u"3"_s << three << u"Congratulations you MASTERED this quiz."_s << festive;
        QTest::newRow("failed, 0") << u"fail"_s << u"0"_s << none << failed << quiet;
        QTest::newRow("failed, 1") << u"fail"_s << u"1"_s << one << failed << quiet;
        QTest::newRow("failed, 2") << u"fail"_s << u"2"_s << two << failed << quiet;
        QTest::newRow("failed, 3") << u"fail"_s << u"3"_s << three << failed << quiet;
        QTest::newRow("another case, 2") << u"Pass"_s << u"2"_s << two << failed << quiet;
        QTest::newRow("empty, 1") << QString() << u"1"_s << one << failed << quiet;
    }

    void marksSentenceAndMoodFollowCountAndOutcome() {
        QFETCH(const QString, status);
        QFETCH(const QString, count);
        QFETCH(const QStringList, marks);
        QFETCH(const QString, sentence);
        const auto results =
            open({{u"currentTest"_s, u"2"_s}, {u"quiz2"_s, count}, {u"currentStatus"_s, status}});
        QCOMPARE(this->marks(results), marks);
        QCOMPARE(text(results, u"lblTheStatus"_s), sentence);
        QTEST(desk::control<platform::Banner>(results->window(), u"stage"_s).tone(), "tone");
    }

    void eachQuizShowsItsNameAndItsOwnCount_data() { learner::quizRows(); }

    void eachQuizShowsItsNameAndItsOwnCount() {
        QFETCH(const QString, id);
        QFETCH(const QString, name);
        store::Contents differences{{u"currentTest"_s, id}, {u"currentStatus"_s, u"pass"_s},
                                    {u"quiz1"_s, u"3"_s},   {u"quiz2"_s, u"3"_s},
                                    {u"quiz3"_s, u"3"_s},   {u"quiz4"_s, u"3"_s},
                                    {u"quiz5"_s, u"3"_s},   {u"quiz6"_s, u"3"_s},
                                    {u"quiz7"_s, u"3"_s}};
        differences.insert(u"quiz"_s + id, u"1"_s);
        const auto results = open(differences);
        QCOMPARE(text(results, u"lblQuizName"_s), name);
        QCOMPARE(marks(results), QStringList({u"check"_s, u"blank"_s, u"blank"_s}));
        QCOMPARE(logged_, QStringList{id});
    }

    void strangeCountLeavesMarksAndSentenceAsLaidOut_data() {
        QTest::addColumn<QString>("count");
        QTest::newRow("beyond three") << u"5"_s;
        QTest::newRow("two digits") << u"01"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("absent") << QString();
    }

    void strangeCountLeavesMarksAndSentenceAsLaidOut() {
        QFETCH(const QString, count);
        store::Contents all = store::seeded();
        all.insert(
            {{u"currentTest"_s, u"1"_s}, {u"currentStatus"_s, u"pass"_s}, {u"quiz1"_s, count}});
        if (count.isNull()) {
            all.remove(u"quiz1"_s);
        }
        store::fill(all);
        const auto results = platform::makeController<QuizComplete>(u"QuizComplete"_s);
        const StandardError quiet;
        results->showWindow();
        QCOMPARE(text(results, u"lblQuizName"_s), u"Terminology"_s);
        QCOMPARE(marks(results), QStringList({u"empty"_s, u"empty"_s, u"empty"_s}));
        QCOMPARE(text(results, u"lblTheStatus"_s), laidOut(u"lblTheStatus"_s));
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void unknownQuizFillsNothingButOpensTheMainMenu_data() {
        QTest::addColumn<QString>("id");
        QTest::newRow("beyond seven") << u"8"_s;
        QTest::newRow("two digits") << u"01"_s;
    }

    void unknownQuizFillsNothingButOpensTheMainMenu() {
        QFETCH(const QString, id);
        const auto results = open({{u"currentTest"_s, id}, {u"currentStatus"_s, u"pass"_s}});
        QCOMPARE(text(results, u"lblQuizName"_s), laidOut(u"lblQuizName"_s));
        QCOMPARE(text(results, u"lblTheStatus"_s), laidOut(u"lblTheStatus"_s));
        QCOMPARE(marks(results), QStringList({u"empty"_s, u"empty"_s, u"empty"_s}));
        QCOMPARE(logged_, QStringList{id});
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void passCountOutsideZeroToThreeChangesNothing() {
        const auto results = open(
            {{u"currentTest"_s, u"4"_s}, {u"quiz4"_s, u"1"_s}, {u"currentStatus"_s, u"pass"_s}});
        const QString sentence = text(results, u"lblTheStatus"_s);
        for (const int count : {-1, 4}) {
            results->SetCheckMarks(count);
            QCOMPARE(marks(results), QStringList({u"check"_s, u"blank"_s, u"blank"_s}));
            QCOMPARE(text(results, u"lblTheStatus"_s), sentence);
        }
    }

    void mainMenuIsHeldByItsWindowAlone() {
        const auto results = open({{u"currentTest"_s, u"1"_s}});
        const QPointer<platform::Window> menu = desk::window(u"MainMenu"_s);
        results->close();
        desk::freeUnused();
        QVERIFY(menu && menu->isVisible());
        menu->close();
        desk::freeUnused();
        QVERIFY(!menu);
    }

    void homeButtonOnlyLogsGoingHome() {
        const auto results = open({{u"currentTest"_s, u"1"_s}});
        StandardError standardError;
        learner::press(results->window(), u"goHome"_s);
        QCoreApplication::processEvents();
        QCOMPARE(standardError.lines(), QStringList{u"Going Home"_s});
        QVERIFY(results->window()->isVisible());
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
        QCOMPARE(store::writes(), QList<store::Write>());
    }

    void windowKeepsWhatItLoaded() {
        const auto results = open(
            {{u"currentTest"_s, u"3"_s}, {u"quiz3"_s, u"3"_s}, {u"currentStatus"_s, u"pass"_s}});
        store::fill(store::seeded());
        results->showWindow();
        QCOMPARE(text(results, u"lblQuizName"_s), u"Methods"_s);
        QCOMPARE(marks(results), QStringList({u"check"_s, u"check"_s, u"check"_s}));
        QCOMPARE(text(results, u"lblTheStatus"_s), u"Congratulations you MASTERED this quiz."_s);
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void missingImagesLeaveTheMarksEmpty() {
        const QTemporaryDir empty;
        QDir::setSearchPaths(u"images"_s, {empty.path()});
        const auto results = open(
            {{u"currentTest"_s, u"4"_s}, {u"quiz4"_s, u"3"_s}, {u"currentStatus"_s, u"pass"_s}});
        QCOMPARE(marks(results), QStringList({u"empty"_s, u"empty"_s, u"empty"_s}));
        QCOMPARE(text(results, u"lblTheStatus"_s), u"Congratulations you MASTERED this quiz."_s);
        QCOMPARE(logged_, QStringList{u"4"_s});
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void missingMainMenuLayoutIsSwallowed() {
        platform::layouts().erase(u"MainMenu"_s);
        const auto results = open(
            {{u"currentTest"_s, u"4"_s}, {u"quiz4"_s, u"1"_s}, {u"currentStatus"_s, u"fail"_s}});
        QVERIFY(results->window()->isVisible());
        QCOMPARE(text(results, u"lblQuizName"_s), u"Functions"_s);
        QCOMPARE(marks(results), QStringList({u"check"_s, u"blank"_s, u"blank"_s}));
        QCOMPARE(text(results, u"lblTheStatus"_s), failed);
        QCOMPARE(logged_, QStringList{u"4"_s});
        QVERIFY(desk::windows(u"MainMenu"_s).isEmpty());
    }

    void missingMainMenuControllerIsSwallowed() {
        platform::controllers().clear();
        const auto results = open({{u"currentTest"_s, u"4"_s}});
        QVERIFY(results->window()->isVisible());
        QCOMPARE(logged_, QStringList{u"4"_s});
        QVERIFY(desk::windows(u"MainMenu"_s).isEmpty());
    }

    void otherExceptionsPassTheGuard() {
        platform::controllers()[u"MainMenu"_s] =
            []() -> std::shared_ptr<platform::WindowController> {
            throw std::runtime_error("not the platform's");
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, open({{u"currentTest"_s, u"4"_s}}));
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
    }

    void missingResultsLayoutFailsAtTheEventLoop() {
        const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        learner::press(menu->window(), u"goTest5"_s);
        platform::layouts().erase(u"QuizComplete"_s);
        StandardError standardError;
        learner::finishStructure(desk::window(u"MainTest"_s), true);
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(u"QuizComplete"),
                 qUtf8Printable(standardError.lines().constFirst()));
        // The outcome was written first.
        QCOMPARE(store::value(u"currentStatus"_s), u"pass"_s);
        QCOMPARE(store::value(u"quiz5"_s), u"1"_s);
        QVERIFY(menu->window()->isVisible());
    }

    void marksSayInWordsWhatTheyShow() {
        const auto results = open(
            {{u"currentTest"_s, u"4"_s}, {u"quiz4"_s, u"2"_s}, {u"currentStatus"_s, u"pass"_s}});
        const auto spoken = [&](const QString &name) {
            return desk::control(results->window(), name).accessibleName();
        };
        QCOMPARE(spoken(u"theImage1"_s), u"Pass mark 1: earned"_s);
        QCOMPARE(spoken(u"theImage2"_s), u"Pass mark 2: earned"_s);
        QCOMPARE(spoken(u"theImage3"_s), u"Pass mark 3: missing"_s);
    }

    void outcomeIsReadOutWithTheWayHome() {
        const auto results = open(
            {{u"currentTest"_s, u"4"_s}, {u"quiz4"_s, u"2"_s}, {u"currentStatus"_s, u"pass"_s}});
        const auto &outcome = desk::control(results->window(), u"outcome"_s);
        QCOMPARE(
            outcome.accessibleName(),
            u"Functions. Pass mark 1: earned. Pass mark 2: earned. Pass mark 3: missing. "
            "Congratulations you have passed this quiz. Only one more pass needed to have this "
            "quiz mastered."_s);
        QVERIFY(outcome.isAncestorOf(&learner::button(results->window(), u"goHome"_s)));
    }

 private:
    /// Shows a results window for a store that differs from the seeded one by `differences`.
    std::shared_ptr<QuizComplete> open(const store::Contents &differences) {
        store::Contents all = store::seeded();
        all.insert(differences);
        store::fill(all);
        store::forgetWrites();
        StandardError standardError;
        auto results = platform::makeController<QuizComplete>(u"QuizComplete"_s);
        results->showWindow();
        logged_ = standardError.lines();
        return results;
    }

    QStringList marks(const std::shared_ptr<QuizComplete> &results) const {
        const auto pixels = [](const QIcon &image) { return image.pixmap(48).toImage(); };
        const QImage check = pixels(QIcon(u":/images/checkmark.png"_s));
        const QImage blank = pixels(QIcon(u":/images/blankcheckmark.png"_s));
        QStringList marks;
        for (const QString &name : {u"theImage1"_s, u"theImage2"_s, u"theImage3"_s}) {
            const QIcon &image =
                desk::control<platform::ImageLabel>(results->window(), name).image();
            if (image.isNull()) {
                marks << u"empty"_s;
            } else if (pixels(image) == check) {
                marks << u"check"_s;
            } else {
                marks << (pixels(image) == blank ? u"blank"_s : u"another image"_s);
            }
        }
        return marks;
    }

    static QString text(const std::shared_ptr<QuizComplete> &results, const QString &name) {
        return desk::text(results->window(), name);
    }

    /// The text that the layout gives a label.
    static QString laidOut(const QString &label) {
        QMainWindow window;
        platform::layoutNamed(u"QuizComplete"_s)(window);
        return desk::text(&window, label);
    }

    /// What the last open() wrote to standard error.
    QStringList logged_;
};

ZORVAN_TEST(tst_quizcomplete)
#include "tst_quizcomplete.moc"
