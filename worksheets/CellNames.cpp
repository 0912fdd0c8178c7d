#include "worksheets/CellNames.h"

#include <fmt/format.h>

#include <cctype>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "worksheets/SheetNames.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

std::string ColumnNumber(std::string_view field) {
    if (IsCostCenterColumn(field)) return NumberText(LineOfColumn(field));
    if (field.starts_with("Col_")) return std::string(field.substr(4));
    return std::string(field);
}

std::string CellName(const CellRef& cell) {
    const std::string number = ColumnNumber(cell.Field);
    const bool numbered = number != cell.Field;
    return fmt::format("{}, line {}, {}{}", PrintedName(cell.Item), NumberText(cell.Line),
                       numbered ? "column " : "", number);
}

std::string ColumnTitle(const CellRef& cell) { return ColumnTitles(cell.Item)[cell.Field]; }

namespace {

/// A heading as one line: a word that it breaks in two is one again.
std::string OneLineTitle(const std::string& heading) {
    std::string title = Replace(Replace(heading, "-|", ""), "|", " ");
    for (auto at = title.find("- "); at != std::string::npos; at = title.find("- ", at + 1))
        if (at + 2 < title.size() && std::islower(static_cast<unsigned char>(title[at + 2])))
            title.erase(at, 2);
    return title;
}

}  // namespace

std::map<std::string, std::string> ColumnTitles(std::string_view item) {
    std::map<std::string, std::string> titles;
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet == nullptr) return titles;
    for (const WorksheetField& field : sheet->Fields(sheet->Item)) {
        titles[field.Name] = OneLineTitle(field.Title);
    }
    return titles;
}

}  // namespace zolmara
