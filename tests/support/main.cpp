#include "support/TestClass.h"

#include <QApplication>
#include <QTest>

std::vector<std::function<std::unique_ptr<QObject>()>>& testClasses() {
    static std::vector<std::function<std::unique_ptr<QObject>()>> classes;
    return classes;
}

int main(int argc, char* argv[]) {
    // A desktop with a decimal comma and two-digit years: neither may reach a statement.
    qputenv("LC_ALL", "de_DE.UTF-8");
    QApplication application(argc, argv);
    int failures = 0;
    for (const auto& make : testClasses()) failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
