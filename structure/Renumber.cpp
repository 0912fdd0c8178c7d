#include "structure/Renumber.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

void Lift(std::string_view table, std::string_view key, std::string_view by, Currency line,
          Currency bound) {
    gDB.Execute(
        fmt::format("UPDATE {0} SET {1} = {1}+{2} WHERE ({1}>=? And {1}<?);", table, key, by),
        {line, bound});
}

void Fall(std::string_view table, std::string_view key, std::string_view by) {
    gDB.Execute(fmt::format("UPDATE {0} SET {1} = {1}-{2} WHERE ({1}>=10000);", table, key, by));
}

}  // namespace

void OpenGap(std::string_view table, std::string_view key, Currency line, int bound) {
    if (line.IsWhole())
        Lift(table, key, "10001", line, Currency::FromWhole(bound));
    else
        Lift(table, key, "10000.01", line, NextGroup(line));
    Fall(table, key, "10000");
}

void CloseGap(std::string_view table, std::string_view key, Currency line, LineStep step,
              int bound) {
    const bool whole = step == LineStep::Whole;
    Lift(table, key, "10000", line, whole ? Currency::FromWhole(bound) : NextGroup(line));
    Fall(table, key, whole ? "10001" : "10000.01");
}

Currency KeyBehind(std::string_view table, std::string_view key, Currency line) {
    return CurOr(gDB.Scalar(
        fmt::format("Select Min({1}) As MinLn From {0} Where {1}>?;", table, key), {line}));
}

LineStep ClosingStep(Currency line, Currency keyBehind) {
    const bool subscriptsBehind = keyBehind.Whole() == line.Whole();
    return line.IsWhole() && !subscriptsBehind ? LineStep::Whole : LineStep::Subscript;
}

bool HasLine(std::string_view table, std::string_view key, Currency line) {
    auto sql = fmt::format("Select Count({1}) As Cnt From {0} Where {1}=?;", table, key);
    return NumOr(gDB.Scalar(sql, {line})) > 0;
}

int GroupSize(std::string_view table, std::string_view key, Currency line) {
    auto sql = fmt::format("Select Count({1}) As CntLN From {0} Where Fix({1})=?;", table, key);
    return static_cast<int>(NumOr(gDB.Scalar(sql, {GroupOf(line)})));
}

}  // namespace zolmara
