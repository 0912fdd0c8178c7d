// The kinds of cells that several editors have.

#include "CellCases.h"
#include "store/session/Session.h"

namespace zolmara::ui {

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

const std::string& LockedBox() {
    static const std::string box =
        "Entry Error|The cell you are attempting to input or modify does not accept changes.  "
        "Select OK to continue.";
    return box;
}

Tries Money() {
    return {{"12.5", "13", Rounded("12.5", "0")},
            {"-12.5", "-13", Rounded("-12.5", "0")},
            {"12.4999995", "13", Rounded("12.4999995", "0")},
            {"12.4", "12", Rounded("12.4", "0")},
            {"-7", "-7"},
            {"abc", kKeeps, Discarded("abc")},
            {"", "0"},
            {"1,234", "1234"}};
}
Tries TwoDecimals() {
    return {{"3.25", "3.25"},
            {"3.255", "3.26", Rounded("3.255", "2")},
            {"", "0"},
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
Tries Words(int size) {
    const std::string most = std::to_string(size);
    const std::string more = std::to_string(size + 1);
    return {{"Some words", "Some words"},
            {"", ""},
            {std::string(static_cast<std::size_t>(size) + 1, 'x'), kKeeps,
             "Entry Error|{cell} takes at most " + most + " characters, not " + more + "."},
            {"Other words", "Other words"}};
}
Tries YesNo() {
    const std::string refusal = "Entry Error|Please enter Y or N.";
    return {{"no", "No"}, {"yN", "Yes"}, {"AY", "Yes"}, {"maybe", kKeeps, refusal},
            {"", ""},     {"Y", "Yes"},  {"n", "No"}};
}
Tries Dates() {
    return {{"2/3/2023", "02/03/2023"},
            {"", ""},
            {"2023-05-06", "05/06/2023"},
            {"2/30/2023", kKeeps, NoDate("2/30/2023")},
            {"soon", kKeeps, NoDate("soon")}};
}
Tries Labels() {
    return {{"Ten marks.", "Ten marks."},
            {"", ""},
            {"Eleven mark", "Eleven mar", "Entry Error|This field may not exceed 10 characters."}};
}
Tries Names() {
    const std::string title = "Table CostCenters entry error|";
    return {
        {"Advertising", "Advertising"},
        {" legal fees", kKeeps,
         title + "This cost center name has already been used, please enter a unique cost "
                 "center title."},
        {std::string(41, 'x'), kKeeps, "Entry Error|{cell} takes at most 40 characters, not 41."},
        {"", kKeeps, title + "A cost center may not be blank, please enter a cost center title."}};
}
Tries Code(const std::string& title, const std::string& text, Tries tries, const Tries& refused) {
    for (Try each : refused) {
        each.Box = title + "|" + text;
        tries.push_back(each);
    }
    return tries;
}

void AddLinesForCases() {
    gDB.Execute("INSERT INTO G (LineNum,Col_1) VALUES (49,0);");
    for (const char* line : {"10", "16"}) {
        const std::string at = line;
        gDB.Execute("DELETE FROM G1 WHERE LineNum = " + at + ";");
        gDB.Execute("INSERT INTO G1 (LineNum,Col_1) VALUES (" + at + ",'More');");
    }
    // An entry of A-6 that is begun, and related organizations with what their rows refuse.
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_5,Col_7,Col_8) VALUES (50,0,0,0,0);");
    gDB.Execute("INSERT INTO A81p2 (SeqNum) VALUES (40);");
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_1,Col_4) VALUES (41,'A',-5);");
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_1,Col_6) VALUES (42,'A',-5);");
}

}  // namespace zolmara::ui
