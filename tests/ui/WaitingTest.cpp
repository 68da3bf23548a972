#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "ui/SlotGuard.h"
#include "ui/frmWaiting.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <atomic>
#include <thread>

namespace {

/// Does something once while the program waits and says so, as a user would who loses his patience.
class ImpatientUser {
public:
    ImpatientUser(QWidget& screen, const std::function<void(frmWaiting&)>& act)
        : m_thread([this, &screen, act] {
              while (!m_done) {
                  std::this_thread::sleep_for(std::chrono::milliseconds(20));
                  QMetaObject::invokeMethod(&screen, [this, act] { lookFor(act); });
              }
          }) {}
    ~ImpatientUser() {
        m_done = true;
        m_thread.join();
    }

private:
    void lookFor(const std::function<void(frmWaiting&)>& act) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* waiting = qobject_cast<frmWaiting*>(window); waiting && !m_done.exchange(true))
                act(*waiting);
    }

    std::atomic<bool> m_done = false;
    std::thread m_thread;
};

class WaitingTest : public QObject {
    Q_OBJECT

private slots:
    void aSilentServerIsStopped_data() {
        const Rows<bool, bool> row;
        row("which hears the cancel, while reading", false, false);
        row("which hears the cancel, in a transaction", false, true);
        row("which hears nothing, while reading", true, false);
        row("which hears nothing, in a transaction", true, true);
    }

    void aSilentServerIsStopped() {
        const auto [deaf, inTransaction] = thisRow<bool, bool>();
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        const QString count = "SELECT COUNT(*) FROM tblSchedule";
        const QString before = program.other().scalar(Sql::script(count));
        QLineEdit box;
        QPushButton button;
        QShortcut save(QKeySequence::Save, &box);
        int saves = 0;
        int savesMeanwhile = 0;
        connect(&save, &QShortcut::activated, [&] { ++saves; });
        int presses = 0;
        int ticks = 0;
        int ticksMeanwhile = 0;
        QTimer timer;
        connect(&button, &QPushButton::clicked, [&] { ++presses; });
        connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        box.show();
        button.show();
        timer.start(1);

        program.fault.fallSilent("TOP 7", deaf);
        {
            const ImpatientUser user(box, [&](frmWaiting& waiting) {
                QVERIFY(!box.close());
                QTest::mouseClick(&button, Qt::LeftButton);
                QCoreApplication::postEvent(&box, new QKeyEvent(QEvent::KeyPress, Qt::Key_X, {}, "x"));
                QCoreApplication::sendPostedEvents(&box);
                QApplication::setActiveWindow(&box); // as a desktop leaves it
                QTest::keyClick(box.windowHandle(), Qt::Key_S, Qt::ControlModifier);
                savesMeanwhile = saves;
                QVERIFY_EXCEPTION_THROWN(db.query(sql("SELECT 1")), DbError); // nothing comes in between
                ticksMeanwhile = ticks;
                QTest::mouseClick(waiting.findChild<QPushButton*>("cmdStop"), Qt::LeftButton);
            });
            QVERIFY(!guarded(
                program.context, &box,
                [&] {
                    std::optional<Transaction> transaction;
                    if (inTransaction) transaction.emplace(db);
                    db.execute(sql("DELETE FROM tblSchedule WHERE 1 = {}", int(inTransaction)));
                    db.query(sql("SELECT TOP 7 * FROM tblSchedule"));
                },
                {}, "WaitingTest.aSilentServer"));
            QCOMPARE(ticksMeanwhile, 0);
            QCOMPARE(savesMeanwhile, 0);
        }
        QVERIFY(program.messages.takeShown().value(0).startsWith("You have stopped waiting"));
        program.fault.silence->end();
        QCOMPARE(db.scalar(Sql::script(count)), before); // rolled back, on whichever session
        QCOMPARE(db.scalar(sql("SELECT DB_NAME()")), QString("NorvaScheduler"));
        QCOMPARE(presses, 0);
        QTRY_COMPARE(box.text(), QString("x")); // delivered afterwards
        QTRY_VERIFY(ticks > 0);
        QVERIFY(box.close());
    }
};

const AnnounceTest<WaitingTest> announced;

} // namespace

#include "WaitingTest.moc"
