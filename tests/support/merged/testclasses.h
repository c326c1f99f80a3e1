#pragma once

// Read before every test source of a folder whose test classes share one executable: the
// QTEST_*MAIN macros then register their class with the folder's main() (main.cpp)
// instead of writing a main() of their own.

#include <QtTest/QtTest>

namespace testsupport {

using TestClassRun = int (*)(int argc, char** argv);

// Returns a value only so that a namespace-scope constant can call it.
int registerTestClass(const char* name, TestClassRun run);

} // namespace testsupport

#undef QTEST_MAIN
#undef QTEST_GUILESS_MAIN
#undef QTEST_APPLESS_MAIN

#define MQ27_REGISTER_TEST_CLASS(TestObject)                                                       \
    namespace {                                                                                    \
    int runTestClass##TestObject(int argc, char** argv) {                                          \
        TestObject tc;                                                                             \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&tc, argc, argv);                                                      \
    }                                                                                              \
    [[maybe_unused]] const int registered##TestObject =                                            \
        testsupport::registerTestClass(#TestObject, runTestClass##TestObject);                     \
    }

#define QTEST_MAIN(TestObject) MQ27_REGISTER_TEST_CLASS(TestObject)
#define QTEST_GUILESS_MAIN(TestObject) MQ27_REGISTER_TEST_CLASS(TestObject)
#define QTEST_APPLESS_MAIN(TestObject) MQ27_REGISTER_TEST_CLASS(TestObject)
