#include <gtest/gtest.h>

#include "editchecks/CheckedCrf.h"
#include "editchecks/ErrorView.h"

namespace zolmara {
namespace {

class ErrorViewTest : public test::CheckedCrf {};

constexpr const char* kNote =
    "NOTE: This cost report contains Non-Fatal Errors.  These errors must be corrected before you "
    "can buld an Electronic File.";

TEST_F(ErrorViewTest, ACleanReportMayBeBuilt) {
    AddErrorRow("No errors found", " ", " ");
    const ErrorView view = ReadErrorView();
    EXPECT_TRUE(view.CanBuildECR);
    EXPECT_EQ(view.Note, "");
    EXPECT_TRUE(view.ErrorSeen);  // its Level is a text too
    ASSERT_EQ(view.Rows.size(), 1u);
    EXPECT_EQ(view.Rows[0].Level, "No errors found");
}

TEST_F(ErrorViewTest, PotentialErrorsDoNotStopTheBuild) {
    AddErrorRow("Potential Error", "2000S", "One");
    const ErrorView view = ReadErrorView();
    EXPECT_TRUE(view.CanBuildECR);
    EXPECT_EQ(view.Note, "");
    EXPECT_TRUE(view.ErrorSeen);
}

TEST_F(ErrorViewTest, ANonFatalErrorStopsTheBuildWithANote) {
    AddErrorRow("Potential Error", "2000S", "One");
    AddErrorRow("Non-Fatal Error", "1010S", "Two");
    AddErrorRow("Potential Error", "2000S", "Three");
    const ErrorView view = ReadErrorView();
    EXPECT_FALSE(view.CanBuildECR);
    EXPECT_EQ(view.Note, kNote);
    EXPECT_TRUE(view.ErrorSeen);
    ASSERT_EQ(view.Rows.size(), 3u);
    EXPECT_EQ(view.Rows[1].Code, "1010S");
    EXPECT_EQ(view.Rows[2].Message, "Three");
}

TEST_F(ErrorViewTest, RowsHaveTheHeightOfTheirLines) {
    AddErrorRow("Load", "", "One line");
    AddErrorRow("Load", "", "Three\r\nlines\r\nhere");
    const ErrorView view = ReadErrorView();
    EXPECT_EQ(view.RowHeights, (std::vector<int>{230, 690}));
    EXPECT_EQ(view.RowHeight, 690);
    EXPECT_EQ(view.LongestMessage, 18);
}

TEST_F(ErrorViewTest, ImportMessagesWithoutALevelSetNoFlag) {
    AddErrorRow("", "", "Import complete");
    AddErrorRow("X", "", "One letter");
    const ErrorView view = ReadErrorView();
    EXPECT_FALSE(view.ErrorSeen);
    EXPECT_TRUE(view.CanBuildECR);
}

TEST_F(ErrorViewTest, AnEmptyTableShowsNothing) {
    const ErrorView view = ReadErrorView();
    EXPECT_TRUE(view.Rows.empty());
    EXPECT_EQ(view.LongestMessage, 0);
    EXPECT_EQ(view.RowHeight, 0);
    EXPECT_FALSE(view.ErrorSeen);
    EXPECT_TRUE(view.CanBuildECR);
}

TEST_F(ErrorViewTest, AFileThatWasNeverCheckedHasNothingToBuildFrom) {
    gDB.DeleteTable("Error");
    const ErrorView view = ReadErrorView();
    EXPECT_TRUE(view.Rows.empty());
    EXPECT_FALSE(view.CanBuildECR);
}

}  // namespace
}  // namespace zolmara
