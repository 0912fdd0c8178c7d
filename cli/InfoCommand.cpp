#include <fmt/format.h>

#include <array>
#include <filesystem>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "store/ReadSnapshot.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument};

Variant CountOf(std::string_view table) {
    return gDB.Scalar(fmt::format("SELECT Count(*) AS Cnt FROM {};", table));
}

Variant FileSize() {
    std::error_code error;
    const auto size = std::filesystem::file_size(gCRFPath, error);
    return error ? Variant() : Variant(static_cast<std::int64_t>(size));
}

ExitStatus Info(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ReadSnapshot snapshot(gDB);
    auto master = gDB.OpenRecordset("SELECT * FROM Master;");
    Listing info;
    info.Columns = {"File",         "Form",      "Number",      "Name",       "FYStart",
                    "FYEnd",        "BuildDate", "CostCenters", "Components", "Components_2",
                    "Components_3", "Signature", "Size"};
    info.Rows.push_back({gCRFPath, gFormNum, gProviderNumber, gProviderName, gFYStart, gFYEnd,
                         master["BuildDate"], CountOf("CostCenters"), CountOf("S2p1"),
                         CountOf("S2p2"), CountOf("S2p3"), Signature(), FileSize()});
    PrintRecord(info);
    return kDone;
}

}  // namespace

const Command kInfo{"info", "Show whose Cost Report File this is",
                    "Components, Components_2 and Components_3 count the lines of S-2 Parts I,\n"
                    "II and III. Signature is empty while nobody has signed. Size is in bytes.",
                    kArguments, Info};

}  // namespace zolmara::cli
