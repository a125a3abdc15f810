#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QTest>

/// The expected questions, read from the test data.
namespace golden {

struct Question {
    int number;
    QString text;
    QStringList answers;
    int right;
    bool thirdButtonOff;
};

inline QList<Question> readQuestions() {
    QFile file(QStringLiteral(TEST_DATA "/questions.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("No golden questions");
    }
    QList<Question> questions;
    const QJsonArray values = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto &value : values) {
        const QJsonArray inOrder = value[u"answers"].toArray();
        QStringList answers;
        for (const auto &answer : inOrder) {
            answers << answer.toString();
        }
        questions.append({value[u"number"].toInt(), value[u"text"].toString(), answers,
                          value[u"right"].toInt(), value[u"thirdButtonOff"].toBool()});
    }
    return questions;
}

/// All questions, ordered by number; the first is number 1.
inline const QList<Question> &questions() {
    static const QList<Question> all = readQuestions();
    return all;
}

inline const Question &question(int number) {
    return questions().at(number - 1);
}

/// The question with that text; ends the test program if there is none.
inline const Question &questionReading(const QString &text) {
    for (const Question &question : questions()) {
        if (question.text == text) {
            return question;
        }
    }
    qFatal("No question reads \"%s\"", qUtf8Printable(text));
}

/// Adds a test row for each quiz, named by its id: the quiz's name, its first and its last
/// question, and how many of its questions are asked.
inline void quizRows() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("questionCount");
    QTest::newRow("1") << QStringLiteral("Terminology") << 1 << 14 << 14;
    QTest::newRow("2") << QStringLiteral("Variables") << 15 << 33 << 19;
    QTest::newRow("3") << QStringLiteral("Methods") << 34 << 43 << 10;
    QTest::newRow("4") << QStringLiteral("Functions") << 44 << 54 << 11;
    QTest::newRow("5") << QStringLiteral("Structure") << 55 << 61 << 7;
    QTest::newRow("6") << QStringLiteral("Syntax") << 62 << 77 << 16;
    QTest::newRow("7") << QStringLiteral("Main Test") << 1 << 77 << 30;
}

}  // namespace golden
