#include "calc/LineBreaks.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/TableCells.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

std::vector<std::string> TextFields(std::string_view table) {
    std::vector<std::string> names;
    for (const FieldDef& field : gDB.Table(table).Fields) {
        if (field.Type == FieldType::dbText) names.push_back(field.Name);
    }
    return names;
}

/// The condition that a row has a line break in one of the fields. The store finds such rows
/// without handing out all the others, which on a schedule are many and wide.
std::string HasLineBreak(const std::vector<std::string>& fields) {
    std::string condition;
    for (const std::string& field : fields) {
        condition += fmt::format("{0}InStr([{1}],Chr(13))>0 Or InStr([{1}],Chr(10))>0",
                                 condition.empty() ? "" : " Or ", field);
    }
    return condition;
}

void CutLineBreaks(Recordset& row, const std::string& field) {
    if (row[field].IsNull()) return;
    const std::string text = Text(row[field]);
    if (text.find_first_of("\r\n") == std::string::npos) return;
    row.Set(field, Replace(Replace(text, "\r", ""), "\n", ""));
}

}  // namespace

void RemoveLineBreaks(std::string_view table) {
    if (!CellsOf(gDB, table).HasLineBreaks()) return;
    const std::vector<std::string> fields = TextFields(table);
    Recordset rows =
        gDB.OpenRecordset(fmt::format("Select * From {} Where {};", table, HasLineBreak(fields)));
    for (; !rows.Eof(); rows.MoveNext()) {
        rows.Edit();
        for (const std::string& field : fields) CutLineBreaks(rows, field);
        rows.Update();
    }
}

}  // namespace zolmara
