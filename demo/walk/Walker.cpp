#include "demo/walk/Walker.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::chrono::milliseconds pace(40);
constexpr int patience = 1500; // looks

/// What the user would see on top: the modal screen, else the window that has the keyboard, such as the help,
/// which leaves its screen usable, else the visible one.
QWidget* topScreen() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && !window->objectName().isEmpty() && window->isWindow()
            && window->windowType() != Qt::ToolTip)
            return window;
    return nullptr;
}

void print(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

Walker::Walker(const QString& pictureFolder, std::function<QString()> note)
    : m_pictureFolder(pictureFolder), m_note(std::move(note)) {
    if (!pictureFolder.isEmpty()) QDir().mkpath(pictureFolder);
}

void Walker::add(const QString& text, Ready ready, Act act) {
    m_steps.push_back({text, std::move(ready), std::move(act)});
}

void Walker::start(std::function<void(bool passed)> done) {
    m_done = std::move(done);
    QTimer::singleShot(pace, this, &Walker::tick);
}

void Walker::tick() {
    if (m_next == m_steps.size()) return finish(true);
    Step& step = m_steps[m_next];
    QWidget* screen = topScreen();
    if (screen && step.ready(*screen)) {
        takePicture(*screen, step.text);
        ++m_next;
        m_looks = 0;
        step.act(*screen);
    } else if (++m_looks > patience) {
        print("FAILED  " + step.text);
        if (screen) {
            QString where = screen->objectName();
            if (const auto* box = qobject_cast<QMessageBox*>(screen)) where += " \"" + box->text() + '"';
            print("        the screen on top is " + where);
            takePicture(*screen, "failed");
        }
        return finish(false);
    }
    QTimer::singleShot(pace, this, &Walker::tick);
}

void Walker::takePicture(QWidget& screen, const QString& text) {
    if (text != "failed") print("ok      " + text + (m_note ? "   " + m_note() : QString()));
    if (m_pictureFolder.isEmpty()) return;
    const QString file = QDir(m_pictureFolder)
                             .filePath(QString("%1-%2.png")
                                           .arg(++m_picture, 2, 10, QChar('0'))
                                           .arg(QString(text).toLower().replace(' ', '-').left(40)));
    screen.grab().save(file);
}

void Walker::finish(bool passed) {
    print(passed ? QString("%1 steps walked").arg(m_steps.size()) : QString("the walk ended early"));
    m_done(passed);
}

Walker::Ready on(const QString& screenName, std::function<bool(QWidget&)> condition) {
    return [screenName, condition = std::move(condition)](QWidget& screen) {
        return screen.objectName() == screenName && (!condition || condition(screen));
    };
}

Walker::Ready onMessage(const QString& beginning) {
    return [=](QWidget& screen) {
        const auto* box = qobject_cast<QMessageBox*>(&screen);
        return box && box->text().startsWith(beginning);
    };
}

Walker::Act press(const QString& buttonName) {
    return [=](QWidget& screen) {
        auto& button = control<QAbstractButton>(screen, buttonName);
        QTimer::singleShot(0, &button, [&button] { button.click(); });
    };
}

Walker::Act answer(const QString& caption) {
    return [=](QWidget& screen) {
        for (QAbstractButton* button : screen.findChildren<QAbstractButton*>())
            if (button->text() == caption)
                return QTimer::singleShot(0, button, [button] { button->click(); });
        missingControl(screen, caption);
    };
}

void missingControl(QWidget& screen, const QString& name) {
    print(QString("FAILED  %1 has no control %2").arg(screen.objectName(), name));
    std::exit(1);
}
