#include <csignal>
#include <functional>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QProcess>
#include <QTest>

#include "reliability/configuration.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

using Prepare = std::function<void(const Configuration &)>;
/// Returns what is wrong with the configuration home afterwards; empty if nothing is.
using Judge = std::function<QByteArray(const Configuration &)>;

QByteArray differs(const QByteArray &what, const QByteArray &is, const QByteArray &wanted) {
    return is == wanted ? QByteArray() : what + " holds\n" + is + "and should hold\n" + wanted;
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(nothing)\n");
}

/// The store has that content, and there are no other files beside it but these.
Judge holds(const QByteArray &content, const QStringList &others = {}) {
    return [=](const Configuration &configuration) {
        return differs("the store", configuration.content(), content) +
               differs("the folder", configuration.filesBesideTheStore().join(u' ').toUtf8(),
                       others.join(u' ').toUtf8());
    };
}

/// As holds(), and the file as it was before is kept beside the store.
Judge keepsAside(const QByteArray &before, const QByteArray &after) {
    return [=](const Configuration &configuration) {
        return holds(after, {u"Zorvan.conf.kept-1"_s})(configuration) +
               differs("the file kept aside", contentOf(configuration.file() + u".kept-1"_s),
                       before);
    };
}

Prepare filled(const QByteArray &content) {
    return [=](const Configuration &configuration) { configuration.fill(content); };
}

Prepare linkedTo(const QString &target, const QByteArray &content = {}) {
    return [=](const Configuration &configuration) {
        if (!content.isEmpty()) {
            configuration.write(content, target);
        }
        QDir().mkpath(configuration.folder());
        QFile::link(target, configuration.file());
    };
}

QString linkOf(const Configuration &configuration) {
    return QFileInfo(configuration.file()).symLinkTarget();
}

/// What the program is allowed to do.
enum class Rights { All, NoWritingOfFiles };

}  // namespace

/// The program with stores in places where it cannot write, or not as usual, and with files that
/// it did not write: it starts, tells once what is wrong, greets at most once, passes a quiz, and
/// destroys nothing.
class tst_badplaces final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void programCopesAndTells_data() {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<Rights>("rights");
        QTest::addColumn<bool>("tells");
        QTest::addColumn<bool>("greets");
        QTest::addColumn<int>("passes");
        QTest::addColumn<Judge>("judge");

        const QByteArray twoPasses = QByteArray(seeded).replace("quiz5=0", "quiz5=2");
        const QByteArray threePasses = QByteArray(seeded)
                                           .replace("quiz5=0", "quiz5=3")
                                           .replace("currentStatus=0", "currentStatus=pass")
                                           .replace("currentTest=0", "currentTest=5");
        const QByteArray firstPass = QByteArray(threePasses).replace("quiz5=3", "quiz5=1");

        const Prepare nothing = [](const Configuration &) {};
        const Prepare noHome = [](const Configuration &place) { QDir().rmdir(place.home()); };
        const auto row = [](const char *name) -> QTestData & { return QTest::newRow(name); };
        constexpr bool Tells = true;
        constexpr bool Quiet = false;
        constexpr bool Greets = true;
        constexpr bool Knows = false;

        // Places.
        row("configuration home missing")
            << noHome << Rights::All << Quiet << Greets << 1 << holds(firstPass);
        row("configuration home read-only") << Prepare([=](const Configuration &place) {
            ::chmod(qUtf8Printable(place.home()), 0500);
        }) << Rights::All << Tells << Greets << 1
                                            << holds("");
        row("folder read-only") << Prepare([=](const Configuration &place) {
            place.fill(twoPasses);
            ::chmod(qUtf8Printable(place.folder()), 0500);
        }) << Rights::All << Tells
                                << Knows << 3 << holds(twoPasses);
        row("file read-only") << Prepare([=](const Configuration &place) {
            place.fill(twoPasses);
            ::chmod(qUtf8Printable(place.file()), 0400);
        }) << Rights::All << Tells
                              << Knows << 3 << holds(twoPasses);
        row("file without permissions") << Prepare([=](const Configuration &place) {
            place.fill(twoPasses);
            ::chmod(qUtf8Printable(place.file()), 0);
        }) << Rights::All << Tells << Greets
                                        << 1 << Judge([=](const Configuration &place) {
                                               ::chmod(qUtf8Printable(place.file()), 0600);
                                               return holds(twoPasses)(place);
                                           });
        row("configuration home is a file")
            << Prepare([=](const Configuration &place) {
                   QDir().rmdir(place.home());
                   QFile file(place.home());
                   QVERIFY(file.open(QIODevice::WriteOnly));
               })
            << Rights::All << Tells << Greets << 1 << Judge([=](const Configuration &place) {
                   return differs("the home", contentOf(place.home()), "");
               });
        row("store is a folder") << Prepare([=](const Configuration &place) {
            QDir().mkpath(place.file() + u"/kept"_s);
        }) << Rights::All << Tells
                                 << Greets << 1 << holds("", {u"Zorvan.conf/kept"_s});
        row("store is a socket") << Prepare([=](const Configuration &place) {
            QDir().mkpath(place.folder());
            ::mknod(qUtf8Printable(place.file()), S_IFSOCK | 0600, 0);
        }) << Rights::All << Tells
                                 << Greets << 1 << Judge([=](const Configuration &place) {
                                        struct ::stat status {};
                                        ::stat(qUtf8Printable(place.file()), &status);
                                        return QByteArray(
                                            S_ISSOCK(status.st_mode) ? "" : "the socket is gone");
                                    });
        const auto isPipe = [](const Configuration &place) {
            struct ::stat status {};
            ::stat(qUtf8Printable(place.file()), &status);
            return QByteArray(S_ISFIFO(status.st_mode) ? "" : "the pipe is gone");
        };
        row("store is a pipe") << Prepare([=](const Configuration &place) {
            QDir().mkpath(place.folder());
            ::mkfifo(qUtf8Printable(place.file()), 0600);
        }) << Rights::All << Tells
                               << Greets << 1 << Judge(isPipe);
        row("link to a device that never ends")
            << linkedTo(u"/dev/zero"_s) << Rights::All << Tells << Greets << 1
            << Judge([=](const Configuration &place) {
                   return differs("the link", linkOf(place).toUtf8(), "/dev/zero");
               });
        row("no room for files") << filled(twoPasses) << Rights::NoWritingOfFiles << Tells << Knows
                                 << 3 << holds(twoPasses);
        row("no room for a first file")
            << nothing << Rights::NoWritingOfFiles << Tells << Greets << 1 << holds("");

