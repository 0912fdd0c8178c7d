#include "worksheets/W_G.h"

#include <fmt/format.h>

#include <algorithm>

#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

constexpr std::array<SeedRow, 48> kSeeds = {{
    {1, "Cash on hand and in banks"},
    {2, "Temporary investments"},
    {3, "Notes receivable"},
    {4, "Accounts receivable"},
    {5, "Other receivables"},
    {6, "Less: allowances for uncollectible notes and accounts receivable"},
    {7, "Inventory"},
    {8, "Prepaid expenses"},
    {9, "Other current assets"},
    {10, "TOTAL CURRENT ASSETS"},
    {11, "Land"},
    {12, "Land improvements"},
    {13, "Less: Accumulated depreciation"},
    {14, "Buildings"},
    {15, "Less: Accumulated depreciation"},
    {16, "Leasehold improvements"},
    {17, "Less: Accumulated depreciation"},
    {18, "Fixed equipment"},
    {19, "Less: Accumulated depreciation"},
    {20, "Automobiles and trucks"},
    {21, "Less: Accumulated depreciation"},
    {22, "Major movable equipment"},
    {23, "Less: Accumulated depreciation"},
    {24, "Minor equipment non-depreciable"},
    {25, "Other fixed assets"},
    {26, "TOTAL FIXED ASSETS"},
    {27, "Investments"},
    {28, "Deposits on leases"},
    {29, "Due from owners/officers"},
    {30, "Other assets"},
    {31, "TOTAL OTHER ASSETS"},
    {32, "TOTAL ASSETS"},
    {33, "Accounts payable"},
    {34, "Salaries, wages & fees payable"},
    {35, "Payroll taxes payable"},
    {36, "Notes & short-term loans payable"},
    {37, "Deferred income"},
    {38, "Accelerated payments"},
    {39, "Other current liabilities"},
    {40, "TOTAL CURRENT LIABILITIES"},
    {41, "Mortgage payable"},
    {42, "Notes payable"},
    {43, "Unsecured loans"},
    {44, "Other long term liabilities"},
    {45, "TOTAL LONG TERM LIABILITIES"},
    {46, "TOTAL LIABILITIES"},
    {47, "Retained earnings"},
    {48, "Total liabilities and retained earnings"},
}};

/// The line whose balance is being made, which a refusal names.
class Balance {
public:
    explicit Balance(int line) : line_(line) {}

    Balance& Add(std::string_view sql) { return Add(Held(SumOf(sql))); }
    Balance& Less(std::string_view sql) { return Add(-Held(SumOf(sql))); }
    Balance& Add(Currency amount) {
        Held(sum_.ToDouble() + amount.ToDouble());
        sum_ += amount;
        return *this;
    }
    Currency Write() const {
        gDB.Execute("UPDATE G SET Col_1=? WHERE LineNum=?;", {sum_, line_});
        return sum_;
    }

private:
    Currency Held(double amount) const {
        if (Currency::Holds(amount)) return Currency(amount);
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet G: the balance of line {} is too large.", line_));
    }

    int line_;
    Currency sum_;
};

}  // namespace

const std::vector<WorksheetField>& Fields_G(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Description", dbText, 255, "Description", Label},
        {"Col_1", dbDouble, 0, "General Fund", Keyed},
    };
    return fields;
}

void Build_G() {
    MakeWorksheetTable("G");
    for (const SeedRow& row : kSeeds) {
        gDB.Execute("INSERT INTO G (LineNum,Description,Col_1) VALUES (?,?,0);",
                    {row.Line, row.Text});
    }
    MakeWorksheetIndex("G");
    RegisterBuiltWorksheet("G");
}

void Calc_G() {
    const Currency current =
        Balance(10)
            .Add(
                "SELECT SUM(Col_1) AS Sum1 FROM G WHERE (LineNum BETWEEN 1 AND 9) AND (LineNum <> "
                "6);")
            .Less("SELECT Col_1 FROM G WHERE LineNum = 6;")
            .Write();
    const Currency fixed =
        Balance(26)
            .Add(
                "SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum "
                "IN(11,12,14,16,18,20,22,24,25);")
            .Less("SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum IN(13,15,17,19,21,23);")
            .Write();
    const Currency other =
        Balance(31)
            .Add("SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum BETWEEN 27 AND 30;")
            .Write();
    Balance(32).Add(current).Add(fixed).Add(other).Write();
    const Currency currentLiabilities =
        Balance(40)
            .Add("SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum BETWEEN 33 AND 39;")
            .Write();
    const Currency longTerm =
        Balance(45)
            .Add("SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum BETWEEN 41 AND 44;")
            .Write();
    Balance(46).Add(currentLiabilities).Add(longTerm).Write();
    Balance(48).Add("SELECT Sum(Col_1) AS Sum1 FROM G WHERE LineNum In(46,47);").Write();
}

std::string ValidateCell_G(Currency lineNum) {
    const bool computed = std::ranges::any_of(
        kComputedLines_G, [&](const ComputedLine& line) { return line.Line == lineNum.Whole(); });
    if (!computed) return {};
    return "The cell you are attempting to input or modify is computed.";
}

}  // namespace zolmara
