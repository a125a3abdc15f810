#include <QDir>
#include <QFile>
#include <QSettings>
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

    void fileIsZorvansOwnInTheConfigurationHome() {
        Preferences().setValueForKey(u"2"_s, u"quiz1"_s);
        QCOMPARE(
            QDir(home_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList{u"Zorvan"_s});
        QCOMPARE(content(), QByteArray("[General]\nquiz1=2\n"));
        QCOMPARE(otherFiles(), QStringList());
    }

    void absentKeyGivesNothing() {
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        QCOMPARE(preferences.objectForKey(u"quiz1"_s), std::nullopt);
        // Reading creates no file.
        QCOMPARE(content(), std::nullopt);
    }

    void emptyTextIsNotAbsent() {
        write("[General]\nfirstRun=\n");
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"firstRun"_s), QString());
        QVERIFY(preferences.objectForKey(u"firstRun"_s).has_value());
    }

    void writeIsOnTheDiskWhenItReturns() {
        Preferences preferences;
        for (const QByteArray &value : {QByteArray("1"), QByteArray("2"), QByteArray("3")}) {
            preferences.setValueForKey(QString::fromLatin1(value), u"quiz1"_s);
            QCOMPARE(content(), "[General]\nquiz1=" + value + "\n");
        }
    }

    void writeReplacesTheTextAndKeepsTheOthers() {
        write("[General]\nanother=kept\nquiz1=1\n");
        Preferences preferences;
        preferences.setValueForKey(u"2"_s, u"quiz1"_s);
        QCOMPARE(content(), QByteArray("[General]\nanother=kept\nquiz1=2\n"));
    }

    void textsComeBackAsTheyWere_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("percent") << u"100 %"_s;
        QTest::newRow("percent code") << u"%41%U0041"_s;
        QTest::newRow("comma") << u"a, b,c"_s;
        QTest::newRow("quotes") << u"\"quoted\" and 'quoted'"_s;
        QTest::newRow("backslash") << u"a\\b\\n"_s;
        QTest::newRow("lines") << u"one\ntwo\r\tthree"_s;
        QTest::newRow("blanks") << u"  a  "_s;
        QTest::newRow("equals and semicolon") << u"a=b;c#d"_s;
        QTest::newRow("accents") << u"Größe, naïve"_s;
        QTest::newRow("other scripts") << u"日本語 Ж א"_s;
        QTest::newRow("beyond sixteen bits") << u"\U0001F600"_s;
        QTest::newRow("at sign") << u"@Invalid()"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("number") << u"007"_s;
    }

    void textsComeBackAsTheyWere() {
        QFETCH(const QString, text);
        Preferences preferences;
        preferences.setValueForKey(text, u"key"_s);
        QCOMPARE(preferences.valueForKey(u"key"_s), text);

        // Read in another place, so that the value can only come from the file.
        const QTemporaryDir elsewhere;
        QVERIFY(QDir(elsewhere.path()).mkdir(u"Zorvan"_s));
        QVERIFY(QFile::copy(home_->filePath(u"Zorvan/Zorvan.conf"_s),
                            elsewhere.filePath(u"Zorvan/Zorvan.conf"_s)));
        qputenv("XDG_CONFIG_HOME", elsewhere.path().toUtf8());
        QCOMPARE(Preferences().valueForKey(u"key"_s), text);
    }

    void writeOfAnotherProcessIsSeen() {
        write("[General]\nquiz1=1\n");
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"1"_s);
        write("[General]\nquiz1=33\nquiz2=2\n");
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"33"_s);
        QCOMPARE(preferences.objectForKey(u"quiz2"_s), u"2"_s);
    }

    void writeKeepsWhatAnotherProcessWrote() {
        write("[General]\nquiz1=1\n");
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"1"_s);
        write("[General]\nquiz1=2\nquiz2=3\n");
        preferences.setValueForKey(u"1"_s, u"quiz3"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz3=1\nquiz1=2\nquiz2=3\n"));
    }

    void wipedFileIsSeen() {
        Preferences preferences;
        preferences.setValueForKey(u"1"_s, u"quiz1"_s);
        QVERIFY(QFile::remove(home_->filePath(u"Zorvan/Zorvan.conf"_s)));
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        preferences.setValueForKey(u"2"_s, u"quiz2"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz2=2\n"));
    }

    void otherSettingsDoNotAnswerForOurs_data() {
        QTest::addColumn<QString>("file");
        QTest::newRow("the organisation's") << u"Zorvan.conf"_s;
        QTest::newRow("the system's") << u"system/Zorvan/Zorvan.conf"_s;
        QTest::newRow("the system's organisation's") << u"system/Zorvan.conf"_s;
    }

    void otherSettingsDoNotAnswerForOurs() {
        QFETCH(const QString, file);
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope,
                           home_->filePath(u"system"_s));
        write("[General]\nquiz1=3\n", file);
        QCOMPARE(Preferences().valueForKey(u"quiz1"_s), std::nullopt);
    }

    void unparsableFileIsReportedOnceAndReadAsFarAsItGoes_data() { unparsableRows(); }

    void unparsableFileIsReportedOnceAndReadAsFarAsItGoes() {
        QFETCH(const QByteArray, broken);
        write(broken);
        StandardError standardError;
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"2"_s);
        QCOMPARE(preferences.valueForKey(u"currentTest"_s), u"4"_s);
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(
            standardError.lines().constFirst().contains(home_->filePath(u"Zorvan/Zorvan.conf"_s)),
            qUtf8Printable(standardError.lines().constFirst()));
        // As long as nothing is written, nothing is touched.
        QCOMPARE(content(), broken);
        QCOMPARE(otherFiles(), QStringList());
    }

    void unparsableLinesStayAsTheyAre_data() { unparsableRows(); }

    void unparsableLinesStayAsTheyAre() {
        QFETCH(const QByteArray, broken);
        write(broken);
        StandardError standardError;
        Preferences preferences;
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        preferences.setValueForKey(u"1"_s, u"quiz5"_s);

        QCOMPARE(content(), QByteArray(broken)
                                .replace("quiz1=2", "quiz1=3")
                                .replace("[General]", "[General]\nquiz5=1"));
        QCOMPARE(otherFiles(), QStringList());
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"3"_s);
        QCOMPARE(preferences.valueForKey(u"quiz5"_s), u"1"_s);
        QCOMPARE(preferences.valueForKey(u"currentTest"_s), u"4"_s);
        QCOMPARE(standardError.lines().size(), 1);
    }

    // As QSettings reads it, the last line is one more value of quiz1.
    void fileWithAKeyInAnotherSpellingIsKeptAside() {
        const QByteArray odd =
            "[General]\nlist=a, b\nquiz1=1\nquiz2=1\nquiz%31=2\n[Another]\nkey=kept\n";
        write(odd);
        StandardError standardError;
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"2"_s);
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"3"_s);

        QCOMPARE(content(), QByteArray("[General]\nquiz1=3\nquiz2=1\n"));
        QCOMPARE(otherFiles(), QStringList{u"Zorvan.conf.kept-1"_s});
        QCOMPARE(content(u"Zorvan/Zorvan.conf.kept-1"_s), odd);
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(u"Zorvan.conf.kept-1"),
                 qUtf8Printable(standardError.lines().constFirst()));
    }

    void fileKeptAsideIsNeverReplaced() {
        const QByteArray first = "[General]\nquiz%31=1\n";
        const QByteArray second = "[General]\nquiz%31=2\n";
        StandardError standardError;
        Preferences preferences;
        for (const QByteArray &odd : {first, second, first}) {
            write(odd);
            preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        }
        QCOMPARE(otherFiles(), (QStringList{u"Zorvan.conf.kept-1"_s, u"Zorvan.conf.kept-2"_s}));
        QCOMPARE(content(u"Zorvan/Zorvan.conf.kept-1"_s), first);
        QCOMPARE(content(u"Zorvan/Zorvan.conf.kept-2"_s), second);
        // Each time it is told.
        QCOMPARE(standardError.lines().size(), 3);
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
            QCOMPARE(preferences.valueForKey(u"currentStatus"_s), u"pass"_s);
        }
        QCOMPARE(content(), QByteArray("[General]\ncurrentStatus=pass\nquiz1=2\n"));
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);
        QCOMPARE(content(), QByteArray("[General]\ncurrentStatus=pass\nquiz1=3\n"));
    }

    void unwritableStoreWarnsOnceAndGoesOnInMemory_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("folder");
        QTest::newRow("the configuration home is a file") << u"home"_s << QString();
        QTest::newRow("the organisation is a file") << u"home/Zorvan"_s << QString();
        QTest::newRow("the store is a folder") << QString() << u"home/Zorvan/Zorvan.conf"_s;
    }

    void unwritableStoreWarnsOnceAndGoesOnInMemory() {
        QFETCH(const QString, file);
        QFETCH(const QString, folder);
        if (folder.isEmpty()) {
            write("in the way", file);
        } else {
            QVERIFY(QDir().mkpath(home_->filePath(folder)));
        }
        qputenv("XDG_CONFIG_HOME", home_->filePath(u"home"_s).toUtf8());
        StandardError standardError;
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        preferences.setValueForKey(u"1"_s, u"quiz1"_s);
        preferences.setValueForKey(u"2"_s, u"quiz2"_s);
        preferences.setValueForKey(u"3"_s, u"quiz1"_s);

        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"3"_s);
        QCOMPARE(preferences.valueForKey(u"quiz2"_s), u"2"_s);
        QCOMPARE(preferences.valueForKey(u"quiz3"_s), std::nullopt);
        QCOMPARE(standardError.lines().size(), 1);
        const QString line = standardError.lines().constFirst();
        QVERIFY2(line.contains(home_->filePath(u"home"_s)), qUtf8Printable(line));
        QVERIFY2(!line.trimmed().endsWith(u"program ends."),
                 qUtf8Printable(u"No reason is given: "_s + line));
    }

    void observerIsToldOfEachWriteInOrder() {
        Preferences preferences;
        QStringList told;
        preferences.setObserver(
            [&](const QString &value, const QString &key) { told << key + u'=' + value; });
        preferences.setValueForKey(u"1"_s, u"zebra"_s);
        preferences.setValueForKey(u"2"_s, u"ant"_s);
        preferences.setValueForKey(u"2"_s, u"ant"_s);
        QCOMPARE(told, (QStringList{u"zebra=1"_s, u"ant=2"_s, u"ant=2"_s}));

        preferences.setObserver({});
        preferences.setValueForKey(u"3"_s, u"ant"_s);
        QCOMPARE(told.size(), 3);
    }

    void standardUserDefaultsAreOneObject() {
        QCOMPARE(&Preferences::standardUserDefaults(), &Preferences::standardUserDefaults());
        Preferences::standardUserDefaults().setValueForKey(u"1"_s, u"quiz1"_s);
        QCOMPARE(content(), QByteArray("[General]\nquiz1=1\n"));
    }

 private:
    static void unparsableRows() {
        QTest::addColumn<QByteArray>("broken");
        QTest::newRow("a section without its end")
            << QByteArray("[General]\ncurrentTest=4\nquiz1=2\n[Broken\nquiz2=1\n");
        QTest::newRow("a line without a key")
            << QByteArray("[General]\nquiz1=2\nthis line has no key\ncurrentTest=4\n");
        QTest::newRow("not a text")
            << QByteArray("[General]\nquiz1=2\ncurrentTest=4\n\xff\xfe\x01\n");
    }

    /// The file's content; nothing if there is no file.
    std::optional<QByteArray> content(const QString &path = u"Zorvan/Zorvan.conf"_s) const {
        QFile file(home_->filePath(path));
        if (!file.open(QIODevice::ReadOnly)) {
            return std::nullopt;
        }
        return file.readAll();
    }

    void write(const QByteArray &content, const QString &path = u"Zorvan/Zorvan.conf"_s) const {
        const QString file = home_->filePath(path);
        QDir().mkpath(QFileInfo(file).path());
        QFile target(file);
        if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size()) {
            qFatal("%s cannot be written", qUtf8Printable(file));
        }
    }

    /// Every file below Zorvan's folder except the store itself.
    QStringList otherFiles() const {
        QStringList files =
            QDir(home_->filePath(u"Zorvan"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
        files.removeAll(u"Zorvan.conf"_s);
        return files;
    }

    std::unique_ptr<QTemporaryDir> home_;
};

ZORVAN_TEST(tst_preferences)
#include "tst_preferences.moc"
