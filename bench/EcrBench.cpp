#include "bench/EcrBench.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/Statements.h"
#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "core/Sha256.h"
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

/// As any program must that is to lose nothing: aside, in pieces, to the disk.
class PlainFile {
public:
    PlainFile(std::string path, const std::string& bytes) : path_(std::move(path)) {
        const int file = open(Aside().c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        for (std::string_view rest = bytes; !rest.empty();) {
            const ssize_t written = write(file, rest.data(), std::min(rest.size(), kPiece));
            if (written < 0) throw std::runtime_error(path_);
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
        if (fsync(file) != 0 || close(file) != 0) throw std::runtime_error(path_);
    }
    void TakeName() const { std::filesystem::rename(Aside(), path_); }

private:
    static constexpr std::size_t kPiece = std::size_t{1} << 18;
    std::string Aside() const { return path_ + ".tmp"; }
    std::string path_;
};

/// All of them aside, then their names, which are brought to the disk as well.
void WriteDurably(const std::string& folder, const std::vector<const std::string*>& contents) {
    std::vector<PlainFile> files;
    for (const std::string* bytes : contents)
        files.emplace_back(fmt::format("{}/plain{}.out", folder, files.size()), *bytes);
    for (const PlainFile& file : files) file.TakeName();
    const int names = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    fsync(names);
    close(names);
}

void MakeDigests(const std::vector<const std::string*>& contents) {
    for (const std::string* bytes : contents) {
        Sha256 digest;
        digest.Add(*bytes);
        if (digest.Hex().empty()) throw std::runtime_error("no digest");
    }
}

void ReadWorksheets(const std::string& crf) {
    RawFile file(crf);
    for (const Worksheet& sheet : AllWorksheets()) file.ReadAll(std::string(sheet.Item));
}

/// The least of runs, each on the statement just opened, so that nothing of it is in memory.
Least LeastAnew(const std::function<void()>& work) {
    const std::string crf = gCRFPath;
    return LeastOf(
        kRuns,
        [&] {
            DropCrf();
            Open(crf);
        },
        work);
}

}  // namespace

void BenchEcr(const std::string& folder) {
    const std::string records = folder + "/records.ecr";
    const auto writeRecords = [&] { RunBatch(gDB, [&] { WriteRecords(records); }); };
    const Least report = LeastAnew(writeRecords);
    const Least build = LeastAnew(Build_ECR);
    // What a calculation has read is taken from memory.
    Calc_All();
    const Least again = LeastOf(kRuns, Build_ECR);
    const std::string bytes = Content(records);
    const std::string image = Content(PiPath(folder + "/" + EcrFileName()));
    ReportNote("electronic report and print image",
               fmt::format("{} and {} bytes", bytes.size(), image.size()));
    const Least plain = LeastOf(kRuns, [&] { WriteDurably(folder, {&bytes}); });
    const Least both = LeastOf(kRuns, [&] { WriteDurably(folder, {&bytes, &image}); });
    const Least digests = LeastOf(kRuns, [&] { MakeDigests({&bytes, &image}); });
    const Least read = LeastOf(kRuns, [&] { ReadWorksheets(gCRFPath); });
    const std::string durable = "the bytes alone, synced";
    Report("records of the electronic report", report, durable, plain, folder);
    Report("records of the electronic report", report, "raw SQLite's reading and the bytes",
           read + plain, folder);
    Report("digests of both files", digests, durable, both, folder);
    Report("raw SQLite reads each cell once", read, durable, both, folder);
    Report("report and print image, sealed, opened anew", build, durable, both, folder, "4 times");
    Report("report and print image, sealed, opened anew", build, "reading, digests and bytes",
           read + digests + both, folder);
    Report("report and print image, sealed, calculated", again, durable, both, folder, "4 times");
}

void BenchPdf(const std::string& folder, const std::function<void(PageDevice*)>& usePrinter) {
    const auto print = [] { Print_All(0); };
    const Least opened = LeastAnew(print);
    Calc_All();
    const Least calculated = LeastOf(kRuns, print);
    int pages = 0;
    const Least both = LeastOf(kRuns, [&] {
        PdfDevice pdf(folder + "/form.pdf");
        usePrinter(&pdf);
        Print_All(0);
        pages = pdf.PageCount();
        pdf.Save();
        usePrinter(nullptr);
    });
    Report("the whole form into a print file, opened anew", opened, "", folder);
    Report("the same, calculated", calculated, "", folder);
    Report("the same, and into a PDF file", both, fmt::format("{} pages", pages), folder, "3 s");
}

}  // namespace zolmara::bench
