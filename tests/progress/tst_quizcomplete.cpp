#include <stdexcept>

#include <QDir>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "controls/banner.h"
#include "controls/imagelabel.h"
#include "progress/quizcomplete.h"
#include "support/learner.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/controllers.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

using platform::Banner;

class tst_quizcomplete final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void marksSentenceAndMoodFollowCountAndOutcome_data() {
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("passCount");
        QTest::addColumn<QString>("sentence");
        QTest::addColumn<Banner::Tone>("tone");
        const QString passed = u"Congratulations you have passed this quiz."_s;
        QTest::newRow("passed, 0") << u"pass"_s << 0 << passed << Banner::Tone::Positive;
        QTest::newRow("passed, 1")
            << u"pass"_s << 1
            << passed + u" Only two more passes needed to have this quiz mastered."_s
            << Banner::Tone::Positive;
        QTest::newRow("passed, 2")
            << u"pass"_s << 2
            << passed + u" Only one more pass needed to have this quiz mastered."_s
            << Banner::Tone::Positive;
        QTest::newRow("passed, 3") << u"pass"_s << 3 << u"Congratulations you MASTERED this quiz."_s
                                   << Banner::Tone::Festive;
        const QString failed =
            u"Unfortunately you did not pass the quiz this time. Please try again."_s;
        QTest::newRow("failed, 0") << u"fail"_s << 0 << failed << Banner::Tone::Neutral;
        QTest::newRow("failed, 3") << u"fail"_s << 3 << failed << Banner::Tone::Neutral;
        QTest::newRow("cleared, 0") << u"0"_s << 0 << failed << Banner::Tone::Neutral;
        QTest::newRow("another case, 2") << u"Pass"_s << 2 << failed << Banner::Tone::Neutral;
    }

    void marksSentenceAndMoodFollowCountAndOutcome() {
        QFETCH(const QString, status);
        QFETCH(const int, passCount);
        const auto results = open(u"2"_s, QString::number(passCount), status);
        QCOMPARE(text(*results, u"lblQuizName"_s), u"Variables");
        QTEST(text(*results, u"lblTheStatus"_s), "sentence");
        QTEST(desk::control<Banner>(results->window(), u"stage"_s).tone(), "tone");
        QCOMPARE(marks(*results),
                 QStringList(passCount, u"check"_s) + QStringList(3 - passCount, u"blank"_s));
        QCOMPARE(logged_, QStringList{u"2"_s});
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void anUnknownQuizOrCountFillsNothing() {
        struct Row {
            QString quizId;
            QString passCount;
        };
        for (const auto &[quizId, passCount] :
             {Row{u"8"_s, u"1"_s}, Row{u"01"_s, u"1"_s}, Row{u"1"_s, u"4"_s}, Row{u"1"_s, u""_s}}) {
            const auto results = open(quizId, passCount, u"pass"_s);
            QCOMPARE(text(*results, u"lblTheStatus"_s), laidOut(u"lblTheStatus"_s));
            QCOMPARE(marks(*results), QStringList(3, u"empty"_s));
            QCOMPARE(logged_, QStringList{quizId});
        }
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 4);
    }

    void aPassCountOutsideZeroToThreeChangesNothing() {
        const auto results = open(u"4"_s, u"3"_s, u"pass"_s);
        for (const int count : {-1, 4}) {
            results->SetCheckMarks(count);
            QCOMPARE(marks(*results), QStringList(3, u"check"_s));
            QCOMPARE(text(*results, u"lblTheStatus"_s), u"Congratulations you MASTERED this quiz.");
        }
    }

    void theOutcomeIsReadOutWithTheWayHome() {
        const auto results = open(u"4"_s, u"2"_s, u"pass"_s);
        const auto &outcome = desk::control(results->window(), u"outcome"_s);
        QCOMPARE(
            outcome.accessibleName(),
            u"Functions. Pass mark 1: earned. Pass mark 2: earned. Pass mark 3: missing. "
            "Congratulations you have passed this quiz. Only one more pass needed to have this "
            "quiz mastered.");
        QVERIFY(outcome.isAncestorOf(&learner::button(results->window(), u"goHome"_s)));
    }

    void theMainMenuIsHeldByItsWindowAlone() {
        const auto results = open(u"1"_s, u"0"_s, u"fail"_s);
        const QPointer<platform::Window> menu = desk::window(u"MainMenu"_s);
        results->close();
        desk::freeUnused();
        QVERIFY(menu && menu->isVisible());
        menu->close();
        desk::freeUnused();
        QVERIFY(!menu);
    }

    void theHomeButtonOnlyLogs() {
        const auto results = open(u"1"_s, u"0"_s, u"fail"_s);
        StandardError standardError;
        learner::press(results->window(), u"goHome"_s);
        QCOMPARE(standardError.lines(), QStringList{u"Going Home"_s});
        QVERIFY(results->window()->isVisible());
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void missingImagesLeaveTheMarksEmpty() {
        const QTemporaryDir empty;
        QDir::setSearchPaths(u"images"_s, {empty.path()});
        const auto results = open(u"4"_s, u"3"_s, u"pass"_s);
        QCOMPARE(marks(*results), QStringList(3, u"empty"_s));
        QCOMPARE(text(*results, u"lblTheStatus"_s), u"Congratulations you MASTERED this quiz.");
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void aMainMenuThatCannotBeLoadedIsPassedOver() {
        platform::layouts().erase(u"MainMenu"_s);
        QVERIFY(open(u"4"_s, u"1"_s, u"fail"_s)->window()->isVisible());
        platform::controllers().clear();
        const auto results = open(u"4"_s, u"1"_s, u"fail"_s);
        QVERIFY(results->window()->isVisible());
        QCOMPARE(text(*results, u"lblQuizName"_s), u"Functions");
        QCOMPARE(logged_, QStringList{u"4"_s});
    }

    void otherExceptionsPassTheGuard() {
        platform::controllers()[u"MainMenu"_s] =
            []() -> std::shared_ptr<platform::WindowController> {
            throw std::runtime_error("not the platform's");
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, open(u"4"_s, u"0"_s, u"fail"_s));
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
    }

 private:
    /// Shows a results window for a store that differs from the seeded one by this.
    std::shared_ptr<QuizComplete> open(const QString &quizId, const QString &passCount,
                                       const QString &status) {
        store::Contents all = store::seeded();
        all.insert(u"currentTest"_s, quizId);
        all.insert(u"quiz"_s + quizId, passCount);
        all.insert(u"currentStatus"_s, status);
        store::fill(all);
        StandardError standardError;
        auto results = platform::makeController<QuizComplete>(u"QuizComplete"_s);
        results->showWindow();
        logged_ = standardError.lines();
        return results;
    }

    static QStringList marks(const QuizComplete &results) {
        const auto pixels = [](const QIcon &image) { return image.pixmap(48).toImage(); };
        const QImage check = pixels(QIcon(u":/images/checkmark.png"_s));
        const QImage blank = pixels(QIcon(u":/images/blankcheckmark.png"_s));
        QStringList marks;
        for (const QString &name : {u"theImage1"_s, u"theImage2"_s, u"theImage3"_s}) {
            const QImage image =
                pixels(desk::control<platform::ImageLabel>(results.window(), name).image());
            marks << (image.isNull()   ? u"empty"_s
                      : image == check ? u"check"_s
                      : image == blank ? u"blank"_s
                                       : u"another image"_s);
        }
        return marks;
    }

    static QString text(const QuizComplete &results, const QString &name) {
        return desk::text(results.window(), name);
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
