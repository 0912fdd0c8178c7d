#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <span>
#include <stdexcept>

#include "core/Globals.h"
#include "store/Dao.h"
#include "store/RowWalk.h"

namespace zolmara {
namespace {

class Rows : public testing::Test {
protected:
    Rows()
        : path_(std::filesystem::temp_directory_path() /
                ("rows" + std::to_string(getpid()) + ".CRF")) {
        std::filesystem::remove(path_);
        db_ = DBEngine::CreateDatabase(path_.string(), "");
        db_.AppendTable({"G",
                         {{"LineNum", FieldType::dbCurrency},
                          {"Description", FieldType::dbText, 8},
                          {"Col_1", FieldType::dbDouble},
                          {"Level", FieldType::dbInteger},
                          {"Stamp", FieldType::dbDate}},
                         {}});
        db_.Execute("CREATE UNIQUE INDEX ndxG ON G (LineNum);");
        for (const int line : {3, 1, 2})
            db_.Execute("INSERT INTO G (LineNum,Col_1) VALUES (?,?);", {line, line * 10});
    }
    ~Rows() override {
        db_.Close();
        std::filesystem::remove(path_);
    }

    std::filesystem::path path_;
    Database db_;
};

TEST_F(Rows, AWalkFollowsTheOrderOfTheStatement) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum DESC");
    std::string seen;
    for (; !rows.Eof(); rows.MoveNext()) seen += Text(rows["LineNum"]) + " ";
    EXPECT_EQ(seen, "3 2 1 ");
    EXPECT_EQ(rows.RecordCount(), 3u);
    rows.MoveFirst();
    EXPECT_EQ(rows.AbsolutePosition(), 0u);
    rows.MovePrevious();
    EXPECT_TRUE(rows.Bof());
    rows.MoveLast();
    EXPECT_EQ(Text(rows[0]), "1");
}

TEST_F(Rows, ATableNameAloneOpensItAsStored) {
    auto rows = db_.OpenRecordset("G", dbOpenTable);
    EXPECT_EQ(Text(rows["LineNum"]), "3");
    EXPECT_EQ(rows.FieldCount(), 5);
    EXPECT_EQ(rows.FieldName(1), "Description");
    EXPECT_TRUE(rows.FieldExists("col_1"));
    EXPECT_FALSE(rows.FieldExists("Col_2"));
    EXPECT_EQ(rows.TypeOf(0), FieldType::dbCurrency);
}

TEST_F(Rows, ADynasetShowsWhatAStatementWroteWithoutAMove) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    EXPECT_EQ(NumOr(rows["Col_1"]), 10);
    db_.Execute("UPDATE G SET Col_1=11 WHERE LineNum=1;");
    EXPECT_EQ(NumOr(rows["Col_1"]), 11);
}

TEST_F(Rows, ARowInEditKeepsItsBuffer) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.Edit();
    db_.Execute("UPDATE G SET Col_1=11, Level=5 WHERE LineNum=1;");
    EXPECT_EQ(NumOr(rows["Col_1"]), 10);
    rows.Set("Col_1", 12);
    rows.Update();
    EXPECT_EQ(NumOr(rows["Col_1"]), 12);
    // A field that was not put into the buffer is not written back.
    EXPECT_EQ(NumOr(rows["Level"]), 5);
}

TEST_F(Rows, ASnapshotKeepsWhatItRead) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum", dbOpenSnapshot);
    db_.Execute("UPDATE G SET Col_1=11 WHERE LineNum=1;");
    EXPECT_EQ(NumOr(rows["Col_1"]), 10);
    EXPECT_THROW(rows.Edit(), StoreError);
}

TEST_F(Rows, ANewRowComesInOnRequery) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    db_.Execute("INSERT INTO G (LineNum) VALUES (1.5);");
    rows.FindFirst("LineNum=1.5");
    EXPECT_TRUE(rows.NoMatch());
    rows.Requery();
    rows.FindFirst("LineNum=1.5");
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_TRUE(rows["Col_1"].IsNull());
}

TEST_F(Rows, FindWithoutAMatchStaysWhereItStood) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.MoveNext();
    rows.FindFirst("LineNum=99");
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_EQ(Text(rows["LineNum"]), "2");
    rows.FindFirst("LineNum=?", {Currency(3.0)});
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_EQ(Text(rows["LineNum"]), "3");
}

