#include <QSettings>
#include <QTest>

#include "reliability/configuration.h"
#include "reliability/recording.h"
#include "support/testmain.h"
#include "system/preferences.h"
#include "system/settingsfile.h"

using namespace Qt::StringLiterals;

/// Two copies of the program with the same store.
class tst_company final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void twoProcessesLoseNoPassOfEachOther() {
        constexpr int passes = 500;
        const Configuration configuration;
        configuration.fill(seeded);
        Recording one(configuration, passes, {u"1"_s, u"3"_s, u"5"_s});
        Recording other(configuration, passes, {u"2"_s, u"4"_s, u"6"_s, u"7"_s});
        QVERIFY(one.waitForEnd());
        QVERIFY(other.waitForEnd());

        Contents expected = one.lastOfEachQuiz();
        expected.insert(other.lastOfEachQuiz());
        QCOMPARE(expected.size(), 7);
        QCOMPARE(missing(expected, configuration.contents()), QByteArray());
        for (const Recording *recording : {&one, &other}) {
            QCOMPARE(recording->lost(), QByteArrayList());
            QCOMPARE(recording->done().size(), 3 * passes);
        }
        QCOMPARE(configuration.filesBesideTheStore(), QStringList());
    }

    void quickWritesOfAnotherProcessAreAllSeen() {
        const Configuration configuration;
        qputenv("XDG_CONFIG_HOME", configuration.home().toUtf8());
        platform::Preferences preferences;
        // Many of these files get the same time, and all have the same size.
        for (int write = 0; write < 100; ++write) {
            const QString value = QString::number(write % 4);
            platform::settingsfile::write(configuration.file(), {{u"quiz1"_s, value}});
            QCOMPARE(preferences.valueForKey(u"quiz1"_s), value);
        }
    }
};

ZORVAN_TEST(tst_company)
#include "tst_company.moc"
