#include <QTest>

#include "content/catalogue.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_catalogue final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuizHasItsNameNumbersAndCount() {
        const QList<content::Quiz> expected{
            {u"1", u"Terminology", 1, 14, 14}, {u"2", u"Variables", 15, 33, 19},
            {u"3", u"Methods", 34, 43, 10},    {u"4", u"Functions", 44, 54, 11},
            {u"5", u"Structure", 55, 61, 7},   {u"6", u"Syntax", 62, 77, 16},
            {u"7", u"Main Test", 1, 77, 30},
        };
        for (const content::Quiz &quiz : expected) {
            const content::Quiz *found = content::quizWithId(quiz.id);
            QVERIFY2(found != nullptr, qUtf8Printable(quiz.id.toString()));
            QCOMPARE(found->id, quiz.id);
            QCOMPARE(found->name, quiz.name);
            QCOMPARE(found->firstQuestion, quiz.firstQuestion);
            QCOMPARE(found->lastQuestion, quiz.lastQuestion);
            QCOMPARE(found->questionCount, quiz.questionCount);
        }
    }

    void questionNumbersAscend() {
        const QStringList numbers{u"55"_s, u"56"_s, u"57"_s, u"58"_s, u"59"_s, u"60"_s, u"61"_s};
        QCOMPARE(content::quizzes.at(4).questionNumbers(), numbers);
    }

    void noQuizHasAnotherId() {
        for (const QString &id : {QString(), u""_s, u"0"_s, u"8"_s, u"01"_s, u"1 "_s}) {
            QVERIFY2(content::quizWithId(id) == nullptr, qUtf8Printable(id));
        }
    }
};

ZORVAN_TEST(tst_catalogue)
#include "tst_catalogue.moc"
