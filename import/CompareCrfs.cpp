#include "import/CompareCrfs.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "core/Globals.h"
#include "import/StructureMatch.h"
#include "store/session/CoreTables.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr double kSameAmount = 0.0000005;

/// Cells that hold the line of a cost center, which is another in a file of other lines.
struct LineReference {
    std::string_view Table;
    std::string_view Field;
};
constexpr std::array<LineReference, 4> kLineReferences = {
    {{"A6", "Col_4"}, {"A6", "Col_7"}, {"A8", "Col_5"}, {"A81p1", "Col_1"}}};

bool IsLineReference(std::string_view table, std::string_view field) {
    return std::ranges::any_of(kLineReferences, [&](const LineReference& each) {
        return SameText(each.Table, table) && SameText(each.Field, field);
    });
}

/// A field that both tables have.
struct FieldPair {
    std::string Name;
    int Here;
    int There;
    bool Amount;
    bool Line;      ///< a cost center's
    bool Computed;  ///< on every line
};

std::string ColumnThere(const std::string& field, const StructureMatch& structure) {
    if (!IsCostCenterColumn(field)) return field;
    const auto line = structure.CostCenters.There(LineOfColumn(field));
    return line ? CostCenterColumn(*line) : std::string();
}

/// One table of the two files.
class TableComparison {
public:
    TableComparison(Database& here, Database& there, const std::string& table,
                    const StructureMatch& structure, const ComparisonWish& wish,
                    std::vector<CellDifference>& found)
        : table_(here.Table(table).Name),
          structure_(structure),
          rows_(structure.RowsOf(table)),
          sheet_(FindWorksheet(table)),
          wish_(wish),
          found_(found),
          here_(here.OpenRecordset(fmt::format("SELECT * FROM [{}];", table), dbOpenSnapshot)),
          there_(there.OpenRecordset(fmt::format("SELECT * FROM [{}];", table), dbOpenSnapshot)) {
        PairFields();
        for (; !there_.Eof(); there_.MoveNext())
            placeThere_[CurOr(there_[0]).Units()] = there_.AbsolutePosition();
    }

