#include "cli/Findings.h"

#include "cli/Output.h"
#include "store/session/Session.h"

namespace zolmara::cli {

void PrintFindings() {
    auto rows = gDB.OpenRecordset("SELECT Level, Code, Message FROM Error;");
    PrintMessages(ListingOf(rows));
}

}  // namespace zolmara::cli
