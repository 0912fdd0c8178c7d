#include "print/PdfDevice.h"

#include <fmt/format.h>
#include <hpdf.h>

#include <stdexcept>
#include <vector>

#include "core/Globals.h"
#include "print/PrintPage.h"
#include "store/files/FileDoor.h"

namespace zolmara {
namespace {

constexpr float kLongSide = 792;  ///< letter size, in points
constexpr float kShortSide = 612;
/// The left margins put 137 and 176 columns of 7 points in the middle of the page.
constexpr float kPortraitMargin = 18.3F;
constexpr float kLandscapeMargin = 26.4F;
constexpr float kColumnWidth = 0.6F * 7;
static_assert(2 * kPortraitMargin + 137 * kColumnWidth < kShortSide + 0.1F);
static_assert(2 * kLandscapeMargin + 176 * kColumnWidth < kLongSide + 0.1F);
constexpr float kTopMargin = 16;
constexpr float kBottomMargin = 14;
/// The height of a line and what of it lies above the base line, in parts of the font size.
constexpr float kLineHeight = 1.1328F;
constexpr float kAscent = 0.8333F;

/// Pages stand in groups of so many: a list in a PDF file ends at 8,191 entries.
constexpr HPDF_UINT kPagesInGroup = 90;

constexpr HPDF_UINT32 kChunk = 1 << 16;

/// By which a file of this device is known.
constexpr const char* kProducer = "Zolmara 287-22";

}  // namespace

struct PdfDevice::Document {
    HPDF_Doc Doc = nullptr;
    HPDF_Page Page = nullptr;  ///< none until something is printed on it
    int Pages = 0;
    int Orientation = kPortrait;
    float FontSize = 7;
    bool Bold = false;
    float Left = 0;
    float Baseline = 0;  ///< of the next line

    Document();
    ~Document() { HPDF_Free(Doc); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    void Check(HPDF_STATUS status) const;
    void AddPage();
    void EndPage();
    void PrintLine(std::string_view text);
    void SaveTo(OutFile& file) const;
};

PdfDevice::Document::Document() : Doc(HPDF_New(nullptr, nullptr)) {
    if (!Doc) throw std::runtime_error("There is not enough memory for the PDF file.");
    Check(HPDF_SetPagesConfiguration(Doc, kPagesInGroup));
    Check(HPDF_SetCompressionMode(Doc, HPDF_COMP_ALL));
    Check(HPDF_SetInfoAttr(Doc, HPDF_INFO_PRODUCER, kProducer));
}

void PdfDevice::Document::Check(HPDF_STATUS status) const {
    if (status == HPDF_OK) return;
    HPDF_ResetError(Doc);
    throw std::runtime_error(
        fmt::format("The PDF file cannot be made (error {:#x} of the PDF library).", status));
}

void PdfDevice::Document::AddPage() {
    const bool wide = Orientation == kLandscape;
    Page = HPDF_AddPage(Doc);
    if (!Page) Check(HPDF_GetError(Doc));
    ++Pages;
    Check(HPDF_Page_SetWidth(Page, wide ? kLongSide : kShortSide));
    Check(HPDF_Page_SetHeight(Page, wide ? kShortSide : kLongSide));
    Left = wide ? kLandscapeMargin : kPortraitMargin;
    Baseline = (wide ? kShortSide : kLongSide) - kTopMargin - kAscent * FontSize;
    const HPDF_Font font = HPDF_GetFont(Doc, Bold ? "Courier-Bold" : "Courier", "WinAnsiEncoding");
    if (!font) Check(HPDF_GetError(Doc));
    Check(HPDF_Page_SetFontAndSize(Page, font, FontSize));
}

void PdfDevice::Document::EndPage() { Page = nullptr; }

void PdfDevice::Document::PrintLine(std::string_view text) {
    if (Page && Baseline < kBottomMargin) EndPage();
    if (!Page) AddPage();
    const std::string bytes = ToCodePage1252(RTrim(text));
    if (!bytes.empty()) {
        Check(HPDF_Page_BeginText(Page));
        Check(HPDF_Page_TextOut(Page, Left, Baseline, bytes.c_str()));
        Check(HPDF_Page_EndText(Page));
    }
    Baseline -= kLineHeight * FontSize;
}

void PdfDevice::Document::SaveTo(OutFile& file) const {
    Check(HPDF_SaveToStream(Doc));
    std::vector<HPDF_BYTE> chunk(kChunk);
    HPDF_UINT32 size = kChunk;
    while (true) {
        size = kChunk;
        const HPDF_STATUS status = HPDF_ReadFromStream(Doc, chunk.data(), &size);
        file.Write({reinterpret_cast<const char*>(chunk.data()), size});
        if (status == HPDF_STREAM_EOF || size == 0) break;
        Check(status);
    }
    HPDF_ResetError(Doc);
    file.Put();
}

PdfDevice::PdfDevice() : document_(std::make_unique<Document>()) {}
PdfDevice::~PdfDevice() = default;

int PdfDevice::PageCount() const { return document_->Pages; }

void PdfDevice::Save(const std::string& path) {
    if (PageCount() == 0) throw std::runtime_error("There are no pages for a PDF file.");
    OutFile file(path, IsPrintedPdf);
    document_->SaveTo(file);
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

void PdfDevice::SetFontSize(double points) { document_->FontSize = static_cast<float>(points); }
void PdfDevice::SetBold(bool bold) { document_->Bold = bold; }
void PdfDevice::SetPrintQuality(int /*quality*/) {}

void PdfDevice::Print(std::string_view line) { document_->PrintLine(line); }

void PdfDevice::NewPage() {
    if (!document_->Page) document_->AddPage();
    document_->EndPage();
}

void PdfDevice::EndDoc() { document_->EndPage(); }

}  // namespace zolmara
