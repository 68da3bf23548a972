#pragma once

#include <QLineEdit>

class QAbstractItemView;

/// The box whose words narrow a list, or find a row of it. Ctrl+F goes to it: where a screen has several,
/// to the one of the list that has the keyboard, and on to the next. Esc clears it before it closes
/// anything; Down goes on to the list.
class uctFilterBox : public QLineEdit {
    Q_OBJECT

public:
    explicit uctFilterBox(QWidget* parent = nullptr);

    /// The list that the words are about; the Tab key comes to it after the box.
    void attach(QAbstractItemView& list);
    void goToList();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void find();

    QAbstractItemView* m_list = nullptr;
};
