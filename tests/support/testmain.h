#pragma once

#include <QTest>

/// Test classes that are linked into one program. Its main() runs the class that the first argument
/// names, with the real application, the real layouts and a configuration home of its own; Qt Test
/// reads the other arguments.
namespace testmain {

using Run = int (*)(const QStringList &arguments);

/// Makes a class known to main(). Returns true.
bool add(const char *name, Run run);

}  // namespace testmain

#define ZORVAN_TEST(TestClass)                                       \
    [[maybe_unused]] static const bool isKnown_##TestClass =         \
        testmain::add(#TestClass, [](const QStringList &arguments) { \
            TestClass test;                                          \
            return QTest::qExec(&test, arguments);                   \
        });
