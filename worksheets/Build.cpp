#include "worksheets/Build.h"

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "store/session/CoreTables.h"
#include "store/session/DeleteIfThere.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {

void MakeWorksheetTable(std::string_view item) {
    TableDef table;
    table.Name = item;
    for (const WorksheetField& field : FindWorksheet(item)->Fields(item)) {
        table.Fields.push_back({.Name = field.Name,
                                .Type = field.Type,
                                .Size = field.Size,
                                .AllowZeroLength = field.AllowZeroLength});
    }
    gDB.AppendTable(table);
}

void InsertSeedRows(std::string_view item, std::string_view textField,
                    std::span<const SeedRow> rows) {
    const std::string sql =
        fmt::format("INSERT INTO {} (LineNum,{}) VALUES (?,?);", item, textField);
    for (const SeedRow& row : rows) gDB.Execute(sql, {row.Line, row.Text});
}

void MakeWorksheetIndex(std::string_view item) {
    gDB.Execute(
        fmt::format("CREATE UNIQUE INDEX ndx{0} ON {0} ({1});", item, FindWorksheet(item)->Key));
}

void RegisterBuiltWorksheet(std::string_view item) {
    RegisterWorksheet(item, "Make", FindWorksheet(item)->Calc_Lvl);
}

bool DropWorksheetTable(std::string_view item) {
    const std::string words = DeleteIfThere(item);
    if (words.empty()) return true;
    TheDialogs().MsgBox(fmt::format("Error: The following error was returned when trying to "
                                    "rebuild table {}\r\n\r\n{}",
                                    item, words),
                        kCritical, fmt::format("Worksheet {} Error", item));
    return false;
}

void InsertComponentRows(std::string_view item) {
    const char part = PartOf(item);
    gDB.Execute(fmt::format("INSERT INTO {} SELECT LineNum, Col_1 As Description, Col_2 As Col_0 "
                            "FROM S2p{} WHERE LineNum<?;",
                            item, part),
                {kPartTotal});
    const std::string insert =
        fmt::format("Insert Into {} (LineNum,Description) Values(?,?);", item);
    gDB.Execute(insert, {kPartTotal, "Total"});
    if (part == '3') gDB.Execute(insert, {kGrandTotal, "Grand Total"});
}

}  // namespace zolmara
