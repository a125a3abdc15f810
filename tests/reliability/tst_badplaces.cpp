#include <csignal>
#include <functional>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QProcess>
#include <QTest>

#include "configuration.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

using Prepare = std::function<void(const Configuration &)>;
/// Files by their paths relative to the program's folder: what they hold, or are.
using Files = QMap<QByteArray, QByteArray>;

Files filesIn(const Configuration &configuration) {
    Files files;
    for (const QByteArray &path : configuration.files()) {
        QFile file(configuration.folder() + u'/' + QString::fromUtf8(path));
        const QFileInfo info(file);
        if (info.isSymLink()) {
            files[path] = "(link to " + info.symLinkTarget().toUtf8() + ')';
        } else if (info.isFile() && file.open(QIODevice::ReadOnly)) {
            files[path] = file.readAll();
        } else {
            files[path] = "(nothing to read)";
        }
    }
    return files;
}

QByteArray asText(const Files &files) {
    QByteArray text;
    for (auto file = files.begin(); file != files.end(); ++file) {
        text += file.key() + ":\n" + *file + '\n';
    }
    return text;
}

Prepare filled(const QByteArray &content, mode_t mode = 0600) {
    return [=](const Configuration &place) {
        place.fill(content);
        ::chmod(qUtf8Printable(place.file()), mode);
    };
}

Prepare linkedTo(const QString &target) {
    return [=](const Configuration &place) {
        QDir().mkpath(place.folder());
        QFile::link(target, place.file());
    };
}

Prepare special(mode_t kind) {
    return [=](const Configuration &place) {
        QDir().mkpath(place.folder());
        ::mknod(qUtf8Printable(place.file()), kind | 0600, 0);
    };
}

/// What the program finds of its own.
enum class Progress { None, TwoPassesOfQuiz5 };
enum class Room { Some, None };

}  // namespace

/// The program with stores in places where it cannot write, or not as usual, and with files that
/// it did not write: it starts, tells once what is wrong, greets at most once, passes a quiz, and
/// destroys nothing.
class tst_badplaces final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void troubleIsToldOnceAndNothingIsTouched_data() {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<Progress>("progress");
        QTest::addColumn<Room>("room");
        const auto row = [](const char *name, const Prepare &prepare, Progress progress,
                            Room room = Room::Some) {
            QTest::newRow(name) << prepare << progress << room;
        };
        const auto homeReadOnly = [](const Configuration &place) {
            ::chmod(qUtf8Printable(place.home()), 0500);
        };
        const auto folderReadOnly = [this](const Configuration &place) {
            place.fill(twoPasses);
            ::chmod(qUtf8Printable(place.folder()), 0500);
        };
        const auto homeIsAFile = [](const Configuration &place) {
            QDir().rmdir(place.home());
            QVERIFY(QFile(place.home()).open(QIODevice::WriteOnly));
        };
        const auto storeIsAFolder = [](const Configuration &place) {
            QDir().mkpath(place.file());
            place.write("kept", u"Zorvan.conf/file"_s);
        };
        const auto nothing = [](const Configuration &) {};

