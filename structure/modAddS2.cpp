#include "structure/modAddS2.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "structure/LineTitle.h"
#include "structure/Renumber.h"
#include "worksheets/Schedules.h"

namespace zolmara {

namespace {

constexpr std::string_view kKey = "LineNum";

/// The bound of a whole line that is added is one less on the form's table than on its mirrors.
constexpr int kAddBoundOnS2 = 49;
constexpr int kAddBoundOnMirrors = 50;
constexpr int kDeleteBound = 49;

bool HasLineFrom(const std::string& table, Currency from, Currency below) {
    return NumOr(gDB.Scalar(fmt::format("Select Count(LineNum) As Cnt From {} Where LineNum>=? And "
                                        "LineNum<?;",
                                        table),
                            {from, below})) > 0;
}

/// True where the lines from a whole one cannot all move up by one. Those of 49 stay on the
/// form's table and move on its mirrors, where they may meet those of 50: a component would part
/// from its schedules. Only under a new line 49 itself the mirrors move by rule. Line 50 stays.
bool IsFullBehind(const std::array<std::string, 11>& tables, Currency line) {
    constexpr auto kLastThatMoves = Currency::FromWhole(kAddBoundOnS2);
    const bool isTaken = HasLine(tables.front(), kKey, line);
    if (line > kLastThatMoves) return isTaken;
    const auto end = line == kLastThatMoves && isTaken ? line + kWholeStep : kLastThatMoves;
    return std::ranges::any_of(tables, [&](const std::string& table) {
        return HasLineFrom(table, end, end + kWholeStep);
    });
}

void RefuseFullRange(const std::array<std::string, 11>& tables, Currency line) {
    if (line.Units() % kSubscriptStep.Units() != 0)
        throw StoreError(StoreError::Kind::Other, fmt::format("{} is no line of table {}.",
                                                              NumberText(line), tables.front()));
    const bool full = line.IsWhole() ? IsFullBehind(tables, line)
                                     : HasLine(tables.front(), kKey, LastOfGroup(line));
    if (!full) return;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("Unable to add line {} to table {}: the lines behind it cannot "
                                 "move up.",
                                 NumberText(line), tables.front()));
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
    RefuseFullRange(tables, line);
    RunAct("Add " + LineTitle(tables.front(), line, false), [&] {
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
    RunAct("Delete " + LineTitle(tables.front(), line), [&] {
        for (const auto& table : tables)
            gDB.Execute(fmt::format("Delete * From {} Where LineNum=?;", table), {line});
        const auto step = ClosingStep(line, KeyBehind(tables.front(), kKey, line));
        for (const auto& table : tables) CloseGap(table, kKey, line, step, kDeleteBound);
    });
    return LineResult::Done;
}

void RenameS2Line(Currency line, int part, std::string_view name, std::string_view ccn) {
    const auto tables = ComponentTables(part);
    RunAct("Rename " + LineTitle(tables.front(), line), [&] {
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
