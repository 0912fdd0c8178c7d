#include "bench/EntryBench.h"

#include <fmt/format.h>

#include "bench/Measure.h"
#include "bench/Statements.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

constexpr int kRuns = 7;

constexpr Size kSmall = {"small", 60, 30};

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

void BenchSize(const std::string& folder, const Size& size) {
    MakeStatement(folder + "/entries.CRF", ShapeOf(size));
    const Least all = LeastOf(kRuns, [] { Calc_All(); });
    const auto against = [&](const std::string& what, const Least& took) {
        Report(fmt::format("{}: {}", size.Name, what), took, "`Calc_All`", all, folder);
    };
    Report(fmt::format("{}: `Calc_All`, nothing changed", size.Name), all, "", folder);
    Calc_Changed();
    against("`Calc_Changed`, nothing changed", LeastOf(kRuns, [] { Calc_Changed(); }));
    for (const Entry& entry : kEntries) {
        const auto key = [&] { Key(entry.Table, entry.Field, entry.Line); };
        against(fmt::format("after {}", entry.What), LeastOf(kRuns, key, [] { Calc_Changed(); }));
    }
    DropCrf();
}

}  // namespace

void BenchEntries(const std::string& folder) {
    BenchSize(folder, kSmall);
    for (const Size& size : kSizes) BenchSize(folder, size);
}

}  // namespace zolmara::bench
