// The schedules B to D-1, E, E-1 and F to F-2. Their columns follow the cost centers: as many stand
// on a page as fit, and the pages of the next ones repeat the lines and their names. Names and
// amounts are read once, however many pages across a schedule has; the names are kept meanwhile.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "core/Globals.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "print/TextFields.h"
#include "store/AmountRows.h"
#include "store/ReadSnapshot.h"
#include "store/session/Session.h"
#include "worksheets/ColumnCaption.h"
#include "worksheets/FormLines.h"
#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

using Captions = std::array<std::string, kCaptionLines>;

/// The columns that say which line a row is; they stand on every page.
constexpr std::array<CellLayout, 3> kNameColumns = {{{"LineNum", CellForm::LineNum, 1, 5},
                                                     {"Description", CellForm::Text, 7, 36},
                                                     {"Col_0", CellForm::Text, 44, 7}}};

constexpr int kFirstTab = 52;
constexpr int kTabStep = 13;

/// A field of the schedule, where it stands in the table, and its heading.
struct Column {
    std::size_t Field;
    CellForm Form;
    Captions Heading;
};

/// A row: its line, and what its name columns say, in lines.
struct ScheduleRow {
    Currency Line;
    std::vector<TextLine> Names;
};

struct PrintedSchedule {
    std::string Label;
    std::vector<std::string_view> Titles;
    std::vector<TotalLine> Totals;
    Captions NameHeading;  ///< of the name columns together
    std::vector<Column> Columns;
    std::vector<ScheduleRow> Rows;
    std::unique_ptr<AmountRows> Amounts;  ///< of the same rows
};

// --- What a schedule is called -------------------------------------------------------------

constexpr std::array<std::string_view, 3> kPartTitles = {"HEALTHCARE PROVIDER COMPONENTS",
                                                         "NON-HEALTHCARE PROVIDER COMPONENTS",
                                                         "REGION / DIVISION COMPONENTS"};

/// 0 to 2; -1 for a schedule that has no parts.
int PartIndex(std::string_view item) {
    const char part = item.size() < 2 ? ' ' : item.back();
    return part >= '1' && part <= '3' ? part - '1' : -1;
}

/// The components' total, on the third part with the grand total under it; on E the total of the
/// parts.
std::vector<TotalLine> TotalsOf(std::string_view item) {
    switch (PartIndex(item)) {
        case -1:
            return {{kTotalOfE.Whole(), '-', '='}};
        case 2:
            return {{kPartTotal.Whole(), '-', ' '}, {kGrandTotal.Whole(), '-', '='}};
        default:
            return {{kPartTotal.Whole(), '-', '='}};
    }
}

// --- Reading -------------------------------------------------------------------------------

bool IsRatio(std::string_view item, std::string_view field) {
    return SameText(item.substr(0, 1), "E") && SameText(field, "Col_2");
}

bool IsNameColumn(std::string_view field) {
    return std::ranges::any_of(
        kNameColumns, [&](const CellLayout& column) { return SameText(column.Field, field); });
}

/// The name columns that the schedule has; E has no component numbers.
struct NameColumns {
    std::vector<CellLayout> Cells;
    std::vector<int> Positions;
};

int PositionOf(const std::vector<FieldDef>& fields, std::string_view name) {
    const auto found = std::ranges::find_if(
        fields, [&](const FieldDef& field) { return SameText(field.Name, name); });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

NameColumns NameColumnsOf(const std::vector<FieldDef>& fields) {
    NameColumns names;
    for (const CellLayout& column : kNameColumns) {
        const int position = PositionOf(fields, column.Field);
        if (position < 0) continue;
        names.Cells.push_back(column);
        names.Positions.push_back(position);
    }
    return names;
}

void ReadHeadings(PrintedSchedule& schedule, const std::vector<FieldDef>& fields,
                  const NameColumns& names, std::string_view item) {
    Recordset costCenters = gDB.OpenRecordset("Select * From CostCenters Order by LineNum;");
    std::array<TextLine, kCaptionLines> heading;
    for (const CellLayout& column : names.Cells) {
        const Captions captions = ColumnCaptions(costCenters, column.Field, item);
        for (std::size_t i = 0; i < heading.size(); ++i) heading[i].At(column.Tab, captions[i]);
    }
    std::ranges::transform(heading, schedule.NameHeading.begin(), &TextLine::Text);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string& field = fields[i].Name;
        if (IsNameColumn(field)) continue;
        schedule.Columns.push_back({i, IsRatio(item, field) ? CellForm::Ratio : CellForm::Amount,
                                    ColumnCaptions(costCenters, field, item)});
    }
}

/// The name columns that hold texts.
std::vector<int> TextsOf(const NameColumns& names) {
    std::vector<int> positions;
    for (std::size_t i = 0; i < names.Cells.size(); ++i)
        if (names.Cells[i].Form == CellForm::Text) positions.push_back(names.Positions[i]);
    return positions;
}

/// What the name columns of a row say.
std::vector<TextLine> NamesOf(const Variant& line, RowTexts texts, const NameColumns& names) {
    std::vector<Variant> values;
    values.reserve(names.Cells.size());
    auto text = texts.begin();
    for (const CellLayout& column : names.Cells) {
        if (column.Form == CellForm::Text)
            values.emplace_back(*text++);
        else
            values.push_back(line);
    }
    return RowTextLines(values, names.Cells);
}

/// Names and amounts are of one moment.
void ReadRows(PrintedSchedule& schedule, std::string_view item, const NameColumns& names) {
    const ReadSnapshot oneLook(gDB);
    schedule.Amounts = std::make_unique<AmountRows>(
        gDB, item, TextsOf(names), [&](const Variant& line, RowTexts texts) {
            schedule.Rows.push_back({CurOr(line), NamesOf(line, texts, names)});
        });
    schedule.Amounts->PutAside();
}

