#pragma once

#include "ui/ScreenContext.h"

#include <QString>
#include <functional>
#include <source_location>

class QWidget;

class DbError;

/// What a database error means to a user.
QString inWords(const DbError& error);

/// What the error log calls a routine: "frmTemplate.cmdDelete_Click". By itself the routine that it is made
/// in.
class SlotName {
public:
    SlotName(const std::source_location& where);
    SlotName(const char* name) : m_name(name) {}
    const QString& text() const { return m_name; }

private:
    QString m_name;
};

/// Runs the body of a screen's slot. What the body does not handle itself is written to the error log
/// under the slot's name ("frmTemplate.cmdDelete_Click") and told to the user; the screen stays open.
/// An error of the server is told under `headline`, "Error saving template", if there is one; a Refusal has
/// words of its own, and puts the focus on its field. Returns whether the body came to its end.
bool guarded(const ScreenContext& context, QWidget* screen, const std::function<void()>& body,
             const QString& headline = {}, const SlotName& slot = std::source_location::current());
