#include "shell/controllertable.h"

#include "platform/controllers.h"
#include "shell/mainmenu.h"

using namespace Qt::StringLiterals;

void fillControllerTable() {
    platform::controllers()[u"MainMenu"_s] = [] {
        return platform::makeController<MainMenu>(u"MainMenu"_s);
    };
}
