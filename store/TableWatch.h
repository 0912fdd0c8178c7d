#pragma once

// What a piece of work has read from and written to, for whoever wants to know whether doing it
// again would change anything.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

struct TableInfo;

/// The number of writes to a table so far, by whatever program; it lives as long as the file is
/// open. As long as it stays, the table holds what it held.
using WriteCount = std::shared_ptr<const std::int64_t>;

/// Notes, as long as it lives, the tables that statements on a database name. One at a time.
class TableWatch {
public:
    struct Use {
        std::string Table;
        WriteCount Writes;
        std::int64_t WritesBefore;  ///< when the table was first named
    };

    explicit TableWatch(Database& db);
    ~TableWatch();
    TableWatch(const TableWatch&) = delete;
    TableWatch& operator=(const TableWatch&) = delete;

    /// In the order in which they were first named.
    const std::vector<Use>& Tables() const { return uses_; }

    void Note(const TableInfo& table);

    /// While it lives, nothing is noted: somebody else has the floor.
    class Rest {
    public:
        explicit Rest(TableWatch& watch);
        ~Rest();
        Rest(const Rest&) = delete;
        Rest& operator=(const Rest&) = delete;

    private:
        TableWatch& watch_;
    };

private:
    void Listen(bool on);

    Database& db_;
    std::vector<Use> uses_;
};

/// True unless each row of the table is what it was when the open batch began. What is too much to
/// compare counts as a change.
bool ChangedInBatch(Database& db, const std::string& table);

/// Something to be kept as long as the file is open, by the one who keeps it.
std::shared_ptr<void>& AttachedTo(Database& db);

}  // namespace zolmara
