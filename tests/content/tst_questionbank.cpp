#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include "content/questionbank.h"
#include "support/testmain.h"

class tst_questionbank final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuestionIsTheGoldenOne();
};

void tst_questionbank::everyQuestionIsTheGoldenOne() {
    QFile file(QStringLiteral(TEST_DATA "/questions.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonArray golden = QJsonDocument::fromJson(file.readAll()).array();
    QCOMPARE(golden.size(), 77);
    for (const QJsonValue &value : golden) {
        const QJsonObject expected = value.toObject();
        const content::Question &question = content::question(expected[u"number"].toInt());
        QCOMPARE(question.number, expected[u"number"].toInt());
        QCOMPARE(question.text.toString(), expected[u"text"].toString());
        for (int answer = 0; answer < 3; ++answer) {
            QCOMPARE(question.answers.at(static_cast<std::size_t>(answer)).toString(),
                     expected[u"answers"].toArray().at(answer).toString());
        }
        QCOMPARE(question.rightAnswer, expected[u"right"].toInt());
        QCOMPARE(question.thirdButton == content::ThirdButton::Off,
                 expected[u"thirdButtonOff"].toBool());
    }
}

ZORVAN_TEST_MAIN(tst_questionbank)
#include "tst_questionbank.moc"
