#include <cstdint>
#include <limits>
#include <utility>

#include <QTest>

#include "content/shuffle.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList seven = u"a b c d e f g"_s.split(u' ');  // clazy:exclude=non-pod-global-static

/// Returns the draws one after another and counts them; returns 0 once they are used up.
class Draws {
 public:
    Draws() = default;
    explicit Draws(QList<std::uint32_t> draws) : draws_(std::move(draws)) {}

    QStringList shuffled(QStringList list) {
        content::shuffle(list, [this] { return draws_.value(drawn_++); });
        return list;
    }
    qsizetype drawn() const { return drawn_; }

 private:
    QList<std::uint32_t> draws_;
    qsizetype drawn_ = 0;
};

QStringList shuffledBySystem(QStringList list) {
    content::shuffle(list, content::systemRandom);
    return list;
}

QStringList numbersUpTo(int last) {
    QStringList numbers;
    for (int number = 1; number <= last; ++number) {
        numbers << QString::number(number);
    }
    return numbers;
}

}  // namespace

class tst_shuffle final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void zeroesLeaveTheOrder() { QCOMPARE(Draws().shuffled(seven), seven); }

    void theLastPlaceEachTimePutsTheLastEntryFirst() {
        const QStringList expected{u"g"_s, u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s};
        QCOMPARE(Draws({6, 5, 4, 3, 2, 1, 0}).shuffled(seven), expected);
    }

    void drawsCountFromTheStepsOwnPlace() {
        const QStringList expected{u"d"_s, u"c"_s, u"g"_s, u"e"_s, u"b"_s, u"a"_s, u"f"_s};
        QCOMPARE(Draws({3, 1, 4, 1, 5, 9, 2}).shuffled(seven), expected);
    }

    void theLargestDrawIsReducedByThePlainRemainder() {
        constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
        const QStringList expected{u"d"_s, u"e"_s, u"c"_s, u"g"_s, u"b"_s, u"a"_s, u"f"_s};
        QCOMPARE(Draws(QList<std::uint32_t>(7, largest)).shuffled(seven), expected);
    }

    void everyEntryTakesOneDraw_data() {
        QTest::addColumn<int>("entries");
        QTest::newRow("none") << 0;
        QTest::newRow("one") << 1;
        QTest::newRow("two") << 2;
        QTest::newRow("the whole bank") << 77;
    }

    void everyEntryTakesOneDraw() {
        QFETCH(int, entries);
        Draws draws;
        draws.shuffled(numbersUpTo(entries));
        QCOMPARE(draws.drawn(), entries);
    }

    void everyEntryIsKeptOnce() {
        QStringList all = numbersUpTo(77);
        QStringList shuffled = shuffledBySystem(all);
        all.sort();
        shuffled.sort();
        QCOMPARE(shuffled, all);
    }

    void theSystemsSourceGivesAnotherOrderEachTime() {
        const QStringList first = shuffledBySystem(numbersUpTo(77));
        QVERIFY(first != numbersUpTo(77));
        QVERIFY(shuffledBySystem(numbersUpTo(77)) != first);
    }
};

ZORVAN_TEST(tst_shuffle)
#include "tst_shuffle.moc"
