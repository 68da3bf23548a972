#pragma once

#include "reports/clsReport.h"

#include <QSet>
#include <vector>

/// The reports of one template, in the order in which they were added, each under a key. Keys match
/// without regard to case; positions count from 1. An unknown key or position throws std::out_of_range.
class clsReports_Collection {
public:
    /// The project must outlive the object.
    explicit clsReports_Collection(const CurrentProject& project) : m_project(&project) {}

    /// Adds a report that shares the given parameters. An empty key, or one in use, becomes "ID" and a
    /// number; `key` holds the one used on return. A RestrictedSelection that the report does not
    /// accept becomes AllAccounts.
    clsReport& Add(int id, std::shared_ptr<clsReportParameters> parameters, int reportType, int reportSubType,
                   bool outputExcel, bool outputCSV, bool outputEmail, QString& key);
    clsReport& Item(const QString& key) const { return *m_reports[place(key)].report; }
    clsReport& Item(int position) const { return *m_reports[place(position)].report; }
    const QString& Key(int position) const { return m_reports[place(position)].key; }
    int Count() const { return int(m_reports.size()); }
    void Remove(const QString& key) { removeAt(place(key)); }
    void Remove(int position) { removeAt(place(position)); }
    void Clear();
    /// Puts the report at one position to another; those between move up or down by one.
    void Move(int from, int to);

private:
    struct Keyed {
        QString key;
        std::unique_ptr<clsReport> report;
    };

public:
    class Iterator {
    public:
        explicit Iterator(std::vector<Keyed>::const_iterator at) : m_at(at) {}
        clsReport& operator*() const { return *m_at->report; }
        Iterator& operator++() {
            ++m_at;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_at != other.m_at; }

    private:
        std::vector<Keyed>::const_iterator m_at;
    };
    Iterator begin() const { return Iterator(m_reports.begin()); }
    Iterator end() const { return Iterator(m_reports.end()); }

private:
    std::size_t place(const QString& key) const;
    std::size_t place(int position) const;
    void removeAt(std::size_t place);
    QString freeKey(const QString& wanted) const;

    const CurrentProject* m_project;
    std::vector<Keyed> m_reports;
    QSet<QString> m_usedKeys; ///< in lower case
};
