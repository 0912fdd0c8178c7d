#pragma once

// The printer of the desktop as print target: what is printed is kept as pages, and painted on
// paper, in the preview or in a PDF file when the command is done.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "print/PageDevice.h"
#include "ui/printing/PageSpool.h"

class QPrinter;

namespace zolmara::ui {

/// What was printed up to an EndDoc.
struct PrintJob {
    std::string FontName;
    double FontSize = 7;  ///< points
    bool Bold = false;
    bool HighQuality = false;
    PageSpool Pages;
};

class QtPageDevice : public PageDevice {
public:
    QtPageDevice();
    ~QtPageDevice() override;

    /// The jobs that are done, given away.
    std::vector<PrintJob> TakeJobs();
    /// Where they go: the printer that was chosen last, else the user's own.
    QPrinter& Target();

    int Orientation() override { return orientation_; }
    void SetOrientation(int orientation) override;
    std::string FontName() override;
    void SetFontName(const std::string& name) override;
    int FontCount() override;
    std::string Font(int index) override;
    void SetFontSize(double points) override { job_.FontSize = points; }
    void SetBold(bool bold) override { job_.Bold = bold; }
    void SetPrintQuality(int quality) override { job_.HighQuality = quality < 0; }
    void Print(std::string_view line) override;
    void NewPage() override;
    void EndDoc() override;

private:
    std::size_t LinesOfPage() const;
    void BeginPage();
    void KeepPage();

    std::unique_ptr<QPrinter> target_;
    std::vector<PrintJob> jobs_;
    PrintJob job_;
    int orientation_ = 1;
    std::optional<PrintedPage> page_;  ///< the one that lines go on; none: the next begins one
};

}  // namespace zolmara::ui
