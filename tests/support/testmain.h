#pragma once

#include <QTemporaryDir>
#include <QTest>

#include "resources/resources.h"
#include "shell/controllertable.h"
#include "windowing/application.h"

/// The main function of a test program: the real application, with the real layouts and a
/// configuration home of its own.
#define ZORVAN_TEST_MAIN(TestClass)                       \
    int main(int argc, char **argv) {                     \
        const QTemporaryDir home;                         \
        qputenv("XDG_CONFIG_HOME", home.path().toUtf8()); \
        installResources();                               \
        fillControllerTable();                            \
        platform::Application application(argc, argv);    \
        TestClass test;                                   \
        return QTest::qExec(&test, argc, argv);           \
    }
