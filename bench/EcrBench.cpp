#include "bench/EcrBench.h"

#include <fmt/format.h>

#include <fstream>
#include <sstream>

#include "bench/Measure.h"
#include "bench/RawSqlite.h"
#include "core/Globals.h"
#include "ecr/Build_ECR.h"
#include "ecr/Emitters.h"
#include "ecr/FileNames.h"
#include "ecr/Labels.h"
#include "ecr/Record.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara::bench {
namespace {

constexpr int kRuns = 3;

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
    const std::string records = folder + "/records.ecr";
    const double write = Seconds(kRuns, [&] { RunBatch(gDB, [&] { WriteRecords(records); }); });
    const std::string bytes = Content(records);
    const double plain = Seconds(kRuns, [&] { WritePlainly(folder + "/plain.ecr", bytes); });
    const double read = Seconds(kRuns, [&] { ReadWorksheets(gCRFPath); });
    fmt::print("the electronic report has {} bytes\n", bytes.size());
    Report("records of the electronic report", write, "the bytes alone", plain, folder);
    Report("records of the electronic report", write, "raw SQLite's reading and the bytes",
           read + plain, folder);
    const double build = Seconds(kRuns, Build_ECR);
    const std::string image = Content(PiPath(folder + "/" + EcrFileName()));
    const double both = Seconds(kRuns, [&] { WritePlainly(folder + "/plain.pi", bytes + image); });
    fmt::print("the print image has {} bytes\n", image.size());
    Report("report and print image, sealed", build, "the bytes alone", both, folder);
}

}  // namespace zolmara::bench
