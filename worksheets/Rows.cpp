#include "worksheets/Rows.h"

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

Currency LineOf(const Recordset& rows) { return CurOr(rows.Value(0)); }

double SumOf(std::string_view sql, std::initializer_list<Variant> args) {
    return NumOr(gDB.Scalar(sql, args));
}

}  // namespace zolmara
