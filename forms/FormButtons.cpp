#include "forms/FormButtons.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "forms/CellRules.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "structure/EditLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

struct ButtonSpec {
    std::string_view Name;
    std::string_view Caption;
    std::string_view ToolTip;
    bool InEdit;
    bool InView;
};

constexpr ButtonSpec kButtons[] = {
    {"cmdRecalculate", "&Recalculate", "Recalculate the whole CRF and show this worksheet", true,
     true},
    {"cmdOpenView", "&Open View", "Save and view this worksheet", true, false},
    {"cmdOpenEdit", "&Open Edit", "Edit this worksheet", false, true},
    {"cmdPrevious", "Pre&vious", "", true, true},
    {"cmdNext", "&Next", "", true, true},
    {"cmdAdd", "&Add", "Add a line behind the current one", true, false},
    {"cmdDelete", "&Delete", "Delete the current line", true, false},
    {"cmdPrint", "&Print", "Print this worksheet", false, true},
    {"cmdClose", "&Close", "Close this window", true, true},
};

/// "Open A-6 For Edit", or off at the end of the order.
void SetNeighbour(FormButton& button, const std::string& caption, bool forward) {
    const std::string item = NextWorksheet(caption, forward);
    button.Enabled = !item.empty();
    if (button.Enabled)
        button.ToolTip = fmt::format("Open {} For {}", ItemDisplayName(item), LeftText(caption, 4));
}

/// Worksheets of the walk that have no edit form are passed over.
bool IsWalked(FormMode mode, std::string_view item) {
    return FindWorksheet(item) != nullptr && HasForm(mode, item);
}

int LinesOfG(int group) {
    return static_cast<int>(
        NumOr(gDB.Scalar("Select Count(*) as Cnt From G Where Int(LineNum) = ?;", {group})));
}

/// Of all lines of the balance sheet those of line 49 alone come and go.
LineButtons ButtonsOnG(std::optional<Currency> line) {
    constexpr int kFree = 49;
    constexpr int kMost = 99;
    if (!line || line->Whole() != kFree) return {};
    const int count = LinesOfG(kFree);
    return {count<kMost, count> 1};
}

bool MayDelete(const std::string& table, std::optional<Currency> line) {
    if (SameText(table, "A6")) return true;
    return line && IsLineDeletable(table, *line);
}

}  // namespace

std::vector<FormButton> FormButtons(const WorksheetForm& form, const FormSpec& spec) {
    std::vector<FormButton> buttons;
    for (const ButtonSpec& button : kButtons) {
        if (!(form.Mode == FormMode::Edit ? button.InEdit : button.InView)) continue;
        buttons.push_back({std::string(button.Name), std::string(button.Caption),
                           std::string(button.ToolTip), true});
        FormButton& made = buttons.back();
        if (made.Name == "cmdPrevious" || made.Name == "cmdNext")
            SetNeighbour(made, form.Caption, made.Name == "cmdNext");
        if (made.Name == "cmdAdd" || made.Name == "cmdDelete") made.Enabled = spec.HasLines;
        if (made.Name == "cmdOpenEdit") made.Enabled = HasForm(FormMode::Edit, form.Item);
    }
    return buttons;
}

LineButtons LineButtonsOn(const WorksheetForm& form, std::optional<Currency> line) {
    const FormSpec* spec = FindFormSpec(form.Item);
    if (form.Mode == FormMode::View || spec == nullptr || !spec->HasLines) return {};
    if (SameText(form.Item, "G")) return ButtonsOnG(line);
    if (spec->Shared) return {true, true};
    const LineOffer offer = OfferLine(form.Table, line);
    const bool add = offer.Whole || offer.Subscript || offer.First || offer.BlankLine;
    return {add, MayDelete(form.Table, line)};
}

std::string NextWorksheet(std::string_view caption, bool forward) {
    const std::string item = ItemOfCaption(caption);
    const FormMode mode = ModeNamed(LeftText(caption, 4)).value_or(FormMode::View);
    if (FindWorksheet(item) == nullptr) return "";
    auto rows = gDB.OpenRecordset(
        fmt::format("SELECT Item From Worksheets Where (((ItemName) {} ?)) ORDER BY ItemName {};",
                    forward ? ">" : "<", forward ? "" : "DESC"),
        {ItemDisplayName(item)});
    for (; !rows.Eof(); rows.MoveNext())
        if (IsWalked(mode, StrOr(rows[0]))) return StrOr(rows[0]);
    return "";
}

}  // namespace zolmara
