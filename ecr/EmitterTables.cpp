#include "ecr/EmitterTables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/Globals.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

// --- Lines ---------------------------------------------------------------------------------

constexpr Currency kFirstLine = Currency::FromUnits(std::numeric_limits<std::int64_t>::min());
constexpr Currency kBehindAll = Currency::FromUnits(std::numeric_limits<std::int64_t>::max());
constexpr LineSpan kAllLines = {kFirstLine, kBehindAll};

/// A line alone, without its subscripts.
constexpr LineSpan On(int line) {
    return {Currency::FromWhole(line), Currency::FromWhole(line) + Currency::FromUnits(1)};
}
constexpr LineSpan Below(int line) { return {kFirstLine, Currency::FromWhole(line)}; }
constexpr LineSpan From(int line) { return {Currency::FromWhole(line), kBehindAll}; }
constexpr LineSpan FromTo(int line, int below) {
    return {Currency::FromWhole(line), Currency::FromWhole(below)};
}

// --- Forms ---------------------------------------------------------------------------------

constexpr CellForm kAmount = {"I16"};
constexpr CellForm kCents = {"F16.2"};
constexpr CellForm kRatio = {"F16.6"};
constexpr CellForm kName = {"C36"};
constexpr CellForm kLetter = {"C1"};
constexpr CellForm kTwoLetters = {"C2"};
constexpr CellForm kDate = {"D10"};
constexpr CellForm kProvider = {"C6", true};
constexpr CellForm kNotWritten = {""};

constexpr CellForm kColumnsA[] = {kAmount, kAmount, kAmount, kAmount,
                                  kAmount, kAmount, kAmount, kAmount};
constexpr CellForm kColumnsA7p1[] = {kAmount, kAmount, kAmount, kAmount, kAmount, kAmount, kAmount};
constexpr CellForm kColumnsA7p2[] = {kAmount, kAmount, kAmount, kRatio,  kAmount,
                                     kAmount, kAmount, kAmount, kAmount, kAmount,
                                     kAmount, kAmount, kAmount, kAmount, kAmount};
constexpr CellForm kColumnsA8[] = {kName, kLetter, kAmount, kName, kCents};
constexpr CellForm kColumnsA81p1[] = {kCents, kName, kName, kCents, kAmount, kAmount, kAmount};
constexpr CellForm kColumnsA81p2[] = {kLetter, kName, kName, kCents, kName, kCents, kName};
constexpr CellForm kColumnsG[] = {kAmount};
constexpr CellForm kColumnsG1[] = {kName, kAmount};
constexpr CellForm kColumnsSp1[] = {kLetter};
constexpr CellForm kColumnsS1p2[] = {kName, kName};
constexpr CellForm kColumnsS2p1[] = {kName, kProvider, kLetter, kDate,  kDate, kDate,
                                     kDate, kLetter,   kLetter, {"C5"}, kName};
constexpr CellForm kColumnsS2p2[] = {kName, kName, kName, kDate, kName, kName, kDate};
constexpr CellForm kColumnsS2p3[] = {kName,       kProvider, {kFormBefore}, kName,
                                     kTwoLetters, kAmount,   kLetter,       kName};

constexpr CellForm kAddress[] = {kName, kName, {"C9"}, kName, kTwoLetters, {"C10"}};
constexpr CellForm kHomeOffice[] = {kName, kProvider, kDate, kDate, kDate, kNotWritten};
constexpr CellForm kControl[] = {kTwoLetters, kName};
constexpr CellForm kPrepared[] = {kLetter, kLetter, kLetter, kDate, kLetter};
constexpr CellForm kContact[] = {kName, kName, kName, kName, kName, kName};

template <const auto& Columns>
constexpr std::array<LineForms, 1> kOnAllLines = {{{kAllLines, Columns}}};

/// Each line of the home office's data has a form of its own.
constexpr std::array<LineForms, 5> kFormsS1p1 = {{
    {On(1), kAddress},
    {On(2), kHomeOffice},
    {On(3), kControl},
    {On(4), kPrepared},
    {On(5), kContact},
}};

// --- What is passed over -------------------------------------------------------------------

/// Other capital costs are neither adjusted nor allocated in their own lines.
constexpr std::array<PassedOver, 1> kPassedA = {{{FromTo(4, 8), "47"}}};
/// The form prints the names of its own lines; line 12 comes from A-8-1; line 100 is the total.
constexpr std::array<PassedOver, 3> kPassedA8 = {
    {{Below(18), "1"}, {On(12), "245"}, {On(kTotalOfEntries.Whole()), "124"}}};
constexpr std::array<PassedOver, 1> kPassedA81p1 = {{{On(kTotalOfEntries.Whole()), "1234"}}};
constexpr std::array<PassedOver, 3> kPassedG1 = {
    {{Below(10), "1"}, {FromTo(15, 16), "1"}, {From(21), "1"}}};
