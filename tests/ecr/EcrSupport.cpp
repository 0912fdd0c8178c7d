#include "ecr/EcrSupport.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ecr/Build_ECR.h"
#include "ecr/Emitters.h"
#include "ecr/FingerprintLibrary.h"
#include "store/files/Scratch.h"

namespace zolmara::test {

Lines LinesOf(const std::string& path) {
    const std::string bytes = BytesOf(path);
    EXPECT_TRUE(std::filesystem::exists(path)) << path;
    Lines lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = bytes.find('\n', at);
        const bool ended = end != std::string::npos && end > at && bytes[end - 1] == '\r';
        EXPECT_TRUE(ended) << path << ", line " << lines.size() + 1;
        if (!ended) break;
        lines.push_back(bytes.substr(at, end - 1 - at));
        at = end + 1;
    }
    return lines;
}

Lines StartingWith(const Lines& lines, std::string_view start) {
    Lines found;
    for (const std::string& line : lines)
        if (line.starts_with(start)) found.push_back(line);
    return found;
}

bool HasScratchFiles(const TempFolder& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        if (IsScratchName(entry.path().filename().string())) return true;
    return false;
}

std::string InField(std::string_view text, int width) {
    const std::size_t whole = static_cast<std::size_t>(std::abs(width));
    EXPECT_LE(text.size(), whole) << text;
    const std::string blanks(whole - std::min(whole, text.size()), ' ');
    return width < 0 ? blanks + std::string(text) : std::string(text) + blanks;
}

std::string Amount(std::string_view digits) { return InField(digits, -16); }

EcrCrf::~EcrCrf() {
    ResetClock();
    ECRStamp.clear();
    ECRDate = Variant();
    gDebug = false;
}

Lines EcrCrf::Records(const std::function<void(EcrRun&)>& emit) {
    const std::string path = folder.File("records.txt");
    OwnPrintFile file(path, AnyFile);
    EcrRun run(file.Number());
    emit(run);
    file.Close();
    return LinesOf(path);
}

Lines EcrCrf::RecordsOf(std::string_view item) {
    return Records([&](EcrRun& run) { ECR_Worksheet(run, item); });
}

void AddRow(std::string_view table, double line,
            const std::vector<std::pair<std::string, Variant>>& fields) {
    Recordset rows = gDB.OpenRecordset(table);
    rows.AddNew();
    rows.Set(0, line);
    for (const auto& [field, value] : fields) rows.Set(field, value);
    rows.Update();
}

Lines FingerprintLibraryHere::Calls() const {
    Lines lines;
    std::ifstream file(calls_);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

}  // namespace zolmara::test
