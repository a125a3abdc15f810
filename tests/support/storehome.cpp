#include "support/storehome.h"

#ifdef Q_OS_WIN
#include <QUuid>
#include <qt_windows.h>
#endif

#ifdef Q_OS_WIN

namespace {

constexpr const char *variable = "ZORVAN_TEST_REGISTRY";

/// What is asked of the user's part of the registry is asked of that key.
void redirectTo(const QString &key) {
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, qUtf16Printable(key), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &opened, nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, opened) != ERROR_SUCCESS) {
        qFatal("No registry of its own for the test");
    }
    RegCloseKey(opened);
}

}  // namespace

StoreHome::StoreHome()
    : key_(QStringLiteral("Software\\Zorvan tests\\%1").arg(QUuid::createUuid().toString())) {
    redirectTo(key_);
    qputenv(variable, key_.toUtf8());
}

StoreHome::~StoreHome() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, qUtf16Printable(key_));
}

void StoreHome::join() {
    redirectTo(qEnvironmentVariable(variable));
}

#else

StoreHome::StoreHome() {
    qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8());
}

StoreHome::~StoreHome() = default;

void StoreHome::join() {}

#endif
