#include "forms/CellRuleTable.h"

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "worksheets/W_A.h"

namespace zolmara {

namespace {

/// Whole lines with their subscripts.
constexpr LineRange Lines(int first, int last) { return {first * 100, last * 100 + 99}; }
constexpr LineRange Line(int line) { return {line * 100, line * 100}; }

constexpr Answer kYesNoAnswers[] = {{'Y', "Yes"}, {'N', "No"}};
constexpr Answer kBasisAnswers[] = {{'A', "Audited"}, {'C', "Compiled"}, {'R', "Reviewed"}};
constexpr Answer kPaymentAnswers[] = {{'P', "Prospective"}, {'T', "TEFRA"}, {'O', "Other"}};
constexpr Answer kOwnerAnswers[] = {{'O', "Owned"}, {'M', "Managed"}};

constexpr std::string_view kYesNoList[] = {"Y - Yes", "N - No"};
constexpr std::string_view kBasisList[] = {"Audited", "Compiled", "Reviewed"};
constexpr std::string_view kPaymentList[] = {"Prospective", "TEFRA", "Other"};
constexpr std::string_view kOwnerList[] = {"Owned", "Managed"};
constexpr std::string_view kControlList[] = {"1 - Voluntary Nonprofit, Church",
                                             "2 - Voluntary Nonprofit, Community",
                                             "3 - Voluntary Nonprofit, Private",
                                             "4 - Voluntary Nonprofit, Charitable",
                                             "5 - Voluntary Nonprofit, Other (specify)",
                                             "6 - Proprietary, Individual",
                                             "7 - Proprietary, Partnership",
                                             "8 - Proprietary, Corporation",
                                             "9 - Proprietary, Other (specify)",
                                             "10 - Governmental, Federal",
                                             "11 - Governmental, State",
                                             "12 - Governmental, County",
                                             "13 - Governmental, City",
                                             "14 - Governmental, Other (specify)"};
constexpr std::string_view kCCBases[] = {"1 - Square Feet", "2 - Dollar Value", "3 - Other"};
constexpr std::string_view kESBases[] = {"1 - Total Costs", "2 - Inpatient Days",
                                         "3 - Outpatient Visits", "4 - Other"};
/// Components other than providers have no inpatients and no visits.
constexpr std::string_view kOtherESBases[] = {"1 - Total Costs", "4 - Other"};

constexpr CheckArgument kYesNo{.Answers = kYesNoAnswers,
                               .Refusal = "Please enter Y or N.",
                               .Entries = kYesNoList,
                               .Menu = "ButtonListYN"};
constexpr CheckArgument kStatements{.Answers = kBasisAnswers,
                                    .Refusal = "Please enter A, C or R.",
                                    .Entries = kBasisList,
                                    .Menu = "ButtonListBases"};
constexpr CheckArgument kPayment{.Answers = kPaymentAnswers,
                                 .Refusal = "Please enter P, T, or O.",
                                 .Entries = kPaymentList,
                                 .Menu = "ButtonListPTO"};
constexpr CheckArgument kOwner{.Answers = kOwnerAnswers,
                               .Refusal = "Please enter O or M.",
                               .Entries = kOwnerList,
                               .Menu = "ButtonListOM"};
constexpr CheckArgument kControl{.Entries = kControlList, .Menu = "mnuType"};
constexpr CheckArgument kTwoDecimals{.Decimals = 2};
constexpr CheckArgument kCCList{.Entries = kCCBases, .Menu = "ButtonListCodes", .OnlyPicked = true};
constexpr CheckArgument kESList{.Entries = kESBases, .Menu = "ButtonListCodes"};
constexpr CheckArgument kOtherESList{.Entries = kOtherESBases, .Menu = "ButtonListCodes"};

bool OpenOnA(const CellEntry& entry) { return ValidateCell_A(entry.Line, 2).empty(); }

/// The names of the form's own lines are protected.
bool OpenCCName(const CellEntry& entry) {
    constexpr Currency kLastFormLine = Currency::FromWhole(28);
    return !entry.Line.IsWhole() || entry.Line > kLastFormLine;
}

/// The interrelationship has a meaning under symbol "G" only.
bool OpenRelationship(const CellEntry& entry) {
    return SameText(Text(RowCell(entry, "Col_1")), "G");
}

/// The types of control that are to be specified.
bool OpenControlText(const CellEntry& entry) {
    const double control = NumOr(RowCell(entry, "Col_1"));
    return control == 5 || control == 9 || control == 14;
}

/// The statements' date has a meaning while they are not submitted.
bool OpenAvailable(const CellEntry& entry) { return FirstLetter(RowCell(entry, "Col_3")) == "N"; }

bool OpenSubscript(const CellEntry& entry) { return !entry.Line.IsWhole(); }

constexpr CellRule kRules[] = {
    {"A", Lines(1, 98), "Col_1", Check_A, {}, true, OpenOnA},

    {"A6", Lines(1, 99), "Col_1 Col_2 Col_4 Col_5 Col_7 Col_8", Check_A6, {}, true},

    {"A7p1", Lines(1, 6), "Col_1 Col_2 Col_3 Col_5 Col_7", Check_Number, {}, true},
    {"A7p1", Lines(8, 8), "Col_1 Col_2 Col_3 Col_5 Col_7", Check_Number, {}, true},
    {"A7p2",
     Lines(1, 2),
     "Col_1 Col_2 Col_9 Col_10 Col_11 Col_12 Col_13 Col_14",
     Check_Number,
     {},
     true},

    {"A8", Lines(1, 11), "Col_1 Col_2 Col_3 Col_5", Check_A8, {}, true},
    {"A8", Lines(13, 99), "Col_1 Col_2 Col_3 Col_5", Check_A8, {}, true},
    {"A81p1", Lines(1, 99), "Col_1", Check_A81CostCenter, {}, true},
    {"A81p1", Lines(1, 99), "Col_3", Check_Text},
    {"A81p1", Lines(1, 99), "Col_4", Check_Number, kTwoDecimals, true},
    {"A81p1", Lines(1, 99), "Col_5 Col_6", Check_Number, {}, true},
    {"A81p2", Lines(1, 99), "Col_1", Check_A81Symbol, {}, true},
    {"A81p2", Lines(1, 99), "Col_2", Check_A81Relationship, {}, true, OpenRelationship},
    {"A81p2", Lines(1, 99), "Col_3 Col_5 Col_7", Check_Text},
    {"A81p2", Lines(1, 99), "Col_4 Col_6", Check_A81Percentage, kTwoDecimals, true},

    {"G", Lines(1, 48), "Col_1", Check_G, {}, true},
    {"G", Lines(49, 49), "Col_1", Check_Number, {}, true},
    {"G", Lines(49, 49), "Description", Check_Text},
    {"G1", Lines(1, 1), "Col_2", Check_Number, {}, true},
    {"G1", Lines(4, 14), "Col_2", Check_Number, {}, true},
    {"G1", Lines(16, 20), "Col_2", Check_Number, {}, true},
    {"G1", Lines(10, 14), "Col_1", Check_Text},
    {"G1", Lines(16, 20), "Col_1", Check_Text},

    {"CostCenters", Lines(1, 98), "CCName", Check_CCName, {}, true, OpenCCName},
    {"CostCenters", Lines(1, 98), "ColLabel1 ColLabel2 ColLabel3", Check_CCLabel},
    {"CostCenters", Lines(1, 2), "StatLabel1 StatLabel2 StatCode", Check_Basis, kCCList, true},
    {"CostCenters", Lines(8, 98), "StatLabel1 StatLabel2", Check_CCLabel},
    {"ES", Lines(1, 2), "StatLabel1 StatLabel2 StatCode", Check_Basis, kESList, true},
    {"ES", Lines(3, 4), "StatLabel1 StatLabel2 StatCode", Check_Basis, kOtherESList, true},

    {"Sp1", Line(1), "Col_1", Check_Answer, kYesNo},
    {"Sp1", Line(2), "Col_1", Check_Digit, {}, true},

    {"S1p1", Line(1), "Col_1 Col_2 Col_3 Col_4", Check_Text},
    {"S1p1", Line(1), "Col_5", Check_State},
    {"S1p1", Line(1), "Col_6", Check_Zip},
    {"S1p1", Line(2), "Col_3", Check_Began},
    {"S1p1", Line(3), "Col_1", Check_Control, kControl},
    {"S1p1", Line(3), "Col_2", Check_Text, {}, false, OpenControlText},
    {"S1p1", Line(4), "Col_1 Col_3 Col_5", Check_Answer, kYesNo},
    {"S1p1", Line(4), "Col_2", Check_Answer, kStatements},
    {"S1p1", Line(4), "Col_4", Check_Available, {}, false, OpenAvailable},
    {"S1p1", Line(5), "Col_*", Check_Text},
    {"S1p1", Lines(1, 5), "Col_6", Check_Text, {}, false, OpenSubscript},

    {"S1p2", Lines(1, 999), "Col_1 Col_2", Check_Text},

    {"S2p?", Lines(1, 50), "Col_1", Check_Text},
    {"S2p1", Lines(1, 50), "Col_2", Check_Ccn},
    {"S2p1", Lines(1, 50), "Col_3", Check_Answer, kOwner},
    {"S2p1", Lines(1, 50), "Col_4 Col_5 Col_6 Col_7", Check_Date},
    {"S2p1", Lines(1, 50), "Col_8", Check_Answer, kYesNo},
    {"S2p1", Lines(1, 50), "Col_9", Check_Answer, kPayment},
    {"S2p1", Lines(1, 50), "Col_10", Check_Contractor},
    {"S2p1", Lines(1, 50), "Col_11", Check_Text},
    {"S2p2", Lines(1, 50), "Col_4 Col_5 Col_6 Col_7", Check_Date},
    {"S2p3", Lines(1, 50), "Col_2", Check_RegionNumber},
    {"S2p3", Lines(1, 50), "Col_4", Check_Text},
    {"S2p3", Lines(1, 50), "Col_5", Check_RegionState},
    {"S2p3", Lines(1, 50), "Col_6", Check_Number, {}, true},
    {"S2p3", Lines(1, 50), "Col_7", Check_Answer, kYesNo},
    {"S2p3", Lines(1, 50), "Col_8", Check_Text},

    {"Bp?", Lines(1, 50), "CC_*", Check_Number, {}, true},
    {"B1p?", Lines(1, 50), "CC_*", Check_Number, {}, true},
    {"C1p?", Lines(1, 50), "CC_*", Check_Number, {}, true},
    {"C1p3", Line(53), "CC_*", Check_Number, {}, true},
    {"D1p?", Lines(1, 50), "CC_*", Check_Number, {}, true},
    {"D1p3", Line(53), "CC_*", Check_Number, {}, true},
    {"E1p?", Lines(1, 50), "Col_1", Check_Number, {}, true},
};

}  // namespace

std::span<const CellRule> AllCellRules() { return kRules; }

}  // namespace zolmara
