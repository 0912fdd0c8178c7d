#include "store/salvage/SalvageTree.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

#include "core/Globals.h"

namespace zolmara::salvage {
namespace {

constexpr int kDeepest = 20;                   // the library itself goes no deeper
constexpr std::size_t kMostBrokenLetters = 4;  // at most one letter in so many may be broken

bool TextIsPlausible(std::string text) {
    return MendText(text) * kMostBrokenLetters <= text.size();
}

// A number field keeps a whole number up to this size as such; one in the form of a broken
// number, such as the zeros of a part that was wiped out, never came from it.
bool IsKeptAsReal(const Value& value) {
    constexpr double kLargestWhole = 140737488355328.0;
    return value.Kind != Value::Type::Real || std::abs(value.Real) >= kLargestWhole ||
           value.Real != std::trunc(value.Real);
}

bool Takes(Accepts takes, const Value& value) {
    if (value.Kind == Value::Type::Null || value.Kind == Value::Type::Lost) return true;
    switch (takes) {
        case Accepts::WholeNumber:
            return value.Kind == Value::Type::Integer;
        case Accepts::Number:
            return value.IsNumber() && IsKeptAsReal(value);
        case Accepts::Text:
            return value.Kind == Value::Type::Text && TextIsPlausible(value.Bytes);
        case Accepts::Anything:
            break;
    }
    return true;
}

// The file's own list: kind, name, table, root page, statement.
bool LooksLikeSchemaRow(const Record& record) {
    constexpr std::size_t kFields = 5;
    constexpr std::string_view kWithRoot[] = {"table", "index"};
    constexpr std::string_view kWithoutRoot[] = {"view", "trigger"};
    if (record.size() != kFields || record[1].Kind != Value::Type::Text ||
        record[2].Kind != Value::Type::Text) {
        return false;
    }
    const bool rooted = record[3].Kind == Value::Type::Integer && record[3].Integer > 0;
    const auto& kinds = rooted ? kWithRoot : kWithoutRoot;
    return std::find(std::begin(kinds), std::end(kinds), record[0].Bytes) != std::end(kinds);
}

// Marks the longest run of keys that ascends, skipping what stands out of order.
std::vector<bool> Ascending(const std::vector<std::optional<std::int64_t>>& keys) {
    std::vector<std::size_t> tails;  // position of the last key of the best run of each length
    std::vector<std::size_t> before(keys.size(), keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!keys[i]) continue;
        const auto tail =
            std::lower_bound(tails.begin(), tails.end(), *keys[i],
                             [&](std::size_t at, std::int64_t key) { return *keys[at] < key; });
        if (tail != tails.begin()) before[i] = *(tail - 1);
        if (tail == tails.end()) {
            tails.push_back(i);
        } else {
            *tail = i;
        }
    }
    std::vector<bool> good(keys.size(), false);
    for (std::size_t at = tails.empty() ? keys.size() : tails.back(); at < keys.size();
         at = before[at]) {
        good[at] = true;
    }
    return good;
}

struct Walk {
    const PageFile& File;
    TableRows& Table;
    PageSet& Claimed;
};

void AddGap(Walk& walk, RowIdRange range, std::optional<std::size_t> rows = std::nullopt) {
    if (range.After < range.UpTo && rows.value_or(1) > 0) walk.Table.Gaps.push_back({range, rows});
}

void Claim(Walk& walk, PageNo page) {
    walk.Claimed[page] = true;
    walk.Table.Pages.push_back(page);
}

// A leaf's cells as read for one table.
struct Leaf {
    std::vector<std::optional<Record>> Records;       // decoded, whatever they are
    std::vector<std::optional<std::int64_t>> RowIds;  // of those that fit in table and range
    std::size_t Strange = 0;                          // decoded, but fit not
    std::size_t Doubtful = 0;                         // fit but for a cell
};

bool WidthIsKnown(const Walk& walk, const std::map<std::size_t, std::size_t>& onPage,
                  std::size_t width) {
    return width == walk.Table.Shape.Columns.size() || walk.Table.Widths.contains(width) ||
           onPage.at(width) > 1;
}

// Where most rows of a page do not quite fit, the page is another table's.
void DropDoubtful(const Walk& walk, Leaf& leaf) {
    if (leaf.Doubtful * 2 <= std::max<std::size_t>(leaf.RowIds.size(), 2)) return;
    for (std::size_t i = 0; i < leaf.RowIds.size(); ++i) {
        if (leaf.RowIds[i] && !FitsShape(*leaf.Records[i], walk.Table.Shape))
            leaf.RowIds[i].reset();
    }
    leaf.Strange += leaf.Doubtful;
}

Leaf ReadLeaf(Walk& walk, const TreePage& page, RowIdRange range) {
    Leaf leaf;
    std::map<std::size_t, std::size_t> widths;
    for (const auto& cell : page.Cells) {
        leaf.Records.push_back(cell ? ReadRow(walk.File, page.Number, *cell, walk.Table.Shape)
                                    : std::nullopt);
        if (leaf.Records.back()) ++widths[leaf.Records.back()->size()];
    }
    for (std::size_t i = 0; i < page.Cells.size(); ++i) {
        const auto& record = leaf.Records[i];
        const bool inPlace = record && range.Holds(page.Cells[i]->Key) &&
                             (page.Sound || WidthIsKnown(walk, widths, record->size()));
        const bool fits = inPlace && FitsShape(*record, walk.Table.Shape);
        const bool nearly = inPlace && !fits && NearlyFitsShape(*record, walk.Table.Shape);
        leaf.RowIds.push_back(fits || nearly ? std::optional(page.Cells[i]->Key) : std::nullopt);
        leaf.Doubtful += nearly;
        if (record && !fits && !nearly) ++leaf.Strange;
    }
    DropDoubtful(walk, leaf);
    return leaf;
}

// True where a complete index lists other rows for the range than the leaf has.
bool LeafContradictsIndex(const Walk& walk, const Leaf& leaf, RowIdRange range) {
    const IndexFacts& index = walk.Table.Index;
    if (index.Column < 0 || !index.Complete) return false;
    const auto inRange = std::count_if(index.Keys.begin(), index.Keys.end(),
                                       [&](const auto& key) { return range.Holds(key.first); });
    if (static_cast<std::size_t>(inRange) != leaf.RowIds.size()) return true;
    for (std::size_t i = 0; i < leaf.RowIds.size(); ++i) {
        if (leaf.RowIds[i] &&
            AskIndex(index, *leaf.RowIds[i], *leaf.Records[i]) == Witness::Contradicts) {
            return true;
        }
    }
    return false;
}

// A page that is whole in itself but not this table's: another page's copy stands in its place.
bool IsForeign(const Walk& walk, const TreePage& page, const Leaf& leaf, RowIdRange range) {
    if (!page.Sound) return false;
    const bool twin = HasTwin(walk.File, page.Number);
    return leaf.Strange > 1 || (leaf.Strange > 0 && twin) ||
           (twin && LeafContradictsIndex(walk, leaf, range));
}

void KeepRows(Walk& walk, const TreePage& page, const Leaf& leaf, RowIdRange range) {
    const std::vector<bool> good = Ascending(leaf.RowIds);
    std::size_t missing = 0;
    std::int64_t last = range.After;
    for (std::size_t i = 0; i < good.size(); ++i) {
        if (!good[i]) {
            ++missing;
            continue;
        }
        const std::int64_t rowId = *leaf.RowIds[i];
        AddGap(walk, {last, rowId - 1}, missing);
        walk.Table.Rows.push_back(
            PlaceOf(walk.Table, page.Number, *page.Cells[i], *leaf.Records[i]));
        if (page.Sound) ++walk.Table.Widths[leaf.Records[i]->size()];
        last = rowId;
        missing = 0;
    }
    AddGap(walk, {last, range.UpTo}, page.Sound ? std::optional(missing) : std::nullopt);
}

void TakeLeaf(Walk& walk, const TreePage& page, RowIdRange range, bool root) {
    const Leaf leaf = ReadLeaf(walk, page, range);
    const bool anyFits = std::any_of(leaf.RowIds.begin(), leaf.RowIds.end(),
                                     [](const auto& rowId) { return rowId.has_value(); });
    const bool wholeButUnread = page.Sound && leaf.Strange == 0 && (root || !page.Cells.empty());
    if ((!anyFits && !wholeButUnread) || IsForeign(walk, page, leaf, range)) {
        AddGap(walk, range);
        return;
    }
    Claim(walk, page.Number);
    KeepRows(walk, page, leaf, range);
}

void WalkPage(Walk& walk, PageNo number, RowIdRange range, int depth);

// Keys of an interior page that lie in the range; nothing for a page that is not this tree's.
std::vector<std::optional<std::int64_t>> InteriorKeys(const Walk& walk, const TreePage& page,
                                                      RowIdRange range) {
    std::vector<std::optional<std::int64_t>> keys;
    std::size_t inside = 0;
    for (const auto& cell : page.Cells) {
        const bool fits = cell && range.Holds(cell->Key);
        keys.push_back(fits ? std::optional(cell->Key) : std::nullopt);
        inside += fits;
    }
    const std::size_t outside = page.Cells.size() - inside;
    const bool foreign =
        page.Sound && (outside > 1 || (outside > 0 && HasTwin(walk.File, page.Number)));
    if (foreign || inside == 0) keys.clear();
    return keys;
}

// For each cell, the next good key from it on.
std::vector<std::int64_t> UpperKeys(const std::vector<std::optional<std::int64_t>>& keys,
                                    const std::vector<bool>& good, std::int64_t last) {
    std::vector<std::int64_t> upper(keys.size());
    for (std::size_t i = keys.size(); i-- > 0;) {
        if (good[i]) last = *keys[i];
        upper[i] = last;
    }
    return upper;
}

void TakeInterior(Walk& walk, const TreePage& page, RowIdRange range, int depth) {
    const auto keys = InteriorKeys(walk, page, range);
    if (keys.empty()) {
        AddGap(walk, range);
        return;
    }
    Claim(walk, page.Number);
    const std::vector<bool> good = Ascending(keys);
    const std::vector<std::int64_t> upper = UpperKeys(keys, good, range.UpTo);
    std::int64_t last = range.After;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const PageNo child = page.Cells[i] ? page.Cells[i]->Child : 0;
        WalkPage(walk, child, {last, upper[i]}, depth + 1);
        if (good[i]) last = *keys[i];
    }
    WalkPage(walk, page.RightChild, {last, range.UpTo}, depth + 1);
    if (!page.Sound) AddGap(walk, {last, range.UpTo});
}

