#include "bench/TableBench.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <vector>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/Spreadsheets.h"
#include "bench/StaleBook.h"
#include "bench/Statements.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 9;
constexpr std::size_t kColumns = kSizes.size() + 1;  ///< the sample is given

enum Row {
    kWarmEdit,
    kWarmFull,
    kOffice,
    kGnumeric,
    kColdEdit,
    kColdNothing,
    kInfo,
    kRaw,
    kOneEntry,
    kOpenNothing,
    kFsync,
    kRows
};
constexpr std::array<const char*, kRows> kRowNames = {
    "spreadsheet, warm: one cell edited, all dependents read",
    "spreadsheet, warm: full recalculation, nothing saved",
    "spreadsheet, whole command",
    "quickest headless spreadsheet, whole command",
    "`calc` cold, after one edit; aim 12 / 15 / 45 / 250",
    "`calc` cold, nothing to change",
    "of which start and open (`info`)",
    "raw SQLite process: read once, write the changed cells, commit",
    "in an open program, after one entry, committed; aim 3 / 4 / 10 / 60",
    "in an open program, nothing to change",
    "one fsync at that moment"};

/// A time, or the word that stands in its place.
struct Cell {
    Least Took;
    std::string Instead = "failed";
};

class Table {
public:
    void Take(Row row, std::size_t column, const Least& took) { At(row, column) = {took, ""}; }

    /// Does what gives the cells of some rows. Where it fails they stay without a time, and why
    /// is told behind the table.
    void Try(std::initializer_list<Row> rows, std::size_t column,
             const std::function<void()>& work) {
        try {
            work();
        } catch (const NotInstalled& missing) {
            for (const Row row : rows) At(row, column).Instead = "not installed";
            Note(fmt::format("not installed: {}", missing.what()));
        } catch (const std::exception& failure) {
            failed_ = true;
            Note(fmt::format("{}, {}: {}", kRowNames[*rows.begin()], NameOf(column),
                             failure.what()));
        }
    }

    void Note(const std::string& note) {
        if (std::ranges::find(notes_, note) == notes_.end()) notes_.push_back(note);
    }

    void Print() const;
    bool Failed() const { return failed_; }

    static const char* NameOf(std::size_t column) {
        return column == 0 ? "sample" : kSizes[column - 1].Name;
    }

private:
    Cell& At(Row row, std::size_t column) { return cells_[row][column]; }
    void PrintRow(Row row, double Least::*which) const;

    std::array<std::array<Cell, kColumns>, kRows> cells_;
    std::vector<std::string> notes_;
    bool failed_ = false;
};

void PrintCells(const std::string& what, const std::array<std::string, kColumns>& cells) {
    fmt::print("| {:<68} |", what);
    for (const std::string& cell : cells) fmt::print(" {:>13} |", cell);
    fmt::print("\n");
}

void PrintHead(const std::string& what) {
    std::array<std::string, kColumns> names;
    for (std::size_t i = 0; i < kColumns; ++i) names[i] = Table::NameOf(i);
    fmt::print("\n");
    PrintCells(what, names);
    fmt::print("|---|---|---|---|---|\n");
}

void Table::PrintRow(Row row, double Least::*which) const {
    std::array<std::string, kColumns> cells;
    for (std::size_t i = 0; i < kColumns; ++i) {
        const Cell& cell = cells_[row][i];
        cells[i] = cell.Instead.empty() ? Milliseconds(cell.Took.*which) : cell.Instead;
    }
    PrintCells(kRowNames[row], cells);
}

void Table::Print() const {
    PrintHead("milliseconds");
    for (int row = 0; row < kRows; ++row) PrintRow(static_cast<Row>(row), &Least::Wall);
    PrintHead("milliseconds of CPU");
    for (int row = kOffice; row < kFsync; ++row) PrintRow(static_cast<Row>(row), &Least::Cpu);
    fmt::print("\n");
    for (const std::string& note : notes_) fmt::print("- {}\n", note);
    std::fflush(stdout);
}

// --- The measuring -------------------------------------------------------------------------------

struct Place {
    std::string Folder;
    std::string Cli;
    std::string Crf() const { return Folder + "/table.CRF"; }
    std::string Command(const std::string& verb) const {
        return fmt::format("{} {} {} >/dev/null 2>&1", Quoted(Cli), verb, Quoted(Crf()));
    }
};

