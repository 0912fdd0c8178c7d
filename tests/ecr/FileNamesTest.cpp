#include "core/Dialogs.h"
#include "ecr/EcrSupport.h"
#include "ecr/FileNames.h"

namespace zolmara::test {
namespace {

/// The home office of the sample, in a fiscal year that ends in 2023.
class EcrNames : public EcrCrf {
protected:
    std::string In(std::string_view name) const { return folder.File(name); }
};

TEST_F(EcrNames, TheGovernmentsName) {
    gProviderNumber = "123456";
    gFYEnd = DateTime(2023, 12, 31);
    EXPECT_EQ(EcrFileName(), "HO123456.23A1");
    EXPECT_EQ(EcrFileName().size(), 13u);
    EXPECT_EQ(PiPath("/a/HO123456.23A1"), "/a/PI123456.23A1");
}

TEST_F(EcrNames, TheVersionFollowsLine3OfTheStatus) {
    SetCell("Sp1", 3, "Col_1", "4");
    EXPECT_EQ(EcrFileName(), "HO123456.23A5");
    SetCell("Sp1", 3, "Col_1", "9");
    EXPECT_EQ(EcrFileName(), "HO123456.23A0");
    SetCell("Sp1", 3, "Col_1", "abc");
    EXPECT_EQ(EcrFileName(), "HO123456.23A1");
    SetCell("Sp1", 3, "Col_1", Variant());
    EXPECT_EQ(EcrFileName(), "HO123456.23A1");
    gDB.Execute("DELETE * FROM Sp1;");
    EXPECT_EQ(EcrFileName(), "HO123456.23A1");
}

TEST_F(EcrNames, ANumberOfEightCharactersGivesItsOuterOnes) {
    gProviderNumber = "12AB3456";
    EXPECT_EQ(EcrFileName(), "HO123456.23A1");
}

TEST_F(EcrNames, WithoutEndOfYearTheYearIsEmpty) {
    gFYEnd = Variant();
    EXPECT_EQ(EcrFileName(), "HO123456.A1");
    EXPECT_FALSE(IsGovernmentName(EcrFileName()));
}

TEST_F(EcrNames, OnlyTheVersionIsFree) {
    EXPECT_TRUE(IsGovernmentName("HO123456.23A1"));
    EXPECT_TRUE(IsGovernmentName("HO123456.23B7"));
    EXPECT_TRUE(IsGovernmentName("HO123456.23Z?"));
    EXPECT_TRUE(IsGovernmentName("HO123456.23a1"));
    gProviderNumber = "14-90b2";
    EXPECT_TRUE(IsGovernmentName(EcrFileName()));
    EXPECT_TRUE(IsGovernmentName("HO1490B2.23A1"));
    gProviderNumber = "123456";
    EXPECT_FALSE(IsGovernmentName("HO123456.23B"));
    EXPECT_FALSE(IsGovernmentName("HO123456.23B12"));
    EXPECT_FALSE(IsGovernmentName("HO123456.2311"));
    EXPECT_FALSE(IsGovernmentName("HO123456.24A1"));
    EXPECT_FALSE(IsGovernmentName("HO123457.23A1"));
    EXPECT_FALSE(IsGovernmentName("PI123456.23A1"));
    EXPECT_FALSE(IsGovernmentName(""));
}

TEST_F(EcrNames, TheDialog) {
    EXPECT_EQ(AskEcrPath(), std::nullopt);
    ASSERT_EQ(host.Dialogs.size(), 1u);
    const FileDialog& dialog = host.Dialogs[0];
    EXPECT_TRUE(dialog.Save);
    EXPECT_EQ(dialog.Title, "Save ECR File As ...");
    EXPECT_EQ(dialog.FileName, In("HO123456.23A1"));
    EXPECT_EQ(dialog.DefaultExt, "");
    EXPECT_EQ(dialog.Filter, "ECR files (HO123456.23*)|HO123456.23*");
    EXPECT_EQ(dialog.FilterIndex, 1);
    EXPECT_EQ(dialog.Flags, 2054);
}

TEST_F(EcrNames, TheGovernmentsNameIsTakenWithoutAQuestion) {
    host.Files = {In("HO123456.23B7")};
    EXPECT_EQ(AskEcrPath(), In("HO123456.23B7"));
    EXPECT_EQ(host.Boxes.size(), 0u);
}

TEST_F(EcrNames, ANameWithoutExtensionGetsItAndIsNotAskedAbout) {
    host.Files = {In("ho123456")};
    EXPECT_EQ(AskEcrPath(), In("HO123456.23A1"));
    EXPECT_EQ(host.Boxes.size(), 0u);
}

TEST_F(EcrNames, SmallLettersStayAsTheyWereTyped) {
    host.Files = {In("ho123456.23a1")};
    EXPECT_EQ(AskEcrPath(), In("ho123456.23a1"));
    EXPECT_EQ(PiPath(In("ho123456.23a1")), In("PI123456.23a1"));
}

TEST_F(EcrNames, AnotherNameIsAskedAboutAndKeptOnNo) {
    host.Files = {In("HO123456.23B")};
    EXPECT_EQ(AskEcrPath(), In("HO123456.23B"));
    EXPECT_EQ(host.Boxes,
              (std::vector<Box>{{"This is not a goverment file name, do you wish to re-enter it?",
                                 291, "Valid File?", kNo}}));
}

TEST_F(EcrNames, YesGoesRoundAgainFromTheFolderThatWasChosen) {
    TempFolder other;
    host.Files = {other.File("draft.txt"), In("HO123456.23A1")};
    host.Answers = {kYes};
    EXPECT_EQ(AskEcrPath(), In("HO123456.23A1"));
    ASSERT_EQ(host.Dialogs.size(), 2u);
    EXPECT_EQ(host.Dialogs[1].FileName, other.File("HO123456.23A1"));
}

TEST_F(EcrNames, CancelOfTheQuestionEndsIt) {
    host.Files = {In("draft.txt")};
    host.Answers = {kCancel};
    EXPECT_EQ(AskEcrPath(), std::nullopt);
    EXPECT_EQ(host.Dialogs.size(), 1u);
}

TEST_F(EcrNames, CancelOfTheSecondDialogEndsIt) {
    host.Files = {In("draft.txt")};
    host.Answers = {kYes};
    EXPECT_EQ(AskEcrPath(), std::nullopt);
    EXPECT_EQ(host.Dialogs.size(), 2u);
}

TEST_F(EcrNames, ThePrintImageOfAShortName) {
    EXPECT_EQ(PiPath("A"), "PI");
    EXPECT_EQ(PiPath("/x/draft.txt"), "/x/PIaft.txt");
}

}  // namespace
}  // namespace zolmara::test
