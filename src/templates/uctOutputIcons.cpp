#include "templates/uctOutputIcons.h"

#include "reports/clsReport.h"
#include "ui/Icons.h"

#include <QPainter>
#include <array>

namespace {

constexpr std::array marks{"table", "document-print", "format-text-code", "mail-message"};
constexpr int side = 32;
constexpr int step = 38;

QIcon drawn(unsigned outputs) {
    QIcon all;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
        QPixmap row(step * int(marks.size()), side);
        row.fill(Qt::transparent);
        QPainter painter(&row);
        for (std::size_t i = 0; i < marks.size(); ++i)
            if (outputs >> i & 1U)
                painter.drawPixmap(step * int(i), 0, side, side,
                                   rowIcon(marks[i]).pixmap(QSize(side, side), mode));
        painter.end();
        all.addPixmap(row, mode);
    }
    return all;
}

} // namespace

QIcon outputIcons(clsReport& report) {
    static std::array<QIcon, 1U << marks.size()> icons;
    const unsigned outputs = unsigned(report.OutputExcel()) | unsigned(report.OutputPrint()) << 1
                             | unsigned(report.OutputCSV()) << 2 | unsigned(report.OutputEmail()) << 3;
    if (icons[outputs].isNull()) icons[outputs] = drawn(outputs);
    return icons[outputs];
}

QSize outputIconsSize(int height) {
    return {step * int(marks.size()) * height / side, height};
}
