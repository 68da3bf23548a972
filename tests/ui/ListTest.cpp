#include "base/SettingsStore.h"
#include "support/Files.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/MessageBoxes.h"
#include "ui/ReadingOrder.h"
#include "ui/TypedSeparators.h"
#include "ui/uctCheckList.h"
#include "ui/uctFilterBox.h"
#include "ui/uctListView.h"

#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QVBoxLayout>

/// Lists and what stands around them, used by mouse and keys.
class ListTest : public QObject {
    Q_OBJECT

    /// A screen with a filter box, a list and a check list.
    struct Screen : QDialog {
        uctFilterBox box{this};
        uctListView list{this};
        uctCheckList ticks{this};

        Screen() {
            auto* column = new QVBoxLayout(this);
            for (QWidget* each :
                 {static_cast<QWidget*>(&list), static_cast<QWidget*>(&box), static_cast<QWidget*>(&ticks)})
                column->addWidget(each);
            list.setSelectionMode(QAbstractItemView::ExtendedSelection);
            list.setColumns({{"Title"}, {"Count", ListColumn::Number}, {"Note"}}, "Test");
            list.setRows({{1, {"b", "10", "two\nlines"}}, {2, {"a", "9", "tab\there"}}, {3, {"c", "8", ""}}});
            list.sortAtFirst(0);
            box.attach(list);
            connect(&box, &QLineEdit::textChanged, &list, &uctListView::setFilterWords);
            ticks.setTexts({"x", "y"}, {});
            resize(600, 500);
            show();
            activateWindow();
            if (!QTest::qWaitForWindowActive(this))
                QTest::qFail("the screen is not active", __FILE__, __LINE__);
        }
        QWidget& header() { return *list.header()->viewport(); }
        QPoint edge(int column) {
            return {list.header()->sectionViewportPosition(column + 1) - 1, header().height() / 2};
        }
        int width(int column) { return list.header()->sectionSize(column); }
    };

    QTemporaryDir m_settings;

private slots:
    void init() { keepSettingsIn(m_settings.path()); }
    void cleanup() { QDir(m_settings.path()).removeRecursively(), QDir().mkpath(m_settings.path()); }

    void widthsAreThoseThatTheUserSets() {
        int fitted = 0;
        {
            Screen screen;
            fitted = screen.width(0);
            // A button that is down elsewhere, as under the double-click that opens a screen, sets none.
            QTest::mousePress(screen.list.viewport(), Qt::LeftButton, {}, {20, 10});
            screen.resize(900, 500);
            QTest::mouseRelease(screen.list.viewport(), Qt::LeftButton, {}, {20, 10});
            QVERIFY(screen.width(0) > fitted);
        }
        {
            Screen screen;
            QCOMPARE(screen.width(0), fitted);
            const QPoint edge = screen.edge(0);
            QTest::mousePress(&screen.header(), Qt::LeftButton, {}, edge);
            QTest::mouseMove(&screen.header(), edge + QPoint(30, 0));
            QTest::mouseRelease(&screen.header(), Qt::LeftButton, {}, edge + QPoint(30, 0));
            QCOMPARE(screen.width(0), fitted + 30);
            screen.resize(900, 500);
        }
        Screen screen;
        QCOMPARE(screen.width(0), fitted + 30);
    }

    void aListOpensAsItsUserLeftIt() {
        {
            Screen screen;
            screen.list.setColumnsMovable();
            screen.list.header()->moveSection(2, 0);
            screen.list.header()->actions()[0]->trigger(); // hides the title
            QTest::mouseClick(&screen.header(), Qt::LeftButton, {}, {screen.edge(0).x() + 40, 5});
        }
        Screen screen;
        QVERIFY(screen.list.isColumnHidden(0));
        QCOMPARE(screen.list.header()->visualIndex(2), 0);
        QCOMPARE(screen.list.sortedColumn(), 1);
        screen.list.setColumnsMovable();
        for (QAction* shown : screen.list.header()->actions())
            if (shown->isChecked()) shown->trigger();
        QCOMPARE(screen.list.header()->hiddenSectionCount(), 2); // one always stays
    }

