#include "ui/printing/SavePdf.h"

#include "print/PdfDevice.h"

namespace zolmara::ui {

PaintResult SavePdf(const Document& document, PageRange range, const std::string& path,
                    const PageProgress& progress) {
    PdfDevice pdf(path);
    for (std::size_t number = range.First; number < range.End; ++number) {
        const PrintJob& job = document.JobOf(number);
        const PrintedPage page = document.Page(number);
        pdf.SetOrientation(page.Orientation);
        pdf.SetFontSize(job.FontSize);
        pdf.SetBold(job.Bold);
        for (const std::string& line : page.Lines) pdf.Print(line);
        pdf.NewPage();
        if (!progress(number - range.First + 1, range.End - range.First))
            return PaintResult::GivenUp;
    }
    pdf.EndDoc();
    pdf.Save();
    return PaintResult::Done;
}

}  // namespace zolmara::ui
