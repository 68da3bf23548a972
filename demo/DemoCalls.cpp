#include "demo/DemoCalls.h"

#include "demo/BulkInsert.h"
#include "demo/DemoCentres.h"

#include <QRandomGenerator>

namespace demoCalls {

namespace {

constexpr quint32 Seed = 20080401;

struct Call {
    int billId;
    DemoNumber from;
    QString to;
    QDate date;
    QString time; ///< HHMM
    int seconds;
    double cost; ///< pounds
    int distanceBand;
};

/// Day calls were 8 to 18 o'clock before April 2008, 7 to 19 o'clock since.
QString timeBand(const Call& call, int dayBegins, int dayEnds) {
    if (call.date.dayOfWeek() >= 6) return "W";
    const int time = call.time.toInt();
    return time < dayBegins || time > dayEnds ? "C" : "D";
}

class CallMaker {
public:
    CallMaker(const DemoProject& project, const QDate& today)
        : m_random(Seed + quint32(project.billType)),
          m_numbers(demoCentres::numbers(project)),
          m_bills(demoProjects::bills(today)) {}

    Call next() {
        static const QList<QDate> dates{{2008, 3, 31}, {2008, 4, 1}, {2008, 4, 5}, {2008, 3, 30}};
        static const QStringList times{"0659", "0700", "1900", "1901"};
        const int index = m_made++;
        const bool boundary = index < dates.size() * times.size();
        const DemoBill& bill = m_bills.at(boundary ? 0 : below(int(m_bills.size())));
        const int seconds = 3 + below(900) + (below(20) == 0 ? 3600 : 0);
        const int band = 1 + below(5);
        return {bill.id,
                m_numbers.at(below(int(m_numbers.size()))),
                calledNumber(),
                boundary ? dates.at(index / times.size())
                         : bill.start.addDays(below(int(bill.start.daysTo(bill.end)) + 1)),
                boundary ? times.at(index % times.size()) : QTime(below(24), below(60)).toString("HHmm"),
                seconds,
                seconds * band / 2000.0,
                band};
    }

    QString callClass() {
        static const QStringList classes{"VOICE", "SMS", "GPRS", "ROAM", ""};
        return classes.at(below(int(classes.size())));
    }

private:
    int below(int limit) { return int(m_random.bounded(limit)); }
    QString calledNumber() {
        static const QStringList prefixes{"0207946", "0770090", "0800111", "0033142", "0113496", "0901879"};
        return prefixes.at(below(int(prefixes.size()))) + QString::number(1000 + below(300));
    }

    QRandomGenerator m_random;
    QList<DemoNumber> m_numbers;
    QList<DemoBill> m_bills;
    int m_made = 0;
};

Sql callColumns() {
    return sql("[RecID] [int] IDENTITY (1, 1) NOT NULL PRIMARY KEY, [BillID] [int] NOT NULL, "
               "[CallingNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL, "
               "[Extension] [varchar] (10) COLLATE Latin1_General_CI_AS NULL, "
               "[CalledNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL, "
               "[Date] [datetime] NULL, [CallTime] [varchar] (4) COLLATE Latin1_General_CI_AS NULL, "
               "[Duration] [int] NULL, [OrigCost] [money] NULL, [NewCost] [money] NULL, [DistanceBand] "
               "[smallint] NULL, "
               "[TimeBand] [varchar] (2) COLLATE Latin1_General_CI_AS NULL, "
               "[CostCentre1] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
               "[CostCentre2] [varchar] (30) COLLATE Latin1_General_CI_AS NULL");
}

Sql laterColumns() {
    return sql(", [TimebandCopy] [varchar] (2) COLLATE Latin1_General_CI_AS NULL, "
               "[Timeband0719] [varchar] (2) COLLATE Latin1_General_CI_AS NULL, "
               "[Timeband0818] [varchar] (2) COLLATE Latin1_General_CI_AS NULL");
}

/// Only the first project has been brought up to date by the analysis product.
bool isUpdated(const DemoProject& project) {
    return project.is(DemoProject::Wispera);
}

} // namespace

void createTables(Connection& connection, const DemoProject& project) {
    const Name database(project.database);
    const Sql later = project.is(DemoProject::Older) ? Sql() : laterColumns();
    connection.execute(sql("CREATE TABLE {}.dbo.TblCallRecords ({}{})", database, callColumns(), later));
    connection.execute(sql("CREATE TABLE {}.dbo.TblMobCalls ({}, "
                           "[CallClass] [varchar] (10) COLLATE Latin1_General_CI_AS NULL{})",
                           database, callColumns(), later));
    connection.execute(
        sql("CREATE TABLE {}.dbo.TblMiscBill ([RecID] [int] IDENTITY (1, 1) NOT NULL PRIMARY KEY, "
            "[BillID] [int] NOT NULL, [Description] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, "
            "[DateStart] [datetime] NULL, [CallTime] [varchar] (4) COLLATE Latin1_General_CI_AS NULL, "
            "[Amount] [money] NULL, [TimeBand] [varchar] (2) COLLATE Latin1_General_CI_AS NULL)",
            database));
}

void fill(Connection& connection, const DemoProject& project, int count, const QDate& today) {
    const Name database(project.database);
    const Sql columns =
        sql("BillID, CallingNo, Extension, CalledNo, [Date], CallTime, Duration, OrigCost, NewCost, "
            "DistanceBand, TimeBand, CostCentre1, CostCentre2");
    const Sql later =
        project.is(DemoProject::Older) ? Sql() : sql(", TimebandCopy, Timeband0719, Timeband0818");
    BulkInsert lines(connection,
                     sql("INSERT INTO {}.dbo.TblCallRecords ({}{}) VALUES", database, columns, later));
    BulkInsert mobiles(connection,
                       sql("INSERT INTO {}.dbo.TblMobCalls ({}, CallClass) VALUES", database, columns));
    BulkInsert others(connection,
                      sql("INSERT INTO {}.dbo.TblMiscBill (BillID, Description, DateStart, CallTime, "
                          "Amount, TimeBand) VALUES",
                          database));

    CallMaker maker(project, today);
    for (int i = 0; i < count; ++i) {
        const Call call = maker.next();
        const QString former = timeBand(call, 800, 1800);
        const QString present = timeBand(call, 700, 1900);
        const bool updated = isUpdated(project);
        const QString band = updated && call.date >= QDate(2008, 4, 1) ? present : former;
        const auto newCost = i % 3 ? std::optional(call.cost * 0.9) : std::nullopt;
        const Sql values = Sql::join(
            {Sql::value(call.billId), Sql::value(call.from.telNo), Sql::value(call.from.extension),
             Sql::value(call.to), Sql::value(call.date), Sql::value(call.time), Sql::value(call.seconds),
             Sql::value(call.cost), Sql::value(newCost), Sql::value(call.distanceBand), Sql::value(band),
             Sql::value(call.from.centres[0]), Sql::value(call.from.centres[1])},
            sql(", "));
        if (i % 10 == 9) {
            others.add(call.billId, QString("Operator call"), call.date, call.time, call.cost,
                       i % 20 == 9 ? std::nullopt : std::optional(band));
        }
        if (i >= 16 && i % 10 >= 7)
            mobiles.add(values, maker.callClass());
        else if (project.is(DemoProject::Older))
            lines.add(values);
        else if (updated)
            lines.add(values, band, present, former);
        else
            lines.add(values, Sql::null(), Sql::null(), Sql::null());
    }
    lines.finish();
    mobiles.finish();
    others.finish();
}

} // namespace demoCalls
