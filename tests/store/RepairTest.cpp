// A damaged Cost Report File, from the damage to the repaired file.

#include <sqlite3.h>

#include <fstream>
#include <map>

#include "calc/Calc_All.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr std::streamoff kPage = 4096;

class Repair : public TestCrf {
protected:
    void Overwrite(std::streamoff page, char with) {
        DropCrf();
        std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(page * kPage);
        file << std::string(kPage, with);
    }
    std::streamoff Pages() const {
        return static_cast<std::streamoff>(std::filesystem::file_size(path_)) / kPage;
    }
    double CountOf(Database& db, const std::string& table) {
        return NumOr(db.Scalar("SELECT Count(*) FROM " + table));
    }

    const std::string path_ = gCRFPath;
};

TEST_F(Repair, AWholeFileIsLeftAsItIs) {
    DropCrf();
    const auto report = DBEngine::RepairDatabase(path_);
    EXPECT_FALSE(report.WasDamaged);
    EXPECT_TRUE(report.Losses.empty());
}

TEST_F(Repair, EveryOverwrittenPageGivesAWholeFileAndAReportOfWhatIsGone) {
    gDB.Execute("UPDATE G SET Col_1=1234 WHERE LineNum=1;");
    const auto tables = gDB.TableNames();
    std::map<std::string, double> before;
    for (const auto& table : tables) before[table] = CountOf(gDB, table);
    const auto pages = Pages();
    DropCrf();
    std::filesystem::copy_file(path_, path_ + ".whole");
    for (std::streamoff page = 0; page < pages; page += 7) {
        std::filesystem::copy_file(path_ + ".whole", path_,
                                   std::filesystem::copy_options::overwrite_existing);
        Overwrite(page, '\xA5');
        const auto report = DBEngine::RepairDatabase(path_);
        EXPECT_TRUE(report.WasDamaged) << page;
        EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged) << page;
        auto db = DBEngine::OpenDatabase(path_);
        double lost = 0;
        for (const auto& table : tables)
            if (db.HasTable(table))
                lost += before[table] - CountOf(db, table);
            else
                lost += before[table] + 1;
        EXPECT_TRUE(lost == 0 || !report.Losses.empty()) << page << ": " << lost << " rows";
    }
}

TEST_F(Repair, ATruncatedTailIsBroughtBackAsFarAsItGoes) {
    const auto pages = Pages();
    DropCrf();
    std::filesystem::resize_file(path_, static_cast<std::uintmax_t>((pages - 10) * kPage - 100));
    const auto report = DBEngine::RepairDatabase(path_);
    EXPECT_TRUE(report.WasDamaged);
    EXPECT_FALSE(report.Losses.empty());
    auto db = DBEngine::OpenDatabase(path_);
    EXPECT_EQ(CountOf(db, "Master"), 1);
    EXPECT_EQ(CountOf(db, "CostCenters"), 26);
}

TEST_F(Repair, ATableWhosePageWasEmptiedIsReportedAndNotPassedOver) {
    // The page of A's rows becomes an empty leaf: the file can be walked, the figures are gone.
    DropCrf();
    std::streamoff root = 0;
    {
        sqlite3* handle = nullptr;
        sqlite3_open(path_.c_str(), &handle);
        sqlite3_stmt* select = nullptr;
        sqlite3_prepare_v2(handle, "SELECT rootpage FROM sqlite_schema WHERE name='A'", -1, &select,
                           nullptr);
        sqlite3_step(select);
        root = sqlite3_column_int64(select, 0) - 1;
        sqlite3_finalize(select);
        sqlite3_close(handle);
    }
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(root * kPage);
    file.write("\x0D\x00\x00\x00\x00\x10\x00\x00", 8);
    file.close();
    const auto report = DBEngine::RepairDatabase(path_);
    EXPECT_TRUE(report.WasDamaged);
    EXPECT_FALSE(report.Losses.empty());
}

TEST_F(Repair, AFileThatIsNoCostReportFileIsNotMadeIntoOne) {
    DropCrf();
    std::ofstream(path_, std::ios::trunc) << std::string(50000, 'x');
    EXPECT_THROW(DBEngine::RepairDatabase(path_), StoreError);
    EXPECT_EQ(std::filesystem::file_size(path_), 50000u);
}

}  // namespace
}  // namespace zolmara::test
