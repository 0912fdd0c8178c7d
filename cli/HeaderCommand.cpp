#include <fmt/format.h>

#include <array>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"N", ArgumentKind::Optional, "The line to set: 1, 2 or 3"},
    Argument{"TEXT", ArgumentKind::Optional, "Its text, of at most 140 characters"},
};

constexpr std::size_t kTextSize = 140;

int HeaderLineOf(const std::string& text) {
    if (text == "1" || text == "2" || text == "3") return text[0] - '0';
    throw CommandLineError{fmt::format("N must be 1, 2 or 3, not {}", text)};
}

void SetHeaderLine(int line, const std::string& text) {
    if (TextLength(text) > kTextSize)
        throw std::runtime_error(
            fmt::format("HeaderLines line {} takes at most {} characters, "
                        "not {}",
                        line, kTextSize, TextLength(text)));
    RunAct("Change a header line", [&] {
        // A CRF of an earlier program may lack the table.
        if (!TableExists("HeaderLines", false)) Build_HeaderLines();
        if (gDB.Execute("UPDATE HeaderLines SET LineText=? WHERE LineNum=?;", {text, line}) == 0)
            gDB.Execute("INSERT INTO HeaderLines (LineNum,LineText) VALUES (?,?);", {line, text});
    });
}

/// The lines as they stand. To look at them writes nothing, also where the table is missing.
Listing HeaderLines() {
    if (!TableExists("HeaderLines", false))
        return {{"LineNum", "LineText"}, {{1, nullptr}, {2, nullptr}, {3, nullptr}}};
    auto rows = gDB.OpenRecordset("SELECT * FROM HeaderLines ORDER BY LineNum;");
    return ListingOf(rows);
}

ExitStatus Header(const Inputs& inputs) {
    if (inputs.Has("N") != inputs.Has("TEXT")) throw CommandLineError{"TEXT is required with N"};
    const int line = inputs.Has("N") ? HeaderLineOf(inputs.Text("N")) : 0;
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    if (line != 0)
        SetHeaderLine(line, inputs.Text("TEXT"));
    else
        PrintListing(HeaderLines());
    return kDone;
}

}  // namespace

const Command kHeader{"header", "Show the custom header lines, or set one",
                      "The lines print at the top of every page. An empty TEXT clears a line.",
                      kArguments, Header};

}  // namespace zolmara::cli
