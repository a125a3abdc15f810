#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;

class tst_preferences final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        home_ = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", home_->path().toUtf8());
    }

    void readingCreatesNothing() {
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        QCOMPARE(preferences.objectForKey(u"quiz1"_s), std::nullopt);
        QCOMPARE(files(), QStringList());
    }

    void emptyTextIsNotAbsent() {
        write("[General]\nfirstRun=\n");
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"firstRun"_s), QString());
        QCOMPARE(preferences.objectForKey(u"firstRun"_s), QString());
    }

    void writeIsOnTheDiskWhenItReturns() {
        Preferences &preferences = Preferences::standardUserDefaults();
        for (const QByteArray &value : {QByteArray("1"), QByteArray("2"), QByteArray("3")}) {
            preferences.setValueForKey(QString::fromLatin1(value), u"quiz1"_s);
            QCOMPARE(content(), "[General]\nquiz1=" + value + "\n");
        }
        QCOMPARE(files(), QStringList{u"Zorvan/Zorvan.conf"_s});
        QCOMPARE(Preferences::standardUserDefaults().valueForKey(u"quiz1"_s), u"3"_s);
    }

    void textsComeBackAsTheyWere() {
        const QStringList texts{u""_s,           u"007"_s,
                                u"  a  "_s,      u"100 %"_s,
                                u"%41%U0041"_s,  u"a, b,c"_s,
                                u"a=b;c#d"_s,    u"\"quoted\" and 'quoted'"_s,
                                u"a\\b\\n"_s,    u"one\ntwo\r\tthree"_s,
                                u"@Invalid()"_s, u"Größe, 日本語 Ж א \U0001F600"_s};
        const auto key = [](qsizetype text) { return u"text%1"_s.arg(text); };
        for (qsizetype text = 0; text < texts.size(); ++text) {
            Preferences().setValueForKey(texts.at(text), key(text));
        }
        // In another place, so that they can only come from the file.
        const QTemporaryDir elsewhere;
        QVERIFY(QDir(elsewhere.path()).mkdir(u"Zorvan"_s));
        QVERIFY(QFile::copy(store(), elsewhere.filePath(u"Zorvan/Zorvan.conf"_s)));
        qputenv("XDG_CONFIG_HOME", elsewhere.path().toUtf8());
        for (qsizetype text = 0; text < texts.size(); ++text) {
            QCOMPARE(Preferences().valueForKey(key(text)), texts.at(text));
        }
    }

    void whatAnotherProcessWroteIsSeenAndKept() {
        write("[General]\nquiz1=1\n");
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"1"_s);
        write("[General]\nquiz1=33\nquiz2=2\n");
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"33"_s);
        QCOMPARE(preferences.objectForKey(u"quiz2"_s), u"2"_s);
        preferences.setValueForKey(u"3"_s, u"quiz2"_s);
        preferences.setValueForKey(u"1"_s, u"quiz3"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz3=1\nquiz1=33\nquiz2=3\n"));
    }

    void wipedFileIsSeen() {
        Preferences preferences;
        preferences.setValueForKey(u"1"_s, u"quiz1"_s);
        QVERIFY(QFile::remove(store()));
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        preferences.setValueForKey(u"2"_s, u"quiz2"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz2=2\n"));
    }

    void batchIsWrittenWhenItEnds() {
        const QByteArray before = "[General]\nquiz1=1\n";
        write(before);
        Preferences preferences;
        {
            const Preferences::Batch batch(preferences);
            preferences.setValueForKey(u"pass"_s, u"currentStatus"_s);
            preferences.setValueForKey(u"2"_s, u"quiz1"_s);
            QCOMPARE(content(), before);
            QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"2"_s);
        }
        QCOMPARE(content(), QByteArray("[General]\ncurrentStatus=pass\nquiz1=2\n"));
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        QCOMPARE(content(), QByteArray("[General]\ncurrentStatus=pass\nquiz1=3\n"));
    }

    void observerIsToldOfEachWriteInOrder() {
        Preferences preferences;
        QStringList told;
        preferences.setObserver(
            [&](const QString &value, const QString &key) { told << key + u'=' + value; });
        preferences.setValueForKey(u"1"_s, u"zebra"_s);
        preferences.setValueForKey(u"2"_s, u"ant"_s);
        preferences.setValueForKey(u"2"_s, u"ant"_s);
        preferences.setObserver({});
        preferences.setValueForKey(u"3"_s, u"ant"_s);
        QCOMPARE(told, (QStringList{u"zebra=1"_s, u"ant=2"_s, u"ant=2"_s}));
    }

    void unparsableLinesAreReportedOnceAndStayAsTheyAre_data() {
        QTest::addColumn<QByteArray>("broken");
        QTest::newRow("a section without its end")
            << QByteArray("[General]\ncurrentTest=4\nquiz1=2\n[Broken\nquiz2=1\n");
        QTest::newRow("a line without a key")
            << QByteArray("[General]\nquiz1=2\nthis line has no key\ncurrentTest=4\n");
        QTest::newRow("not a text")
            << QByteArray("[General]\nquiz1=2\ncurrentTest=4\n\xff\xfe\x01\n");
    }

    void unparsableLinesAreReportedOnceAndStayAsTheyAre() {
        QFETCH(const QByteArray, broken);
        write(broken);
        StandardError standardError;
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"currentTest"_s), u"4"_s);
        QCOMPARE(content(), broken);

        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        preferences.setValueForKey(u"1"_s, u"quiz5"_s);
        QCOMPARE(content(), QByteArray(broken)
                                .replace("quiz1=2", "quiz1=3")
                                .replace("[General]", "[General]\nquiz5=1"));
        QCOMPARE(files(), QStringList{u"Zorvan/Zorvan.conf"_s});
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(store()),
                 qUtf8Printable(standardError.lines().constFirst()));
    }

    // As QSettings reads it, the last line is one more value of quiz1.
    void fileWithAKeyInAnotherSpellingIsKeptAside() {
        const QByteArray first = "[General]\nlist=a, b\nquiz2=1\nquiz%31=1\n[Another]\nkey=kept\n";
        const QByteArray second = "[General]\nquiz2=1\nquiz%31=2\n";
        StandardError standardError;
        Preferences preferences;
        // The second is never replaced, nor the first kept twice.
        for (const QByteArray &odd : {first, second, first}) {
            write(odd);
            preferences.setValueForKey(u"3"_s, u"quiz1"_s);
            QCOMPARE(content(), QByteArray("[General]\nquiz1=3\nquiz2=1\n"));
        }
        QCOMPARE(files(), (QStringList{u"Zorvan/Zorvan.conf"_s, u"Zorvan/Zorvan.conf.kept-1"_s,
                                       u"Zorvan/Zorvan.conf.kept-2"_s}));
        QCOMPARE(content(u"Zorvan/Zorvan.conf.kept-1"_s), first);
        QCOMPARE(content(u"Zorvan/Zorvan.conf.kept-2"_s), second);
        QCOMPARE(standardError.lines().size(), 3);
        QVERIFY2(standardError.lines().at(1).contains(u"Zorvan.conf.kept-2"),
                 qUtf8Printable(standardError.lines().at(1)));
    }

    void unwritableStoreWarnsOnceAndGoesOnInMemory() {
        write("in the way", u"Zorvan"_s);
        StandardError standardError;
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        preferences.setValueForKey(u"1"_s, u"quiz1"_s);
        preferences.setValueForKey(u"2"_s, u"quiz2"_s);
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"3"_s);
        QCOMPARE(preferences.valueForKey(u"quiz2"_s), u"2"_s);

        // The system's reason follows.
        const QString warning =
            u"The preferences cannot be written to %1; they last only until "
            "the program ends. "_s.arg(store());
        QCOMPARE(standardError.lines().size(), 1);
        const QString line = standardError.lines().constFirst();
        QVERIFY2(line.startsWith(warning) && line != warning, qUtf8Printable(line));

        // Once it can be written, everything is.
        QVERIFY(QFile::remove(home_->filePath(u"Zorvan"_s)));
        preferences.setValueForKey(u"1"_s, u"quiz3"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz1=3\nquiz2=2\nquiz3=1\n"));
    }

 private:
    QString store() const { return home_->filePath(u"Zorvan/Zorvan.conf"_s); }

    /// The file's content; nothing if there is no file.
    std::optional<QByteArray> content(const QString &path = u"Zorvan/Zorvan.conf"_s) const {
        QFile file(home_->filePath(path));
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    void write(const QByteArray &content, const QString &path = u"Zorvan/Zorvan.conf"_s) const {
        QFile file(home_->filePath(path));
        QDir().mkpath(QFileInfo(file).path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("%s cannot be written", qUtf8Printable(file.fileName()));
        }
    }

    /// Every file in the configuration home.
    QStringList files() const {
        QStringList files;
        QDirIterator all(home_->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            files << QDir(home_->path()).relativeFilePath(all.next());
        }
        files.sort();
        return files;
    }

    std::unique_ptr<QTemporaryDir> home_;
};

ZORVAN_TEST(tst_preferences)
#include "tst_preferences.moc"
