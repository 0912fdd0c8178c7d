#include "ui/printing/QtPageDevice.h"

#include <QFontDatabase>
#include <QPrinter>

#include "ui/main/QtText.h"
#include "ui/printing/PaintJobs.h"

namespace zolmara::ui {

QtPageDevice::QtPageDevice() { job_.FontName = QtPageDevice::FontName(); }
QtPageDevice::~QtPageDevice() = default;

QPrinter& QtPageDevice::Target() {
    if (!target_) {
        target_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
        target_->setDocName("Zolmara 287-22");
    }
    return *target_;
}

std::vector<PrintJob> QtPageDevice::TakeJobs() { return std::exchange(jobs_, {}); }

void QtPageDevice::SetOrientation(int orientation) {
    orientation_ = orientation;
    // A page that nothing is printed on takes the new orientation.
    if (page_ && page_->Lines.empty()) page_->Orientation = orientation;
}

std::string QtPageDevice::FontName() {
    if (!job_.FontName.empty()) return job_.FontName;
    return S(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
}

void QtPageDevice::SetFontName(const std::string& name) { job_.FontName = name; }

int QtPageDevice::FontCount() { return static_cast<int>(QFontDatabase::families().size()); }

std::string QtPageDevice::Font(int index) { return S(QFontDatabase::families().value(index)); }

std::size_t QtPageDevice::LinesOfPage() const {
    return static_cast<std::size_t>(PageLines(orientation_, job_.FontSize));
}

void QtPageDevice::BeginPage() {
    if (!page_) page_ = PrintedPage{orientation_, {}};
}

/// Pages of a document that could not be kept whole do not come along with the next one.
void QtPageDevice::KeepPage() {
    const auto page = std::exchange(page_, std::nullopt);
    if (!page) return;
    try {
        job_.Pages.Add(*page);
    } catch (...) {
        job_.Pages = {};
        throw;
    }
}

void QtPageDevice::Print(std::string_view line) {
    if (page_ && page_->Lines.size() >= LinesOfPage()) KeepPage();
    BeginPage();
    page_->Lines.emplace_back(line);
}

void QtPageDevice::NewPage() {
    BeginPage();
    KeepPage();
}

void QtPageDevice::EndDoc() {
    KeepPage();
    if (!job_.Pages.Empty()) jobs_.push_back(job_);
    job_.Pages = {};
}

}  // namespace zolmara::ui
