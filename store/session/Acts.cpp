// How a change is taken back.
//
// The store keeps of each batch the rows that it changed, before and after, by their rowids. Where
// a batch changes the shape of a table, or thousands of rows, it keeps a copy of the whole file as
// it was before, in the folder for temporary files. Either way what comes back is what was stored,
// to the last byte: keyed cells, and computed ones as they had been calculated.
//
// The file itself holds nothing of all this. A program that dies leaves it as it was saved last.

#include "store/session/Acts.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "core/Windows.h"
#include "store/session/ReadSession.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kElsewhere = "another program has changed the file";

/// Sets a value for as long as it lives.
template <class T>
class Meanwhile {
public:
    Meanwhile(T& place, T value) : place_(place), former_(std::exchange(place, std::move(value))) {}
    ~Meanwhile() { place_ = std::move(former_); }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    T& place_;
    T former_;
};

}  // namespace

Acts& TheActs() {
    // It outlives the open CRF, a global.
    static auto& acts = *new Acts;
    return acts;
}

void RunAct(const std::string& name, const std::function<void()>& work) {
    TheActs().Run(name, work);
}

void RunUnnamedAct(const std::function<void()>& work) { TheActs().RunUnnamed(work); }

// --- Acts ----------------------------------------------------------------------------------

void Acts::Attach() {
    if (!keep_ || !gDB.IsOpen() || gDB.IsReadOnly() || WatchOf(gDB) == this) return;
    Clear();
    WatchBatches(gDB, this);
}

void Acts::Run(const std::string& name, const std::function<void()>& work) {
    if (gDB.InBatch()) return RunBatch(gDB, work);
    Attach();
    std::vector<std::function<void()>> toDo;
    {
        const Meanwhile named(name_, joined_ ? std::string() : name);
        const Meanwhile running(running_, true);
        const Meanwhile waiting(onceSaved_, {});
        RunBatch(gDB, work);
        toDo = std::exchange(onceSaved_, {});
    }
    for (const auto& each : toDo) each();
}

void Acts::OnceSaved(std::function<void()> work) {
    if (!running_) return work();
    onceSaved_.push_back(std::move(work));
}

void Acts::RunUnnamed(const std::function<void()>& work) { Run("", work); }

void Acts::RunJoined(const std::function<void()>& work) {
    const Meanwhile joined(joined_, true);
    work();
}

void Acts::Keep(bool wanted) {
    keep_ = wanted;
    if (!wanted && gDB.IsOpen() && WatchOf(gDB) == this) {
        WatchBatches(gDB, nullptr);
        Clear();
    }
}

std::string Acts::NameOfUndo() const { return done_.empty() ? "" : done_.back()->Name; }
std::string Acts::NameOfRedo() const { return undone_.empty() ? "" : undone_.back()->Name; }

// --- What the store tells ------------------------------------------------------------------

std::shared_ptr<StateFile> Acts::CopyOfNow() {
    if (!folder_) {
        const std::string place = std::filesystem::temp_directory_path().string();
        ClearScratch(place);
        folder_ = std::make_unique<ScratchFolder>(place + "/undo");
    }
    return std::make_shared<StateFile>(gDB.Path(), folder_->File(fmt::format("{}.CRF", ++states_)));
}

std::shared_ptr<StateFile> Acts::KeepState() {
    if (applying_) return nullptr;
    try {
        return CopyOfNow();
    } catch (const std::exception&) {
        // The act itself needs no room there.
        return nullptr;
    }
}

void Acts::Committed(BatchChange change) {
    if (applying_) return;
    if (change.Unknown) return Forget("there was no room to keep what the file held before");
    if (name_.empty()) return unnamed_.push_back(std::move(change));
    if (!done_.empty()) std::ranges::move(unnamed_, std::back_inserter(done_.back()->Changes));
    unnamed_.clear();
    undone_.clear();
    why_.clear();
    done_.push_back(std::make_shared<Step>(Step{name_, {}}));
    done_.back()->Changes.push_back(std::move(change));
    TellChange();
}

void Acts::ChangedElsewhere() {
    changedElsewhere_ = true;
    Forget(std::string(kElsewhere));
}

void Acts::Gone() { Clear(); }

void Acts::Clear() {
    done_.clear();
    undone_.clear();
    unnamed_.clear();
    why_.clear();
    folder_.reset();
    TellChange();
}

void Acts::Forget(const std::string& why) {
    const bool any = CanUndo() || CanRedo();
    Clear();
    TellEmptied(any, why);
}

void Acts::TellEmptied(bool any, const std::string& why) {
    why_ = why;
    if (any) notice_ = fmt::format("What was done until now cannot be undone any more: {}.", why);
    TellChange();
}

std::string Acts::TakeNotice() { return std::exchange(notice_, {}); }

// --- Back and forth ------------------------------------------------------------------------

void Acts::NeedNoOther() const {
    if (changedElsewhere_)
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("{}: {}; nothing was undone", gDB.Path(), kElsewhere));
}

void Acts::Apply(BatchChange& change, bool forward) {
    if (change.Before) {
        if (!forward && !change.After) change.After = CopyOfNow();
        return BringBack(gDB, forward ? *change.After : *change.Before);
    }
    RunBatch(gDB, [&] {
        // The lock is held from here on.
        NeedNoOther();
        ApplyRows(gDB, change.Tables, forward);
    });
}

/// Each change is a transaction. Where one has been made and the next one fails, the list does
/// not fit the file any more.
void Acts::ApplyStep(Step& step, bool forward) {
    const std::size_t count = step.Changes.size();
    for (std::size_t i = 0; i < count; ++i) {
        try {
            Apply(step.Changes[forward ? i : count - 1 - i], forward);
        } catch (...) {
            if (i > 0) Forget("an act could be taken back in part only");
            throw;
        }
    }
}

void Acts::TakeBackUnnamed() {
    while (!unnamed_.empty()) {
        BatchChange last = unnamed_.back();
        Apply(last, false);
        if (!unnamed_.empty()) unnamed_.pop_back();
    }
}

void Acts::Move(Steps& from, Steps& to, bool forward) {
    changedElsewhere_ = false;
    gDB.HasTable("Master");  // a look at the file tells whether another program has written
    if (from.empty()) return;
    const auto step = from.back();
    {
        const Meanwhile applying(applying_, true);
        TakeBackUnnamed();
        ApplyStep(*step, forward);
    }
    from.pop_back();
    to.push_back(step);
    TellChange();
    TheWindows().EnableMenu("mnuReportSubmit", false);
    ReadSession();
    TheWindows().RefreshOpenForms("");
}

void Acts::Undo() { Move(done_, undone_, false); }

void Acts::Redo() { Move(undone_, done_, true); }

}  // namespace zolmara
