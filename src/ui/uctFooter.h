#pragma once

#include <QFrame>

class QHBoxLayout;
class QToolButton;

/// The bar of labelled buttons at the foot of every screen.
class uctFooter : public QFrame {
    Q_OBJECT

public:
    explicit uctFooter(QWidget* parent = nullptr);

    /// A button `cmd<name>` over its label `lbl<name>`, which acts like it. The caption's "&" gives
    /// the mnemonic.
    QToolButton* add(const QString& name, const QString& caption, const QString& iconName, const QString& toolTip);
    /// Free room between the buttons before and those after.
    void addStretch();
    /// Shows or hides a button together with its label.
    void setOffered(QToolButton* button, bool offered);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QHBoxLayout* m_layout;
};
