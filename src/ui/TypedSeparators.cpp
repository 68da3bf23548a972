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
        if (isEndOfTyping(*event)) completeYear();
        if (isOtherChoice(*event)) {
            forget();
            m_day = 0;
        }
        if (event->type() != QEvent::KeyPress) return false;
        const QString text = static_cast<QKeyEvent*>(event)->text();
        const QChar typed = text.isEmpty() ? QChar() : text.front();
        if (QStringLiteral(":.,;-/ ").contains(typed) && !typed.isNull()) return typeSeparator();
        if (typed.isDigit() && m_edit.currentSection() == QDateTimeEdit::MonthSection)
            return typeMonthDigit(typed);
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

    /// A day that is chosen in another way than by typing, or taken back, is meant as it is.
    static bool isOtherChoice(const QEvent& event) {
        if (event.type() == QEvent::KeyPress) {
            const auto& press = static_cast<const QKeyEvent&>(event);
            static const QList others{Qt::Key_Up,       Qt::Key_Down,      Qt::Key_PageUp,
                                      Qt::Key_PageDown, Qt::Key_Backspace, Qt::Key_Delete};
            const bool isCommand = press.modifiers() & Qt::ControlModifier; // such as to paste
            return isCommand || others.contains(press.key());
        }
        return event.type() == QEvent::FocusIn || event.type() == QEvent::FocusOut
               || event.type() == QEvent::Wheel || event.type() == QEvent::MouseButtonPress;
    }

    void forget() {
        m_typedIn = QDateTimeEdit::NoSection;
        m_monthDigits.clear();
    }

    bool typeSeparator() {
        const bool leftByItself =
            m_typedIn != QDateTimeEdit::NoSection && m_typedIn != m_edit.currentSection();
        forget();
        if (!leftByItself) goOn();
        return true;
    }

    /// Months are shown by name; the box itself would drop a digit. There is no month 13: then the former
    /// stays.
    bool typeMonthDigit(QChar digit) {
        if (m_monthDigits.isEmpty()) m_formerMonth = m_edit.date().month();
        m_monthDigits += digit;
        int month = m_monthDigits.toInt();
        const bool complete = m_monthDigits.size() == 2 || month > 1;
        if (month > 12 || (complete && month == 0)) month = m_formerMonth;
        if (month > 0) m_edit.setDate(m_edit.date().addMonths(month - m_edit.date().month()));
        m_typedIn = QDateTimeEdit::MonthSection;
        m_edit.setSelectedSection(QDateTimeEdit::MonthSection);
        if (complete) {
            m_monthDigits.clear();
            goOn();
        }
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
    QString m_monthDigits;                                       ///< of a month's number
    int m_formerMonth = 0;                                       ///< before it was typed
    int m_day = 0;                                               ///< as typed
};

} // namespace

void takeTypedSeparators(QDateTimeEdit& edit) {
    new TypedSeparators(edit);
}

void showTime(QDateTimeEdit& edit, QTime time) {
    edit.setDisplayFormat(time.second() != 0 ? "HH:mm:ss" : "HH:mm");
    edit.setTime(time);
}
