#include "Screens.h"
#include "support/TestClass.h"
#include "templates/frmManageTemplates.h"
#include "templates/frmTemplate.h"
#include "ui/Palette.h"
#include <QDir>
#include <QScreen>
class Shots : public QObject {
    Q_OBJECT
    static void shot(QWidget& w, const QString& name) {
        w.resize(w.size().boundedTo(QSize(1366, 728)));
        w.show();
        QTest::qWait(900);
        w.grab().save("/tmp/shots-templ/" + qEnvironmentVariable("SHOT") + name + ".png");
    }
private slots:
    void all() {
        QDir().mkpath("/tmp/shots-templ");
        Palette::apply(*qApp,
                       qEnvironmentVariable("SHOT").startsWith("dark") ? Palette::Dark : Palette::Light);
        Palette::applyFont(*qApp, "Calibri");
        TemplateProgram p;
        p.addSchedule(p.idOf("Weekly call review"), 0, "1899-Dec-30 00:00:00");
        {
            frmManageTemplates s(p.context);
            s.Setup();
            shot(s, "manager");
        }
        const int id = p.scalar(sql("SELECT TOP 1 TemplateID FROM NorvaScheduler.dbo.tblTemplate_Report "
                                    "GROUP BY TemplateID ORDER BY COUNT(*) DESC"));
        p.addReport(id, 2, 999);
        p.addReport(id, 5, 195, false);
        {
            frmTemplate s(p.context);
            s.Setup(id);
            shot(s, "template");
        }
        {
            frmReport s(p.context);
            s.Setup(1, nullptr, -1);
            shot(s, "report-new");
        }
        clsReport r(p.session.project);
        r.setReportType(2);
        r.setReportSubType(142);
        r.setOutputCSV(true);
        r.Parameters()->setCallsToNumber("02079461042, 08001111000");
        r.Parameters()->setCostRangeMinimum("0.50");
        r.Parameters()->setDistanceBandSelected(3, false);
        {
            frmReport s(p.context);
            s.Setup(1, &r, -1);
            shot(s, "report");
        }
        {
            frmSelectReports s(p.context);
            s.Setup(2, 142);
            shot(s, "chooser");
        }
    }
};
static const AnnounceTest<Shots> announced;
#include "Shots.moc"