constexpr std::array<PassedOver, 1> kPassedS1p2 = {{{Below(6), "1"}}};

/// A residue of rounding is no amount.
bool IsMoreThanResidue(const Variant& cell) {
    static constexpr double kResidue = 0.001;
    return std::abs(NumOr(cell)) > kResidue;
}

/// Related organizations are told by a symbol of the form.
bool HasSymbol(const Recordset& row) {
    const std::string symbol = UCase(Text(row["Col_1"]));
    return CompareText(symbol, "A") >= 0 && CompareText(symbol, "G") <= 0;
}

// --- Worksheets ----------------------------------------------------------------------------

constexpr std::array<CellEmitter, 14> kCellEmitters = {{
    {"A", "A000000", "SELECT * From A ORDER BY LineNum, LineNum;", kOnAllLines<kColumnsA>, kPassedA,
     nullptr, IsMoreThanResidue, true},
    {"A7p1", "A700001", "SELECT * From A7p1 ORDER BY LineNum;", kOnAllLines<kColumnsA7p1>},
    {"A7p2", "A700002", "SELECT * From A7p2 ORDER BY LineNum;", kOnAllLines<kColumnsA7p2>},
    {"A8", "A800000", "SELECT * From A8 ORDER BY LineNum;", kOnAllLines<kColumnsA8>, kPassedA8},
    {"A81p1", "A810001", "SELECT * FROM A81p1 Order By SeqNum;", kOnAllLines<kColumnsA81p1>,
     kPassedA81p1, nullptr, nullptr, true},
    {"A81p2",
     "A810002",
     "SELECT * From A81p2 WHERE SeqNum>=1 And SeqNum<=50 ORDER BY SeqNum;",
     kOnAllLines<kColumnsA81p2>,
     {},
     HasSymbol,
     nullptr,
     true},
    {"G", "G000000", "SELECT * From G Order By LineNum;", kOnAllLines<kColumnsG>},
    {"G1", "G100000", "SELECT * From G1 Order by LineNum;", kOnAllLines<kColumnsG1>, kPassedG1},
    {"Sp1", "S000001", "SELECT * From Sp1 Order by LineNum;", kOnAllLines<kColumnsSp1>},
    {"S1p1", "S100001", "SELECT * From S1p1 Order by LineNum;", kFormsS1p1},
    {"S1p2", "S100002", "SELECT * From S1p2 Order by LineNum;", kOnAllLines<kColumnsS1p2>,
     kPassedS1p2},
    {"S2p1", "S200001", "SELECT * From S2p1 Order by LineNum;", kOnAllLines<kColumnsS2p1>},
    {"S2p2", "S200002", "SELECT * From S2p2 Order by LineNum;", kOnAllLines<kColumnsS2p2>},
    {"S2p3", "S200003", "SELECT * From S2p3 Order by LineNum;", kOnAllLines<kColumnsS2p3>},
}};

constexpr int kBehindNames = 3;  ///< the fields ahead are the line, its name and its number
constexpr int kFirstOfPools = 2;

constexpr std::array<ScheduleEmitter, 10> kScheduleEmitters = {{
    {"Bp", "B00000", kBehindNames},
    {"B1p", "B10000", kBehindNames},
    {"Cp", "C00000", kBehindNames, true},
    {"C1p", "C10000", kBehindNames, true},
    {"Dp", "D00000", kBehindNames, true},
    {"D1p", "D10000", kBehindNames, true},
    {"E1p", "E10000", kFirstOfPools, false, true},
    {"Fp", "F00000", kBehindNames},
    {"F1p", "F10000", kBehindNames},
    {"F2p", "F20000", kBehindNames},
}};
constexpr ScheduleEmitter kWorksheetE = {"E", "E00000", kFirstOfPools, false, true};

}  // namespace

bool SaysSomething(const Variant& cell) {
    const std::string text = Text(cell);
    const std::string_view trimmed = Trim(text);
    return !trimmed.empty() && trimmed != "0";
}

const CellEmitter* FindCellEmitter(std::string_view item) {
    const auto found = std::ranges::find_if(
        kCellEmitters, [&](const CellEmitter& emitter) { return SameText(emitter.Item, item); });
    return found == kCellEmitters.end() ? nullptr : &*found;
}

const ScheduleEmitter* FindScheduleEmitter(std::string_view item) {
    if (SameText(item, kWorksheetE.Family)) return &kWorksheetE;
    if (item.empty() || !Between(item.back(), '1', '3')) return nullptr;
    item.remove_suffix(1);
    const auto found = std::ranges::find_if(kScheduleEmitters, [&](const ScheduleEmitter& emitter) {
        return SameText(emitter.Family, item);
    });
    return found == kScheduleEmitters.end() ? nullptr : &*found;
}

}  // namespace zolmara
