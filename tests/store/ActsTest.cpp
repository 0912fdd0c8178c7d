// Whatever is done to the open file is taken back and done again as if nothing had happened.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "calc/Calc_All.h"
#include "ecr/Certification.h"
#include "editchecks/modEditChecks.h"
#include "forms/CellRules.h"
#include "forms/EditInfo.h"
#include "forms/RowEntry.h"
#include "forms/WorksheetForm.h"
#include "import/ImportASCII.h"
#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "import/Rebuild.h"
#include "store/DatabaseImpl.h"
#include "store/FilledCrf.h"
#include "store/TableCells.h"
#include "store/harness/Faults.h"
#include "store/session/Acts.h"
#include "structure/AddDeleteCC.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "support/EnvironmentValue.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class ActsTest : public SessionTest {
protected:
    ActsTest() {
        fs::create_directory(temporary_);
        OpenFilledCopy(crf_);
        TheActs().Keep(true);
    }
    ~ActsTest() override {
        DropCrf();
        TheActs().Keep(false);
        TheActs().TakeNotice();
    }

    static void Key(std::string_view table, double line, std::string_view field,
                    const Variant& value) {
        RowEntry row{.Table = std::string(table), .Line = Currency(line), .Cells = {}};
        row.Set(field, value);
        StoreRow(row);
    }
    static void KeyA(double amount) { Key("A", 8, "Col_1", amount); }
    static double Keyed() { return NumOr(Cell("A", 8, "Col_1")); }
    /// A file to import: a cost center more, and some cells.
    std::string TextToImport() const {
        std::ofstream(folder.File("Import.txt"))
            << "CostCenter\t29\t0\tImported\nA\t29\t1\t77\nA6\t1\t5\t12\n";
        return folder.File("Import.txt");
    }
    /// Pastes a block into an editor with its first cell in this row and column.
    static void Paste(std::string_view item, int row, std::string_view field,
                      const std::vector<std::vector<std::string>>& cells) {
        const WorksheetForm form = DescribeForm(FormMode::Edit, item).value();
        PasteBlock(form, FormRows(form), row, form.ColumnOf(field), cells);
    }
    /// The first rows of a column of A, which is keyed.
    static BlockRange FirstOfA(const WorksheetForm& form, int count) {
        return {0, count - 1, form.ColumnOf("Col_1"), form.ColumnOf("Col_1")};
    }
    /// Takes over all worksheets, or one, from a file whose amounts and names are others.
    void TakeOver(std::string_view item = "") const {
        const std::string source = folder.File("Source.CRF");
        fs::copy_file(FilledFile(), source, fs::copy_options::overwrite_existing);
        {
            Database other = DBEngine::OpenDatabase(source);
            other.Execute("UPDATE A SET Col_1=Col_1+3 WHERE LineNum<28;");
            other.Execute("UPDATE S2p1 SET Col_1='Elsewhere' WHERE LineNum=1;");
            other.Execute("DELETE FROM A6 WHERE LineNum=2;");
        }
        const ImportSource open(source);
        ASSERT_EQ(open.Result(), SourceResult::Open);
        std::vector<ImportEntry> entries = ImportableWorksheets();
        std::erase_if(
            entries, [&](const ImportEntry& entry) { return !item.empty() && entry.Item != item; });
        EXPECT_TRUE(ImportWorksheets(entries).empty());
    }
    int StatesKept() const {
        int count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(temporary_))
            count += entry.is_regular_file() ? 1 : 0;
        return count;
    }

    std::string crf_ = folder.File("One.CRF");
    std::string temporary_ = folder.File("tmp");
    const EnvironmentValue temporaryFolder_{"TMPDIR", temporary_};
};

// --- Every kind of act ---------------------------------------------------------------------

