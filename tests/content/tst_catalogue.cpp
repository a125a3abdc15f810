#include <QTest>

#include "content/catalogue.h"
#include "support/golden.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_catalogue final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuizHasItsNameNumbersAndCount_data() { golden::quizRows(); }

    void everyQuizHasItsNameNumbersAndCount() {
        QFETCH(QString, name);
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(int, questionCount);
        const QString id = QString::fromLatin1(QTest::currentDataTag());
        const content::Quiz *quiz = content::quizWithId(id);
        QVERIFY(quiz != nullptr);
        QCOMPARE(quiz->id, id);
        QCOMPARE(quiz->name, name);
        QCOMPARE(quiz->questionCount, questionCount);

        QStringList ascending;
        for (int number = first; number <= last; ++number) {
            ascending << QString::number(number);
        }
        QCOMPARE(quiz->questionNumbers(), ascending);
    }

    void noQuizHasAnotherId() {
        for (const QString &id : {QString(), u""_s, u"0"_s, u"8"_s, u"01"_s, u"1 "_s}) {
            QVERIFY2(content::quizWithId(id) == nullptr, qUtf8Printable(id));
        }
    }

    void topicQuizzesPartTheBankAmongThem() {
        QStringList drawn;
        for (const content::Quiz &quiz : content::quizzes) {
            if (quiz.id != u"7") {
                drawn << quiz.questionNumbers();
            }
        }
        QCOMPARE(drawn.size(), 77);
        QCOMPARE(drawn.removeDuplicates(), 0);
    }
};

ZORVAN_TEST(tst_catalogue)
#include "tst_catalogue.moc"
