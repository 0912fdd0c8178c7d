// Loaders of the keyed allocation schedules: B, B-1, C-1, D-1 and E-1.

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <memory>
#include <optional>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/ImportRun.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "store/TableCells.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"

namespace zolmara {

namespace {

/// The bounds of rows and columns are the import's own, as its messages name them.
struct KeyedSchedule {
    std::string_view Family;
    Range Columns;
    std::string_view ColumnList;
    bool TakesCost;  ///< line 53 of part 3, the cost to be allocated
    int Field;       ///< position of the one field; 0 for the cost center's column
};

constexpr KeyedSchedule kB = {"Bp", {1, 6}, "columns 1-6", false, 0};
constexpr KeyedSchedule kB1 = {"B1p", {8, 98.99}, "columns 8-98.99", false, 0};
constexpr KeyedSchedule kC1 = {"C1p", {1, 2.99}, "columns 1-2.99", true, 0};
constexpr KeyedSchedule kD1 = {"D1p", {8, 99}, "columns 8-99", true, 0};
constexpr KeyedSchedule kE1 = {"E1p", {1, 1}, "column 1", true, 3};

constexpr Range kComponents = {1, 50.99};

/// Both tests are made, so that a row may give two messages.
bool PassesRules(ImportRun& run, const KeyedSchedule& schedule, const std::string& item, int part,
                 const SourceRow& row) {
    bool passes = true;
    auto fail = [&](std::string_view rule) {
        run.Complain(item, row, fmt::format("Table {} only allows {}: ", item, rule));
        passes = false;
    };
    if (!InRange(schedule.Columns, row.Col)) fail(schedule.ColumnList);
    const bool isCost = schedule.TakesCost && part == 3 && row.Row == kCostToAllocate;
    if (!InRange(kComponents, row.Row) && !isCost) fail("rows 1-50.99");
    return passes;
}

/// The fields of a table that the columns stand for.
class Columns {
public:
    Columns(const KeyedSchedule& schedule, const std::string& item)
        : schedule_(schedule), item_(item) {}

    /// Position of the column's amounts; -1 where the table has no such column.
    int FieldOf(Currency column) {
        const auto known = fields_.find(column);
        return known != fields_.end() ? known->second : fields_[column] = Find(column);
    }

private:
    int Find(Currency column) const {
        const TableDef& table = gDB.Table(item_);
        const bool isLine = column.Units() % kSubscriptStep.Units() == 0;
        const int field = schedule_.Field != 0 ? schedule_.Field
                          : isLine             ? table.FieldIndex(CostCenterColumn(column))
                                               : -1;
        const bool isThere = field >= 0 && static_cast<std::size_t>(field) < table.Fields.size();
        if (!isThere) return -1;
        const FieldType type = table.Fields[static_cast<std::size_t>(field)].Type;
        return type == FieldType::dbDouble ? field : -1;
    }

    const KeyedSchedule& schedule_;
    std::string item_;
    std::map<Currency, int> fields_;
};

/// StoreError for what no field of a schedule can hold.
double AmountOf(const SourceRow& row) {
    constexpr double kMost = 1e308;  // that the file lets in
    const auto amount = ParseNumber(row.Contents);
    if (!amount || std::abs(*amount) > kMost)
        throw StoreError(StoreError::Kind::Other, "no amount: " + row.Contents);
    return *amount;
}

/// A table whose numbers are changed in memory. Where many of its lines have cells to load, that
/// is far less than a reading and a writing of each line.
class TargetTable {
public:
    explicit TargetTable(std::string item) : item_(std::move(item)) {}

    /// Stands on the line; the changes of the line before are kept first. False when there is no
    /// such line.
    bool GoTo(Currency line) {
        if (row_ && line_ == line) return true;
        Store();
        TableCells& cells = CellsOf(gDB, item_);
        const auto row = cells.RowOn(line);
        if (row) row_.emplace(cells, *row);
        line_ = line;
        return row.has_value();
    }

    void Set(int field, double amount) {
        if (field < 0) throw StoreError(StoreError::Kind::NoSuchItem, item_ + ": no such column");
        row_->Set(field, amount);
    }

    void Store() {
        if (row_) row_->Update();
        row_.reset();
    }

private:
    std::string item_;
    Currency line_;
    std::optional<RowEdit> row_;
};

/// True where the file has cells for a good part of the table's lines.
bool IsWorthTheTable(ImportRun& run, const std::string& item) {
    constexpr double kPart = 0.1;
    if (!gDB.HasTable(item)) return false;
    const double lines = NumOr(gDB.Scalar(fmt::format("SELECT Count(*) FROM {}", item)));
    return static_cast<double>(run.Staged().Lines(item)) >= kPart * lines;
}

template <class Target>
LoadOne IntoTarget(ImportRun& run, const KeyedSchedule& schedule, int part, Target& target) {
    const auto item = TableOf(schedule.Family, part);
    const auto columns = std::make_shared<Columns>(schedule, item);
    return [&run, &schedule, part, &target, item, columns](const SourceRow& row) -> std::string {
        if (!PassesRules(run, schedule, item, part, row)) return {};
        if (!target.GoTo(row.Row))
            return fmt::format("Table {} line {} doesn't exist: ", item, NumberText(row.Row));
        target.Set(columns->FieldOf(row.Col), AmountOf(row));
        return {};
    };
}

void LoadSchedule(ImportRun& run, const KeyedSchedule& schedule, int part) {
    const auto item = TableOf(schedule.Family, part);
    if (IsWorthTheTable(run, item)) {
        TargetTable table(item);
        ChangeCells(gDB, [&] {
            LoadRows(run, item, IntoTarget(run, schedule, part, table));
            table.Store();
        });
    } else {
        TargetRow target(item, "LineNum");
        LoadRows(run, item, target, IntoTarget(run, schedule, part, target));
    }
    TheWindows().RefreshOpenForms("");
}

}  // namespace

void Load_Bpx(ImportRun& run, int part) { LoadSchedule(run, kB, part); }
void Load_B1px(ImportRun& run, int part) { LoadSchedule(run, kB1, part); }
void Load_C1px(ImportRun& run, int part) { LoadSchedule(run, kC1, part); }
void Load_D1px(ImportRun& run, int part) { LoadSchedule(run, kD1, part); }
void Load_E1px(ImportRun& run, int part) { LoadSchedule(run, kE1, part); }

}  // namespace zolmara