        row("configuration home read-only", homeReadOnly, Progress::None);
        row("configuration home is a file", homeIsAFile, Progress::None);
        row("folder read-only", folderReadOnly, Progress::TwoPassesOfQuiz5);
        row("file read-only", filled(twoPasses, 0400), Progress::TwoPassesOfQuiz5);
        row("file without permissions", filled(twoPasses, 0), Progress::None);
        row("store is a folder", storeIsAFolder, Progress::None);
        row("store is a socket", special(S_IFSOCK), Progress::None);
        row("store is a pipe", special(S_IFIFO), Progress::None);
        row("link to a device that never ends", linkedTo(u"/dev/zero"_s), Progress::None);
        row("link to a folder that is missing", linkedTo(u"nowhere/file"_s), Progress::None);
        row("link to itself", linkedTo(u"Zorvan.conf"_s), Progress::None);
        row("no room", filled(twoPasses), Progress::TwoPassesOfQuiz5, Room::None);
        row("no room for a first file", nothing, Progress::None, Room::None);
    }

    void troubleIsToldOnceAndNothingIsTouched() {
        QFETCH(const Prepare, prepare);
        QFETCH(const Progress, progress);
        QFETCH(const Room, room);
        const Configuration place;
        prepare(place);
        const Files before = filesIn(place);
        passQuiz5(place, progress, true, room);
        QCOMPARE(asText(filesIn(place)), asText(before));
    }

    void storeIsWrittenAndNothingElseIsLost_data() {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<Progress>("progress");
        QTest::addColumn<bool>("isTold");
        QTest::addColumn<Files>("changes");
        const auto row = [](const char *name, const Prepare &prepare, Progress progress,
                            bool isTold, const Files &changes) {
            QTest::newRow(name) << prepare << progress << isTold << changes;
        };
        const QByteArray store = "Zorvan.conf";
        const QByteArray firstPass =
            with({"currentStatus=pass", "currentTest=5", "quiz5=1"}, seeded);
        const QByteArray threePasses = with({"quiz5=3"}, firstPass);
        const auto entriesOf = [](const QByteArray &text) {
            return text.sliced(text.indexOf('\n') + 1);
        };

        const auto noHome = [](const Configuration &place) { QDir().rmdir(place.home()); };
        row("configuration home missing", noHome, Progress::None, false, {{store, firstPass}});

        const auto homeUnlisted = [](const Configuration &place) {
            QDir().mkpath(place.folder());
            ::chmod(qUtf8Printable(place.home()), 0300);
        };
        row("configuration home that cannot be listed", homeUnlisted, Progress::None, false,
            {{store, firstPass}});

        const auto linkToAFile = [this](const Configuration &place) {
            linkedTo(u"elsewhere.conf"_s)(place);
            place.write(twoPasses, u"elsewhere.conf"_s);
        };
        row("link to a file", linkToAFile, Progress::TwoPassesOfQuiz5, false,
            {{"elsewhere.conf", threePasses}});
        row("link to a file that is missing", linkedTo(u"elsewhere.conf"_s), Progress::None, false,
            {{"elsewhere.conf", firstPass}});

        const auto leftovers = [this](const Configuration &place) {
            place.fill(twoPasses);
            place.write("[Gen", u".Zorvan.conf.writing"_s);
            place.write("", u"Zorvan.conf.lock"_s);
        };
        row("leftovers of a kill", leftovers, Progress::TwoPassesOfQuiz5, false,
            {{store, threePasses}, {".Zorvan.conf.writing", {}}});

        row("empty", filled(""), Progress::None, false, {{store, firstPass}});
        const QByteArray junk = QByteArray::fromHex("00ff1b7f0a3d5b0a89504e470d0a1a0a5b5d3d3d0a");
        row("junk bytes", filled(junk), Progress::None, true,
            {{store, QByteArray(firstPass).replace("\n", "\r\n") + junk}});
        const auto half = [](const QByteArray &text) {
            return text.first(text.indexOf("quiz6")) + "qui";
        };
        row("half a file", filled(half(twoPasses)), Progress::TwoPassesOfQuiz5, true,
            {{store, half(threePasses)}});
        const QByteArray quote = "[General]\nnote=\"\n" + entriesOf(twoPasses);
        row("a quote around all pass counts", filled(quote), Progress::None, false,
            {{store, firstPass + entriesOf(quote)}});
        const QByteArray others =
            "note=\xff\xfe\n; my own words\n[Another]\n"
            "thing=@Variant(\\0\\0\\x4\\0\\0\\0\\0\\0\\x4Thg\\0)\nlong=" +
            QByteArray(1'000'000, 'x') + '\n';
        row("comments, a long value and others' keys", filled(twoPasses + others, 0640),
            Progress::TwoPassesOfQuiz5, false, {{store, threePasses + others}});
        // QSettings goes on reading the value under the other spelling.
        const QByteArray alias = twoPasses + "quiz%35=2\n";
        row("a key in another spelling", filled(alias), Progress::TwoPassesOfQuiz5, true,
            {{store, threePasses}, {"Zorvan.conf.kept-1", with({"currentTest=5"}, alias)}});
    }

    void storeIsWrittenAndNothingElseIsLost() {
        QFETCH(const Prepare, prepare);
        QFETCH(const Progress, progress);
        QFETCH(const bool, isTold);
        QFETCH(const Files, changes);
        const Configuration place;
        prepare(place);
        Files expected = filesIn(place);
        expected.insert(changes);
        expected.remove(changes.key({}));
        const auto permissions = QFile::permissions(place.file());
        passQuiz5(place, progress, isTold, Room::Some);
        QCOMPARE(asText(filesIn(place)), asText(expected));
        QVERIFY(!permissions || QFile::permissions(place.file()) == permissions);
    }

 private:
    /// Starts the program, which passes quiz 5 and tells of trouble or not.
    static void passQuiz5(const Configuration &place, Progress progress, bool isTold, Room room) {
        QProcess program;
        program.setChildProcessModifier([room] {
            // Makes permissions apply to root, too.
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
            if (room == Room::None) {
                const ::rlimit none{0, 0};
                ::setrlimit(RLIMIT_FSIZE, &none);
                std::signal(SIGXFSZ, SIG_IGN);
            }
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
        QCOMPARE(
            program.readAllStandardOutput(),
            progress == Progress::TwoPassesOfQuiz5
                ? "passes of quiz 5: 3\n"
                : "alert: Welcome to Zorvan, this is the main progress screen where you can select "
                  "quizzes to take and track your progress.\npasses of quiz 5: 1\n");
    }

    const QByteArray twoPasses = with({"quiz5=2"}, seeded);
};

ZORVAN_TEST(tst_badplaces)
#include "tst_badplaces.moc"
