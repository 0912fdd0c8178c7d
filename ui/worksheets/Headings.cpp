#include "ui/worksheets/Headings.h"

#include <QStringList>

namespace zolmara::ui {
namespace {

constexpr double kRoom = 1.05;

/// The lines of a title, word by word.
class Folder {
public:
    Folder(double width, const TextWidth& measure) : width_(width), measure_(measure) {}

    /// A word that is too wide for the column goes on behind its hyphens.
    void Add(const QString& word) {
        const auto hyphen = word.indexOf('-', 1);
        const bool parts = Width(word) > width_ && hyphen > 0 && hyphen + 1 < word.size();
        Put(parts ? word.left(hyphen + 1) : word, lines_.isEmpty() ? "" : " ");
        if (parts) AddRest(word.mid(hyphen + 1));
    }
    QString Text() const { return lines_.join('\n'); }

private:
    double Width(const QString& text) const { return measure_(text) * kRoom; }

    void AddRest(const QString& rest) {
        const auto hyphen = rest.indexOf('-');
        const bool parts = hyphen > 0 && hyphen + 1 < rest.size();
        Put(parts ? rest.left(hyphen + 1) : rest, "");
        if (parts) AddRest(rest.mid(hyphen + 1));
    }

    void Put(const QString& piece, const QString& joint) {
        const double needed = Width(joint) + Width(piece);
        if (lines_.isEmpty() || taken_ + needed > width_) {
            lines_ << piece;
            taken_ = Width(piece);
        } else {
            lines_.back() += joint + piece;
            taken_ += needed;
        }
    }

    double width_;
    const TextWidth& measure_;
    double taken_ = 0;
    QStringList lines_;
};

}  // namespace

QString FoldTitle(const QString& title, double width, const TextWidth& measure) {
    if (title.contains('|')) {
        QStringList parts;
        for (const QString& part : title.split('|', Qt::SkipEmptyParts))
            if (!part.trimmed().isEmpty()) parts << FoldTitle(part, width, measure);
        return parts.join('\n');
    }
    Folder folder(width, measure);
    for (const QString& word : title.simplified().split(' ')) folder.Add(word);
    return folder.Text();
}

QString Heading(const QString& number, const QString& title, double width,
                const TextWidth& measure) {
    const QString folded = FoldTitle(title, width, measure);
    if (number.isEmpty()) return folded;
    return folded.isEmpty() ? number : number + '\n' + folded;
}

}  // namespace zolmara::ui
