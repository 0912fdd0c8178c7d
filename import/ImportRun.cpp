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
    Tell("Load", fmt::format("Table {} is not currently supported for ASCII import", sheet));
}

void ImportRun::Complain(std::string_view sheet, const SourceRow& row, std::string_view text) {
    Tell(sheet, fmt::format("{}\n\r{}, {}, {}, \"{}\"", text, sheet, NumberText(row.Row),
                            NumberText(row.Col), row.Contents));
}

}  // namespace zolmara
