#include "schedules/uctBulkActions.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "schedules/BulkChange.h"
#include "schedules/SeriesRule.h"
#include "schedules/frmChangeSchedules.h"
#include "schedules/modScheduler.h"
#include "schedules/uctShownSchedules.h"
#include "ui/Messages.h"
#include "ui/openScreen.h"
#include "ui/uctListView.h"

uctBulkActions::uctBulkActions(ScreenContext& context, QWidget& window, uctListView& list,
                               const ShownSchedules& shown)
    : QObject(&window),
      m_context(context),
      m_window(window),
      m_list(list),
      m_shown(shown),
      m_series(action(
          "Select &Series", "Select the other schedules of this one's series", [this] { selectSeries(); },
          "frmMainScreen.SelectSeries")),
      m_disable(action(
          "D&isable", "The engine leaves the schedule alone until it is enabled", [this] { enable(false); },
          "frmMainScreen.Disable")),
      m_enable(action(
          "Ena&ble", "The engine runs the schedule when its time has come", [this] { enable(true); },
          "frmMainScreen.Enable")),
      m_change(action(
          "&Change Selected…", "Change time, project, template, state or owner of what is selected",
          [this] { change(); }, "frmMainScreen.Change")) {}

QAction* uctBulkActions::action(const QString& text, const QString& toolTip,
                                const std::function<void()>& body, const SlotName& slot) {
    auto* made = new QAction(text, this);
    made->setToolTip(toolTip);
    connect(made, &QAction::triggered, this,
            [this, body, slot] { guarded(m_context, &m_window, body, {}, slot); });
    return made;
}

QList<QAction*> uctBulkActions::ofFinished() const {
    return m_context.session.isAdministrator() ? QList{m_change} : QList<QAction*>();
}

void uctBulkActions::update() {
    const QList<int> ids = m_list.selectedIds();
    const auto isDisabled = [this](int id) {
        return m_list.textOf(id, ShownSchedules::Status) == statusText(ScheduleStatus::Disabled);
    };
    m_series->setEnabled(ids.size() == 1);
    m_disable->setEnabled(!std::ranges::all_of(ids, isDisabled));
    m_enable->setEnabled(std::ranges::any_of(ids, isDisabled));
    m_change->setEnabled(!ids.isEmpty());
}

/// Those of the same template whose titles differ in their date or number alone.
void uctBulkActions::selectSeries() {
    const int chosen = m_list.selectedIds().value(0);
    const auto key = [this](int id) {
        return std::pair(seriesStem(m_list.textOf(id, ShownSchedules::Title)), m_shown.templateOf(id));
    };
    const auto wanted = key(chosen);
    QList<int> ids;
    for (const ListRow& row : m_list.rows().rows())
        if (key(row.id) == wanted) ids << row.id;
    m_list.selectIds(ids);
}

/// One is not worth a question, unless it would start at once.
void uctBulkActions::enable(bool enabled) {
    BulkChange wanted;
    wanted.enabled = enabled;
    const auto schedules = readScheduleRows(m_context.session, m_list.selectedIds());
    const bool isAsked = schedules.size() > 1 || overdueCount(schedules, wanted) > 0;
    if (isAsked && !mayChange(m_context, &m_window, schedules, wanted)) return;
    emit changed(changeAndTell(m_context, &m_window, schedules, wanted));
}

void uctBulkActions::change() {
    const auto screen = setUpScreen<frmChangeSchedules>(
        m_context, &m_window, "Error loading schedule information", m_list.selectedIds());
    if (!screen) return;
    screen->exec();
    if (!screen->savedText().isEmpty()) emit changed(screen->savedText());
}

void uctBulkActions::remove() {
    const QList<int> ids = m_list.selectedIds();
    if (ids.isEmpty()) return m_context.messages.notice(&m_window, "You must select a schedule to delete.");
    const QString question =
        ids.size() == 1
            ? QString("Are you sure you want to delete the schedule '%1' ?")
                  .arg(m_list.textOf(ids.first(), ShownSchedules::Title))
            : QString("Are you sure you want to delete the %1 selected schedules ?").arg(ids.size());
    if (m_context.messages.ask(&m_window, question)) deleteSchedules(ids);
}

/// Each for itself: what cannot be deleted keeps no other from going. A server that is gone, or a user who
/// stops, ends it.
void uctBulkActions::deleteSchedules(const QList<int>& ids) {
    WaitCursor wait;
    QStringList refused;
    for (const int id : ids) try {
            DeleteSchedule(m_context.session, id);
            m_context.session.turn();
        } catch (const DbError& error) {
            const bool stopped =
                error.number() == DbError::Stopped || error.number() == DbError::StoppedCommit;
            if (ids.size() == 1 || error.connectionLost() || stopped) {
                emit changed({});
                throw;
            }
            m_context.session.log.write("frmMainScreen.cmdDelete_Click", error);
            refused << QString("%1: %2").arg(m_list.textOf(id, ShownSchedules::Title), error.text());
        } catch (const Refusal& refusal) {
            if (ids.size() == 1) {
                emit changed({});
                throw;
            }
            refused << QString("%1: %2").arg(m_list.textOf(id, ShownSchedules::Title), refusal.text());
        }
    const qsizetype deleted = ids.size() - refused.size();
    emit changed(deleted == 1 ? QString("1 schedule was deleted.")
                              : QString("%1 schedules were deleted.").arg(deleted));
    if (!refused.isEmpty())
        m_context.messages.notice(
            &m_window,
            QString("%1 of the %2 schedules could not be deleted.").arg(refused.size()).arg(ids.size()),
            Messages::Plain, {}, refused.join('\n'));
}
