#include "content/catalogue.h"

namespace content {

QStringList Quiz::questionNumbers() const {
    QStringList numbers;
    for (int number = firstQuestion; number <= lastQuestion; ++number) {
        numbers << QString::number(number);
    }
    return numbers;
}

const Quiz *quizWithId(QStringView id) {
    for (const Quiz &quiz : quizzes) {
        if (quiz.id == id) {
            return &quiz;
        }
    }
    return nullptr;
}

}  // namespace content