TEST_F(Rows, FindTakesTheFirstAndLastInTheOrderOfTheRecordset) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.FindFirst("Col_1>10");
    EXPECT_EQ(Text(rows["LineNum"]), "2");
    rows.FindLast("Col_1>10");
    EXPECT_EQ(Text(rows["LineNum"]), "3");
    rows.FindFirst("IsNull(Description) Or Len(Trim(Description))=0");
    EXPECT_EQ(Text(rows["LineNum"]), "1");
}

TEST_F(Rows, FindDoesNotLeaveTheRowsOfTheStatement) {
    auto rows = db_.OpenRecordset("SELECT * FROM G WHERE LineNum<3 ORDER BY LineNum");
    rows.FindFirst("LineNum=3");
    EXPECT_TRUE(rows.NoMatch());
}

TEST_F(Rows, AddNewKeepsTheRowAndMarksTheNewOne) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.AddNew();
    rows.Set("LineNum", Currency(4.01));
    rows.Set("Description", "new");
    EXPECT_TRUE(rows["Col_1"].IsNull());
    rows.Update();
    EXPECT_EQ(Text(rows["LineNum"]), "1");
    rows.SetBookmark(rows.LastModified());
    EXPECT_EQ(rows["LineNum"], Variant(Currency(4.01)));
    EXPECT_EQ(rows.RecordCount(), 4u);
}

TEST_F(Rows, NullStaysDistinctFromZeroAndFromNoText) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    EXPECT_TRUE(rows["Description"].IsNull());
    rows.Edit();
    rows.Set("Description", "");
    rows.Set("Col_1", 0);
    rows.Update();
    EXPECT_EQ(rows["Description"], Variant(""));
    EXPECT_EQ(rows["Col_1"], Variant(0));
    rows.Edit();
    rows.Set("Col_1", nullptr);
    rows.Update();
    EXPECT_TRUE(rows["Col_1"].IsNull());
}

TEST_F(Rows, AFieldRefusesWhatItCannotHoldAndTheRowStays) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.Edit();
    EXPECT_THROW(rows.Set("Col_1", "abc"), StoreError);
    EXPECT_THROW(rows.Set("Col_1", "1e999"), StoreError);
    EXPECT_THROW(rows.Set("Col_1", "NaN"), StoreError);
    EXPECT_THROW(rows.Set("Col_1", std::numeric_limits<double>::infinity()), StoreError);
    EXPECT_THROW(rows.Set("LineNum", 1e15), StoreError);
    EXPECT_THROW(rows.Set("Level", 40000), StoreError);
    EXPECT_THROW(rows.Set("Description", "123456789"), StoreError);
    EXPECT_THROW(rows.Set("Stamp", "soon"), StoreError);
    EXPECT_THROW(rows.Set("Nowhere", 1), StoreError);
    rows.Set("Description", "\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9");
    rows.Set("Col_1", "(1,000)");
    rows.Set("LineNum", 1.00004);
    rows.Set("Level", 2.5);
    rows.Set("Stamp", "10/1/2022");
    rows.Update();
    EXPECT_EQ(NumOr(rows["Col_1"]), -1000);
    EXPECT_EQ(rows["LineNum"].AsCurrency(), Currency::FromWhole(1));
    EXPECT_EQ(rows["Level"], Variant(2));
    EXPECT_EQ(rows["Stamp"], Variant(DateTime(2022, 10, 1)));
}

TEST_F(Rows, ADuplicateKeyIsRefusedAndNothingIsLost) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.Edit();
    rows.Set("LineNum", 2);
    EXPECT_THROW(rows.Update(), StoreError);
    rows.CancelUpdate();
    EXPECT_EQ(Text(rows["LineNum"]), "1");
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Count(*) FROM G")), 3);
}

TEST_F(Rows, UpdateWithoutAChangeWritesNothing) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    const auto commits = db_.CommitCount();
    rows.Edit();
    rows.Set("Col_1", nullptr);
    rows.Set("Col_1", 10);
    rows.Update();
    EXPECT_EQ(db_.CommitCount(), commits);
}

TEST_F(Rows, DeleteTakesTheRowAndAWalkGoesOn) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.Delete();
    EXPECT_THROW(rows["Col_1"], StoreError);
    rows.MoveNext();
    EXPECT_EQ(Text(rows["LineNum"]), "2");
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Count(*) FROM G")), 2);
}

