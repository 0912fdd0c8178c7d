#include "spreadsheet/ComparisonSheet.h"

#include <fmt/format.h>

#include <cmath>
#include <filesystem>

#include "core/Globals.h"
#include "import/ComparisonReport.h"
#include "spreadsheet/Workbook.h"

namespace zolmara {

namespace {

constexpr double kWidths[] = {12, 9, 10, 42, 20, 20, 18, 10};
constexpr int kFirstAmount = 4;
constexpr int kPercent = 7;
/// The two files and a blank row stand ahead of the headings.
constexpr lxw_row_t kHeadings = 3;

std::string EndingOf(const std::string& path) {
    return LCase(std::filesystem::path(path).extension().string());
}

/// Statistics keep their decimals; an amount without any shows none.
std::string FormatOf(int column, double number) {
    if (column < kFirstAmount) return "General";
    if (column == kPercent) return "#,##0.00";
    return number == std::floor(number) ? "#,##0" : "#,##0.00####";
}

class ComparisonSheet {
public:
    explicit ComparisonSheet(const std::string& path)
        : book_(path, true), sheet_(book_.AddSheet("Comparison")) {}

    void Write(const std::vector<CellDifference>& differences, const std::string& other) {
        WriteHead(other);
        lxw_row_t row = kHeadings;
        for (const CellDifference& difference : differences) WriteRow(++row, difference);
        worksheet_autofilter(sheet_, kHeadings, 0, row, kPercent);
        book_.Put();
    }

private:
    void WriteHead(const std::string& other) {
        lxw_format* heading = book_.Format({.Bold = true, .Shaded = true});
        PutText(sheet_, 0, 0, "Here");
        PutText(sheet_, 0, 1, gCRFPath);
        PutText(sheet_, 1, 0, "There");
        PutText(sheet_, 1, 1, other);
        for (int i = 0; i <= kPercent; ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            worksheet_set_column(sheet_, column, column, kWidths[i], nullptr);
            PutText(sheet_, kHeadings, i, ComparisonColumns().at(static_cast<std::size_t>(i)),
                    heading);
        }
        worksheet_freeze_panes(sheet_, kHeadings + 1, 0);
        worksheet_repeat_rows(sheet_, 0, kHeadings);
        worksheet_set_landscape(sheet_);
        worksheet_fit_to_pages(sheet_, 1, 0);
        worksheet_set_footer(sheet_, "&L&A&RPage &P of &N");
    }

    void WriteRow(lxw_row_t row, const CellDifference& difference) {
        int column = 0;
        for (const Variant& value : ComparisonRow(difference)) {
            if (value.IsNumber()) {
                const double number = value.Number();
                const std::string format = FormatOf(column, number);
                PutNumber(sheet_, row, column, number, book_.Format({.NumberFormat = format}));
            } else if (!Text(value).empty()) {
                // Marked as text, so that it stays one when somebody keys into the cell.
                PutText(sheet_, row, column, Text(value), book_.Format({.NumberFormat = "@"}));
            }
            ++column;
        }
    }

    Workbook book_;
    lxw_worksheet* sheet_;
};

/// A worksheet of a workbook takes no more rows, and the library says nothing of it.
void NeedRoom(const std::vector<CellDifference>& differences, const std::string& path) {
    if (differences.size() < LXW_ROW_MAX - kHeadings) return;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("{}: {} cells differ, and a workbook takes fewer; write .csv",
                                 path, differences.size()));
}

}  // namespace

void NeedComparisonName(const std::string& path) {
    const std::string ending = EndingOf(path);
    if (ending == ".xlsx" || ending == ".csv") return;
    throw StoreError(StoreError::Kind::Other, path + ": a comparison is written to .xlsx or .csv");
}

void SaveComparison(const std::vector<CellDifference>& differences, const std::string& other,
                    const std::string& path) {
    NeedComparisonName(path);
    if (EndingOf(path) == ".csv") return SaveComparisonCsv(differences, path);
    NeedRoom(differences, path);
    ComparisonSheet(path).Write(differences, other);
}

}  // namespace zolmara
