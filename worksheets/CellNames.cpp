#include "worksheets/CellNames.h"

#include <fmt/format.h>

#include <array>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

std::string FormName(std::string_view item) {
    static constexpr std::array<std::string_view, 3> kParts = {"I", "II", "III"};
    if (FindWorksheet(item) == nullptr) return std::string(item);
    std::string name(item.substr(0, 1));
    std::size_t i = 1;
    for (; i < item.size() && item[i] != 'p'; ++i) name += fmt::format("-{}", item[i]);
    if (i + 1 < item.size()) {
        name += fmt::format(" Part {}", kParts.at(static_cast<std::size_t>(item[i + 1] - '1')));
    }
    return name;
}

std::string ColumnNumber(std::string_view field) {
    if (IsCostCenterColumn(field)) return NumberText(LineOfColumn(field));
    if (field.starts_with("Col_")) return std::string(field.substr(4));
    return std::string(field);
}

std::string CellName(const CellRef& cell) {
    const std::string number = ColumnNumber(cell.Field);
    const bool numbered = number != cell.Field;
    return fmt::format("{}, line {}, {}{}", FormName(cell.Item), NumberText(cell.Line),
                       numbered ? "column " : "", number);
}

std::string ColumnTitle(const CellRef& cell) { return ColumnTitles(cell.Item)[cell.Field]; }

std::map<std::string, std::string> ColumnTitles(std::string_view item) {
    std::map<std::string, std::string> titles;
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet == nullptr) return titles;
    for (const WorksheetField& field : sheet->Fields(sheet->Item)) {
        titles[field.Name] = Replace(Replace(field.Title, "-|", ""), "|", " ");
    }
    return titles;
}

}  // namespace zolmara
