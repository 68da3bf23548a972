#pragma once

#include "ui/ScreenContext.h"
#include "ui/SlotGuard.h"

#include <QAction>
#include <QObject>
#include <functional>

class ShownSchedules;
class uctListView;

/// What a list of schedules offers for several of them at once: to find the others of a series, to disable
/// and enable, to change, give away or delete.
class uctBulkActions : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object.
    uctBulkActions(ScreenContext& context, QWidget& window, uctListView& list, const ShownSchedules& shown);

    /// For the menu of a list of schedules that have not run yet.
    QList<QAction*> ofPending() const { return {m_series, m_disable, m_enable, m_change}; }
    /// For that of schedules that have run, which can be given to others.
    QList<QAction*> ofFinished() const;
    /// Deletes what is selected, once the user has agreed.
    void remove();
    /// Greys what the selection does not allow.
    void update();

signals:
    void changed(const QString& told); ///< it is to be read anew; what the status line says

private:
    QAction* action(const QString& text, const QString& toolTip, const std::function<void()>& body,
                    const SlotName& slot);
    void selectSeries();
    void deleteSchedules(const QList<int>& ids);
    void enable(bool enabled);
    void change();

    ScreenContext& m_context;
    QWidget& m_window;
    uctListView& m_list;
    const ShownSchedules& m_shown;
    QAction* m_series;
    QAction* m_disable;
    QAction* m_enable;
    QAction* m_change;
};
