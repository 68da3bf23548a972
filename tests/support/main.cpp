#include "support/TestClass.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

std::vector<std::function<std::unique_ptr<QObject>()>>& testClasses() {
    static std::vector<std::function<std::unique_ptr<QObject>()>> classes;
    return classes;
}

int main(int argc, char* argv[]) {
    // A desktop with a decimal comma and two-digit years: neither may reach a statement.
    qputenv("LC_ALL", "de_DE.UTF-8");
    // A zone with clock changes: stored times know none, so none of their hours may be skipped.
    if (!qEnvironmentVariableIsSet("TZ")) qputenv("TZ", "GMT0BST,M3.5.0/1,M10.5.0");
    const QTemporaryDir ownFolder; // of the tester, in place of his real one
    qputenv("XDG_DATA_HOME", ownFolder.path().toUtf8());
    QApplication application(argc, argv);
    int failures = 0;
    for (const auto& make : testClasses()) failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
