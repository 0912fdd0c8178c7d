#include "ui/worksheets/Headings.h"

#include <QStringList>

namespace zolmara::ui {
namespace {

constexpr double kRoom = 1.05;

}  // namespace

QString FoldTitle(const QString& title, double width, const TextWidth& measure) {
    if (title.contains('|')) {
        QStringList parts;
        for (const QString& part : title.split('|', Qt::SkipEmptyParts))
            if (!part.trimmed().isEmpty()) parts << FoldTitle(part, width, measure);
        return parts.join('\n');
    }
    QStringList lines;
    double taken = 0;
    const double blank = measure(" ") * kRoom;
    for (const QString& word : title.simplified().split(' ')) {
        const double needed = measure(word) * kRoom;
        if (lines.isEmpty() || taken + blank + needed > width) {
            lines << word;
            taken = needed;
        } else {
            lines.back() += ' ' + word;
            taken += blank + needed;
        }
    }
    return lines.join('\n');
}

QString Heading(const QString& number, const QString& title, double width,
                const TextWidth& measure) {
    const QString folded = FoldTitle(title, width, measure);
    if (number.isEmpty()) return folded;
    return folded.isEmpty() ? number : number + '\n' + folded;
}

}  // namespace zolmara::ui
