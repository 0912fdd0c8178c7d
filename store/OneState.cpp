#include "store/OneState.h"

#include "store/Connection.h"
#include "store/DatabaseImpl.h"

namespace zolmara {

OneState::OneState(Database& db) : db_(db), hasFile_(db.IsOpen()), version_(Version()) {}

/// The number goes up with each change that another connection commits.
std::int64_t OneState::Version() const {
    if (!hasFile_) return 0;
    const std::string& path = db_.Path();
    return Pragma(db_.impl().Handle, "data_version", path);
}

bool OneState::Holds() const { return Version() == version_; }

void OneState::NeedToHold(const std::string& written) const {
    if (Holds()) return;
    throw StoreError(
        StoreError::Kind::Locked,
        written +
            ": another program changed the statement meanwhile, so that the file would "
            "show a part of it from before and a part from after; nothing was written");
}

void RunInOneState(Database& db, const std::string& written,
                   const std::function<void(const OneState&)>& work) {
    const OneState state(db);
    try {
        work(state);
    } catch (const StoreError& error) {
        if (!error.IsFileError()) state.NeedToHold(written);
        throw;
    } catch (const std::exception&) {
        state.NeedToHold(written);
        throw;
    }
}

}  // namespace zolmara
