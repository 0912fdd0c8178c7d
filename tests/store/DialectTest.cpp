// Statements of the dialect against a file, through Execute and OpenRecordset.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/Globals.h"
#include "store/Dao.h"

namespace zolmara {
namespace {

class Dialect : public testing::Test {
protected:
    Dialect()
        : path_(std::filesystem::temp_directory_path() /
                ("dialect" + std::to_string(getpid()) + ".CRF")),
          db_(Fresh(path_)) {
        db_.AppendTable({"A",
                         {{"LineNum", FieldType::dbCurrency},
                          {"CCName", FieldType::dbText, 40},
                          {"Col_1", FieldType::dbDouble},
                          {"Col_2", FieldType::dbDouble}},
                         {}});
        db_.Execute("CREATE UNIQUE INDEX ndxA ON A (LineNum);");
        db_.AppendTable({"A6",
                         {{"LineNum", FieldType::dbCurrency},
                          {"Col_1", FieldType::dbText, 5},
                          {"Col_4", FieldType::dbDouble},
                          {"Col_7", FieldType::dbInteger},
                          {"Stamp", FieldType::dbDate},
                          {"Note", FieldType::dbMemo}},
                         {}});
    }
    ~Dialect() override {
        db_.Close();
        std::filesystem::remove(path_);
    }
    static Database Fresh(const std::filesystem::path& path) {
        std::filesystem::remove(path);
        return DBEngine::CreateDatabase(path.string(), ";LANGID=0x0409;CP=1252;COUNTRY=0");
    }
    double Number(std::string_view sql) { return NumOr(db_.Scalar(sql), -999); }

    void FillA() {
        db_.Execute("INSERT INTO A (LineNum,CCName,Col_1) VALUES (1,'one',10);");
        db_.Execute("INSERT INTO A (LineNum,CCName,Col_1) VALUES (4,'four',40);");
        db_.Execute("INSERT INTO A (LineNum,CCName) VALUES (4.01,'sub');");
        db_.Execute("INSERT INTO A (LineNum,CCName,Col_1) VALUES (8,'eight',-40);");
    }

