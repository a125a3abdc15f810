#include "windowing/controllers.h"

#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

namespace platform {

Table<std::function<std::shared_ptr<WindowController>()>> &controllers() {
    static Table<std::function<std::shared_ptr<WindowController>()>> table;
    return table;
}

void openWindow(const QString &name) {
    entryNamed(name, controllers(), u"controller"_s)()->showWindow();
}

}  // namespace platform
