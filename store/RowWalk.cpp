#include "store/RowWalk.h"

#include <string>
#include <vector>

#include "store/DatabaseImpl.h"

namespace zolmara {

void WalkRows(Database& db, std::string_view select,
              const std::function<void(std::span<const Variant> row)>& onRow) {
    const auto refuse = [&](const std::string& text) {
        throw StoreError(StoreError::Kind::Other, text);
    };
    if (!db.IsOpen()) refuse("no Cost Report File is open");
    const std::string source(select);
    const RequestPtr request = db.impl().Ask(select, true);
    const sql::Translation& what = request->Statement->What;
    if (what.Kind != sql::Statement::Kind::Select || !what.Parameters.empty())
        refuse("only a SELECT statement without values is walked: " + source);
    // A statement of its own, so that whoever opens the same one meanwhile does not move it.
    SqliteStatement rows(db.impl().Handle, what.Sql);
    std::vector<Variant> row(what.Columns.size());
    while (rows.Step(source)) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int at = static_cast<int>(i);
            if (what.Columns[i].Typed)
                rows.Read(at, what.Columns[i].Field.Type, row[i]);
            else
                row[i] = rows.Value(at);
        }
        onRow(row);
    }
}

}  // namespace zolmara