    std::filesystem::path path_;
    Database db_;
};

TEST_F(Dialect, HavingWithoutGroupsFiltersTheRowsAheadOfTheAggregate) {
    FillA();
    EXPECT_EQ(Number("SELECT Max(LineNum) AS MaxOfLn From A HAVING Fix([LineNum])=[LineNum] And "
                     "LineNum<8;"),
              4);
}

TEST_F(Dialect, TopTakesTheLowestLineAmongEqualRows) {
    FillA();
    EXPECT_EQ(Number("Select Top 1 * From A Where LineNum<51 Order By abs(Col_1) Desc;"), 4);
}

TEST_F(Dialect, ADoubleFindsTheLineItMeansAtFourDecimals) {
    FillA();
    db_.Execute("INSERT INTO A (LineNum,CCName) VALUES (4.03,'x');");
    db_.Execute("INSERT INTO A6 (LineNum,Col_4) VALUES (1,?);", {4.02});
    db_.Execute("Update A6 Set Col_4=Col_4+.01 Where Col_4=4.02;");
    EXPECT_EQ(StrOr(db_.Scalar("SELECT CCName FROM A6 INNER JOIN A ON A6.Col_4 = A.LineNum")), "x");
    EXPECT_EQ(db_.Execute("UPDATE A SET Col_1=5 WHERE LineNum=?;", {4.02 + .01}), 1);
}

TEST_F(Dialect, LiftAndFallKeepLinesExact) {
    FillA();
    db_.Execute("UPDATE A SET LineNum = LineNum+10000.01 WHERE (LineNum>=4.01 And LineNum<5);");
    db_.Execute("UPDATE A SET LineNum = LineNum-10000 WHERE (LineNum>=10000);");
    const auto rows = db_.OpenRecordset("SELECT * FROM A WHERE LineNum = 4.02");
    ASSERT_FALSE(rows.Eof());
    EXPECT_EQ(rows["LineNum"].AsCurrency(), Currency(4.02));
    EXPECT_EQ(rows["CCName"], Variant("sub"));
}

TEST_F(Dialect, NullNeverMatchesInAList) {
    FillA();
    db_.Execute("UPDATE A SET Col_2=0 WHERE LineNum=1;");
    EXPECT_EQ(db_.Execute("UPDATE A SET Col_1=7 WHERE Col_2 In(0,Null);"), 1);
    EXPECT_EQ(db_.Execute("UPDATE A SET Col_1=7 WHERE Col_2 = Null;"), 0);
}

TEST_F(Dialect, AWrittenValueIsLookedUpAmongOthers) {
    FillA();
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE 5 In(1,4,8);"), 0);
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE 4 In(LineNum,99);"), 1);
}

TEST_F(Dialect, ListsAndRangesCompareEachFieldInItsOwnWay) {
    FillA();
    db_.Execute("INSERT INTO A (LineNum,Col_1) VALUES (4.03,4.02);");
    db_.Execute("UPDATE A SET Col_1=Col_1+.01 WHERE LineNum=4.03;");
    EXPECT_EQ(Number("SELECT LineNum FROM A WHERE Col_1 In(Col_2,LineNum);"), 4.03);
    EXPECT_EQ(Number("SELECT LineNum FROM A WHERE Col_1 Between LineNum And Col_1 And LineNum<5 "
                     "And LineNum>4.01;"),
              4.03);
}

TEST_F(Dialect, AChoiceBetweenALineAndAnAmountKeepsTheAmountsDecimals) {
    FillA();
    EXPECT_EQ(Number("SELECT IIf(LineNum=4,Col_1/3,LineNum) AS V FROM A WHERE LineNum=4"),
              40.0 / 3);
    EXPECT_EQ(Number("SELECT IIf(LineNum=1,LineNum,Col_1/3) AS V FROM A WHERE LineNum=4"),
              40.0 / 3);
}

TEST_F(Dialect, AnUpdateOverAJoinTakesTheOtherTablesField) {
    FillA();
    db_.Execute("INSERT INTO A6 (LineNum,Col_4) VALUES (1,4.01);");
    db_.Execute("INSERT INTO A6 (LineNum,Col_4) VALUES (2,77);");
    db_.Execute("UPDATE A6 INNER JOIN A ON A6.Col_4 = A.LineNum SET A6.Col_1 = [CCName];");
    EXPECT_EQ(db_.Scalar("SELECT Col_1 FROM A6 WHERE LineNum=1"), Variant("sub"));
    EXPECT_TRUE(db_.Scalar("SELECT Col_1 FROM A6 WHERE LineNum=2").IsNull());
}

TEST_F(Dialect, InsertFromAQueryFindsItsFieldsByName) {
    FillA();
    db_.Execute("INSERT INTO A6 SELECT LineNum, CCName As Note, Col_1 As Col_4 FROM A;");
    EXPECT_EQ(Number("SELECT Col_4 FROM A6 WHERE LineNum=8"), -40);
    EXPECT_EQ(db_.Scalar("SELECT Note FROM A6 WHERE LineNum=8"), Variant("eight"));
}

TEST_F(Dialect, SelectIntoKeepsTheDeclaredTypesAndRefusesTwoColumnsOfOneName) {
    FillA();
    db_.Execute("SELECT LineNum, CCName, Col_1 as CC_100 INTO tblTemp FROM A;");
    const auto& table = db_.Table("TBLTEMP");
    EXPECT_EQ(table.Fields[0].Type, FieldType::dbCurrency);
    EXPECT_EQ(table.Fields[1].Size, 40);
    EXPECT_EQ(table.Fields[2].Name, "CC_100");
    EXPECT_EQ(Number("SELECT Count(*) FROM tblTemp"), 4);
    EXPECT_THROW(db_.Execute("SELECT Col_1, Col_2 as Col_1 INTO tblTwo FROM A;"), StoreError);
    EXPECT_FALSE(db_.HasTable("tblTwo"));
}

TEST_F(Dialect, TextIsComparedWithoutRegardToCaseAlsoBeyondAscii) {
    db_.Execute("INSERT INTO A (LineNum,CCName) VALUES (1,\"Caf\u00c9\");");
    EXPECT_EQ(Number("SELECT LineNum FROM A WHERE CCName = 'CAF\u00e9'"), 1);
    EXPECT_EQ(Number("SELECT LineNum FROM A WHERE Trim(Ucase([CCName]))=\"caf\u00e9\""), 1);
    EXPECT_EQ(db_.Scalar("SELECT UCase(CCName) FROM A"), Variant("CAF\u00c9"));
}

TEST_F(Dialect, AChangeOfCaseIsStored) {
    FillA();
    db_.Execute("UPDATE A SET CCName='ONE' WHERE LineNum=1;");
    EXPECT_EQ(db_.Scalar("SELECT CCName FROM A WHERE LineNum=1"), Variant("ONE"));
}

TEST_F(Dialect, AQuoteInAnArgumentIsALetter) {
    FillA();
    const std::string name = "O'Brien \"x\"; DELETE * FROM A;";
    db_.Execute("UPDATE A SET CCName = ? WHERE LineNum=?;", {name, Currency(4.01)});
    EXPECT_EQ(db_.Scalar("SELECT CCName FROM A WHERE LineNum=4.01"), Variant(name));
    EXPECT_EQ(Number("SELECT Count(*) FROM A"), 4);
}

TEST_F(Dialect, ADoubledQuoteInATextIsOneQuote) {
    db_.Execute("INSERT INTO A6 (LineNum,Note) VALUES (1,\"say \"\"Y\"\" or 'N'\");");
    EXPECT_EQ(db_.Scalar("SELECT Note FROM A6"), Variant("say \"Y\" or 'N'"));
}

TEST_F(Dialect, DoubleQuotedTextIsNeverAName) {
    FillA();
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE \"CCName\" = 'one'"), 0);
    EXPECT_THROW(db_.Execute("UPDATE A SET Col_1=[one]"), StoreError);
}

