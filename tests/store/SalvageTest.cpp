#include "SalvageSupport.h"
#include "store/salvage/Salvage.h"

namespace zolmara {
namespace {

using namespace salvagetest;

class SalvageTest : public SalvageFixture {
protected:
    /// Tables of the same shape: LineNum, CCName and `columns` figures, 60 rows each.
    void MakeWorksheets(const std::vector<std::pair<std::string, int>>& tables, bool index,
                        std::size_t rows = 60) {
        Change([&](Sqlite& db) {
            db.Run("BEGIN");
            for (const auto& [name, columns] : tables) {
                AddWorksheet(db, name, columns, index);
                FillWorksheet(db, name, columns, rows, static_cast<unsigned>(name[0]));
            }
            db.Run("COMMIT");
        });
    }
    std::string LossesWithout(const std::vector<std::size_t>& pages) {
        FileBytes bytes = whole_;
        for (const std::size_t page : pages) Zero(bytes, page);
        return AllLosses(Repair(bytes));
    }
    FileBytes Replaced(const std::string& text, std::size_t at, char letter) const {
        FileBytes bytes = whole_;
        const auto found = std::search(bytes.begin(), bytes.end(), text.begin(), text.end());
        EXPECT_NE(bytes.end(), found);
        *(found + static_cast<std::ptrdiff_t>(at)) = letter;
        return bytes;
    }
};

// ---------------------------------------------------------------- whole files

TEST_F(SalvageTest, FileWithNothingWrongComesOutWholeAndWithoutLosses) {
    Make();
    const SalvageResult result = Repair(whole_);
    EXPECT_EQ("", AllLosses(result));
    EXPECT_EQ(before_, after_);
    EXPECT_EQ(SchemaOf(In("whole.CRF")), SchemaOf(In("new.CRF")));
    Sqlite db(In("new.CRF"));
    EXPECT_EQ("1515015250", db.Text("PRAGMA application_id"));
    EXPECT_EQ("1", db.Text("PRAGMA user_version"));
    EXPECT_EQ("4096", db.Text("PRAGMA page_size"));
    EXPECT_EQ("delete", db.Text("PRAGMA journal_mode"));
}

TEST_F(SalvageTest, LargeStatementWithSixtyTablesComesOutWhole) {
    Make({.Small = 55, .WideColumns = 200, .WideRows = 1700});
    EXPECT_EQ("", AllLosses(Repair(whole_)));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, RowsWrittenBeforeAColumnWasAddedKeepTheirWidth) {
    Make();
    Change([](Sqlite& db) {
        db.Run("ALTER TABLE Bp1 ADD COLUMN CC_401 DOUBLE");
        db.Run("UPDATE Bp1 SET CC_401=7.5 WHERE LineNum=3");
        db.Run("ALTER TABLE S1p1 ADD COLUMN CC_401 DOUBLE DEFAULT 2");
    });
    EXPECT_EQ("", AllLosses(Repair(whole_)));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, DeletedRowsAndDroppedTablesStayAway) {
    Make();
    Change([](Sqlite& db) {
        db.Run("PRAGMA secure_delete=OFF");
        db.Run("DELETE FROM Bp1 WHERE LineNum BETWEEN 3 AND 12");
        db.Run("DROP TABLE S3p1");
        db.Run("DELETE FROM Log WHERE rowid>6");
    });
    EXPECT_EQ("", AllLosses(Repair(whole_)));
    EXPECT_EQ(before_, after_);
}

// ---------------------------------------------------------------- sentences

TEST_F(SalvageTest, LossTellsTheLinesWhenTheIndexKnowsThem) {
    Make();
    const std::size_t page = PagesOf("Bp1", "leaf")[0];
    const std::size_t cells = uses_.at(page).Cells;
    EXPECT_EQ(
        fmt::format("Worksheet table Bp1: {} rows from line 1 to line {} could not be read.\n",
                    cells, LineOf(cells)),
        LossesWithout({page}));
}

TEST_F(SalvageTest, LossWithoutIndexTellsTheLinesBeforeAndBehind) {
    MakeWorksheets({{"Bp1", 40}}, false);
    const std::string losses = LossesWithout({PagesOf("Bp1", "leaf")[2]});
    const auto lost = LostRows("Bp1");
    ASSERT_FALSE(lost.empty());
    EXPECT_EQ(fmt::format("Worksheet table Bp1: about {} rows between line {} and line {} could "
                          "not be read.\n",
                          lost.size(), LineOf(lost.front() - 1), LineOf(lost.back() + 1)),
              losses);
}

TEST_F(SalvageTest, TwoNeighbouringPagesAreOneLoss) {
    MakeWorksheets({{"Bp1", 40}}, false);
    const auto leaves = PagesOf("Bp1", "leaf");
    const std::string losses = LossesWithout({leaves[1], leaves[2]});
    const auto lost = LostRows("Bp1");
    EXPECT_EQ(uses_.at(leaves[1]).Cells + uses_.at(leaves[2]).Cells, lost.size());
    EXPECT_EQ(fmt::format("Worksheet table Bp1: about {} rows between line {} and line {} could "
                          "not be read.\n",
                          lost.size(), LineOf(lost.front() - 1), LineOf(lost.back() + 1)),
              losses);
}

TEST_F(SalvageTest, LastPageLostHasNoKnownEnd) {
    MakeWorksheets({{"Bp1", 40}}, false);
    const std::string losses = LossesWithout({PagesOf("Bp1", "leaf").back()});
    EXPECT_EQ(fmt::format("Worksheet table Bp1: rows after line {}, if there were any, could not "
                          "be read.\n",
                          LineOf(LostRows("Bp1").front() - 1)),
              losses);
}

TEST_F(SalvageTest, OnlyPageLost) {
    MakeWorksheets({{"Bp1", 3}}, false, 5);
    EXPECT_EQ("Worksheet table Bp1: none of its rows could be read.\n",
              LossesWithout({PagesOf("Bp1", "leaf")[0]}));
    EXPECT_TRUE(after_.contains("Bp1"));
}

TEST_F(SalvageTest, OneCellBrokenLosesOneRow) {
    MakeWorksheets({{"Bp1", 40}}, false);
    FileBytes bytes = whole_;
    // The third cell's pointer, behind the page's head of 8 bytes, leads out of the page.
    const std::size_t pointer = (PagesOf("Bp1", "leaf")[1] - 1) * kPage + 8 + 2 * 2;
    bytes[pointer] = '\x7F';
    const std::string losses = AllLosses(Repair(bytes));
    const auto lost = LostRows("Bp1");
    ASSERT_EQ(1U, lost.size()) << losses;
    EXPECT_EQ(fmt::format("Worksheet table Bp1: 1 row between line {} and line {} could not be "
                          "read.\n",
                          LineOf(lost[0] - 1), LineOf(lost[0] + 1)),
              losses);
}

TEST_F(SalvageTest, TableWithoutLinesCountsRows) {
    Make();
    const std::string losses = LossesWithout({PagesOf("Log", "overflow")[0]});
    const auto lost = LostRows("Log");
    ASSERT_EQ(1U, lost.size());
    EXPECT_EQ(fmt::format("Table Log: 1 row between row {} and row {} could not be read.\n",
                          lost[0] - 1, lost[0] + 1),
              losses);
}

TEST_F(SalvageTest, DefinitionLostIsNamed) {
    Make();
    const auto result = Repair(Replaced("CREATE TABLE \"S4p1\"", 0, 'x'));
    EXPECT_EQ(fmt::format("Table definition lost: S4p1; its {} rows cannot be put back.\n",
                          before_["S4p1"].size()),
              AllLosses(result));
    before_.erase("S4p1");
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, DefinitionWhoseTextGoesOnOnALostPageIsNamed) {
    MakeWorksheets({{"A", 3}, {"Bp1", 100}, {"Cp1", 3}}, true);
    EXPECT_EQ("Table definition lost: Bp1; its 60 rows cannot be put back.\n",
              LossesWithout({PagesOf("sqlite_schema", "overflow")[0]}));
    before_.erase("Bp1");
    EXPECT_EQ(before_, after_);
}

// ---------------------------------------------------------------- loose pages

TEST_F(SalvageTest, RootLostBringsBackAllRows) {
    MakeWorksheets({{"Bp1", 40}}, true);
    EXPECT_EQ("", LossesWithout({PagesOf("Bp1", "internal")[0]}));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, RootLostWithoutIndexLeavesTheEndUnknown) {
    MakeWorksheets({{"Bp1", 40}}, false);
    EXPECT_EQ(fmt::format("Worksheet table Bp1: rows after line {}, if there were any, could not "
                          "be read.\n",
                          LineOf(60)),
              LossesWithout({PagesOf("Bp1", "internal")[0]}));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, RowsThatCouldBeOfTwoTablesAreReportedAndLeftOut) {
    MakeWorksheets({{"Bp1", 40}, {"Cp1", 40}}, false);
    EXPECT_EQ(
        "Worksheet table Bp1: none of its rows could be read.\n"
        "Worksheet table Cp1: none of its rows could be read.\n"
        "120 rows of 42 fields were found on loose pages, but cannot be told to belong to "
        "one table (they may belong to Bp1 or Cp1); they were left out.\n",
        LossesWithout({PagesOf("Bp1", "internal")[0], PagesOf("Cp1", "internal")[0]}));
    EXPECT_EQ(0U, CountRows(after_));
}

TEST_F(SalvageTest, ColumnCountsTellLooseRowsApart) {
    MakeWorksheets({{"Bp1", 40}, {"Cp1", 41}}, true);
    EXPECT_EQ("", LossesWithout({PagesOf("Bp1", "internal")[0], PagesOf("Cp1", "internal")[0]}));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, IndexesTellLooseRowsApart) {
    MakeWorksheets({{"Bp1", 40}, {"Cp1", 40}}, true);
    Change([](Sqlite& db) { db.Run("UPDATE Cp1 SET LineNum=LineNum+100"); });
    EXPECT_EQ("", LossesWithout({PagesOf("Bp1", "internal")[0], PagesOf("Cp1", "internal")[0]}));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageTest, RootNumberOfAnotherTableTakesNoneOfItsRows) {
    MakeWorksheets({{"Bp1", 40}, {"Cp1", 40}}, false);
    Change([](Sqlite& db) {
        db.Run("PRAGMA writable_schema=ON");
        db.Run(
            "UPDATE sqlite_schema SET rootpage=(SELECT rootpage FROM sqlite_schema WHERE "
            "name='Cp1') WHERE name='Bp1'");
    });
    const std::string losses = AllLosses(Repair(whole_));
    EXPECT_EQ(0U, CountRows(after_)) << losses;
    EXPECT_NE(std::string::npos, losses.find("they may belong to Bp1 or Cp1")) << losses;
}

// ---------------------------------------------------------------- rows that are refused

TEST_F(SalvageTest, TextOverItsFieldsSizeIsEmptiedAndReported) {
    Make();
    Change([](Sqlite& db) {
        db.Run("PRAGMA ignore_check_constraints=ON");
        db.Run("UPDATE S2p1 SET CCName=printf('%.50c','x') WHERE LineNum=2");
    });
    EXPECT_EQ("Worksheet table S2p1: line 2: CCName could not be read and is empty now.\n",
              AllLosses(Repair(whole_)));
    EXPECT_EQ(0U, LostRows("S2p1").size());
}

TEST_F(SalvageTest, LaterRowOfOneKeyIsDroppedSoThatTheIndexStands) {
    MakeWorksheets({{"A", 3}}, false, 20);
    Change([](Sqlite& db) {
        db.Run("CREATE INDEX A_LineNum ON A (LineNum)");
        db.Run("UPDATE A SET LineNum=1.02 WHERE rowid=9");
        db.Run("PRAGMA writable_schema=ON");
        db.Run(
            "UPDATE sqlite_schema SET sql='CREATE UNIQUE INDEX A_LineNum ON A (LineNum)' "
            "WHERE name='A_LineNum'");
    });
    EXPECT_EQ("Worksheet table A: line 1.02: left out, its key stands twice.\n",
              AllLosses(Repair(whole_)));
    EXPECT_EQ(std::vector<std::size_t>{9}, LostRows("A"));
    EXPECT_EQ("1", Sqlite(In("new.CRF")).Text("SELECT \"unique\" FROM pragma_index_list('A')"));
}

TEST_F(SalvageTest, LetterThatCannotBeReadBecomesAQuestionMark) {
    Make();
    const auto result = Repair(Replaced("Cost center 4 of S2p1", 1, '\xFF'));
    EXPECT_EQ(
        "Worksheet table S2p1: line 1.03: kept, with \"?\" for letters that could not be "
        "read.\n",
        AllLosses(result));
    EXPECT_EQ("C?st center 4 of S2p1",
              Sqlite(In("new.CRF")).Text("SELECT CCName FROM S2p1 WHERE rowid=4"));
}

// ---------------------------------------------------------------- what is no CRF

TEST_F(SalvageTest, TextFileIsNotADatabase) {
    const std::string text = "Dear accountant,\nthis is a letter.\n";
    FileBytes bytes;
    for (int i = 0; i < 1000; ++i) bytes.insert(bytes.end(), text.begin(), text.end());
    EXPECT_EQ(StoreError::Kind::NotADatabase, RepairFails(bytes));
    EXPECT_FALSE(fs::exists(In("new.CRF")));
}

TEST_F(SalvageTest, EmptyFileIsNotADatabase) {
    EXPECT_EQ(StoreError::Kind::NotADatabase, RepairFails({}));
}

TEST_F(SalvageTest, OneByteIsNotADatabase) {
    EXPECT_EQ(StoreError::Kind::NotADatabase, RepairFails({'S'}));
}

TEST_F(SalvageTest, DatabaseWithoutTablesIsNotADatabase) {
    Change([](Sqlite& db) { db.Run("PRAGMA user_version=1"); });
    EXPECT_EQ(StoreError::Kind::NotADatabase, RepairFails(whole_));
}

TEST_F(SalvageTest, FileThatIsNotThereOrAFolderCannotBeOpened) {
    EXPECT_EQ(StoreError::Kind::CannotOpen, FailureOf(In("none.CRF"), In("new.CRF")));
    EXPECT_EQ(StoreError::Kind::CannotOpen, FailureOf(folder_, In("new.CRF")));
}

TEST_F(SalvageTest, TargetThatIsThereIsNotTouched) {
    Make();
    const FileBytes old{'o', 'l', 'd'};
    WriteFile(In("new.CRF"), old);
    EXPECT_EQ(StoreError::Kind::CannotOpen, FailureOf(In("whole.CRF"), In("new.CRF")));
    EXPECT_EQ(old, ReadFile(In("new.CRF")));
}

TEST_F(SalvageTest, SourceIsNotChanged) {
    Make();
    FileBytes bytes = whole_;
    Zero(bytes, 5);
    Repair(bytes);
    EXPECT_EQ(bytes, ReadFile(In("damaged.CRF")));
}

TEST_F(SalvageTest, ConnectionOfTheNewFileCanBePrepared) {
    Make();
    int calls = 0;
    SalvageDatabase(In("whole.CRF"), In("new.CRF"), [&](sqlite3* handle) {
        ++calls;
        EXPECT_NE(nullptr, handle);
    });
    EXPECT_EQ(1, calls);
}

}  // namespace
}  // namespace zolmara
