#pragma once

#include <QLabel>

class QAbstractButton;

/// A label that acts like its button when clicked, and carries the button's mnemonic.
class ClickableLabel : public QLabel {
    Q_OBJECT

public:
    ClickableLabel(const QString& text, QAbstractButton* button, QWidget* parent);

protected:
    bool event(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QAbstractButton* m_button;
};
