#include "bench/EcrBench.h"

#include <fmt/format.h>

#include <fstream>
#include <sstream>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "core/Globals.h"
#include "ecr/Build_ECR.h"
#include "ecr/Emitters.h"
#include "ecr/FileNames.h"
#include "ecr/Labels.h"
#include "ecr/Record.h"
#include "print/PdfDevice.h"
#include "print/PrintDriver.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara::bench {
namespace {

constexpr int kRuns = 5;

std::string Content(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

void WriteRecords(const std::string& path) {
    OwnPrintFile file(path, AnyFile);
    EcrRun run(file.Number());
    ECR_Type1(run, DateTime(2024, 2, 1, 10, 30, 0));
    ECR_Type2(run);
    ECR_Type3(run);
    file.Close();
}

void WritePlainly(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

void ReadWorksheets(const std::string& crf) {
    RawFile file(crf);
    for (const Worksheet& sheet : AllWorksheets()) file.ReadAll(std::string(sheet.Item));
}

}  // namespace

void BenchEcr(const std::string& folder) {
    const auto least = [](const std::function<void()>& work) {
        return LeastOf(
            kRuns, [] {}, work);
    };
    const auto report = [&](const std::string& what, const Least& took, const std::string& against,
                            const Least& baseline) {
        Report(what, took.Wall, against, baseline.Wall, folder);
        Report(what + ", CPU", took.Cpu, against, baseline.Cpu, folder);
    };
    const std::string records = folder + "/records.ecr";
    const Least write = least([&] { RunBatch(gDB, [&] { WriteRecords(records); }); });
    const std::string bytes = Content(records);
    const Least plain = least([&] { WritePlainly(folder + "/plain.ecr", bytes); });
    const Least read = least([&] { ReadWorksheets(gCRFPath); });
    fmt::print("the electronic report has {} bytes\n", bytes.size());
    report("records of the electronic report", write, "the bytes alone", plain);
    report("records of the electronic report", write, "raw SQLite's reading and the bytes",
           {read.Wall + plain.Wall, read.Cpu + plain.Cpu});
    const Least build = least(Build_ECR);
    const std::string image = Content(PiPath(folder + "/" + EcrFileName()));
    const std::string all = bytes + image;
    const Least both = least([&] { WritePlainly(folder + "/plain.pi", all); });
    fmt::print("the print image has {} bytes\n", image.size());
    report("report and print image, sealed", build, "the bytes alone", both);
}

void BenchPdf(const std::string& folder, const std::function<void(PageDevice*)>& usePrinter) {
    const long before = PeakKilobytes();
    const Least print = LeastOf(
        kRuns, [] {}, [] { Print_All(0); });
    int pages = 0;
    const Least both = LeastOf(
        kRuns, [] {},
        [&] {
            PdfDevice pdf(folder + "/form.pdf");
            usePrinter(&pdf);
            Print_All(0);
            pages = pdf.PageCount();
            pdf.Save();
            usePrinter(nullptr);
        });
    Report("the whole form into a print file", print.Wall, "", folder);
    Report("the same, and into a PDF file", both.Wall,
           fmt::format("{} pages, CPU {:.0f} ms; peak memory {} MB, before {} MB", pages,
                       both.Cpu * 1e3, PeakKilobytes() / 1024, before / 1024),
           folder);
}

}  // namespace zolmara::bench
