#include "ui/TypedSeparators.h"

#include <QDateTimeEdit>
#include <QKeyEvent>

namespace {

constexpr int longestMonth = 31;

class TypedSeparators : public QObject {
public:
    explicit TypedSeparators(QDateTimeEdit& edit) : QObject(&edit), m_edit(edit) {
        edit.installEventFilter(this);
        connect(&edit, &QDateTimeEdit::dateChanged, this, &TypedSeparators::bringDayBack);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) {
            forget();
            m_day = 0;
        }
        if (isEndOfTyping(*event)) completeYear();
        if (event->type() != QEvent::KeyPress) return false;
        const QString text = static_cast<QKeyEvent*>(event)->text();
        const QChar typed = text.isEmpty() ? QChar() : text.front();
        if (QStringLiteral(":.,;-/ ").contains(typed) && !typed.isNull()) return typeSeparator();
        if (typed.isDigit() && m_edit.currentSection() == QDateTimeEdit::MonthSection)
            return typeMonthDigit(typed.digitValue());
        forget();
        if (typed.isLetterOrNumber()) m_typedIn = m_edit.currentSection();
        if (typed.isDigit() && m_typedIn == QDateTimeEdit::DaySection) {
            const int both = 10 * m_day + typed.digitValue();
            m_day = both <= longestMonth ? both : typed.digitValue();
        }
        return false;
    }

private:
    /// Leaving, Return, Tab, and the keys of an action, which may save.
    static bool isEndOfTyping(const QEvent& event) {
        if (event.type() == QEvent::FocusOut) return true;
        if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) return false;
        const QString text = static_cast<const QKeyEvent&>(event).text();
        return text.isEmpty() || !text.front().isPrint();
    }

    void forget() {
        m_typedIn = QDateTimeEdit::NoSection;
        m_monthDigit = 0;
    }

    bool typeSeparator() {
        const bool leftByItself =
            m_typedIn != QDateTimeEdit::NoSection && m_typedIn != m_edit.currentSection();
        forget();
        if (!leftByItself) goOn();
        return true;
    }

    /// Months are shown by name; the box itself would drop a digit.
    bool typeMonthDigit(int digit) {
        const int month = m_monthDigit == 1 && digit <= 2 ? 10 + digit : digit;
        const bool complete = month > 1 || m_monthDigit != 0;
        const QDate shown = m_edit.date();
        if (month >= 1 && month <= 12) m_edit.setDate(shown.addMonths(month - shown.month()));
        m_monthDigit = complete ? 0 : digit;
        m_typedIn = QDateTimeEdit::MonthSection;
        m_edit.setSelectedSection(QDateTimeEdit::MonthSection);
        if (complete) goOn();
        return true;
    }

    /// The 31st, typed while a shorter month was shown, is meant for the month to come.
    void bringDayBack(QDate date) {
        const int day = qMin(m_day, date.daysInMonth());
        if (day <= date.day()) return;
        m_edit.setDate(date.addDays(day - date.day()));
        if (m_typedIn == QDateTimeEdit::MonthSection) goOn();
    }

    /// "27" is 2027; the box itself would take the former year back.
    void completeYear() {
        const QString year = m_edit.sectionText(QDateTimeEdit::YearSection);
        if (m_typedIn != QDateTimeEdit::YearSection || year.size() != 2) return;
        m_edit.setDate(m_edit.date().addYears(2000 + year.toInt() - m_edit.date().year()));
    }

    void goOn() {
        const int next = m_edit.currentSectionIndex() + 1;
        if (next < m_edit.sectionCount()) m_edit.setSelectedSection(m_edit.sectionAt(next));
    }

    QDateTimeEdit& m_edit;
    QDateTimeEdit::Section m_typedIn = QDateTimeEdit::NoSection; ///< the last letter or digit
    int m_monthDigit = 0;                                        ///< the first of a month's number
    int m_day = 0;                                               ///< as typed
};

} // namespace

void takeTypedSeparators(QDateTimeEdit& edit) {
    new TypedSeparators(edit);
}
