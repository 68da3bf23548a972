#include "templates/frmTransfer.h"

#include "base/MailOptions.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "db/ServerText.h"
#include "projects/frmSQLServerDatabases.h"
#include "projects/modProjects.h"
#include "templates/modSubProjects.h"
#include "templates/modTemplates.h"
#include "ui/Cursors.h"
#include "ui/FollowFocus.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmTransfer.h"

#include <QToolButton>
#include <QTreeView>

namespace {

constexpr int subProjectType = 1; ///< TemplateType
constexpr int levels = 5;

} // namespace

frmTransfer::frmTransfer(ScreenContext& screenContext, QWidget* parent)
    : ScreenDialog(screenContext, parent),
      m_ui(std::make_unique<Ui::frmTransfer>()),
      m_template(session().db(), session().project) {
    m_ui->setupUi(this);
    setReadOnly(*m_ui->txtProject, true);
    setTextColour(*m_ui->lblMaxFileSize, Palette::subtleText());
    m_ui->lblOptions->setContentsMargins(0, (m_ui->Option3->sizeHint().height() - fontMetrics().height()) / 2,
                                         0, 0);
    entries().setMinimumHeight(fontMetrics().height() * 6);
    buildFooter();
    connectControls();
    setFilling(false);
    followFocus(*m_ui->scroll);
    resizeToText(*this, 115, 36);
}

frmTransfer::~frmTransfer() {
    session().project.edited = {};
}

void frmTransfer::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    footer.add("Save", "&Save", "document-save", "Save the template", this, &frmTransfer::cmdSave_Click);
    QAction* leave = footer.add("Exit", "E&xit", "dialog-close", "Return to the previous screen", this,
                                &frmTransfer::reject);
    footer.button(leave)->setObjectName("Command2");
}

void frmTransfer::connectControls() {
    connect(m_ui->txtTemplate, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_template.setTitle(text); });
    connect(m_ui->txtTemplate, &QLineEdit::returnPressed, this, &frmTransfer::cmdSave_Click);
    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmTransfer::cmdOpen_Click);
    connect(m_ui->cmdStop, &QPushButton::clicked, this, &frmTransfer::cmdStop_Click);
    connect(m_ui->chkEmailFiles, &QCheckBox::clicked, this, &frmTransfer::chkEmailFiles_Click);
    connect(m_ui->lstCC, &uctCheckList::changed, this, [this] { run([this] { showAddressGaps(); }); });
    for (const int type : {EveryCostCentre, EveryCentreAndNone, TickedCostCentres})
        connect(optionOf(type), &QRadioButton::clicked, this, [this, type] { Option_Click(type); });
    for (int level = 1; level <= levels; ++level)
        connect(OptCC(level), &QRadioButton::clicked, this, [this, level] { OptCC_Click(level); });
}

QRadioButton* frmTransfer::optionOf(int type) const {
    return type == EveryCentreAndNone  ? m_ui->Option1
           : type == TickedCostCentres ? m_ui->Option2
                                       : m_ui->Option3;
}

QWidget& frmTransfer::entries() const {
    return *m_ui->lstCC->findChild<QTreeView*>("lstEntries");
}

/// Null for a level that does not exist.
QRadioButton* frmTransfer::OptCC(int level) const {
    return findChild<QRadioButton*>(QString("OptCC%1").arg(level));
}

int frmTransfer::Setup(int templateId) {
    bool loaded = true;
    const bool done = load([&] {
        WaitCursor wait;
        refreshBillDates(session());
        if (templateId < 0) {
            m_template.setTemplateType(subProjectType);
            m_template.StartNew();
        } else {
            loaded = m_template.LoadTemplate(templateId);
            if (!loaded) return;
        }
        session().project.edited = {m_template.UnitabAccount(), m_template.BillType(),
                                    m_template.DefaultDates()};
        m_ui->header->setNote(templateId < 0 ? "Add a template" : "Edit a template");
        m_ui->lblMaxFileSize->setText("Largest attachment: " + GetMaxFileSizeDesc(session().db()));
        showProject();
        showChoices();
        loadCCTasks();
        m_before = choices();
    });
    return done && loaded ? 0 : -1;
}

