#include "numbers/uctNumberGrid.h"

#include "base/Session.h"
#include "numbers/NumberFile.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/ListHabits.h"
#include "ui/Messages.h"
#include "ui/SavePath.h"
#include "ui/SlotGuard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSet>
#include <QStringListModel>
#include <limits>

namespace {

const QString duplicateNumber = "This entry would create duplicate telephone numbers. "
                                "This value can not be entered in the grid.";
const QString fileFilter = "Comma Separated Files (*.CSV);;View All Files (*.*)";
constexpr int ManyNumbers = 2000; // fewer are written before a progress bar could be seen

} // namespace

uctNumberGrid::uctNumberGrid(QWidget* parent)
    : QWidget(parent),
      m_number(new QLineEdit(this)),
      m_grid(new QListView(this)),
      m_model(new QStringListModel(this)),
      m_hint(hintLabel(this)),
      m_count(hintLabel(this)),
      m_progress(new QProgressBar(this)) {
    m_number->setObjectName("txtNumber");
    m_number->setPlaceholderText("Type a number and press Enter");
    m_number->setMaxLength(std::numeric_limits<int>::max()); // a long list that is pasted is not cut
    m_number->installEventFilter(this);
    auto* caption = new QLabel("Telephone &number", this);
    caption->setBuddy(m_number);
    auto* add = new QPushButton("&Add", this);
    add->setObjectName("cmdAdd");
    add->setAutoDefault(false);
    add->setToolTip("Add the number to the list");

    m_grid->setObjectName("DBGrid1");
    m_grid->setModel(m_model);
    m_grid->setUniformItemSizes(true);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setAlternatingRowColors(true);
    m_grid->setAccessibleName("Telephone numbers");
    m_grid->installEventFilter(this);
    giveListHabits(*m_grid);
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &uctNumberGrid::selectionChanged);
    connect(m_model, &QAbstractItemModel::modelReset, this, &uctNumberGrid::selectionChanged);
    m_count->setObjectName("lblCount");
    m_hint->hide();
    m_progress->hide();

    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(m_number, 1);
    row->addWidget(add);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(m_hint);
    column->addWidget(m_grid, 1);
    column->addWidget(m_progress);
    column->addWidget(m_count);
    connect(add, &QPushButton::clicked, this, &uctNumberGrid::cmdAdd_Click);
}

void uctNumberGrid::attach(ScreenContext& context, NumberTable& table, const QString& screen) {
    m_context = &context;
    m_table = &table;
    m_screen = screen.toLatin1();
}

void uctNumberGrid::setHint(const QString& hint) {
    m_hint->setText(hint);
    m_hint->show();
    m_grid->setToolTip(hint);
}

void uctNumberGrid::refresh() {
    m_model->setStringList(m_table->numbers());
    showCount();
}

QStringList uctNumberGrid::numbers() const {
    return m_model->stringList();
}

bool uctNumberGrid::holdsJust(QStringList others) const {
    QStringList own = numbers();
    own.sort();
    others.sort();
    return own == others;
}

QStringList uctNumberGrid::selectedNumbers() const {
    QStringList numbers;
    for (const QModelIndex& index : m_grid->selectionModel()->selectedIndexes())
        numbers << index.data().toString();
    return numbers;
}

void uctNumberGrid::showCount() {
    const int count = m_model->rowCount();
    m_count->setText(count == 1 ? "1 number" : QLocale(QLocale::English).toString(count) + " numbers");
}

NumberTable::Progress uctNumberGrid::progress() {
    return [this](int done, int total) {
        m_progress->setVisible(total >= ManyNumbers && done < total);
        m_progress->setMaximum(total);
        m_progress->setValue(done);
        m_context->session.turn();
    };
}

void uctNumberGrid::cmdAdd_Click() {
    takeTyped();
    m_number->setFocus();
    m_number->selectAll();
}

bool uctNumberGrid::hasTyped() const {
    return !m_number->text().trimmed().isEmpty();
}

bool uctNumberGrid::takeTyped() {
    bool taken = false;
    const SlotName slot((m_screen + ".DBGrid1_BeforeUpdate").constData());
    guarded(
        *m_context, window(), [&] { taken = addTyped(); }, {}, slot);
    if (!taken) m_number->setFocus();
    return taken;
}

bool uctNumberGrid::addTyped() {
    if (!hasTyped()) return true;
    if (m_number->text().contains(',')) {
        m_context->messages.notice(window(),
                                   "A comma separates two numbers: please enter one number at a time.");
        return false;
    }
    const QStringList typed = numberFile::numbersIn(m_number->text());
    QSet<QString> known = m_table->keysAmong(typed);
    QStringList usable, refused;
    QString reason;
    for (const QString& number : typed) {
        const QString problem =
            known.contains(numberKey(number)) ? duplicateNumber : m_table->problem(number);
        (problem.isEmpty() ? usable : refused) << number;
        if (problem.isEmpty()) known.insert(numberKey(number));
        if (reason.isEmpty()) reason = problem;
    }
    if (!usable.isEmpty()) append(usable);
    m_number->setText(refused.join('\n'));
    if (refused.isEmpty()) return true;
    if (typed.size() > 1)
        reason += QString("\n\n%1 of the %2 numbers could not be added and are left in the box.")
                      .arg(refused.size())
                      .arg(typed.size());
    m_context->messages.notice(window(), reason);
    return false;
}

void uctNumberGrid::append(const QStringList& numbers) {
    m_table->add(numbers);
    m_model->setStringList(m_model->stringList() + numbers);
    selectAlone(*m_grid, m_model->index(m_model->rowCount() - 1));
    showCount();
    emit numberAdded(numbers.last());
}

void uctNumberGrid::loadFile() {
    const QString path =
        m_context->messages.openFile(window(), m_context->session.paths.ProjectFolder(), fileFilter);
    if (!path.isEmpty()) ReadCalledNos(path);
}

void uctNumberGrid::ReadCalledNos(const QString& path) {
    NumberTable::Fitting found;
    qsizetype count = 0;
    {
        WaitCursor wait;
        QStringList read = numberFile::read(path);
        count = read.size();
        const qsizetype lettered = read.removeIf(holdsLetters);
        found = m_table->fitting(read);
        found.leftOut.letters = int(lettered);
        if (!found.numbers.isEmpty()) {
            const auto hideProgress = qScopeGuard([this] { m_progress->hide(); });
            m_table->replace(found.numbers, progress());
            refresh();
        }
    }
    const QString reasons = found.leftOut.text(m_table->maxLength());
    if (found.numbers.isEmpty())
        m_context->messages.notice(window(),
                                   "The file holds no usable telephone numbers. The list is as it was.",
                                   Messages::Plain, {}, reasons);
    else if (!reasons.isEmpty())
        m_context->messages.notice(window(), QString("%1 of the file's %2 numbers were left out: %3.")
                                                 .arg(found.leftOut.total())
                                                 .arg(count)
                                                 .arg(reasons));
}

void uctNumberGrid::saveFile() {
    const QString path =
        pickSavePath(m_context->messages, window(),
                     QDir(m_context->session.paths.ProjectFolder()).filePath("numbers.CSV"), fileFilter);
    if (path.isEmpty()) return;
    if (QFile::exists(path)
        && !m_context->messages.ask(window(), "File already exists, do you want to continue?"))
        return;
    WaitCursor wait;
    numberFile::write(path, m_table->numbers());
}

bool uctNumberGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (watched == m_number && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            cmdAdd_Click();
            return true;
        }
        if (watched == m_grid && key == Qt::Key_Delete) {
            emit deletePressed();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
