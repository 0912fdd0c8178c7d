// The entries of A and G, of the cost centers and of the schedules.

#include "CellCases.h"

namespace zolmara::ui {
namespace {

const std::string kSalaries = "Salaries and Wages of Others";
const std::string kBlankExplanation =
    "Error: Blank EXPLANATION Item|The EXPLANATION may not be left blank for the first "
    "reclassification in a given code.";
const std::string kUpTitle = "Error: Invalid 'UpLineNum' Entry";
const std::string kUpText = "The UpLineNum is not a valid cost center number";
const std::string kDownText = "The DnLineNum is not a valid cost center number";

Try OnLeaving(const std::string& keys, const std::string& box) {
    return {keys, kKeeps, box, "", true};
}

Try Picked(const std::string& entry, const std::string& stored, const std::string& also) {
    return {entry, stored, "", also, false, true};
}

std::vector<Cells> CellsOfA6() {
    return {
        {"A6",
         1,
         "Col_1",
         {{"Some words", "Some words"},
          {std::string(41, 'x'), kKeeps,
           "Entry Error|{cell} takes at most 40 characters, not 41."}}},
        {"A6", 1, "Col_2",
         Code("Error: Invalid CODE Entry",
              "A valid CODE [any letter from 'A' through 'Z'] must be entered.",
              {{"z", "Z"}, {"q", "Q"}},
              {{"7", kKeeps}, {"AB", kKeeps}, {"[", kKeeps}, {"", kKeeps}})},
        {"A6", 1, "Col_1", {OnLeaving("", kBlankExplanation)}},
        {"A6", 1, "Col_4",
         Code(kUpTitle, kUpText, {{"", "", "", "Col_5="}, {"9", "9", "", "Col_3=" + kSalaries}},
              {{"3", kKeeps},
               {"7", kKeeps},
               {"28", kKeeps},
               {"99", kKeeps},
               {"100", kKeeps},
               {"x", kKeeps}})},
        {"A6", 1, "Col_7",
         Code(kUpTitle, kDownText,
              {{"0", "0", "", "Col_6="}, {"8", "8", "", "Col_6=Salaries of Officers"}},
              {{"28", kKeeps}, {"99", kKeeps}, {"x", kKeeps}})},
        {"A6", 1, "Col_5 Col_8", Money()},
        // The line that was begun.
        {"A6", 50, "Col_2", {OnLeaving("X", kBlankExplanation), {"q", "Q"}}},
        {"A6", 50, "Col_5", {OnLeaving("100", kUpTitle + "|" + kUpText), {"0", ""}}},
        {"A6", 50, "Col_8", {OnLeaving("100", kUpTitle + "|" + kDownText)}},
    };
}

std::vector<Cells> CellsOfA8() {
    const std::string line = "Error: Invalid Negative 'UpLineNum' Entry|";
    return {
        {"A8", 1, "Col_1",
         Code("Error: Invalid Length Entry",
              "The Description may only contain up to 36 characters.  Select OK to continue.",
              {{"", ""}, {std::string(36, 'y'), "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"}},
              {{std::string(37, 'x'), kKeeps}})},
        {"A8", 1, "Col_2",
         Code("Error: Invalid Basis Entry", "Basis entries may only be the letters 'A' or 'B'.",
              {{"b", "B"}, {"", ""}, {"a ", "A"}}, {{"C", kKeeps}, {"AB", kKeeps}})},
        {"A8", 1, "Col_3",
         Code("Error: Invalid Non-numeric 'UpSalary' Entry",
              "Amount entries must be numeric.  Select OK to continue.",
              {{"12.5", "13", Rounded("12.5", "0")}, {"", "0"}, {"1,234", "1234"}},
              {{"abc", kKeeps}})},
        {"A8",
         1,
         "Col_5",
         {{"", "", "", "Col_4="},
          {"9", "9", "", "Col_4=" + kSalaries},
          {"3", kKeeps, line + "3 is not a valid cost center number"},
          {"5", kKeeps, line + "5 is not a valid cost center number"},
          {"7", kKeeps, line + "7 is not a valid cost center number"},
          {"0", kKeeps, line + "0 is not a valid cost center number"},
          {"77", kKeeps, line + "77 is not a valid cost center number"},
          {"x", kKeeps, line + "x is not a valid cost center number"}}},
    };
}

std::vector<Cells> CellsOfA81() {
    const auto none = [](const std::string& line) {
        return "Error: Invalid Entry|No cost center found for (" + line +
               ").  Select OK to continue.";
    };
    const std::string symbol = "Error: Invalid Symbol Entry";
    const std::string symbols =
        "Valid Symbol entries are 'A' through 'G' only.  Select OK to continue.";
    const auto negative = [](const std::string& name) {
        return "Error: Invalid Negative '" + name + "' Entry|Valid " + name +
               " entries may not be negative numbers.  Select OK to continue.";
    };
    return {
        {"A81p1",
         1,
         "Col_1",
         {{"9", "9", "", "Col_2=" + kSalaries},
          {"77", kKeeps, none("77")},
          {"3", kKeeps, none("3")},
          {"x", kKeeps, none("x")},
          {"", kKeeps, none("")}}},
        {"A81p1", 1, "Col_3", Words(128)},
        {"A81p1", 1, "Col_4", TwoDecimals()},
        {"A81p1", 1, "Col_5 Col_6", Money()},
        {"A81p2", 1, "Col_1",
         Code(symbol, symbols, {{"a", "A"}, {"g", "G"}},
              {{"H", kKeeps}, {"AB", kKeeps}, {"7", kKeeps}, {"", kKeeps}})},
        {"A81p2", 1, "Col_2",
         Code("Invalid Entry",
              "If the Symbol in column 1 is 'G', the Interrelationship must be either 'Financial' "
              "or 'Non-Financial.'",
              {{"Financial", "Financial"}, {"non-financial", "non-financial"}},
              {{"Kinship", kKeeps}, {"", kKeeps}})},
        {"A81p2", 1, "Col_3 Col_5 Col_7", Words(128)},
        {"A81p2", 1, "Col_4 Col_6", Percentage()},
        {"A81p2", 1, "Col_1", {{"c", "C", "", "Col_2="}}},
        {"A81p2", 40, "Col_3", {OnLeaving("Somebody", symbol + "|" + symbols)}},
        {"A81p2", 40, "Col_1", {{"b", "B"}}},
        {"A81p2", 40, "Col_3", {{"Somebody", "Somebody"}}},
        {"A81p2", 41, "Col_3", {OnLeaving("Somebody", negative("Percentage_1"))}},
        {"A81p2", 42, "Col_3", {OnLeaving("Somebody", negative("Percentage_2"))}},
    };
}

void Append(std::vector<Cells>& all, const std::vector<Cells>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

std::vector<Cells> CellsOfA() {
    std::vector<Cells> all = {{"A", 8, "Col_1", Money()}};
    Append(all, CellsOfA6());
    Append(all, {{"A7p1", 1, "Col_1 Col_2 Col_3 Col_5 Col_7", Money()},
                 {"A7p1", 8, "Col_1 Col_2 Col_3 Col_5 Col_7", {{"5", "5"}}},
                 {"A7p2", 1, "Col_1 Col_2 Col_9 Col_10 Col_11 Col_12 Col_13 Col_14", Money()}});
    Append(all, CellsOfA8());
    Append(all, CellsOfA81());
    return all;
}

std::vector<Cells> CellsOfGAndBases() {
    const Tries deduction = {
        {"-5", "5"}, {"-7.5", "8", Rounded("-7.5", "0")}, {"abc", kKeeps, Discarded("abc")}};
    std::vector<Cells> all = {{"G", 1, "Col_1", Money()}};
    for (const double line : {6, 13, 15, 17, 19, 21, 23})
        all.push_back({"G", line, "Col_1", deduction});
    Append(
        all,
        {
            {"G", 14, "Col_1", {{"-5", "-5"}}},
            {"G", 49, "Col_1", Money()},
            {"G", 49, "Description", Words(255)},
            {"G1", 1, "Col_2", Money()},
            {"G1", 9, "Col_2", Money()},
            {"G1", 10, "Col_1", Words(40)},
            {"G1", 16, "Col_1", Words(40)},
            {"G1", 16, "Col_2", Money()},
            {"CCs", 29, "CCName", Names()},
            {"CCs", 29, "ColLabel1 ColLabel2 ColLabel3 StatLabel1 StatLabel2", Labels()},
            {"CCs", 1, "ColLabel1 ColLabel2 ColLabel3", Labels()},
            {"CCs",
             1,
             "StatLabel1",
             {Picked("3 - Other", "Other", "StatLabel2="),
              Picked("2 - Dollar Value", "Dollar", "StatLabel2=Value"),
              {"", kKeeps, LockedBox()}}},
            {"CCs", 1, "StatLabel2", {Picked("1 - Square Feet", "Feet", "StatCode=1")}},
            {"CCs", 2, "StatCode", {Picked("2 - Dollar Value", "2", "StatLabel1=Dollar")}},
            {"ES",
             1,
             "StatLabel1",
             {{"4", "Other", "", "StatLabel2="},
              {"2", "Inpatient", "", "StatLabel2=Days"},
              Picked("1 - Total Costs", "Total", "StatLabel2=Costs"),
              {"abc", kKeeps, LockedBox()}}},
            {"ES", 2, "StatLabel2", {{"3", "Visits", "", "StatCode=3"}, {"", kKeeps, LockedBox()}}},
            {"ES", 3, "StatCode", {{"4", "4", "", "StatLabel1=Other"}, {"2", kKeeps, LockedBox()}}},
        });
    return all;
}

std::vector<Cells> CellsOfSchedules() {
    const Tries fewer = {{"abc", kKeeps, Discarded("abc")}, {"1,234", "1234"}};
    std::vector<Cells> cells;
    for (const char* schedule : {"Bp", "B1p", "C1p", "D1p"})
        for (const char part : {'1', '2', '3'})
            cells.push_back(
                {schedule + std::string(1, part), 1, "CC_*", part == '1' ? Money() : fewer});
    for (const char* schedule : {"C1p3", "D1p3"})
        cells.push_back({schedule, 53, "CC_*", {{"22900", "22900"}}});
    for (const char part : {'1', '2', '3'})
        cells.push_back({std::string("E1p") + part, 1, "Col_1", Money()});
    return cells;
}

std::vector<Closed> ClosedCells() {
    return {
        {"A", 8, "LineNum CCName"},
        {"A", 4.01, "CCName"},
        {"A6", 1, "LineNum Col_3 Col_6"},
        {"A7p1", 1, "LineNum Description Col_4 Col_6"},
        {"A7p2", 1, "LineNum Description"},
        {"A8", 1, "LineNum Col_4"},
        {"A81p1", 1, "SeqNum Col_2 Col_7"},
        {"A81p2", 42, "SeqNum Col_2"},
        {"G", 1, "LineNum Description"},
        {"G1", 9, "LineNum Col_1"},
        {"CCs", 1, "LineNum CCName"},
        {"CCs", 4, "CCName StatLabel1 StatLabel2 StatCode"},
        {"CCs", 8, "CCName StatCode"},
        {"CCs", 28, "CCName StatCode"},
        {"CCs", 29, "StatCode"},
        {"ES", 1, "CCName"},
        {"Sp1", 1, "LineNum Description"},
        {"S1p1", 1, "LineNum Description"},
        {"S1p1", 2, "Col_6"},
        {"S1p1", 3, "Col_3 Col_4 Col_5 Col_6"},
        {"S1p1", 4, "Col_6"},
        {"S1p2", 1, "LineNum"},
        {"S2p1", 1, "LineNum"},
        {"S2p2", 1, "LineNum"},
        {"S2p3", 1, "LineNum"},
        {"Bp1", 1, "LineNum Description Col_0"},
        {"D1p3", 53, "LineNum Description"},
        {"E1p1", 1, "Description Col_0 Col_2 CC_100 Col_7"},
    };
}

}  // namespace zolmara::ui
