#include "shell/controllertable.h"

#include "shell/mainmenu.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

void fillControllerTable() {
    platform::controllers()[u"MainMenu"_s] = [] {
        return platform::makeController<MainMenu>(u"MainMenu"_s);
    };
}
