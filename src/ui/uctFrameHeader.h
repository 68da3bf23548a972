#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

/// The title line of a collapsible frame: a click on its arrow or title hides or shows the content
/// below it. The state is remembered for each user.
class uctFrameHeader : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)

public:
    explicit uctFrameHeader(QWidget* parent = nullptr);

    QString title() const;
    void setTitle(const QString& title);
    /// Names the content that collapses and the key under which its state is kept. Where the content
    /// sits in a splitter, `pane` is the splitter's child, which shrinks to this line.
    void attach(QWidget* content, const QString& key, QWidget* pane = nullptr);
    /// Puts a further widget at the right end of the line.
    void addWidget(QWidget* widget);

    bool isOpen() const { return m_open; }
    void setOpen(bool open);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void tellState();
    void toggle();

    QToolButton* m_arrow;
    QLabel* m_title;
    QHBoxLayout* m_layout;
    QWidget* m_content = nullptr;
    QWidget* m_pane = nullptr;
    QString m_key;
    bool m_open = true;
};
