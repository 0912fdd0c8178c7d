#include "import/ImportASCII.h"

#include <fmt/format.h>

#include <filesystem>
#include <vector>

#include "core/BusyMain.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Status.h"
#include "core/StatusLine.h"
#include "core/Windows.h"
#include "import/ImportRun.h"
#include "import/LineSource.h"
#include "import/Loaders.h"
#include "import/PassedOver.h"
#include "import/Staging.h"
#include "import/TextFile.h"
#include "store/RunStopped.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

struct Loader {
    std::string_view WorkSheet;
    void (*Load)(ImportRun& run);
    void (*LoadPart)(ImportRun& run, int part) = nullptr;
    int Part = 0;

    void Run(ImportRun& run) const {
        if (Load != nullptr)
            Load(run);
        else
            LoadPart(run, Part);
    }
};

// clang-format off
/// Cost centers and components come first, since the rows of the others refer to them.
constexpr Loader kStructureLoaders[] = {
    {"COSTCENTER", Load_CostCenter}, {"S1P1", Load_S1p1}, {"S1P2", Load_S1p2},
    {"S2P1", nullptr, Load_S2px, 1}, {"S2P2", nullptr, Load_S2px, 2}, {"S2P3", nullptr, Load_S2px, 3},
};
constexpr Loader kLoaders[] = {
    {"A", Load_A}, {"A6", Load_A6}, {"A7P1", Load_A7p1}, {"A7P2", Load_A7p2}, {"A8", Load_A8},
    {"A81P1", Load_A81p1}, {"A81P2", Load_A81p2},
    {"BP1", nullptr, Load_Bpx, 1}, {"BP2", nullptr, Load_Bpx, 2}, {"BP3", nullptr, Load_Bpx, 3},
    {"B1P1", nullptr, Load_B1px, 1}, {"B1P2", nullptr, Load_B1px, 2}, {"B1P3", nullptr, Load_B1px, 3},
    {"C1P1", nullptr, Load_C1px, 1}, {"C1P2", nullptr, Load_C1px, 2}, {"C1P3", nullptr, Load_C1px, 3},
    {"D1P1", nullptr, Load_D1px, 1}, {"D1P2", nullptr, Load_D1px, 2}, {"D1P3", nullptr, Load_D1px, 3},
    {"E1P1", nullptr, Load_E1px, 1}, {"E1P2", nullptr, Load_E1px, 2}, {"E1P3", nullptr, Load_E1px, 3},
    {"G", Load_G}, {"G1", Load_G1},
};
// clang-format on

/// Cost centers and the worksheets of the S family, whether or not they have a loader.
bool IsStructure(const std::string& name) { return name == "COSTCENTER" || name.starts_with('S'); }

/// The main window as it is while an import runs, put right again on every way out.
class ImportView {
public:
    explicit ImportView(const std::string& path) : status_(path + " Import ASCII: ") {}

private:
    BusyMain busy_;
    StatusLine status_;
};

const Loader* FindLoader(std::span<const Loader> loaders, std::string_view name) {
    for (const auto& loader : loaders)
        if (loader.WorkSheet == name) return &loader;
    return nullptr;
}

/// Counts a line that no message will tell of. A blank one holds nothing to miss.
void CountPassedOver(PassedOver& passedOver, const ImportLine& line) {
    if (line.Skip) {
        if (!Trim(line.Echo).empty()) passedOver.Add("\"#VALUE!\"");
        return;
    }
    const auto sheet = UCase(line.WorkSheet);
    if (sheet.starts_with('S') && FindLoader(kStructureLoaders, sheet) == nullptr)
        passedOver.Add("worksheet " + sheet);
}

void StageLine(ImportRun& run, Staging& staging, const ImportLine& line) {
    if (line.Skip) return;
    if (!line.Complaint.empty()) return run.DropLine(line.Complaint, line.Echo);
    if (MustBeWhole(line)) run.NotWhole(line.Echo);
    if (!staging.Add(line)) run.DropLine(kContentsTooLong, line.Echo);
    run.NoteOrigin(line);
}

constexpr int kLinesPerStep = 1000;

/// The lines of a text file.
class TextLines : public LineSource {
public:
    explicit TextLines(TextFile& file) : file_(file) {}
    bool Next(ImportLine& line) override {
        if (!file_.NextLine(text_)) return false;
        line = ParseImportLine(text_, file_.WasCut());
        return true;
    }
    double PartRead() const override { return file_.PartRead(); }

private:
    TextFile& file_;
    std::string text_;
};

/// Reads the lines into the staging table.
void ReadLines(ImportRun& run, LineSource& source, PassedOver& passedOver) {
    Staging staging;
    ImportLine line;
    for (int count = 1; source.Next(line); ++count) {
        if (line.Complaint.empty()) CountPassedOver(passedOver, line);
        StageLine(run, staging, line);
        if (count % kLinesPerStep == 0) TheStatus().ShowProgress(source.PartRead() / 2);
    }
    if (const std::string failure = source.Failure(); !failure.empty()) run.NotRead(failure);
}

