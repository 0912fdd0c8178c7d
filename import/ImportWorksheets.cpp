#include "import/ImportWorksheets.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "core/BusyMain.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/StatusLine.h"
#include "core/Windows.h"
#include "import/ImportSource.h"
#include "import/S2Agreement.h"
#include "store/CopyRows.h"
#include "store/PlainWords.h"
#include "store/ReadSnapshot.h"
#include "store/WholeStep.h"
#include "store/session/Acts.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::string_view kIdentity = "S1p1";

/// Made anew, or left as it was: then what stands in the way is reported. A file that cannot be
/// written to ends it all.
bool Remake(std::string_view item) {
    try {
        bool made = false;
        RunWholeStep(gDB, [&] { made = BuildWorksheet(item); });
        if (made) return true;
        MsgOrLog(fmt::format("Error: The following error was returned when trying to rebuild table "
                             "{}\r\nit is no worksheet of this form",
                             item),
                 kCritical, fmt::format("Worksheet {} Error", item));
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        MsgOrLog(fmt::format("Error: The following error was returned when trying to rebuild table "
                             "{}\r\n{}",
                             item, PlainWords(error)),
                 kCritical, fmt::format("Worksheet {} Error", item));
    }
    return false;
}

std::vector<std::string> FieldNames(Database& db, std::string_view item) {
    std::vector<std::string> names;
    for (const FieldDef& field : db.Table(item).Fields) names.push_back(field.Name);
    return names;
}

/// The names have to agree one by one: the cost centers' columns are told apart by nothing else.
bool SameFields(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    return std::ranges::equal(a, b, SameText);
}

bool Mismatch(std::string_view item) {
    TheDialogs().MsgBox(fmt::format("Unable to import worksheet {} due to column mismatch.", item),
                        kCritical, "Version Error");
    return false;
}

void ReportRow(std::string_view item, const Variant& line, const StoreError& reason) {
    MsgOrLog(fmt::format("Unable to import line {} of worksheet {}: {}", Text(line), item,
                         PlainWords(reason)),
             kCritical, "Import Error");
}

/// What is shown of a run over several worksheets: the one in hand, and how far the whole is.
class RunView {
public:
    RunView(std::span<const ImportEntry> entries, const ImportShow& show) : show_(show) {
        for (const ImportEntry& entry : entries) all_ += RowsOf(entry.Item);
    }

    void Begin(const ImportEntry& entry) {
        text_ = "Processing worksheet " + entry.Text;
        Rows(0);
        TheStatus().ShowCalcMsg(" " + text_);
    }
    void Rows(std::size_t rows) const {
        const double part = (done_ + static_cast<double>(rows)) / std::max(all_, 1.0);
        if (show_) show_(text_, part);
        TheStatus().ShowProgress(part);
    }
    void Finish(const ImportEntry& entry) {
        done_ += RowsOf(entry.Item);
        Rows(0);
        TheStatus().DoEvents();
    }

private:
    static double RowsOf(const std::string& item) {
        if (!gImportDB.HasTable(item)) return 0;
        return NumOr(gImportDB.Scalar(fmt::format("SELECT Count(*) AS Cnt FROM [{}];", item)));
    }

    const BusyMain busy_;
    const StatusLine status_;
    const ImportShow& show_;
    std::string text_;
    double all_ = 0;
    double done_ = 0;
};

std::vector<std::string> RunImport(std::span<const ImportEntry> entries, const ImportShow& show) {
    const ReadSnapshot snapshot(gImportDB);
    const LogRun log("I");
    RunView view(entries, show);
    std::vector<std::string> items;
    std::vector<std::string> failed;
    for (const ImportEntry& entry : entries) {
        view.Begin(entry);
        if (!ImportWorksheet(entry.Item, [&](std::size_t rows) { view.Rows(rows); }))
            failed.push_back(entry.Item);
        items.push_back(entry.Item);
        view.Finish(entry);
    }
    CompareS2WithSchedules(items);
    return failed;
}

}  // namespace

std::vector<ImportEntry> ImportableWorksheets() {
    std::set<std::string> offered;
    Recordset source = gImportDB.OpenRecordset(
        "SELECT Item From Worksheets Where Calc_Lvl < 999 ORDER BY Item;", dbOpenSnapshot);
    for (; !source.Eof(); source.MoveNext()) offered.insert(UCase(StrOr(source[0])));
    offered.erase(UCase(kIdentity));
    std::vector<ImportEntry> entries;
    Recordset rows = gDB.OpenRecordset(
        "SELECT Item, ItemName From Worksheets Where Calc_Lvl < 999 ORDER BY Item;",
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string item = StrOr(rows[0]);
        if (offered.contains(UCase(item)))
            entries.push_back({item, fmt::format("{} ({})", StrOr(rows[1]), item)});
    }
    return entries;
}

bool ImportWorksheet(std::string_view item, const std::function<void(std::size_t)>& progress) {
    if (!Remake(item)) return false;
    gDB.Execute(fmt::format("Delete From {};", item));
    if (!gImportDB.HasTable(item)) return Mismatch(item);
    const std::vector<std::string> fields = FieldNames(gDB, item);
    if (!SameFields(fields, FieldNames(gImportDB, item))) return Mismatch(item);
    const auto refuse = [&](const Variant& line, const StoreError& reason) {
        ReportRow(item, line, reason);
    };
    CopyRows(gImportDB, gDB, item, fields, {.Refused = refuse, .Progress = progress});
    return true;
}

std::vector<std::string> ImportWorksheets(std::span<const ImportEntry> entries,
                                          const ImportShow& show) {
    // What comes from elsewhere must be calculated and checked again.
    TheWindows().EnableMenu("mnuReportSubmit", false);
    std::vector<std::string> failed;
    RunAct("Take over from " + ImportTitle(), [&] { failed = RunImport(entries, show); });
    TheWindows().RefreshOpenForms("");
    return failed;
}

std::vector<ImportMessage> ImportMessages() {
    std::vector<ImportMessage> messages;
    Recordset rows =
        gDB.OpenRecordset("SELECT Severity, Message FROM Log WHERE LogType = 'I';", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) messages.push_back({StrOr(rows[0]), StrOr(rows[1])});
    return messages;
}

}  // namespace zolmara
