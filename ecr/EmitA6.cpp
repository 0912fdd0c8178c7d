#include "ecr/EmitA6.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>

#include "core/Capitals.h"
#include "core/Fortran.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "ecr/EmitterTables.h"
#include "ecr/Record.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

/// Column 1, which is always written, the code, and the two sides of the entry.
constexpr std::array<std::string_view, 8> kFormats = {"C36", "C2",  "C36",   "F16.2",
                                                      "I16", "C36", "F16.2", "I16"};

/// The columns of the total line.
bool IsOnTotalLine(int column) { return column == 5 || column == 8; }

class A6Writer {
public:
    explicit A6Writer(EcrRun& run)
        : run_(run),
          rows_(gDB.OpenRecordset("SELECT * From A6 Order By LineNum;", dbOpenSnapshot)) {}

    void WriteAll() {
        for (; !rows_.Eof(); rows_.MoveNext()) {
            if (Counts()) WriteRow();
            TheStatus().DoEvents();
        }
    }

private:
    Currency Line() const { return CurOr(rows_["LineNum"]); }
    bool Counts() const { return !IsBlankValue(rows_["Col_2"]) || Line() == kTotalOfEntries; }

    void WriteRow() {
        const std::string code = UCaseIn1252(Text(rows_["Col_2"]));
        if (!code_.empty() && code != code_) WriteTotals();
        code_ = code;
        total1_ += NumOr(rows_["Col_5"]);
        total2_ += NumOr(rows_["Col_8"]);
        for (int column = 1; column <= static_cast<int>(kFormats.size()); ++column) {
            if (Line() != kTotalOfEntries || IsOnTotalLine(column)) WriteCell(column);
        }
    }

    /// The totals of the adjustment that has ended.
    void WriteTotals() {
        WriteTotal(5, total1_);
        WriteTotal(8, total2_);
        total1_ = 0;
        total2_ = 0;
    }

    void WriteTotal(int column, double total) const {
        if (total == 0) return;
        const std::string letters = std::string(Trim(code_)) + "0";
        run_.ECRLine =
            fmt::format("3A6000{}  {}{}{}", LeftText(letters, 2), LineField(kTotalOfEntries),
                        ColumnField(column), Fortran(total, "I16", " ", false));
        run_.WriteRecord();
    }

    void WriteCell(int column) {
        const Variant content = column == 1 ? Explanation() : rows_[fmt::format("Col_{}", column)];
        if (column != 1 && !SaysSomething(content)) return;
        const Currency whole = Currency::FromWhole(Line().Whole());
        run_.ECRLine = fmt::format(
            "3A600000  {}{}{}", LineField(whole), ColumnField(column),
            Fortran(content, kFormats.at(static_cast<std::size_t>(column - 1)), " ", false));
        run_.WriteRecord();
    }

    /// The row's explanation, or the last one where it has none.
    Variant Explanation() {
        if (IsBlankValue(rows_["Col_1"])) return explanation_;
        explanation_ = Text(rows_["Col_1"]);
        return rows_["Col_1"];
    }

    EcrRun& run_;
    Recordset rows_;
    std::string code_;
    std::string explanation_;
    double total1_ = 0;
    double total2_ = 0;
};

}  // namespace

void ECR_A6(EcrRun& run) { A6Writer(run).WriteAll(); }

}  // namespace zolmara
