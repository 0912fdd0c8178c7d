// Every column of every editor, keyed through the real grid with real keys: what is taken, what is
// put right, and what is refused, with its box. The expectations are the form's.

#include <QDate>
#include <QPointer>
#include <map>
#include <optional>
#include <set>

#include "SheetTest.h"
#include "forms/WorksheetForm.h"

namespace zolmara::ui {
namespace {

/// One entry, and the box that meets it: "Title|text", or the title alone before the bar.
struct Try {
    std::string Keys;                   ///< empty for the key Delete
    std::optional<std::string> Stored;  ///< nothing where the cell keeps what it has
    std::string Box = "";
};
constexpr std::nullopt_t kKeeps = std::nullopt;
using Tries = std::vector<Try>;

std::string Invalid(const std::string& keyed) {
    return "You're attempting to enter invalid data ['" + keyed + "'].  ";
}
std::string Discarded(const std::string& keyed) {
    return "Entry Error|" + Invalid(keyed) +
           "The cell you're attempting to input or modify only accepts numeric data.  Your entry "
           "or modification is being discarded.";
}
std::string Rounded(const std::string& keyed, const char* decimals) {
    return "Entry Warning|" + Invalid(keyed) +
           "The cell you're attempting to input or modify only accepts " + decimals +
           " digits to the right of the decimal point.  Your entry or modification is being "
           "rounded.";
}
std::string NoDate(const std::string& keyed) {
    return "Error: Invalid Non-Date Entry|" + Invalid(keyed) +
           "The cell you're attempting to input or modify only accepts date data.  Your entry or "
           "modification is being discarded.  Select OK to continue.";
}

// --- The kinds of cells ----------------------------------------------------------------------

Tries Money() {
    return {{"12.5", "13", Rounded("12.5", "0")},
            {"-12.5", "-13", Rounded("-12.5", "0")},
            {"abc", kKeeps, Discarded("abc")},
            {"", "0"},
            {"1,234", "1234"}};
}
Tries TwoDecimals() {
    return {{"3.25", "3.25"},
            {"3.255", "3.26", Rounded("3.255", "2")},
            {"abc", kKeeps, Discarded("abc")}};
}
Tries Percentage() {
    Tries tries = TwoDecimals();
    tries.push_back(
        {"-1", kKeeps,
         "Error: Invalid Negative 'Percentage_1' Entry|Valid Percentage entries may not be "
         "negative numbers.  Select OK to continue."});
    return tries;
}
/// A text up to the size of its field.
Tries Words(int size) {
    return {{"Some words", "Some words"},
            {std::string(static_cast<std::size_t>(size) + 1, 'x'), kKeeps, "Entry Error|"}};
}
Tries YesNo() {
    const std::string refusal = "Entry Error|Please enter Y or N.";
    return {{"no", "No"}, {"yN", "Yes"}, {"AY", "Yes"}, {"maybe", kKeeps, refusal}, {"n", "No"}};
}
Tries Dates() {
    return {
        {"2/3/2023", "02/03/2023"}, {"2023-05-06", "05/06/2023"}, {"soon", kKeeps, NoDate("soon")}};
}
Tries Labels() {
    return {{"Ten marks.", "Ten marks."},
            {"Eleven mark", "Eleven mar", "Entry Error|This field may not exceed 10 characters."}};
}
Tries Names() {
    const std::string title = "Table CostCenters entry error|";
    return {
        {"Advertising", "Advertising"},
        {" legal fees", kKeeps,
         title + "This cost center name has already been used, please enter a unique cost "
                 "center title."},
        {"", kKeeps, title + "A cost center may not be blank, please enter a cost center title."}};
}
const std::string kLocked =
    "Entry Error|The cell you are attempting to input or modify does not accept changes.  Select "
    "OK "
    "to continue.";

/// The cells of a worksheet on one line that are keyed alike.
struct Cells {
    std::string Item;
    double Line;
    std::string Fields;  ///< apart by blanks; "CC_*" for every cost center's column
    Tries Keyed;
};

Tries Code(const std::string& title, const std::string& text, const Tries& taken,
           const Tries& refused) {
    Tries tries = taken;
    for (Try each : refused) {
        each.Box = title + "|" + text;
        tries.push_back(each);
    }
    return tries;
}

std::vector<Cells> CellsOfA() {
    const std::string up = "Error: Invalid 'UpLineNum' Entry";
    return {
        {"A", 8, "Col_1", Money()},
        {"A6",
         1,
         "Col_1",
         {{"Some words", "Some words"}, {std::string(41, 'x'), kKeeps, "Entry Error|"}}},
        {"A6", 1, "Col_2",
         Code("Error: Invalid CODE Entry",
              "A valid CODE [any letter from 'A' through 'Z'] must be entered.", {{"b", "B"}},
              {{"7", kKeeps}, {"AB", kKeeps}, {"", kKeeps}})},
        {"A6", 1, "Col_4",
         Code(up, "The UpLineNum is not a valid cost center number", {{"9", "9"}},
              {{"7", kKeeps}, {"28", kKeeps}, {"x", kKeeps}})},
        {"A6", 1, "Col_7",
         Code(up, "The DnLineNum is not a valid cost center number", {{"8", "8"}},
              {{"99", kKeeps}, {"x", kKeeps}})},
        {"A6", 1, "Col_5 Col_8", Money()},
        {"A7p1", 1, "Col_1 Col_2 Col_3 Col_5 Col_7", Money()},
        {"A7p1", 8, "Col_1 Col_2 Col_3 Col_5 Col_7", {{"5", "5"}}},
        {"A7p2", 1, "Col_1 Col_2 Col_9 Col_10 Col_11 Col_12 Col_13 Col_14", Money()},
        {"A8", 1, "Col_1",
         Code("Error: Invalid Length Entry",
              "The Description may only contain up to 36 characters.  Select OK to continue.",
              {{std::string(36, 'y'), "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"}},
              {{std::string(37, 'x'), kKeeps}})},
        {"A8", 1, "Col_2",
         Code("Error: Invalid Basis Entry", "Basis entries may only be the letters 'A' or 'B'.",
              {{"b", "B"}, {"a ", "A"}}, {{"C", kKeeps}, {"AB", kKeeps}})},
        {"A8", 1, "Col_3",
         Code("Error: Invalid Non-numeric 'UpSalary' Entry",
              "Amount entries must be numeric.  Select OK to continue.",
              {{"12.5", "13", Rounded("12.5", "0")}, {"1,234", "1234"}}, {{"abc", kKeeps}})},
        {"A8",
         1,
         "Col_5",
         {{"9", "9"},
          {"5", kKeeps,
           "Error: Invalid Negative 'UpLineNum' Entry|5 is not a valid cost center number"},
          {"x", kKeeps,
           "Error: Invalid Negative 'UpLineNum' Entry|x is not a valid cost center number"}}},
        {"A81p1",
         1,
         "Col_1",
         {{"9", "9"},
          {"77", kKeeps,
           "Error: Invalid Entry|No cost center found for (77).  Select OK to continue."}}},
        {"A81p1", 1, "Col_3", Words(128)},
        {"A81p1", 1, "Col_4", TwoDecimals()},
        {"A81p1", 1, "Col_5 Col_6", Money()},
        {"A81p2", 1, "Col_1",
         Code("Error: Invalid Symbol Entry",
              "Valid Symbol entries are 'A' through 'G' only.  Select OK to continue.",
              {{"g", "G"}}, {{"H", kKeeps}, {"AB", kKeeps}, {"", kKeeps}})},
        {"A81p2", 1, "Col_2",
         Code("Invalid Entry",
              "If the Symbol in column 1 is 'G', the Interrelationship must be either 'Financial' "
              "or 'Non-Financial.'",
              {{"Financial", "Financial"}, {"non-financial", "non-financial"}},
              {{"Kinship", kKeeps}})},
        {"A81p2", 1, "Col_3 Col_5 Col_7", Words(128)},
        {"A81p2", 1, "Col_4 Col_6", Percentage()},
    };
}

std::vector<Cells> CellsOfGAndBases() {
    const Tries baseOfCost = {{"3", "Other"}, {"2", "Dollar"}, {"abc", kKeeps, kLocked}};
    return {
        {"G", 1, "Col_1", Money()},
        {"G", 6, "Col_1", {{"-5", "5"}, {"abc", kKeeps, Discarded("abc")}}},
        {"G", 23, "Col_1", {{"-7.5", "8", Rounded("-7.5", "0")}}},
        {"G", 49, "Description", Words(255)},
        {"G1", 1, "Col_2", Money()},
        {"G1", 9, "Col_2", Money()},
        {"G1", 10, "Col_1", Words(40)},
        {"G1", 16, "Col_2", Money()},
        {"CCs", 29, "CCName", Names()},
        {"CCs", 29, "ColLabel1 ColLabel2 ColLabel3 StatLabel1 StatLabel2", Labels()},
        {"CCs", 1, "StatLabel1", baseOfCost},
        {"CCs", 1, "StatLabel2", {{"1", "Feet"}, {"abc", kKeeps, kLocked}}},
        {"CCs", 2, "StatCode", {{"2", "2"}, {"9", kKeeps, kLocked}}},
        {"ES", 1, "StatLabel1", {{"4", "Other"}, {"2", "Inpatient"}, {"abc", kKeeps, kLocked}}},
        {"ES", 2, "StatLabel2", {{"3", "Visits"}, {"", kKeeps, kLocked}}},
        {"ES", 3, "StatCode", {{"4", "4"}, {"2", kKeeps, kLocked}}},
    };
}

std::vector<Cells> CellsOfS() {
    const std::string entry = "Entry Error|";
    const std::string contractor = "Error: Invalid Entry|";
    const std::string five =
        "The cell you're attempting to input or modify only accepts five digit numeric data "
        "greater than zero.";
    return {
        {"Sp1", 1, "Col_1", YesNo()},
        {"Sp1", 2, "Col_1",
         Code("Entry Error", "Please enter a number 0-9.", {{"7", "7"}, {"0", "0"}},
              {{"12", kKeeps}, {"x", kKeeps}})},
        {"S1p1", 1, "Col_1 Col_2 Col_3 Col_4", Words(40)},
        {"S1p1",
         1,
         "Col_5",
         {{"IL", "IL"}, {"ILL", kKeeps, entry + "Please only use the two character state code."}}},
        {"S1p1",
         1,
         "Col_6",
         {{"60201", "60201"},
          {"60201-1234", "60201-1234"},
          {"6020", kKeeps, entry + "Zip code must be formated XXXXX or XXXXX-XXXXX"}}},
        {"S1p1",
         2,
         "Col_3",
         {{"7/1/1987", "07/01/1987"},
          {"1/1/2024", "01/01/2024",
           "Entry Warning|This date should be on or before the reporting period ending date."},
          {"soon", kKeeps, NoDate("soon")},
          {"7/1/1987", "07/01/1987"}}},
        {"S1p1", 3, "Col_1",
         Code("Input Error", "The Type of Control must be 1 - 14.", {{"14", "14"}, {"5", "5"}},
              {{"15", kKeeps}, {"1.5", kKeeps}, {"x", kKeeps}})},
        {"S1p1", 3, "Col_2", Words(40)},
        {"S1p1", 4, "Col_1 Col_3 Col_5", YesNo()},
        {"S1p1", 4, "Col_2",
         Code("Entry Error", "Please enter A, C or R.",
              {{"a", "Audited"}, {"C", "Compiled"}, {"reviewed?r", "Reviewed"}}, {{"x", kKeeps}})},
        {"S1p1",
         4,
         "Col_4",
         {{"1/1/2020", kKeeps, entry + "Line 4, Column 4 must be a future date."},
          {"soon", kKeeps, NoDate("soon")}}},
        {"S1p1", 5, "Col_1 Col_2 Col_3 Col_4 Col_5 Col_6", Words(40)},
        {"S1p2", 1, "Col_1 Col_2", Words(36)},
        {"S2p1", 1, "Col_1", Words(255)},
        {"S2p1",
         1,
         "Col_2",
         {{"14-0234", "14-0234"},
          {"ab1234", "AB-1234"},
          {"14023", kKeeps, entry + "Column 2 must be 5 characters long, 6 with hypen."},
          {"14023x", kKeeps, entry + "The last four characters must be numeric."}}},
        {"S2p1", 1, "Col_3",
         Code("Entry Error", "Please enter O or M.", {{"m", "Managed"}, {"Owned", "Owned"}},
              {{"x", kKeeps}})},
        {"S2p1", 1, "Col_4 Col_5 Col_6 Col_7", Dates()},
        {"S2p1", 1, "Col_8", YesNo()},
        {"S2p1", 1, "Col_9",
         Code("Entry Error", "Please enter P, T, or O.",
              {{"p", "Prospective"}, {"t", "TEFRA"}, {"Other o", "Other"}}, {{"x", kKeeps}})},
        {"S2p1",
         1,
         "Col_10",
         {{"12345", "12345"},
          {"00000", kKeeps, contractor + Invalid("00000") + five},
          {"1234", kKeeps, contractor + Invalid("1234") + five},
          {"1234x", kKeeps, contractor + Invalid("1234x") + five}}},
        {"S2p1", 1, "Col_11", Words(255)},
        {"S2p2", 1, "Col_1", Words(255)},
        {"S2p2", 1, "Col_4 Col_5 Col_6 Col_7", Dates()},
        {"S2p3", 1, "Col_1 Col_4 Col_8", Words(255)},
        {"S2p3",
         1,
         "Col_2",
         {{"140234", "14-0234"},
          {"14-02345", kKeeps,
           contractor + Invalid("14-02345") +
               "The cell you're attempting to input or modify only accepts seven characters."}}},
        {"S2p3",
         1,
         "Col_5",
         {{"IN", "IN"},
          {"Ind", kKeeps, contractor + Invalid("Ind") + "Enter the two character state code."}}},
        {"S2p3", 1, "Col_6", Money()},
        {"S2p3", 1, "Col_7", YesNo()},
    };
}

std::vector<Cells> CellsOfSchedules() {
    std::vector<Cells> cells;
    for (const char* schedule : {"Bp", "B1p", "C1p", "D1p"})
        for (const char part : {'1', '2', '3'})
            cells.push_back({schedule + std::string(1, part), 1, "CC_*", Money()});
    for (const char* schedule : {"C1p3", "D1p3"})
        cells.push_back({schedule, 53, "CC_*", {{"22900", "22900"}}});
    for (const char part : {'1', '2', '3'})
        cells.push_back({std::string("E1p") + part, 1, "Col_1", Money()});
    return cells;
}

// --- The walk ----------------------------------------------------------------------------------

class CellWalk : public SheetTest {
protected:
    CellWalk() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Boxes.clear();
        // Lines of each kind that the walk keys.
        gDB.Execute("INSERT INTO G (LineNum,Col_1) VALUES (49,0);");
        for (const char* line : {"10", "16"}) {
            const std::string at = line;
            gDB.Execute("DELETE FROM G1 WHERE LineNum = " + at + ";");
            gDB.Execute("INSERT INTO G1 (LineNum,Col_1) VALUES (" + at + ",'More');");
        }
    }

