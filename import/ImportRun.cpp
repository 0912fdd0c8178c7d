#include "import/ImportRun.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "import/LoaderTools.h"
#include "import/Staging.h"
#include "store/session/CoreTables.h"

namespace zolmara {

bool ImportErrorFlag = false;

namespace {

void Tell(std::string_view level, std::string_view message) {
    AddErrorRow(level, "", message);
    ImportErrorFlag = true;
}

}  // namespace

void ImportRun::DropLine(std::string_view text, std::string_view echo) {
    Tell("Read", ReadMessage(text, echo));
}

void ImportRun::NotWhole(std::string_view echo) {
    AddErrorRow("Read", "", ReadMessage("The following line must be a whole number: ", echo));
    mayLoad_ = false;
}

void ImportRun::NoLoader(std::string_view sheet) {
    Tell("Load", fmt::format("Table {} is not currently supported for ASCII import{}", sheet,
                             FirstOrigin(sheet)));
}

void ImportRun::NotRead(std::string_view reason) {
    Tell("Read", reason);
    mayLoad_ = false;
}

/// Of lines that were merged the first one counts.
void ImportRun::NoteOrigin(const ImportLine& line) {
    if (line.Origin.empty()) return;
    origins_.try_emplace({UCase(line.WorkSheet), line.Row, line.Col}, line.Origin);
}

std::string ImportRun::OriginOf(const Cell& cell) const {
    const auto found = origins_.find(cell);
    return found == origins_.end() ? std::string() : fmt::format(" ({})", found->second);
}

std::string ImportRun::FirstOrigin(std::string_view sheet) const {
    const std::string name = UCase(sheet);
    const auto found = origins_.lower_bound({name, Currency::FromWhole(-1000000), Currency()});
    const bool known = found != origins_.end() && std::get<0>(found->first) == name;
    return known ? fmt::format(" ({})", found->second) : std::string();
}

void ImportRun::Complain(std::string_view sheet, const SourceRow& row, std::string_view text) {
    Tell(sheet, fmt::format(
                    "{}\n\r{}, {}, {}, \"{}\"{}", text, sheet, NumberText(row.Row),
                    NumberText(row.Col), row.Contents,
                    origins_.empty() ? std::string() : OriginOf({UCase(sheet), row.Row, row.Col})));
}

}  // namespace zolmara
