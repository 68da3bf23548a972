#pragma once

#include "ui/Messages.h"

/// The messages as a user sees them: the desktop's own boxes and dialogs.
class MessageBoxes : public Messages {
public:
    void notice(QWidget* parent, const QString& text, Icon icon, const QString& title,
                const QString& details) override;
    bool ask(QWidget* parent, const QString& text, Icon icon, const QString& title) override;
    std::optional<QString> input(QWidget* parent, const QString& prompt, const QString& text) override;
    QString openFile(QWidget* parent, const QString& folder, const QString& filter) override;
    QString saveFile(QWidget* parent, const QString& suggested, const QString& filter,
                     QString& chosen) override;
};
