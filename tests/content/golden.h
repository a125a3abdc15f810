#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QStringList>

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
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).array()) {
        QStringList answers;
        for (const QJsonValue &answer : value[u"answers"].toArray()) {
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

}  // namespace golden
