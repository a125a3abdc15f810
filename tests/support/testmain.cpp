#include "support/testmain.h"

#include <QMap>

#include "resources/resources.h"
#include "shell/controllertable.h"
#include "support/qtvariables.h"
#include "support/storehome.h"
#include "windowing/application.h"

namespace {

QMap<QString, testmain::Run> &classes() {
    static QMap<QString, testmain::Run> classes;
    return classes;
}

}  // namespace

bool testmain::add(const char *name, Run run) {
    classes().insert(QString::fromLatin1(name), run);
    return true;
}

int main(int argc, char **argv) {
    qtvariables::take();
    const StoreHome home;
    installResources();
    fillControllerTable();
    const platform::Application application(argc, argv);

    QStringList arguments = QCoreApplication::arguments();
    const testmain::Run run = classes().value(arguments.value(1));
    if (run == nullptr) {
        qCritical("Name one of these classes: %s",
                  qUtf8Printable(QStringList(classes().keys()).join(u' ')));
        return 2;
    }
    arguments.removeAt(1);
    return run(arguments);
}