void LoadStructure(ImportRun& run) {
    for (const auto& name : run.Staged().WorkSheets())
        if (const auto* loader = FindLoader(kStructureLoaders, name))
            RunStep(name, [&] { loader->Run(run); });
}

void LoadWorkSheet(ImportRun& run, const std::string& name) {
    TheStatus().ShowCalcMsg(" Import ASCII: Loading Table A");  // as given
    if (const auto* loader = FindLoader(kLoaders, name))
        return RunStep(name, [&] { loader->Run(run); });
    run.NoLoader(name);
}

void LoadWorkSheets(ImportRun& run) {
    auto names = run.Staged().WorkSheets();
    std::erase_if(names, IsStructure);
    double done = 0;
    for (const auto& name : names) {
        LoadWorkSheet(run, name);
        done += 1;
        TheStatus().ShowProgress(0.5 + 0.5 * done / static_cast<double>(names.size()));
        TheStatus().DoEvents();
    }
}

/// How an import has ended.
enum class ImportEnd {
    NotBegun,  ///< the staging table could not be made
    Messages,  ///< there is something to read
    Clean      ///< nothing but the closing message, and notes
};

ImportEnd LoadStagedRows(ImportRun& run) {
    run.Staged().Read();
    LoadStructure(run);
    LoadWorkSheets(run);
    if (ImportErrorFlag) return ImportEnd::Messages;
    AddErrorRow("", "",
                "Import complete, no errors found.  Please verify the imported data for accuracy.");
    return ImportEnd::Clean;
}

ImportEnd RunImport(const std::string& path, LineSource& source) {
    const LogRun log("I");
    if (!PrepareStaging()) return ImportEnd::NotBegun;
    const ImportView view(path);
    EmptyErrors();
    ImportRun run;
    PassedOver passedOver;
    ReadLines(run, source, passedOver);
    const ImportEnd end = run.MayLoad() ? LoadStagedRows(run) : ImportEnd::Messages;
    if (const auto note = passedOver.Note(); !note.empty()) AddErrorRow(kNote, "", note);
    for (const auto& note : source.Notes()) AddErrorRow(kNote, "", note);
    return end;
}

/// The form's own files first; what spreadsheets write stands beside them.
constexpr const char* kFilter =
    "Cost Report Files (*.Txt)|*.Txt|Spreadsheets (*.xlsx)|*.xlsx|Spreadsheets (*.ods)|*.ods|"
    "Spreadsheets (*.csv)|*.csv";

std::string StartOfDialog() {
    auto start =
        TheMachine().GetSetting(std::string(kProductName), "Startup", "ASCIIFiles", "None");
    if (start.ends_with('\\') || start.ends_with('/')) start.pop_back();
    if (start == "None") start = TheMachine().ProgramFolder();
    return fmt::format("{}{}*.Txt", start,
                       static_cast<char>(std::filesystem::path::preferred_separator));
}

}  // namespace

bool ImportAsciiFile(const std::string& path) {
    TextFile file(path);
    TextLines lines(file);
    return ImportLines(path, lines);
}

bool ImportLines(const std::string& path, LineSource& source) {
    ImportEnd end = ImportEnd::NotBegun;
    RunAct("Import " + std::filesystem::path(path).filename().string(),
           [&] { end = RunImport(path, source); });
    if (end == ImportEnd::NotBegun) return false;
    TheWindows().RefreshOpenForms("");
    TheWindows().ShowErrors("Import Messages");
    return end == ImportEnd::Clean;
}

void ImportASCII(ImportFileProcedure importFile) {
    const auto path = TheDialogs().ChooseFile({.Save = false,
                                               .Title = "Import ASCII file",
                                               .FileName = StartOfDialog(),
                                               .DefaultExt = ".Txt",
                                               .Filter = kFilter,
                                               .FilterIndex = 1,
                                               .Flags = 4100});
    if (!path) return;
    RememberFolder("ASCIIFiles", FolderOf(*path));
    importFile(*path);
}

namespace {

/// The question ahead of an import.
bool MayImport() {
    if (gDebug) return true;
    TheWindows().EnableMenu("mnuReportSubmit", false);
    const int answer = TheDialogs().MsgBox(
        "Before Importing - Make sure the columns are wide enough so that data values are "
        "separated by at least one blank space. Format the amount column as numeric, in whole "
        "dollars and without commas. If this is not done, a settlement difference can occur "
        "resulting in a CMS rejection. Continue?",
        kYesNo | kDefaultButton2, "Continue?");
    return answer == kYes;
}

}  // namespace

void mnuReportImportASCII(ImportFileProcedure importFile) {
    if (MayImport()) ImportASCII(importFile);
}

void mnuReportImportASCII(const std::string& path, ImportFileProcedure importFile) {
    if (MayImport()) importFile(path);
}

}  // namespace zolmara
