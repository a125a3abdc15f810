#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include "support/testmain.h"
#include "system/runtimefolder.h"

using namespace Qt::StringLiterals;

/// The session's temporary folder is one of the test's own.
class tst_runtimefolder final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        QFile::remove(folder());
        QDir(folder()).removeRecursively();
        qputenv("TMPDIR", temporary_.path().toUtf8());
        qunsetenv("XDG_RUNTIME_DIR");
    }

    void folderIsTheUsersAlone() {
        QCOMPARE(provided(), folder());
        const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        QVERIFY(QFileInfo(folder()).isDir());
        QCOMPARE(QFileInfo(folder()).permissions() & others, QFile::Permissions());
        // The next program of the session finds it.
        qunsetenv("XDG_RUNTIME_DIR");
        QCOMPARE(provided(), folder());
    }

    void folderOfTheSessionIsKept() {
        qputenv("XDG_RUNTIME_DIR", "/elsewhere");
        QCOMPARE(provided(), u"/elsewhere"_s);
        QVERIFY(!QFileInfo::exists(folder()));
    }

    void whatIsNoFolderIsNotUsed() {
        QFile file(folder());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(provided(), QString());
    }

    void linkIsNotFollowed() {
        const QTemporaryDir another;
        QVERIFY(QFile::link(another.path(), folder()));
        QCOMPARE(provided(), QString());
    }

    void folderOfSomebodyElseIsNotUsed() {
        if (ownNumber() != 0) {
            QSKIP("Only root can give a folder away");
        }
        QVERIFY(QDir().mkdir(folder()));
        QCOMPARE(::chown(folder().toUtf8().constData(), 1, 1), 0);
        QCOMPARE(provided(), QString());
    }

 private:
    /// Where the program would make the folder.
    QString folder() const { return temporary_.filePath(u"runtime-%1"_s.arg(ownNumber())); }
    uint ownNumber() const { return QFileInfo(temporary_.path()).ownerId(); }
    static QString provided() {
        platform::provideRuntimeFolder();
        return qEnvironmentVariable("XDG_RUNTIME_DIR");
    }

    QTemporaryDir temporary_;
};

ZORVAN_TEST(tst_runtimefolder)
#include "tst_runtimefolder.moc"
