#include "spreadsheet/Export.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "core/Globals.h"
#include "core/Status.h"
#include "spreadsheet/BookLayout.h"
#include "spreadsheet/ExportHead.h"
#include "spreadsheet/ExportSheet.h"
#include "spreadsheet/FindingsSheet.h"
#include "spreadsheet/Workbook.h"
#include "store/OneState.h"
#include "store/session/Session.h"
#include "worksheets/SheetTitles.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

/// Tables that are no worksheets and that formulas and readers need.
constexpr const char* kOtherTables[] = {"CostCenters", "ES"};

std::vector<std::string> AllItems() {
    std::vector<std::string> items;
    for (const std::string& sheet : SheetsByLetter())
        if (gDB.HasTable(sheet)) items.push_back(sheet);
    for (const char* table : kOtherTables)
        if (gDB.HasTable(table)) items.emplace_back(table);
    return items;
}

std::string ItemNamed(const std::string& name) {
    for (const std::string& item : AllItems())
        if (SameText(item, name)) return item;
    if (SameText(name, "CCs")) return kOtherTables[0];
    throw StoreError(StoreError::Kind::NoSuchItem, fmt::format("{} is no worksheet", name));
}

/// Each once, in the order of the form.
std::vector<std::string> ItemsOf(const ExportChoice& choice) {
    if (choice.Items.empty()) return AllItems();
    std::vector<std::string> named;
    for (const std::string& name : choice.Items) named.push_back(ItemNamed(name));
    std::vector<std::string> items = AllItems();
    std::erase_if(items, [&](const std::string& item) {
        return std::ranges::find(named, item) == named.end();
    });
    return items;
}

void DefineTotals(Workbook& book, const SheetLayout& sheet) {
    const Worksheet* worksheet = FindWorksheet(sheet.Item);
    if (worksheet == nullptr) return;
    for (const std::string& field : sheet.Fields) {
        if (!field.starts_with("Col_")) continue;
        const ColumnRules rules(sheet.Item, field);
        for (const ComputedLine& computed : worksheet->ComputedLines) {
            const Currency line = Currency::FromWhole(computed.Line);
            const CellDescription* rule = rules.On(line);
            if (sheet.RowOf(line) == 0 || rule == nullptr ||
                rule->Formula.Kind == NodeKind::Nothing)
                continue;
            book.DefineName(TotalName(sheet.Item, NumberText(line), field),
                            "=" + Absolute(sheet, sheet.ColumnOf.at(field), sheet.RowOf(line)));
        }
    }
}

}  // namespace

std::string TotalName(const std::string& item, const std::string& lineText,
                      const std::string& field) {
    return fmt::format("{}_L{}_C{}", item, Replace(lineText, ".", "_"), field.substr(4));
}

namespace {

void WriteBook(const std::string& path, const ExportChoice& choice, const OneState& state) {
    const std::vector<std::string> items = ItemsOf(choice);
    StoreCells cells;
    const SheetHead head = ReadSheetHead();
    const BookLayout layout(cells, items, head.Rows());
    Workbook book(path, true);
    std::optional<ExportSheet::Formulas> formulas;
    if (!choice.Values) formulas.emplace(layout);
    double done = 0;
    for (const SheetLayout& sheet : layout.Sheets()) {
        ExportSheet(book, sheet, head, formulas ? &*formulas : nullptr).Write();
        done += 1;
        TheStatus().ShowProgress(done / static_cast<double>(items.size() + 1));
        TheStatus().DoEvents();
    }
    if (choice.Items.empty()) WriteFindings(book, layout);
    for (const SheetLayout& sheet : layout.Sheets()) DefineTotals(book, sheet);
    state.NeedToHold(path);
    book.Put();
}

}  // namespace

void ExportWorkbook(const std::string& path, const ExportChoice& choice) {
    NeedWorkbookName(path);
    RunInOneState(gDB, path, [&](const OneState& state) { WriteBook(path, choice, state); });
}

}  // namespace zolmara
