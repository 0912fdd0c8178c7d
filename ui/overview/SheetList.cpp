#include "ui/overview/SheetList.h"

#include <algorithm>
#include <map>

#include "core/Globals.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/FindingTarget.h"
#include "worksheets/CellSource.h"
#include "worksheets/Explain.h"
#include "worksheets/SheetNames.h"
#include "worksheets/SheetTitles.h"

namespace zolmara::ui {
namespace {

QString Counted(int count, const char* one, const char* many) {
    return count == 0 ? QString() : QString("%1 %2").arg(count).arg(count == 1 ? one : many);
}

SheetRow RowOf(const std::string& item) {
    return {.Item = item,
            .Name = Q(PrintedName(item)) + ", " + Q(SheetTitle(item)),
            .State = StateOfSheet(item)};
}

/// Each finding counts for the worksheet that its message names.
void CountFindings(std::vector<SheetRow>& sheets) {
    if (!TableExists("Error", false)) return;
    std::map<std::string, SheetRow*> byItem;
    for (SheetRow& sheet : sheets) byItem[sheet.Item] = &sheet;
    Recordset rows = gDB.OpenRecordset("SELECT [Level], Code, Message FROM Error;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string level = StrOr(rows[0]);
        if (level != kNonFatalError && level != kPotentialError) continue;
        const auto target = TargetOf(StrOr(rows[2]));
        const auto found = target ? byItem.find(target->Item) : byItem.end();
        if (found == byItem.end()) continue;
        ++(level == kNonFatalError ? found->second->Errors : found->second->Warnings);
        found->second->Codes << Q(StrOr(rows[1]));
    }
}

}  // namespace

QString SheetRow::FindingsText() const {
    QStringList parts{Counted(Errors, "error", "errors"), Counted(Warnings, "warning", "warnings")};
    parts.removeAll(QString());
    return parts.join(", ");
}

bool SheetRow::Matches(const QString& filter) const {
    const QString wanted = filter.trimmed();
    const auto holds = [&](const QString& text) {
        return text.contains(wanted, Qt::CaseInsensitive);
    };
    return holds(Name) || holds(Q(Item)) || std::ranges::any_of(Codes, holds);
}

std::vector<SheetRow> ReadSheets() {
    std::vector<SheetRow> sheets;
    for (const std::string& item : SheetsByLetter()) {
        if (item == "A") {
            // The form's lines are in both from the beginning.
            sheets.push_back({.Item = "CCs", .Name = "Cost Centers", .State = SheetState::Keyed});
            sheets.push_back({.Item = "ES",
                              .Name = "Pooled Allocation Statistical Basis",
                              .State = SheetState::Keyed});
        }
        sheets.push_back(RowOf(item));
    }
    CountFindings(sheets);
    return sheets;
}

std::optional<CellRef> TotalOf(const std::string& item) {
    StoreCells cells;
    const auto& lines = cells.Lines(item);
    const auto& fields = cells.Fields(item);
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        for (auto field = fields.rbegin(); field != fields.rend(); ++field)
            if (CellRef cell{item, *line, *field}; StateOf(cell) == CellState::Computed)
                return cell;
    return std::nullopt;
}

}  // namespace zolmara::ui
