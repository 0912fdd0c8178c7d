#include "ecr/Emitters.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "ecr/EmitA6.h"
#include "ecr/EmitterTables.h"
#include "ecr/Record.h"
#include "ecr/Schedules.h"
#include "ecr/Signature.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

const LineForms* FormsOn(const CellEmitter& emitter, Currency line) {
    const auto found = std::ranges::find_if(
        emitter.Forms, [&](const LineForms& forms) { return forms.Lines.Holds(line); });
    return found == emitter.Forms.end() ? nullptr : &*found;
}

bool IsPassedOver(const CellEmitter& emitter, Currency line, int column) {
    return std::ranges::any_of(emitter.Passed, [&](const PassedOver& passed) {
        return passed.Lines.Holds(line) &&
               passed.Columns.find(static_cast<char>('0' + column)) != std::string_view::npos;
    });
}

std::string ValueField(const Variant& cell, const CellForm& form, std::string_view format) {
    if (form.NoDashes) return Fortran(Replace(Text(cell), "-", ""), format, " ", false);
    return Fortran(cell, format, " ", false);
}

/// Writes a worksheet's rows. Keeps the format of the last cell, for the column that has none.
class CellWriter {
public:
    CellWriter(EcrRun& run, const CellEmitter& emitter)
        : run_(run), emitter_(emitter), rows_(gDB.OpenRecordset(emitter.Query, dbOpenSnapshot)) {}

    void WriteAll() {
        for (; !rows_.Eof(); rows_.MoveNext()) {
            if (!emitter_.TakesRow || emitter_.TakesRow(rows_)) WriteRow();
            TheStatus().DoEvents();
        }
    }

private:
    void WriteRow() {
        const Currency line = CurOr(rows_[0]);
        const LineForms* const forms = FormsOn(emitter_, line);
        if (!forms) return;
        const std::string head =
            fmt::format("3{}  {}", emitter_.Code, LineField(line, emitter_.BlankZeroLine));
        for (int column = 1; column <= static_cast<int>(forms->Columns.size()); ++column) {
            const CellForm& form = forms->Columns[static_cast<std::size_t>(column - 1)];
            if (form.Format.empty() || IsPassedOver(emitter_, line, column)) continue;
            WriteCell(head, column, form);
        }
    }

    void WriteCell(const std::string& head, int column, const CellForm& form) {
        const Variant& cell = rows_[fmt::format("Col_{}", column)];
        if (!(emitter_.TakesCell ? emitter_.TakesCell : SaysSomething)(cell)) return;
        if (form.Format != kFormBefore) format_ = form.Format;
        run_.ECRLine = head;
        run_.ECRLine += ColumnField(column);
        run_.ECRLine += ValueField(cell, form, format_);
        run_.WriteRecord();
    }

    EcrRun& run_;
    const CellEmitter& emitter_;
    Recordset rows_;
    std::string_view format_;
};

}  // namespace

void ECR_Worksheet(EcrRun& run, std::string_view item) {
    if (SameText(item, "A6")) {
        ECR_A6(run);
    } else if (const CellEmitter* const cells = FindCellEmitter(item)) {
        CellWriter(run, *cells).WriteAll();
    } else if (const ScheduleEmitter* const schedule = FindScheduleEmitter(item)) {
        ECR_Schedule(run, *schedule, item);
    }
    if (SameText(item, "Sp1")) ECR_Signature(run);
}

void ECR_Type3(EcrRun& run) {
    Recordset worksheets = gDB.OpenRecordset(
        "SELECT Item, ItemName From Worksheets Where Calc_Lvl < 999 ORDER BY Item;",
        dbOpenSnapshot);
    for (; !worksheets.Eof(); worksheets.MoveNext()) {
        TheStatus().ShowCalcMsg("Producing Type 3 For Worksheet: " + Text(worksheets["ItemName"]));
        TheStatus().DoEvents();
        ECR_Worksheet(run, Text(worksheets["Item"]));
    }
}

}  // namespace zolmara
