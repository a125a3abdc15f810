#include <cstdlib>

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
    // GTK, from which Qt takes the settings of some desktops, would show screen readers a second,
    // empty program.
    qputenv("NO_AT_BRIDGE", "1");
    platform::Application application(argc, argv);
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    QTimer::singleShot(0, &delegate, [&delegate] {
        platform::runGuarded([&delegate] { delegate.applicationDidFinishLaunching(); });
    });
    const int status = platform::Application::exec();
    if (QGuiApplication::platformName().startsWith(u"wayland")) {
        // While Qt leaves the compositor, its threads now and then wait for each other for ever.
        // Nothing is left to be stored.
        std::_Exit(status);
    }
    return status;
}