/// In words; empty when the project has all tables. Projects of some kinds never have them all.
QString frmTransfer::lackingTables() const {
    const QStringList lacking = missingSubProjectTables(session());
    return lacking.isEmpty()
               ? QString()
               : "Tables that sub-projects are made from and this project lacks: " + lacking.join(", ");
}

bool frmTransfer::isProjectChosen() const {
    return m_projectProblem.isEmpty() && session().project.isOfAccount(m_template.UnitabAccount());
}

void frmTransfer::showProject() {
    const QString& account = m_template.UnitabAccount();
    const QString ofAccount = account.isEmpty() ? QString() : QString(" (bill account %1)").arg(account);
    m_ui->txtProject->setText(isProjectChosen() ? session().project.database + ofAccount : QString());
    m_ui->txtProject->setPlaceholderText("No project is selected" + ofAccount);
    const QString told = isProjectChosen() ? lackingTables() : m_projectProblem;
    setTextColour(*m_ui->lblProjectProblem,
                  m_projectProblem.isEmpty() ? Palette::subtleText() : Palette::problem());
    m_ui->lblProjectProblem->setText(told);
    m_ui->lblProjectProblem->setVisible(!told.isEmpty());
}

void frmTransfer::showChoices() {
    m_ui->txtTemplate->setText(m_template.Title());
    optionOf(m_template.CCSubType())->setChecked(true);
    showLevel();
    m_ui->chkEmailFiles->setChecked(m_template.CCSubEmail());
    for (const clsString& costCentre : m_template.CCs())
        m_ticked[m_template.CCSubLevel()] << costCentre.Value;
    m_ui->lstCC->setEnabled(m_template.CCSubType() == TickedCostCentres);
}

frmTransfer::Choices frmTransfer::choices() const {
    const bool onlyTicked = m_template.CCSubType() == TickedCostCentres;
    return {m_template.Title(),      m_template.UnitabAccount(),
            m_template.CCSubType(),  m_template.CCSubLevel(),
            m_template.CCSubEmail(), onlyTicked ? m_ui->lstCC->tickedKeys() : QStringList()};
}

void frmTransfer::cmdOpen_Click() {
    run([this] {
        const CurrentProject former = session().project;
        const bool stored = m_template.ID() != -1;
        if (!chooseProject(context(), this, stored ? m_template.UnitabAccount() : QString())) return;
        const bool otherAccount = !session().project.isOfAccount(m_template.UnitabAccount());
        if (otherAccount && m_template.ID() != -1) {
            session().project = former;
            messages().notice(this,
                              QString("Please select a project with the bill account of '%1' to continue.")
                                  .arg(m_template.UnitabAccount()));
            return;
        }
        m_projectProblem.clear();
        if (otherAccount) { // a new template goes with its project
            m_template.TakeProject();
            m_ticked.clear();
            m_ui->lstCC->setEntries({}, {});
        } else {
            m_ticked[m_template.CCSubLevel()] = m_ui->lstCC->tickedKeys();
        }
        showProject();
        loadCCTasks();
    });
}

void frmTransfer::Option_Click(int type) {
    if (type == TickedCostCentres && !isProjectChosen()) {
        messages().notice(this, "Please select a project to convert before selecting this option.");
        optionOf(m_template.CCSubType())->setChecked(true);
        return;
    }
    m_template.setCCSubType(qint16(type));
    m_ui->lstCC->setEnabled(type == TickedCostCentres);
    run([this] { showAddressGaps(); });
}

/// A stored level may be none of the five: then none is chosen.
void frmTransfer::showLevel() {
    for (int level = 1; level <= levels; ++level) {
        OptCC(level)->setAutoExclusive(false); // or one of them would stay chosen
        OptCC(level)->setChecked(level == m_template.CCSubLevel());
    }
    for (int level = 1; level <= levels; ++level) OptCC(level)->setAutoExclusive(true);
}

void frmTransfer::OptCC_Click(int level) {
    const qint16 former = m_template.CCSubLevel();
    const bool done = isProjectChosen() && run([&] {
                          m_ticked[former] = m_ui->lstCC->tickedKeys();
                          m_template.setCCSubLevel(qint16(level));
                          loadCCTasks();
                      });
    if (done) return;
    if (!isProjectChosen()) messages().notice(this, "You must select a project.");
    m_template.setCCSubLevel(former);
    showLevel();
}

