// A Cost Report File with one bit changed, anywhere in it. Whatever opened before opens again;
// no table is lost; what is lost is told, and the damaged file is kept.
//
// A short, fixed choice of bits runs always. ZOLMARA_FLIPS=n runs n of them at each place, and
// prints the figures.

#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>

#include "store/FilledCrf.h"
#include "store/session/RepairCrf.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr std::size_t kPage = 4096;

struct Figures {
    int Tries = 0;
    int Unharmed = 0;  ///< the file is sound with the bit as it is: a figure, a letter, free room
    int Repaired = 0;  ///< nothing was lost
    int Cells = 0;     ///< tries that lost cells alone
    int Rows = 0;      ///< tries that lost rows
    int Tables = 0;    ///< tries that lost a table
    int NotOpened = 0;
};

class OneBit : public SessionTest {
protected:
    OneBit() {
        OpenFilledCopy(path_);
        tables_ = gDB.TableNames();
        // Work tables are nobody's content; a close drops them ahead of the repair.
        std::erase_if(tables_, [](const std::string& name) {
            return name.starts_with("tbl") || name == "ImportASCII" || name.ends_with("ErrLog");
        });
        for (const auto& table : tables_) rows_ += Rows(table);
        DropCrf();
        whole_ = BytesOf(path_);
    }
    ~OneBit() override { DropCrf(); }

    static int Tries() {
        const char* tries = std::getenv("ZOLMARA_FLIPS");
        return tries ? std::atoi(tries) : 10;
    }

    /// Bytes of the file that match the condition, as SQLite lays them out.
    std::vector<std::size_t> PagesOf(const std::string& condition) {
        std::vector<std::size_t> pages;
        sqlite3* handle = nullptr;
        sqlite3_open(path_.c_str(), &handle);
        sqlite3_exec(
            handle, ("SELECT pageno FROM dbstat WHERE " + condition).c_str(),
            [](void* out, int, char** values, char**) {
                static_cast<std::vector<std::size_t>*>(out)->push_back(std::stoul(values[0]));
                return 0;
            },
            &pages, nullptr);
        sqlite3_close(handle);
        return pages;
    }

    void Try(std::size_t byte, unsigned bit, Figures& figures) {
        SCOPED_TRACE(testing::Message() << "byte " << byte << " bit " << bit);
        DropCrf();
        auto bytes = whole_;
        bytes[byte] = static_cast<char>(bytes[byte] ^ (1 << bit));
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
        ++figures.Tries;
        const auto repair = RepairCrf(path_);
        figures.Unharmed += !repair.WasDamaged;
        EXPECT_EQ(repair.KeptAs.empty(), repair.Report.empty());
        try {
            if (!OpenCrf(path_)) throw StoreError(StoreError::Kind::Other, "refused");
        } catch (const StoreError& error) {
            ++figures.NotOpened;
            ADD_FAILURE() << error.what();
            return;
        }
        Count(repair, figures);
        if (!repair.KeptAs.empty()) std::filesystem::remove(repair.KeptAs);
    }

    void Count(const CrfRepair& repair, Figures& figures) {
        int rows = 0;
        bool table = false;
        for (const auto& name : tables_) {
            const bool there = gDB.HasTable(name);
            table |= !there;
            rows += there ? Rows(name) : 0;
        }
        EXPECT_FALSE(table);
        figures.Tables += table;
        figures.Rows += rows < rows_;
        if (rows < rows_) {
            EXPECT_FALSE(repair.Report.empty());
        }
        const bool cells = RepairText("", repair).find("is empty now") != std::string::npos;
        figures.Cells += rows == rows_ && cells;
        figures.Repaired += repair.WasDamaged && rows == rows_ && !cells;
    }

    Figures Run(const std::string& place, const std::vector<std::size_t>& pages) {
        Figures figures;
        std::mt19937 random(287);
        EXPECT_FALSE(pages.empty());
        for (int i = 0; i < Tries(); ++i) {
            const auto page = pages[random() % pages.size()];
            Try((page - 1) * kPage + random() % kPage, static_cast<unsigned>(random() % 8),
                figures);
        }
        if (std::getenv("ZOLMARA_FLIPS"))
            std::cout << place << ": " << figures.Tries << " tries, " << figures.Unharmed
                      << " sound as they are, " << figures.Repaired << " repaired whole, "
                      << figures.Cells << " lost cells, " << figures.Rows << " lost rows, "
                      << figures.Tables << " lost a table, " << figures.NotOpened
                      << " did not open\n";
        return figures;
    }

    std::string path_ = folder.File("Office.CRF");
    std::string whole_;
    std::vector<std::string> tables_;
    int rows_ = 0;
};

TEST_F(OneBit, AnywhereInTheFileLosesNoTable) { Run("anywhere", PagesOf("1")); }

TEST_F(OneBit, InTheListOfTablesLosesNoTable) {
    Run("list of tables", PagesOf("name='sqlite_schema'"));
}

TEST_F(OneBit, InARowOfFiguresLosesAtMostThatRow) {
    const auto figures = Run("worksheet A", PagesOf("name='A'"));
    EXPECT_EQ(figures.Tables, 0);
}

/// Every bit of the row of Master that holds the identity, and of what says where it lies.
TEST_F(OneBit, InTheRowOfMasterNeverShutsTheFile) {
    const auto page = PagesOf("name='Master'");
    ASSERT_EQ(page.size(), 1U);
    const std::size_t start = (page[0] - 1) * kPage;
    std::vector<std::size_t> bytes;
    for (std::size_t at = 0; at < 10; ++at) bytes.push_back(start + at);
    for (std::size_t at = kPage - 110; at < kPage; ++at) bytes.push_back(start + at);
    const int step = std::getenv("ZOLMARA_FLIPS") ? 1 : 41;
    Figures figures;
    for (std::size_t i = 0; i < bytes.size() * 8; i += static_cast<std::size_t>(step))
        Try(bytes[i / 8], static_cast<unsigned>(i % 8), figures);
    if (std::getenv("ZOLMARA_FLIPS"))
        std::cout << "row of Master: " << figures.Tries << " tries, " << figures.Unharmed
                  << " sound as they are, " << figures.Repaired << " repaired whole, "
                  << figures.Cells << " lost cells, " << figures.Rows << " lost rows, "
                  << figures.NotOpened << " did not open\n";
}

}  // namespace
}  // namespace zolmara::test
