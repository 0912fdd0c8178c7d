#pragma once

// A PDF file as print target: letter size, Courier, as many jobs as are sent to it.

#include <memory>
#include <string>
#include <string_view>

#include "print/PageDevice.h"

namespace zolmara {

/// True for the beginning of a PDF file that a PdfDevice wrote.
bool IsPrintedPdf(std::string_view head);

/// Pages go to the disk as they are printed, aside; nothing stays of them unless they are saved.
class PdfDevice : public PageDevice {
public:
    /// StoreError when the file cannot be written, or another's of that name is kept.
    explicit PdfDevice(const std::string& path);
    ~PdfDevice() override;

    /// Pages that something was printed on, or that were passed over.
    int PageCount() const;
    /// Completes the file, whole or not at all, after the last job. StoreError when it cannot be
    /// written, also where a page could not; an error too where there are no pages.
    void Save();

    int Orientation() override;
    void SetOrientation(int orientation) override;
    std::string FontName() override;
    void SetFontName(const std::string& name) override;
    int FontCount() override;
    std::string Font(int index) override;
    void SetFontSize(double points) override;
    void SetBold(bool bold) override;
    void SetPrintQuality(int quality) override;
    void Print(std::string_view line) override;
    void NewPage() override;
    void EndDoc() override;

private:
    struct Document;
    std::unique_ptr<Document> document_;
};

}  // namespace zolmara
