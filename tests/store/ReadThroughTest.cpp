// Going through a whole file: SQLite's cache of it does not grow with the file.

#include <gtest/gtest.h>

#include <string>

#include "core/Globals.h"
#include "store/Connection.h"
#include "store/DatabaseImpl.h"
#include "store/ReadThrough.h"
#include "store/RowWalk.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr int kMega = 1 << 20;

class ReadThroughTest : public SessionTest {
protected:
    ReadThroughTest() {
        CreateCrf(folder.File("T.CRF"), SampleFields());
        gDB.AppendTable({"T", {{"Note", FieldType::dbMemo}}, {}});
        // Four million bytes, of which the last row is looked for.
        const std::string note(40'000, 'x');
        RunBatch(gDB, [&] {
            for (int row = 0; row < 100; ++row)
                gDB.Execute("INSERT INTO T (Note) VALUES (?);", {note});
        });
        OpenAnew();
    }
    void OpenAnew() const {
        DropCrf();
        OpenCrf(folder.File("T.CRF"));
    }
    static void ReadAll() {
        std::size_t bytes = 0;
        WalkRows(gDB, "SELECT Note FROM T",
                 [&](std::span<const Variant> row) { bytes += Text(row[0]).size(); });
        EXPECT_EQ(bytes, 4'000'000U);
    }
    static int Cached() {
        int bytes = 0;
        int most = 0;
        sqlite3_db_status(gDB.impl().Handle, SQLITE_DBSTATUS_CACHE_USED, &bytes, &most, 0);
        return bytes;
    }
    static std::int64_t Limit() { return Pragma(gDB.impl().Handle, "cache_size", gCRFPath); }
};

TEST_F(ReadThroughTest, KeepsLittleOfWhatWasRead) {
    const int before = Cached();
    const std::int64_t limit = Limit();
    {
        const ReadThrough reading(gDB);
        ReadAll();
        EXPECT_LT(Cached(), before + kMega + kMega / 8);
    }
    EXPECT_EQ(Limit(), limit);
    ReadAll();
    EXPECT_GT(Cached(), 4 * kMega * 9 / 10);
}

TEST_F(ReadThroughTest, LeavesWhatWasThereBefore) {
    ReadAll();
    const int before = Cached();
    const ReadThrough reading(gDB);
    EXPECT_GE(Cached(), before * 9 / 10);
    ReadAll();
    EXPECT_LT(Cached(), before + kMega + kMega / 8);
}

TEST_F(ReadThroughTest, OneWithinAnotherChangesNothing) {
    const ReadThrough outer(gDB);
    const std::int64_t limit = Limit();
    {
        const ReadThrough inner(gDB);
        EXPECT_EQ(Limit(), limit);
    }
    EXPECT_EQ(Limit(), limit);
}

TEST_F(ReadThroughTest, HasNothingToDoWithoutAFile) {
    DropCrf();
    const ReadThrough reading(gDB);
}

}  // namespace
}  // namespace zolmara::test
