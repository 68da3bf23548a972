#pragma once

#include <QList>
#include <QStringList>

/// One text of a clsStrings.
struct clsString {
    QString Value;
};

/// An ordered list of texts. Indexes count from 1; any other throws std::out_of_range.
class clsStrings {
public:
    void AddString(const QString& text) { m_items.append({text}); }
    void Delete(int index);
    const clsString& Item(int index) const;
    clsString& Item(int index);
    int Count() const { return int(m_items.size()); }
    void Clear() { m_items.clear(); }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

    /// 'a','b' for separator "," and quote "'". A quote within a text is not doubled.
    QString AsStringList(const QString& separator, const QString& quote) const;
    /// Replaces the list by the texts, trimmed; blank ones are left out.
    void SetFromStringList(const QStringList& texts);

private:
    qsizetype place(int index) const;

    QList<clsString> m_items;
};