void KeyInProgram() {
    gDB.Execute(
        fmt::format("UPDATE A SET Col_1=IIF(IsNull(Col_1),0,Col_1)+{} WHERE LineNum=8;", kEntry));
}

Least RawProcess(const Place& place) {
    const std::string before = place.Folder + "/before.CRF";
    KeyFromOutside(place.Crf());
    fs::copy_file(place.Crf(), before, fs::copy_options::overwrite_existing);
    RunCommand(place.Command("calc"));
    const auto changes = Differences(before, place.Crf());
    const std::string raw = place.Folder + "/raw.CRF";
    const Least least = LeastOf(
        kRuns, [&] { fs::copy_file(before, raw, fs::copy_options::overwrite_existing); },
        [&] {
            InChild([&] { ReadAndWrite(raw, changes, [](const std::string&) { return 1; }); });
        });
    fs::remove(raw);
    fs::remove(before);
    return least;
}

void MeasureOpenProgram(const Place& place, Table& table, std::size_t column) {
    Open(place.Crf());
    Calc_Changed();
    table.Take(kOneEntry, column, LeastOf(kRuns, KeyInProgram, Calc_Changed));
    table.Take(kOpenNothing, column, LeastOf(kRuns, Calc_Changed));
    DropCrf();
}

void MeasureCommands(const Place& place, Table& table, std::size_t column) {
    const auto command = [&](Row row, const std::string& verb, const std::function<void()>& ahead) {
        table.Try({row}, column, [&] {
            table.Take(row, column,
                       LeastOf(kRuns, ahead, [&] { RunCommand(place.Command(verb)); }));
        });
    };
    command(kColdEdit, "calc", [&] { KeyFromOutside(place.Crf()); });
    command(kColdNothing, "calc", [] {});
    command(kInfo, "info", [] {});
}

void MeasureWarm(Spreadsheets& sheets, const StaleBook& book, Table& table, std::size_t column) {
    const Spreadsheets::Warm warm = sheets.WarmOffice(book);
    table.Take(kWarmEdit, column, {warm.Edit, 0});
    table.Take(kWarmFull, column, {warm.Full, 0});
    table.Note(
        fmt::format("{}: the cell moves {} cells; of the warm spreadsheet's times {} ms are "
                    "the call from outside",
                    Table::NameOf(column), warm.Dependents, Milliseconds(warm.Call)));
}

void MeasureSpreadsheets(const Place& place, Spreadsheets& sheets, Table& table,
                         std::size_t column) {
    table.Try({kWarmEdit, kWarmFull, kOffice, kGnumeric}, column, [&] {
        const StaleBook book = MakeStaleBook(place.Crf(), place.Cli, place.Folder);
        table.Try({kWarmEdit, kWarmFull}, column,
                  [&] { MeasureWarm(sheets, book, table, column); });
        table.Try({kOffice}, column,
                  [&] { table.Take(kOffice, column, sheets.OfficeCommand(book)); });
        table.Try({kGnumeric}, column,
                  [&] { table.Take(kGnumeric, column, sheets.GnumericCommand(book)); });
        fs::remove(book.Path);
    });
}

void Measure(const Place& place, Spreadsheets& sheets, Table& table, std::size_t column) {
    fmt::print(stderr, "table: {}\n", Table::NameOf(column));
    MeasureOpenProgram(place, table, column);
    MeasureCommands(place, table, column);
    table.Try({kRaw}, column, [&] { table.Take(kRaw, column, RawProcess(place)); });
    table.Try({kFsync}, column, [&] {
        table.Take(kFsync, column, {FsyncSeconds(place.Folder), 0});
    });
    MeasureSpreadsheets(place, sheets, table, column);
}

}  // namespace

void BenchTable(const std::string& folder, const std::string& cli, const std::string& sample) {
    const Place place{folder, cli};
    Spreadsheets sheets(folder + "/spreadsheets");
    Table table;
    fs::copy_file(sample, place.Crf(), fs::copy_options::overwrite_existing);
    Measure(place, sheets, table, 0);
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        MakeStatement(place.Crf(), ShapeOf(kSizes[i]));
        DropCrf();
        Measure(place, sheets, table, i + 1);
    }
    table.Print();
    if (table.Failed()) throw std::runtime_error("some figures could not be taken");
}

}  // namespace zolmara::bench
