#pragma once

#include "ui/Callback.h"
#include "ui/ScreenContext.h"
#include "ui/SlotGuard.h"

#include <QDialog>
#include <functional>

/// What every modal screen shares: the way back to its caller and one way out. A screen answers its
/// close button, Esc and the window's own close alike in `mayClose`.
class ScreenDialog : public QDialog {
    Q_OBJECT

public:
    ScreenDialog(ScreenContext& context, QWidget* parent);
    /// Whom to tell when the screen closes with a result: the slot is found by its name.
    void SetCallback(QObject* caller, const QString& routine) { m_callback.set(caller, routine); }

    void reject() override;
    void done(int result) override;

    /// Why load() failed, in words; empty while it did not.
    const QString& loadProblem() const { return m_loadProblem; }

protected:
    void showEvent(QShowEvent* event) override;
    /// Reads what the screen shows. A failure is written to the error log under the name of the Setup and
    /// left to the caller to tell, who has the words for it.
    bool load(const std::function<void()>& body, const SlotName& setup = std::source_location::current());
    /// Runs a slot's body, see guarded().
    bool run(const std::function<void()>& body, const QString& headline = {},
             const SlotName& slot = std::source_location::current()) {
        return guarded(m_context, this, body, headline, slot);
    }
    ScreenContext& context() const { return m_context; }
    Session& session() const { return m_context.session; }
    Messages& messages() const { return m_context.messages; }
    /// Asked before the screen closes without a result; by default it may.
    virtual bool mayClose() { return true; }
    /// Whether the caller is told of a cancelled screen too, not of a confirmed one only.
    virtual bool tellsWhenCancelled() const { return true; }
    /// Closes the screen and tells the caller; mayClose is not asked any more.
    void callBackAndClose();

private:
    ScreenContext& m_context;
    Callback m_callback;
    QString m_loadProblem;
    QSize m_shownSize; ///< when it was opened
};