    void Walk(const std::vector<Cells>& all) {
        for (const Cells& cells : all) {
            if (!window_ || window_->Form().Item != cells.Item) Turn(cells.Item);
            ASSERT_NE(window_, nullptr) << cells.Item;
            for (const std::string& field : FieldsOf(cells)) {
                walked_[cells.Item].insert(field);
                // Every column of a schedule is keyed; the first has all the tries.
                const bool first = cells.Fields != "CC_*" || field == FieldsOf(cells).front();
                for (const Try& each : first ? cells.Keyed : Tries{cells.Keyed.back()})
                    KeyAndLeave(cells, field, each);
            }
        }
        Turn("");
    }

    /// The editors whose every shown column that is not locked has been keyed.
    void ExpectAllWalked(const std::vector<std::string>& items) {
        for (const std::string& item : items) {
            std::set<std::string> keyed;
            const auto form = DescribeForm(FormMode::Edit, item);
            for (const FormColumn& column : form->Columns)
                if (!column.Hidden && !column.Locked) keyed.insert(column.Field);
            EXPECT_EQ(walked_[item], keyed) << item;
        }
    }

private:
    void Turn(const std::string& item) {
        if (window_) {
            const QPointer<frmWorksheet> closing = window_;
            EXPECT_TRUE(window_->close()) << S(window_->windowTitle());
            EXPECT_TRUE(WaitFor([&] { return !closing || !closing->isVisible(); }));
        }
        window_ = item.empty() ? nullptr : Sheet("edit", item);
    }