    void Run() {
        for (const std::size_t place : Ordered(here_)) {
            here_.SetBookmark(static_cast<std::int64_t>(place));
            CompareRow();
        }
        for (const std::size_t place : Ordered(there_)) {
            there_.SetBookmark(static_cast<std::int64_t>(place));
            const Currency line = CurOr(there_[0]);
            if (placeThere_.contains(line.Units())) OneSided(line, "", NameThere(line), false);
        }
    }

private:
    /// The rows' places in the order of their lines.
    static std::vector<std::size_t> Ordered(Recordset& rows) {
        std::vector<std::pair<Currency, std::size_t>> lines;
        for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext())
            lines.emplace_back(CurOr(rows[0]), rows.AbsolutePosition());
        std::ranges::sort(lines);
        std::vector<std::size_t> places;
        for (const auto& [line, place] : lines) places.push_back(place);
        return places;
    }

    CellKind KindOf(const std::string& field) const {
        if (!sheet_) return CellKind::Keyed;
        if (IsCostCenterColumn(field)) return sheet_->CostCenterCells.value_or(CellKind::Keyed);
        for (const WorksheetField& each : sheet_->FixedFields(sheet_->Item))
            if (SameText(each.Name, field)) return each.Kind;
        return CellKind::Keyed;
    }

    /// Names that come with a row are told where they are keyed.
    void PairFields() {
        std::vector<bool> met(static_cast<std::size_t>(there_.FieldCount()), false);
        for (int i = 1; i < here_.FieldCount(); ++i) {
            const std::string& name = here_.FieldName(i);
            const std::string other = ColumnThere(name, structure_);
            const int at = other.empty() ? -1 : there_.FieldIndex(other);
            if (at >= 0) met[static_cast<std::size_t>(at)] = true;
            const CellKind kind = KindOf(name);
            if (kind == CellKind::Label || kind == CellKind::Key) continue;
            if (at < 0) {
                OneSided({}, name, structure_.CostCenters.NameHere(CenterOf(name)), true);
                continue;
            }
            const bool amount = IsNumberType(here_.TypeOf(i)) && IsNumberType(there_.TypeOf(at));
            fields_.push_back(
                {name, i, at, amount, IsLineReference(table_, name), kind == CellKind::Computed});
        }
        for (int i = 1; i < there_.FieldCount(); ++i)
            if (!met[static_cast<std::size_t>(i)])
                OneSided({}, there_.FieldName(i),
                         structure_.CostCenters.NameThere(CenterOf(there_.FieldName(i))), false);
    }

    static Currency CenterOf(const std::string& column) {
        return IsCostCenterColumn(column) ? LineOfColumn(column) : Currency();
    }
    static bool IsNumberType(FieldType type) {
        return type == FieldType::dbDouble || type == FieldType::dbCurrency ||
               type == FieldType::dbInteger;
    }

    void CompareRow() {
        const Currency line = CurOr(here_[0]);
        const auto other = rows_ ? rows_->There(line) : std::optional(line);
        const auto place = other ? placeThere_.find(other->Units()) : placeThere_.end();
        if (place == placeThere_.end()) return OneSided(line, "", NameHere(line), true);
        there_.SetBookmark(static_cast<std::int64_t>(place->second));
        placeThere_.erase(place);
        for (const FieldPair& field : fields_) CompareCell(line, field);
    }

    bool IsLeftOut(Currency line, const FieldPair& field) const {
        if (!wish_.Keyed || !sheet_) return false;
        if (field.Computed) return true;
        const bool total = std::ranges::any_of(sheet_->ComputedLines, [&](const auto& computed) {
            return computed.Line == line.Whole();
        });
        return total && IsComputedCell(table_, line, field.Name);
    }

    void CompareCell(Currency line, const FieldPair& field) {
        const Variant& here = here_[field.Here];
        const Variant& there = there_[field.There];
        if (field.Amount) return CompareAmounts(line, field, here, there);
        if (StrOr(here) == StrOr(there) || wish_.Over || wish_.OverPercent) return;
        if (!IsLeftOut(line, field)) Tell(line, field, here, there, {}, {});
    }

    /// A cost center's line as the other file has it.
    double Known(const FieldPair& field, double here) const {
        if (!field.Line || here == 0) return here;
        const auto line = structure_.CostCenters.There(Currency(here));
        return line ? line->ToDouble() : here;
    }

    void CompareAmounts(Currency line, const FieldPair& field, const Variant& here,
                        const Variant& there) {
        const double a = Known(field, NumOr(here));
        const double b = NumOr(there);
        const double difference = a - b;
        if (std::abs(difference) < kSameAmount) return;
        const Variant percent =
            b == 0 ? Variant() : RoundTo(Variant(difference / std::abs(b) * 100), 2);
        if (wish_.Over && std::abs(difference) <= *wish_.Over) return;
        if (wish_.OverPercent && percent.IsNumber() &&
            std::abs(percent.Number()) <= *wish_.OverPercent)
            return;
        if (IsLeftOut(line, field)) return;
        if (field.Line) return Tell(line, field, here, there, {}, {});
        Tell(line, field, here, there, RoundTo(Variant(difference), 6), percent);
    }

    void Tell(Currency line, const FieldPair& field, const Variant& here, const Variant& there,
              const Variant& difference, const Variant& percent) {
        found_.push_back(
            {table_, line, field.Name, NameHere(line), here, there, difference, percent});
    }

    void OneSided(const Variant& line, const std::string& column, const std::string& name,
                  bool isHere) {
        const Variant what = name.empty() ? Variant(line.IsNull() ? column : Text(line)) : name;
        found_.push_back({table_, line, column, name, isHere ? what : Variant(),
                          isHere ? Variant() : what, Variant(), Variant()});
    }

    std::string NameHere(Currency line) { return NameOf(here_, line, true); }
    std::string NameThere(Currency line) { return NameOf(there_, line, false); }

    /// The description of the row; else what its line is called.
    std::string NameOf(const Recordset& row, Currency line, bool isHere) const {
        for (const std::string_view field : {"CCName", "Description"})
            if (row.FieldExists(field)) return StrOr(row[field]);
        if (!rows_) return "";
        if (row.FieldExists("Col_1")) return StrOr(row["Col_1"]);
        return isHere ? rows_->NameHere(line) : rows_->NameThere(line);
    }

    std::string table_;
    const StructureMatch& structure_;
    const LineMatch* rows_;
    const Worksheet* sheet_;
    const ComparisonWish& wish_;
    std::vector<CellDifference>& found_;
    Recordset here_;
    Recordset there_;
    std::vector<FieldPair> fields_;
    std::unordered_map<std::int64_t, std::size_t> placeThere_;
};

void NeedTable(Database& db, const std::string& table) {
    if (!db.HasTable(table))
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("There is no table {} in {}", table, db.Path()));
    const std::string& key = db.Table(table).Fields.front().Name;
    if (!SameText(key, "LineNum") && !SameText(key, "SeqNum"))
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("Table {} has no line numbers to compare by", table));
}

}  // namespace

std::vector<std::string> ComparableTables() {
    std::vector<std::string> tables = {"HeaderLines", "CostCenters", "ES"};
    for (const Worksheet& sheet : AllWorksheets()) tables.emplace_back(sheet.Item);
    return tables;
}

std::vector<CellDifference> CompareCrfs(Database& here, Database& there,
                                        const ComparisonWish& wish) {
    const std::vector<std::string> tables = wish.Items.empty() ? ComparableTables() : wish.Items;
    for (const std::string& table : wish.Items) {
        NeedTable(here, table);
        NeedTable(there, table);
    }
    const StructureMatch structure(here, there);
    std::vector<CellDifference> found;
    for (const std::string& table : tables) {
        const bool isHere = here.HasTable(table);
        const bool isThere = there.HasTable(table);
        if (isHere && isThere)
            TableComparison(here, there, table, structure, wish, found).Run();
        else if (isHere || isThere)
            found.push_back({table,
                             {},
                             "",
                             "",
                             isHere ? Variant(table) : Variant(),
                             isThere ? Variant(table) : Variant(),
                             {},
                             {}});
    }
    return found;
}

}  // namespace zolmara
