// What a repair brings back from files damaged in every place: single pages, tails, noise.

#include <optional>

#include "SalvageSupport.h"

namespace zolmara {
namespace {

using namespace salvagetest;

class SalvageDamageTest : public SalvageFixture {
protected:
    /// True where a page of the list of tables, below its root, is still there.
    bool ListOfTablesLeft(const std::set<std::size_t>& touched) const {
        return std::any_of(uses_.begin(), uses_.end(), [&](const auto& entry) {
            return entry.second.Table == "sqlite_schema" && entry.second.Kind == "leaf" &&
                   !touched.contains(entry.first);
        });
    }
    /// The losses; nothing where not one definition of a table could be found, which is right only
    /// when the list's pages are all hit.
    std::optional<std::string> LossesIfAnyTableIsLeft(const FileBytes& bytes,
                                                      const std::set<std::size_t>& touched) {
        try {
            return AllLosses(Repair(bytes));
        } catch (const StoreError& error) {
            EXPECT_EQ(StoreError::Kind::NotADatabase, error.kind()) << error.what();
            EXPECT_FALSE(ListOfTablesLeft(touched));
            EXPECT_FALSE(fs::exists(In("new.CRF")));
            return std::nullopt;
        }
    }
    /// Nothing that stood on the page can be believed.
    void ExpectOnePageLost(std::size_t page, const SalvageResult& result) {
        const PageUse use = uses_.contains(page) ? uses_.at(page) : PageUse{};
        SCOPED_TRACE(fmt::format("page {} {} {} {}", page, use.Table, use.Kind, use.IsIndex));
        const std::string losses = AllLosses(result);
        ExpectNoStrangeRows();
        ExpectLossesNamed(losses);
        ExpectUntouchedTables({page}, losses);
        if (!before_.contains(use.Table)) return;
        std::size_t lost = 0;
        if (!use.IsIndex && use.Kind == "leaf") lost = use.Cells;
        if (!use.IsIndex && use.Kind == "overflow") lost = 1;
        EXPECT_EQ(lost, LostRows(use.Table).size()) << losses;
    }
};

TEST_F(SalvageDamageTest, EveryPageInTurnOverwrittenByZeros) {
    Make();
    for (std::size_t page = 2; page <= PageCount(); ++page) {
        FileBytes bytes = whole_;
        Zero(bytes, page);
        ExpectOnePageLost(page, Repair(bytes));
    }
}

TEST_F(SalvageDamageTest, EveryPageInTurnOverwrittenByRandomBytes) {
    Make();
    std::mt19937 random(7);
    for (std::size_t page = 2; page <= PageCount(); ++page) {
        FileBytes bytes = whole_;
        Overwrite(bytes, page, [&] { return static_cast<char>(random()); });
        ExpectOnePageLost(page, Repair(bytes));
    }
}

TEST_F(SalvageDamageTest, EveryPageInTurnOverwrittenByAnotherPagesCopy) {
    Make();
    std::mt19937 random(11);
    for (std::size_t round = 0; round < 2 * PageCount(); ++round) {
        const std::size_t page = 2 + round % (PageCount() - 1);
        const std::size_t other = 1 + random() % PageCount();
        SCOPED_TRACE(fmt::format("copy of page {} over page {}", other, page));
        FileBytes bytes = whole_;
        const auto from = whole_.begin() + static_cast<std::ptrdiff_t>((other - 1) * kPage);
        std::copy_n(from, kPage, bytes.begin() + static_cast<std::ptrdiff_t>((page - 1) * kPage));
        // The rest of one long text in the place of another's is as good as the true one.
        const bool bothText = uses_.contains(page) && uses_.at(page).Kind == "overflow" &&
                              uses_.contains(other) && uses_.at(other).Kind == "overflow";
        if (bytes == whole_ || bothText) continue;
        ExpectOnePageLost(page, Repair(bytes));
    }
}

TEST_F(SalvageDamageTest, PagesOfALargeStatementOverwritten) {
    Make({.Small = 55, .WideColumns = 200, .WideRows = 1700});
    std::mt19937 random(13);
    for (int round = 0; round < 2; ++round) {
        FileBytes bytes = whole_;
        const std::size_t page = 2 + random() % (PageCount() - 1);
        Overwrite(bytes, page, [&] { return static_cast<char>(random()); });
        ExpectOnePageLost(page, Repair(bytes));
    }
}

TEST_F(SalvageDamageTest, FirstPageGoneLosesNoRowWhenTheListOfTablesGoesOnElsewhere) {
    Make({.Small = 55, .WideColumns = 40, .WideRows = 40});
    ASSERT_EQ("internal", uses_.at(1).Kind);
    std::mt19937 random(3);
    for (const bool zeros : {true, false}) {
        FileBytes bytes = whole_;
        Overwrite(bytes, 1, [&] { return zeros ? '\0' : static_cast<char>(random()); });
        const std::string losses = AllLosses(Repair(bytes));
        EXPECT_EQ(before_, after_) << losses;
        EXPECT_EQ("The file's list of tables could not be read to its end; 60 tables were found.\n",
                  losses);
    }
}

TEST_F(SalvageDamageTest, HeaderGoneButNotTheRestOfTheFirstPage) {
    Make();
    FileBytes bytes = whole_;
    std::fill_n(bytes.begin(), 100, '\xA5');
    EXPECT_EQ("", AllLosses(Repair(bytes)));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageDamageTest, PageSizeFieldWrong) {
    Make();
    for (const char high : {'\x02', '\x08', '\x20', '\x00'}) {
        FileBytes bytes = whole_;
        bytes[16] = high;
        EXPECT_EQ("", AllLosses(Repair(bytes)));
        EXPECT_EQ(before_, after_);
    }
}

TEST_F(SalvageDamageTest, TailCutOffAtAnyPoint) {
    Make();
    std::mt19937 random(17);
    for (int round = 0; round < 60; ++round) {
        FileBytes bytes = whole_;
        const std::size_t size = kPage + random() % (whole_.size() - kPage);
        SCOPED_TRACE(size);
        bytes.resize(size);
        std::set<std::size_t> touched;
        for (std::size_t page = size / kPage + 1; page <= PageCount(); ++page) touched.insert(page);
        const auto losses = LossesIfAnyTableIsLeft(bytes, touched);
        if (!losses) continue;
        ExpectNoStrangeRows();
        ExpectLossesNamed(*losses);
        ExpectUntouchedTables(touched, *losses);
    }
}

TEST_F(SalvageDamageTest, PagesOverwrittenAndTailCutOff) {
    Make();
    std::mt19937 random(23);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        FileBytes bytes = whole_;
        std::set<std::size_t> touched;
        for (int i = 0; i < 4; ++i) {
            const std::size_t page = 2 + random() % (PageCount() - 1);
            touched.insert(page);
            Overwrite(bytes, page, [&] { return static_cast<char>(random()); });
        }
        const std::size_t pages = PageCount() / 2 + random() % (PageCount() / 2);
        bytes.resize(pages * kPage);
        for (std::size_t page = pages + 1; page <= PageCount(); ++page) touched.insert(page);
        const auto losses = LossesIfAnyTableIsLeft(bytes, touched);
        if (!losses) continue;
        ExpectNoStrangeRows();
        ExpectUntouchedTables(touched, *losses);
    }
}

TEST_F(SalvageDamageTest, NoiseAnywhereNeverBreaksTheRepair) {
    Make({.Small = 4, .WideColumns = 30, .WideRows = 40});
    std::mt19937 random(29);
    for (int round = 0; round < 90; ++round) {
        SCOPED_TRACE(round);
        FileBytes bytes = whole_;
        std::set<std::size_t> touched;
        const unsigned long hits = 1 + random() % (round % 3 == 0 ? 2000 : 40);
        for (unsigned long i = 0; i < hits; ++i) {
            const std::size_t at = random() % bytes.size();
            bytes[at] = static_cast<char>(random());
            touched.insert(at / kPage + 1);
        }
        const auto losses = LossesIfAnyTableIsLeft(bytes, touched);
        if (losses) ExpectUntouchedTables(touched, *losses);
    }
}

// Only the first bytes of pages, where the tree's own numbers stand.
TEST_F(SalvageDamageTest, NoiseInPageHeadsPutsNoRowInAWrongPlace) {
    Make({.Small = 4, .WideColumns = 30, .WideRows = 40});
    std::mt19937 random(31);
    for (int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        FileBytes bytes = whole_;
        std::set<std::size_t> touched;
        for (int i = 0; i < 6; ++i) {
            const std::size_t page = 2 + random() % (PageCount() - 1);
            if (uses_.contains(page) && uses_.at(page).Kind == "overflow") continue;
            bytes[(page - 1) * kPage + random() % 24] = static_cast<char>(random());
            touched.insert(page);
        }
        const std::string losses = AllLosses(Repair(bytes));
        ExpectUntouchedTables(touched, losses);
        ExpectNoStrangeRows();
        ExpectLossesNamed(losses);
    }
}

// A disk writes in sectors, so that a page can be half new and half gone.
TEST_F(SalvageDamageTest, ZeroedSectorsPutNoZerosIntoRows) {
    Make({.Small = 4, .WideColumns = 30, .WideRows = 40});
    constexpr std::size_t kSector = 512;
    // Three of the eight sectors of a page, others on each.
    for (std::size_t at = kPage; at < whole_.size(); at += 3 * kSector) {
        FileBytes bytes = whole_;
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), kSector, '\0');
        const std::size_t page = at / kPage + 1;
        SCOPED_TRACE(fmt::format("page {} {} {}", page, uses_[page].Table, at % kPage));
        const std::string losses = AllLosses(Repair(bytes));
        ExpectUntouchedTables({page}, losses);
        ExpectNoStrangeRows(losses);
        ExpectLossesNamed(losses);
    }
}

