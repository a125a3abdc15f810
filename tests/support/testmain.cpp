#include "support/testmain.h"

#include <QMap>
#include <QTemporaryDir>

#include "resources/resources.h"
#include "shell/controllertable.h"
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
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
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
