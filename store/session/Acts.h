#pragma once

// Every change of the open CRF is an act with a name: one transaction, and one step that the user
// can take back. This is the one place that opens transactions on it.

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/BatchChange.h"
#include "store/files/Scratch.h"

namespace zolmara {

class Acts : private BatchWatch {
public:
    /// Runs a change of the open CRF as a batch (see RunBatch) and, where steps are kept and it
    /// changed anything, keeps it under its name: "Delete cost center 12.01 Marketing". Within
    /// another act it is a part of that one.
    void Run(const std::string& name, const std::function<void()>& work);
    /// The same for what no user wants to take back by itself: messages of a run, findings. It goes
    /// and comes with the act ahead of it.
    void RunUnnamed(const std::function<void()>& work);

    /// Does something when the act that is under way is in the file, and at once without one. Where
    /// the act is taken back, or ends in an error, it is not done. What it throws goes to whoever
    /// began the act, which stands.
    void OnceSaved(std::function<void()> work);

    /// As long as the work runs, the acts in it have no name of their own: they belong to the act
    /// ahead, as the figures do that follow an entry by themselves.
    void RunJoined(const std::function<void()>& work);

    /// Whether steps are kept, as the desktop program wants it. Off at first.
    void Keep(bool wanted);

    bool CanUndo() const { return !done_.empty(); }
    bool CanRedo() const { return !undone_.empty(); }
    /// The act that would be taken back, or done again; empty without one.
    std::string NameOfUndo() const;
    std::string NameOfRedo() const;
    /// How many steps there are to take back.
    std::size_t Depth() const { return done_.size(); }

    /// Takes the last act back, or does the last one that was taken back again: the tables are as
    /// they were before it, or after it. The way to the submission is shut, the session's identity
    /// and the open windows follow. Nothing happens without a step. StoreError when it cannot be
    /// done; the CRF is then as it was.
    void Undo();
    void Redo();

    /// What runs whenever the list has changed. It must not touch the CRF.
    void OnChange(std::function<void()> handler) { changed_ = std::move(handler); }

    /// Empties the list, and tells the user why when that takes a step away.
    void Forget(const std::string& why);
    /// Tells why the list, which has been emptied by a close, is empty; `any` says whether that
    /// took a step away.
    void TellEmptied(bool any, const std::string& why);
    /// Why the list was emptied last, as long as no act has followed.
    const std::string& WhyEmpty() const { return why_; }
    /// What the user is still to be told of that; empty when nothing. Asking takes it.
    std::string TakeNotice();
    bool HasNotice() const { return !notice_.empty(); }

private:
    struct Step {
        std::string Name;
        std::vector<BatchChange> Changes;
    };
    using Steps = std::vector<std::shared_ptr<Step>>;

    std::shared_ptr<StateFile> KeepState() override;
    void Committed(BatchChange change) override;
    void ChangedElsewhere() override;
    void Gone() override;

    void Attach();
    std::shared_ptr<StateFile> CopyOfNow();
    void NeedNoOther() const;
    void Apply(BatchChange& change, bool forward);
    void ApplyStep(Step& step, bool forward);
    void TakeBackUnnamed();
    void Move(Steps& from, Steps& to, bool forward);
    void Clear();
    void TellChange() const {
        if (changed_) changed_();
    }

    bool keep_ = false;
    bool applying_ = false;
    bool joined_ = false;
    bool changedElsewhere_ = false;
    bool running_ = false;
    std::vector<std::function<void()>> onceSaved_;
    std::string name_;
    Steps done_;
    Steps undone_;
    std::vector<BatchChange> unnamed_;  ///< since the last act
    std::unique_ptr<ScratchFolder> folder_;
    int states_ = 0;
    std::string why_;
    std::string notice_;
    std::function<void()> changed_;
};

/// The acts of the open CRF.
Acts& TheActs();

/// TheActs().Run and RunUnnamed.
void RunAct(const std::string& name, const std::function<void()>& work);
void RunUnnamedAct(const std::function<void()>& work);

}  // namespace zolmara