/// An account without cost-centre tables leaves the template to be edited, but has nothing to choose from.
QStringList frmTransfer::readCostCentresOf(int level) {
    if (!isProjectChosen() || !OptCC(level)) return {};
    WaitCursor wait;
    try {
        return subProjectCostCentres(session(), level);
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw;
        m_projectProblem =
            QString("The project '%1' has no cost centres: %2").arg(session().project.database, error.text());
        showProject();
        return {};
    }
}

/// Fills the list with the cost centres of the level. A long list is filled in steps, between which the
/// user can stop it; ticked entries are there in any case.
void frmTransfer::loadCCTasks() {
    constexpr qsizetype step = 1000;
    const int level = m_template.CCSubLevel();
    const QStringList ticked = m_ticked.value(level);
    const QStringList names = readCostCentresOf(level);
    m_ui->lstCC->setEmptyText(isProjectChosen() ? "This level has no cost centres."
                                                : "Select a project to see its cost centres.");
    QSet<QString> unlisted;
    for (const QString& name : ticked) unlisted.insert(serverKey(name));
    QSet<QString> known;
    for (const QString& name : names) known.insert(serverKey(name));
    std::vector<CheckListEntry> entries;
    for (const QString& name : ticked)
        if (!known.contains(serverKey(name)))
            entries.push_back({name, {isProjectChosen() ? name + "   (not in this project)" : name}});

    m_stop = false;
    QWidget* const focused = focusWidget(); // a control that is off for a while loses it
    // A screen that is not shown yet is filled at one go: its caller must not be clicked meanwhile.
    const qsizetype first = isVisible() ? step : qMax(step, names.size());
    setFilling(names.size() > first);
    m_ui->prgFill->setRange(0, int(names.size()));
    qsizetype filled = 0;
    while (filled < names.size() && !m_stop) {
        const qsizetype chunk = qMax(first, filled); // each hands over the whole list
        for (const QString& name : names.mid(filled, chunk)) {
            entries.push_back({name, {name}});
            unlisted.remove(serverKey(name));
        }
        filled = qMin(filled + chunk, names.size());
        if (!m_filling) break;
        m_ui->lstCC->setEntries(entries, ticked);
        m_ui->prgFill->setValue(int(filled));
        QCoreApplication::processEvents();
    }
    for (const QString& name : names.mid(filled))
        if (unlisted.contains(serverKey(name))) entries.push_back({name, {name}});
    m_ui->lstCC->setEntries(std::move(entries), ticked);
    setFilling(false);
    if (focused) focused->setFocus();
    m_ui->lblFill->setText(
        QString("Stopped: %1 of %2 cost centres are listed. Choose the level again to list all.")
            .arg(filled)
            .arg(names.size()));
    m_ui->lblFill->setVisible(filled < names.size());
    m_listed = names;
    m_addressed.reset();
    showAddressGaps();
}

/// False, and the line says so, when the book cannot be read: a hint must not keep anybody from his template.
bool frmTransfer::readAddresses() {
    try {
        m_addressed = centresWithAddress(session(), m_template.UnitabAccount(), m_template.CCSubLevel());
        m_defaultEmail = readDefaultEmail(session().db());
        return true;
    } catch (const DbError& error) {
        if (error.connectionLost() || error.number() == DbError::Stopped) throw;
        session().log.write("frmTransfer.readAddresses", error);
        m_addressed.reset();
        m_ui->lblAddressGaps->setText("The e-mail address book cannot be read: " + error.text());
        return false;
    }
}

/// Before anybody misses his e-mail: for which cost centres the address book has no entry.
void frmTransfer::showAddressGaps() {
    constexpr qsizetype named = 5;
    QStringList lacking = m_template.CCSubType() == TickedCostCentres ? m_ui->lstCC->tickedKeys() : m_listed;
    m_ui->lblAddressGaps->setVisible(m_template.CCSubEmail() && !lacking.isEmpty());
    if (m_ui->lblAddressGaps->isHidden()) return;
    if (!m_addressed && !readAddresses()) return;
    lacking.removeIf([this](const QString& centre) { return m_addressed->contains(serverKey(centre)); });
    QString text = lacking.isEmpty()
                       ? "Each of the cost centres has an e-mail address."
                       : "Without an e-mail address of their own: " + lacking.mid(0, named).join(", ");
    if (lacking.size() > named) text += QString(" and %1 more").arg(lacking.size() - named);
    if (!lacking.isEmpty())
        text += m_defaultEmail.isEmpty() ? QString(". There is no default address either.")
                                         : ". Their files go to " + m_defaultEmail + '.';
    setTextColour(*m_ui->lblAddressGaps, lacking.isEmpty() || !m_defaultEmail.isEmpty()
                                             ? Palette::subtleText()
                                             : Palette::problem());
    m_ui->lblAddressGaps->setText(text);
}