void WalkPage(Walk& walk, PageNo number, RowIdRange range, int depth) {
    const bool there = number >= 1 && number <= walk.File.Count;
    if (!there || walk.Claimed[number] || walk.Table.Refused.contains(number) || depth > kDeepest) {
        AddGap(walk, range);
        return;
    }
    const TreePage page = ParseTablePage(walk.File, number);
    if (page.Kind == PageKind::TableLeaf) {
        TakeLeaf(walk, page, range, depth == 0);
    } else if (page.Kind == PageKind::TableInterior) {
        TakeInterior(walk, page, range, depth);
    } else {
        AddGap(walk, range);
    }
}

void DropRepeatedRows(std::vector<RowPlace>& rows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const RowPlace& a, const RowPlace& b) { return a.RowId < b.RowId; });
    rows.erase(std::unique(rows.begin(), rows.end(),
                           [](const RowPlace& a, const RowPlace& b) { return a.RowId == b.RowId; }),
               rows.end());
}

struct IndexWalk {
    const PageFile& File;
    std::size_t Columns;
    PageSet Seen;
    IndexFacts Facts;
};

bool AddIndexCell(IndexWalk& walk, PageNo page, const Cell& cell) {
    auto record = ReadRecord(walk.File, page, cell);
    if (!record || record->size() != walk.Columns + 1) return false;
    if (record->back().Kind != Value::Type::Integer) return false;
    return walk.Facts.Keys.emplace(record->back().Integer, std::move(record->front())).second;
}