TEST_F(Dialect, ATextThatIsNoNumberIsRefusedAndTheRowStays) {
    FillA();
    EXPECT_THROW(db_.Execute("UPDATE A SET Col_1='abc' WHERE LineNum=1;"), StoreError);
    EXPECT_EQ(Number("SELECT Col_1 FROM A WHERE LineNum=1"), 10);
    db_.Execute("UPDATE A SET Col_1='(1,250.50)' WHERE LineNum=1;");
    EXPECT_EQ(Number("SELECT Col_1 FROM A WHERE LineNum=1"), -1250.5);
    EXPECT_THROW(db_.Execute("UPDATE A SET Col_1=CCName WHERE LineNum=4;"), StoreError);
}

TEST_F(Dialect, ATextLongerThanItsFieldIsCutByAStatement) {
    db_.Execute("INSERT INTO A6 (LineNum,Col_1) VALUES (1,'abc\u00e9\u00e9fgh');");
    EXPECT_EQ(db_.Scalar("SELECT Col_1 FROM A6"), Variant("abc\u00e9\u00e9"));
    FillA();
    db_.Execute(
        "INSERT INTO A6 (LineNum,Col_1) SELECT LineNum, CCName & 'xyz' FROM A WHERE "
        "LineNum=8;");
    EXPECT_EQ(db_.Scalar("SELECT Col_1 FROM A6 WHERE LineNum=8"), Variant("eight"));
}

TEST_F(Dialect, ANumberInATextFieldStandsInPlainDecimals) {
    db_.Execute("INSERT INTO A6 (LineNum,Col_1) VALUES (1,?);", {0.1 + 0.2});
    EXPECT_EQ(db_.Scalar("SELECT Col_1 FROM A6"), Variant("0.3"));
}

TEST_F(Dialect, ANumberInAStatementCountsAtFifteenDigits) {
    FillA();
    db_.Execute("UPDATE A SET Col_1=? WHERE LineNum=1;", {0.1 + 0.2});
    EXPECT_EQ(db_.Scalar("SELECT Col_1 FROM A WHERE LineNum=1"), Variant(0.3));
}

TEST_F(Dialect, AnErrorHasSqlitesWordsAndNoEffect) {
    FillA();
    try {
        db_.Execute("UPDATE A SET LineNum = 1;");
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("UNIQUE constraint failed"), std::string::npos);
    }
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE LineNum=1"), 1);
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE LineNum=8"), 1);
}

TEST_F(Dialect, DatesAreWrittenInStatementsBetweenSigns) {
    db_.Execute("INSERT INTO A6 (LineNum,Stamp) VALUES (1,#10/1/2022 13:05:09#);");
    EXPECT_EQ(db_.Scalar("SELECT Stamp FROM A6"), Variant(DateTime(2022, 10, 1, 13, 5, 9)));
    EXPECT_EQ(Number("SELECT Count(*) FROM A6 WHERE Stamp < #10/2/2022#"), 1);
    EXPECT_THROW(db_.Execute("UPDATE A6 SET Stamp='soon'"), StoreError);
}

TEST_F(Dialect, NamesAreCaseBlindAndBracketsHoldAnyName) {
    FillA();
    EXPECT_EQ(Number("select [linenum] from [a] where [CCNAME]='four'"), 4);
}

