// The sample home office with a mistake for every code of the edit checks.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "calc/Calc_All.h"
#include "editchecks/CheckedCrf.h"
#include "editchecks/modEditChecks.h"
#include "import/ImportASCII.h"
#include "support/Paths.h"

namespace zolmara {
namespace {

using test::Findings;

// Every code that the form's edit checks have.
const std::set<std::string> kCatalogue{
    // of the whole statement
    "1065", "1090", "2000", "VLQ",
    // worksheets S
    "1000S", "1010S", "1020S", "1050S", "1060S", "1070S", "1080S", "1081S", "1085S", "1090S",
    "1100S", "1110S", "1121S", "1130S", "2000S", "2010S", "2020S", "2030S",
    // worksheets A
    "1000A", "1020A", "1025A", "1030A", "1040A", "1050A", "1060A", "1070A", "1080A", "1090A",
    "1091A", "1100A", "1105A", "2050A",
    // the statistics' labels
    "1110", "1120", "1130", "1140", "1141",
    // schedules B to E
    "1010B", "1020B", "1060B", "2000B", "1000C", "1010C", "1020C", "1000D", "1010D", "1015D",
    "1020D", "1030D", "1040D", "1050D", "1060D", "1080D", "1090D", "1280D", "1100E",
    // worksheets G
    "2000G", "2010G", "2020G"};

std::string Sample(const std::string& name) { return std::string(test::kSamples) + "/" + name; }

std::set<std::string> CodesFound() {
    std::set<std::string> codes;
    Recordset rows = gDB.OpenRecordset("Select Code From Error;");
    for (; !rows.Eof(); rows.MoveNext()) codes.insert(Text(rows[0]));
    return codes;
}

/// The codes that a statement's line of remarks names, up to a colon.
std::set<std::string> CodesOf(const std::string& remark) {
    std::set<std::string> codes;
    std::istringstream words(remark.substr(2, remark.find(':') - 2));
    for (std::string code; words >> code;) {
        if (kCatalogue.count(code) > 0) codes.insert(code);
    }
    return codes;
}

struct Planted {
    std::set<std::string> Codes;
    std::string Statement;
};

/// The statements of a file, each with the codes named ahead of it.
std::vector<Planted> PlantedStatements() {
    std::vector<Planted> planted;
    std::ifstream file(Sample("northfield-mistakes.sql"));
    std::set<std::string> codes;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("--")) {
            codes = CodesOf(line);
        } else if (!line.empty()) {
            planted.push_back({codes, line});
        }
    }
    return planted;
}

class PlantedMistakes : public test::SessionTest {
protected:
    PlantedMistakes() {
        CreateCrf(folder.File("Northfield.CRF"),
                  {"287", "14-9012", "1/1/2023", "12/31/2023", "Northfield Health System"});
        Import("northfield.txt");
        Calc_All();
    }
    static void Import(const std::string& name) { ImportAsciiFile(Sample(name)); }
};

TEST_F(PlantedMistakes, TheSampleHomeOfficeHasNone) {
    EXPECT_EQ(Run_EditChecks(), 0);
    EXPECT_EQ(test::AllFindings(), Findings{"No errors found |   |  "});
}

TEST_F(PlantedMistakes, TheRunKnowsTheCodesOfTheCatalogueAndNoOthers) {
    const std::vector<std::string> codes = EditCheckCodes();
    EXPECT_EQ(std::set<std::string>(codes.begin(), codes.end()), kCatalogue);
}

TEST_F(PlantedMistakes, EveryStatementGivesTheCodesThatItNames) {
    const std::vector<Planted> planted = PlantedStatements();
    ASSERT_GE(planted.size(), 14u);
    for (const Planted& mistake : planted) {
        Run_EditChecks();
        const std::set<std::string> before = CodesFound();
        gDB.Execute(mistake.Statement);
        Run_EditChecks();
        const std::set<std::string> after = CodesFound();
        ASSERT_FALSE(mistake.Codes.empty()) << mistake.Statement;
        for (const std::string& code : mistake.Codes) {
            EXPECT_EQ(before.count(code), 0u) << code << " before " << mistake.Statement;
            EXPECT_EQ(after.count(code), 1u) << code << " after " << mistake.Statement;
        }
    }
}

TEST_F(PlantedMistakes, EveryCodeIsProvoked) {
    Import("northfield-mistakes.txt");
    Calc_All();
    EXPECT_EQ(Run_EditChecks(), 3);
    std::set<std::string> found = CodesFound();
    // The planted type of control hides what is asked of the fixed assets.
    EXPECT_EQ(found.count("2050A"), 1u);
    for (const Planted& mistake : PlantedStatements()) gDB.Execute(mistake.Statement);
    EXPECT_EQ(Run_EditChecks(), 3);
    found.merge(CodesFound());
    EXPECT_EQ(found, kCatalogue);
}

}  // namespace
}  // namespace zolmara
