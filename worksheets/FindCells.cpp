#include "worksheets/FindCells.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Characters.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/SoughtAmount.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

/// What is looked for.
struct Wanted {
    std::string Text;  ///< in capitals
    std::string Ccn;   ///< the same as a component's number is stored; empty where it is none
    SoughtAmount Amount;
};

/// "14-0231" of "140231": a number is keyed with its hyphen or without.
std::string AsCcn(const std::string& text) {
    constexpr std::size_t kSize = 6;
    if (text.size() != kSize || !std::ranges::all_of(text.substr(2), IsDigit)) return {};
    return text.substr(0, 2) + "-" + text.substr(2);
}

/// So many columns are asked for in one statement.
constexpr std::size_t kColumnsAtOnce = 48;

/// The columns of a table that may hold what is wanted.
struct Columns {
    std::vector<std::string> Texts;
    std::vector<std::string> Amounts;
};

bool IsText(FieldType type) { return type == FieldType::dbText || type == FieldType::dbMemo; }

/// A component's or cost center's name stands in many worksheets; it is told where it is keyed.
bool IsRepeated(const std::string& item, const std::string& field) {
    const auto described = FindField(item, field);
    return described && described->Kind == CellKind::Label;
}

Columns ColumnsOf(const std::string& item) {
    Columns columns;
    const std::vector<FieldDef>& fields = gDB.Table(item).Fields;
    for (std::size_t i = 1; i < fields.size(); ++i) {
        if (!IsText(fields[i].Type)) {
            columns.Amounts.push_back(fields[i].Name);
        } else if (!IsRepeated(item, fields[i].Name)) {
            columns.Texts.push_back(fields[i].Name);
        }
    }
    return columns;
}

/// What the rows meet that hold the amount in one of the fields.
std::string ConditionOn(const std::vector<std::string>& fields, const SoughtAmount& amount) {
    std::string condition;
    const auto add = [&](const SoughtAmount::Range& range) {
        for (const std::string& field : fields)
            condition += fmt::format("{}({} Between {} And {})", condition.empty() ? "" : " Or ",
                                     field, NumberText(range.Low), NumberText(range.High));
    };
    add(amount.AsKeyed());
    if (const auto other = amount.UnderTheOtherSign()) add(*other);
    return condition;
}

class Search {
public:
    explicit Search(const Wanted& wanted) : wanted_(wanted) {}

    void Table(const std::string& item) {
        if (!gDB.HasTable(item)) return;
        key_ = gDB.Table(item).Fields.front().Name;
        item_ = item;
        begin_ = found.size();
        const Columns columns = ColumnsOf(item);
        Texts(columns.Texts);
        if (wanted_.Amount.Any()) Amounts(columns.Amounts);
        SortFound();
    }

    std::vector<FoundCell> found;

private:
    void Texts(const std::vector<std::string>& fields) {
        if (fields.empty()) return;
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT {},{} FROM {};", key_, fmt::join(fields, ","), item_),
            dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            for (std::size_t i = 0; i < fields.size(); ++i) {
                const Variant& cell = rows[static_cast<int>(i) + 1];
                if (!cell.IsText() || !Contains(cell.AsText())) continue;
                found.push_back({{item_, CurOr(rows[0]), fields[i]}, cell});
            }
        }
    }

    bool Contains(const std::string& text) const {
        if (text.size() < wanted_.Text.size()) return false;
        const std::string capitals = UCase(text);
        if (capitals.find(wanted_.Text) != std::string::npos) return true;
        return !wanted_.Ccn.empty() && capitals.find(wanted_.Ccn) != std::string::npos;
    }

    void Amounts(const std::vector<std::string>& fields) {
        for (std::size_t first = 0; first < fields.size(); first += kColumnsAtOnce) {
            const std::size_t end = std::min(first + kColumnsAtOnce, fields.size());
            AmountsIn({fields.begin() + static_cast<std::ptrdiff_t>(first),
                       fields.begin() + static_cast<std::ptrdiff_t>(end)});
        }
    }

    void AmountsIn(const std::vector<std::string>& fields) {
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT {},{} FROM {} WHERE {};", key_, fmt::join(fields, ","), item_,
                        ConditionOn(fields, wanted_.Amount)),
            dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            for (std::size_t i = 0; i < fields.size(); ++i) {
                const Variant& cell = rows[static_cast<int>(i) + 1];
                if (!cell.IsNumber() || !wanted_.Amount.Is(cell.Number())) continue;
                found.push_back({{item_, CurOr(rows[0]), fields[i]}, cell});
            }
        }
    }

    void SortFound() {
        const TableDef& table = gDB.Table(item_);
        const auto order = [&](const FoundCell& cell) {
            return std::pair(cell.Cell.Line, table.FieldIndex(cell.Cell.Field));
        };
        std::ranges::sort(found.begin() + static_cast<std::ptrdiff_t>(begin_), found.end(), {},
                          order);
    }

    const Wanted& wanted_;
    std::string item_;
    std::string key_;
    std::size_t begin_ = 0;
};

}  // namespace

std::vector<FoundCell> FindCells(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    if (trimmed.empty()) return {};
    const std::string capitals = UCase(trimmed);
    const Wanted wanted{capitals, AsCcn(capitals), SoughtAmount(trimmed)};
    Search search(wanted);
    search.Table("CostCenters");
    search.Table("ES");
    for (const Worksheet& sheet : AllWorksheets()) search.Table(std::string(sheet.Item));
    return std::move(search.found);
}

}  // namespace zolmara
