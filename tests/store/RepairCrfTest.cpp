// A damaged Cost Report File as its owner meets it: what comes back, what is told, what is kept.

#include <sqlite3.h>

#include <fstream>

#include "store/FilledCrf.h"
#include "store/session/CloseCrf.h"
#include "store/session/RepairCrf.h"
#include "support/PlainUser.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = 4096;

class RepairOfACrf : public SessionTest {
protected:
    RepairOfACrf() {
        OpenFilledCopy(path_);
        DropCrf();
    }
    ~RepairOfACrf() override { DropCrf(); }

    /// Changes the file behind the back of its own rules.
    void Force(const std::string& sql) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(path_.c_str(), &handle), SQLITE_OK);
        sqlite3_exec(handle, "PRAGMA ignore_check_constraints=ON; PRAGMA writable_schema=ON",
                     nullptr, nullptr, nullptr);
        EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    std::string KeptFile() const {
        const auto kept = fs::path(path_).parent_path();
        for (const auto& entry : fs::directory_iterator(kept))
            if (entry.path().string().find(".damaged-") != std::string::npos)
                return entry.path().string();
        return "";
    }
    /// Repairs, checks that the damaged file is kept as it was, and opens the CRF.
    CrfRepair RepairAndOpen() {
        const auto before = BytesOf(path_);
        auto repair = RepairCrf(path_);
        EXPECT_TRUE(repair.WasDamaged);
        EXPECT_EQ(repair.KeptAs.empty(), repair.Report.empty());
        if (!repair.KeptAs.empty()) {
            EXPECT_EQ(BytesOf(repair.KeptAs), before);
            EXPECT_EQ(repair.Report.back(), "The damaged file is kept as " + repair.KeptAs + ".");
        }
        EXPECT_FALSE(RepairCrf(path_).WasDamaged);
        EXPECT_TRUE(OpenCrf(path_));
        return repair;
    }
    static bool Tells(const CrfRepair& repair, const std::string& sentence) {
        return std::find(repair.Report.begin(), repair.Report.end(), sentence) !=
               repair.Report.end();
    }
    static void ExpectLineIndex(const std::string& table) {
        const auto& indexes = gDB.Table(table).Indexes;
        ASSERT_EQ(indexes.size(), 1U) << table;
        EXPECT_TRUE(indexes[0].Unique) << table;
        EXPECT_EQ(indexes[0].Fields, std::vector<std::string>{"LineNum"}) << table;
    }
    /// Writes over the bytes of the file from a place on.
    void Overwrite(std::streamoff at, const std::string& bytes) const {
        std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(at);
        file << bytes;
    }
    /// Opening it asks whether to repair it, and after a Yes opens it with all that it held.
    void ExpectOffered(const std::string& before) {
        host.Forget();
        host.Answers.push_back(kYes);
        try {
            EXPECT_TRUE(OpenOrRepairCrf(path_));
        } catch (const StoreError& error) {
            ADD_FAILURE() << error.what();
            return;
        }
        ASSERT_EQ(host.Boxes.size(), 1U);
        EXPECT_EQ(host.Boxes[0].Title, "Damaged CRF");
        EXPECT_EQ(ContentOfCrf(), before);
        DropCrf();
        EXPECT_FALSE(RepairCrf(path_).WasDamaged);
    }
    static std::string Whole(const CrfRepair& repair) { return RepairText("file", repair); }

    std::string path_ = folder.File("Office.CRF");
};

TEST_F(RepairOfACrf, ACellThatItsFieldCannotHoldIsEmptyAndNamed) {
    Force("UPDATE A SET Col_1='12 thousand' WHERE LineNum=9");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(
        Tells(repair, "Worksheet table A: line 9: Col_1 could not be read and is empty now."))
        << Whole(repair);
    EXPECT_TRUE(Cell("A", 9, "Col_1").IsNull());
    EXPECT_FALSE(Cell("A", 9, "CCName").IsNull());
    OpenFilledCopy(folder.File("Whole.CRF"));
    const int rows = Rows("A");
    DropCrf();
    ASSERT_TRUE(OpenCrf(path_));
    EXPECT_EQ(Rows("A"), rows);
}

