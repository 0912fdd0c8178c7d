#include "bench/StaleBook.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/Statements.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "spreadsheet/BookLayout.h"
#include "spreadsheet/ExportHead.h"
#include "spreadsheet/SheetRow.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kItem = "A";
constexpr int kLine = 8;
constexpr const char* kField = "Col_1";

/// Cells of each kind of worksheet, in the order of the calculation.
struct Checked {
    const char* Item;
    int Line;
    const char* Field;
};
constexpr Checked kChecked[] = {
    {"C1p3", 54, "CC_100"}, {"Cp3", 52, "CC_100"}, {"D1p3", 54, "CC_900"}, {"Dp3", 52, "CC_900"},
    {"A", kLine, "Col_5"},  {"A", kLine, "Col_8"}, {"A", 100, "Col_8"},    {"E1p1", 1, "CC_800"},
    {"E1p1", 51, "Col_7"},  {"F1p1", 1, "Col_8"},  {"F1p3", 52, "Col_9"},  {"F2p3", 52, "Col_4"},
    {"G1", 2, "Col_2"}};

BookPlace PlaceOf(const BookLayout& layout, const Checked& cell) {
    const SheetLayout* const sheet = layout.Find(cell.Item);
    const int row = sheet == nullptr ? 0 : sheet->RowOf(Currency::FromWhole(cell.Line));
    if (row == 0 || !sheet->ColumnOf.contains(cell.Field))
        throw std::runtime_error(
            fmt::format("no cell {} line {} {}", cell.Item, cell.Line, cell.Field));
    return {cell.Item, row, sheet->ColumnOf.at(cell.Field)};
}

double ValueOf(CellSource& cells, const Checked& cell) {
    return NumOr(cells.Value({cell.Item, Currency::FromWhole(cell.Line), cell.Field}));
}

std::vector<double> StoredValues() {
    StoreCells cells;
    std::vector<double> values;
    for (const Checked& cell : kChecked) values.push_back(ValueOf(cells, cell));
    return values;
}

std::vector<BookFigure> Calculated(const BookLayout& layout) {
    const std::vector<double> before = StoredValues();
    Calc_All();
    const std::vector<double> values = StoredValues();
    if (values == before) throw std::runtime_error("the entry moves none of the checked cells");
    std::vector<BookFigure> figures;
    for (std::size_t i = 0; i < values.size(); ++i)
        figures.push_back({PlaceOf(layout, kChecked[i]), values[i]});
    return figures;
}

}  // namespace

std::string BookPlace::Address() const { return CellAddressOf(Sheet, Column, Row); }

void KeyFromOutside(const std::string& crf) {
    RawFile(crf).Run(fmt::format("UPDATE {0} SET {1}=IFNULL({1},0)+{2} WHERE LineNum={3}", kItem,
                                 kField, kEntry, kLine));
}

StaleBook MakeStaleBook(const std::string& crf, const std::string& cli, const std::string& folder) {
    const std::string work = folder + "/stale.CRF";
    fs::copy_file(crf, work, fs::copy_options::overwrite_existing);
    KeyFromOutside(work);
    StaleBook book;
    book.Path = folder + "/stale.xlsx";
    RunCommand(fmt::format("{} export {} {} --force >/dev/null", Quoted(cli), Quoted(work),
                           Quoted(book.Path)));
    Open(work);
    StoreCells cells;
    std::vector<std::string> items{kItem};
    for (const Checked& cell : kChecked) items.emplace_back(cell.Item);
    const BookLayout layout(cells, items, ReadSheetHead().Rows());
    book.Keyed = PlaceOf(layout, {kItem, kLine, kField});
    book.Figures = Calculated(layout);
    DropCrf();
    fs::remove(work);
    return book;
}

void CheckFigures(const StaleBook& book, const std::vector<double>& values) {
    constexpr double kNoise = 1e-9;
    if (values.size() != book.Figures.size())
        throw std::runtime_error("not all of the checked cells were given");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const BookFigure& figure = book.Figures[i];
        if (std::abs(values[i] - figure.Value) > kNoise * std::max(1.0, std::abs(figure.Value)))
            throw std::runtime_error(
                fmt::format("{} is {}, not {}", figure.Place.Address(), values[i], figure.Value));
    }
}

}  // namespace zolmara::bench
