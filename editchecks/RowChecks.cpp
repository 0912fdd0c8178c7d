#include "editchecks/RowChecks.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/Cells.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {

void AddFinding(Severity level, std::string_view code, std::string_view message) {
    if (level == Severity::NonFatal) {
        AddNonFatal(code, message);
    } else {
        AddPotential(code, message);
    }
}

std::string Fill(std::string_view message, std::string_view name, std::string_view with) {
    return Replace(message, fmt::format("{{{}}}", name), with);
}

void CheckRow(const Section& section, const Recordset& row) {
    for (const RowCheck& check : section.Checks) {
        if (!check.Fails(row)) continue;
        const std::string message = Fill(check.Message, "line", KeyText(row));
        AddFinding(section.Level, check.Code, std::string(section.Prefix) + message);
    }
}

void RunSection(const Section& section) {
    Recordset rows = gDB.OpenRecordset(section.Statement, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) CheckRow(section, rows);
}

}  // namespace zolmara
