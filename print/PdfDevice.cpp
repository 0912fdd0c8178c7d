#include "print/PdfDevice.h"

#include <fmt/format.h>

#include <stdexcept>

#include "core/Globals.h"
#include "print/PdfFile.h"
#include "print/PrintPage.h"

namespace zolmara {
namespace {

constexpr int kLongSide = 792;  ///< letter size, in points
constexpr int kShortSide = 612;
/// The left margins put 137 and 176 columns of 7 points in the middle of the page.
constexpr double kPortraitMargin = 18.3;
constexpr double kLandscapeMargin = 26.4;
constexpr double kColumnWidth = 0.6 * 7;
static_assert(2 * kPortraitMargin + 137 * kColumnWidth < kShortSide + 0.1);
static_assert(2 * kLandscapeMargin + 176 * kColumnWidth < kLongSide + 0.1);
constexpr double kTopMargin = 16;
constexpr double kBottomMargin = 14;
/// The height of a line and what of it lies above the base line, in parts of the font size.
constexpr double kLineHeight = 1.1328;
constexpr double kAscent = 0.8333;

/// By which a file of this device is known.
constexpr const char* kProducer = "Zolmara 287-22";

/// A text in the language of PDF: in brackets, with a stroke ahead of what means something in it.
void AppendText(std::string& content, std::string_view bytes) {
    bool plain = true;
    for (const char byte : bytes) plain = plain & (byte != '(') & (byte != ')') & (byte != '\\');
    content += '(';
    if (plain) {
        content += bytes;
        bytes = {};
    }
    for (const char byte : bytes) {
        if (byte == '(' || byte == ')' || byte == '\\') content += '\\';
        content += byte;
    }
    content += ')';
}

}  // namespace

struct PdfDevice::Document {
    PdfFile File;
    bool OnPage = false;  ///< something is printed on the page in hand, or it was passed over
    std::string Content;  ///< of the page in hand
    int Pages = 0;
    int Orientation = kPortrait;
    double FontSize = 7;
    bool Bold = false;
    bool Wide = false;    ///< the page in hand
    double Baseline = 0;  ///< of the next line

    explicit Document(const std::string& path) : File(path, IsPrintedPdf, kProducer) {}

    void BeginPage();
    void EndPage();
    void PrintLine(std::string_view text);
};

void PdfDevice::Document::BeginPage() {
    OnPage = true;
    ++Pages;
    Wide = Orientation == kLandscape;
    Baseline = (Wide ? kShortSide : kLongSide) - kTopMargin - kAscent * FontSize;
    Content =
        fmt::format("BT\n{} {:.5g} Tf\n{:.5g} TL\n{:.5g} {:.7g} Td\n",
                    File.Font(Bold ? "Courier-Bold" : "Courier"), FontSize, kLineHeight * FontSize,
                    Wide ? kLandscapeMargin : kPortraitMargin, Baseline);
}

void PdfDevice::Document::EndPage() {
    if (!OnPage) return;
    OnPage = false;
    Content += "ET\n";
    File.AddPage(Wide ? kLongSide : kShortSide, Wide ? kShortSide : kLongSide, Content);
}

void PdfDevice::Document::PrintLine(std::string_view text) {
    if (OnPage && Baseline < kBottomMargin) EndPage();
    if (!OnPage) BeginPage();
    const std::string_view line = RTrim(text);
    if (!line.empty()) {
        AppendText(Content, ToCodePage1252(line));
        Content += " Tj ";
    }
    Content += "T*\n";
    Baseline -= kLineHeight * FontSize;
}

PdfDevice::PdfDevice(const std::string& path) : document_(std::make_unique<Document>(path)) {}
PdfDevice::~PdfDevice() = default;

int PdfDevice::PageCount() const { return document_->Pages; }

void PdfDevice::Save() {
    if (PageCount() == 0) throw std::runtime_error("There are no pages for a PDF file.");
    document_->EndPage();
    document_->File.Put();
}

bool IsPrintedPdf(std::string_view head) {
    return head.starts_with("%PDF-") &&
           head.find(fmt::format("({})", kProducer)) != std::string_view::npos;
}

int PdfDevice::Orientation() { return document_->Orientation; }
void PdfDevice::SetOrientation(int orientation) { document_->Orientation = orientation; }

// The one font that every PDF reader has and whose characters are all of one width.
std::string PdfDevice::FontName() { return "Courier"; }
void PdfDevice::SetFontName(const std::string& /*name*/) {}
int PdfDevice::FontCount() { return 1; }
std::string PdfDevice::Font(int /*index*/) { return FontName(); }

void PdfDevice::SetFontSize(double points) { document_->FontSize = points; }
void PdfDevice::SetBold(bool bold) { document_->Bold = bold; }
void PdfDevice::SetPrintQuality(int /*quality*/) {}

void PdfDevice::Print(std::string_view line) { document_->PrintLine(line); }

void PdfDevice::NewPage() {
    if (!document_->OnPage) document_->BeginPage();
    document_->EndPage();
}

void PdfDevice::EndDoc() { document_->EndPage(); }

}  // namespace zolmara
