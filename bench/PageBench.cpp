// The whole form of a large statement from the preview: its opening, its pages and the PDF file
// that is made from there. Nothing is shown on a screen; what is looked at is drawn all the same.

#include <fmt/format.h>

#include <QApplication>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "core/Globals.h"
#include "print/PrintDriver.h"
#include "store/session/Session.h"
#include "ui/main/Desktop.h"
#include "ui/main/QtHost.h"
#include "ui/main/frmMain.h"
#include "ui/printing/Preview.h"
#include "ui/printing/SavePdf.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 3;
constexpr double kKilobytesInMega = 1024;

double PeakMegabytes() { return static_cast<double>(PeakKilobytes()) / kKilobytesInMega; }

void BenchPreview(const ui::Document& document, QPrinter& printer, const std::string& folder) {
    const Least open = LeastOf(kRuns, [&] {
        ui::frmPreview preview(document, printer);
        preview.show();
        preview.grab();
    });
    ui::frmPreview preview(document, printer);
    preview.show();
    const Least last = LeastOf(kRuns, [&] {
        preview.GoTo(0);
        preview.GoTo(document.Pages() - 1);
        preview.grab();
    });
    Report("the preview opened and drawn", open, "one page drawn again", last, folder, "at once");
}

void BenchPdf(const ui::Document& document, const std::string& folder) {
    const double ahead = PeakMegabytes();
    const std::string path = folder + "/pages.pdf";
    std::size_t told = 0;
    const Least pdf = LeastOf(kRuns, [&] {
        fs::remove(path);
        told = 0;
        ui::SavePdf(document, {0, document.Pages()}, path, [&](std::size_t, std::size_t) {
            ++told;
            return true;
        });
    });
    // Given up where the first page is done.
    const Least givenUp = LeastOf(kRuns, [&] {
        ui::SavePdf(document, {0, document.Pages()}, path,
                    [](std::size_t, std::size_t) { return false; });
    });
    Report(fmt::format("{} pages from the preview into a PDF file", document.Pages()), pdf,
           fmt::format("told {} times; peak memory {:.0f} MB, ahead of it {:.0f} MB", told,
                       PeakMegabytes(), ahead),
           folder, "3 s");
    Report("the same, cancelled at the first page", givenUp, "all pages", pdf, folder, "at once");
}

/// The whole form, printed from the window.
struct Printed {
    std::vector<ui::PrintJob> Jobs;
    QPrinter* Printer = nullptr;
};

Printed PrintForm() {
    Printed printed;
    ui::TheDesktop().Print = [&](const std::vector<ui::PrintJob>& done, QPrinter& target) {
        printed = {done, &target};
    };
    Print_All(0);
    ui::TheQtHost().PrintJobs();
    ui::TheDesktop().Print = {};
    return printed;
}

void BenchPages(const std::string& folder, const std::string& large) {
    const std::string work = folder + "/pages.CRF";
    fs::copy_file(large, work, fs::copy_options::overwrite_existing);
    OpenCrf(work);
    Printed printed;
    const Least print = LeastOf(1, [&] { printed = PrintForm(); });
    DropCrf();
    const ui::Document document(printed.Jobs);
    Report("the whole form printed and its pages kept", print,
           fmt::format("{} pages", document.Pages()), folder);
    if (printed.Printer != nullptr) BenchPreview(document, *printed.Printer, folder);
    BenchPdf(document, folder);
    fs::remove(work);
}

/// Opens a statement, prints it, looks at its first and last page and makes a PDF file of all;
/// tells the peak of memory behind the opening and at the end.
void MeasurePeak(const std::string& folder, const std::string& crf) {
    OpenCrf(crf);
    const long opened = PeakKilobytes();
    const Printed printed = PrintForm();
    if (!printed.Printer) throw std::runtime_error("nothing was printed");
    const ui::Document document(printed.Jobs);
    ui::frmPreview preview(document, *printed.Printer);
    preview.show();
    preview.GoTo(document.Pages() - 1);
    preview.grab();
    ui::SavePdf(document, {0, document.Pages()}, folder + "/peak.pdf",
                [](std::size_t, std::size_t) { return true; });
    fmt::print("{} {}\n", opened, PeakKilobytes());
    DropCrf();
}

}  // namespace
}  // namespace zolmara::bench

int main(int argc, char** argv) {
    using namespace zolmara;
    const bool peak = argc == 4 && std::string_view(argv[3]) == "peak";
    if (argc != 3 && !peak) {
        fmt::print(stderr, "zolmara-page-bench FOLDER LARGE.CRF [peak]\n");
        return 1;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication app(argc, argv);
    const std::string folder = argv[1];
    ui::QtHost host(Settings(folder + "/settings.ini"), folder);
    ui::frmMain main;
    main.show();
    peak ? bench::MeasurePeak(folder, argv[2]) : bench::BenchPages(folder, argv[2]);
    return 0;
}
