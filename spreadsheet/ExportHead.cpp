#include "spreadsheet/ExportHead.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "spreadsheet/SheetPage.h"
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

namespace {

int LinesOfHead(const std::string& text, bool bold, double characters) {
    constexpr double kBold = 0.9;  // its letters are wider
    return LinesIn(text, characters * (bold ? kBold : 1));
}

/// A text that is too long for the room takes more lines in it.
void PutHeadLine(Workbook& book, lxw_worksheet* sheet, lxw_row_t row, const std::string& text,
                 bool bold, const HeadRoom& room) {
    const int lines = room.Columns == 0 ? 1 : LinesOfHead(text, bold, room.Characters);
    if (lines == 1)
        return PutText(sheet, row, 0, text, bold ? book.Format({.Bold = true}) : nullptr);
    lxw_format* const format = book.Format({.Bold = bold, .Wrap = true});
    // A word that does not fit behind the others takes a line more.
    worksheet_set_row(sheet, row, kLineHeight * (lines + 1), nullptr);
    if (room.Columns > 1)
        worksheet_merge_range(sheet, row, 0, row, static_cast<lxw_col_t>(room.Columns - 1), "",
                              format);
    PutText(sheet, row, 0, text, format);
}

}  // namespace

int HeadLines(const SheetHead& head, const std::string& title, double characters) {
    int most = LinesOfHead(title, true, characters);
    for (const std::string& line : head.Lines)
        most = std::max(most, LinesOfHead(line, &line == &head.Lines.front(), characters));
    return most;
}

void WriteSheetHead(Workbook& book, lxw_worksheet* sheet, const SheetHead& head,
                    const std::string& title, const HeadRoom& room) {
    lxw_row_t row = 0;
    for (const std::string& line : head.Lines) {
        PutHeadLine(book, sheet, row, line, row == 0, room);
        ++row;
    }
    PutHeadLine(book, sheet, row, title, true, room);
}

}  // namespace zolmara
