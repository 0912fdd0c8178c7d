#include "worksheets/ColumnCaption.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::size_t kLineWidth = 13;
constexpr std::size_t kStretch = 12;  ///< of a title, in which a line may end
constexpr std::size_t kShortest = 4;

/// Where a line of a title ends, in characters, and what it ends with.
struct Break {
    std::size_t Position = 0;
    bool Hyphen = false;
};

bool IsLetter(std::string_view character) {
    const auto byte = static_cast<unsigned char>(character.empty() ? ' ' : character[0]);
    return byte >= 0x80 || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

/// Characters ahead of an ending that closes a word within the stretch; 0 without one.
std::size_t BeforeEnding(std::string_view title, std::string_view ending) {
    for (std::size_t end = kStretch; end > ending.size(); --end) {
        const std::size_t start = end - ending.size();
        if (SameText(MidText(title, start + 1, ending.size()), ending) &&
            !IsLetter(MidText(title, end + 1, 1))) {
            return start;
        }
    }
    return 0;
}

std::size_t LastOf(std::string_view title, std::string_view character) {
    for (std::size_t i = kStretch; i > 0; --i) {
        if (MidText(title, i, 1) == character) return i;
    }
    return 0;
}

Break FindBreak(std::string_view title) {
    Break found;
    for (const std::string_view mark : {" ", "-", "&", "/"}) {
        found.Position = std::max(found.Position, LastOf(title, mark));
    }
    for (const std::string_view ending : {"tion", "ing", "ment"}) {
        const std::size_t position = BeforeEnding(title, ending);
        if (position > found.Position) found = {position, true};
    }
    if (found.Position < kShortest) return {kStretch, false};
    return found;
}

std::vector<std::string> SplitHeading(std::string_view heading) {
    std::vector<std::string> lines;
    for (std::size_t bar = heading.find('|'); bar != std::string_view::npos;
         bar = heading.find('|')) {
        lines.emplace_back(heading.substr(0, bar));
        heading.remove_prefix(bar + 1);
    }
    lines.emplace_back(heading);
    return lines;
}

std::size_t WidthOf(std::string_view field) {
    if (SameText(field, "LineNum") || SameText(field, "Col_0")) return 7;
    return SameText(field, "Description") ? 36 : kLineWidth;
}

std::string Centred(std::string_view line, std::size_t width) {
    const std::size_t length = TextLength(line);
    if (length >= width) return std::string(LeftText(line, width));
    return std::string((width - length) / 2, ' ') + std::string(line);
}

/// Columns are asked for one after the other in the order of their cost centers: mostly it is the
/// next one.
bool GoToCostCenter(Recordset& costCenters, Currency line) {
    if (costCenters.Empty()) return false;
    if (!costCenters.NoMatch() && !costCenters.Eof()) costCenters.MoveNext();
    if (!costCenters.NoMatch() && !costCenters.Eof() && CurOr(costCenters["LineNum"]) == line)
        return true;
    costCenters.FindFirst("LineNum=?", {line});
    return !costCenters.NoMatch();
}

std::vector<std::string> CostCenterLines(Recordset& costCenters, std::string_view field,
                                         std::string_view item) {
    if (!GoToCostCenter(costCenters, LineOfColumn(field))) return CutTitle("<Bad CC Num>");
    return CutTitle(CostCenterTitle(costCenters["CCName"], costCenters["StatLabel1"],
                                    costCenters["StatLabel2"], ShowsBasis(item)));
}

std::vector<std::string> HeadingLines(Recordset& costCenters, std::string_view field,
                                      std::string_view item) {
    if (IsCostCenterColumn(field)) return CostCenterLines(costCenters, field, item);
    const std::optional<WorksheetField> found = FindField(item, field);
    return found ? SplitHeading(found->Title) : std::vector<std::string>{};
}

}  // namespace

bool ShowsBasis(std::string_view item) {
    return SameText(LeftText(item, 2), "C1") || SameText(LeftText(item, 2), "D1");
}

std::string CostCenterTitle(const Variant& name, const Variant& statLabel1,
                            const Variant& statLabel2, bool withBasis) {
    std::string title = StrOr(name, "Not Named");
    if (!withBasis) return title;
    const std::string joined =
        fmt::format("{} {}", Trim(StrOr(statLabel1)), Trim(StrOr(statLabel2)));
    const std::string_view words = Trim(joined);
    if (words.empty()) return title;
    return words.front() == '(' ? fmt::format("{} {}", words, title)
                                : fmt::format("({}) {}", words, title);
}

std::vector<std::string> CutTitle(std::string title) {
    std::vector<std::string> lines;
    while (TextLength(title) >= kLineWidth) {
        const Break end = FindBreak(title);
        std::string line(RTrim(LeftText(title, end.Position)));
        if (end.Hyphen) line += '-';
        lines.push_back(std::move(line));
        title = std::string(LTrim(MidText(title, end.Position + 1)));
    }
    lines.push_back(std::move(title));
    if (lines.size() > kCaptionLines) lines.erase(lines.begin(), lines.end() - kCaptionLines);
    return lines;
}

std::array<std::string, kCaptionLines> ColumnCaptions(Recordset& costCenters,
                                                      std::string_view fieldName,
                                                      std::string_view item) {
    std::array<std::string, kCaptionLines> captions;
    const std::vector<std::string> lines = HeadingLines(costCenters, fieldName, item);
    const std::size_t width = WidthOf(fieldName);
    auto caption = captions.rbegin();
    for (auto line = lines.rbegin(); line != lines.rend() && caption != captions.rend(); ++line) {
        *caption++ = line->empty() ? std::string() : Centred(*line, width);
    }
    return captions;
}

std::string ColumnCaption(Recordset& costCenters, std::string_view fieldName, int captionLine,
                          std::string_view item) {
    if (!Between(captionLine, 1, kCaptionLines)) return {};
    return ColumnCaptions(costCenters, fieldName, item)[static_cast<std::size_t>(captionLine - 1)];
}

}  // namespace zolmara