TEST_F(RepairOfACrf, ATextOverItsSizeAndANumberBeyondItsTypeAreEmptyToo) {
    Force("UPDATE CostCenters SET CCName=printf('%.50c','x'), StatCode=99999 WHERE LineNum=9");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Cell("CostCenters", 9, "CCName").IsNull()) << Whole(repair);
    EXPECT_TRUE(Cell("CostCenters", 9, "StatCode").IsNull());
}

TEST_F(RepairOfACrf, AnIdentityThatCannotBeReadIsTakenFromS1) {
    Force("UPDATE Master SET FYStart='damaged', ProviderName=printf('%.90c','x'), FormNum=NULL");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair,
                      "Table Master: FormNum, ProviderName, FYStart could not be read and were "
                      "taken from worksheet S-1."))
        << Whole(repair);
    EXPECT_EQ(gFormNum, "287");
    EXPECT_EQ(gProviderName, Text(Cell("S1p1", 2, "Col_1")));
    EXPECT_EQ(Format(gFYStart, "mm/dd/yyyy"), Text(Cell("S1p1", 2, "Col_4")));
}

TEST_F(RepairOfACrf, AMasterWithoutItsRowIsMadeFromS1) {
    Force("DELETE FROM Master");
    const auto repair = RepairAndOpen();
    EXPECT_FALSE(gProviderNumber.empty());
    EXPECT_EQ(gProviderNumber, Text(Cell("S1p1", 2, "Col_2")));
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) FROM Master")), 1);
}

TEST_F(RepairOfACrf, OneBitInTheFormNumberDoesNotShutTheFileForEver) {
    Force("UPDATE Master SET FormNum='283'");
    RepairAndOpen();
    EXPECT_EQ(gFormNum, "287");
}

TEST_F(RepairOfACrf, AnotherFormIsNoDamage) {
    Force("UPDATE Master SET FormNum='339'");
    EXPECT_FALSE(RepairCrf(path_).WasDamaged);
    EXPECT_EQ(KeptFile(), "");
}

TEST_F(RepairOfACrf, ALostDefinitionIsMadeAnewAndItsRowsArePutBack) {
    OpenCrf(path_);
    const auto before = ContentOfCrf();
    DropCrf();
    Force("UPDATE sqlite_schema SET sql='CREATE TAXLE'||substr(sql,13) WHERE name='Dp1'");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair, "Table Dp1: its definition was lost and made anew."))
        << Whole(repair);
    EXPECT_EQ(ContentOfCrf(), before);
}

TEST_F(RepairOfACrf, ADefinitionThatIsGoneWithItsPlaceIsMadeAnewAndItsRowsArePutBack) {
    OpenCrf(path_);
    const auto rows = Rows("A6");
    const auto cell = Cell("A6", 1, "Col_5");
    DropCrf();
    ASSERT_GT(rows, 1);
    Force("DELETE FROM sqlite_schema WHERE tbl_name='A6'");
    const auto repair = RepairAndOpen();
    EXPECT_EQ(Rows("A6"), rows) << Whole(repair);
    EXPECT_EQ(Cell("A6", 1, "Col_5"), cell);
}

TEST_F(RepairOfACrf, CostCentersMadeAnewGiveTheSchedulesTheirColumns) {
    Force(
        "UPDATE sqlite_schema SET sql='CREATE TAXLE'||substr(sql,13) WHERE name IN "
        "('CostCenters','Dp1','E')");
    OpenFilledCopy(folder.File("Whole.CRF"));
    const auto fields = gDB.Table("Dp1").Fields.size();
    const auto centers = Rows("CostCenters");
    DropCrf();
    const auto repair = RepairAndOpen();
    EXPECT_EQ(Rows("CostCenters"), centers) << Whole(repair);
    EXPECT_EQ(gDB.Table("Dp1").Fields.size(), fields);
}

TEST_F(RepairOfACrf, AFileWhoseFirstBytesAreGoneIsRepaired) {
    OpenCrf(path_);
    const auto before = ContentOfCrf();
    DropCrf();
    for (const std::size_t gone : {std::size_t{16}, std::size_t{100}}) {
        SCOPED_TRACE(gone);
        OpenFilledCopy(path_);
        DropCrf();
        {
            std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
            file << std::string(gone, '\0');
        }
        EXPECT_THROW(DBEngine::OpenDatabase(path_), StoreError);
        const auto repair = RepairAndOpen();
        EXPECT_EQ(ContentOfCrf(), before) << Whole(repair);
        DropCrf();
    }
}

