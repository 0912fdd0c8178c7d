#include "spreadsheet/GeneratedStatement.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara::test {
namespace {

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    std::vector<std::string> Make() {
        MakeCostCenters();
        for (int part = 1; part <= 3; ++part) MakeComponents(part);
        MakeOffice();
        MakeEntries();
        MakeAmounts();
        return std::move(lines_);
    }

private:
    int Number(int low, int high) { return std::uniform_int_distribution<>(low, high)(random_); }
    bool Chance(int percent) { return Number(1, 100) <= percent; }
    int Amount() { return Chance(10) ? -Number(1, 99999) : Number(0, 9999999); }

    std::string Words() {
        static const std::vector<std::string> kWords = {
            "North",  "=1+1", "+Plus", "-Minus", "@At",   "O'Hara", "Über",  "A, B",
            "$ Five", "x|y",  "50%",   "1/2",    "#REF",  "007",    "1,234", "end.",
            "(paren", "&co",  "<b>",   "日本",   "\"q\"", "Ltd",    "e5",    "TRUE"};
        std::string text = kWords[static_cast<std::size_t>(Number(0, 23))];
        // A quote beside a comma has no form in a line of text.
        const bool quoted = text.find('"') != std::string::npos;
        if (Chance(60))
            text += quoted ? " and Sons" : " " + kWords[static_cast<std::size_t>(Number(0, 19))];
        return text;
    }

    void Put(const std::string& sheet, const std::string& line, const std::string& column,
             std::string contents) {
        const bool quote =
            contents.find_first_of("$,") != std::string::npos || contents.starts_with('"');
        if (quote) contents = Replace(contents, "\"", "'");
        lines_.push_back(fmt::format("{}\t{}\t{}\t{}{}{}", sheet, line, column, quote ? "\"" : "",
                                     contents, quote ? "\"" : ""));
    }
    void PutAmount(const std::string& sheet, const std::string& line, const std::string& column) {
        if (Chance(60)) Put(sheet, line, column, std::to_string(Amount()));
    }

    void AddCenter(const std::string& line) {
        Put("CostCenter", line, "0", Words());
        if (Chance(50)) Put("CostCenter", line, "1", Words());
        centers_.push_back(line);
    }

    void MakeCostCenters() {
        for (const int line : {1, 2, 4, 5, 6, 8, 9, 10, 12, 14, 20, 28}) {
            centers_.push_back(std::to_string(line));
            for (int sub = 1; sub <= 2 && Chance(30); ++sub)
                AddCenter(fmt::format("{}.{:02}", line, sub));
        }
        for (int line = 29; line < 33 && Chance(70); ++line) AddCenter(std::to_string(line));
        if (Chance(50)) Put("CostCenter", "2", "6", "1");
        if (Chance(50)) Put("CostCenter", "9", "4", "Hours, paid");
    }

    void MakeComponents(int part) {
        const std::string sheet = fmt::format("S2p{}", part);
        for (int line = 1; line <= 5 && Chance(80); ++line) {
            std::vector<std::string>& lines = components_[part - 1];
            lines.push_back(std::to_string(line));
            if (Chance(30)) lines.push_back(fmt::format("{}.{:02}", line, Number(1, 9)));
        }
        for (const std::string& line : components_[part - 1]) {
            Put(sheet, line, "1", Chance(90) ? Words() : "");
            if (part == 1) Put(sheet, line, "2", fmt::format("14-{:04}", Number(1, 9999)));
            if (part < 3) Put(sheet, line, "4", fmt::format("{:02}/01/2023", Number(1, 12)));
            if (part == 3 && Chance(50)) Put(sheet, line, "6", std::to_string(Amount()));
        }
    }

    void MakeOffice() {
        Put("S1p1", "1", "1", Words());
        Put("S1p1", "1", "6", "02134");
        Put("S1p1", "2", "3", "07/01/1987");
        Put("S1p1", "3", "1", "5");
        Put("S1p1", "3", "2", Words());
        Put("S1p1", "4", "3", "No");
        Put("S1p1", "4", "4", "12/31/2029");
        Put("S1p2", "1", "2", Words());
        Put("S1p2", "6", "1", Words());
        Put("S1p2", "7.01", "2", "");
    }

    const std::string& Center(std::size_t from) {
        return centers_[static_cast<std::size_t>(
            Number(static_cast<int>(from), static_cast<int>(centers_.size()) - 1))];
    }
    /// One that entries may name: not the other capital lines, nor interest income.
    std::string AdjustedCenter() {
        std::string line = Center(0);
        while (Between(Val(line), 3.0, 7.99) || Between(Val(line), 28.0, 28.99)) line = Center(0);
        return line;
    }

