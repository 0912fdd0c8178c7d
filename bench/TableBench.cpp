#include "bench/TableBench.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "bench/LargeStatement.h"
#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 9;

/// The sizes of the statements; the sample is given.
struct Size {
    const char* Name;
    int Components;
    int CostCenters;
};
constexpr std::array<Size, 3> kMade = {
    {{"medium", 300, 50}, {"large", 1500, 100}, {"huge", 5000, 200}}};
constexpr std::size_t kColumns = kMade.size() + 1;

/// What was measured of spreadsheets when this table was made, on the same two cores unshared. A
/// warm one is driven by a program of its own, which is no part of this one.
struct Earlier {
    const char* What;
    std::array<double, kColumns> Milliseconds;
};
constexpr Earlier kWarm[] = {
    {"spreadsheet, warm: one cell edited, all dependents read *", {1.2, 3.4, 21, 269}},
    {"spreadsheet, warm: full recalculation, nothing saved *", {6.5, 17, 146, 1416}}};
constexpr Earlier kWholeCommand = {"spreadsheet, whole command *", {2743, 3086, 5296, 40928}};
constexpr Earlier kQuickest = {"quickest headless spreadsheet, whole command *",
                               {87, 182, 1610, 23013}};

enum Row { kOneEntry, kOpenNothing, kColdEdit, kColdNothing, kInfo, kRaw, kFsync, kRows };
constexpr std::array<const char*, kRows> kRowNames = {
    "in an open program, after one entry, committed",
    "in an open program, nothing to change",
    "calc cold, after one edit",
    "calc cold, nothing to change",
    "of which start and open (info)",
    "raw SQLite process: read once, write the changed cells, commit",
    "one fsync at that moment"};

struct Table {
    std::array<std::array<Least, kColumns>, kRows> Cells;
    std::array<std::optional<Least>, kColumns> Spreadsheet;
};

struct Place {
    std::string Folder;
    std::string Cli;
    std::string Crf() const { return Folder + "/table.CRF"; }
    std::string Command(const std::string& verb) const {
        return fmt::format("{} {} {} >/dev/null 2>&1", Quoted(Cli), verb, Quoted(Crf()));
    }
};

void MakeStatement(const Place& place, const Size& size,
                   const std::function<void(const std::string&)>& makeNew) {
    const std::string text = place.Folder + "/table.txt";
    {
        std::ofstream file(text, std::ios::binary);
        LargeShape shape;
        shape.Components = size.Components;
        shape.CostCenters = size.CostCenters;
        WriteLargeStatement(file, shape);
    }
    makeNew(place.Crf());
    ImportAsciiFile(text);
    Calc_All();
    DropCrf();
    fs::remove(text);
}

/// The one entry: an expense on A, on which every allocated amount rests.
constexpr const char* kEntry = "UPDATE A SET Col_1=IFNULL(Col_1,0)+1000 WHERE LineNum=8";

void KeyFromOutside(const Place& place) { RawFile(place.Crf()).Run(kEntry); }

void KeyInProgram() {
    gDB.Execute("UPDATE A SET Col_1=IIF(IsNull(Col_1),0,Col_1)+1000 WHERE LineNum=8;");
}