void WalkIndexPage(IndexWalk& walk, PageNo number, int depth) {
    if (number < 1 || number > walk.File.Count || walk.Seen[number] || depth > kDeepest) {
        walk.Facts.Complete = false;
        return;
    }
    walk.Seen[number] = true;
    const TreePage page = ParsePage(walk.File, number);
    const bool interior = page.Kind == PageKind::IndexInterior;
    if (!page.Sound || (!interior && page.Kind != PageKind::IndexLeaf)) {
        walk.Facts.Complete = false;
        return;
    }
    for (const auto& cell : page.Cells) {
        if (interior) WalkIndexPage(walk, cell->Child, depth + 1);
        if (!AddIndexCell(walk, number, *cell)) walk.Facts.Complete = false;
    }
    if (interior) WalkIndexPage(walk, page.RightChild, depth + 1);
}

}  // namespace

namespace {

bool HoldsText(const FieldDef& field, const Value& value) {
    if (value.Kind != Value::Type::Text) return false;
    std::string text = value.Bytes;
    MendText(text);
    return field.Type != FieldType::dbText ||
           TextLength(text) <= static_cast<std::size_t>(field.Size);
}

}  // namespace

bool CanHold(const Column& column, const Value& value) {
    const FieldDef& field = column.Field;
    constexpr double kLargestDouble = 1e308;
    constexpr double kLargestCurrency = 9e14;
    if (value.Kind == Value::Type::Lost) return false;
    if (value.Kind == Value::Type::Null || column.Takes == Accepts::Anything) return true;
    if (column.Takes == Accepts::WholeNumber && field.Type != FieldType::dbInteger)
        return value.Kind == Value::Type::Integer;
    switch (field.Type) {
        case FieldType::dbDouble:
            return value.IsNumber() && IsKeptAsReal(value) &&
                   std::abs(value.Number()) <= kLargestDouble;
        case FieldType::dbCurrency:
            return value.IsNumber() && IsKeptAsReal(value) &&
                   std::abs(value.Number()) <= kLargestCurrency;
        case FieldType::dbInteger:
            return value.Kind == Value::Type::Integer && value.Integer >= -32768 &&
                   value.Integer <= 32767;
        case FieldType::dbDate:
            return value.Kind == Value::Type::Text && ParseStoreDate(value.Bytes).has_value();
        case FieldType::dbText:
        case FieldType::dbMemo:
            return HoldsText(field, value);
    }
    return true;
}