PrintedSchedule ReadSchedule(std::string_view item) {
    PrintedSchedule schedule{PrintedName(item), {}, TotalsOf(item), {}, {}, {}, {}};
    const int part = PartIndex(item);
    if (part >= 0) schedule.Titles.push_back(kPartTitles.at(static_cast<std::size_t>(part)));
    const std::vector<FieldDef> fields = gDB.Table(item).Fields;
    const NameColumns names = NameColumnsOf(fields);
    ReadHeadings(schedule, fields, names, item);
    ReadRows(schedule, item, names);
    return schedule;
}

// --- Printing ------------------------------------------------------------------------------

/// The columns of one page across.
using PageColumns = std::span<const Column>;

int TabOf(std::size_t position) { return kFirstTab + kTabStep * static_cast<int>(position); }

/// As many columns as end within the page.
std::size_t ColumnsOnPage(const PrintRun& run) {
    return static_cast<std::size_t>((run.gPageWidth - kFirstTab + 1) / kTabStep);
}

void PrintHeading(ReportPage& page, const PrintedSchedule& schedule, PageColumns columns) {
    for (std::size_t i = 0; i < kCaptionLines; ++i) {
        TextLine line;
        line.At(1, schedule.NameHeading[i]);
        for (std::size_t k = 0; k < columns.size(); ++k) line.At(TabOf(k), columns[k].Heading[i]);
        page.Print(line.Text());
    }
}

std::string Rules(std::size_t columns, char mark) {
    TextLine line;
    for (std::size_t k = 0; k < columns; ++k) line.At(TabOf(k), std::string(kAmountWidth, mark));
    return line.Text();
}

void PutAmount(TextLine& line, int tab, double amount, CellForm form) {
    if (std::isnan(amount)) return;
    if (form == CellForm::Amount) {
        line.AmountIn(tab, kAmountWidth, amount);
        return;
    }
    const std::string text = CellText(amount, form, kAmountWidth);
    line.AmountAt(tab + kAmountWidth - static_cast<int>(text.size()), text);
}

/// The pages of a schedule that stand side by side.
class PagesAcross {
public:
    PagesAcross(ReportPage& page, const PrintedSchedule& schedule)
        : page_(page), schedule_(schedule) {}

    /// All rows of the columns from `first` on that fit on a page.
    void Print(std::size_t first) {
        columns_ = PageColumns(schedule_.Columns)
                       .subspan(first)
                       .first(std::min(ColumnsOnPage(page_.Run), schedule_.Columns.size() - first));
        begun_ = false;
        std::size_t next = 0;
        schedule_.Amounts->Walk(FirstField(), FieldCount(), [&](std::span<const double> amounts) {
            PrintRow(schedule_.Rows.at(next++), amounts);
        });
    }

private:
    /// The fields from the first of these columns to the last.
    std::size_t FirstField() const { return columns_.empty() ? 0 : columns_.front().Field; }
    std::size_t FieldCount() const {
        return columns_.empty() ? 0 : columns_.back().Field + 1 - FirstField();
    }

    const TotalLine* TotalOf(const ScheduleRow& row) const {
        const auto found = std::ranges::find_if(schedule_.Totals, [&](const TotalLine& total) {
            return row.Line == Currency::FromWhole(total.Line);
        });
        return found == schedule_.Totals.end() ? nullptr : &*found;
    }

    void PrintRow(const ScheduleRow& row, std::span<const double> amounts) {
        const TotalLine* const total = TotalOf(row);
        if (!begun_ || page_.IsFull(row.Names.size())) {
            page_.Begin(schedule_.Label, schedule_.Titles);
            PrintHeading(page_, schedule_, columns_);
            begun_ = true;
        }
        if (total && total->Above != ' ') page_.Print(Rules(columns_.size(), total->Above));
        PrintAmounts(row, amounts);
        for (std::size_t i = 1; i < row.Names.size(); ++i) page_.Print(row.Names[i].Text());
        if (total && total->Under != ' ') page_.Print(Rules(columns_.size(), total->Under));
    }

    void PrintAmounts(const ScheduleRow& row, std::span<const double> amounts) {
        line_ = row.Names.front();
        const bool unitCost = row.Line == kUnitCostMultiplier;
        for (std::size_t k = 0; k < columns_.size(); ++k)
            PutAmount(line_, TabOf(k), amounts[columns_[k].Field - FirstField()],
                      unitCost ? CellForm::Ratio : columns_[k].Form);
        page_.Print(line_.Text());
    }

    ReportPage& page_;
    const PrintedSchedule& schedule_;
    PageColumns columns_;
    bool begun_ = false;
    TextLine line_;  ///< takes one row after the other
};

void PrintSchedule(std::string_view item, PrintRun& run) {
    run.SetPageLandscape();
    RunReport(run, fmt::format("{}.prt", item), [&](PrintRun& open) {
        const PrintedSchedule schedule = ReadSchedule(item);
        ReportPage page(open);
        PagesAcross pages(page, schedule);
        std::size_t first = 0;
        do {
            pages.Print(first);
            first += ColumnsOnPage(open);
        } while (first < schedule.Columns.size());
    });
}

}  // namespace

void Print_Bx(std::string_view item, PrintRun& run) { PrintSchedule(item, run); }
void Print_Ex(std::string_view item, PrintRun& run) { PrintSchedule(item, run); }
void Print_Fx(std::string_view item, PrintRun& run) { PrintSchedule(item, run); }

}  // namespace zolmara