Least RawProcess(const Place& place) {
    const std::string before = place.Folder + "/before.CRF";
    KeyFromOutside(place);
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

/// The statement as a workbook with live formulas, opened, recalculated and saved.
std::optional<Least> SpreadsheetCommand(const Place& place) {
    if (std::system("command -v soffice >/dev/null 2>&1") != 0) return std::nullopt;
    const std::string book = place.Folder + "/table.xlsx";
    const std::string out = place.Folder + "/recalculated";
    RunCommand(fmt::format("{} export {} {} --force >/dev/null 2>&1", Quoted(place.Cli),
                           Quoted(place.Crf()), Quoted(book)));
    const auto command = fmt::format(
        "soffice -env:UserInstallation=file://{} --headless --convert-to xlsx --outdir {} {} "
        ">/dev/null 2>&1",
        Quoted(fs::absolute(place.Folder + "/office").string()), Quoted(out), Quoted(book));
    // The first start of a new user makes its folder.
    if (!fs::exists(place.Folder + "/office")) RunCommand(command);
    const Least least = LeastOf(
        1, [] {}, [&] { RunCommand(command); });
    fs::remove(book);
    fs::remove_all(out);
    return least;
}

void MeasureOpenProgram(const Place& place, Table& table, std::size_t column) {
    OpenCrf(place.Crf());
    Calc_Changed();
    table.Cells[kOneEntry][column] = LeastOf(kRuns, KeyInProgram, [] { Calc_Changed(); });
    table.Cells[kOpenNothing][column] = LeastOf(
        kRuns, [] {}, [] { Calc_Changed(); });
    DropCrf();
}

void Measure(const Place& place, Table& table, std::size_t column) {
    const auto command = [&](Row row, const std::string& verb, const std::function<void()>& ahead) {
        table.Cells[row][column] = LeastOf(kRuns, ahead, [&] { RunCommand(place.Command(verb)); });
    };
    MeasureOpenProgram(place, table, column);
    command(kColdEdit, "calc", [&] { KeyFromOutside(place); });
    command(kColdNothing, "calc", [] {});
    command(kInfo, "info", [] {});
    table.Cells[kRaw][column] = RawProcess(place);
    table.Cells[kFsync][column].Wall = FsyncSeconds(place.Folder);
    table.Spreadsheet[column] = SpreadsheetCommand(place);
}

// --- The table -----------------------------------------------------------------------------

std::string Milliseconds(double value) {
    if (value < 1) return fmt::format("{:.2f}", value);
    return value < 10 ? fmt::format("{:.1f}", value) : fmt::format("{:.0f}", value);
}

void PrintRow(const std::string& what, const std::array<std::string, kColumns>& cells) {
    fmt::print("| {:<66} |", what);
    for (const std::string& cell : cells) fmt::print(" {:>8} |", cell);
    fmt::print("\n");
}

void PrintHead(const std::string& what) {
    fmt::print("\n");
    PrintRow(what, {"sample", kMade[0].Name, kMade[1].Name, kMade[2].Name});
    fmt::print("|---|---|---|---|---|\n");
}

void PrintEarlier(const Earlier& earlier) {
    std::array<std::string, kColumns> cells;
    for (std::size_t i = 0; i < kColumns; ++i) cells[i] = Milliseconds(earlier.Milliseconds[i]);
    PrintRow(earlier.What, cells);
}

void PrintMeasured(const char* what, const std::array<Least, kColumns>& row, double Least::*which) {
    std::array<std::string, kColumns> cells;
    for (std::size_t i = 0; i < kColumns; ++i) cells[i] = Milliseconds(row[i].*which * 1e3);
    PrintRow(what, cells);
}

void PrintSpreadsheet(const Table& table) {
    std::array<Least, kColumns> row;
    for (std::size_t i = 0; i < kColumns; ++i) {
        if (!table.Spreadsheet[i]) return PrintEarlier(kWholeCommand);
        row[i] = *table.Spreadsheet[i];
    }
    PrintMeasured("spreadsheet, whole command, once", row, &Least::Wall);
}

void Print(const Table& table) {
    PrintHead(fmt::format("milliseconds, the least of {}", kRuns));
    for (const Earlier& earlier : kWarm) PrintEarlier(earlier);
    PrintSpreadsheet(table);
    PrintEarlier(kQuickest);
    for (std::size_t row = 0; row < kRows; ++row)
        PrintMeasured(kRowNames[row], table.Cells[row], &Least::Wall);
    PrintHead(fmt::format("milliseconds of CPU, the least of {}", kRuns));
    for (std::size_t row = 0; row < kFsync; ++row)
        PrintMeasured(kRowNames[row], table.Cells[row], &Least::Cpu);
    fmt::print("\n* measured before, not in this run\n\n");
    std::fflush(stdout);
}

}  // namespace

void BenchTable(const std::string& folder, const std::string& cli, const std::string& sample,
                const std::function<void(const std::string&)>& makeNew) {
    const Place place{folder, cli};
    Table table;
    fs::copy_file(sample, place.Crf(), fs::copy_options::overwrite_existing);
    Measure(place, table, 0);
    for (std::size_t i = 0; i < kMade.size(); ++i) {
        MakeStatement(place, kMade[i], makeNew);
        Measure(place, table, i + 1);
    }
    Print(table);
}

}  // namespace zolmara::bench
