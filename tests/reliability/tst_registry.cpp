#include <algorithm>

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>
#include <qt_windows.h>

#include "recording.h"
#include "support/standarderror.h"
#include "support/store.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;

namespace {

/// A process that clears all progress over and over; it ends with this object.
class Seeder final {
 public:
    Seeder() { process_.start(QStringLiteral(SEEDER), QStringList()); }
    ~Seeder() {
        process_.kill();
        process_.waitForFinished();
    }
    Seeder(const Seeder &) = delete;
    Seeder &operator=(const Seeder &) = delete;

    bool waitUntilItBegins() { return process_.waitForReadyRead(); }

 private:
    QProcess process_;
};

store::Contents entriesOf(const QByteArrayList &lines) {
    store::Contents entries;
    for (const QByteArray &line : lines) {
        const auto equals = line.indexOf('=');
        entries.insert(QString::fromUtf8(line.first(equals)),
                       QString::fromUtf8(line.sliced(equals + 1)));
    }
    return entries;
}

}  // namespace

/// The preferences where Windows keeps them.
class tst_registry final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zorvan"); }

    void readingWritesNothing() {
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
        QCOMPARE(preferences.objectForKey(u"quiz1"_s), std::nullopt);
        QCOMPARE(store::contents(), store::Contents());
    }

    void writeIsThereWhenItReturns() {
        Preferences preferences;
        for (const QString &value : {u"1"_s, u"2"_s, u"3"_s}) {
            preferences.setValueForKey(value, u"quiz1"_s);
            QCOMPARE(store::contents(), (store::Contents{{u"quiz1"_s, value}}));
            QCOMPARE(Preferences().valueForKey(u"quiz1"_s), value);
        }
    }

    void textsAreKeptAsTexts() {
        const QStringList texts{u""_s,
                                u"0"_s,
                                u"007"_s,
                                u"false"_s,
                                u"  a  "_s,
                                u"100 %PATH%"_s,
                                u"a\\b/c"_s,
                                u"one\ntwo\r\tthree"_s,
                                u"Größe, 日本語 Ж א \U0001F600"_s};
        store::Contents written;
        for (const QString &text : texts) {
            const QString key = u"text%1"_s.arg(written.size());
            written.insert(key, text);
            Preferences().setValueForKey(text, key);
        }
        QCOMPARE(store::contents(), written);
        for (auto entry = written.begin(); entry != written.end(); ++entry) {
            QCOMPARE(Preferences().valueForKey(entry.key()), *entry);
        }
    }

    void emptyTextIsNotAbsent() {
        store::fill({{u"firstRun"_s, QString()}});
        QCOMPARE(Preferences().objectForKey(u"firstRun"_s), QString());
    }

    void whatOthersWroteIsSeenAndKept() {
        store::fill({{u"quiz1"_s, u"1"_s}});
        Preferences preferences;
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"1"_s);
        store::fill({{u"quiz1"_s, u"33"_s}, {u"of others"_s, u"kept"_s}});
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"33"_s);
        preferences.setValueForKey(u"3"_s, u"quiz2"_s);
        QCOMPARE(store::contents(),
                 (store::Contents{
                     {u"of others"_s, u"kept"_s}, {u"quiz1"_s, u"33"_s}, {u"quiz2"_s, u"3"_s}}));
        store::wipe();
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), std::nullopt);
    }

    void batchIsWrittenWhenItEnds() {
        store::fill({{u"quiz1"_s, u"1"_s}});
        Preferences preferences;
        {
            const Preferences::Batch batch(preferences);
            preferences.setValueForKey(u"pass"_s, u"currentStatus"_s);
            preferences.setValueForKey(u"2"_s, u"quiz1"_s);
            QCOMPARE(store::contents(), (store::Contents{{u"quiz1"_s, u"1"_s}}));
            QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"2"_s);
        }
        QCOMPARE(store::contents(),
                 (store::Contents{{u"currentStatus"_s, u"pass"_s}, {u"quiz1"_s, u"2"_s}}));
    }

    // No lasting key can be below one that goes when the user logs off.
    void storeThatRefusesWarnsOnceAndTheSessionGoesOn() {
        HKEY passing = nullptr;
        QCOMPARE(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Zorvan", 0, nullptr,
                                 REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &passing, nullptr),
                 ERROR_SUCCESS);
        RegCloseKey(passing);
        StandardError standardError;
        Preferences preferences;
        preferences.setValueForKey(u"1"_s, u"quiz1"_s);
        preferences.setValueForKey(u"2"_s, u"quiz2"_s);
        QCOMPARE(preferences.valueForKey(u"quiz1"_s), u"1"_s);
        QCOMPARE(store::contents(), store::Contents());
        const QStringList lines = standardError.lines().filter(u"cannot be written"_s);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.constFirst().contains(u"HKEY_CURRENT_USER"),
                 qUtf8Printable(lines.constFirst()));

        // Once it can be written, everything is.
        init();
        preferences.setValueForKey(u"1"_s, u"quiz3"_s);
        QCOMPARE(
            store::contents(),
            (store::Contents{{u"quiz1"_s, u"1"_s}, {u"quiz2"_s, u"2"_s}, {u"quiz3"_s, u"1"_s}}));
    }

    void twoProcessesLoseNoPassOfEachOther() {
        constexpr int passes = 500;
        store::fill(store::seeded());
        Recording one(passes, {u"1"_s, u"3"_s, u"5"_s});
        Recording other(passes, {u"2"_s, u"4"_s, u"6"_s, u"7"_s});
        for (Recording *recording : {&one, &other}) {
            QVERIFY(recording->waitForEnd());
            QCOMPARE(recording->done().size(), 3 * passes);
        }
        store::Contents expected = store::seeded();
        expected.insert(entriesOf(one.done()));
        expected.insert(entriesOf(other.done()));
        store::Contents found = store::contents();
        // Both write the last quiz.
        expected.remove(u"currentTest"_s);
        QVERIFY(found.remove(u"currentTest"_s) == 1);
        QCOMPARE(found, expected);
    }

    void killsLoseNothing() {
        constexpr int kills = 100;
        QRandomGenerator random = randomly();
        store::fill(store::seeded());
        store::Contents announced = store::seeded();
        for (int kill = 0; kill < kills; ++kill) {
            Recording recording(1000, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
            QVERIFY(recording.waitForLines(random.bounded(1, 12)));
            QThread::usleep(random.bounded(6000U));
            QVERIFY(recording.kill());
            announced.insert(entriesOf(recording.done()));
            // The unfinished write may be there or not.
            store::Contents withDue = announced;
            withDue.insert(entriesOf(recording.due()));
            if (store::contents() == withDue) {
                announced = withDue;
            }
            QCOMPARE(store::contents(), announced);
        }
    }

    // So that a store which is marked as seeded is seeded.
    void killAmidABatchLeavesTheFirstOfItsWrites() {
        const QStringList order{u"currentTest"_s,   u"quiz1"_s,   u"quiz2"_s, u"quiz3"_s,
                                u"quiz4"_s,         u"quiz5"_s,   u"quiz6"_s, u"quiz7"_s,
                                u"currentStatus"_s, u"firstRun"_s};
        constexpr int kills = 100;
        QRandomGenerator random = randomly();
        int amid = 0;
        for (int kill = 0; kill < kills; ++kill) {
            init();
            {
                Seeder seeder;
                QVERIFY(seeder.waitUntilItBegins());
                QThread::usleep(random.bounded(6000U));
            }
            const store::Contents found = store::contents();
            int changes = 0;
            for (qsizetype i = 1; i < order.size(); ++i) {
                changes += (found.value(order[i]) == u"1") != (found.value(order[i - 1]) == u"1");
            }
            QVERIFY2(changes <= 1, qUtf8Printable(QStringList(found.values()).join(u' ')));
            amid += changes;
        }
        QVERIFY2(amid > 0, "no kill came amid the writes");
    }

 private:
    static QRandomGenerator randomly() {
        const quint32 seed = QRandomGenerator::global()->generate();
        qInfo("seed %u", seed);
        return QRandomGenerator(seed);
    }
};

ZORVAN_TEST(tst_registry)
#include "tst_registry.moc"
