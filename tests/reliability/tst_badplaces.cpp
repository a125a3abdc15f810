#include <functional>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>

#include <QProcess>
#include <QTest>

#include "configuration.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

using Prepare = std::function<void(const Configuration &)>;

Prepare filled(const QByteArray &content, mode_t mode = 0600) {
    return [=](const Configuration &place) {
        place.write(content);
        ::chmod(qUtf8Printable(place.file()), mode);
    };
}

Prepare linkedTo(const QString &target) {
    return [=](const Configuration &place) {
        QDir().mkpath(place.folder());
        QFile::link(target, place.file());
    };
}

/// What the program says of itself, which finds nothing, two passes of quiz 5, or an odd count.
constexpr const char *firstStart =
    "alert: Welcome to Zorvan, this is the main progress screen where you can select quizzes to "
    "take and track your progress.\npasses of quiz 5: 1\n";
constexpr const char *laterStart = "passes of quiz 5: 3\n";
constexpr const char *oddCount = "passes of quiz 5: 0\n";

}  // namespace

/// The program with stores in places where it cannot write, or not as usual, and with files that
/// it did not write: it starts, tells once what is wrong, greets at most once, passes a quiz, and
/// destroys nothing.
class tst_badplaces final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void programCopesAndTells_data() {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<QByteArray>("says");
        QTest::addColumn<bool>("isTold");
        QTest::addColumn<Files>("changes");
        const auto row = [](const char *name, const Prepare &prepare, const QByteArray &says,
                            const Files &changes = {}, bool isTold = false) {
            QTest::newRow(name) << prepare << says << (isTold || changes.isEmpty()) << changes;
        };
        const QByteArray store = "Zorvan.conf";
        const QByteArray firstPass =
            with({"currentStatus=pass", "currentTest=5", "quiz5=1"}, seeded);
        const QByteArray twoPasses = with({"quiz5=2"}, seeded);
        const QByteArray threePasses = with({"quiz5=3"}, firstPass);

        // Places in which nothing can be written.
        const auto readOnlyHome = [](const Configuration &place) {
            ::chmod(qUtf8Printable(place.home()), 0500);
        };
        const auto readOnlyFolder = [=](const Configuration &place) {
            place.write(twoPasses);
            ::chmod(qUtf8Printable(place.folder()), 0500);
        };
        const auto pipe = [](const Configuration &place) {
            QDir().mkpath(place.folder());
            ::mkfifo(qUtf8Printable(place.file()), 0600);
        };
        const auto unlistedHome = [](const Configuration &place) {
            ::chmod(qUtf8Printable(place.home()), 0300);
        };
        row("configuration home read-only", readOnlyHome, firstStart);
        row("configuration home that cannot be listed", unlistedHome, firstStart);
        row("folder read-only", readOnlyFolder, laterStart);
        row("file read-only", filled(twoPasses, 0400), laterStart);
        row("file without permissions", filled(twoPasses, 0), firstStart);
        row("store is a pipe", pipe, firstStart);
        row("link to a device that never ends", linkedTo(u"/dev/zero"_s), firstStart);
        row("link to a folder that is missing", linkedTo(u"nowhere/file"_s), firstStart);
        row("link to itself", linkedTo(u"Zorvan.conf"_s), firstStart);

        // Places that are odd.
        const auto noHome = [](const Configuration &place) { QDir().rmdir(place.home()); };
        const auto folderInUnlistedHome = [=](const Configuration &place) {
            QDir().mkpath(place.folder());
            unlistedHome(place);
        };
        const auto linkToAFile = [=](const Configuration &place) {
            linkedTo(u"elsewhere.conf"_s)(place);
            place.write(twoPasses, u"elsewhere.conf"_s);
        };
        const auto leftovers = [=](const Configuration &place) {
            place.write(twoPasses);
            place.write("[Gen", u".Zorvan.conf.writing"_s);
            place.write("", u"Zorvan.conf.lock"_s);
        };
        row("configuration home missing", noHome, firstStart, {{store, firstPass}});
        row("folder in a home that cannot be listed", folderInUnlistedHome, firstStart,
            {{store, firstPass}});
        row("link to a file", linkToAFile, laterStart, {{"elsewhere.conf", threePasses}});
        row("link to a file that is missing", linkedTo(u"elsewhere.conf"_s), firstStart,
            {{"elsewhere.conf", firstPass}});
        row("leftovers of a kill", leftovers, laterStart,
            {{store, threePasses}, {".Zorvan.conf.writing", {}}});