class EachAct : public ActsTest, public ::testing::WithParamInterface<std::size_t> {
protected:
    struct Kind {
        std::string Name;
        std::function<void()> Do;
    };
    std::vector<Kind> Kinds() {
        return {
            {"Enter line 8 of A", [] { KeyA(4711); }},
            {"Enter component 1 Clinic of S-2 Part I", [] { Key("S2p1", 1, "Col_1", "Other"); }},
            {"Calculate",
             [] {
                 gDB.Execute("UPDATE A SET Col_1=Col_1+1 WHERE LineNum<28;");
                 TheActs().Forget("");
                 Calc_All();
             }},
            {"Add cost center 29", [] { AddCostCenter(Currency(29)); }},
            {"Delete cost center 4.01 Second", [] { DeleteCostCenter(Currency(4.01)); }},
            {"Rename cost center 28 Some", [] { RenameCostCenter(Currency(28), "New"); }},
            {"Add component 2 of S-2 Part I", [] { AddS2Line(Currency(2), 1); }},
            {"Delete component 1 Clinic of S-2 Part I", [] { DeleteS2Line(Currency(1), 1); }},
            {"Rename component 1 Clinic of S-2 Part I",
             [] { RenameS2Line(Currency(1), 1, "New", "123456"); }},
            {"Add line 12.01 of A-8", [] { AddLine("A8", Currency(12.01)); }},
            {"Rebuild A", [] { RebuildWorksheet("A"); }},
            {"Import Import.txt", [this] { ImportAsciiFile(TextToImport()); }},
            {"Change the identity",
             [this] {
                 OpenCrf(crf_);
                 IdentityFields fields = PresentIdentity();
                 fields.FacilityName = "Another";
                 SaveIdentity(fields);
             }},
            {"Clear the signature",
             [] {
                 gDB.Execute("UPDATE Master SET ESLastName='Doe';");
                 TheActs().Forget("");
                 CancelCertification();
             }},
            {"Sign", [] { AcceptCertification("Ann", "O'Hara", "CFO"); }},
            {"Sign",
             [this] {
                 // The files are built, and stay when the signature is taken back.
                 OpenCrf(crf_);
                 host.Folder = folder.Path();
                 host.Files = {folder.File("HO123456.23A1")};
                 AcceptCertification("Ann", "Lee", "CFO");
                 EXPECT_TRUE(fs::exists(folder.File("HO123456.23A1")));
             }},
            {"Paste into A",
             [] {
                 Paste("A", 0, "Col_1", {{"1,234"}, {"(5)"}, {"$7.00"}});
             }},
            {"Paste into A-6",
             [] {
                 // Past the last line: lines are added.
                 Paste("A6", 1, "Col_1",
                       {{"Rent", "C", "", "8", "12"}, {"Gas", "C", "", "9", "3"}});
             }},
            {"Clear cells of A",
             [] {
                 const WorksheetForm form = DescribeForm(FormMode::Edit, "A").value();
                 ClearBlock(form, FormRows(form), FirstOfA(form, 3));
             }},
            {"Fill down on A",
             [] {
                 const WorksheetForm form = DescribeForm(FormMode::Edit, "A").value();
                 FillDown(form, FormRows(form), FirstOfA(form, 3));
             }},
            {"Take over from Source.CRF", [this] { TakeOver(); }},
            {"Take over from Source.CRF", [this] { TakeOver("A6"); }},
        };
    }
};

constexpr std::size_t kKinds = 22;

