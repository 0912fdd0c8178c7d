#include "ecr/Signature.h"

#include <fmt/format.h>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "ecr/Record.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::size_t kNameWidth = 36;

void WriteLine(EcrRun& run, int line, int column, const std::string& content) {
    run.ECRLine = fmt::format("3S000002  {}{}{}", LineField(Currency::FromWhole(line)),
                              ColumnField(column), content);
    run.WriteRecord();
}

}  // namespace

void ECR_Signature(EcrRun& run) {
    const Recordset master = gDB.OpenRecordset("SELECT * From Master;", dbOpenSnapshot);
    if (master.Eof() || !DateOf(master["ESDate"])) return;
    // The one text in the file that keeps its case.
    const std::string name = PadText(
        fmt::format("{} {}", Text(master["ESFirstName"]), Text(master["ESLastName"])), kNameWidth);
    WriteLine(run, 1, 1, name);
    WriteLine(run, 1, 2, "Y");
    WriteLine(run, 2, 1, name);
    WriteLine(run, 3, 1, PadText(Text(master["ESTitle"]), kNameWidth));
    WriteLine(run, 4, 1, Fortran(master["ESDate"], "D10", " ", false));
}

}  // namespace zolmara
