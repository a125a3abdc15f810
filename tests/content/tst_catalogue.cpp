#include <algorithm>

#include <QTest>

#include "content/catalogue.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_catalogue final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuizHasItsNameNumbersAndCount_data();
    void everyQuizHasItsNameNumbersAndCount();
    void topicQuizzesPartTheBankAmongThem();
};

void tst_catalogue::everyQuizHasItsNameNumbersAndCount_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("questionCount");
    QTest::newRow("1") << u"Terminology"_s << 1 << 14 << 14;
    QTest::newRow("2") << u"Variables"_s << 15 << 33 << 19;
    QTest::newRow("3") << u"Methods"_s << 34 << 43 << 10;
    QTest::newRow("4") << u"Functions"_s << 44 << 54 << 11;
    QTest::newRow("5") << u"Structure"_s << 55 << 61 << 7;
    QTest::newRow("6") << u"Syntax"_s << 62 << 77 << 16;
    QTest::newRow("7") << u"Main Test"_s << 1 << 77 << 30;
}

void tst_catalogue::everyQuizHasItsNameNumbersAndCount() {
    QFETCH(QString, name);
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, questionCount);
    const QString id = QString::fromLatin1(QTest::currentDataTag());
    const auto quiz = std::find_if(content::quizzes.begin(), content::quizzes.end(),
                                   [&](const content::Quiz &each) { return each.id == id; });
    QVERIFY(quiz != content::quizzes.end());
    QCOMPARE(quiz->name, name);
    QCOMPARE(quiz->questionCount, questionCount);

    QStringList ascending;
    for (int number = first; number <= last; ++number) {
        ascending << QString::number(number);
    }
    QCOMPARE(quiz->questionNumbers(), ascending);
}

void tst_catalogue::topicQuizzesPartTheBankAmongThem() {
    QStringList drawn;
    for (const content::Quiz &quiz : content::quizzes) {
        if (quiz.id != u"7") {
            drawn << quiz.questionNumbers();
        }
    }
    QCOMPARE(drawn.size(), 77);
    QCOMPARE(drawn.removeDuplicates(), 0);
}

ZORVAN_TEST_MAIN(tst_catalogue)
#include "tst_catalogue.moc"