TEST_P(EachAct, IsTakenBackAndDoneAgain) {
    auto kinds = Kinds();
    ASSERT_EQ(kinds.size(), kKinds);
    auto& kind = kinds[GetParam()];
    // Names that the acts are told by.
    gDB.Execute("UPDATE CostCenters SET CCName='Second' WHERE LineNum=4.01;");
    gDB.Execute("UPDATE CostCenters SET CCName='Some' WHERE LineNum=28;");
    gDB.Execute("UPDATE S2p1 SET Col_1='Clinic' WHERE LineNum=1;");
    const std::string afterNames = ContentOfCrf();
    kind.Do();
    const std::string after = ContentOfCrf();
    ASSERT_EQ(TheActs().Depth(), 1u);
    EXPECT_EQ(TheActs().NameOfUndo(), kind.Name);
    TheActs().Undo();
    const std::string before = ContentOfCrf();
    EXPECT_NE(before, after);
    if (GetParam() != 2 && GetParam() != 13) {
        EXPECT_EQ(before, afterNames);
    }
    EXPECT_EQ(TheActs().NameOfUndo(), "");
    for (int round = 0; round < 2; ++round) {
        TheActs().Redo();
        EXPECT_EQ(ContentOfCrf(), after);
        EXPECT_FALSE(TheActs().CanRedo());
        TheActs().Undo();
        EXPECT_EQ(ContentOfCrf(), before);
    }
    gDB.Close();
    EXPECT_FALSE(DBEngine::RepairDatabase(crf_).WasDamaged);
}

INSTANTIATE_TEST_SUITE_P(Acts, EachAct, ::testing::Range(std::size_t{0}, kKinds));

// --- Properties ----------------------------------------------------------------------------

class RandomActs : public ActsTest {
protected:
    /// One thing that a user does, chosen at random; some change nothing.
    void DoSomething(int n) {
        const auto number = [](int most) { return *rc::gen::inRange(1, most + 1); };
        switch (number(17)) {
            case 1:
            case 2:
            case 3:
                return KeyA(number(5) * 100);
            case 4:
                return Key("A6", number(3), "Col_1", "reason " + std::to_string(n));
            case 5:
                return Key("S2p1", 1, "Col_1", "Name " + std::to_string(n));
            case 6:
                return Calc_All();
            case 7:
                return RunAct("Add", [&] {
                    AddCostCenter(Currency(29));
                    gDB.Execute("UPDATE CostCenters SET CCName='n' WHERE CCName Is Null;");
                });
            case 8:
                DeleteCostCenter(Currency(29));
                return;
            case 9:
                return AddS2Line(Currency(number(3)), number(3));
            case 10:
                DeleteS2Line(Currency(number(4)), number(3));
                return;
            case 11:
                return RunAct("Add", [&] {
                    AddLine("A8", Currency(12.01));
                    gDB.Execute("UPDATE A8 SET Col_1='n' WHERE Col_1 Is Null;");
                });
            case 12:
                RebuildWorksheet("G");
                return;
            case 13:
                ImportAsciiFile(TextToImport());
                return;
            case 14:
                return Paste("A6", number(3), "Col_1", {{"n", "C", "", "8", "12"}, {"m", "C"}});
            case 15:
                return TakeOver("A");
            case 16:
                return AcceptCertification("Ann", "Lee", "CFO");
            default:
                Run_EditChecks();
        }
    }

    /// What the file held at each depth.
    void DoThings(int count) {
        states_.assign(1, ContentOfCrf());
        for (int n = 0; n < count; ++n) {
            const std::string before = ContentOfCrf();
            const std::size_t depth = TheActs().Depth();
            try {
                DoSomething(n);
            } catch (const StoreError&) {
                // What was refused half way is an act as far as it went.
            }
            if (TheActs().Depth() == depth) continue;
            // What came without a name since the last act belongs to that.
            states_.back() = before;
            states_.push_back(ContentOfCrf());
        }
    }
    std::vector<std::string> states_;
};

RC_GTEST_FIXTURE_PROP(RandomActs, AreTakenBackAndDoneAgainAtRandomDepth, ()) {
    OpenFilledCopy(crf_);
    const int count = *rc::gen::inRange(1, 6);
    DoThings(count);
    const std::size_t top = TheActs().Depth();
    RC_ASSERT(states_.size() == top + 1);
    // Without an act there is nothing that its neighbours without a name could belong to.
    if (top == 0) return;
    std::size_t depth = top;
    const int moves = *rc::gen::inRange(1, 6);
    for (int move = 0; move < moves; ++move) {
        const bool back = depth == top || (depth > 0 && *rc::gen::arbitrary<bool>());
        back ? TheActs().Undo() : TheActs().Redo();
        back ? --depth : ++depth;
        // The top comes back as the last act left it.
        const bool asItWas = ContentOfCrf() == states_[depth];
        RC_ASSERT(asItWas);
    }
    while (depth > 0) TheActs().Undo(), --depth;
    const bool asAtFirst = ContentOfCrf() == states_[0];
    RC_ASSERT(asAtFirst);
    RC_ASSERT(!TheActs().CanUndo());
    while (TheActs().CanRedo()) TheActs().Redo();
    RC_ASSERT(TheActs().Depth() == top);
}

