#include "import/TakeCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/CopyRows.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::string_view kTitle = "New From Last Year";

void Warn(const std::string& text) { MsgOrLog(text, kExclamation, std::string(kTitle)); }

bool IsText(FieldType type) { return type == FieldType::dbText || type == FieldType::dbMemo; }

/// Those of the fields that the source has too.
std::vector<std::string> SharedFields(std::string_view table,
                                      const std::vector<std::string>& fields) {
    const TableDef& source = gImportDB.Table(table);
    std::vector<std::string> shared;
    for (const std::string& field : fields) {
        if (source.FieldIndex(field) >= 0)
            shared.push_back(field);
        else
            Warn(fmt::format("Column {} of {} is not in last year's file.", field, table));
    }
    const TableDef& target = gDB.Table(table);
    for (const FieldDef& field : source.Fields)
        if (target.FieldIndex(field.Name) < 0)
            Warn(fmt::format("Column {} of last year's {} has no place and was left out.",
                             field.Name, table));
    return shared;
}

void Take(std::string_view table, const std::vector<std::string>& fields) {
    if (!gImportDB.HasTable(table))
        return Warn(fmt::format("Last year's file has no table {}.", table));
    const auto refuse = [&](const Variant& line, const StoreError& reason) {
        Warn(fmt::format("Line {} of {} was left out: {}", Text(line), table, PlainWords(reason)));
    };
    gDB.Execute(fmt::format("DELETE FROM [{}];", table));
    CopyRows(gImportDB, gDB, table, SharedFields(table, fields),
             {.Refused = refuse, .Progress = {}});
}

/// The amounts of total lines, in columns that are keyed elsewhere.
void ClearComputedLines(const Worksheet& sheet) {
    const auto fields = sheet.Fields(sheet.Item);
    for (const ComputedLine& line : sheet.ComputedLines)
        for (const WorksheetField& field : fields) {
            const bool written = line.Field.empty() || SameText(line.Field, field.Name);
            if (!written || field.Kind != CellKind::Keyed || IsText(field.Type)) continue;
            gDB.Execute(fmt::format("UPDATE {} SET [{}]=Null WHERE Fix({})={};", sheet.Item,
                                    field.Name, sheet.Key, line.Line));
        }
}

}  // namespace

bool HasKeyedCells(const Worksheet& sheet) {
    if (sheet.CostCenterCells == CellKind::Keyed) return true;
    return std::ranges::any_of(sheet.FixedFields(sheet.Item), [](const WorksheetField& field) {
        return field.Kind == CellKind::Keyed;
    });
}

void TakeRows(std::string_view table) {
    std::vector<std::string> fields;
    for (const FieldDef& field : gDB.Table(table).Fields) fields.push_back(field.Name);
    Take(table, fields);
}

void TakeKeyedCells(std::string_view item) {
    const Worksheet& sheet = *FindWorksheet(item);
    std::vector<std::string> fields;
    for (const WorksheetField& field : sheet.Fields(sheet.Item))
        if (field.Kind != CellKind::Computed) fields.push_back(field.Name);
    Take(sheet.Item, fields);
    ClearComputedLines(sheet);
}

}  // namespace zolmara
