#include "store/WrittenElsewhere.h"

#include "store/Connection.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

/// SQLite gives another number once another connection has committed.
std::int64_t DataVersion(Database& db) {
    return Pragma(db.impl().Handle, "data_version", db.Path());
}

}  // namespace

WrittenElsewhere::WrittenElsewhere(Database& db) : db_(db), before_(DataVersion(db)) {}

bool WrittenElsewhere::Happened() const { return DataVersion(db_) != before_; }

}  // namespace zolmara
