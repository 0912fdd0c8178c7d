// What depends on a cell: the descriptions read backwards.

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "worksheets/Build.h"
#include "worksheets/Descriptions.h"
#include "worksheets/Explain.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

/// What is known of the cells that a node may stand in, when it reads a given cell; what is not
/// known is every line or field that the description holds for.
struct Target {
    std::string Item;
    std::optional<Currency> Line;
    std::optional<std::string> Field;
};

class Backwards {
public:
    Backwards(const CellRef& read, Evaluator& walker) : read_(read), walker_(walker) {}

    std::set<CellRef> Users() {
        for (const CellDescription* description : AllDescriptions()) {
            description_ = description;
            Visit(description->Formula);
        }
        return std::move(users_);
    }

private:
    void Visit(const Node& node) {
        switch (node.Kind) {
            case NodeKind::Name:
                if (read_.Item == "CostCenters") AddItems(OwnItems(), {});
                VisitPlace(node);
                break;
            case NodeKind::Cell:
                VisitPlace(node);
                break;
            case NodeKind::Column:
                if (HoldsLine(node.Lines, read_.Line)) VisitPlace(node);
                break;
            case NodeKind::Row:
                VisitRow(node);
                break;
            case NodeKind::Postings:
                VisitEntries(node.Entries);
                break;
            case NodeKind::Closed:
                Visit(node.Group->Share);
                Visit(node.Group->Want);
                break;
            default:
                break;
        }
        for (const Node& part : node.Parts) Visit(part);
    }

    void VisitPlace(const Node& node) {
        const Place& place = node.At;
        const bool column = node.Kind == NodeKind::Column;
        Target target;
        switch (place.Line) {
            case Place::LineIs::Fixed:
                if (place.At != read_.Line) return;
                break;
            case Place::LineIs::OfColumn:
                target.Field = CostCenterColumn(read_.Line);
                break;
            case Place::LineIs::Own:
                if (!column) target.Line = read_.Line;
        }
        switch (place.FieldKind) {
            case Place::FieldIs::Fixed:
                if (place.Field != read_.Field) return;
                break;
            case Place::FieldIs::OfLine:
                if (!IsCostCenterColumn(read_.Field)) return;
                target.Line = LineOfColumn(read_.Field);
                break;
            case Place::FieldIs::Own:
                if (!target.Field) target.Field = read_.Field;
        }
        AddItems(ItemsFor(place.Item), target);
    }

    void VisitRow(const Node& node) {
        for (const std::string& item : ItemsFor(node.At.Item)) {
            const std::vector<std::string> columns =
                ColumnsOfRow(node, read_.Item, walker_.Cells());
            if (std::ranges::find(columns, read_.Field) == columns.end()) return;
            Add({item, read_.Line, std::nullopt});
        }
    }

    void VisitEntries(const EntrySource& source) {
        if (read_.Item != source.Item) return;
        if (read_.Field != source.AmountField && read_.Field != source.LineField) return;
        const Variant line =
            walker_.Cells().Value({read_.Item, read_.Line, std::string(source.LineField)});
        if (IsPosted(source, read_.Line, walker_.Cells())) {
            Add({description_->Items, CurOr(line), std::nullopt});
        }
    }

    /// The worksheets of the description from which a place's worksheet is the one that is read.
    std::vector<std::string> ItemsFor(std::string_view placed) const {
        std::vector<std::string> items = OwnItems();
        std::erase_if(items, [&](const std::string& item) {
            return ResolveItem(placed, {item, {}, {}}) != read_.Item;
        });
        return items;
    }

    /// Every worksheet of the description.
    std::vector<std::string> OwnItems() const {
        std::vector<std::string> items;
        for (const Worksheet& sheet : AllWorksheets()) {
            if (HoldsItem(*description_, sheet.Item)) items.emplace_back(sheet.Item);
        }
        return items;
    }

    void AddItems(const std::vector<std::string>& items, Target target) {
        for (const std::string& item : items) {
            target.Item = item;
            Add(target);
        }
    }

    /// Takes each cell of the target that the description holds for and that reads the cell.
    void Add(const Target& target) {
        CellSource& cells = walker_.Cells();
        for (const std::string& field : cells.Fields(target.Item)) {
            if (target.Field && *target.Field != field) continue;
            if (!MatchesField(description_->Field, field)) continue;
            if (target.Line) {
                AddCell({target.Item, *target.Line, field});
                continue;
            }
            for (const Currency line : cells.Lines(target.Item)) {
                AddCell({target.Item, line, field});
            }
        }
    }

    void AddCell(const CellRef& user) {
        const auto& lines = walker_.Cells().Lines(user.Item);
        if (!Holds(*description_, user) || users_.contains(user)) return;
        if (!std::ranges::binary_search(lines, user.Line)) return;
        bool reads = false;
        walker_.Inputs(description_->Formula, user,
                       [&](const CellRef& input) { reads = reads || input == read_; });
        if (reads || IsLineOfEntry(user)) users_.insert(user);
    }

    /// An entry's line number decides where its amount goes.
    bool IsLineOfEntry(const CellRef& user) const {
        return user.Item == "A" &&
               (read_.Item == "A6" || read_.Item == "A8" || read_.Item == "A81p1");
    }

    CellRef read_;
    Evaluator& walker_;
    const CellDescription* description_ = nullptr;
    std::set<CellRef> users_;
};

std::size_t OrderOf(std::string_view item) {
    return static_cast<std::size_t>(FindWorksheet(item) - AllWorksheets().data());
}

}  // namespace

std::vector<CellRef> Explainer::Uses(const CellRef& cell) {
    const std::set<CellRef> found = Backwards(cell, walker_).Users();
    std::vector<CellRef> users(found.begin(), found.end());
    std::ranges::stable_sort(users, {}, [](const CellRef& user) { return OrderOf(user.Item); });
    return users;
}

}  // namespace zolmara
