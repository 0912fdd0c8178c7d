// The reports of a small home office, compared whole with the texts in golden/.

#include "print/PrintDriver.h"
#include "print/PrintSupport.h"
#include "print/Reports.h"

namespace zolmara::test {
namespace {

class GoldenTest : public PrintCrf {
protected:
    /// Prints a worksheet and compares its print file, without the line that says the version.
    void ExpectReport(std::string_view item) {
        ASSERT_TRUE(Print_Worksheet(item, run, true));
        std::vector<std::string> lines = PrintedLines(PrintFileOf(item));
        std::erase_if(lines, [](const std::string& line) {
            return line.find("[Version: ") != std::string::npos;
        });
        ExpectGolden(item, lines);
    }
};

TEST_F(GoldenTest, S) { ExpectReport("Sp1"); }
TEST_F(GoldenTest, S1) { ExpectReport("S1p1"); }
TEST_F(GoldenTest, S2) { ExpectReport("S2p1"); }
TEST_F(GoldenTest, A) { ExpectReport("A"); }
TEST_F(GoldenTest, A6) { ExpectReport("A6"); }
TEST_F(GoldenTest, A7) { ExpectReport("A7p1"); }
TEST_F(GoldenTest, A8) { ExpectReport("A8"); }
TEST_F(GoldenTest, A81) { ExpectReport("A81p1"); }
TEST_F(GoldenTest, B) { ExpectReport("Bp1"); }
TEST_F(GoldenTest, B1Part3) { ExpectReport("B1p3"); }
TEST_F(GoldenTest, C) { ExpectReport("Cp1"); }
TEST_F(GoldenTest, C1Part3) { ExpectReport("C1p3"); }
TEST_F(GoldenTest, DPart2) { ExpectReport("Dp2"); }
TEST_F(GoldenTest, E) { ExpectReport("E"); }
TEST_F(GoldenTest, E1) { ExpectReport("E1p1"); }
TEST_F(GoldenTest, F) { ExpectReport("Fp1"); }
TEST_F(GoldenTest, F1Part3) { ExpectReport("F1p3"); }
TEST_F(GoldenTest, F2Part2) { ExpectReport("F2p2"); }
TEST_F(GoldenTest, G) { ExpectReport("G"); }
TEST_F(GoldenTest, G1) { ExpectReport("G1"); }

}  // namespace
}  // namespace zolmara::test
