#include "worksheets/W_G.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>

#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/NumberedSheet.h"

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

constexpr int kAmount = 1;  ///< the column of the general fund

/// The lines from one to another, both counted.
auto From(int first, int last) {
    return [=](Currency line) {
        return Currency::FromWhole(first) <= line && line <= Currency::FromWhole(last);
    };
}

/// Some whole lines.
auto AnyOf(std::initializer_list<int> lines) {
    return [lines = std::vector<int>(lines)](Currency line) {
        return std::ranges::any_of(lines,
                                   [&](int one) { return line == Currency::FromWhole(one); });
    };
}

/// The line whose balance is being made, which a refusal names.
class Balance {
public:
    Balance(const NumberedSheet& sheet, int line) : sheet_(sheet), line_(line) {}

    template <class IsWanted>
    Balance& Add(const IsWanted& lines) {
        return AddAmount(Held(sheet_.Sum(kAmount, lines)));
    }
    template <class IsWanted>
    Balance& Less(const IsWanted& lines) {
        return AddAmount(-Held(sheet_.Sum(kAmount, lines)));
    }
    Balance& AddAmount(Currency amount) {
        Held(sum_.ToDouble() + amount.ToDouble());
        sum_ += amount;
        return *this;
    }
    Currency Write() const {
        sheet_.Set(Currency::FromWhole(line_), kAmount, sum_.ToDouble());
        return sum_;
    }

private:
    Currency Held(double amount) const {
        if (Currency::Holds(amount)) return Currency(amount);
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet G: the balance of line {} is too large.", line_));
    }

    const NumberedSheet& sheet_;
    int line_;
    Currency sum_;
};

void Calculate() {
    const NumberedSheet sheet("G");
    const auto balance = [&](int line) { return Balance(sheet, line); };
    const auto currentAssets = [](Currency line) {
        return From(1, 9)(line) && line != Currency::FromWhole(6);
    };
    const Currency current = balance(10).Add(currentAssets).Less(AnyOf({6})).Write();
    const Currency fixed = balance(26)
                               .Add(AnyOf({11, 12, 14, 16, 18, 20, 22, 24, 25}))
                               .Less(AnyOf({13, 15, 17, 19, 21, 23}))
                               .Write();
    const Currency other = balance(31).Add(From(27, 30)).Write();
    balance(32).AddAmount(current).AddAmount(fixed).AddAmount(other).Write();
    const Currency currentLiabilities = balance(40).Add(From(33, 39)).Write();
    const Currency longTerm = balance(45).Add(From(41, 44)).Write();
    balance(46).AddAmount(currentLiabilities).AddAmount(longTerm).Write();
    balance(48).Add(AnyOf({46, 47})).Write();
}

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

void Calc_G() { ChangeCells(gDB, Calculate); }

std::string ValidateCell_G(Currency lineNum) {
    const bool computed = std::ranges::any_of(
        kComputedLines_G, [&](const ComputedLine& line) { return line.Line == lineNum.Whole(); });
    if (!computed) return {};
    return "The cell you are attempting to input or modify is computed.";
}

}  // namespace zolmara