        // Contents.
        const QByteArray junk = QByteArray::fromHex("00ff1b7f0a3d5b0a89504e470d0a1a0a5b5d3d3d0a");
        const auto half = [](const QByteArray &text) {
            return text.first(text.indexOf("quiz6")) + "qui";
        };
        const QByteArray quoted = "note=\"\n" + twoPasses.sliced(twoPasses.indexOf('\n') + 1);
        const QByteArray others =
            "note=\xff\xfe\n; my own words\n[Another]\n"
            "thing=@Variant(\\0\\0\\x4\\0\\0\\0\\0\\0\\x4Thg\\0)\nlong=" +
            QByteArray(1'000'000, 'x') + '\n';
        // QSettings goes on reading the value under the other spelling.
        const QByteArray alias = twoPasses + "quiz%35=2\n";
        row("empty", filled(""), firstStart, {{store, firstPass}});
        row("junk bytes", filled(junk), firstStart,
            {{store, QByteArray(firstPass).replace("\n", "\r\n") + junk}}, true);
        row("half a file", filled(half(twoPasses)), laterStart, {{store, half(threePasses)}}, true);
        row("a quote around all pass counts", filled("[General]\n" + quoted), firstStart,
            {{store, firstPass + quoted}});
        row("comments, a long value and others' keys", filled(twoPasses + others, 0640), laterStart,
            {{store, threePasses + others}});
        row("a pass count that is none", filled(with({"quiz5=%31"}, seeded)), oddCount,
            {{store, with({"quiz5=%31"}, firstPass)}});
        row("a key in another spelling", filled(alias), laterStart,
            {{store, threePasses}, {"Zorvan.conf.kept-1", with({"currentTest=5"}, alias)}}, true);
    }

    void programCopesAndTells() {
        QFETCH(const Prepare, prepare);
        QFETCH(const QByteArray, says);
        QFETCH(const bool, isTold);
        QFETCH(const Files, changes);
        const Configuration place;
        prepare(place);
        Files expected = place.files();
        expected.insert(changes);
        expected.remove(changes.key({}));
        const auto permissions = QFile::permissions(place.file());

        QProcess program;
        program.setChildProcessModifier([] {
            // Makes permissions apply to root, too.
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
        });
        program.start(QStringLiteral(ONEPASS));
        QVERIFY(program.waitForFinished());
        const QByteArray said = program.readAllStandardError();
        QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, said);
        QByteArrayList lines = said.split('\n');
        lines.removeIf([](const QByteArray &line) {
            // What the program logs if all is well, and messages from Qt.
            return line.isEmpty() || line == "Finished Starting" || line == "5" ||
                   line.startsWith("QStandardPaths") || line.startsWith("QVariant::load") ||
                   line.contains("propagateSizeHints");
        });
        QVERIFY2(lines.size() == (isTold ? 1 : 0), said);
        QVERIFY2(!isTold || said.contains(place.file().toUtf8()), said);
        QCOMPARE(program.readAllStandardOutput(), says);

        // So that its files can be listed, and removed.
        ::chmod(qUtf8Printable(place.home()), 0700);
        ::chmod(qUtf8Printable(place.folder()), 0700);
        const Files found = place.files();
        QCOMPARE(found.keys(), expected.keys());
        for (auto file = found.begin(); file != found.end(); ++file) {
            QVERIFY2(*file == expected[file.key()], file.key() + ":\n" + *file);
        }
        QVERIFY(!permissions || QFile::permissions(place.file()) == permissions);
    }
};

ZORVAN_TEST(tst_badplaces)
#include "tst_badplaces.moc"
