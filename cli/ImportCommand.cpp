#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "import/ImportASCII.h"
#include "spreadsheet/ImportFile.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"TEXTFILE", ArgumentKind::Required,
             "Lines of worksheet, row, column and contents: text with tabs, .xlsx, .ods, .csv"}};

ExitStatus Import(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const bool clean = ImportFile(FullPath(inputs.Text("TEXTFILE")));
    auto rows = gDB.OpenRecordset("SELECT Level, Code, Message FROM Error;");
    PrintMessages(ListingOf(rows));
    return clean ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kImport{
    "import", "Take cells from a text file or a spreadsheet",
    "One line a message: level, tab, code, tab, message. Status 0 when the closing\n"
    "message is the only one. Nothing is recalculated.",
    kArguments, Import};

}  // namespace zolmara::cli
