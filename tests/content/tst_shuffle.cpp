#include <cstdint>
#include <cstdio>
#include <limits>

#include <QProcess>
#include <QSet>
#include <QTest>

#include "content/shuffle.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// Not a test: what another process draws.
[[maybe_unused]] const bool isKnown = testmain::add("someDraws", [](const QStringList &) {
    for (int draw = 0; draw < 4; ++draw) {
        std::printf("%u\n", content::systemRandom());
    }
    return 0;
});

QByteArray drawsOfAnotherProcess() {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {u"someDraws"_s});
    process.waitForFinished();
    return process.readAllStandardOutput();
}

}  // namespace

class tst_shuffle final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void eachDrawPicksAmongTheEntriesThatAreLeft() {
        constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
        struct Row {
            QList<std::uint32_t> draws;
            QString order;
        };
        const QList<Row> rows{
            {{0, 0, 0, 0, 0, 0, 0}, u"abcdefg"_s},
            {{6, 5, 4, 3, 2, 1, 0}, u"gabcdef"_s},
            // What is more than the entries left is reduced by the plain remainder.
            {{3, 1, 4, 1, 5, 9, 2}, u"dcgebaf"_s},
            {QList<std::uint32_t>(7, largest), u"decgbaf"_s},
        };
        for (const auto &row : rows) {
            QStringList list = u"a b c d e f g"_s.split(u' ');
            qsizetype drawn = 0;
            content::shuffle(list, [&] { return row.draws.value(drawn++); });
            QCOMPARE(list.join(QString()), row.order);
            QCOMPARE(drawn, 7);
        }
    }

    void theSystemsDrawsAreSpread() {
        QSet<std::uint32_t> different;
        std::uint32_t bitsSeenOn = 0;
        std::uint32_t bitsSeenOff = 0;
        for (int draw = 0; draw < 100; ++draw) {
            const std::uint32_t drawn = content::systemRandom();
            different << drawn;
            bitsSeenOn |= drawn;
            bitsSeenOff |= ~drawn;
        }
        // A fair source fails here once in 10^28 runs or less.
        QCOMPARE(bitsSeenOn, std::numeric_limits<std::uint32_t>::max());
        QCOMPARE(bitsSeenOff, std::numeric_limits<std::uint32_t>::max());
        QVERIFY(different.size() > 90);
    }

    void anotherProcessDrawsOtherNumbers() {
        const QByteArray draws = drawsOfAnotherProcess();
        QCOMPARE(draws.count('\n'), 4);
        QVERIFY(draws != drawsOfAnotherProcess());
    }
};

ZORVAN_TEST(tst_shuffle)
#include "tst_shuffle.moc"
