#include "store/session/DeleteIfThere.h"

#include "store/PlainWords.h"
#include "store/session/Session.h"

namespace zolmara {

std::string DeleteIfThere(std::string_view name) {
    try {
        gDB.RefreshTableDefs();
        if (gDB.HasTable(name)) gDB.DeleteTable(name);
    } catch (const StoreError& error) {
        return PlainWords(error);
    }
    return {};
}

}  // namespace zolmara