// --- The list ------------------------------------------------------------------------------

TEST_F(ActsTest, ActsAreUndoneFromTheLastToTheFirst) {
    for (int i = 1; i <= 300; ++i) KeyA(i);
    EXPECT_EQ(TheActs().Depth(), 300u);
    for (int i = 299; i >= 1; --i) {
        TheActs().Undo();
        ASSERT_EQ(Keyed(), i);
    }
    TheActs().Redo();
    EXPECT_EQ(Keyed(), 2);
    KeyA(77);
    EXPECT_FALSE(TheActs().CanRedo()) << "what was undone is not done again over something new";
    TheActs().Undo();
    EXPECT_EQ(Keyed(), 2);
}

TEST_F(ActsTest, AnActWithinAnActIsAPartOfIt) {
    RunAct("Outer", [] {
        KeyA(1);
        Key("A", 9, "Col_1", 2);
    });
    EXPECT_EQ(TheActs().NameOfUndo(), "Outer");
    EXPECT_EQ(TheActs().Depth(), 1u);
}

TEST_F(ActsTest, WhatChangesNothingIsNoAct) {
    KeyA(5);
    KeyA(5);
    RunAct("Nothing", [] {
        gDB.Execute("UPDATE A SET Col_1=9 WHERE LineNum=8;");
        gDB.Execute("UPDATE A SET Col_1=5 WHERE LineNum=8;");
    });
    EXPECT_EQ(TheActs().Depth(), 1u);
}

// --- Numbers that are changed in memory ----------------------------------------------------

void Calculated(double line, std::string_view field, double amount) {
    ChangeCells(gDB, [&] {
        TableCells& cells = CellsOf(gDB, "A");
        RowEdit row(cells, cells.RowOn(Currency(line)).value());
        row.Set(cells.Position(field), amount);
        row.Update();
    });
}

TEST_F(ActsTest, CalculatedNumbersComeBackWithWhatStatementsWroteToTheirRows) {
    const std::string before = ContentOfCrf();
    RunAct("Mixed", [] {
        Calculated(8, "Col_8", 801);
        Calculated(8, "Col_2", 802);
        Calculated(8, "Col_8", 803);
        gDB.Execute("UPDATE A SET CCName='Another name', Col_3=5 WHERE LineNum=8;");
        Calculated(8, "Col_5", 804);
        gDB.Execute("UPDATE A SET CCName='First' WHERE LineNum=9;");
        Calculated(9, "Col_8", 901);
        Calculated(10, "Col_8", 1001);
        gDB.Execute("DELETE * FROM A WHERE LineNum=10;");
        Calculated(28, "Col_1", 2801);
    });
    const std::string after = ContentOfCrf();
    ASSERT_NE(after, before);
    for (int time = 0; time < 2; ++time) {
        TheActs().Undo();
        EXPECT_EQ(ContentOfCrf(), before);
        TheActs().Redo();
        EXPECT_EQ(ContentOfCrf(), after);
    }
}

TEST_F(ActsTest, CalculatedNumbersThatEndAsTheyBeganAreNoAct) {
    KeyA(5);
    const double amount = NumOr(Cell("A", 9, "Col_8"));
    const auto commits = gDB.CommitCount();
    RunAct("There and back", [&] {
        Calculated(9, "Col_8", amount + 1);
        Calculated(9, "Col_8", amount);
        Calculated(8, "Col_1", 6);
        gDB.Execute("UPDATE A SET Col_1=5 WHERE LineNum=8;");
    });
    EXPECT_EQ(TheActs().Depth(), 1u);
    EXPECT_EQ(gDB.CommitCount(), commits);
    EXPECT_EQ(Keyed(), 5);
}

