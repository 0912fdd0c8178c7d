#pragma once

// One sheet of an exported workbook.

#include "forms/WorksheetForm.h"
#include "spreadsheet/ExportHead.h"
#include "spreadsheet/FormulaWriter.h"
#include "spreadsheet/HelperValues.h"
#include "spreadsheet/PassingCells.h"

namespace zolmara {

class ExportSheet {
public:
    /// What computed cells are written from.
    struct Formulas {
        explicit Formulas(const BookLayout& layout) : Writer(layout, Cells), Helpers(layout) {}
        PassingCells Cells;
        FormulaWriter Writer;
        HelperValues Helpers;
    };
    /// Without formulas computed cells are values.
    ExportSheet(Workbook& book, const SheetLayout& layout, const SheetHead& head,
                Formulas* formulas);
    void Write();

private:
    struct Column {
        FormColumn Shown;
        ColumnRules Rules;
        lxw_format* Format;
    };

    void SetUpPage();
    HeadRoom RoomOfHead() const;
    void WriteHeadings();
    double TitleHeight() const;
    void SetHeight(lxw_row_t row, const PassingRows& cells);
    lxw_col_t LastPrintedColumn() const;
    lxw_row_t WriteRows();
    void WriteCell(lxw_row_t row, int column, Currency line, const Variant& value);
    void WriteFormula(lxw_row_t row, int column, const CellDescription& rule, Currency line,
                      const Variant& value);
    void WriteHelpers();
    void WriteHelper(lxw_row_t row, const ClosedColumn& column, Helper helper, double result);

    Workbook& book_;
    const SheetLayout& layout_;
    const SheetHead& head_;
    Formulas* formulas_;
    lxw_worksheet* sheet_;
    WorksheetForm form_;
    std::vector<Column> columns_;
};

}  // namespace zolmara