TEST_F(RepairOfACrf, ADamagedMarkIsRepaired) {
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(70);
    file << 'Q';
    file.close();
    EXPECT_THROW(DBEngine::OpenDatabase(path_), StoreError);
    RepairAndOpen();
}

TEST_F(RepairOfACrf, AnotherProgramsDatabaseIsLeftAlone) {
    DropCrf();
    fs::remove(path_);
    Force("CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url TEXT)");
    const auto before = BytesOf(path_);
    EXPECT_THROW(RepairCrf(path_), StoreError);
    EXPECT_EQ(BytesOf(path_), before);
}

TEST_F(RepairOfACrf, AFileThatNothingIsWrongWithIsNotTouched) {
    const auto before = BytesOf(path_);
    const auto repair = RepairCrf(path_);
    EXPECT_FALSE(repair.WasDamaged);
    EXPECT_TRUE(repair.Report.empty());
    EXPECT_EQ(BytesOf(path_), before);
    EXPECT_EQ(KeptFile(), "");
}

TEST_F(RepairOfACrf, TwoDamagedFilesOfOneDayAreBothKept) {
    Force("UPDATE A SET Col_1='x' WHERE LineNum=9");
    const auto first = RepairCrf(path_).KeptAs;
    Force("UPDATE A SET Col_1='y' WHERE LineNum=10");
    const auto second = RepairCrf(path_).KeptAs;
    EXPECT_NE(first, second);
    EXPECT_TRUE(fs::exists(first));
    EXPECT_TRUE(fs::exists(second));
    EXPECT_TRUE(second.ends_with("-2.CRF")) << second;
}

TEST_F(RepairOfACrf, AnIndexWhoseFieldIsMisspeltByOneBitIsMadeAsItWas) {
    Force(
        "UPDATE sqlite_schema SET sql=replace(sql,'(\"LineNum\")','(\"LineNul\")') "
        "WHERE name='ndxE1p2'");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(repair.Report.empty()) << Whole(repair);
    const auto& indexes = gDB.Table("E1p2").Indexes;
    ASSERT_EQ(indexes.size(), 1U);
    EXPECT_TRUE(indexes[0].Unique);
    EXPECT_EQ(indexes[0].Fields, std::vector<std::string>{"LineNum"});
}

TEST_F(RepairOfACrf, AnIndexOnAFieldThatIsNotThereIsToldAndTheFileOpens) {
    Force(
        "UPDATE sqlite_schema SET sql=replace(sql,'(\"LineNum\")','(\"Nowhere\")') "
        "WHERE name='ndxE1p2'");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair, "Worksheet table E1p2: its index ndxE1p2 was lost and made anew."))
        << Whole(repair);
    ExpectLineIndex("E1p2");
}

TEST_F(RepairOfACrf, AnIndexWhoseDefinitionCannotBeReadIsMadeAnewAndNoRowIsLost) {
    OpenCrf(path_);
    const auto before = ContentOfCrf();
    DropCrf();
    Force("UPDATE sqlite_schema SET sql='CREATE UNIQUE INXEX'||substr(sql,20) WHERE name='ndxA6'");
    const auto repair = RepairAndOpen();
    EXPECT_EQ(repair.Report.size(), 2U) << Whole(repair);
    EXPECT_TRUE(Tells(repair, "Worksheet table A6: its index ndxA6 was lost and made anew."))
        << Whole(repair);
    ExpectLineIndex("A6");
    EXPECT_EQ(ContentOfCrf(), before);
}

TEST_F(RepairOfACrf, AnIndexThatIsGoneWithItsPlaceIsMadeAnew) {
    Force("DELETE FROM sqlite_schema WHERE name='ndxA6'");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair, "Worksheet table A6: its index ndxA6 was lost and made anew."))
        << Whole(repair);
    ExpectLineIndex("A6");
}