        row("file for its owner only")
            << Prepare([=](const Configuration &place) {
                   place.fill(twoPasses);
                   ::chmod(qUtf8Printable(place.file()), 0600);
               })
            << Rights::All << Quiet << Knows << 3 << Judge([=](const Configuration &place) {
                   const bool kept = QFileInfo(place.file())
                                         .permissions()
                                         .testFlags(QFile::ReadOwner | QFile::WriteOwner) &&
                                     !QFileInfo(place.file()).permission(QFile::ReadGroup);
                   return holds(threePasses)(place) + (kept ? "" : "the permissions are others");
               });

        // Links.
        row("link to a file") << linkedTo(u"elsewhere.conf"_s, twoPasses) << Rights::All << Quiet
                              << Knows << 3 << Judge([=](const Configuration &place) {
                                     return holds(threePasses, {u"elsewhere.conf"_s})(place) +
                                            differs(
                                                "the link", linkOf(place).toUtf8(),
                                                (place.folder() + u"/elsewhere.conf"_s).toUtf8());
                                 });
        row("link to a file that is missing")
            << linkedTo(u"elsewhere.conf"_s) << Rights::All << Quiet << Greets << 1
            << Judge([=](const Configuration &place) {
                   return holds(firstPass, {u"elsewhere.conf"_s})(place) +
                          differs("the link", linkOf(place).toUtf8(),
                                  (place.folder() + u"/elsewhere.conf"_s).toUtf8());
               });
        row("link to a folder that is missing")
            << linkedTo(u"nowhere/elsewhere.conf"_s) << Rights::All << Tells << Greets << 1
            << Judge([=](const Configuration &place) {
                   return holds("")(place) +
                          differs("the link", linkOf(place).toUtf8(),
                                  (place.folder() + u"/nowhere/elsewhere.conf"_s).toUtf8());
               });
        row("link to itself") << linkedTo(u"Zorvan.conf"_s) << Rights::All << Tells << Greets << 1
                              << Judge([=](const Configuration &place) {
                                     return differs("the link", linkOf(place).toUtf8(),
                                                    place.file().toUtf8());
                                 });

        // Contents.
        const auto content = [&](const char *name, const QByteArray &before) -> QTestData & {
            return row(name) << filled(before) << Rights::All;
        };
        content("empty", "") << Quiet << Greets << 1 << holds(firstPass);
        const QByteArray junk = QByteArray::fromHex("00ff1b7f0a3d5b0a89504e470d0a1a0a5b5d3d3d0a");
        content("junk bytes", junk)
            << Tells << Greets << 1 << holds(QByteArray(firstPass).replace("\n", "\r\n") + junk);
        const auto upToQuiz5 = [](const QByteArray &text) {
            return text.first(text.indexOf("quiz6"));
        };
        content("half a file", upToQuiz5(twoPasses) + "qui")
            << Tells << Knows << 3 << holds(upToQuiz5(threePasses) + "qui");
        const auto carriesOver = [&](const char *name, bool tells, const QByteArray &rest) {
            content(name, twoPasses + rest) << tells << Knows << 3 << holds(threePasses + rest);
        };
        carriesOver("a section without its end", Tells, "[Broken\nother=1\n");
        carriesOver("a line that is no text", Quiet, "note=\xff\xfe\n");
        carriesOver("another program's keys", Quiet,
                    "\n[Another]\nkey=value\nlist=a, b, \"c, d\"\n");
        carriesOver("a value of a kind that is unknown", Quiet,
                    "\n[Another]\nthing=@Variant(\\0\\0\\x4\\0\\0\\0\\0\\0\\x4Thg\\0)\n");
        carriesOver("a quote without its end", Quiet, "note=\"words\nquiz6=3\n");
        carriesOver("a section of that name again", Quiet,
                    "[Another]\nquiz5=1\n[general]\nother=1\n");
        const QByteArray comment = "; my own words\n";
        content("a comment", comment + twoPasses)
            << Quiet << Knows << 3 << holds(comment + threePasses);
        content("a comment behind a pass count",
                QByteArray(twoPasses).replace("quiz5=2", "quiz5=2;my own words"))
            << Quiet << Knows << 3
            << holds(QByteArray(threePasses).replace("quiz5=3", "quiz5=3;my own words"));
        content("lines that end as on Windows", QByteArray(twoPasses).replace("\n", "\r\n"))
            << Quiet << Knows << 3 << holds(QByteArray(threePasses).replace("\n", "\r\n"));

