#pragma once

// What a computed cell is, as data: a rule in words of the form and a formula over other cells. A
// description names its cells from the one that it describes, so that one holds for a whole
// column. It is walked by the evaluator, the explanations and whatever else must know where a
// number comes from; nothing in it reads a cell by itself.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"
#include "worksheets/FormLines.h"

namespace zolmara {

/// A cell of the statement. The names are spelled as the worksheets and fields are.
struct CellRef {
    std::string Item;
    Currency Line;
    std::string Field;

    auto operator<=>(const CellRef&) const = default;
};

/// Another cell, told from the own one.
struct Place {
    enum class LineIs { Own, Fixed, OfColumn };  ///< OfColumn: the line of the own cost center
    enum class FieldIs { Own, Fixed, OfLine };   ///< OfLine: the column of the own line

    std::string_view Item = {};  ///< the own where empty; "?" in it stands for the own part
    LineIs Line = LineIs::Own;
    Currency At = {};  ///< the line, where it is fixed
    FieldIs FieldKind = FieldIs::Own;
    std::string_view Field = {};  ///< where it is fixed
};

/// Entries of another worksheet that are posted to the lines that they name.
struct EntrySource {
    enum class Condition { AmountAboveZero, LineAboveZero, AmountAndLine, LineOfA };

    std::string_view Item;
    std::string_view LineField;
    std::string_view AmountField;
    int Sign;
    Condition Takes;
};

/// True where the source takes an entry to be posted: the one on line `entry` of its worksheet,
/// which names `line`.
bool TakesEntry(const EntrySource& source, Currency entry, const Variant& line, double amount);

struct Closing;

enum class NodeKind {
    Nothing,   ///< Null: the form has nothing there
    Constant,  ///< Number, or Text where there is one
    Cell,      ///< copied from a cell
    Column,    ///< the cells of At's column on Lines
    Row,       ///< the cells of At's row in the cost centers of Classes; all where there are none
    Postings,  ///< the amounts of the entries that name the own line
    Name,      ///< of the cost center that At names; Null where there is none
    Sum,       ///< of all values of Parts, in their order, from 0 on
    Less,      ///< the first value less each of the others
    Product,
    Ratio,       ///< 0 where the divisor is 0
    Rounded,     ///< to Digits decimals
    InText,      ///< as its text form of 15 digits reads back
    InMoney,     ///< to four exact decimals
    UnlessZero,  ///< Null where the first part is 0, else the second
    KeptIfZero,  ///< what the last calculation left where the first part is 0, else the second
    KeptIf,      ///< what was keyed if the first part fulfils Number's or Text's condition, or Null
    Amended,     ///< "No" for 0, "Yes" for 1 to 9, "Error" for all else
    Closed,      ///< a share, the largest of which takes what rounding leaves
};

struct Node {
    NodeKind Kind = NodeKind::Nothing;
    std::vector<Node> Parts = {};
    Place At = {};
    std::vector<LineSpan> Lines = {};
    std::vector<CostClass> Classes = {};
    EntrySource Entries = {};
    double Number = 0;
    std::string_view Text = {};
    int Digits = 0;
    std::shared_ptr<const Closing> Group = {};
};

/// Shares of an amount that are rounded and must sum to it. Where they do not, one of them takes
/// the difference, kept in its text form.
struct Closing {
    enum class By { Size, Value };  ///< the largest absolute value, or the largest

    Node Share;
    Node Want;
    std::vector<std::string_view> Items = {};  ///< whose rows share; the own where empty
    LineSpan Lines;
    By Largest = By::Size;
    std::optional<Node> Weight = {};  ///< of which the largest is sought; the share without one
    bool OnlyAboveZero = false;       ///< no share takes the difference unless one is above 0
    bool LeavesZero = false;          ///< shares that sum to 0 stay
    bool WantFirst = false;           ///< share + wanted - got, not share - got + wanted
    std::string_view Because;         ///< "the largest amount"
    std::string_view Closes;          ///< "to close the column on the dollar"
};

/// A description and the cells that it holds for.
struct CellDescription {
    std::string Items;            ///< a worksheet, or a family with "?" for the part
    std::vector<LineSpan> Lines;  ///< all where empty
    std::string Field;            ///< a field, or "CC_*" for every cost center's
    std::string Words;            ///< the rule in words of the form
    Node Formula;
};

// --- Making descriptions ---------------------------------------------------------------------

/// All lines below one; a line alone; lines above one and below another.
LineSpan LinesBelow(Currency line);
LineSpan OnLine(Currency line);
LineSpan LinesBetween(Currency above, Currency below);
inline LineSpan OnLine(int line) { return OnLine(Currency::FromWhole(line)); }

/// A field on the own line; the own field on another; a cell of another worksheet.
Node Here(std::string_view field);
Node OnOther(Currency line);
Node There(std::string_view item, Currency line, std::string_view field);
/// The own line and column, or the own line and another column, of another worksheet.
Node SameCell(std::string_view item);
Node SameLine(std::string_view item, std::string_view field);
/// The own column on a line of another worksheet.
Node SameColumn(std::string_view item, Currency line);
Node CellAt(const Place& place);

/// The own column, or a field of another worksheet, on some lines.
Node ColumnOn(std::vector<LineSpan> lines);
Node ColumnOf(std::string_view item, std::string_view field, std::vector<LineSpan> lines);
/// The own row, or the same line of another worksheet, in the columns of cost centers.
Node RowOf(std::string_view item, std::vector<CostClass> classes = {});
Node PostingsOf(const EntrySource& source);
Node NameBy(std::string_view field);

Node Constant(double number);
Node Words(std::string_view text);
Node Sum(std::vector<Node> parts);
Node Less(std::vector<Node> parts);
/// `word` stands between the figures: 0.25 "of" an amount, 1.5 "times" a statistic.
Node Product(Node a, Node b, std::string_view word = "of");
Node Ratio(Node a, Node b);
Node Rounded(Node value, int digits);
/// A figure that a statement carries into the cell.
Node Stated(Node value);
Node Money(Node value);
Node Pair(NodeKind kind, Node first, Node second);
Node Closed(Closing closing);

}  // namespace zolmara
