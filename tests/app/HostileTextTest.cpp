#include "addresses/frmEmailSettings.h"
#include "fuzz/entries.h"
#include "schedules/frmMainScreen.h"
#include "schedules/frmSchedule.h"
#include "schedules/frmScheduleView.h"
#include "support/Files.h"
#include "support/Office.h"
#include "support/TestClass.h"
#include "templates/frmManageTemplates.h"
#include "templates/frmTemplate.h"
#include "templates/frmTransfer.h"
#include "ui/PlainLabels.h"
#include "ui/uctListView.h"

#include <QDirIterator>
#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>

namespace {

/// No label of the screen, and no tooltip of its lists, takes a stored text for markup. `texts` are the
/// labels and tooltips at least that hold one.
template <class Screen, class... Arguments>
void checkScreen(Office& office, int texts, Arguments... arguments) {
    Screen screen(office.program.context);
    if constexpr (requires { screen.Setup(arguments...); }) QCOMPARE(screen.Setup(arguments...), 0);
    screen.show();
    for (auto* list : screen.template findChildren<uctListView*>()) {
        const QModelIndex first = list->model()->index(0, 0);
        if (!first.isValid()) continue;
        const QPoint place = list->visualRect(first).center();
        QHelpEvent hovers(QEvent::ToolTip, place, list->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list->viewport(), &hovers);
    }
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* label = qobject_cast<QLabel*>(widget);
        if (!label || !Qt::mightBeRichText(label->text())) continue;
        --texts;
        QVERIFY2(label->textFormat() == Qt::PlainText,
                 qPrintable(label->objectName() + ": " + label->text()));
    }
    QVERIFY2(texts <= 0, screen.metaObject()->className());
    QToolTip::hideText();
}

class HostileTextTest : public QObject {
    Q_OBJECT

private slots:
    void storedTextsAreNoMarkup() {
        keepLabelsPlain(*qApp);
        Office office;
        const auto poison = [&](const char* table, const char* column) {
            const Name name{QString(column)};
            office.db().execute(
                sql("UPDATE NorvaScheduler.dbo.{} SET {} = '<img src=\"/dev/zero\"> <a href=x>&amp;'"
                    " + RIGHT('000' + CAST({} AS varchar(10)), 3)",
                    Name(QString(table)), name,
                    Name(QString(table) == "tblSchedule" ? "ScheduleID" : "TemplateID")));
        };
        poison("tblTemplate", "Title");
        poison("tblTemplate_Report", "ReportCaption");
        poison("tblSchedule", "ScheduleTitle");
        office.db().execute(sql("UPDATE NorvaScheduler.dbo.tblLogs SET ErrorDescription = '<b>&amp;</b>'"));
        const auto idOf = [&](const Sql& what) { return office.db().scalar(what).toInt(); };
        const int pending =
            idOf(sql("SELECT MIN(ScheduleID) FROM tblSchedule WHERE Status = 0 AND TemplateID IN "
                     "(SELECT TemplateID FROM tblTemplate)"));
        const int done = idOf(sql("SELECT MIN(ScheduleID) FROM tblSchedule WHERE Status = 4"));
        const int ordinary = idOf(sql("SELECT MIN(TemplateID) FROM tblTemplate_Report"));
        const int centres = idOf(sql("SELECT MIN(TemplateID) FROM tblTemplate WHERE TemplateType <> 0"));
        office.db().execute(sql("UPDATE NorvaScheduler.dbo.tblSchedule SET ProjectRef = "
                                "N'<img src=\"/dev/zero\">' WHERE ScheduleID <> {}",
                                pending));
        checkScreen<frmMainScreen>(office, 1);
        checkScreen<frmSchedule>(office, 0, pending);
        checkScreen<frmScheduleView>(office, 3, done);
        checkScreen<frmManageTemplates>(office, 1);
        checkScreen<frmTemplate>(office, 0, ordinary);
        checkScreen<frmTransfer>(office, 0, centres);
        checkScreen<frmEmailSettings>(office, 0);
    }

    /// The seeds of the fuzz targets, with every input that once did harm.
    void filesOfAnybody_data() {
        QTest::addColumn<QString>("path");
        for (QDirIterator file(FUZZ_CORPUS, QDir::Files, QDirIterator::Subdirectories); file.hasNext();) {
            const QString path = file.next();
            QTest::newRow(qPrintable(path.section('/', -2))) << path;
        }
    }

    void filesOfAnybody() {
        QFETCH(QString, path);
        static const QHash<QString, void (*)(const QByteArray&)> entries{{"sql", fuzz::sql},
                                                                         {"numbers", fuzz::numbers},
                                                                         {"addresses", fuzz::addresses},
                                                                         {"templates", fuzz::templates},
                                                                         {"security", fuzz::security}};
        QVERIFY_THROWS_NO_EXCEPTION(entries[path.section('/', -2, -2)](readFile(path)));
    }
};

const AnnounceTest<HostileTextTest> announced;

} // namespace

#include "HostileTextTest.moc"
