#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QTest>

/// The questions as they have to be, read from the test data.
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

/// All of them, by number from 1 on.
inline const QList<Question> &questions() {
    static const QList<Question> all = readQuestions();
    return all;
}

inline const Question &question(int number) {
    return questions().at(number - 1);
}

/// The one question of that text; ends the test program where there is none.
inline const Question &questionReading(const QString &text) {
    for (const Question &question : questions()) {
        if (question.text == text) {
            return question;
        }
    }
    qFatal("No question reads \"%s\"", qUtf8Printable(text));
}

/// A test's rows: each quiz by its id, with its name, the first and the last of its questions, and
/// how many of them are asked.
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
