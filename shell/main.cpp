#include <QTimer>

#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "system/guard.h"
#include "system/runtimefolder.h"
#include "windowing/application.h"

int main(int argc, char **argv) {
    installResources();
    fillControllerTable();
    platform::provideRuntimeFolder();
    platform::Application application(argc, argv);
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    QTimer::singleShot(0, &delegate, [&delegate] {
        platform::runGuarded([&delegate] { delegate.applicationDidFinishLaunching(); });
    });
    return platform::Application::exec();
}
