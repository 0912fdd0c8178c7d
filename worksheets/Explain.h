#pragma once

// Where a number of the statement comes from, and what depends on it. A window or a command needs
// nothing but this: it names a cell and gets what is to be shown, and the cells to go on with.
//
//     Explainer explainer;                             // the open CRF as it stands now
//     const Explanation told = explainer.Explain({"A", Currency::FromWhole(8), "Col_8"});
//     for (const CellRef& input : told.Inputs) ...     // explain those when the tree is opened
//
// An explainer remembers what it has read: keep one while a tree is open, make a new one after an
// entry or a calculation. Worksheets and fields are named as their tables spell them. A cell that
// is not there is explained as empty. StoreError when the CRF cannot be read.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "worksheets/CellDescription.h"
#include "worksheets/CellSource.h"
#include "worksheets/Evaluator.h"

namespace zolmara {

enum class CellState {
    Keyed,     ///< the user's entry
    Computed,  ///< a calculation writes it from other cells
    Fixed,     ///< it comes with the form, the line or the component
};

/// "keyed", "computed", "fixed".
std::string_view NameOf(CellState state);

struct Explanation {
    CellRef Cell;
    std::string Name;   ///< "A-8, line 12, column 3"
    std::string Title;  ///< of its column as on the form; may be empty
    Variant Value;      ///< as stored: a number, a text or Null
    CellState Kind = CellState::Fixed;
    /// The rule in words of the form. Of a keyed cell: where it is keyed, and what a calculation
    /// does to it; forms/ExplainByForm.h tells it for the very cell. Where the stored figure is not
    /// what the formula comes to, that too.
    std::string Rule = {};
    /// The rule with the figures in it: "0.134482 of 1,250,000 = 168,102.50, rounded 168,103".
    /// Empty where there are none.
    std::string Formula = {};
    /// The cells that the formula reads, in its order, each once; empty unless it is computed.
    /// Cells of a sum that hold nothing are left out.
    std::vector<CellRef> Inputs = {};
};

class Explainer {
public:
    /// Of the open CRF.
    Explainer();
    /// Of whatever else holds a statement; it must outlive the explainer.
    explicit Explainer(CellSource& cells);

    Explanation Explain(const CellRef& cell);
    /// The same without formula and inputs, which cost the most: for a row of a list.
    Explanation Glance(const CellRef& cell);

    /// The computed cells whose formula reads the cell, in the order of worksheets, lines and
    /// columns. One that closes a column names what it must sum to only where it takes the
    /// difference.
    std::vector<CellRef> Uses(const CellRef& cell);

    /// The keyed cells that a number finally rests on, each once, in the order in which they are
    /// met. Cells that hold nothing are left out. A keyed cell rests on itself.
    std::vector<CellRef> Trace(const CellRef& cell);

    Evaluator& Walker() { return walker_; }

private:
    const std::string& TitleOf(const CellRef& cell);

    std::map<std::string, std::map<std::string, std::string>> titles_;
    std::unique_ptr<StoreCells> own_;
    CellSource& cells_;
    Evaluator walker_;
};

/// Where a worksheet, the cost centers or the bases are keyed: "the editor of worksheet A-8".
std::string EditorOf(std::string_view item);
/// What is told of a cell that comes with the form, the line or the component.
std::string FixedRule(const CellRef& cell);

/// What a cell is, without reading anything but its description.
CellState StateOf(const CellRef& cell);

/// The formula with its figures; explanations show it.
std::string FormulaInFigures(const Node& formula, const CellRef& own, Evaluator& walker);
/// A figure as explanations show it: commas, decimals where there are some.
std::string Figure(double value);

}  // namespace zolmara