TEST_F(ActsTest, WhatStoodInTheWrongPlaceComesBackToo) {
    {
        const WithoutChecks quiet(gDB.impl().Handle);
        SqliteRun(gDB.impl().Handle, "UPDATE A SET Col_8='a word' WHERE LineNum=8");
    }
    const std::string before = ContentOfCrf();
    RunAct("Calculated", [] { Calculated(8, "Col_8", 5); });
    EXPECT_EQ(Cell("A", 8, "Col_8"), Variant(5.0));
    TheActs().Undo();
    EXPECT_EQ(ContentOfCrf(), before);
    EXPECT_EQ(Text(Cell("A", 8, "Col_8")), "a word");
}

TEST_F(ActsTest, NothingIsWrittenForNumbersThatEndAsTheyBeganWhereNobodyKeepsActs) {
    TheActs().Keep(false);
    const double amount = NumOr(Cell("A", 9, "Col_8"));
    const auto commits = gDB.CommitCount();
    const auto change = [&](double to) { Calculated(9, "Col_8", to); };
    RunAct("There and back", [&] {
        change(amount + 1);
        change(amount);
    });
    EXPECT_EQ(gDB.CommitCount(), commits);
    RunAct("There", [&] { change(amount + 1); });
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
    EXPECT_EQ(Cell("A", 9, "Col_8"), Variant(amount + 1));
}

TEST_F(ActsTest, AnActThatFailsHalfWayIsTakenBackAsFarAsItWent) {
    EXPECT_THROW(RunAct("Half",
                        [] {
                            KeyA(5);
                            throw StoreError(StoreError::Kind::Other, "no");
                        }),
                 StoreError);
    EXPECT_EQ(Keyed(), 5);
    EXPECT_EQ(TheActs().NameOfUndo(), "Half");
    TheActs().Undo();
    EXPECT_NE(Keyed(), 5);
}

TEST_F(ActsTest, FindingsAreNoStepOfTheirOwn) {
    KeyA(5);
    Run_EditChecks();
    EXPECT_EQ(TheActs().Depth(), 1u);
    EXPECT_EQ(TheActs().NameOfUndo(), "Enter line 8 of A");
}

TEST_F(ActsTest, AWriteOutsideAnActComesAndGoesWithTheActAhead) {
    const std::string before = ContentOfCrf();
    KeyA(5);
    gDB.Execute("UPDATE A SET Col_1=6 WHERE LineNum=9;");
    gDB.Execute("CREATE INDEX ndxOther ON A (CCName);");
    TheActs().Undo();
    EXPECT_EQ(ContentOfCrf(), before);
    TheActs().Redo();
    EXPECT_EQ(Keyed(), 5);
}

TEST_F(ActsTest, RowsKeepTheirPlaceInTheFile) {
    const auto rowid = [] {
        return gDB.OpenRecordset("SELECT * FROM A6 WHERE LineNum=1;").Bookmark();
    };
    Recordset open = gDB.OpenRecordset("SELECT * FROM A6 WHERE LineNum=1;");
    const auto mark = rowid();
    DeleteLine("A6", Currency(1));
    TheActs().Undo();
    EXPECT_EQ(rowid(), mark);
    EXPECT_FALSE(open["LineNum"].IsNull()) << "an open window finds its row";
}

TEST_F(ActsTest, TableEmptiedByAStatementMadeReadyOutsideABatchComesBack) {
    // SQLite empties a table without telling of its rows where nobody listened when the
    // statement was made ready.
    gDB.Execute("INSERT INTO Error VALUES ('a','b','c');");
    gDB.Execute("DELETE * FROM Error;");
    RunAct("Fill", [] { gDB.Execute("INSERT INTO Error VALUES ('a','b','c');"); });
    RunAct("Empty", [] { gDB.Execute("DELETE * FROM Error;"); });
    EXPECT_EQ(TheActs().NameOfUndo(), "Empty");
    TheActs().Undo();
    EXPECT_EQ(Rows("Error"), 1);
}

