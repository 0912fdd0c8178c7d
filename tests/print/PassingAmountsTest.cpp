// The whole form and the electronic report of a statement that has just been opened: the same bytes
// as behind a calculation, and nothing of the amounts stays in memory.

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "calc/Calc_All.h"
#include "core/Clock.h"
#include "ecr/Build_ECR.h"
#include "print/PrintDriver.h"
#include "print/PrintSupport.h"
#include "print/Reports.h"
#include "store/TableCells.h"
#include "store/harness/Faults.h"
#include "worksheets/Schedules.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class PassingAmounts : public PrintCrf {
protected:
    PassingAmounts() {
        ResetClock();
        host.Folder = folder.Path();
        // Amounts that tell the columns of all pages from each other, and cells that are Null.
        for (const char* const item : {"Bp1", "B1p1", "C1p2", "D1p3"}) {
            const TableDef table = gDB.Table(item);
            for (std::size_t i = 3; i < table.Fields.size(); ++i)
                SetCell(item, 1, table.Fields[i].Name,
                        i % 5 == 0 ? Variant() : Variant(1000.0 + static_cast<double>(i)));
        }
        Calc_All();
        former_ = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
    }
    ~PassingAmounts() override {
        former_.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", former_.c_str(), 1);
    }
    void OpenAnew() const {
        const std::string crf = gCRFPath;
        DropCrf();
        OpenCrf(crf);
    }
    /// Temporary files are made in a folder of their own.
    std::string TakeTemporaryFolder() const {
        const std::string place = folder.File("temporary");
        fs::create_directories(place);
        setenv("TMPDIR", place.c_str(), 1);
        return place;
    }
    static std::string PrintedForm() {
        Print_All(0);
        return FileBytes(WholePrintFile());
    }
    struct Submission {
        std::string Ecr;
        std::string Pi;
    };
    Submission Built() {
        host.Files = {folder.File("HO123456.23A1")};
        Build_ECR();
        return {FileBytes(LastBuild().Ecr), FileBytes(LastBuild().Pi)};
    }
    static void ExpectNothingKept() {
        for (const Worksheet& sheet : AllWorksheets())
            if (FindSchedule(sheet.Item) && gDB.HasTable(sheet.Item)) {
                EXPECT_EQ(KeptCellsOf(gDB, sheet.Item), nullptr) << sheet.Item;
            }
    }

private:
    std::string former_;
};

TEST_F(PassingAmounts, TheFormIsTheSameOfAStatementJustOpened) {
    CellsOf(gDB, "Dp1");
    const std::string calculated = PrintedForm();
    EXPECT_NE(KeptCellsOf(gDB, "Dp1"), nullptr);
    OpenAnew();
    EXPECT_TRUE(PrintedForm() == calculated);
    ExpectNothingKept();
    EXPECT_GT(calculated.size(), 50'000U);
}

TEST_F(PassingAmounts, TheReportAndItsImageAreTheSameOfAStatementJustOpened) {
    const Submission calculated = Built();
    OpenAnew();
    const Submission opened = Built();
    EXPECT_TRUE(opened.Ecr == calculated.Ecr);
    EXPECT_TRUE(opened.Pi == calculated.Pi);
    ExpectNothingKept();
}

TEST_F(PassingAmounts, AReportOfItsOwnIsTheSame) {
    Print_Bx("D1p3", run);
    const std::string calculated = FileBytes(PrintFile("D1p3.prt"));
    OpenAnew();
    Print_Bx("D1p3", run);
    EXPECT_TRUE(FileBytes(PrintFile("D1p3.prt")) == calculated);
    PrintSelected(std::vector<std::string>{"D-1 Part III (D1p3)"});
    EXPECT_TRUE(FileBytes(PrintFile("D1p3.prt")) == calculated);
    ExpectNothingKept();
}

TEST_F(PassingAmounts, NothingIsLeftInTheFolderOfTemporaryFiles) {
    const std::string place = TakeTemporaryFolder();
    OpenAnew();
    PrintedForm();
    Built();
    EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(PassingAmounts, AFullDiskForTemporaryFilesChangesNoByte) {
    const std::string form = PrintedForm();
    const Submission calculated = Built();
    const std::string place = TakeTemporaryFolder();
    for (const int call : {1, 4}) {
        OpenAnew();
        FaultsArm(place.c_str(), call, ENOSPC, "write");
        EXPECT_TRUE(PrintedForm() == form) << call;
        EXPECT_EQ(FaultsDisarm(), call);
        FaultsArm(place.c_str(), call, ENOSPC, "write");
        const Submission opened = Built();
        EXPECT_EQ(FaultsDisarm(), call);
        EXPECT_TRUE(opened.Ecr == calculated.Ecr && opened.Pi == calculated.Pi) << call;
        EXPECT_TRUE(fs::is_empty(place));
    }
    ExpectNothingKept();
}

TEST_F(PassingAmounts, WithoutTheFolderOfTemporaryFilesAnotherIsTaken) {
    const std::string form = PrintedForm();
    setenv("TMPDIR", folder.File("missing").c_str(), 1);
    OpenAnew();
    EXPECT_TRUE(PrintedForm() == form);
    EXPECT_FALSE(fs::exists(folder.File("missing")));
}

/// What was printed before stays, and the run says what it stopped at.
TEST_F(PassingAmounts, AScheduleThatIsGoneMeanwhileStopsThePrint) {
    gDB.DeleteTable("Dp1");
    OpenAnew();
    try {
        Print_Bx("Dp1", run);
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()), "no such table: Dp1");
    }
    EXPECT_FALSE(fs::exists(PrintFile("Dp1.prt")));
}

}  // namespace
}  // namespace zolmara::test
