#include "TestClasses.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    int failed = 0;
    for (const auto& make :
         {sqlTest, connectionTest, odbcDriverTest, odbcServerTest, sqlServerTest, securityFileTest})
        failed += QTest::qExec(make().get(), argc, argv);
    return failed;
}
