#pragma once

#include "support/TestEnvironment.h"

#include <QApplication>
#include <QCoreApplication>
#include <QTest>

// main() for a QtTest executable with the time zone, locale and widget style pinned, so results
// do not depend on the machine that runs them.
#define TOLVANE_TEST_MAIN(TestObject)                                                                                  \
    int main(int argc, char* argv[])                                                                                   \
    {                                                                                                                  \
        TestEnvironment::pinBeforeApplication();                                                                       \
        QCoreApplication application(argc, argv);                                                                      \
        TestEnvironment::pinAfterApplication();                                                                        \
        TestObject test;                                                                                               \
        return QTest::qExec(&test, TestEnvironment::reportApartFromStandardOutput(argc, argv));                        \
    }

// The same for tests that show widgets.
#define TOLVANE_GUI_TEST_MAIN(TestObject)                                                                              \
    int main(int argc, char* argv[])                                                                                   \
    {                                                                                                                  \
        TestEnvironment::pinBeforeApplication();                                                                       \
        QApplication application(argc, argv);                                                                          \
        TestEnvironment::pinAfterApplication();                                                                        \
        TestEnvironment::pinWidgetStyle();                                                                             \
        TestObject test;                                                                                               \
        return QTest::qExec(&test, TestEnvironment::reportApartFromStandardOutput(argc, argv));                        \
    }
