#include "store/session/Signature.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

std::string SignatureText() {
    const auto master = gDB.OpenRecordset("SELECT * FROM Master;");
    if (Trim(StrOr(master["ESLastName"])).empty()) return {};
    return fmt::format("{} {}, {}, {}", Text(master["ESFirstName"]), Text(master["ESLastName"]),
                       Text(master["ESTitle"]), Text(master["ESDate"]));
}

}  // namespace zolmara
