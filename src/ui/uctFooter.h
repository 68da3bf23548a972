#pragma once

#include <QAction>
#include <QFrame>
#include <QHash>

class QHBoxLayout;
class QToolButton;
class uctListView;

/// The bar of labelled buttons at the foot of every screen. Each stands for an action, which lists can offer
/// in their menus as well and which may have keys.
class uctFooter : public QFrame {
    Q_OBJECT

public:
    explicit uctFooter(QWidget* parent = nullptr);

    /// An action with a button `cmd<name>` over its label `lbl<name>`, which acts like it. The caption's "&"
    /// gives the mnemonic. The action "Save" has Ctrl+S as well.
    QAction* add(const QString& name, const QString& caption, const QString& iconName,
                 const QString& toolTip);
    /// The same, wired to a receiver's slot.
    template <class Receiver, class Slot>
    QAction* add(const QString& name, const QString& caption, const QString& iconName, const QString& toolTip,
                 Receiver* receiver, Slot slot) {
        QAction* action = add(name, caption, iconName, toolTip);
        connect(action, &QAction::triggered, receiver, slot);
        return action;
    }
    /// Free room between the buttons before and those after.
    void addStretch();
    /// Greys an action, telling why in its tool tip, or brings it back.
    void setUsable(QAction* action, bool usable, const QString& why = {});
    QToolButton* button(QAction* action) const { return m_items[action].button; }
    /// Greys actions as long as none of the lists has a selection.
    void needSelection(const QList<uctListView*>& lists, const QList<QAction*>& actions);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addSaveKeys(QAction* action);
    void showToolTip(QAction* action);

    struct Item {
        QToolButton* button;
        QString toolTip; ///< without keys and without why it cannot be used
        QString why;
    };

    QHBoxLayout* m_layout;
    QHash<QAction*, Item> m_items;
};