TEST_F(SalvageDamageTest, InteriorPageThatLeadsToItself) {
    Make();
    const std::size_t root = PagesOf("Bp1", "internal")[0];
    FileBytes bytes = whole_;
    PutBig(bytes, (root - 1) * kPage + 8, root);
    const std::string losses = AllLosses(Repair(bytes));
    EXPECT_EQ(before_, after_) << losses;
    EXPECT_EQ("", losses);
}

TEST_F(SalvageDamageTest, OverflowChainThatLeadsToItself) {
    Make();
    const std::size_t page = PagesOf("Log", "overflow")[0];
    FileBytes bytes = whole_;
    PutBig(bytes, (page - 1) * kPage, page);
    Repair(bytes);
    ExpectNoStrangeRows();
    EXPECT_EQ(1U, LostRows("Log").size());
}

TEST_F(SalvageDamageTest, ListOfFreePagesThatLeadsInACircle) {
    Make();
    Change([](Sqlite& db) { db.Run("DROP TABLE Cp1"); });
    FileBytes bytes = whole_;
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(whole_[at]); };
    const std::size_t trunk = byte(34) * 256UL + byte(35);
    ASSERT_NE(0U, trunk);
    PutBig(bytes, (trunk - 1) * kPage, trunk);
    EXPECT_EQ("", AllLosses(Repair(bytes)));
    EXPECT_EQ(before_, after_);
}

TEST_F(SalvageDamageTest, AllBitsSetFromTheSecondPageOn) {
    Make();
    FileBytes bytes = whole_;
    std::fill(bytes.begin() + kPage, bytes.end(), '\xFF');
    try {
        const std::string losses = AllLosses(Repair(bytes));
        EXPECT_EQ(0U, CountRows(after_));
        ExpectLossesNamed(losses);
    } catch (const StoreError& error) {
        EXPECT_EQ(StoreError::Kind::NotADatabase, error.kind());
    }
}

}  // namespace
}  // namespace zolmara
