#include "spreadsheet/SheetPage.h"

#include <algorithm>
#include <cmath>

#include "core/Globals.h"
#include "forms/FormTable.h"

namespace zolmara {

namespace {

/// The form prints the others across the page.
constexpr std::string_view kPortraits[] = {"A8", "A7p?", "G", "G1", "Sp1", "CostCenters", "ES"};

/// What a page holds at the smallest size that is still read with ease.
constexpr double kAcross = 150;
constexpr double kUpright = 115;

}  // namespace

bool IsLandscape(const std::string& item) {
    return std::ranges::none_of(
        kPortraits, [&](std::string_view pattern) { return FitsPattern(pattern, item); });
}

double CharactersOf(const FormColumn& column) {
    constexpr double kTwipsPerCharacter = 105;
    return column.Width / kTwipsPerCharacter;
}

int PagesAcross(const WorksheetForm& form, bool landscape) {
    const double page = landscape ? kAcross : kUpright;
    double frozen = 0;
    double others = 0;
    for (int i = 0; i < static_cast<int>(form.Columns.size()); ++i) {
        const FormColumn& column = form.Columns[static_cast<std::size_t>(i)];
        if (column.Hidden) continue;
        (i < form.FrozenColumns ? frozen : others) += CharactersOf(column);
    }
    const bool fits = frozen + others <= page || frozen >= page;
    return fits ? 1 : static_cast<int>(std::ceil(others / (page - frozen)));
}

int LinesIn(std::string_view text, double characters) {
    constexpr double kLettersInFigure = 1.15;
    const double letters = std::max(characters * kLettersInFigure, 1.0);
    int lines = 0;
    for (;;) {
        const std::size_t end = text.find('\n');
        const auto length = static_cast<double>(text.substr(0, end).size());
        lines += std::max(1, static_cast<int>(std::ceil(length / letters)));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace zolmara
