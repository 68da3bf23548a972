#pragma once

#include <QFrame>

class QLabel;
class QVariantAnimation;

/// The band on top of every screen: the logo, which comes alive for a moment when the screen opens,
/// the screen's title and a short note at the right.
class uctHeader : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)

public:
    explicit uctHeader(QWidget* parent = nullptr);

    QString title() const;
    void setTitle(const QString& title);
    void setNote(const QString& note);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool m_slim;
    QLabel* m_title;
    QLabel* m_note;
    QVariantAnimation* m_wave;
};
