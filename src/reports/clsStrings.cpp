#include "reports/clsStrings.h"

#include <stdexcept>

qsizetype clsStrings::place(int index) const {
    if (index < 1 || index > m_items.size()) throw std::out_of_range("no text at this index");
    return index - 1;
}

void clsStrings::Delete(int index) {
    m_items.removeAt(place(index));
}

const clsString& clsStrings::Item(int index) const {
    return m_items.at(place(index));
}

clsString& clsStrings::Item(int index) {
    return m_items[place(index)];
}

QString clsStrings::AsStringList(const QString& separator, const QString& quote) const {
    QString list;
    for (const clsString& item : m_items) {
        if (!list.isEmpty()) list += separator;
        list += quote + item.Value + quote;
    }
    return list;
}

void clsStrings::SetFromStringList(const QStringList& texts) {
    Clear();
    for (const QString& text : texts)
        if (const QString trimmed = text.trimmed(); !trimmed.isEmpty()) AddString(trimmed);
}
