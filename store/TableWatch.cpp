#include "store/TableWatch.h"

#include <algorithm>

#include "store/DatabaseImpl.h"

namespace zolmara {

TableWatch::TableWatch(Database& db) : db_(db) { Listen(true); }

TableWatch::~TableWatch() { Listen(false); }

void TableWatch::Listen(bool on) {
    if (db_.IsOpen()) db_.impl().Watch = on ? this : nullptr;
}

TableWatch::Rest::Rest(TableWatch& watch) : watch_(watch) { watch_.Listen(false); }

TableWatch::Rest::~Rest() { watch_.Listen(true); }

void TableWatch::Note(const TableInfo& table) {
    const bool known =
        std::ranges::any_of(uses_, [&](const Use& use) { return use.Writes == table.Version; });
    if (!known) uses_.push_back({table.Def.Name, table.Version, *table.Version});
}

bool ChangedInBatch(Database& db, const std::string& table) {
    return db.impl().Changes.ChangedTable(table);
}

std::shared_ptr<void>& AttachedTo(Database& db) { return db.impl().Attached; }

}  // namespace zolmara
