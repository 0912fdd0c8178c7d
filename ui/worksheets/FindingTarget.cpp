#include "ui/worksheets/FindingTarget.h"

#include <QRegularExpression>

#include "core/Globals.h"
#include "ui/main/QtText.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

/// "A-8-1 Part I", "A81p1", "B-1  Part-3", "E": letter, numbers, part.
const QRegularExpression& WorksheetName() {
    static const QRegularExpression pattern(
        R"(^(?:Worksheet |Schedule )?([A-GS])-?(\d?)-?(\d?)(?:p(\d)|,?\s*Part[ -]*(III|II|I|\d))?(?![A-Za-z0-9]))",
        QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

const QRegularExpression& LineNumber() {
    static const QRegularExpression pattern(R"(\blines?(?: number)? (\d+(?:\.\d+)?))",
                                            QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

/// "column 4", "col. 4", "column Col_4", "column CC_401"
const QRegularExpression& ColumnName() {
    static const QRegularExpression pattern(
        R"(\bcol(?:umn|\.)?s?(?: number)? (\d+(?:\.\d+)?|(?:Col|CC)_\d+))",
        QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

/// "Worksheet A: LineNum (4.02) cost center ..."
const QRegularExpression& KeyInBrackets() {
    static const QRegularExpression pattern(R"(: (?:LineNum|SeqNum) \((\d+(?:\.\d+)?)\))");
    return pattern;
}

QString PartNumber(const QString& part) {
    if (part.startsWith('I', Qt::CaseInsensitive)) return QString::number(part.size());
    return part;
}

constexpr int kFirstTotalLine = 52;

/// A worksheet in parts may be named without one: its totals stand in the third.
std::string ItemNamed(const QString& bare, const QString& part, std::optional<Currency> line) {
    std::vector<QString> candidates;
    if (!part.isEmpty()) candidates.push_back(bare + "p" + part);
    candidates.push_back(bare);
    const bool total = line && *line >= Currency(kFirstTotalLine);
    candidates.push_back(bare + (total ? "p3" : "p1"));
    for (const QString& item : candidates)
        if (const Worksheet* sheet = FindWorksheet(S(item))) return std::string(sheet->Item);
    return {};
}

std::optional<Currency> LineIn(const QString& message) {
    for (const QRegularExpression& pattern : {KeyInBrackets(), LineNumber()}) {
        const auto match = pattern.match(message);
        if (match.hasMatch()) return Currency(match.captured(1).toDouble());
    }
    return std::nullopt;
}

}  // namespace

std::optional<FindingTarget> TargetOf(const std::string& message) {
    const QString text = Q(message);
    const auto name = WorksheetName().match(text);
    if (!name.hasMatch()) return std::nullopt;
    const QString bare = name.captured(1).toUpper() + name.captured(2) + name.captured(3);
    const QString part =
        PartNumber(name.captured(4).isEmpty() ? name.captured(5) : name.captured(4));
    const std::optional<Currency> line = LineIn(text);
    const std::string item = ItemNamed(bare, part, line);
    if (item.empty()) return std::nullopt;
    return FindingTarget{item, line, S(ColumnName().match(text).captured(1))};
}

}  // namespace zolmara::ui
