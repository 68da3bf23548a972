#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <vector>

/// Walks the program like a user, step by step: waits until a screen is there, takes a picture of it
/// and presses its real controls. Prints one line for each step.
class Walker : public QObject {
    Q_OBJECT

public:
    /// An empty folder name: no pictures. `note`, where given, is printed behind each step.
    explicit Walker(const QString& pictureFolder, std::function<QString()> note = {});

    /// One step: when `ready` is true of the topmost screen, the picture is taken and `act` runs. The
    /// walk fails after a minute in which the program took input and the screen did not come.
    using Ready = std::function<bool(QWidget& screen)>;
    using Act = std::function<void(QWidget& screen)>;
    void add(const QString& text, Ready ready, Act act);

    /// Starts walking as soon as the event loop runs; calls `done` at the end, with the outcome.
    void start(std::function<void(bool passed)> done);

private:
    void tick();
    void takePicture(QWidget& screen, const QString& text);
    void finish(bool passed);

    struct Step {
        QString text;
        Ready ready;
        Act act;
    };
    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    int m_picture = 0;
    QString m_pictureFolder;
    std::function<QString()> m_note;
    int m_looks = 0; ///< since the last step
    std::function<void(bool)> m_done;
};

/// The screen has this object name, and the further condition, if any, holds.
Walker::Ready on(const QString& screenName, std::function<bool(QWidget&)> condition = {});
/// A message box is shown whose text begins so.
Walker::Ready onMessage(const QString& beginning);
/// Presses a button of the screen by its object name, in a moment, so that a screen that it opens
/// does not hold up the walk.
Walker::Act press(const QString& buttonName);
/// Presses a button of a message box, "&Yes" or "OK".
Walker::Act answer(const QString& caption);
/// The control of a screen by its object name; ends the walk with a clear line when it is missing.
template <class T>
T& control(QWidget& screen, const QString& name);
[[noreturn]] void missingControl(QWidget& screen, const QString& name);

template <class T>
T& control(QWidget& screen, const QString& name) {
    if (screen.objectName() == name)
        if (T* self = qobject_cast<T*>(&screen)) return *self;
    T* found = screen.findChild<T*>(name);
    if (!found) missingControl(screen, name);
    return *found;
}
