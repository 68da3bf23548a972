#pragma once

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

/// Typing finds the entries that hold the text, wherever it stands in them. The words name the box to those
/// who do not see its caption.
inline void makeSearchable(QComboBox* box, const QString& words) {
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    box->completer()->setFilterMode(Qt::MatchContains);
    box->lineEdit()->setClearButtonEnabled(true);
    box->lineEdit()->setAccessibleName(words);
}
