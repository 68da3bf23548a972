#include "ui/Palette.h"

#include "base/SettingsStore.h"
#include "ui/DesktopColours.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QFont>
#include <QHeaderView>
#include <QIcon>
#include <QLayout>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTableView>
#include <QTextCharFormat>

/// In no namespace, as the macro wants it.
static void findCarriedIcons() {
    Q_INIT_RESOURCE(icons); // not found by itself in a static library
    QIcon::setThemeSearchPaths({":/icons"});
}

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

/// For the scheme that was applied.
QColor either(const char* light, const char* dark) {
    return QColor(QLatin1StringView(isDark(QGuiApplication::palette()) ? dark : light));
}

/// Black, white and yellow, for who sees little.
void sharpen(QPalette& palette) {
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                            QPalette::ToolTipBase, QPalette::HighlightedText})
        palette.setColor(role, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::PlaceholderText})
        palette.setColor(role, Qt::white);
    for (const auto role : {QPalette::Highlight, QPalette::Link}) palette.setColor(role, Qt::yellow);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(170, 170, 170));
}

QPalette colours(Palette::Scheme scheme) {
    const auto either = [scheme](const char* light, const char* dark) {
        return QColor(QLatin1StringView(scheme == Palette::Light ? light : dark));
    };
    QPalette palette;
    palette.setColor(QPalette::Window, either("#f3f5f7", "#23282d"));
    palette.setColor(QPalette::WindowText, either("#1c2730", "#e6eaed"));
    palette.setColor(QPalette::Base, either("#ffffff", "#1b1f23"));
    palette.setColor(QPalette::AlternateBase, either("#f7f9fb", "#20252a"));
    palette.setColor(QPalette::Text, either("#1c2730", "#e6eaed"));
    palette.setColor(QPalette::Button, either("#e9edf1", "#2f363d"));
    palette.setColor(QPalette::ButtonText, either("#1c2730", "#e6eaed"));
    palette.setColor(QPalette::BrightText, either("#b3261e", "#ff8a80"));
    palette.setColor(QPalette::Highlight, either("#1f6f8b", "#2f86a6"));
    palette.setColor(QPalette::HighlightedText, QColor("#ffffff"));
    palette.setColor(QPalette::ToolTipBase, either("#fffbe6", "#3a4149"));
    palette.setColor(QPalette::ToolTipText, either("#1c2730", "#e6eaed"));
    palette.setColor(QPalette::PlaceholderText, either("#6b7780", "#96a1aa"));
    palette.setColor(QPalette::Link, either("#1f6f8b", "#6cc3de"));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, either("#97a1a9", "#6d7780"));
    if (scheme == Palette::HighContrast) sharpen(palette);
    return palette;
}

/// Makes visible what the base style hides: outlines of boxes and buttons on a dark window,
/// and which control has the keyboard, be it a button, a row or a whole list.
class VisibleStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_Frame) return drawFrame(*option, *painter);
        if (element == PE_FrameFocusRect) return drawFocus(option, painter, widget);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (!isDark(option->palette)) return;
        drawIndicatorOutline(element, *option, *painter);
        if (element == PE_FrameLineEdit) drawBoxOutline(*option, *painter);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (isDark(option->palette) && (control == CC_SpinBox || control == CC_ComboBox))
            drawBoxOutline(*option, *painter);
    }

    using QProxyStyle::polish;
    void polish(QWidget* widget) override {
        QProxyStyle::polish(widget);
        if (auto* calendar = qobject_cast<QCalendarWidget*>(widget)) polishCalendar(*calendar);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint || !qobject_cast<QCalendarWidget*>(watched))
            return QProxyStyle::eventFilter(watched, event);
        auto* calendar = static_cast<QWidget*>(watched);
        QPainter painter(calendar);
        painter.setPen(Palette::subtleText());
        painter.drawRect(calendar->rect().adjusted(0, 0, -1, -1));
        return false;
    }

