#pragma once

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

/// Typing finds the entries that hold the text, wherever it stands in them.
inline void makeSearchable(QComboBox* box) {
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    box->completer()->setFilterMode(Qt::MatchContains);
    box->lineEdit()->setClearButtonEnabled(true);
}