TEST_F(ActsTest, WithoutTheWishNothingIsKept) {
    TheActs().Keep(false);
    KeyA(5);
    AddCostCenter(Currency(29));
    EXPECT_EQ(TheActs().Depth(), 0u);
    EXPECT_EQ(StatesKept(), 0);
}

// --- The session and the windows -----------------------------------------------------------

TEST_F(ActsTest, AnUndoShutsTheWayToTheSubmissionAndRefreshesTheWindows) {
    KeyA(5);
    host.Forget();
    host.Menus["mnuReportSubmit"] = true;
    TheActs().Undo();
    EXPECT_FALSE(host.Menus["mnuReportSubmit"]);
    EXPECT_GE(host.IndexOf("RefreshOpenForms"), 0);
    host.Menus["mnuReportSubmit"] = true;
    TheActs().Redo();
    EXPECT_FALSE(host.Menus["mnuReportSubmit"]);
}

TEST_F(ActsTest, TheIdentityOfTheSessionFollows) {
    ASSERT_TRUE(OpenCrf(crf_));
    const std::string name = gProviderName;
    IdentityFields fields = PresentIdentity();
    fields.FacilityName = "Another";
    SaveIdentity(fields);
    EXPECT_EQ(gProviderName, "Another");
    TheActs().Undo();
    EXPECT_EQ(gProviderName, name);
    TheActs().Redo();
    EXPECT_EQ(gProviderName, "Another");
}

// --- What empties the list -----------------------------------------------------------------

TEST_F(ActsTest, SaveAsEmptiesTheListAndSaysSo) {
    KeyA(5);
    ASSERT_TRUE(SaveCrfAs(folder.File("Two.CRF")));
    EXPECT_FALSE(TheActs().CanUndo());
    EXPECT_EQ(TheActs().WhyEmpty(), "the file was saved under another name");
    EXPECT_EQ(TheActs().TakeNotice(),
              "What was done until now cannot be undone any more: the file was saved under another "
              "name.");
    EXPECT_EQ(TheActs().TakeNotice(), "");
    KeyA(6);
    EXPECT_EQ(TheActs().Depth(), 1u);
    EXPECT_EQ(TheActs().WhyEmpty(), "");
}

TEST_F(ActsTest, AnotherProgramsWriteEmptiesTheListAndNothingIsOverwritten) {
    KeyA(5);
    {
        Database other = DBEngine::OpenDatabase(crf_);
        other.Execute("UPDATE A SET Col_1=6 WHERE LineNum=8;");
    }
    TheActs().Undo();
    EXPECT_EQ(Keyed(), 6);
    EXPECT_FALSE(TheActs().CanUndo());
    EXPECT_EQ(TheActs().WhyEmpty(), "another program has changed the file");
    EXPECT_NE(TheActs().TakeNotice(), "");
}

TEST_F(ActsTest, AnotherProgramsWriteBeforeTheUndoOfAShapeIsNotOverwritten) {
    AddCostCenter(Currency(29));
    {
        Database other = DBEngine::OpenDatabase(crf_);
        other.Execute("UPDATE A SET Col_1=6 WHERE LineNum=8;");
    }
    TheActs().Undo();
    EXPECT_EQ(Keyed(), 6);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) AS C FROM CostCenters WHERE LineNum=29;")), 1);
}

TEST_F(ActsTest, AtTheCloseNothingStays) {
    AddCostCenter(Currency(29));
    EXPECT_EQ(StatesKept(), 1);
    KeyA(5);
    TheActs().Undo();
    TheActs().Undo();
    EXPECT_EQ(StatesKept(), 2);
    mnuReportClose();
    EXPECT_EQ(StatesKept(), 0);
    EXPECT_FALSE(TheActs().CanUndo() || TheActs().CanRedo());
    EXPECT_TRUE(host.Boxes.empty());
    ASSERT_TRUE(OpenCrf(crf_));
    EXPECT_FALSE(TheActs().CanUndo());
    for (const auto& table : gDB.TableNames()) EXPECT_NE(table.substr(0, 3), "tbl");
}

