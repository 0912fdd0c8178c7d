#include "spreadsheet/ExportHead.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

SheetHead ReadSheetHead() {
    SheetHead head;
    head.Lines = {gProviderName, "Provider CCN: " + gProviderNumber,
                  fmt::format("Period from  {}  to  {}", Text(gFYStart), Text(gFYEnd))};
    if (!gDB.HasTable("HeaderLines")) return head;
    Recordset rows =
        gDB.OpenRecordset("SELECT LineText FROM HeaderLines ORDER BY LineNum;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        if (!IsBlankValue(rows[0])) head.Lines.push_back(Text(rows[0]));
    return head;
}

void WriteSheetHead(Workbook& book, lxw_worksheet* sheet, const SheetHead& head,
                    const std::string& title) {
    lxw_format* bold = book.Format({.Bold = true});
    lxw_row_t row = 0;
    for (const std::string& line : head.Lines) {
        PutText(sheet, row, 0, line, row == 0 ? bold : nullptr);
        ++row;
    }
    PutText(sheet, row, 0, title, bold);
}

}  // namespace zolmara
