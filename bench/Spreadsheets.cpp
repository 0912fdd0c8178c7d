#include "bench/Spreadsheets.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "core/Globals.h"
#include "spreadsheet/SheetProcess.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

/// What a spreadsheet may take for one statement.
constexpr int kMostSeconds = 900;
/// Shorter commands are run several times.
constexpr double kLongSeconds = 10;
constexpr int kRuns = 3;
constexpr const char* kPython = "/usr/bin/python3";

void Need(bool installed, const std::string& what) {
    if (!installed) throw NotInstalled(what);
}

std::string Limited(const std::string& command) {
    return fmt::format("timeout -k 5 {} {} >/dev/null 2>&1", kMostSeconds, command);
}

Least LeastOfCommand(const std::string& command) {
    const auto run = [&] { RunCommand(Limited(command)); };
    const Least first = LeastOf(1, run);
    if (first.Wall > kLongSeconds) return first;
    const Least others = LeastOf(kRuns - 1, run);
    return {std::min(first.Wall, others.Wall), std::min(first.Cpu, others.Cpu)};
}

/// Calculates what it opens, whatever results stand in there.
constexpr const char* kAlwaysCalculate =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Calc/Formula/Load">
<prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>0</value></prop></item>
</oor:items>
)";

/// The numbers of the wanted cells of a file, which is a sheet's where it has no names of sheets.
void ReadInto(std::map<BookPlace, double>& values, const std::string& path, SheetFileKind kind,
              const std::string& sheet) {
    SheetProcess process(path, kind);
    while (const auto row = process.Next())
        for (const SheetCell& cell : row->Cells) {
            const auto found = values.find(
                {row->Sheet.empty() ? sheet : row->Sheet, static_cast<int>(row->Row), cell.Column});
            if (found != values.end()) found->second = ParseNumber(cell.Text).value_or(0);
        }
    if (!process.Failure().empty()) throw std::runtime_error(path + ": " + process.Failure());
}

std::map<BookPlace, double> Wanted(const StaleBook& book) {
    std::map<BookPlace, double> values;
    for (const BookFigure& figure : book.Figures) values[figure.Place] = 0;
    return values;
}

void Check(const StaleBook& book, const std::map<BookPlace, double>& found) {
    std::vector<double> values;
    for (const BookFigure& figure : book.Figures) values.push_back(found.at(figure.Place));
    CheckFigures(book, values);
}

/// The number of a line "word number".
double Next(std::istream& told) {
    std::string word;
    double value = 0;
    if (!(told >> word >> value)) throw std::runtime_error("the spreadsheet told too little");
    return value;
}

std::vector<double> NextOf(std::istream& told, std::size_t count) {
    std::vector<double> values(count);
    for (double& value : values) value = Next(told);
    return values;
}

}  // namespace

Spreadsheets::Spreadsheets(std::string folder) : folder_(std::move(folder)) {
    fs::create_directories(folder_);
}

/// The first start of a new user makes its folder.
void Spreadsheets::NeedProfile() {
    if (profile_) return;
    fs::create_directories(File("profile/user"));
    std::ofstream(File("profile/user/registrymodifications.xcu")) << kAlwaysCalculate;
    RunCommand(Limited(
        fmt::format("soffice -env:UserInstallation=file://{} --headless --terminate_after_init",
                    Quoted(fs::absolute(File("profile")).string()))));
    profile_ = true;
}

Spreadsheets::Warm Spreadsheets::WarmOffice(const StaleBook& book) {
    Need(IsInstalled("soffice"), "libreoffice-calc-nogui");
    Need(std::system(fmt::format("{} -c 'import uno' 2>/dev/null", kPython).c_str()) == 0,
         "python3-uno");
    NeedProfile();
    std::string command =
        fmt::format("exec {} {} {} {} {} {} {}", kPython, Quoted(Beside("warm-spreadsheet.py")),
                    Quoted(book.Path), Quoted(File("profile")), kMostSeconds,
                    Quoted(book.Keyed.Address()), kEntry);
    for (const BookFigure& figure : book.Figures) command += " " + Quoted(figure.Place.Address());
    std::istringstream told(OutputOf(command));
    Warm warm;
    warm.Dependents = static_cast<long>(Next(told));
    warm.Call = Next(told);
    warm.Edit = Next(told);
    CheckFigures(book, NextOf(told, book.Figures.size()));
    warm.Full = Next(told);
    CheckFigures(book, NextOf(told, book.Figures.size()));
    return warm;
}

Least Spreadsheets::OfficeCommand(const StaleBook& book) {
    Need(IsInstalled("soffice"), "libreoffice-calc-nogui");
    NeedProfile();
    const std::string out = File("office");
    const Least least = LeastOfCommand(fmt::format(
        "soffice -env:UserInstallation=file://{} --headless --convert-to xlsx --outdir {} {}",
        Quoted(fs::absolute(File("profile")).string()), Quoted(out), Quoted(book.Path)));
    auto values = Wanted(book);
    ReadInto(values, out + "/" + fs::path(book.Path).filename().string(), SheetFileKind::Xlsx, "");
    fs::remove_all(out);
    Check(book, values);
    return least;
}

Least Spreadsheets::GnumericCommand(const StaleBook& book) {
    Need(IsInstalled("ssconvert"), "gnumeric");
    const std::string out = File("gnumeric");
    fs::create_directories(out);
    const Least least = LeastOfCommand(
        fmt::format("ssconvert --recalc --export-file-per-sheet --export-type={} {} {}",
                    "Gnumeric_stf:stf_csv", Quoted(book.Path), Quoted(out + "/%s.csv")));
    auto values = Wanted(book);
    for (const auto& [place, value] : Wanted(book))
        ReadInto(values, fmt::format("{}/{}.csv", out, place.Sheet), SheetFileKind::Csv,
                 place.Sheet);
    fs::remove_all(out);
    Check(book, values);
    return least;
}

}  // namespace zolmara::bench
