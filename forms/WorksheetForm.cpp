#include "forms/WorksheetForm.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "forms/FormButtons.h"
#include "forms/FormColumns.h"
#include "forms/FormTable.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

constexpr FormMode kModes[] = {FormMode::Edit, FormMode::View};
constexpr std::size_t kItemInCaption = 16;

std::string_view NameIn(const FormSpec& spec, FormMode mode) {
    return mode == FormMode::Edit ? spec.EditName : spec.ViewName;
}

void AddEntries(std::vector<FormEntry>& entries, const FormSpec& spec, FormMode mode) {
    if (NameIn(spec, mode).empty()) return;
    const std::string name(NameIn(spec, mode));
    if (!spec.Items.ends_with('?')) return entries.push_back({mode, std::string(spec.Items), name});
    for (const char part : {'1', '2', '3'})
        entries.push_back(
            {mode, std::string(spec.Items.substr(0, spec.Items.size() - 1)) + part, name});
}

/// The Item in the spelling of the form, whose parts have a small "p".
std::string Spelled(const FormSpec& spec, std::string_view item) {
    std::string spelled(spec.Items);
    if (spelled.ends_with('?')) spelled.back() = item.back();
    return spelled;
}

std::string CaptionOf(const FormSpec& spec, FormMode mode, const std::string& item) {
    const std::string_view own = mode == FormMode::Edit ? spec.EditCaption : spec.ViewCaption;
    if (!own.empty()) return std::string(own);
    return fmt::format("{} Worksheet {}", ModeName(mode), item);
}

WorksheetForm Describe(const FormSpec& spec, FormMode mode, const std::string& item) {
    WorksheetForm form;
    form.Mode = mode;
    form.Name = NameIn(spec, mode);
    form.Shared = spec.Shared;
    form.Item = item;
    form.Table = spec.Table.empty() ? item : std::string(spec.Table);
    form.Key = gDB.Table(form.Table).Fields.front().Name;
    form.Caption = CaptionOf(spec, mode, item);
    form.RowSource =
        Replace(mode == FormMode::Edit ? spec.EditRows : spec.ViewRows, "{}", form.Table);
    form.Columns = FormColumns(spec, form.Table, mode);
    form.FrozenColumns = spec.Frozen;
    form.GrowsByPaste = mode == FormMode::Edit && spec.GrowsByPaste;
    form.Buttons = FormButtons(form, spec);
    return form;
}

}  // namespace

std::string_view ModeName(FormMode mode) { return mode == FormMode::Edit ? "Edit" : "View"; }

std::optional<FormMode> ModeNamed(std::string_view word) {
    for (const FormMode mode : kModes)
        if (SameText(word, ModeName(mode))) return mode;
    return std::nullopt;
}

bool FormColumn::IsNumber() const {
    return Type == FieldType::dbDouble || Type == FieldType::dbCurrency ||
           Type == FieldType::dbInteger;
}

int WorksheetForm::ColumnOf(std::string_view field) const {
    const auto found = std::ranges::find_if(
        Columns, [&](const FormColumn& column) { return SameText(column.Field, field); });
    return found == Columns.end() ? -1 : static_cast<int>(found - Columns.begin());
}

const FormButton* WorksheetForm::Button(std::string_view name) const {
    const auto found = std::ranges::find(Buttons, name, &FormButton::Name);
    return found == Buttons.end() ? nullptr : &*found;
}

const std::vector<FormEntry>& AllForms() {
    static const std::vector<FormEntry> entries = [] {
        std::vector<FormEntry> all;
        for (const FormMode mode : kModes)
            for (const FormSpec& spec : AllFormSpecs()) AddEntries(all, spec, mode);
        return all;
    }();
    return entries;
}

bool HasForm(FormMode mode, std::string_view item) {
    const FormSpec* spec = FindFormSpec(item);
    return spec != nullptr && !NameIn(*spec, mode).empty();
}

std::optional<WorksheetForm> DescribeForm(FormMode mode, std::string_view item) {
    const FormSpec* spec = FindFormSpec(item);
    if (spec == nullptr) return std::nullopt;
    const FormMode shown = spec->EditName.empty() ? FormMode::View : mode;
    return Describe(*spec, shown, Spelled(*spec, item));
}

std::string UnknownWorksheetText(std::string_view mode, std::string_view item) {
    return fmt::format("Unknown worksheet requested ({}) for {}.", item, mode);
}

std::string ItemOfCaption(std::string_view caption) {
    return std::string(MidText(caption, kItemInCaption));
}

}  // namespace zolmara