TEST_F(RepairOfACrf, TheIndexOfASystemTableIsMadeAnewToo) {
    Force("DELETE FROM sqlite_schema WHERE name='ndxWorksheets'");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair, "Table Worksheets: its index ndxWorksheets was lost and made anew."))
        << Whole(repair);
    const auto& indexes = gDB.Table("Worksheets").Indexes;
    ASSERT_EQ(indexes.size(), 1U);
    EXPECT_EQ(indexes[0].Fields, std::vector<std::string>{"Item"});
}

TEST_F(RepairOfACrf, IndexesOfSeveralTablesAndALostTableAreMadeAnewTogether) {
    Force(
        "DELETE FROM sqlite_schema WHERE name IN "
        "('ndxS2p1','ndxWorksheets','ndxA6','Dp1','ndxDp1')");
    const auto repair = RepairAndOpen();
    for (const auto* table : {"S2p1", "A6", "Dp1"}) ExpectLineIndex(table);
    EXPECT_EQ(gDB.Table("Worksheets").Indexes.size(), 1U);
    EXPECT_TRUE(Tells(repair, "Table Dp1: its definition was lost and made anew."))
        << Whole(repair);
}

TEST_F(RepairOfACrf, ATableThatNeverHadAnIndexGetsNone) {
    Force("DELETE FROM sqlite_schema WHERE name='ndxA6'");
    RepairAndOpen();
    for (const auto* table : {"Log", "Master", "CostCenters"})
        EXPECT_TRUE(gDB.Table(table).Indexes.empty()) << table;
}

TEST_F(RepairOfACrf, RowsThatTheLostIndexWouldNotTakeAreKeptAndTold) {
    Force(
        "DROP INDEX ndxA; UPDATE A SET LineNum=9 WHERE LineNum=10; UPDATE A SET Col_1='x' WHERE "
        "LineNum=11");
    const auto repair = RepairAndOpen();
    EXPECT_TRUE(Tells(repair,
                      "Worksheet table A: its index ndxA was lost and could not be made anew: line "
                      "9 stands more than once. The rows were kept."))
        << Whole(repair);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) FROM A WHERE LineNum=9")), 2);
    EXPECT_TRUE(gDB.Table("A").Indexes.empty());
    DropCrf();
    EXPECT_FALSE(RepairCrf(path_).WasDamaged);
}

TEST_F(RepairOfACrf, AFileWithALongNameIsKeptUnderAShorterOne) {
    std::string name;
    for (int i = 0; i < 121; ++i) name += "\u00e9";
    const std::string longest = folder.File(name + ".CRF");
    Force("UPDATE A SET Col_1='x' WHERE LineNum=9");
    fs::rename(path_, longest);
    path_ = longest;
    const auto repair = RepairAndOpen();
    const auto kept = fs::path(repair.KeptAs).filename().string();
    EXPECT_LE(kept.size(), 247U);
    EXPECT_TRUE(kept.starts_with(name.substr(0, 200))) << kept;
    EXPECT_NE(kept.find(".damaged-"), std::string::npos) << kept;
    EXPECT_TRUE(DBEngine::OpenDatabase(repair.KeptAs).IsOpen());
}

TEST_F(RepairOfACrf, AFolderThatTakesNoFileLeavesTheFileAsItWas) {
    Force("UPDATE A SET Col_1='x' WHERE LineNum=9");
    const auto before = BytesOf(path_);
    EXPECT_TRUE(AsAPlainUser(folder.Path(), [&] {
        fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_THROW(RepairCrf(path_), StoreError);
        fs::permissions(folder.Path(), fs::perms::owner_all);
    }));
    EXPECT_EQ(BytesOf(path_), before);
    EXPECT_EQ(KeptFile(), "");
}

// --- The offer when a file is opened

TEST_F(RepairOfACrf, IsOfferedWhenADamagedFileIsOpened) {
    std::fstream(path_, std::ios::in | std::ios::out | std::ios::binary) << std::string(16, '\0');
    host.Answers.push_back(kYes);
    EXPECT_TRUE(OpenOrRepairCrf(path_));
    EXPECT_TRUE(CrfIsOpen());
}

TEST_F(RepairOfACrf, ThatIsDeclinedLeavesTheFileAsItIs) {
    std::fstream(path_, std::ios::in | std::ios::out | std::ios::binary) << std::string(16, '\0');
    const auto before = BytesOf(path_);
    host.Answers.push_back(kNo);
    EXPECT_FALSE(OpenOrRepairCrf(path_));
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(BytesOf(path_), before);
}

