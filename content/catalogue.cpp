#include "content/catalogue.h"

namespace content {

QStringList Quiz::questionNumbers() const {
    QStringList numbers;
    for (int number = firstQuestion; number <= lastQuestion; ++number) {
        numbers << QString::number(number);
    }
    return numbers;
}

}  // namespace content
