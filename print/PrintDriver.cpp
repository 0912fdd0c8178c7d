#include "print/PrintDriver.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "core/BusyPointer.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/StatusLine.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "print/SendPrtFile.h"
#include "store/AmountSpool.h"
#include "store/OneState.h"
#include "store/ReadThrough.h"
#include "store/RunStopped.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"
#include "worksheets/WholeForm.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

/// A report and the worksheets that it shows.
struct ReportEntry {
    std::string_view From;  ///< the first and the last of them, in the order of their names
    std::string_view To;
    std::string_view File;  ///< empty where each worksheet has its own
    void (*Print)(std::string_view item, PrintRun& run);
};

template <void (*Report)(PrintRun&)>
void Whole(std::string_view /*item*/, PrintRun& run) {
    Report(run);
}

void PrintS(std::string_view /*item*/, PrintRun& run) { Print_Sp1(run); }

constexpr std::array<ReportEntry, 18> kReports = {{
    {"A", "A", "A.prt", Whole<Print_A>},
    {"A6", "A6", "A6.prt", Whole<Print_A6>},
    {"A7", "A7p2", "A7.prt", Whole<Print_A7>},
    {"A8", "A8", "A8.prt", Whole<Print_A8>},
    {"A81p1", "A81p1", "A81.prt", Whole<Print_A81>},
    {"Bp1", "Bp3", "", Print_Bx},
    {"B1p1", "B1p3", "", Print_Bx},
    {"Cp1", "Cp3", "", Print_Bx},
    {"C1p1", "C1p3", "", Print_Bx},
    {"Dp1", "Dp3", "", Print_Bx},
    {"D1p1", "D1p3", "", Print_Bx},
    {"E", "E\x7f", "", Print_Ex},
    {"F", "F\x7f", "", Print_Fx},
    {"G", "G", "G.prt", Whole<Print_G>},
    {"G1", "G1", "G1.prt", Whole<Print_G1>},
    {"Sp1", "Sp1", "SS.prt", PrintS},
    {"S1p1", "S1p2", "S1.prt", Whole<Print_S1>},
    {"S2p1", "S2p3", "S2.prt", Whole<Print_S2>},
}};

bool LiesBetween(std::string_view item, std::string_view from, std::string_view to) {
    return CompareText(item, from) >= 0 && CompareText(item, to) <= 0;
}

const ReportEntry* ReportOf(std::string_view item) {
    const auto found = std::ranges::find_if(kReports, [&](const ReportEntry& report) {
        return LiesBetween(item, report.From, report.To);
    });
    return found == kReports.end() ? nullptr : &*found;
}

bool IsAnyOf(std::string_view item, std::initializer_list<std::string_view> items) {
    return std::ranges::any_of(items,
                               [&](std::string_view other) { return SameText(item, other); });
}

/// The main window while reports are printed. Messages go to the log. What is read of the CRF goes
/// by and is not kept.
class PrintingState {
public:
    PrintingState() {
        // A CRF that takes no writes prints as well; its messages are boxes.
        if (!gDB.IsReadOnly()) log_.emplace("P");
    }

private:
    StatusLine status_;
    BusyPointer busy_;
    std::optional<LogRun> log_;
    const ReadThrough reading_{gDB};
    const AmountSpool amounts_{gDB};
};

Recordset OpenWorksheets() {
    return gDB.OpenRecordset("SELECT * FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY ItemName;");
}

/// Worksheets that share a report, which is printed once in a run.
struct Group {
    std::string_view From;
    std::string_view To;
};
constexpr std::array<Group, 3> kGroups = {{{"S1p1", "S1p2"}, {"S2p1", "S2p3"}, {"A7p1", "A7p3"}}};

const Group* GroupOf(std::string_view item) {
    const auto group = std::ranges::find_if(
        kGroups, [&](const Group& each) { return LiesBetween(item, each.From, each.To); });
    return group == kGroups.end() ? nullptr : &*group;
}

bool HasRows(std::string_view item) {
    return NumOr(gDB.Scalar(fmt::format("SELECT Count(*) FROM {};", item))) > 0;
}

/// A worksheet that has lost some of its lines stops the run; one without any row has nothing to
/// print, neither head nor rows.
void NeedLines(std::string_view item) {
    if (!gDB.HasTable(item) || HasRows(item)) NeedWholeForm(item, FormAmounts::Passing);
}

/// Each worksheet that the report of this one shows.
void NeedWholeReport(std::string_view item) {
    const auto* const group = GroupOf(item);
    if (!group) return NeedLines(item);
    for (const Worksheet& sheet : AllWorksheets())
        if (LiesBetween(sheet.Item, group->From, group->To)) NeedLines(sheet.Item);
}

/// Prints a row of the registry; what stops it is told with the worksheet's name.
void PrintNamed(const std::string& item, const std::string& name, PrintRun& run) {
    RunStep(name, [&] {
        NeedWholeReport(item);
        Print_Worksheet(item, run, true);
    });
}

