#include "print/PrintSupport.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "calc/Calc_All.h"
#include "store/Files.h"
#include "support/Paths.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {

std::vector<std::string> FakePrinter::Lines() const {
    std::vector<std::string> lines;
    for (const std::string& call : Calls) {
        if (call.starts_with("Line ")) lines.push_back(call.substr(5));
    }
    return lines;
}

void FakePrinter::SetOrientation(int orientation) {
    Calls.push_back(fmt::format("Orientation {}", orientation));
}
void FakePrinter::SetFontName(const std::string& name) {
    FontNow = name;
    Calls.push_back("Font " + name);
}
void FakePrinter::SetFontSize(double points) { Calls.push_back(fmt::format("Size {}", points)); }
void FakePrinter::SetBold(bool bold) { Calls.push_back(bold ? "Bold" : "Not bold"); }
void FakePrinter::SetPrintQuality(int quality) {
    Calls.push_back(fmt::format("Quality {}", quality));
}
void FakePrinter::Print(std::string_view line) {
    if (!FailAt.empty() && line == FailAt) throw std::runtime_error("Out of paper.");
    Calls.push_back(fmt::format("Line {}", line));
}
void FakePrinter::NewPage() { Calls.emplace_back("NewPage"); }
void FakePrinter::EndDoc() { Calls.emplace_back("EndDoc"); }

std::string FileBytes(const std::string& path) {
    const auto bytes = ReadWholeFile(path);
    if (!bytes) ADD_FAILURE() << "There is no file " << path;
    return bytes.value_or("");
}

namespace {

std::string Readable(std::string_view line) {
    if (!line.starts_with('\f')) return std::string(line);
    if (line == "\f\x01") return "==== page, portrait";
    if (line == "\f\x02") return "==== page, landscape";
    return "==== page" + std::string(line.substr(1));
}

}  // namespace

std::vector<std::string> PrintedLines(const std::string& path) {
    const std::string text = FromCodePage1252(FileBytes(path));
    std::vector<std::string> lines;
    std::string_view rest = text;
    for (std::size_t end = rest.find("\r\n"); end != std::string_view::npos;
         end = rest.find("\r\n")) {
        lines.push_back(Readable(rest.substr(0, end)));
        rest.remove_prefix(end + 2);
    }
    EXPECT_EQ(rest, "") << "behind the last line end of " << path;
    return lines;
}

std::vector<std::string> LinesWith(const std::vector<std::string>& lines, std::string_view text) {
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        if (line.find(text) != std::string::npos) found.push_back(line);
    }
    return found;
}

int PageCount(const std::vector<std::string>& lines) {
    return static_cast<int>(LinesWith(lines, "==== page").size());
}

std::vector<std::string> PageOf(const std::vector<std::string>& lines, int page) {
    std::vector<std::string> result;
    int number = 0;
    for (const std::string& line : lines) {
        if (line.starts_with("==== page")) ++number;
        if (number == page) result.push_back(line);
    }
    return result;
}

void ExpectGolden(std::string_view name, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    const std::string path = fmt::format("{}/{}.txt", kGolden, name);
    if (std::getenv("ZOLMARA_WRITE_GOLDEN")) WriteWholeFile(path, text);
    EXPECT_EQ(text, FileBytes(path)) << path;
}

namespace {

struct Entry {
    std::string_view Table;
    double Line;
    std::string_view Field;
    Variant Value;
};

/// A component of S-2, whose rows the schedules take over when they are made.
void AddComponent(std::string_view part, double line, std::string_view name,
                  std::string_view number) {
    gDB.Execute(fmt::format("INSERT INTO S2{} (LineNum,Col_1,Col_2) VALUES (?,?,?);", part),
                {Currency(line), name, number});
}

void AddComponents() {
    AddComponent("p1", 1, "Lakeside Hospital", "14-0001");
    AddComponent("p1", 2, "Riverside Hospital and Rehabilitation Center of the Valley", "14-0002");
    AddComponent("p2", 1, "Lakeside Foundation", "");
    AddComponent("p3", 1, "Northern Region", "14-H001");
    for (const Worksheet& sheet : AllWorksheets()) {
        if (sheet.CostCenterCells || SameText(sheet.Item.substr(0, 1), "F"))
            BuildWorksheet(sheet.Item);
    }
}

void AddLines() {
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_2,Col_3,Col_4,Col_5,Col_6,Col_7,Col_8) VALUES "
        "(1,'To move the rent of the annex',?,'Payroll Taxes',10,25000,'Employee Benefits-Payroll "
        "Related',11,25000);",
        {"A"});
    gDB.Execute(
        "INSERT INTO A81p1 (SeqNum,Col_1,Col_3,Col_4,Col_5,Col_6) VALUES "
        "(1,10,'Management fees',1,100000,120000.4);");
    gDB.Execute(
        "INSERT INTO A81p2 (SeqNum,Col_1,Col_2,Col_3,Col_4,Col_5,Col_6,Col_7) VALUES "
        "(1,'B','Corporation, partnership or other organization',NULL,40,'Annex Partners',60.5,"
        "'Real estate');");
    gDB.Execute("UPDATE S2p1 SET Col_3='Owned',Col_4='10/01/2022',Col_5='09/30/2023';");
    gDB.Execute("UPDATE S2p1 SET Col_8='Y',Col_9='P',Col_10='06101',Col_11='Illinois';");
    gDB.Execute("UPDATE S2p2 SET Col_4='10/01/2022',Col_5='09/30/2023',Col_6='07/01/1987';");
    gDB.Execute("UPDATE S2p3 SET Col_4='Evanston',Col_5='IL',Col_6=12500,Col_7='N',Col_8='06101';");
}