bool FitsShape(const Record& record, const TableShape& table) {
    if (table.IsSchema) return LooksLikeSchemaRow(record);
    if (record.size() > table.Columns.size()) return false;
    for (std::size_t i = 0; i < record.size(); ++i) {
        if (!Takes(table.Columns[i].Takes, record[i])) return false;
    }
    return true;
}

std::optional<Record> ReadRow(const PageFile& file, PageNo page, const Cell& cell,
                              const TableShape& table) {
    auto record = ReadRecord(file, page, cell);
    if (record || table.IsSchema || table.Columns.empty()) return record;
    auto possible = ReadRecordsByOneBit(file, page, cell);
    std::erase_if(possible, [&](const Record& other) {
        return other.size() != table.Columns.size() || !FitsShape(other, table);
    });
    return CommonOf(possible);
}

bool NearlyFitsShape(const Record& record, const TableShape& table) {
    if (table.IsSchema || record.size() > table.Columns.size()) return false;
    // Of a short row every cell counts.
    const std::size_t allowed = record.size() < 3 ? 0 : 1 + record.size() / 10;
    std::size_t strange = 0;
    for (std::size_t i = 0; i < record.size(); ++i) {
        if (Takes(table.Columns[i].Takes, record[i])) continue;
        // A text without sense is what is left of a page that was overwritten.
        if (record[i].Kind == Value::Type::Text && !TextIsPlausible(record[i].Bytes)) return false;
        ++strange;
    }
    return strange <= allowed;
}

RowPlace PlaceOf(const TableRows& table, PageNo page, const Cell& cell, const Record& record) {
    double line = table.Shape.HasLineNum ? record.front().Number() : 0;
    if (const auto key = table.Index.Keys.find(cell.Key);
        table.Index.Column == 0 && key != table.Index.Keys.end() && !record.front().IsNumber())
        line = key->second.Number();
    const bool confirmed = AskIndex(table.Index, cell.Key, record) != Witness::Contradicts;
    return {cell.Key, page, cell, line, confirmed, false};
}

void WalkTable(const PageFile& file, TableRows& table, PageSet& claimed) {
    Walk walk{file, table, claimed};
    WalkPage(walk, table.Shape.Root, {}, 0);
    DropRepeatedRows(table.Rows);
}

IndexFacts WalkIndex(const PageFile& file, PageNo root, std::size_t columns) {
    IndexWalk walk{file, columns, PageSet(file.Count + 1ULL, false), {}};
    walk.Facts.Complete = true;
    WalkIndexPage(walk, root, 0);
    return std::move(walk.Facts);
}

Witness AskIndex(const IndexFacts& index, std::int64_t rowId, const Record& record) {
    if (index.Column < 0 || static_cast<std::size_t>(index.Column) >= record.size()) {
        return Witness::Silent;
    }
    const auto found = index.Keys.find(rowId);
    if (found == index.Keys.end()) return index.Complete ? Witness::Contradicts : Witness::Silent;
    if (record[static_cast<std::size_t>(index.Column)].Kind == Value::Type::Lost)
        return Witness::Silent;
    return SameValue(found->second, record[static_cast<std::size_t>(index.Column)])
               ? Witness::Confirms
               : Witness::Contradicts;
}

bool IndexContradicts(const IndexFacts& index, const std::vector<std::int64_t>& rowIds,
                      const std::vector<Record>& records) {
    std::size_t differ = 0;
    for (std::size_t i = 0; i < rowIds.size(); ++i) {
        differ += AskIndex(index, rowIds[i], records[i]) == Witness::Contradicts;
    }
    return index.Complete && differ * 2 > rowIds.size();
}

}  // namespace zolmara::salvage