TEST_F(Rows, ReadingWhereNoRowIsSaysSo) {
    auto rows = db_.OpenRecordset("SELECT * FROM G WHERE LineNum>90");
    EXPECT_TRUE(rows.Eof());
    EXPECT_TRUE(rows.Empty());
    EXPECT_THROW(rows[0], StoreError);
    EXPECT_THROW(rows.Edit(), StoreError);
    rows.MoveNext();
    rows.MoveLast();
    EXPECT_TRUE(rows.Eof());
}

TEST_F(Rows, CloneWalksOnItsOwn) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    rows.MoveNext();
    auto copy = rows.Clone();
    copy.SetBookmark(rows.Bookmark());
    copy.MoveNext();
    EXPECT_EQ(Text(copy["LineNum"]), "3");
    EXPECT_EQ(Text(rows["LineNum"]), "2");
}

TEST_F(Rows, ARecordsetThatOutlivesItsFileSaysSo) {
    auto rows = db_.OpenRecordset("SELECT * FROM G ORDER BY LineNum");
    db_.Close();
    EXPECT_THROW(rows["Col_1"], StoreError);
    EXPECT_THROW(rows.Edit(), StoreError);
    EXPECT_THROW(db_.OpenRecordset("G"), StoreError);
}

TEST_F(Rows, AChangeOfShapeLeavesOpenRecordsetsGood) {
    auto rows = db_.OpenRecordset("SELECT LineNum, Col_1 FROM G ORDER BY LineNum");
    db_.AppendField("G", {"CC", FieldType::dbDouble});
    db_.DeleteField("G", "Level");
    db_.RenameField("G", "CC", "CC_100");
    db_.Execute("UPDATE G SET Col_1=1 WHERE LineNum=1;");
    EXPECT_EQ(NumOr(rows["Col_1"]), 1);
    EXPECT_EQ(db_.Table("G").Fields.back().Name, "CC_100");
    EXPECT_THROW(db_.DeleteField("G", "CC"), StoreError);
}

// --- Rows that are walked once -------------------------------------------------------------

TEST_F(Rows, AWalkGivesEachRowInOrderWithTheTypesOfItsFields) {
    db_.Execute("UPDATE G SET Description='two', Level=7 WHERE LineNum=2;");
    std::string seen;
    WalkRows(db_, "SELECT * FROM G ORDER BY LineNum;", [&](std::span<const Variant> row) {
        EXPECT_TRUE(row[0].IsCurrency());
        EXPECT_TRUE(row[2].IsDouble());
        seen += Text(row[0]) + ":" + Text(row[1]) + ":" + Text(row[2]) + ":" + Text(row[3]) + " ";
    });
    EXPECT_EQ(seen, "1::10: 2:two:20:7 3::30: ");
}

TEST_F(Rows, AWalkWithinAWalkOfTheSameStatementDoesNotMoveIt) {
    const std::string source = "SELECT * FROM G ORDER BY LineNum;";
    std::string seen;
    WalkRows(db_, source, [&](std::span<const Variant> row) {
        int inner = 0;
        WalkRows(db_, source, [&](std::span<const Variant>) { ++inner; });
        EXPECT_EQ(inner, 3);
        auto rows = db_.OpenRecordset(source, dbOpenSnapshot);
        EXPECT_EQ(Text(rows[0]), "1");
        seen += Text(row[0]);
    });
    EXPECT_EQ(seen, "123");
}

TEST_F(Rows, AWalkThatIsGivenUpLeavesTheTableFree) {
    EXPECT_THROW(WalkRows(db_, "SELECT * FROM G;",
                          [](std::span<const Variant>) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
    db_.DeleteTable("G");
    EXPECT_FALSE(db_.HasTable("G"));
}

TEST_F(Rows, OnlyASelectWithoutValuesIsWalked) {
    const auto never = [](std::span<const Variant>) { FAIL() << "a row"; };
    EXPECT_THROW(WalkRows(db_, "DELETE FROM G;", never), StoreError);
    EXPECT_THROW(WalkRows(db_, "SELECT * FROM G WHERE LineNum=1;", never), StoreError);
    EXPECT_THROW(WalkRows(db_, "SELECT * FROM H;", never), StoreError);
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Count(*) FROM G;")), 3);
    db_.Close();
    EXPECT_THROW(WalkRows(db_, "SELECT * FROM G;", never), StoreError);
}

}  // namespace
}  // namespace zolmara