    std::vector<std::string> FieldsOf(const Cells& cells) const {
        std::vector<std::string> fields;
        if (cells.Fields == "CC_*") {
            for (const FormColumn& column : window_->Form().Columns)
                if (column.Field.starts_with("CC_")) fields.push_back(column.Field);
            return fields;
        }
        for (const QString& field : Q(cells.Fields).split(' ')) fields.push_back(S(field));
        return fields;
    }

    std::string InStore(const Cells& cells, const std::string& field) const {
        return Stored(window_->Form().Table, cells.Line, field, window_->Form().Key);
    }

    void LeaveRow() {
        const bool first = window_->Grid().currentIndex().row() == 0;
        Press(first ? Qt::Key_Down : Qt::Key_Up);
    }

    void KeyAndLeave(const Cells& cells, const std::string& field, const Try& each) {
        const std::string where =
            cells.Item + " " + NumberText(cells.Line) + " " + field + " '" + each.Keys + "'";
        SCOPED_TRACE(where);
        At(window_, cells.Line, field);
        if (HasFatalFailure()) return;
        const std::string before = InStore(cells, field);
        Boxes.clear();
        if (each.Keys.empty()) {
            Press(Qt::Key_Delete);
        } else {
            Type(each.Keys);
            Press(Qt::Key_Return);
        }
        ExpectBox(each.Box);
        if (!each.Stored) {
            EXPECT_EQ(Current(window_), NumberText(cells.Line) + " " + field) << "keeps the focus";
            EXPECT_EQ(window_->Model().KeyedRow(), -1);
        }
        At(window_, cells.Line, field);
        LeaveRow();
        EXPECT_EQ(InStore(cells, field), each.Stored.value_or(before));
        EXPECT_LE(Boxes.size(), each.Box.empty() ? 0U : 1U);
    }

