#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>

class Connection;

/// The demo's templates as they were stored.
class DemoTemplates {
public:
    struct Report {
        int id;
        QString name;
    };

    void add(const QString& title, int id, const QString& project, const QList<Report>& reports);
    /// The key of the template with this title.
    int value(const QString& title) const { return m_ids.value(title); }
    int lastId() const { return m_lastId; }
    /// The database that the template was made for; the first project's for one that is not there.
    QString projectOf(int templateId) const;
    QList<Report> reports(const QString& title) const { return m_reports.value(title); }

private:
    QHash<QString, int> m_ids;
    QHash<int, QString> m_projects;
    QHash<QString, QList<Report>> m_reports;
    int m_lastId = 0;
};

namespace demoTemplates {

inline const QString ManagementPack = "Monthly Management Pack";
inline const QString InvoiceOnly = "Invoice only";
inline const QString WeeklyReview = "Weekly call review";
inline const QString Hotspots = "Hotspot use";
inline const QString LinkvaleCheck = "Linkvale invoice check";
inline const QString CircuitAudit = "Circuit audit \"A\" sites";
inline const QString IdcUsage = "IDC usage - O'Dowd";
inline const QString Dormant = "Figures of 2001";
inline const QString CentrePacks = "Pack for every department";
inline const QString SelectedCentres = "Pack for selected divisions";

/// Makes the templates above, in the program's own way.
DemoTemplates create(Connection& connection, const QDate& today);
/// Makes many templates with call reports that differ in nothing but their kind, and returns their keys.
QList<int> createMany(Connection& connection, int count, int reportsPerTemplate);

} // namespace demoTemplates