    void MakeEntries() {
        for (int line = 1; line <= 6 && Chance(80); ++line) {
            const std::string number =
                Chance(80) ? std::to_string(line) : fmt::format("{}.5", line);
            const std::string amount = fmt::format("{}.{:02}", Number(1, 99999), Number(0, 99));
            Put("A6", number, "1", Words());
            Put("A6", number, "2", std::string(1, static_cast<char>('A' + line)));
            Put("A6", number, "4", AdjustedCenter());
            Put("A6", number, "5", amount);
            Put("A6", number, "7", AdjustedCenter());
            Put("A6", number, "8", amount);
        }
        for (const int line : {1, 4, 9, 18, 19, 25}) {
            if (!Chance(60)) continue;
            const std::string number = std::to_string(line);
            if (line >= 18) Put("A8", number, "1", Words());
            Put("A8", number, "2", Chance(50) ? "A" : "B");
            Put("A8", number, "3", std::to_string(Amount() + 1));
            Put("A8", number, "5", AdjustedCenter());
        }
        for (int line = 1; line <= 3 && Chance(70); ++line) {
            const std::string number = std::to_string(line);
            Put("A81p1", number, "1", AdjustedCenter());
            Put("A81p1", number, "3", Words());
            PutAmount("A81p1", number, "5");
            PutAmount("A81p1", number, "6");
            Put("A81p2", number, "1", Chance(50) ? "G" : "A");
            Put("A81p2", number, "3", Words());
            Put("A81p2", number, "4", fmt::format("{}.25", Number(1, 99)));
        }
    }

    void MakeAmounts() {
        for (const std::string& line : centers_)
            if (!line.starts_with("28")) PutAmount("A", line, "1");
        for (const char* line : {"1", "3", "5", "8"})
            for (const char* column : {"1", "2", "3", "5", "7"}) PutAmount("A7p1", line, column);
        for (const char* line : {"1", "2"})
            for (const char* column : {"1", "2", "9", "14"}) PutAmount("A7p2", line, column);
        for (const char* line : {"1", "5", "11", "12", "13", "27", "33", "41", "47"})
            PutAmount("G", line, "1");
        for (const char* line : {"1", "4", "9", "10", "14", "16", "20.01"})
            PutAmount("G1", line, "2");
        Put("G1", "10.02", "1", Words());
        for (int part = 1; part <= 3; ++part) MakeSchedules(part);
        for (const char* sheet : {"C1p3", "D1p3"})
            for (const std::string& line : centers_)
                if (TakesStatistic(sheet, line)) PutAmount(sheet, "53", line);
    }

    /// C-1 has the capital lines, D-1 those behind the other capital ones.
    static bool TakesStatistic(const std::string& sheet, const std::string& center) {
        const double line = Val(center);
        return sheet.starts_with('C') ? line < 3 : line >= 8;
    }

    void MakeSchedules(int part) {
        for (const std::string& line : components_[part - 1]) {
            for (const std::string& center : centers_) {
                const double number = Val(center);
                if (number <= 6 && Chance(30)) PutAmount(fmt::format("Bp{}", part), line, center);
                if (number >= 8 && Chance(30)) PutAmount(fmt::format("B1p{}", part), line, center);
                for (const char* family : {"C1p", "D1p"})
                    if (TakesStatistic(family, center))
                        Put(fmt::format("{}{}", family, part), line, center,
                            std::to_string(Number(0, 500)));
            }
            PutAmount(fmt::format("E1p{}", part), line, "1");
        }
    }

    std::mt19937 random_;
    std::vector<std::string> lines_;
    std::vector<std::string> centers_;
    std::vector<std::string> components_[3];
};

}  // namespace

std::vector<std::string> GeneratedLines(unsigned seed) { return Generator(seed).Make(); }

void FillGenerated(const std::string& folder, unsigned seed) {
    const std::string path = folder + "/generated.txt";
    {
        std::ofstream out(path, std::ios::binary);
        for (const std::string& line : GeneratedLines(seed)) out << line << "\n";
    }
    ImportErrorFlag = false;
    ImportAsciiFile(path);
    auto messages = gDB.OpenRecordset("SELECT Message FROM Error WHERE Level<>'';");
    for (; !messages.Eof(); messages.MoveNext()) ADD_FAILURE() << Text(messages[0]);
    Calc_All();
}

}  // namespace zolmara::test
