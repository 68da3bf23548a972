#include "app/modOptions.h"

#include "app/Session.h"

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