    void absurdLayoutsAreIgnored() {
        const int fitted = Screen().width(1);
        QHeaderView wide(Qt::Horizontal);
        QStandardItemModel model(1, 3);
        wide.setModel(&model);
        wide.resizeSection(1, 100'000);
        QStringList layouts{"", "=", "=no base64", "*" + QString("AAAA").repeated(50)};
        for (const int columns : {3, 4}) { // beyond every desktop; of another list
            model.setColumnCount(columns);
            layouts << '=' + QString::fromLatin1(wide.saveState().toBase64());
        }
        for (const QString& stored : layouts) {
            saveSetting("VWT", "ListLayout", "Test", stored);
            QVERIFY2(Screen().width(1) == fitted, qPrintable(stored));
        }
    }

    void timesAndDatesAreTypedAsPeopleWriteThem_data() {
        const Rows<QString, QString, QString> row;
        for (const QString keys : {"08:30", "8:30", "8.30", "0830", "830", "8 30"}) {
            row(keys, "HH:mm", keys, "2026-11-22 08:30:59");
            row(keys + " with seconds", "HH:mm:ss", keys, "2026-11-22 08:30:59");
        }
        row("with seconds", "HH:mm:ss", "7:5:3", "2026-11-22 07:05:03");
        row("hours alone", "HH:mm", "9", "2026-11-22 09:58:59");
        row("a month of one digit", "dd MMM yyyy", "30.1.2027", "2027-01-30 23:58:59");
        row("a month too many", "dd MMM yyyy", "30.13.2027", "2027-11-30 23:58:59");
        for (const QString keys : {"31.1.2028", "31 Jan 2028", "31jan2028", "31/01/28"})
            row(keys + ", typed in November", "dd MMM yyyy", keys, "2028-01-31 23:58:59");
        row("digits alone", "dd MMM yyyy", "05012027", "2027-01-05 23:58:59");
        row("29 February", "dd MMM yyyy", "29 feb 28", "2028-02-29 23:58:59");
        for (const QString keys : {"5 Dec 2026", "05/dec/2026", "5-12-2026", "05/12/2026", "5Dec2026"})
            row(keys, "dd MMM yyyy", keys, "2026-12-05 23:58:59");
    }
    void timesAndDatesAreTypedAsPeopleWriteThem() {
        const auto [format, keys, expected] = thisRow<QString, QString, QString>();
        QDateTimeEdit edit;
        edit.setTimeSpec(Qt::UTC);
        edit.setLocale(QLocale::c());
        edit.setDisplayFormat(format);
        takeTypedSeparators(edit);
        edit.setDateTime(QDateTime({2026, 11, 22}, {23, 58, 59}, Qt::UTC));
        edit.setSelectedSection(edit.sectionAt(0));
        QTest::keyClicks(&edit, keys);
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.dateTime().toString("yyyy-MM-dd HH:mm:ss"), expected);
    }

