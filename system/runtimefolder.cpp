#include "system/runtimefolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace platform {

void provideRuntimeFolder() {
#ifdef Q_OS_LINUX
    constexpr const char *variable = "XDG_RUNTIME_DIR";
    if (qEnvironmentVariableIsSet(variable)) {
        return;
    }
    const QString folder = u"%1/runtime-%2"_s.arg(QDir::tempPath()).arg(getuid());
    constexpr QFile::Permissions ownersAlone =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QDir().mkdir(folder, ownersAlone);
    // If another user made the folder first, Qt looks for one itself.
    const QFileInfo made(folder);
    if (made.isDir() && !made.isSymLink() && made.ownerId() == getuid()) {
        qputenv(variable, QFile::encodeName(folder));
    }
#endif
}

}  // namespace platform
