#include "structure/LineTitle.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

constexpr std::size_t kMostLetters = 40;

/// The name with the blank ahead of it.
std::string NameBehind(std::string_view table, std::string_view field, Currency line) {
    const std::string name(Trim(StrOr(
        gDB.Scalar(fmt::format("SELECT {} FROM {} WHERE LineNum=?;", field, table), {line}))));
    if (name.empty()) return "";
    return " " + (TextLength(name) > kMostLetters
                      ? std::string(LeftText(name, kMostLetters)) + " ..."
                      : name);
}

}  // namespace

std::string LineTitle(std::string_view item, Currency line, bool named) {
    const std::string number = NumberText(line);
    if (SameText(item, "CostCenters"))
        return "cost center " + number + (named ? NameBehind("CostCenters", "CCName", line) : "");
    if (LCase(item).starts_with("s2p"))
        return fmt::format("component {}{} of {}", number,
                           named ? NameBehind(item, "Col_1", line) : "", PrintedName(item));
    return fmt::format("line {} of {}", number, PrintedName(item));
}

}  // namespace zolmara
