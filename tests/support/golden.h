#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QStringList>

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

}  // namespace golden
