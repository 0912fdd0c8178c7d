#include "worksheets/ExplainedStatements.h"

#include <fmt/format.h>

#include <fstream>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "support/Paths.h"
#include "worksheets/Descriptions.h"
#include "worksheets/Evaluator.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

constexpr std::size_t kMostFaults = 20;

void Import(const std::string& name) { ImportAsciiFile(std::string(kSamples) + "/" + name); }

std::string Exact(const Variant& value) {
    if (value.IsNull()) return "Null";
    return value.IsNumber() ? fmt::format("{:.17g}", value.Number()) : "\"" + Text(value) + "\"";
}

bool Same(const Variant& stored, const Variant& told) {
    if (stored.IsNumber() && told.IsNumber()) return stored.Number() == told.Number();
    return Exact(stored) == Exact(told);
}

using Rules = std::vector<const CellDescription*>;

/// All that speak of a column, not only the first that is found for a cell.
Rules RulesOf(std::string_view item, std::string_view field) {
    Rules rules;
    const auto add = [&](const CellDescription& rule) {
        if (HoldsItem(rule, item) && MatchesField(rule.Field, field)) rules.push_back(&rule);
    };
    for (const CellDescription* rule : AllDescriptions()) add(*rule);
    for (const CellDescription& rule : OverwrittenCells()) add(rule);
    return rules;
}

bool IsFigure(FieldType type) {
    return type == FieldType::dbDouble || type == FieldType::dbCurrency;
}

struct Proof {
    StoreCells Cells;
    Evaluator Walker{Cells};
    std::vector<std::string>& Faults;
    std::size_t Proved = 0;

    explicit Proof(std::vector<std::string>& faults) : Faults(faults) {}

    void Fault(const CellRef& cell, const std::string& what) {
        if (Faults.size() >= kMostFaults) return;
        Faults.push_back(
            fmt::format("{} line {} {}: {}", cell.Item, NumberText(cell.Line), cell.Field, what));
    }

    /// The one description of a cell; none, with a fault, where there is another number of them.
    const CellDescription* OnlyRule(const CellRef& cell, bool isFigure, const Rules& rules) {
        const CellDescription* only = nullptr;
        int count = 0;
        for (const CellDescription* rule : rules) {
            if (!HoldsLine(rule->Lines, cell.Line)) continue;
            only = rule;
            ++count;
        }
        if (count > 1) Fault(cell, fmt::format("{} descriptions", count));
        if (count == 0 && isFigure && IsComputedCell(cell.Item, cell.Line, cell.Field))
            Fault(cell, "no description");
        return count == 1 ? only : nullptr;
    }

    void Check(const CellRef& cell, const CellDescription& rule) {
        const Variant told = Walker.Value(rule.Formula, cell);
        const Variant stored = Cells.Value(cell);
        if (!Same(stored, told)) {
            Fault(cell, fmt::format("stored {}, told {}", Exact(stored), Exact(told)));
        }
        ++Proved;
    }

    void CheckColumn(const std::string& item, const FieldDef& field) {
        const Rules rules = RulesOf(item, field.Name);
        const CellDescription* last = nullptr;
        CellRef cell{item, {}, field.Name};
        for (const Currency line : Cells.Lines(item)) {
            cell.Line = line;
            const CellDescription* rule = OnlyRule(cell, IsFigure(field.Type), rules);
            if (rule == nullptr) continue;
            // What explanations find is that same one.
            if (rule != last && FindDescription(cell) != rule && FindOverwriting(cell) != rule)
                Fault(cell, "its description is not found");
            last = rule;
            Check(cell, *rule);
        }
    }

    void CheckSheet(const Worksheet& sheet) {
        const std::string item(sheet.Item);
        Cells.ReadAll(item);
        for (const FieldDef& field : gDB.Table(item).Fields)
            if (!SameText(field.Name, sheet.Key)) CheckColumn(item, field);
    }
};

}  // namespace

void MakeNorthfield(const TempFolder& folder) {
    CreateCrf(folder.File("Northfield.CRF"),
              {"287", "14-9012", "1/1/2023", "12/31/2023", "Northfield Health System"});
    Import("northfield.txt");
    Calc_All();
}

void MakeNorthfieldWithMistakes(const TempFolder& folder) {
    MakeNorthfield(folder);
    Import("northfield-mistakes.txt");
    Calc_All();
}

void MakeLarge(const TempFolder& folder, const bench::LargeShape& shape) {
    CreateCrf(folder.File("Large.CRF"), SampleFields());
    const std::string file = folder.File("large.txt");
    {
        std::ofstream out(file);
        bench::WriteLargeStatement(out, shape);
    }
    ImportAsciiFile(file);
    Calc_All();
}

std::size_t ProveDescriptions(std::vector<std::string>& faults) {
    Proof proof(faults);
    for (const Worksheet& sheet : AllWorksheets()) proof.CheckSheet(sheet);
    return proof.Proved;
}

std::map<std::string, std::string> AllCells() {
    std::map<std::string, std::string> cells;
    for (const Worksheet& sheet : AllWorksheets()) {
        Recordset rows =
            gDB.OpenRecordset(fmt::format("SELECT * FROM {};", sheet.Item), dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            for (int i = 1; i < rows.FieldCount(); ++i) {
                cells[fmt::format("{}|{}|{}", sheet.Item, Text(rows[0]), rows.FieldName(i))] =
                    Exact(rows[i]);
            }
        }
    }
    return cells;
}

}  // namespace zolmara::test
