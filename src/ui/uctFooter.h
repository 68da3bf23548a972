#pragma once

#include <QFrame>
#include <QToolButton>

class QHBoxLayout;
class uctListView;

/// The bar of labelled buttons at the foot of every screen.
class uctFooter : public QFrame {
    Q_OBJECT

public:
    explicit uctFooter(QWidget* parent = nullptr);

    /// A button `cmd<name>` over its label `lbl<name>`, which acts like it. The caption's "&" gives
    /// the mnemonic. The button "Save" has Ctrl+S as well.
    QToolButton* add(const QString& name, const QString& caption, const QString& iconName,
                     const QString& toolTip);
    /// The same, wired to a receiver's slot.
    template <class Receiver, class Slot>
    QToolButton* add(const QString& name, const QString& caption, const QString& iconName,
                     const QString& toolTip, Receiver* receiver, Slot slot) {
        QToolButton* button = add(name, caption, iconName, toolTip);
        connect(button, &QToolButton::clicked, receiver, slot);
        return button;
    }
    /// Free room between the buttons before and those after.
    void addStretch();
    /// Shows or hides a button together with its label.
    void setOffered(QToolButton* button, bool offered);
    /// Greys a button together with its label, or brings both back.
    void setUsable(QToolButton* button, bool usable);
    /// Greys buttons as long as none of the lists has a selection.
    void needSelection(const QList<uctListView*>& lists, const QList<QToolButton*>& buttons);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addSaveKeys(QToolButton* button);

    QHBoxLayout* m_layout;
};
