// A surgery that two threads share leaves what one thread leaves, to the last bit.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "import/ImportASCII.h"
#include "store/DatabaseImpl.h"
#include "store/FilledCrf.h"
#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"
#include "structure/AddDeleteCC.h"
#include "structure/CostCenterColumns.h"
#include "structure/SecondThread.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

using Makes = SecondThread::Makes;

std::string Read(const std::string& sql) {
    SqliteStatement select(gDB.impl().Handle, sql);
    std::string text;
    while (select.Step())
        for (int i = 0; i < sqlite3_column_count(select.get()); ++i) text += select.Text(i) + "|";
    return text + "\n";
}

/// The tables in the order of the file, their definitions and indexes, and every cell of every row
/// as it is stored.
std::string Stored() {
    std::string text =
        Read("SELECT name,sql FROM sqlite_schema WHERE type='table' ORDER BY rowid") +
        Read("SELECT name,sql FROM sqlite_schema WHERE type='index' ORDER BY name");
    for (const auto& table : gDB.TableNames()) {
        if (table == "Log") continue;
        std::string cells = "rowid";
        for (const auto& field : gDB.Table(table).Fields) {
            const auto name = Quoted(field.Name);
            cells.append(",typeof(").append(name).append("),quote(").append(name).append(")");
        }
        text += table + ": " + Read("SELECT " + cells + " FROM " + Quoted(table));
    }
    return text + Read("PRAGMA integrity_check");
}

class TwoThreads : public SessionTest {
protected:
    void ExpectTheSame(const std::function<void()>& act) {
        const std::string one = After(act, Makes::None);
        EXPECT_EQ(After(act, Makes::All), one);
        EXPECT_EQ(After(act, Makes::Some), one);
    }

private:
    std::string After(const std::function<void()>& act, Makes makes) {
        const std::string path = folder.File("Work.CRF");
        std::filesystem::remove(path);
        OpenFilledCopy(path);
        const std::string before = Stored();
        const SecondThread second(makes);
        act();
        EXPECT_EQ(second.Starts(), makes == Makes::None ? 0 : 1);
        std::string after = Stored();
        EXPECT_NE(after, before);
        EXPECT_TRUE(after.ends_with("\nok|\n"));
        DropCrf();
        return after;
    }
};

TEST_F(TwoThreads, DeleteACostCenter) {
    ExpectTheSame([] { EXPECT_EQ(DeleteCostCenter(Currency(4.01)), LineResult::Done); });
}

TEST_F(TwoThreads, DeleteACostCenterWhereACopyStoodBefore) {
    ExpectTheSame([] {
        if (!gDB.HasTable("tblTemp")) gDB.Execute("SELECT LineNum INTO tblTemp FROM A;");
        DeleteCostCenter(Currency(4.01));
        EXPECT_TRUE(gDB.HasTable("tblTemp"));
    });
}

TEST_F(TwoThreads, AddACostCenter) {
    ExpectTheSame([] {
        EXPECT_TRUE(AddCostCenter(Currency(4.01)));
        EXPECT_TRUE(gDB.HasTable("tblTemp"));
    });
}

TEST_F(TwoThreads, ImportManyNewCostCenters) {
    const auto text = folder.File("Import.txt");
    std::ofstream file(text);
    for (int i = 1; i <= 40; ++i)
        file << "CostCenter\t" << 9 + i / 100.0 << "\t0\tNew " << i << "\n";
    file << "CostCenter\t29\t0\tImported\nA\t29\t1\t77\n";
    file.close();
    ExpectTheSame([&] {
        ImportAsciiFile(text);
        EXPECT_GE(gDB.Table("D1p1").FieldIndex("CC_940"), 0);
        EXPECT_GE(gDB.Table("B1p3").FieldIndex("CC_2900"), 0);
    });
}

TEST_F(TwoThreads, WhereTheSecondFailsTheCostReportFileStays) {
    OpenFilledCopy(folder.File("Work.CRF"));
    const std::string before = Stored();
    const SecondThread second(Makes::All, [] { throw std::bad_alloc(); });
    try {
        DeleteCostCenter(Currency(4.01));
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()),
                  gDB.Path() + ": its tables could not be made anew: out of memory; nothing of " +
                      "this operation was kept");
    }
    EXPECT_EQ(Stored(), before);
}

}  // namespace
}  // namespace zolmara::test
