#include <QCoreApplication>

int testCatalogue(int argc, char** argv);
int testParameters(int argc, char** argv);
int testReports(int argc, char** argv);
int testTemplate(int argc, char** argv);

int main(int argc, char** argv) {
    // A desktop with a decimal comma and two-digit years: neither may reach a statement.
    qputenv("LC_ALL", "de_DE.UTF-8");
    const QCoreApplication application(argc, argv);
    int failures = 0;
    for (const auto test : {testCatalogue, testParameters, testReports, testTemplate})
        failures += test(argc, argv);
    return failures;
}
