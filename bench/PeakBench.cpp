#include "bench/PeakBench.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "bench/LargeStatement.h"
#include "bench/Process.h"
#include "calc/Calc_All.h"
#include "ecr/Build_ECR.h"
#include "import/ImportASCII.h"
#include "print/PdfDevice.h"
#include "print/PrintDriver.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

struct Size {
    const char* Name;
    int Components;
    int CostCenters;
};
constexpr std::array<Size, 3> kSizes = {
    {{"medium", 300, 50}, {"large", 1500, 100}, {"huge", 5000, 200}}};

void PrintIntoPdf(const std::string& folder, SilentHost& host) {
    PdfDevice pdf(folder + "/peak.pdf");
    host.Device = &pdf;
    Print_All(0);
    pdf.Save();
    host.Device = nullptr;
}

struct Step {
    const char* Word;
    const char* Name;
    void (*Do)(const std::string& folder, SilentHost& host);
};
constexpr Step kSteps[] = {
    {"print", "the whole form into a print file",
     [](const std::string&, SilentHost&) { Print_All(0); }},
    {"pdf", "the same, and into a PDF file", PrintIntoPdf},
    {"ecr", "report and print image, sealed", [](const std::string&, SilentHost&) { Build_ECR(); }},
};

/// What the program beside prints.
struct Peaks {
    long Opened = 0;
    long Behind = 0;
};

Peaks PeaksOf(const Step& step, const std::string& crf) {
    const std::string report = crf + ".peak";
    const std::string self = fs::read_symlink("/proc/self/exe").string();
    RunCommand(
        fmt::format("{} peak {} {} >{}", Quoted(self), step.Word, Quoted(crf), Quoted(report)));
    Peaks peaks;
    if (!(std::ifstream(report) >> peaks.Opened >> peaks.Behind))
        throw std::runtime_error("no peak was told");
    fs::remove(report);
    return peaks;
}

void MakeStatement(const std::string& crf, const Size& size,
                   const std::function<void(const std::string&)>& makeNew) {
    const std::string text = crf + ".txt";
    {
        std::ofstream file(text, std::ios::binary);
        LargeShape shape;
        shape.Components = size.Components;
        shape.CostCenters = size.CostCenters;
        WriteLargeStatement(file, shape);
    }
    makeNew(crf);
    ImportAsciiFile(text);
    Calc_All();
    DropCrf();
    fs::remove(text);
}

double Megabytes(long kilobytes) { return static_cast<double>(kilobytes) / 1024; }

}  // namespace

void BenchPeaks(const std::string& folder, const std::function<void(const std::string&)>& makeNew) {
    const std::string place = folder + "/peaks";
    fs::create_directories(place);
    fmt::print("\npeak memory of a program that has just opened the statement, and of the step\n");
    for (const Size& size : kSizes) {
        const std::string crf = fmt::format("{}/{}.CRF", place, size.Name);
        MakeStatement(crf, size, makeNew);
        for (const Step& step : kSteps) {
            const Peaks peaks = PeaksOf(step, crf);
            fmt::print("{:<44} {:<8} {:5.1f} MB opened, {:5.1f} MB more\n", step.Name, size.Name,
                       Megabytes(peaks.Opened), Megabytes(peaks.Behind - peaks.Opened));
        }
    }
    fs::remove_all(place);
}

bool MeasurePeak(const std::string& step, const std::string& crf, SilentHost& host) {
    const auto* const found =
        std::ranges::find_if(kSteps, [&](const Step& each) { return step == each.Word; });
    if (found == std::end(kSteps)) return false;
    OpenCrf(crf);
    const long opened = PeakKilobytes();
    found->Do(fs::path(crf).parent_path().string(), host);
    fmt::print("{} {}\n", opened, PeakKilobytes());
    return true;
}

}  // namespace zolmara::bench