TEST_F(RepairOfACrf, IsOfferedWhateverNumberOfTheFilesHeadIsDamaged) {
    OpenCrf(path_);
    const auto before = ContentOfCrf();
    DropCrf();
    const auto whole = BytesOf(path_);
    struct Damage {
        const char* What;
        std::streamoff At;
        std::string Bytes;
    };
    const Damage damages[] = {{"first letter", 0, "Q"},
                              {"last of the first bytes", 15, "Q"},
                              {"page size of nothing", 16, std::string(2, '\0')},
                              {"page size, one bit", 16, "\x11"},
                              {"another page size", 16, "\x20"},
                              {"version of those who write", 18, "\x03"},
                              {"version of those who read", 19, "\x41"},
                              {"reserved bytes, one bit", 20, "\x01"},
                              {"reserved bytes", 20, "\xff"},
                              {"share of a page", 21, "\x41"},
                              {"layout of tables, one bit", 47, "\x05"},
                              {"layout of tables", 47, "\xff"},
                              {"encoding, one bit", 59, "\x03"},
                              {"encoding, the other way round", 59, "\x02"},
                              {"mark", 68, "Q"},
                              {"version", 60, "\x40"}};
    for (const auto& [what, at, bytes] : damages) {
        SCOPED_TRACE(what);
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << whole;
        Overwrite(at, bytes);
        ExpectOffered(before);
        DropCrf();
    }
}

TEST_F(RepairOfACrf, IsOfferedForAFileThatTellsOfWorksheetsAlone) {
    OpenCrf(path_);
    const auto rows = Rows("A6");
    DropCrf();
    Force("DELETE FROM sqlite_schema WHERE tbl_name IN ('Master','Worksheets')");
    Overwrite(0, "Q");
    host.Answers.push_back(kYes);
    EXPECT_TRUE(OpenOrRepairCrf(path_));
    EXPECT_EQ(Rows("A6"), rows);
    EXPECT_EQ(gProviderNumber, Text(Cell("S1p1", 2, "Col_2")));
}

TEST_F(RepairOfACrf, IsNotOfferedForAnotherProgramsDatabaseWhateverIsDamagedInIt) {
    fs::remove(path_);
    Force(
        "CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url TEXT); "
        "INSERT INTO moz_places VALUES (1,'x')");
    const auto whole = BytesOf(path_);
    for (const std::streamoff at : {0, 16, 18, 20, 21, 47, 59, 68}) {
        SCOPED_TRACE(at);
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << whole;
        Overwrite(at, "\x3f");
        const auto before = BytesOf(path_);
        EXPECT_THROW(OpenOrRepairCrf(path_), StoreError);
        EXPECT_THROW(RepairCrf(path_), StoreError);
        EXPECT_TRUE(host.Boxes.empty());
        EXPECT_EQ(BytesOf(path_), before);
        EXPECT_EQ(KeptFile(), "");
    }
}

TEST_F(RepairOfACrf, IsNotOfferedForAFileThatIsNone) {
    std::ofstream(path_, std::ios::trunc) << "Dear Sir,\n";
    EXPECT_THROW(OpenOrRepairCrf(path_), StoreError);
}

// --- The close

TEST_F(RepairOfACrf, TheCloseTellsWhatWasLostAndWhereTheFileIsKept) {
    OpenCrf(path_);
    Force("UPDATE A SET Col_1='x' WHERE LineNum=9");
    host.Forget();
    EXPECT_EQ(CloseCrf(), std::nullopt);
    ASSERT_FALSE(KeptFile().empty());
    bool told = false;
    for (const auto& box : host.Boxes) told |= box.Text.find(KeptFile()) != std::string::npos;
    EXPECT_TRUE(told);
}

TEST_F(RepairOfACrf, TheCloseSaysWhenItDidNothing) {
    OpenCrf(path_);
    gDB.Close();
    fs::permissions(path_, fs::perms::owner_read);
    EXPECT_NE(CloseCrf(), std::nullopt);
    fs::permissions(path_, fs::perms::owner_all);
}

}  // namespace
}  // namespace zolmara::test