void PrintNext(const Recordset& worksheets, PrintRun& run,
               std::initializer_list<std::string_view> printedByOthers) {
    const std::string item = Text(worksheets["Item"]);
    const std::string name = Text(worksheets["ItemName"]);
    TheStatus().ShowCalcMsg(" Printing Worksheet: " + name);
    if (!IsAnyOf(item, printedByOthers)) PrintNamed(item, name, run);
}

/// Goes to the first worksheet of the S family, which the form begins with. False without one.
bool GoToS(Recordset& worksheets, std::string_view criterion) {
    worksheets.FindFirst(criterion);
    return !worksheets.Empty() && !worksheets.NoMatch();
}

/// How far the form is printed, by its worksheets.
class FormProgress {
public:
    void Step() { TheStatus().ShowProgress(++done_ / all_); }

private:
    double all_ = NumOr(gDB.Scalar("SELECT Count(*) FROM Worksheets WHERE Calc_Lvl < 900;"));
    double done_ = 0;
};

/// The worksheets from S on, and then those ahead of it.
void PrintWorksheets(PrintRun& run) {
    FormProgress progress;
    Recordset worksheets = OpenWorksheets();
    if (GoToS(worksheets, "Left(Item, 1) = 'S'")) {
        for (; !worksheets.Eof(); worksheets.MoveNext(), progress.Step())
            PrintNext(worksheets, run, {"S1p2", "S2p2", "S2p3", "A7p2"});
    }
    if (worksheets.Empty()) return;
    worksheets.MoveFirst();
    for (; !worksheets.Eof() && FirstLetter(worksheets["Item"]) != "S"; worksheets.MoveNext()) {
        PrintNext(worksheets, run, {"A7p2", "A7p3"});
        progress.Step();
        TheStatus().DoEvents();
    }
}

/// Nobody waits for the pages: another program may save meanwhile. Worksheets of before and behind
/// that are no form.
void PrintForm(PrintRun& run) {
    const OneState state(gDB);
    PrintWorksheets(run);
    if (!state.Holds())
        throw StoreError(StoreError::Kind::Other,
                         "Another program changed the Cost Report File while it was printed. "
                         "Print it again.");
}

}  // namespace

bool Print_Worksheet(std::string_view item, PrintRun& run, bool doPrint) {
    const ReportEntry* const report = ReportOf(item);
    if (!report) return false;
    if (doPrint) {
        report->Print(item, run);
        TheStatus().DoEvents();
    }
    return true;
}

std::string PrintFileOf(std::string_view item) {
    const ReportEntry* const report = ReportOf(item);
    if (!report) return {};
    return PrintFilePath(report->File.empty() ? fmt::format("{}.prt", item)
                                              : std::string(report->File));
}

std::string WholePrintFile() { return PrintFilePath(gProviderNumber + ".PRT"); }

void Print_All(FileNumber file) {
    const PrintingState state;
    if (file != 0) {
        PrintRun run(file);
        PrintForm(run);
        TheStatus().ShowCalcMsg(" Printing completed.");
        return;
    }
    OwnPrintFile own(WholePrintFile());
    PrintRun run(own.Number());
    PrintForm(run);
    TheStatus().ShowCalcMsg(" Print Entire CRF completed.");
    own.Close();
    SendPrtFile(WholePrintFile(), run.gPageOrient, run);
}

std::vector<std::string> SelectivePrintList() {
    std::vector<std::string> entries;
    const auto add = [&](const Recordset& row) {
        const std::string item = Text(row["Item"]);
        if (ReportOf(item)) entries.push_back(fmt::format("{} ({})", Text(row["ItemName"]), item));
    };
    Recordset worksheets = OpenWorksheets();
    if (GoToS(worksheets, "Item>=\"S\"")) {
        for (; !worksheets.Eof(); worksheets.MoveNext()) add(worksheets);
    }
    if (worksheets.Empty()) return entries;
    worksheets.MoveFirst();
    for (; !worksheets.Eof() && FirstLetter(worksheets["Item"]) != "S"; worksheets.MoveNext())
        add(worksheets);
    return entries;
}

std::string ItemOfEntry(std::string_view entry) {
    const std::size_t bracket = entry.rfind('(');
    if (bracket == std::string_view::npos || entry.size() < bracket + 2) return {};
    return std::string(entry.substr(bracket + 1, entry.size() - bracket - 2));
}

void PrintSelected(std::span<const std::string> entries) {
    const PrintingState state;
    PrintRun run;
    std::array<bool, kGroups.size()> printed = {};
    for (const std::string& entry : entries) {
        const std::string item = ItemOfEntry(entry);
        if (const Group* const group = GroupOf(item)) {
            bool& done = printed.at(static_cast<std::size_t>(group - kGroups.data()));
            if (std::exchange(done, true)) continue;
        }
        PrintNamed(item, entry, run);
    }
}

}  // namespace zolmara