// --- Full disks and deaths -----------------------------------------------------------------

TEST_F(ActsTest, WithoutRoomForAStateTheActIsDoneAndTheListIsEmptied) {
    KeyA(5);
    FaultsArm(temporary_.c_str(), 1, ENOSPC, "");
    AddCostCenter(Currency(29));
    FaultsDisarm();
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) AS C FROM CostCenters WHERE LineNum=29;")), 1);
    EXPECT_FALSE(TheActs().CanUndo());
    EXPECT_EQ(TheActs().WhyEmpty(), "there was no room to keep what the file held before");
    KeyA(6);
    TheActs().Undo();
    EXPECT_EQ(Keyed(), 5);
}

TEST_F(ActsTest, AnUndoThatTheDiskRefusesLeavesTheFileAndTheList) {
    const double first = Keyed();
    KeyA(5);
    int refusals = 0;
    for (int call = 1; call <= 6; ++call) {
        SCOPED_TRACE(call);
        bool refused = false;
        FaultsArm(folder.Path().c_str(), call, ENOSPC, "");
        try {
            TheActs().Undo();
        } catch (const StoreError&) {
            refused = true;
        }
        FaultsDisarm();
        // SQLite passes over a folder that cannot be brought to the disk.
        EXPECT_EQ(Keyed(), refused ? 5 : first);
        if (!refused) TheActs().Redo();
        EXPECT_EQ(TheActs().NameOfUndo(), "Enter line 8 of A");
        refusals += refused;
    }
    EXPECT_GE(refusals, 3);
    TheActs().Undo();
    EXPECT_EQ(Keyed(), first);
}

TEST_F(ActsTest, AfterADeathTheFileIsAsItWasSavedLastAndTheListIsEmpty) {
    const auto end = RunInChild([&] { OpenFilledCopy(crf_); },
                                [&] {
                                    KeyA(5);
                                    AddCostCenter(Currency(29));
                                    KeyA(6);
                                    TheActs().Undo();
                                    raise(SIGKILL);
                                });
    EXPECT_TRUE(end.Killed);
    gDB.Close();
    ASSERT_TRUE(OpenCrf(crf_));
    EXPECT_EQ(Keyed(), 5);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) AS C FROM CostCenters WHERE LineNum=29;")), 1);
    EXPECT_FALSE(TheActs().CanUndo());
    // The next one that needs the place clears what the dead one left.
    AddCostCenter(Currency(30));
    EXPECT_EQ(StatesKept(), 1);
}

TEST_F(ActsTest, AnUndoKilledAtAnyMomentLeavesTheFileBeforeOrAfterIt) {
    const std::string base = folder.File("Base.CRF");
    const std::string before = ContentOfCrf();
    AddCostCenter(Currency(29));
    const std::string after = ContentOfCrf();
    gDB.Close();
    const auto prepare = [&] {
        OpenFilledCopy(crf_);
        AddCostCenter(Currency(29));
    };
    for (int call = 1; call < 400; call += call < 20 ? 1 : 17) {
        const auto end = RunInChild(
            [&] {
                prepare();
                FaultsArm(folder.Path().c_str(), call, -1, "");
            },
            [] { TheActs().Undo(); });
        SetCrfPath(crf_);
        gDB = DBEngine::OpenDatabase(crf_);
        const std::string now = ContentOfCrf();
        EXPECT_TRUE(now == before || now == after) << call;
        gDB.Close();
        EXPECT_FALSE(DBEngine::RepairDatabase(crf_).WasDamaged);
        if (!end.Killed) break;
    }
}

}  // namespace
}  // namespace zolmara::test
