#include "cli/Lines.h"

#include <fmt/format.h>

#include <stdexcept>

#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

std::optional<LineStep> WishOf(const Inputs& inputs) {
    if (inputs.Has("--whole") && inputs.Has("--sub"))
        throw CommandLineError{"--whole and --sub exclude each other"};
    if (inputs.Has("--whole")) return LineStep::Whole;
    if (inputs.Has("--sub")) return LineStep::Subscript;
    return std::nullopt;
}

std::runtime_error NoSuchLine(std::string_view item, Currency line) {
    return std::runtime_error(fmt::format("{} has no line {}", item, NumberText(line)));
}

/// The line that was named is not there; it may be the very one that comes next.
std::optional<Currency> NextLineIfNamed(std::string_view item, Currency line,
                                        std::optional<LineStep> wish) {
    const LineOffer offer = OfferLine(item);
    if (offer.Refused()) return ChooseLine(offer);
    const bool whole = offer.Whole == line && wish != LineStep::Subscript;
    const bool subscript = offer.Subscript == line && wish != LineStep::Whole;
    if (whole || subscript) return line;
    throw NoSuchLine(item, line);
}

}  // namespace

std::optional<Currency> LineGiven(const Inputs& inputs) {
    if (!inputs.Has("LINE")) return std::nullopt;
    return LineOf(inputs.Text("LINE"));
}

Currency NeedLine(std::string_view item, const Inputs& inputs) {
    const Currency line = LineOf(inputs.Text("LINE"));
    if (!HasRow(item, line)) throw NoSuchLine(item, line);
    return line;
}

std::optional<Currency> NewLine(std::string_view item, const Inputs& inputs) {
    const auto wish = WishOf(inputs);
    const auto current = LineGiven(inputs);
    if (current && !HasRow(item, *current)) return NextLineIfNamed(item, *current, wish);
    const LineOffer offer = OfferLine(item, current);
    const auto line = ChooseLine(offer, wish);
    if (!line && !offer.Refused())
        throw std::runtime_error(fmt::format("No {}line of {} can be added{}",
                                             wish == LineStep::Whole       ? "whole "
                                             : wish == LineStep::Subscript ? "subscripted "
                                                                           : "",
                                             item,
                                             current ? " behind " + NumberText(*current) : ""));
    return line;
}

bool AllAccepted(const std::vector<CellEntry>& entries) {
    for (CellEntry entry : entries) {
        CheckCell(entry);
        if (!entry.Refused) continue;
        MsgOrLog(entry.Text, entry.Style, entry.Title);
        return false;
    }
    return true;
}

bool AddNamedLine(std::string_view item, Currency line, std::vector<CellEntry> entries) {
    bool done = false;
    RunAct("Add a line", [&] {
        done = AddLine(item, line);
        // A column that could not be made, which has been told, leaves the line; it gets its name.
        for (CellEntry& entry : entries) {
            entry.NewRow = false;
            if (HasRow(item, line)) done = EnterCell(entry) && done;
        }
    });
    return done;
}

ExitStatus DeleteGivenLine(std::string_view item, const Inputs& inputs) {
    const Currency line = NeedLine(item, inputs);
    switch (cmdDelete(item, line)) {
        case LineResult::Done:
            return kDone;
        case LineResult::NoSuchLine:
            throw NoSuchLine(item, line);
        case LineResult::Refused:
            throw std::runtime_error(
                fmt::format("Line {} of {} belongs to the form and stays", NumberText(line), item));
        case LineResult::Cancelled:
            break;
    }
    return kRefusedOrMessages;
}

ExitStatus ListTable(std::string_view table) {
    auto rows = gDB.OpenRecordset(
        fmt::format("SELECT * FROM [{}] ORDER BY {};", table, LineKeyOf(table)), dbOpenSnapshot);
    PrintListing(ListingOf(rows));
    return kDone;
}

}  // namespace zolmara::cli
