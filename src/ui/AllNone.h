#pragma once

#include <QBoxLayout>
#include <QToolButton>
#include <functional>

/// Adds the buttons cmdAll and cmdNone to a bar; they tick and untick every one of `what`, "entry shown".
inline void addAllNone(QWidget* parent, QBoxLayout& bar, const QString& what,
                       const std::function<void(bool ticks)>& tick) {
    for (const bool ticks : {true, false}) {
        auto* button = new QToolButton(parent);
        button->setObjectName(ticks ? "cmdAll" : "cmdNone");
        button->setText(ticks ? "All" : "None");
        button->setToolTip((ticks ? "Tick every " : "Untick every ") + what);
        button->setFocusPolicy(Qt::StrongFocus);
        QObject::connect(button, &QToolButton::clicked, parent, [tick, ticks] { tick(ticks); });
        bar.addWidget(button);
    }
}
