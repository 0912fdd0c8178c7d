#include "bench/CalcBench.h"

#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "bench/InMemory.h"
#include "bench/Measure.h"
#include "bench/RawSqlite.h"
#include "bench/Statements.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 5;
constexpr const char* kAim = "1.5 times";

struct Place {
    std::string Folder;
    std::string Large;
    std::string File(const std::string& name) const { return Folder + "/" + name; }
    std::string Work() const { return File("work.CRF"); }
};

void Copy(const std::string& from, const std::string& to) {
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
}

/// A keyed change that moves every allocated amount: the costs on line 53.
void ChangeCosts(double factor) {
    for (const std::string table : {"C1p3", "D1p3"}) {
        auto row = gDB.OpenRecordset("SELECT * FROM " + table + " WHERE LineNum=53");
        row.Edit();
        for (int i = 3; i < row.FieldCount(); ++i)
            row.Set(i, RoundTo((NumOr(row[i]) + 1000) * factor, 0));
        row.Update();
    }
}

int Once(const std::string&) { return 1; }

/// The large statement with a change that is not calculated.
std::string Changed(const Place& place) {
    const std::string before = place.File("before.CRF");
    Copy(place.Large, before);
    Open(before);
    ChangeCosts(1.01);
    DropCrf();
    return before;
}

/// Every allocated amount changes: each run begins with the file as it was before.
void BenchFirstRun(const Place& place) {
    const std::string before = Changed(place);
    const Least calc = LeastOf(
        kRuns,
        [&] {
            DropCrf();
            Copy(before, place.Work());
            Open(place.Work());
        },
        [] { Calc_All(); });
    DropCrf();
    const auto changes = Differences(before, place.Work());
    const auto raw = place.File("raw.CRF");
    const Least yardstick = LeastOf(
        kRuns, [&] { Copy(before, raw); }, [&] { ReadAndWrite(raw, changes, Once); });
    const auto matrices = LoadMatrices(before);
    const Least memory = LeastOf(kRuns, [&] {
        if (Calculate(matrices) == 0) throw std::runtime_error("no amounts in memory");
    });
    const std::string what =
        fmt::format("Calc_All, all allocated amounts change, {} cells written", CellsOf(changes));
    Report(what, calc, "raw SQLite, read once and written", yardstick, place.Folder, kAim);
    Report(what, calc, "in memory", memory, place.Folder);
}

/// Each run reads the file anew.
void BenchUnchanged(const Place& place) {
    const auto reopen = [&] {
        DropCrf();
        Open(place.Work());
    };
    const Least unchanged = LeastOf(kRuns, reopen, [] { Calc_All(); });
    const Least again = LeastOf(kRuns, [] { Calc_All(); });
    const long writes = WritingCalls();
    Calc_All();
    const long written = WritingCalls() - writes;
    DropCrf();
    const Least reading = LeastOf(kRuns, [&] { ReadAndWrite(place.Work(), {}, Once); });
    Report("Calc_All, nothing changed", unchanged, "raw SQLite, reading", reading, place.Folder,
           kAim);
    Report("Calc_All again, nothing changed", again, "raw SQLite, reading", reading, place.Folder);
    ReportNote("Calc_All of nothing changed", fmt::format("{} calls that write", written));
}

void CheckAndVacuum(const std::string& path) {
    RawFile file(path);
    file.Run("PRAGMA integrity_check");
    file.Run("VACUUM INTO '" + path + ".copy'");
}

void BenchOpenClose(const Place& place) {
    const std::string work = place.Work();
    const auto reset = [&] {
        DropCrf();
        Copy(place.Large, work);
        fs::remove(work + ".copy");
    };
    const Least open = LeastOf(kRuns, reset, [&] { Open(work); });
    const Least rawOpen = LeastOf(kRuns, reset, [&] { RawFile(work).ReadAll("Master"); });
    Report("open", open, "raw SQLite", rawOpen, place.Folder);
    const auto resetAndOpen = [&] {
        reset();
        Open(work);
    };
    const Least close = LeastOf(kRuns, resetAndOpen, [] { mnuReportClose(); });
    const Least rawClose = LeastOf(kRuns, reset, [&] { CheckAndVacuum(work); });
    Report("close: check and compact", close, "raw SQLite", rawClose, place.Folder);
}

}  // namespace

void BenchCalc(const std::string& folder, const std::string& large) {
    const Place place{folder, large};
    BenchFirstRun(place);
    BenchUnchanged(place);
    BenchOpenClose(place);
}

}  // namespace zolmara::bench
