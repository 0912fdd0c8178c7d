#include "bench/EntryBench.h"

#include <fmt/format.h>

#include <fstream>

#include "bench/LargeStatement.h"
#include "bench/Measure.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

constexpr int kRuns = 7;

struct Size {
    const char* Name;
    int Components;
    int CostCenters;
};
constexpr Size kSizes[] = {
    {"small", 60, 30}, {"medium", 300, 50}, {"large", 1500, 100}, {"huge", 5000, 200}};

void Make(const std::string& folder, const Size& size,
          const std::function<void(const std::string&)>& makeNew) {
    const std::string text = folder + "/entries.txt";
    {
        std::ofstream file(text, std::ios::binary);
        LargeShape shape;
        shape.Components = size.Components;
        shape.CostCenters = size.CostCenters;
        WriteLargeStatement(file, shape);
    }
    makeNew(folder + "/entries.CRF");
    ImportAsciiFile(text);
    Calc_All();
}

/// Adds 1 to a cell, which is a commit of its own.
void Key(const std::string& table, const std::string& field, int line) {
    gDB.Execute(
        fmt::format("UPDATE {0} SET {1}=IIF(IsNull({1}),0,{1})+1 WHERE LineNum=?;", table, field),
        {line});
}

struct Entry {
    const char* What;
    const char* Table;
    const char* Field;
    int Line;
};
constexpr Entry kEntries[] = {{"an expense on A", "A", "Col_1", 8},
                              {"a statistic on C-1", "C1p1", "CC_100", 1},
                              {"a statistic on E-1", "E1p1", "Col_1", 1},
                              {"a balance on G", "G", "Col_1", 1}};

}  // namespace

void BenchEntries(const std::string& folder,
                  const std::function<void(const std::string&)>& makeNew) {
    for (const Size& size : kSizes) {
        Make(folder, size, makeNew);
        const double all = Seconds(kRuns, [] { Calc_All(); });
        Report(fmt::format("{}: Calc_All, nothing changed", size.Name), all, "", folder);
        Calc_Changed();
        Report(fmt::format("{}: Calc_Changed, nothing changed", size.Name),
               Seconds(kRuns, [] { Calc_Changed(); }), "Calc_All", all, folder);
        for (const Entry& entry : kEntries) {
            const auto key = [&] { Key(entry.Table, entry.Field, entry.Line); };
            const double seconds = Seconds(kRuns, key, [] { Calc_Changed(); });
            Report(fmt::format("{}: after {}", size.Name, entry.What), seconds, "Calc_All", all,
                   folder);
        }
        DropCrf();
    }
}

}  // namespace zolmara::bench
