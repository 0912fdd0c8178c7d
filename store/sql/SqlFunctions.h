#pragma once

// What SQLite lacks or means otherwise than the dialect.

struct sqlite3;

namespace zolmara {

/// Gives a connection the functions, aggregates and the text order that translated statements
/// rely on.
void RegisterSqlFunctions(sqlite3* handle);

}  // namespace zolmara
