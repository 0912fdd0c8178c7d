#pragma once

// Adding and deleting lines as an editor's buttons do: which new line is offered behind the
// current one, the question when there are two, and the work itself.
//
// An `item` here is "CostCenters", "S2p1" to "S2p3", "A6", "A8", "A81p1", "A81p2", "G1", "S1p1"
// or "S1p2".

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/Currency.h"
#include "structure/Renumber.h"

namespace zolmara {

/// What may be added behind a line. Nothing at all is possible where a group is full.
struct LineOffer {
    std::optional<Currency> Subscript;
    std::optional<Currency> Whole;
    std::string Question;  ///< Yes the whole line, No the subscript, when both are offered

    /// A line that is offered ahead of the others, by a question whose default is No.
    std::optional<Currency> First;
    std::string FirstQuestion;

    /// Why nothing is offered; empty where the rules alone leave nothing.
    std::string RefusalTitle;
    std::string RefusalText;
    std::optional<Currency> BlankLine;  ///< the first row without a name, for the cursor

    bool Refused() const { return !RefusalText.empty(); }
};

/// True for an item whose lines can be added and deleted.
bool HasFreeLines(std::string_view item);

/// What may be added behind the current line, by default the last one that the editor shows; on
/// an empty table that is line 1. Asks and changes nothing.
LineOffer OfferLine(std::string_view item, std::optional<Currency> current = std::nullopt);
LineOffer OfferCostCenter(std::optional<Currency> current = std::nullopt);
LineOffer OfferComponent(int part, std::optional<Currency> current = std::nullopt);

/// Shows a refusal, or asks which of the offered lines it shall be; with a wish only the question
/// for the first line is asked, and for a subscript not that. Nothing when the user cancels or the
/// wish is not offered.
std::optional<Currency> ChooseLine(const LineOffer& offer,
                                   std::optional<LineStep> wish = std::nullopt);

/// Makes room for a line that was offered and inserts it. False when a cost center's column could
/// not be added, which has been reported.
bool AddLine(std::string_view item, Currency line);

/// Deletes a line and closes the gap; on A-6 gaps stay. Lines of the form and totals only beep.
LineResult DeleteLine(std::string_view item, Currency line);

/// True where the editor lets the line go: a line that it shows and that is not of the form.
bool IsLineDeletable(std::string_view item, Currency line);

/// Deletes the selected entries of A-6. With none selected a box explains how to select one.
LineResult DeleteSelectedA6(std::span<const Currency> lines);

/// cmdAdd: the offer, the question, the add, and the refresh of the open windows. Gives the new
/// line.
std::optional<Currency> cmdAdd(std::string_view item,
                               std::optional<Currency> current = std::nullopt,
                               std::optional<LineStep> wish = std::nullopt);
/// cmdDelete: the delete and the refresh.
LineResult cmdDelete(std::string_view item, Currency line);

}  // namespace zolmara
