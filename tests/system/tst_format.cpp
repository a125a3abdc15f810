#include <QTest>

#include "support/testmain.h"
#include "system/exception.h"
#include "system/format.h"
#include "system/list.h"

using namespace Qt::StringLiterals;

using platform::stringWithFormat;

class tst_format final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void exactHalvesAreRoundedToEven_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("0.5") << 0.5 << u"0%"_s;
        QTest::newRow("1.5") << 1.5 << u"2%"_s;
        QTest::newRow("2.5") << 2.5 << u"2%"_s;
        QTest::newRow("12.5") << 12.5 << u"12%"_s;
        QTest::newRow("37.5") << 37.5 << u"38%"_s;
        QTest::newRow("62.5") << 62.5 << u"62%"_s;
        QTest::newRow("87.5") << 87.5 << u"88%"_s;
        QTest::newRow("66.7") << 66.7 << u"67%"_s;
        QTest::newRow("33.3") << 33.3 << u"33%"_s;
    }

    void exactHalvesAreRoundedToEven() {
        QFETCH(const double, value);
        QFETCH(const QString, text);
        QCOMPARE(stringWithFormat("%.0f%%", value), text);
    }

    void programsFormats() {
        QCOMPARE(stringWithFormat("%i", 3), u"3"_s);
        QCOMPARE(stringWithFormat("%i/%i", 3, 14), u"3/14"_s);
        QCOMPARE(stringWithFormat("1/%i", 0), u"1/0"_s);
        QCOMPARE(stringWithFormat("%.0f %%", 100.0), u"100 %"_s);
        QCOMPARE(stringWithFormat("%d:%02d", 3, 5), u"3:05"_s);
        QCOMPARE(stringWithFormat("%d:%02d", 0, 0), u"0:00"_s);
    }

    void longTextsAreWhole() {
        const QByteArray words(1000, 'x');
        QCOMPARE(stringWithFormat("%s, %i", words.constData(), 7),
                 QString::fromLatin1(words + ", 7"));
    }

    void entryBeyondAListRaises() {
        const QStringList list{u"a"_s, u"b"_s};
        QCOMPARE(platform::objectAtIndex(list, 1), u"b"_s);
        QVERIFY_THROWS_EXCEPTION(platform::Exception, platform::objectAtIndex(list, 2));
        QVERIFY_THROWS_EXCEPTION(platform::Exception, platform::objectAtIndex(list, -1));
        QVERIFY_THROWS_EXCEPTION(platform::Exception, platform::objectAtIndex({}, 0));
        try {
            platform::objectAtIndex(list, 7);
        } catch (const platform::Exception &exception) {
            QCOMPARE(QString::fromUtf8(exception.what()), u"Index 7 is beyond a list of 2"_s);
        }
    }
};

ZORVAN_TEST(tst_format)
#include "tst_format.moc"
