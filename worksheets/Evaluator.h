#pragma once

// The one walker of descriptions: what a formula comes to, and which cells it reads.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "worksheets/CellDescription.h"
#include "worksheets/CellSource.h"

namespace zolmara {

/// The own part's digit in place of "?"; the own worksheet where nothing is named.
std::string ResolveItem(std::string_view item, const CellRef& own);
/// The cell that a place means.
CellRef Resolve(const Place& place, const CellRef& own);
bool HoldsLine(const std::vector<LineSpan>& lines, Currency line);
/// True for "CC_*" and a cost center's column, or the same name.
bool MatchesField(std::string_view pattern, std::string_view field);
/// The columns of a row that a Row node takes, in their order.
std::vector<std::string> ColumnsOfRow(const Node& row, const std::string& item, CellSource& cells);
/// True where the entry on the line is posted.
bool IsPosted(const EntrySource& source, Currency entry, CellSource& cells);

/// Shares that were rounded, and who takes what is left.
struct ClosedShares {
    double Got = 0;
    double Want = 0;
    bool Moves = false;   ///< one of them takes the difference
    bool AllZero = true;  ///< none is the largest: the first one takes it
    std::string Item;     ///< whose row does
    Currency Line;
};

class Evaluator {
public:
    explicit Evaluator(CellSource& cells) : cells_(cells) {}

    /// What the formula comes to for the own cell.
    Variant Value(const Node& node, const CellRef& own);
    double Number(const Node& node, const CellRef& own);
    /// Each value of a node that has many, such as a column; the one of any other.
    void EachNumber(const Node& node, const CellRef& own, const std::function<void(double)>& take);
    const ClosedShares& Shares(const Closing& closing, const CellRef& own);
    /// The own share as it is rounded, whoever takes the difference: a number, or Null.
    Variant Share(const Closing& closing, const CellRef& own);

    using Visit = std::function<void(const CellRef&)>;
    /// The cells that the formula reads, each as often as it does. The cells of the other shares of
    /// an allocation are left out; what it must sum to is named where the own share takes the
    /// difference.
    void Inputs(const Node& node, const CellRef& own, const Visit& visit);

    CellSource& Cells() { return cells_; }

private:
    /// The shares of a worksheet's column, in the order of its lines.
    using ShareColumn = std::vector<std::pair<Currency, std::optional<double>>>;
    /// All shares of an amount. Each is worked out once, however many of its cells are asked for.
    struct Group {
        ClosedShares Result;
        std::map<std::string, ShareColumn> Shares = {};  ///< by worksheet
    };

    Variant ClosedValue(const Closing& closing, const CellRef& own);
    double SumOf(const Node& node, const CellRef& own);
    /// The first number less all others.
    double RestOf(const Node& node, const CellRef& own);
    void PostingInputs(const EntrySource& source, const CellRef& own, const Visit& visit);
    Group& GroupOf(const Closing& closing, const CellRef& own);
    void Gather(Group& group, const Closing& closing, const CellRef& own);
    Variant KeptIf(const Node& node, const CellRef& own);
    const std::vector<std::string>& RowColumns(const Node& row, const std::string& item);

    CellSource& cells_;
    /// By what they close, and their worksheet and column; the parts of a schedule are one.
    std::map<std::tuple<const Closing*, std::string, std::string>, Group> groups_;
    std::map<std::pair<std::string, std::vector<CostClass>>, std::vector<std::string>> rows_;
};

}  // namespace zolmara