    /// Whatever was typed before: the 31st, here.
    void aDayThatIsChosenStays_data() {
        const Rows<QString> row;
        for (const char* way : {"keys", "wheel", "calendar", "pasted", "taken back"})
            row(way, QString(way) == "pasted" || QString(way) == "taken back" ? "2026-01-05" : "2026-01-30");
    }
    void aDayThatIsChosenStays() {
        const QString way = QTest::currentDataTag();
        const auto [expected] = thisRow<QString>();
        QDateEdit edit(QDate(2026, 1, 22));
        edit.setLocale(QLocale::c());
        edit.setDisplayFormat("dd MMM yyyy");
        edit.setCalendarPopup(true);
        takeTypedSeparators(edit);
        edit.show();
        edit.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&edit));
        edit.setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(&edit, way == "taken back" ? "1\b5" : "31");
        edit.setSelectedSection(QDateTimeEdit::DaySection);
        if (way == "keys") QTest::keyClick(&edit, Qt::Key_Down);
        if (way == "wheel") {
            const QPointF middle = edit.rect().center();
            QWheelEvent wheel(middle, edit.mapToGlobal(middle), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(&edit, &wheel);
        }
        if (way == "calendar") {
            QTest::mouseClick(&edit, Qt::LeftButton, {}, QPoint(edit.width() - 4, edit.height() / 2));
            QTRY_VERIFY(QApplication::activePopupWidget());
            auto* days = edit.calendarWidget()->findChild<QAbstractItemView*>();
            QTest::keyClick(days, Qt::Key_Left);
            QTest::keyClick(days, Qt::Key_Return);
        }
        if (way == "pasted") {
            QGuiApplication::clipboard()->setText("05 Jan 2026");
            edit.selectAll();
            QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
        }
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.date().toString(Qt::ISODate), expected);
    }

    void aRowIsSelectedAloneWhileCtrlIsHeld() {
        Screen screen;
        screen.list.selectId(1);
        QTest::keyPress(screen.windowHandle(), Qt::Key_Control, Qt::ControlModifier); // of Ctrl+S, say
        QVERIFY(QGuiApplication::keyboardModifiers() & Qt::ControlModifier);
        screen.list.selectId(2);
        QCOMPARE(screen.list.selectedIds(), QList<int>{2});
        QTest::keyRelease(screen.windowHandle(), Qt::Key_Control);
    }

    void screenReadersMeetWidgetsAsTheyStand() {
        QWidget screen;
        auto* last = new QLabel("last", &screen);
        auto* splitter = new QSplitter(&screen);
        for (const char* pane : {"first", "second"}) splitter->addWidget(new QLabel(pane));
        auto* column = new QVBoxLayout(&screen);
        column->addWidget(splitter);
        column->addWidget(last);
        putInReadingOrder(screen);
        QStringList order;
        for (const QLabel* label : screen.findChildren<QLabel*>()) order << label->text();
        QCOMPARE(order, QStringList({"first", "second", "last"}));
    }

    void selectedRowsAreCopiedWhole() {
        Screen screen;
        screen.list.setFocus();
        QTest::keyClick(&screen.list, Qt::Key_C, Qt::ControlModifier); // none selected: all
        QCOMPARE(QGuiApplication::clipboard()->text(), "a\t9\ttab here\nb\t10\ttwo lines\nc\t8\t");
        QTest::keyClick(&screen.list, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&screen.list, Qt::Key_Up, Qt::ShiftModifier);
        QTest::keyClick(&screen.list, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), "b\t10\ttwo lines\nc\t8\t");
        auto* entries = screen.ticks.findChild<QAbstractItemView*>("lstEntries");
        entries->setFocus();
        QTest::keyClick(entries, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), "x\ny");
    }

    void theKeysFindBoxAndList() {
        Screen screen;
        QSignalSpy activated(&screen.list, &uctListView::rowActivated);
        screen.ticks.setFocus();
        screen.box.setFocus();
        QTest::keyClick(&screen.box, Qt::Key_Tab); // the list comes after its box
        QVERIFY(screen.list.hasFocus());
        QTest::keyClick(&screen.list, Qt::Key_Return);
        QCOMPARE(activated.takeFirst().value(0).toInt(), 2); // the first row shown
        QTest::keyClick(&screen.list, Qt::Key_Down);
        QCOMPARE(screen.list.selectedId(), 1);
        QTest::keyClick(&screen.list, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(screen.box.hasFocus());
        QTest::keyClicks(&screen.box, "8");
        QVERIFY(!screen.list.selectedId());
        QTest::keyClick(&screen.box, Qt::Key_Down);
        QCOMPARE(screen.list.selectedId(), 3);
        QTest::keyClick(&screen.list, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClick(&screen.box, Qt::Key_Escape);
        QVERIFY(screen.box.text().isEmpty() && screen.isVisible());
        QTest::keyClick(&screen.box, Qt::Key_Escape);
        QVERIFY(!screen.isVisible());
    }

    void allFilesAreThoseWithoutAnEndingToo() {
        const QTemporaryDir folder;
        for (const char* name : {"numbers", "numbers.csv"}) writeFile(folder.filePath(name), "");
        inNextModal<QFileDialog>([](QFileDialog& dialog) {
            QCOMPARE(dialog.nameFilters().value(1).section(" (", 0, 1), QString("View All Files (*.*)"));
            auto* files = dialog.findChild<QListView*>("listView");
            const auto shown = [files] { return files->model()->rowCount(files->rootIndex()); };
            QTRY_COMPARE(shown(), 1);
            auto* types = dialog.findChild<QComboBox*>("fileTypeCombo");
            types->setCurrentIndex(1);
            emit types->activated(1);
            QTRY_COMPARE(shown(), 2);
            dialog.reject();
        });
        MessageBoxes().openFile(nullptr, folder.path(),
                                "Comma Separated Files (*.CSV);;View All Files (*.*)");
    }
};

static const AnnounceTest<ListTest> announced;
#include "ListTest.moc"
