#include "store/RebuildLots.h"

#include <fmt/format.h>

#include <chrono>
#include <exception>
#include <map>
#include <system_error>
#include <utility>

#include "store/base/TableSql.h"

namespace zolmara {
namespace {

TableDef Numbered(const RebuildPart& part, TableDef table) {
    table.Name = part.Number;
    return table;
}

/// What is stored fits its field already. Fields without a type spare every cell the conversion to
/// it, which is a fifth of the work.
void ForgetTypes(MemoryWork& work, const RebuildParts& parts) {
    std::map<std::string, std::string> definitions;
    for (const RebuildPart* const part : parts)
        definitions[part->Number] = CreateUntypedSql(Numbered(*part, part->Old));
    work.Redeclare("main", definitions);
}

void TellTypes(MemoryWork& work, const RebuildParts& parts) {
    std::map<std::string, std::string> definitions;
    for (const RebuildPart* const part : parts)
        definitions[part->Number] = CreateTableSql(Numbered(*part, part->New));
    work.Redeclare("made", definitions);
}

MadeLot MakeLot(RebuildLot& lot, MemoryImage aside) {
    MemoryWork work(std::move(aside));
    ForgetTypes(work, lot.Parts());
    MadeLot made;
    while (const RebuildPart* const part = lot.TakeFirst()) {
        work.Run(CreateUntypedSql(Numbered(*part, part->New), "made"));
        work.Run(fmt::format("INSERT INTO made.{0} SELECT {1} FROM main.{0}", Quoted(part->Number),
                             part->Columns));
        made.Parts.push_back(part);
    }
    if (made.Parts.empty()) return made;
    TellTypes(work, made.Parts);
    made.Image.emplace(work.Made());
    return made;
}

/// A lot that fails is told where its result is looked for; what follows it is not begun.
void MakeLots(RebuildLots& lots, std::vector<std::future<MemoryImage>> asides,
              std::vector<std::promise<MadeLot>> made) {
    std::exception_ptr failure;
    for (std::size_t i = 0; i < lots.size(); ++i) {
        try {
            if (failure) std::rethrow_exception(failure);
            if (i == 0 && TheRebuildShares().Ahead) TheRebuildShares().Ahead();
            made[i].set_value(MakeLot(lots[i], asides[i].get()));
        } catch (...) {
            failure = std::current_exception();
            made[i].set_exception(failure);
        }
    }
}

}  // namespace

const RebuildPart* RebuildLot::TakeFirst() {
    for (std::size_t i = 0; i < parts_.size(); ++i)
        if (!taken_[i].exchange(true)) return parts_[i];
    return nullptr;
}

const RebuildPart* RebuildLot::TakeLast() {
    for (std::size_t i = parts_.size(); i-- > 0;)
        if (!taken_[i].exchange(true)) return parts_[i];
    return nullptr;
}

RebuildHelper::RebuildHelper(RebuildLots& lots) : lots_(lots), asides_(lots.size()) {
    if (lots.empty()) return;
    std::vector<std::future<MemoryImage>> asides;
    for (auto& aside : asides_) asides.push_back(aside.get_future());
    std::vector<std::promise<MadeLot>> made(lots.size());
    for (auto& one : made) made_.push_back(one.get_future());
    try {
        thread_ = std::thread(MakeLots, std::ref(lots), std::move(asides), std::move(made));
    } catch (const std::system_error&) {
        // The other thread takes all the tables.
    }
}

RebuildHelper::~RebuildHelper() {
    if (!IsThere()) return;
    for (RebuildLot& lot : lots_)
        while (lot.TakeLast()) continue;
    // A lot that was not given will not be.
    asides_.clear();
    thread_.join();
}

bool RebuildHelper::HasMade(std::size_t lot) const {
    if (!IsThere()) return false;
    if (TheRebuildShares().SecondAlone) made_[lot].wait();
    return made_[lot].wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace zolmara