/// While the list is filled there is nothing to do but to watch or to stop.
void frmTransfer::setFilling(bool filling) {
    m_filling = filling;
    m_ui->lblFill->setText("Reading the cost centres");
    for (QWidget* widget : std::initializer_list<QWidget*>{m_ui->lblFill, m_ui->prgFill, m_ui->cmdStop})
        widget->setVisible(filling);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_ui->txtTemplate, m_ui->cmdOpen, m_ui->paneOptions,
                                         m_ui->paneLevels, m_ui->chkEmailFiles, m_ui->footer})
        widget->setEnabled(!filling);
    m_ui->lstCC->setEnabled(!filling && m_template.CCSubType() == TickedCostCentres);
}

void frmTransfer::cmdStop_Click() {
    m_stop = true;
}

void frmTransfer::chkEmailFiles_Click(bool ticked) {
    m_template.setCCSubEmail(ticked);
    if (ticked)
        messages().notice(this,
                          "Cost centre sub projects can be very large in size.\r\r"
                          "E-mailing large files may cause problems to your or the recipients e-mail system.",
                          Messages::Information, "E-mail system");
    run([this] { showAddressGaps(); });
}

bool frmTransfer::refused(const QString& text, QWidget* field) {
    messages().notice(this, text);
    field->setFocus();
    return false;
}

bool frmTransfer::checkChoices() {
    if (m_template.Title().trimmed().isEmpty())
        return refused("Please enter a Template name", m_ui->txtTemplate);
    if (m_template.UnitabAccount().isEmpty()) return refused("You must select a project.", m_ui->cmdOpen);
    if (!OptCC(m_template.CCSubLevel())) return refused("Please select a cost centre level.", OptCC(1));
    m_template.CCs().Clear();
    if (m_template.CCSubType() != TickedCostCentres) return true;
    const QStringList ticked = m_ui->lstCC->tickedKeys();
    for (const QString& name : ticked) m_template.CCs().AddString(name);
    return !ticked.isEmpty() || refused("Please select a cost centre.", &entries());
}

bool frmTransfer::confirmSave() {
    messages().notice(
        this,
        "Any existing files created for each cost centre will be over-written when this template "
        "runs.\r\rIf you want to save any existing cost centre sub projects please move them to another "
        "directory.",
        Messages::Information);
    const QString question = activeSchedulesQuestion(session().db(), m_template.ID());
    return question.isEmpty() || messages().ask(this, question);
}

void frmTransfer::cmdSave_Click() {
    run(
        [this] {
            if (!m_filling && checkChoices() && confirmSave()) save();
        },
        "Error saving template");
}

void frmTransfer::save() {
    QString newTitle;
    if (m_template.ID() != -1 && !readTemplateType(session().db(), m_template.ID())) {
        if (!messages().ask(this, "This template has been deleted by somebody else in the meantime.\n\n"
                                  "Do you want to save it as a new one?"))
            return;
        newTitle = m_template.Title();
    }
    const auto store = [&](clsTemplate::WhenChanged whenChanged) {
        WaitCursor wait;
        return m_template.SaveTemplate(newTitle, whenChanged);
    };
    clsTemplate::SaveResult result = store(clsTemplate::KeepTheirs);
    if (result == clsTemplate::ChangedMeanwhile) {
        if (!messages().ask(this, "Another user changed this template while you were editing it.\n\n"
                                  "Do you want to replace those changes by yours?"))
            return;
        result = store(clsTemplate::Overwrite);
    }
    if (result == clsTemplate::Saved) return callBackAndClose();
    refused(result == clsTemplate::TitleUsed ? "Template name already exists" : "Error saving template",
            m_ui->txtTemplate);
}

bool frmTransfer::mayClose() {
    if (m_filling) {
        m_stop = true;
        return false;
    }
    return choices() == m_before || messages().ask(this, "Are you sure you want to cancel your changes?");
}
