#pragma once

// The tables of a rebuilding that two threads share.

#include <atomic>
#include <cstddef>
#include <deque>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "store/MemoryBeside.h"
#include "store/RebuildTables.h"
#include "store/base/TableDef.h"

namespace zolmara {

/// A table on its way.
struct RebuildPart {
    const RebuiltTable* Wanted;
    std::string Number;  ///< its name in memory, which is no table's of the file
    TableDef Old;
    TableDef New;
    std::string Columns;  ///< of the old one, as the new one has them
    std::size_t Cells = 0;
    std::string Aside = {};  ///< the database in memory where the old one stands
};
using RebuildParts = std::vector<const RebuildPart*>;

/// Tables that go to the second thread together. Each is made by the thread that takes it first.
class RebuildLot {
public:
    explicit RebuildLot(RebuildParts parts) : parts_(std::move(parts)), taken_(parts_.size()) {}

    const RebuildParts& Parts() const { return parts_; }
    /// Null where none is left.
    const RebuildPart* TakeFirst();
    const RebuildPart* TakeLast();

private:
    RebuildParts parts_;
    std::vector<std::atomic<bool>> taken_;
};
using RebuildLots = std::deque<RebuildLot>;

/// What the second thread has made of a lot.
struct MadeLot {
    RebuildParts Parts;
    std::optional<MemoryImage> Image;  ///< none without parts
};

/// The second thread. It works the lots in their order, each as soon as it is given. What it reads
/// of the parts must not change meanwhile.
class RebuildHelper {
public:
    /// Starts the thread, unless there are no lots or the system gives none.
    explicit RebuildHelper(RebuildLots& lots);
    /// Where the work ends early the thread is waited for; it ends behind the table in hand.
    ~RebuildHelper();
    RebuildHelper(const RebuildHelper&) = delete;
    RebuildHelper& operator=(const RebuildHelper&) = delete;

    bool IsThere() const { return thread_.joinable(); }
    /// The next lot's tables as they stand aside.
    void Give(MemoryImage aside) { asides_[given_++].set_value(std::move(aside)); }
    /// True where a lot is done and Take does not wait.
    bool HasMade(std::size_t lot) const;
    /// Once for each lot. What the thread failed with, StoreError or any other exception.
    MadeLot Take(std::size_t lot) { return made_[lot].get(); }

private:
    RebuildLots& lots_;
    std::vector<std::promise<MemoryImage>> asides_;
    std::size_t given_ = 0;
    std::vector<std::future<MadeLot>> made_;
    std::thread thread_;
};

}  // namespace zolmara