        const QByteArray quoted = "note=\"\n" + twoPasses.sliced(twoPasses.indexOf('\n') + 1);
        content("a quote around all pass counts", "[General]\n" + quoted)
            << Quiet << Greets << 1 << holds(firstPass + quoted);

        // QSettings goes on reading the value under the other spelling.
        const QByteArray alias = "quiz%35=2\n";
        content("a key in another spelling", twoPasses + alias)
            << Tells << Knows << 3
            << keepsAside(QByteArray(twoPasses).replace("currentTest=0", "currentTest=5") + alias,
                          threePasses);
        const QByteArray lengthy = "\n[Another]\nlong=" + QByteArray(1'000'000, 'x') + '\n';
        content("a very long value", twoPasses + lengthy)
            << Quiet << Knows << 3 << holds(threePasses + lengthy);
        const auto withPassCount = [=](const QByteArray &count) {
            return QByteArray(threePasses).replace("quiz5=3", "quiz5=" + count);
        };
        const auto oddCount = [&](const char *name, const QByteArray &count) {
            content(name, QByteArray(seeded).replace("quiz5=0", "quiz5=" + count))
                << Quiet << Knows << 0 << holds(withPassCount(count));
        };
        oddCount("a very long pass count", QByteArray(1'000'000, '1'));
        oddCount("a pass count with a percent sign", "100%");
        oddCount("a pass count with a percent code", "%31");
        oddCount("a pass count with commas", "\"1,2,3\"");
        oddCount("a pass count that is a list", "1, 2, 3");
        oddCount("a pass count with quotes", R"(\"1\")");
        oddCount("a pass count with an escaped line break", "1\\n2");
        oddCount("no pass count", "");

        // What a killed process left behind.
        row("leftovers of a kill") << Prepare([=](const Configuration &place) {
            place.fill(twoPasses);
            place.write("[Gen", u".Zorvan.conf.writing"_s);
            place.write("", u"Zorvan.conf.lock"_s);
        }) << Rights::All << Quiet << Knows
                                   << 3 << holds(threePasses, {u"Zorvan.conf.lock"_s});
    }

    void programCopesAndTells() {
        QFETCH(const Prepare, prepare);
        QFETCH(const Rights, rights);
        QFETCH(const bool, tells);
        QFETCH(const bool, greets);
        QFETCH(const int, passes);
        QFETCH(const Judge, judge);
        const Configuration configuration;
        prepare(configuration);

        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, configuration.home());
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        program.setProcessEnvironment(environment);
        program.setChildProcessModifier([rights] {
            // Makes permissions apply to root, too.
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
            if (rights == Rights::NoWritingOfFiles) {
                const ::rlimit none{0, 0};
                ::setrlimit(RLIMIT_FSIZE, &none);
                std::signal(SIGXFSZ, SIG_IGN);
            }
        });
        program.start(QStringLiteral(ONEPASS));
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        const QByteArray said = program.readAllStandardError();
        QVERIFY2(program.exitCode() == 0, said);

        QByteArrayList lines = said.split('\n');
        lines.removeIf([](const QByteArray &line) {
            // What the program logs if all is well, and messages from Qt.
            return line.isEmpty() || line == "Finished Starting" || line == "5" ||
                   line.startsWith("QStandardPaths") || line.startsWith("QVariant::load") ||
                   line.contains("propagateSizeHints");
        });
        QVERIFY2(lines.size() == (tells ? 1 : 0), said);
        if (tells) {
            QVERIFY2(lines.first().contains(configuration.file().toUtf8()), said);
        }

        QByteArrayList expected{"passes of quiz 5: " + QByteArray::number(passes)};
        if (greets) {
            expected.prepend(
                "alert: Welcome to Zorvan, this is the main progress screen where you can select "
                "quizzes to take and track your progress.");
        }
        QCOMPARE(program.readAllStandardOutput(), expected.join('\n') + '\n');

        const QByteArray wrong = judge(configuration);
        QVERIFY2(wrong.isEmpty(), wrong);
    }
};

ZORVAN_TEST(tst_badplaces)
#include "tst_badplaces.moc"
