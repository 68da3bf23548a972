#pragma once

#include "ui/Palette.h"

#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>

/// Small pieces that the groups of the parameter editor are made of.
namespace groupParts {

inline QLabel* label(QWidget* parent, const QString& text, const QColor& colour) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, colour);
    label->setPalette(colours);
    return label;
}

/// Explains something in smaller print.
inline QLabel* hint(QWidget* parent, const QString& text = {}) {
    return label(parent, text, Palette::subtleText());
}

/// Says what is wrong; hidden while nothing is.
inline QLabel* problem(QWidget* parent) {
    QLabel* problem = label(parent, {}, Palette::problem());
    problem->hide();
    return problem;
}

inline void showProblem(QLabel* label, const QString& text) {
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

/// Typing finds the entries that hold the text, wherever it stands in them.
inline void makeSearchable(QComboBox* box) {
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    box->completer()->setFilterMode(Qt::MatchContains);
    box->lineEdit()->setClearButtonEnabled(true);
}

} // namespace groupParts
