// A Cost Report File that a stranger made: what it holds is data, and nothing of it runs.

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "core/PlainName.h"
#include "ecr/FileNames.h"
#include "print/Report.h"
#include "store/FilledCrf.h"
#include "store/base/PlainSchema.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr std::size_t kPage = 4096;

class HostileFile : public SessionTest {
protected:
    HostileFile() {
        OpenFilledCopy(path_);
        DropCrf();
    }
    ~HostileFile() override { DropCrf(); }

    void Run(const std::string& sql) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(path_.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    /// The file is refused with words that name what is in it, and is as it was.
    void ExpectRefused(const std::string& what) const {
        const auto before = BytesOf(path_);
        try {
            DBEngine::OpenDatabase(path_);
            ADD_FAILURE() << "opened";
        } catch (const StoreError& error) {
            EXPECT_TRUE(error.IsFileError());
            EXPECT_NE(std::string(error.what()).find(what), std::string::npos) << error.what();
            EXPECT_TRUE(std::string(error.what()).starts_with(path_ + ": ")) << error.what();
        }
        EXPECT_EQ(BytesOf(path_), before);
    }

    std::string path_ = folder.File("Mailed.CRF");
};

TEST_F(HostileFile, WithATriggerIsRefused) {
    Run("CREATE TRIGGER gift AFTER UPDATE ON A BEGIN DELETE FROM A6; END;");
    ExpectRefused("is not a Cost Report File.  It holds the trigger \"gift\".");
    EXPECT_THROW(OpenCrf(path_), StoreError);
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(HostileFile, WithATriggerIsNotRepairedEither) {
    Run("CREATE TRIGGER gift AFTER UPDATE ON A BEGIN DELETE FROM A6; END;");
    const auto before = BytesOf(path_);
    EXPECT_THROW(DBEngine::RepairDatabase(path_), StoreError);
    EXPECT_EQ(BytesOf(path_), before);
}

TEST_F(HostileFile, WithAViewInPlaceOfATableIsRefused) {
    Run("DROP TABLE G1; CREATE VIEW G1 AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 "
        "FROM n) SELECT i AS LineNum, i AS Col_1, i AS Col_2 FROM n;");
    ExpectRefused("the view \"G1\"");
}

TEST_F(HostileFile, WithATableMadeByAProgramIsRefused) {
    Run("CREATE VIRTUAL TABLE tblFound USING fts5(text);");
    ExpectRefused("the table \"tblFound\"");
}

TEST_F(HostileFile, WithAComputedFieldIsRefused) {
    Run("CREATE TABLE tblSum (a DOUBLE, b DOUBLE AS (a*2));");
    ExpectRefused("the table \"tblSum\", which is no table of plain fields");
}

TEST_F(HostileFile, WithACheckOfItsOwnIsRefused) {
    Run("CREATE TABLE tblSlow (a TEXT(9) CHECK(a GLOB '*a*a*a*a*a*a*a*a*a*a*b'));");
    ExpectRefused("the table \"tblSlow\"");
}

TEST_F(HostileFile, WithAComputedDefaultIsRefused) {
    Run("CREATE TABLE tblBig (a TEXT(9) DEFAULT (hex(zeroblob(100000000))));");
    ExpectRefused("the table \"tblBig\"");
}

TEST_F(HostileFile, WithAnIndexOverAnExpressionIsRefused) {
    Run("CREATE INDEX ndxTrap ON G1 (abs(Col_2));");
    ExpectRefused("the index \"ndxTrap\", which is no index of fields");
}

TEST_F(HostileFile, WithAnIndexOverSomeRowsIsRefused) {
    Run("CREATE INDEX ndxPart ON G1 (LineNum) WHERE Col_2>0;");
    ExpectRefused("the index \"ndxPart\"");
}

TEST_F(HostileFile, WithTwoTablesOnOnePageIsRefused) {
    Run("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET rootpage=(SELECT rootpage FROM "
        "sqlite_schema WHERE name='G') WHERE name='G1';");
    ExpectRefused("the table \"G1\"");
}

TEST_F(HostileFile, WithATableUnderAnothersNameIsRefused) {
    Run("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET name='G2', tbl_name='G2' WHERE "
        "name='G1';");
    EXPECT_THROW(DBEngine::OpenDatabase(path_), StoreError);
}

TEST_F(HostileFile, WithTwoMoreFilesBesideItComesBackToOne) {
    Run("PRAGMA journal_mode=WAL; UPDATE G SET Col_1=1 WHERE LineNum=1;");
    const auto open = DBEngine::OpenDatabase(path_);
    EXPECT_FALSE(std::filesystem::exists(path_ + "-wal"));
    EXPECT_FALSE(std::filesystem::exists(path_ + "-shm"));
}

TEST_F(HostileFile, PlainForeignTablesAreNoHarm) {
    Run("CREATE TABLE tblOld (id INTEGER PRIMARY KEY, [a b] VARCHAR(20) NOT NULL DEFAULT 'x', c "
        "DECIMAL(10,2) DEFAULT -1, d UNIQUE); CREATE INDEX ndxOld ON tblOld ([a b] DESC, c);");
    EXPECT_TRUE(DBEngine::OpenDatabase(path_).HasTable("tblOld"));
}

TEST_F(HostileFile, WithTheTablesOfTheSystemAloneIsNone) {
    EXPECT_GE(DBEngine::OpenDatabase(path_).TableNames().size(), 52U);
}

TEST(PlainSchema, RefusesWhatIsMoreThanATable) {
    EXPECT_TRUE(ReadTableText("CREATE TABLE \"A\" (\"LineNum\" CURRENCY, \"b\" TEXT(3))"));
    for (const char* sql :
         {"CREATE TABLE t AS SELECT 1", "CREATE TABLE t (a) WITHOUT ROWID",
          "CREATE TABLE t (a, PRIMARY KEY(a))", "CREATE TABLE t (a CHECK(1))", "CREATE TABLE t (a",
          "CREATE TABLE t (a /* b */)", "CREATE TABLE t (a REFERENCES b)", "CREATE TABLE t ()",
          "CREATE TABLE t (a GENERATED ALWAYS AS (1))", "CREATE TABLE t (a); DROP TABLE b", ""})
        EXPECT_FALSE(ReadTableText(sql)) << sql;
}

TEST(PlainSchema, KnowsTheStoresOwnCheckHoweverItIsSpelled) {
    for (const char* sql :
         {R"(CREATE TABLE "A" ("b" DOUBLE CHECK("b" BETWEEN -1e308 AND 1e308)))",
          R"(create table A (b double check ( b between - 1E308 and 1e308 ) ))",
          R"(CREATE TABLE [A] (`b` TEXT(3) NOT NULL COLLATE NOCASE CHECK(length([b])<=3), c))",
          R"(CREATE TABLE "A" ("b""c" CURRENCY CHECK("b""c" BETWEEN -9e14 AND 9e14)))"})
        EXPECT_TRUE(ReadTableText(sql)) << sql;
    const auto quoted = ReadTableText(R"(CREATE TABLE "A" ("b""c" CURRENCY, [d"e] LONGTEXT))");
    ASSERT_TRUE(quoted);
    EXPECT_EQ(quoted->Fields, (std::vector<std::string>{"b\"c", "d\"e"}));
}

