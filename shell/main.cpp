#include <QTimer>

#include "platform/application.h"
#include "platform/eventloop.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"

int main(int argc, char **argv) {
    installResources();
    fillControllerTable();
    platform::provideRuntimeFolder();
    platform::Application application(argc, argv);
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    QTimer::singleShot(0, &delegate, [&delegate] {
        platform::callFromEventLoop([&delegate] { delegate.applicationDidFinishLaunching(); });
    });
    return platform::Application::exec();
}