TEST_F(Dialect, FunctionsOfTheDialect) {
    FillA();
    const auto first = [&](const std::string& expr) {
        return Text(db_.Scalar("SELECT " + expr + " AS X FROM A WHERE LineNum=1"));
    };
    EXPECT_EQ(first("IIf(IsNull(Col_2),0,Col_2)"), "0");
    EXPECT_EQ(first("Left(CCName,2)"), "on");
    EXPECT_EQ(first("Right(CCName,2)"), "ne");
    EXPECT_EQ(first("Mid(CCName,2,1)"), "n");
    EXPECT_EQ(first("Len(Trim('  ab '))"), "2");
    EXPECT_EQ(first("Int(-2.5)"), "-3");
    EXPECT_EQ(first("Fix(-2.5)"), "-2");
    EXPECT_EQ(first("Abs(-2.5)"), "2.5");
    EXPECT_EQ(first("7 \\ 2 + 7 Mod 4"), "6");
    EXPECT_EQ(first("2^3/16"), "0.5");
    EXPECT_EQ(first("Format(1234.5,'#,##0')"), "1,235");
    EXPECT_EQ(first("InStr(CCName,'e')"), "3");
    EXPECT_THROW(first("Frobnicate(1)"), StoreError);
}

TEST_F(Dialect, AggregatesPassOverNulls) {
    FillA();
    EXPECT_EQ(Number("SELECT Sum(Col_1) FROM A"), 10);
    EXPECT_EQ(Number("SELECT Count(Col_1) FROM A"), 3);
    EXPECT_EQ(Number("SELECT Count(*) FROM A"), 4);
    EXPECT_TRUE(db_.Scalar("SELECT Sum(Col_2) FROM A").IsNull());
    EXPECT_EQ(db_.Scalar("SELECT First(CCName) FROM A"), Variant("one"));
    EXPECT_EQ(db_.Scalar("SELECT Last(CCName) FROM A"), Variant("eight"));
}

TEST_F(Dialect, NullInArithmeticAndComparisonGivesNull) {
    FillA();
    EXPECT_TRUE(db_.Scalar("SELECT Col_1+Col_2 FROM A WHERE LineNum=1").IsNull());
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE Col_2 <> 5"), 0);
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE Col_1 Is Null"), 1);
}

TEST_F(Dialect, AndBindsBeforeOr) {
    FillA();
    EXPECT_EQ(Number("SELECT Count(*) FROM A WHERE Col_1=10 Or Col_1 Is Null And LineNum < 4"), 1);
}

TEST_F(Dialect, DisallowNullHoldsFromTheIndexOn) {
    db_.Execute("INSERT INTO A6 (LineNum,Col_1) VALUES (1,'x');");
    db_.Execute("CREATE UNIQUE INDEX ndxA6 ON A6 (Col_1) WITH DISALLOW NULL;");
    EXPECT_THROW(db_.Execute("INSERT INTO A6 (LineNum) VALUES (2);"), StoreError);
    EXPECT_EQ(Number("SELECT Count(*) FROM A6"), 1);
    EXPECT_EQ(db_.Table("A6").Indexes.size(), 1u);
}

TEST_F(Dialect, SyntaxErrorsNameTheStatement) {
    for (const std::string bad :
         {"", "SELEC * FROM A", "SELECT * FROM", "UPDATE A SET", "DELETE A", "SELECT 'open FROM A",
          "SELECT [x FROM A", "INSERT INTO A VALUES (1)", "SELECT * FROM A WHERE ((((",
          "SELECT * FROM A ORDER", "x", "SELECT #2022 FROM A"}) {
        try {
            db_.Execute(bad);
            ADD_FAILURE() << bad;
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), StoreError::Kind::Other) << bad;
        }
    }
    EXPECT_THROW(db_.Execute("SELECT * INTO T FROM A WHERE " + std::string(5000, '(')), StoreError);
}

TEST_F(Dialect, TablesAndFieldsThatAreNotThereAreNamed) {
    const auto wordsOf = [&](const std::string& sql) -> std::string {
        try {
            db_.OpenRecordset(sql);
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), StoreError::Kind::NoSuchItem);
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(wordsOf("SELECT * FROM Nowhere"), "no such table: Nowhere");
    EXPECT_EQ(wordsOf("SELECT Col_9 FROM A"), "no such column: Col_9");
}

}  // namespace
}  // namespace zolmara
