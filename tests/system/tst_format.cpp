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
    void exactHalvesAreRoundedToEven() {
        QCOMPARE(stringWithFormat("%.0f%%", 0.5), u"0%"_s);
        QCOMPARE(stringWithFormat("%.0f%%", 1.5), u"2%"_s);
        QCOMPARE(stringWithFormat("%.0f%%", 12.5), u"12%"_s);
        QCOMPARE(stringWithFormat("%.0f%%", 37.5), u"38%"_s);
        QCOMPARE(stringWithFormat("%.0f%%", 66.7), u"67%"_s);
        QCOMPARE(stringWithFormat("%.0f %%", 33.3), u"33 %"_s);
    }

    void numbersStandAsTheFormatHasThem() {
        QCOMPARE(stringWithFormat("%i/%i", 3, 14), u"3/14"_s);
        QCOMPARE(stringWithFormat("%d:%02d", 3, 5), u"3:05"_s);
    }

    void textsOfAnyLengthAreWhole() {
        QCOMPARE(stringWithFormat("%s", ""), u""_s);
        const QByteArray words(1000, 'x');
        QCOMPARE(stringWithFormat("%s, %i", words.constData(), 7),
                 QString::fromLatin1(words + ", 7"));
    }

    void entryBeyondAListRaises() {
        const QStringList list{u"a"_s, u"b"_s};
        QCOMPARE(platform::objectAtIndex(list, 1), u"b"_s);
        QVERIFY_THROWS_EXCEPTION(platform::Exception, platform::objectAtIndex(list, -1));
        try {
            platform::objectAtIndex(list, 2);
            QFAIL("Nothing is raised");
        } catch (const platform::Exception &exception) {
            QCOMPARE(QString::fromUtf8(exception.what()), u"Index 2 is beyond a list of 2"_s);
        }
    }
};

ZORVAN_TEST(tst_format)
#include "tst_format.moc"
