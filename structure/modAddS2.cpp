#include "structure/modAddS2.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "structure/Renumber.h"
#include "worksheets/Schedules.h"

namespace zolmara {

namespace {

constexpr std::string_view kKey = "LineNum";

/// The bound of a whole line that is added is one less on the form's table than on its mirrors.
constexpr int kAddBoundOnS2 = 49;
constexpr int kAddBoundOnMirrors = 50;
constexpr int kDeleteBound = 49;

void RefuseFullGroup(const std::string& table, Currency line) {
    if (line.IsWhole() || !HasLine(table, kKey, LastOfGroup(line))) return;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("Unable to add line {} to table {}: the lines behind it cannot "
                                 "move up.",
                                 NumberText(line), table));
}

}  // namespace

std::array<std::string, 11> ComponentTables(int part) {
    std::array<std::string, 11> tables = {TableOf("S2p", part)};
    std::size_t count = 1;
    for (const Schedule& schedule : AllSchedules())
        if (schedule.HasParts) tables.at(count++) = TableOf(schedule, part);
    return tables;
}

void AddS2Line(Currency line, int part) {
    const auto tables = ComponentTables(part);
    RefuseFullGroup(tables.front(), line);
    RunBatch(gDB, [&] {
        for (const auto& table : tables)
            OpenGap(table, kKey, line,
                    table == tables.front() ? kAddBoundOnS2 : kAddBoundOnMirrors);
        for (const auto& table : tables)
            gDB.Execute(fmt::format("Insert Into {} (LineNum) Values(?);", table), {line});
    });
}

LineResult DeleteS2Line(Currency line, int part) {
    const auto tables = ComponentTables(part);
    if (!HasLine(tables.front(), kKey, line)) return LineResult::NoSuchLine;
    RunBatch(gDB, [&] {
        for (const auto& table : tables)
            gDB.Execute(fmt::format("Delete * From {} Where LineNum=?;", table), {line});
        const auto step = ClosingStep(line, KeyBehind(tables.front(), kKey, line));
        for (const auto& table : tables) CloseGap(table, kKey, line, step, kDeleteBound);
    });
    return LineResult::Done;
}

void RenameS2Line(Currency line, int part, std::string_view name, std::string_view ccn) {
    const auto tables = ComponentTables(part);
    RunBatch(gDB, [&] {
        gDB.Execute(fmt::format("UPDATE {} SET Col_1=?,Col_2=? Where LineNum=?;", tables.front()),
                    {name, ccn, line});
        for (const auto& table : tables)
            if (table != tables.front())
                gDB.Execute(
                    fmt::format("UPDATE {} SET Description=?,Col_0=? Where LineNum=?;", table),
                    {name, ccn, line});
    });
}

}  // namespace zolmara
