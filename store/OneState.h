#pragma once

// Whether what is read from a file over some time is one state of it.

#include <cstdint>
#include <functional>
#include <string>

#include "store/Dao.h"

namespace zolmara {

/// Notes the state of a file, for whoever writes its content somewhere else and takes longer than
/// another program would wait for a lock (see ReadSnapshot): nobody is held off, and at the end it
/// is known whether another program has saved a change in between. Without an open file, and in a
/// batch, there is none.
class OneState {
public:
    explicit OneState(Database& db);

    /// StoreError where the file has been closed.
    bool Holds() const;
    /// StoreError::Locked, with the words of the file that was being written, unless it holds.
    void NeedToHold(const std::string& written) const;

private:
    std::int64_t Version() const;

    Database& db_;
    bool hasFile_;
    std::int64_t version_;
};

/// Writes something of a file elsewhere; `work` asks NeedToHold ahead of its last step. Where it
/// fails because lines or columns went or came meanwhile, it is that which is told.
void RunInOneState(Database& db, const std::string& written,
                   const std::function<void(const OneState&)>& work);

}  // namespace zolmara