void KeyEntries() {
    const Entry entries[] = {
        {"S1p1", 1, "Col_1", "1 Lake Street"},
        {"S1p1", 1, "Col_4", "Evanston"},
        {"S1p1", 1, "Col_5", "IL"},
        {"S1p1", 1, "Col_6", "60201"},
        {"S1p1", 2, "Col_3", "07/01/1987"},
        {"S1p1", 3, "Col_1", "5"},
        {"S1p1", 3, "Col_2", "Cooperative"},
        {"S1p1", 4, "Col_1", "Yes"},
        {"S1p1", 4, "Col_2", "Audited"},
        {"S1p1", 4, "Col_3", "No"},
        {"S1p1", 4, "Col_4", "02/15/2024"},
        {"S1p1", 4, "Col_5", "Yes"},
        {"S1p1", 5, "Col_1", "Ana"},
        {"S1p1", 5, "Col_2", "Gr\u00fcn"},
        {"S1p1", 5, "Col_4", "847-555-0100"},
        {"S1p1", 5, "Col_5", "ana@lakeside.example"},
        {"S1p2", 1, "Col_2", "Harold Castell"},
        {"Sp1", 2, "Col_1", "0"},
        {"Sp1", 9, "Col_1", "06101"},
        {"A", 10, "Col_1", 1500000},
        {"A", 11, "Col_1", 250000},
        {"A", 8, "Col_1", 800000},
        {"A7p1", 1, "Col_1", 1000000},
        {"A7p1", 3, "Col_1", 9000000},
        {"A7p1", 3, "Col_2", 500000},
        {"A7p1", 3, "Col_5", 250000},
        {"A7p2", 1, "Col_1", 6000000},
        {"A7p2", 2, "Col_1", 3000000},
        {"A7p2", 1, "Col_9", 300000},
        {"A7p2", 2, "Col_9", 150000},
        {"A8", 1, "Col_2", "B"},
        {"A8", 1, "Col_3", -1234},
        {"A8", 1, "Col_5", 10},
        {"Bp1", 1, "CC_100", 5000},
        {"B1p1", 1, "CC_1000", 70000},
        {"B1p3", 1, "CC_1000", 30000},
        {"C1p1", 1, "CC_100", 8240},
        {"C1p1", 2, "CC_100", 10560},
        {"C1p3", 53, "CC_100", 22900},
        {"D1p1", 1, "CC_1000", 400},
        {"D1p2", 1, "CC_1000", 100},
        {"D1p3", 53, "CC_1000", 90000},
        {"E1p1", 1, "Col_1", 600},
        {"E1p1", 2, "Col_1", 300},
        {"E1p2", 1, "Col_1", 50},
        {"E1p3", 1, "Col_1", 50},
        {"G", 1, "Col_1", 125000},
        {"G", 11, "Col_1", 1000000},
        {"G", 33, "Col_1", 75000},
        {"G", 47, "Col_1", 1050000},
        {"G1", 1, "Col_2", 3000000},
        {"G1", 5, "Col_2", 12000},
    };
    for (const Entry& entry : entries) SetCell(entry.Table, entry.Line, entry.Field, entry.Value);
}

}  // namespace

PrintCrf::PrintCrf() {
    AddComponents();
    AddLines();
    KeyEntries();
    Calc_All();
    host.Clock = DateTime(2024, 2, 1, 10, 30, 0);
    host.Forget();
}

}  // namespace zolmara::test
