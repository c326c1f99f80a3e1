// The main() of a folder's test executable: runs every test class the folder's sources
// registered, in the order of their names, or only the one named first on the command line
// (the remaining arguments go to QTest as usual).
#include "support/merged/testclasses.h"

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

namespace {

std::multimap<std::string, testsupport::TestClassRun>& registry() {
    static std::multimap<std::string, testsupport::TestClassRun> classes;
    return classes;
}

} // namespace

int testsupport::registerTestClass(const char* name, TestClassRun run) {
    registry().emplace(name, run);
    return 0;
}

int main(int argc, char* argv[]) {
    TestApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    if (argc > 1 && registry().count(argv[1]) > 0) {
        const auto [first, last] = registry().equal_range(argv[1]);
        argv[1] = argv[0];
        int failed = 0;
        for (auto it = first; it != last; ++it)
            failed += it->second(argc - 1, argv + 1);
        return std::min(failed, 127);
    }
    int failed = 0;
    for (const auto& [name, run] : registry())
        failed += run(argc, argv);
    return std::min(failed, 127);
}
