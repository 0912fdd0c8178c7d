// What has been keyed and left stands in the file, however the program ends.

#include "EntryChild.h"
#include "SheetTest.h"
#include "store/Dao.h"

namespace zolmara::ui {
namespace {

class SavedIsSaved : public SheetTest {
protected:
    SavedIsSaved() {
        std::filesystem::create_directory(folder.Path() / "kept");
        base_ = MakeCrf("Base.CRF");
    }
    void StartAnew() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path() / "kept"))
            std::filesystem::remove_all(entry.path());
        std::filesystem::copy_file(base_, crf_);
    }
    /// Runs the program on a fresh file and opens what it left, which must be whole.
    int Die(ChildAct act, int at) {
        StartAnew();
        const int calls = RunEntryChild({crf_, act, at});
        EXPECT_FALSE(DBEngine::RepairDatabase(crf_).WasDamaged) << at;
        EXPECT_TRUE(OpenCrf(crf_)) << at;
        return calls;
    }
    /// Column 1 of worksheet A, on the rows that are pasted into.
    static std::vector<std::string> Keyed() {
        std::vector<std::string> amounts;
        Recordset rows = gDB.OpenRecordset(
            "SELECT Col_1 FROM A WHERE LineNum >= 8 ORDER BY LineNum;", dbOpenSnapshot);
        for (; amounts.size() < kPastedRows; rows.MoveNext()) amounts.push_back(Text(rows[0]));
        return amounts;
    }
    /// Dies at calls from the first to the last; what is left is the file before or after.
    void DieOnTheWay(ChildAct act, int calls, const std::vector<std::string>& before,
                     const std::vector<std::string>& after) {
        ASSERT_GT(calls, 3) << "no calls to die in";
        for (const int at : {1, calls / 2, calls - 1, calls}) {
            EXPECT_EQ(Die(act, at), -1) << at;
            const auto left = Keyed();
            EXPECT_TRUE(left == before || left == after) << at;
            DropCrf();
        }
    }

    std::string base_;
    std::string crf_ = folder.File("kept/One.CRF");
    const std::vector<std::string> blank_ = std::vector<std::string>(kPastedRows);
};

TEST_F(SavedIsSaved, ARowThatWasLeftIsThereAfterAKill) {
    const int calls = Die(ChildAct::Row, 0);
    auto after = blank_;
    after.front() = "777";
    EXPECT_EQ(Keyed(), after);
    DropCrf();
    DieOnTheWay(ChildAct::Row, calls, blank_, after);
}

TEST_F(SavedIsSaved, APasteIsThereWholeOrNotAtAll) {
    const int calls = Die(ChildAct::Paste, 0);
    const std::vector<std::string> after{"7771", "7772", "7773", "7774", "7775"};
    EXPECT_EQ(Keyed(), after);
    DropCrf();
    DieOnTheWay(ChildAct::Paste, calls, blank_, after);
}

}  // namespace
}  // namespace zolmara::ui