TEST(PlainSchema, RefusesACheckThatIsNotTheFieldsOwn) {
    for (const char* sql :
         {R"(CREATE TABLE "A" ("b" DOUBLE CHECK("c" BETWEEN -1e308 AND 1e308)))",
          R"(CREATE TABLE "A" ("b" DOUBLE CHECK("b" BETWEEN -9e14 AND 9e14)))",
          R"(CREATE TABLE "A" ("b" TEXT(3) CHECK(length("b")<=4)))",
          R"(CREATE TABLE "A" ("b" LONGTEXT CHECK(length("b")<=4)))",
          R"(CREATE TABLE "A" ("b" DOUBLE CHECK("b" BETWEEN -1e308 AND 1e308) CHECK(1)))",
          R"(CREATE TABLE "A" ("b" DOUBLE CHECK("b" BETWEEN -1e308 AND 1e308) OR 1))",
          R"(CREATE TABLE "A" ("b" DOUBLE CHECK("b" BETWEEN -1e308 AND 1e308)",
          R"(CREATE TABLE "A" ("b)"})
        EXPECT_FALSE(ReadTableText(sql)) << sql;
}

// --- Pages that lead in circles

std::string Big(std::size_t value, int size) {
    std::string bytes;
    for (int i = size; i-- > 0;) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

/// A page of a table whose every entry leads to the same page below.
std::string PageOfManyTo(std::size_t child) {
    constexpr std::size_t kEntries = 300;
    constexpr std::size_t kEntrySize = 7;
    std::string page(kPage, '\0');
    const auto put = [&](std::size_t at, const std::string& bytes) {
        page.replace(at, bytes.size(), bytes);
    };
    put(0, "\x05");
    put(3, Big(kEntries, 2));
    put(5, Big(kPage - kEntries * kEntrySize, 2));
    put(8, Big(child, 4));
    for (std::size_t i = 0; i < kEntries; ++i) {
        const std::size_t at = kPage - (i + 1) * kEntrySize;
        put(12 + 2 * i, Big(at, 2));
        const std::size_t key = 1000 + i;
        put(at, Big(child, 4) + static_cast<char>(0x80) + static_cast<char>(0x80 | key >> 7) +
                    static_cast<char>(key & 0x7F));
    }
    return page;
}

TEST_F(HostileFile, WhoseRowsDoNotComeToAnEndIsNotReadForEver) {
    auto bytes = BytesOf(path_);
    std::size_t root = 0;
    {
        sqlite3* handle = nullptr;
        sqlite3_open(path_.c_str(), &handle);
        sqlite3_exec(
            handle, "SELECT rootpage FROM sqlite_schema WHERE name='G1'",
            [](void* out, int, char** values, char**) {
                *static_cast<std::size_t*>(out) = std::stoul(values[0]);
                return 0;
            },
            &root, nullptr);
        sqlite3_close(handle);
    }
    const auto rows = bytes.substr((root - 1) * kPage, kPage);
    bytes += rows;
    for (int level = 0; level < 5; ++level) bytes += PageOfManyTo(bytes.size() / kPage);
    bytes.replace((root - 1) * kPage, kPage, PageOfManyTo(bytes.size() / kPage));
    bytes.replace(28, 4, Big(bytes.size() / kPage, 4));
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;

    auto db = DBEngine::OpenDatabase(path_);
    try {
        db.Scalar("SELECT Sum(Col_2) FROM G1");
        ADD_FAILURE() << "came to an end";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::Damaged);
        EXPECT_EQ(std::string(error.what()),
                  path_ + ": is damaged: its tables do not come to an end");
    }
}

// --- Names of files

TEST_F(HostileFile, DoesNotDecideWhereAFileGoes) {
    Run("UPDATE Master SET ProviderNumber='../evil';");
    ASSERT_TRUE(OpenCrf(path_));
    EXPECT_EQ(PrintFilePath(gProviderNumber + ".PRT"), gCRFDir + "/_._evil.PRT");
    gProviderNumber = "/../../x";
    EXPECT_EQ(EcrFileName().find('/'), std::string::npos) << EcrFileName();
    gFYEnd = std::string("12/..");
    gProviderNumber = "14-9012";
    EXPECT_EQ(EcrFileName().substr(0, 9), "HO149012.");
    gFYEnd = std::string("x/y");
    EXPECT_EQ(EcrFileName().find('/'), std::string::npos) << EcrFileName();
}

TEST(PlainFileNames, KeepWhatIsAName) {
    EXPECT_EQ(PlainFileName("14-9012.PRT"), "14-9012.PRT");
    EXPECT_EQ(PlainFileName("../../etc/passwd"), "_._.._etc_passwd");
    EXPECT_EQ(PlainFileName("a\\b:c\nd"), "a_b_c_d");
    EXPECT_EQ(PlainFileName(".."), "_.");
    EXPECT_EQ(PlainFileName(""), "");
}

}  // namespace
}  // namespace zolmara::test
