#pragma once

#include <QString>
#include <optional>

class QWidget;

/// Every message, question, input box and file dialog of the program goes through this interface, so
/// that a test can answer from a script and read the exact texts.
class Messages {
public:
    enum Icon { Plain, Information };

    virtual ~Messages() = default;

    /// `details` stand below the text in smaller print: the server's own words, a reason.
    virtual void notice(QWidget* parent, const QString& text, Icon icon = Plain, const QString& title = {},
                        const QString& details = {}) = 0;
    /// A Yes/No question; closing the box is No.
    virtual bool ask(QWidget* parent, const QString& text, Icon icon = Plain, const QString& title = {}) = 0;
    /// One line of text; nothing when the box is cancelled.
    virtual std::optional<QString> input(QWidget* parent, const QString& prompt,
                                         const QString& text = {}) = 0;
    /// A file to read, or to write, for which a path is suggested; empty when the dialog is cancelled. The
    /// filter has the form "Name (*.ext);;Name (*.ext)". An existing file to write is not asked about here.
    virtual QString openFile(QWidget* parent, const QString& folder, const QString& filter) = 0;
    /// `chosen` becomes the part of the filter that the user has chosen.
    virtual QString saveFile(QWidget* parent, const QString& suggested, const QString& filter,
                             QString& chosen) = 0;
};
