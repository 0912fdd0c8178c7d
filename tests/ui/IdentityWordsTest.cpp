// Whose statement it is, changed in its window and by its command: the same refusals and questions,
// in the same order.

#include <filesystem>

#include "InProcess.h"
#include "SheetTest.h"

namespace zolmara::ui {
namespace {

using Words = std::vector<std::string>;

struct IdentityCase {
    const char* Number;
    const char* Start;
    const char* End;
    const char* Name;
    Words Boxes;  ///< "Title|text"; of a question the text is in two parts
    int Answer = 0;
};

const std::string kYear =
    "Warning: Dates Span More Than One Fiscal Year|The F/Y Start and F/Y End dates entered span "
    "more than one fiscal year.  Click on the 'Yes' button to verify that this is what you "
    "intended.  Or, click on the 'No' button to return to the form to alter one or both of the "
    "dates.";
const std::string kDays =
    "Error: Invalid Dates|Invalid sequence of dates -- The fiscal year end date must be at least "
    "28 days after, and less than 458 days after,  the fiscal year beginning date..";
const std::string kName =
    "Error: Invalid Facility Name|Facility Name must be at least 1 characters.  Please (re-)enter.";

const std::vector<IdentityCase>& Cases() {
    static const std::vector<IdentityCase> cases = {
        {"12-345",
         "1/1/2023",
         "12/31/2023",
         "A",
         {"|You have entered an invalid Provider Number!\rProvider number must be 6 numeric "
          "digits."}},
        {"12-3456",
         "13/1/2023",
         "12/31/2023",
         "A",
         {"Error: Invalid Fiscal Year Start Date|Fiscal Year Start date is not a valid date.  "
          "Please (re-)enter one."}},
        {"12-3456",
         "1/1/2023",
         "2/30/2023",
         "A",
         {"Error: Invalid Fiscal Year End Date|Fiscal Year End date is not a valid date.  Please "
          "(re-)enter one."}},
        {"12-3456",
         "1/1/2023",
         "12/31/2022",
         "A",
         {"Error: Invalid Dates|Invalid sequence of dates -- FY End preceeds FY Start."}},
        {"12-3456", "1/1/2023", "12/31/2023", " ", {kName}},
        {"12-3456",
         "9/30/2022",
         "9/29/2023",
         "A",
         {"Entry Error|The start date must be on or after 10/1/22."}},
        {"12-3456",
         "1/1/2099",
         "12/31/2099",
         "A",
         {"Entry Error|Invalid Start Date, please correct"}},
        {"12-3456", "1/1/2023", "1/28/2023", "A", {kDays}},
        // 365 days to 1/1/2024 and 93 to 4/3: 458.
        {"12-3456", "1/1/2023", "4/3/2024", "A", {kYear, kDays}, kYes},
        {"12-3456", "1/1/2023", "4/3/2024", "A", {kYear}, kNo},
        // The fields come first, the limits of the year behind them.
        {"12-3456", "9/30/2022", "9/29/2023", " ", {kName}},
        {"12-3456", "1/1/2023", "1/28/2023", " ", {kName}},
    };
    return cases;
}

class IdentityWords : public SheetTest {
protected:
    IdentityWords() {
        Start();
        const std::string path = MakeCrf("Made.CRF");
        std::filesystem::copy_file(path, copy_);
        Open(path);
        Boxes.clear();
    }

    static std::string WithoutTitle(const std::string& box) {
        return box.substr(box.find('|') + 1);
    }
    void ByWindow(const IdentityCase& each) {
        Key("frmCRFEditInfo", "txtProviderNum", each.Number);
        Key("frmCRFEditInfo", "txtFYStart", each.Start);
        Key("frmCRFEditInfo", "txtFYEnd", each.End);
        Key("frmCRFEditInfo", "txtFacilityName", each.Name);
        Boxes.clear();
        if (each.Answer != 0) Answers = {each.Answer};
        Click("frmCRFEditInfo", "cmdSave");
        Answers.clear();
        ASSERT_EQ(Boxes.size(), each.Boxes.size());
        for (std::size_t i = 0; i < Boxes.size(); ++i) {
            const std::string title = each.Boxes[i].starts_with("|") ? "" : Boxes[i].Title;
            EXPECT_EQ(title + "|" + Boxes[i].Text, each.Boxes[i]);
        }
    }
    void ByCommand(const IdentityCase& each) {
        Words words = {"identity", copy_,   "--number", each.Number, "--start",
                       each.Start, "--end", each.End,   "--name",    each.Name};
        if (each.Answer != 0) words.emplace_back(each.Answer == kYes ? "--yes" : "--no");
        const CommandResult result = RunCommand(words, folder.File("cli.ini"));
        Words told;
        for (const QString& line : Q(result.Err).split('\n', Qt::SkipEmptyParts))
            told.push_back(S(line.section('\t', 1, 1)));
        Words expected;
        for (const std::string& box : each.Boxes)
            expected.push_back(S(Q(WithoutTitle(box)).replace('\r', ' ')));
        EXPECT_EQ(told, expected);
        EXPECT_EQ(result.Status, 2);
    }

    std::string copy_ = folder.File("Copy.CRF");
};

TEST_F(IdentityWords, TheWindowAndTheCommandRefuseAlike) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    const std::string number = gProviderNumber;
    const std::string name = gProviderName;
    for (const IdentityCase& each : Cases()) {
        SCOPED_TRACE(std::string(each.Number) + " " + each.Start + " " + each.End + " " +
                     each.Name);
        ByWindow(each);
        ASSERT_NE(FindForm("frmCRFEditInfo"), nullptr);
        EXPECT_EQ(Stored("S1p1", 2, "Col_2"), number);
        EXPECT_EQ(Stored("S1p1", 2, "Col_1"), name);
    }
    Click("frmCRFEditInfo", "cmdCancel");
    EXPECT_TRUE(WaitFor([] { return !FindForm("frmCRFEditInfo"); }));
    delete s1;
    DropCrf();
    for (const IdentityCase& each : Cases()) {
        SCOPED_TRACE(std::string(each.Number) + " " + each.Start + " " + each.End + " " +
                     each.Name);
        ByCommand(each);
    }
    ASSERT_TRUE(OpenCrf(copy_));
    EXPECT_EQ(Stored("S1p1", 2, "Col_2"), number);
    EXPECT_EQ(Stored("S1p1", 2, "Col_1"), name);
}

}  // namespace
}  // namespace zolmara::ui