    void ExpectBox(const std::string& expected) {
        if (expected.empty()) {
            EXPECT_EQ(BoxTexts(), std::vector<std::string>());
            return;
        }
        ASSERT_EQ(Boxes.size(), 1U);
        const std::string box = Boxes[0].Title + "|" + Boxes[0].Text;
        if (expected.ends_with("|"))
            EXPECT_TRUE(box.starts_with(expected)) << box;
        else
            EXPECT_EQ(box, expected);
        const bool warns = Boxes[0].Title == "Entry Warning";
        const bool cuts = Boxes[0].Text.starts_with("This field may not exceed");
        EXPECT_EQ(Boxes[0].Style, warns ? kInformation : cuts ? kExclamation : kCritical);
    }

    QPointer<frmWorksheet> window_;
    std::map<std::string, std::set<std::string>> walked_;
};

TEST_F(CellWalk, TheEditorsOfA) {
    Walk(CellsOfA());
    ExpectAllWalked({"A", "A6", "A7p1", "A7p2", "A8", "A81p1", "A81p2"});
}

TEST_F(CellWalk, TheEditorsOfGOfTheCostCentersAndOfTheBases) {
    Walk(CellsOfGAndBases());
    ExpectAllWalked({"G", "G1", "CCs", "ES"});
}

TEST_F(CellWalk, TheEditorsOfS) {
    Walk(CellsOfS());
    ExpectAllWalked({"Sp1", "S1p1", "S1p2", "S2p1", "S2p2", "S2p3"});
}

TEST_F(CellWalk, TheEditorsOfTheSchedules) {
    Walk(CellsOfSchedules());
    ExpectAllWalked({"Bp1", "Bp2", "Bp3", "B1p1", "B1p2", "B1p3", "C1p1", "C1p2", "C1p3", "D1p1",
                     "D1p2", "D1p3", "E1p1", "E1p2", "E1p3"});
}

TEST_F(CellWalk, TheDateOfTheStatementsLiesInTheFuture) {
    const std::string year = std::to_string(QDate::currentDate().year() + 1);
    Walk({{"S1p1", 4, "Col_3", {{"n", "No"}}}});
    Walk({{"S1p1", 4, "Col_4", {{"1/1/" + year, "01/01/" + year}}}});
}

}  // namespace
}  // namespace zolmara::ui
