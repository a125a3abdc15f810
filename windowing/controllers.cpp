#include "windowing/controllers.h"

#include "system/exception.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

namespace platform {

ControllerTable &controllers() {
    static ControllerTable table;
    return table;
}

void openWindow(const QString &name) {
    const auto found = controllers().find(name);
    if (found == controllers().end()) {
        throw Exception(u"No controller \"%1\""_s.arg(name));
    }
    found->second()->showWindow();
}

}  // namespace platform
