// Worksheet S: the status of the cost statement, and the certification with the signature and the
// seals of the electronic files.

#include <fmt/format.h>

#include <array>
#include <vector>

#include "core/Globals.h"
#include "print/CertificationText.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "print/TextFields.h"
#include "store/session/Session.h"

namespace zolmara {

std::string ECRStamp;

namespace {

constexpr std::array<std::string_view, 2> kTitles = {
    "Skilled Nursing Facility and Skilled Nursing Facility Health Care Complex Cost Report "
    "Certification and Settlement Summary",
    "PART I - COST STATEMENT STATUS"};

constexpr std::array<CellLayout, 3> kCells = {{
    {"LineNum", CellForm::LineNum, 1, 6},
    {"Description", CellForm::Text, 8, 70},
    {"Col_1", CellForm::Text, 80, 20},
}};

constexpr int kMargin = 1;
constexpr int kTextWidth = 136;

/// The seals of the electronic report and the print image.
struct Seals {
    std::string_view Ecr;
    std::string_view PiStamp;
    std::string_view Pi;
};

/// Writes a text wrapped to the page, and begins a page first where it does not fit on this one.
void PrintParagraph(ReportPage& page, std::string_view text) {
    const std::int16_t lines = PrintWrapped(0, kMargin, kTextWidth, text);
    if (page.IsFull(static_cast<std::size_t>(lines))) page.Begin("S", kTitles);
    PrintWrapped(page.Run.File, kMargin, kTextWidth, text);
    page.Lines = static_cast<std::int16_t>(page.Lines + lines);
    page.Print();
}

/// Writes lines that belong together.
void PrintBlock(ReportPage& page, const std::vector<std::string>& block) {
    if (page.IsFull(block.size())) page.Begin("S", kTitles);
    for (const std::string& line : block) page.Print(line);
}

void PrintHeading(ReportPage& page, std::string_view text) {
    PrintBlock(page, {TextLine().At(CenteredColumn(text, page.Run), text).Text(), ""});
}

// --- Part I --------------------------------------------------------------------------------

/// False where the worksheet is empty.
bool PrintStatus(ReportPage& page) {
    Recordset rows = gDB.OpenRecordset("SELECT * FROM Sp1 Order by LineNum;");
    if (rows.Empty()) return false;
    for (; !rows.Eof(); rows.MoveNext()) PrintBlock(page, RowLines(rows, kCells));
    if (!ECRStamp.empty()) {
        PrintBlock(page,
                   {TextLine().At(8, "Date and time of ECR file creation: " + ECRStamp).Text()});
    }
    page.Print();
    return true;
}

// --- The statement -------------------------------------------------------------------------

std::string LongDate(const Variant& date) { return Format(date, "mmmm d, yyyy"); }

void PrintCertification(ReportPage& page) {
    PrintHeading(page, "PART II - CERTIFICATION");
    PrintParagraph(page, kCertificationWarning);
    PrintHeading(page, kCertificationHeading);
    PrintParagraph(page,
                   CertificationStatement(fmt::format("{} ({}) {{home office name and number}}",
                                                      gProviderName, gProviderNumber),
                                          LongDate(gFYStart), LongDate(gFYEnd)));
}

// --- The signature -------------------------------------------------------------------------

constexpr int kBoxLeft = 3;
constexpr int kBoxMiddle = 59;
constexpr int kBoxRight = 71;
constexpr int kNameWidth = 52;  ///< within the box
constexpr int kCheckTab = 65;
constexpr int kEntryTab = 19;
constexpr int kEntryWidth = 38;

/// What the signer is asked to agree with, beside the box. The last line has its bar set apart.
constexpr std::array<std::string_view, 4> kAgreement = {
    "|  I have read and agree with the above certification statement.",
    "|  I certify that I intend my electronic signature on this",
    "|  certification statement to be the legally binding equivalent",
    "  of my original signature.",
};

struct Signature {
    bool Signed = false;
    std::string Name;
    std::string Title;
    std::string Date;
};

Signature ReadSignature() {
    const Recordset master = gDB.OpenRecordset("Select * From Master;");
    if (master.Empty() || !DateOf(master["ESDate"])) return {};
    return {true, fmt::format("{} {}", Text(master["ESFirstName"]), Text(master["ESLastName"])),
            Text(master["ESTitle"]), Format(master["ESDate"], "mm/dd/yyyy")};
}

TextLine BoxLine(std::string_view number) { return TextLine().At(1, number).At(kBoxLeft, "|"); }

/// The name that signs, and the box that is checked.
void AddAgreement(std::vector<std::string>& block, const Signature& signature) {
    const std::vector<std::string> name =
        CutAtWords(signature.Signed ? signature.Name : "", kNameWidth);
    for (std::size_t i = 0; i < kAgreement.size(); ++i) {
        TextLine line = BoxLine(i == 0 ? "1" : "");
        if (i < name.size()) line.At(kBoxLeft + 2, name[i]);
        line.At(kBoxMiddle, "|");
        if (i == 0 && signature.Signed) line.At(kCheckTab, "Y");
        if (!kAgreement[i].starts_with('|')) line.At(kBoxRight, "|");
        block.push_back(
            line.At(kBoxRight + (kAgreement[i].starts_with('|') ? 0 : 1), kAgreement[i]).Text());
    }
}

/// A line of the box with an entry, underlined where there is none.
void AddEntry(std::vector<std::string>& block, std::string_view number, std::string_view label,
              const std::string& entry) {
    std::vector<std::string> lines = CutAtWords(Trim(entry), kEntryWidth);
    if (lines.empty()) lines.emplace_back(kEntryWidth, '_');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        TextLine line = BoxLine(i == 0 ? number : "");
        if (i == 0) line.At(kBoxLeft + 1, label);
        line.At(kEntryTab, lines[i]).At(kBoxMiddle, "|");
        block.push_back(line.Text());
    }
}

void PrintSignature(ReportPage& page) {
    const Signature signature = ReadSignature();
    std::vector<std::string> block = {
        TextLine()
            .At(kBoxLeft, "| SIGNATURE OF CHIEF FINANCIAL OFFICER OR ADMINISTRATOR |  CHECKBOX |")
            .Text(),
        BoxLine("").At(31, "1").At(kBoxMiddle, "|").At(kCheckTab, "2").At(kBoxRight, "|").Text()};
    AddAgreement(block, signature);
    AddEntry(block, "2", "Printed name", signature.Name);
    AddEntry(block, "3", "Title", signature.Title);
    AddEntry(block, "4", "Signature date", signature.Date);
    block.emplace_back();
    PrintBlock(page, block);
}

// --- The seals -----------------------------------------------------------------------------

constexpr int kEcrTab = 20;
constexpr int kPiTab = 55;
constexpr int kSealWidth = 30;

std::string SealLine(std::string_view ecr, std::string_view pi) {
    return TextLine().At(kEcrTab, ecr).At(kPiTab, pi).Text();
}

void PrintSeals(ReportPage& page, const Seals& seals) {
    const std::string dashes(kSealWidth, '-');
    std::vector<std::string> block = {
        SealLine(dashes, dashes),
        SealLine("ECR Encryption Information:", "PI Encryption Information:")};
    if (DateOf(ECRStamp)) {
        block.push_back(SealLine(ECRStamp, seals.PiStamp));
        for (const std::size_t start : {1, 31}) {
            block.push_back(SealLine(MidText(seals.Ecr, start, kSealWidth),
                                     MidText(seals.Pi, start, kSealWidth)));
        }
        block.push_back(SealLine(MidText(seals.Ecr, 61), MidText(seals.Pi, 61)));
    }
    block.push_back(SealLine(dashes, dashes));
    block.emplace_back();
    PrintBlock(page, block);
}

}  // namespace

void Print_Sp1(PrintRun& run, bool certification, std::string_view ecrFingerprint,
               std::string_view piStamp, std::string_view piFingerprint) {
    run.SetPagePortrait();
    RunReport(run, certification ? "Spx.prt" : "SS.prt", [&](PrintRun& open) {
        ReportPage page(open);
        if (!PrintStatus(page)) return;
        PrintCertification(page);
        PrintSignature(page);
        PrintSeals(page, {ecrFingerprint, piStamp, piFingerprint});
        PrintParagraph(page, kPaperworkNotice);
    });
}

}  // namespace zolmara
