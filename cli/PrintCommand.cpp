#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "print/PdfDevice.h"
#include "print/PrintDriver.h"
#include "print/PrintFile.h"
#include "store/Files.h"
#include "store/OneState.h"
#include "store/files/FileGuard.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"ITEM", ArgumentKind::Several, "Worksheets: A, A6, Bp1, S2p1, ...; all without one"},
    Argument{"--pdf", ArgumentKind::Option, "Also print to this PDF file"},
    Argument{"--force", ArgumentKind::Flag, kForceHelp},
};

/// A PDF file in the printer's place, for as long as a command runs.
class PdfPrinter {
public:
    explicit PdfPrinter(const std::string& path) : device_(path) {
        TheCliHost().UsePrinter(&device_);
    }
    ~PdfPrinter() { TheCliHost().UsePrinter(nullptr); }
    PdfPrinter(const PdfPrinter&) = delete;
    PdfPrinter& operator=(const PdfPrinter&) = delete;

    void Save() { device_.Save(); }

private:
    PdfDevice device_;
};

/// The named worksheets' entries in the list of what can be printed, in its order.
std::vector<std::string> EntriesOf(const std::vector<std::string>& items) {
    std::vector<std::string> chosen;
    for (const std::string& entry : SelectivePrintList()) {
        const auto isEntry = [&](const std::string& item) {
            return SameText(item, ItemOfEntry(entry));
        };
        if (std::ranges::any_of(items, isEntry)) chosen.push_back(entry);
    }
    for (const std::string& item : items) {
        const auto isItem = [&](const std::string& entry) {
            return SameText(item, ItemOfEntry(entry));
        };
        if (std::ranges::none_of(chosen, isItem))
            throw std::runtime_error(fmt::format("{} is no worksheet with a report", item));
    }
    return chosen;
}

/// The names of the print files, for entries or, without one, for the whole form.
std::vector<std::string> FilesOf(const std::vector<std::string>& entries) {
    if (entries.empty()) return {WholePrintFile()};
    std::vector<std::string> files;
    for (const std::string& entry : entries) {
        const std::string file = PrintFileOf(ItemOfEntry(entry));
        if (std::ranges::find(files, file) == files.end()) files.push_back(file);
    }
    return files;
}

/// Nothing is printed unless all of it may be written.
void NeedMayWriteAll(const std::vector<std::string>& files, const std::string& pdf) {
    for (const std::string& file : files) {
        if (IsSameFile(file, pdf))
            throw std::runtime_error(fmt::format("{}: This is a print file of this run", pdf));
        NeedMayWrite(file, IsPrintedReport);
    }
    if (!pdf.empty()) NeedMayWrite(pdf, IsPrintedPdf);
}

void PrintEntries(const std::vector<std::string>& entries) {
    if (entries.empty())
        Print_All(0);
    else
        PrintSelected(entries);
}

ExitStatus Print(const Inputs& inputs) {
    const std::string pdf = inputs.Text("--pdf");
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ReplaceAsTold told(inputs.Has("--force"), std::string(kForceHint));
    const std::vector<std::string> entries = EntriesOf(inputs.Texts("ITEM"));
    std::vector<std::string> files = FilesOf(entries);
    NeedMayWriteAll(files, pdf);
    ClearScratch(gCRFDir);
    if (!pdf.empty()) ClearScratch(FolderPathOf(pdf));
    if (pdf.empty()) {
        PrintEntries(entries);
    } else {
        const OneState state(gDB);
        PdfPrinter printer(pdf);
        PrintEntries(entries);
        state.NeedToHold(pdf);
        printer.Save();
        files.push_back(pdf);
    }
    Listing written{{"File"}, {}};
    for (const std::string& file : files) written.Rows.push_back({file});
    PrintMessages(written);
    return kDone;
}

}  // namespace

const Command kPrint{
    "print", "Print the whole form or single worksheets",
    "Print files are text in code page 1252 and lie in the folder of the CRF: all\n"
    "worksheets in one file, the home office number and .PRT; single ones in .prt files of\n"
    "their own. The names of the files are listed. Calculate first: amounts are printed as\n"
    "they stand.",
    kArguments, Print};

}  // namespace zolmara::cli