private:
    /// It opens without an edge of its own, and its weekends are of a red that is made for white.
    void polishCalendar(QCalendarWidget& calendar) {
        QTextCharFormat weekend;
        weekend.setForeground(Palette::problem());
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
            calendar.setWeekdayTextFormat(day, weekend);
        calendar.layout()->setContentsMargins(1, 1, 1, 1);
        if (auto* days = calendar.findChild<QTableView*>()) // or the last week is cut off
            days->verticalHeader()->setMinimumSectionSize(1);
        calendar.installEventFilter(this);
    }

    /// Filled, because a stroked outline loses edges at some sizes.
    static void drawFrame(const QStyleOption& option, QPainter& painter) {
        const QColor line = option.state & State_HasFocus ? option.palette.color(QPalette::Highlight)
                                                          : Palette::frameLine().darker(115);
        const QRect all = option.rect;
        for (const QRect& edge :
             {QRect(all.topLeft(), QSize(all.width(), 1)), QRect(all.bottomLeft(), QSize(all.width(), 1)),
              QRect(all.topLeft(), QSize(1, all.height())), QRect(all.topRight(), QSize(1, all.height()))})
            painter.fillRect(edge, line);
    }

    void drawFocus(const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
        QStyleOptionFocusRect shown;
        if (const auto* given = qstyleoption_cast<const QStyleOptionFocusRect*>(option)) shown = *given;
        shown.state |= State_KeyboardFocusChange; // else only after the Tab key
        QProxyStyle::drawPrimitive(PE_FrameFocusRect, &shown, painter, widget);
    }

    static void drawBoxOutline(const QStyleOption& option, QPainter& painter) {
        if (option.state & State_HasFocus) return; // has an outline that is seen
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Palette::frameLine().lighter(130));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter.restore();
    }

    static void drawIndicatorOutline(PrimitiveElement element, const QStyleOption& option,
                                     QPainter& painter) {
        const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
        if (!box && element != PE_IndicatorRadioButton) return;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(option.palette.color(
            option.state & State_Enabled ? QPalette::Active : QPalette::Disabled, QPalette::PlaceholderText));
        painter.setBrush(Qt::NoBrush);
        const QRectF outline = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        box ? painter.drawRect(outline) : painter.drawEllipse(outline);
        painter.restore();
    }
};

} // namespace

namespace Palette {

QString setting() {
    return getSetting("VWT", "Appearance", "Palette", "");
}

void setSetting(const QString& setting) {
    saveSetting("VWT", "Appearance", "Palette", setting);
}

Scheme wantedScheme() {
    const QString wanted = setting();
    if (wanted == "light") return Light;
    if (wanted == "dark") return Dark;
    if (wanted == "contrast") return HighContrast;
    return desktopScheme();
}

void apply(QApplication& application, Scheme scheme) {
    application.setStyle(new VisibleStyle("Fusion"));
    application.setPalette(colours(scheme));
    findCarriedIcons();
    QIcon::setThemeName(scheme == Light ? "breeze" : "breeze-dark");
}

void applyFont(QApplication& application, const QString& family) {
    QFont::insertSubstitution("Calibri", "Carlito");
    QFont font = application.font();
    font.setFamily(family);
    font.setPointSizeF(qMax(font.pointSizeF(), 10.0) + 1); // these faces are smaller than most at one size
    application.setFont(font);
}

QColor headerFrom() {
    return either("#0f4c66", "#0c2f40");
}
QColor headerTo() {
    return either("#2a93a8", "#1c6274");
}
QColor headerText() {
    return QColor("#ffffff");
}
QColor subtleText() {
    return either("#5c6972", "#9fabb4");
}
QColor frameLine() {
    return either("#cdd5db", "#3d454d");
}
QColor standardSchedule() {
    return either("#ffffff", "#1b1f23");
}
QColor multiSelectCostCentre() {
    return either("#d9eef6", "#16404f");
}
QColor changedValue() {
    return either("#fff3cf", "#4a3d16");
}
QColor problem() {
    return either("#b3261e", "#ff8a80");
}

} // namespace Palette
