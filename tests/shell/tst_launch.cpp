#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// The program itself, as a process with a configuration home of its own.
class tst_launch final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void programStartsAndLogsOneLine() {
        const QByteArray store = "[General]\nfirstRun=false\n";
        QCOMPARE(linesUntilStarted(store), "Finished Starting\n");
        constexpr bool hasRuntimeFolder = false;
        QCOMPARE(linesUntilStarted(store, hasRuntimeFolder), "Finished Starting\n");
    }

    void unparsableStoreDoesNotStopTheProgram() {
        const QByteArray lines = linesUntilStarted("[General]\nfirstRun=false\nno key here\n");
        QCOMPARE(lines.count('\n'), 2);
        QVERIFY2(lines.contains("Zorvan.conf"), lines.constData());
        QVERIFY2(lines.endsWith("\nFinished Starting\n"), lines.constData());
    }

 private:
    /// Starts the program with a store of that content and returns what it wrote to standard error
    /// up to the line that says it has started.
    static QByteArray linesUntilStarted(const QByteArray &storeContent,
                                        bool hasRuntimeFolder = true) {
        const QTemporaryDir home;
        QDir(home.path()).mkdir(u"Zorvan"_s);
        QFile store(home.filePath(u"Zorvan/Zorvan.conf"_s));
        if (!store.open(QIODevice::WriteOnly) || store.write(storeContent) < 0) {
            return "(no store)";
        }
        store.close();

        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, home.path());
        environment.insert(u"TMPDIR"_s, home.path());
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        if (hasRuntimeFolder) {
            environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
        }
        program.setProcessEnvironment(environment);
        program.setReadChannel(QProcess::StandardError);
        program.start(QStringLiteral(ZORVAN_PROGRAM));
        QByteArray written;
        while (!written.contains("Finished Starting\n") && program.waitForReadyRead()) {
            written += program.readAllStandardError();
        }
        const bool runs = program.state() == QProcess::Running;
        program.kill();
        program.waitForFinished();
        written += program.readAllStandardError();
        QByteArrayList lines = written.split('\n');
        // Written by Qt, not by the program.
        lines.removeIf([](const QByteArray &line) { return line.contains("propagateSizeHints"); });
        return lines.join('\n') + (runs ? "" : "(ended)");
    }
};

ZORVAN_TEST(tst_launch)
#include "tst_launch.moc"
