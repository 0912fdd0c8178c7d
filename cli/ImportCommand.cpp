#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "store/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument, Argument{"TEXTFILE", ArgumentKind::Required,
                            "Lines of worksheet, row, column and contents, separated by tabs"}};

void NeedReadableFile(const std::string& path) {
    std::error_code error;
    std::ifstream file(path);
    if (!file || std::filesystem::is_directory(path, error))
        throw StoreError(StoreError::Kind::CannotOpen, fmt::format("{} cannot be read", path));
}

/// An import without a fault leaves its closing message alone, which belongs to no worksheet.
bool IsClean(const Listing& messages) {
    return messages.Rows.size() == 1 && IsBlankValue(messages.Rows.front().front());
}

ExitStatus Import(const Inputs& inputs) {
    const std::string text = FullPath(inputs.Text("TEXTFILE"));
    NeedReadableFile(text);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    TheCliHost().AnswerFile(text);
    ImportASCII();
    if (!gDB.HasTable("Error")) return kRefusedOrMessages;
    auto rows = gDB.OpenRecordset("SELECT Level, Code, Message FROM Error;");
    const Listing messages = ListingOf(rows);
    PrintMessages(messages);
    return IsClean(messages) ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kImport{
    "import", "Take cells from a text file",
    "One line a message: level, tab, code, tab, message. Status 0 when the closing\n"
    "message is the only one. Nothing is recalculated.",
    kArguments, Import};

}  // namespace zolmara::cli
