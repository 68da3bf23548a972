#include "base/modOptions.h"

#include "base/Session.h"
#include "db/ColumnText.h"

namespace {

QString defaultOutputs(const GlobalOptions& options) {
    QStringList outputs;
    if (options.excel) outputs << "Excel";
    if (options.csv) outputs << "CSV";
    return outputs.isEmpty() ? "None" : outputs.join(", ");
}

} // namespace

void ReadGlobalOptions(Session& session) {
    const RecordSet rows = session.db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblOptions"));
    session.options = {};
    if (!rows.isEmpty()) {
        const Row row = rows.row(0);
        session.options = {row.text("OutputPath"), row.flag("Excel"), row.flag("CSV")};
    }
    session.log.write("Reading Global Options");
    session.log.write("Output Path        : " + session.options.outputPath);
    session.log.write("Default Output     : " + defaultOutputs(session.options));
}

void SaveGlobalOptions(Session& session, const GlobalOptions& options) {
    requireFits("output path", options.outputPath, 260, CodePage::Unicode);
    Transaction transaction(session.db());
    session.db().execute(
        sql("IF EXISTS (SELECT * FROM NorvaScheduler.dbo.tblOptions WITH (UPDLOCK, HOLDLOCK)) "
            "UPDATE NorvaScheduler.dbo.tblOptions SET OutputPath = {}, CSV = {}, Excel = {} "
            "ELSE INSERT INTO NorvaScheduler.dbo.tblOptions (OutputPath, CSV, Excel) VALUES ({}, {}, {})",
            options.outputPath, options.csv, options.excel, options.outputPath, options.csv, options.excel));
    transaction.commit();
    ReadGlobalOptions(session);
}

bool mayChangeOptions(const Session& session) {
    return session.userLevel == UserLevel::Administrator;
}
