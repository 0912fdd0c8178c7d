#pragma once

// The bytes of a file on their way to the system, piece by piece.

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include "core/Sha256.h"

namespace zolmara {

/// Writes a file from its beginning to its end. A long file is written by a thread of its own from
/// some point on, so that whoever makes the bytes does not wait for the system to take them; short
/// ones never are. One piece at most is being written while another waits. One thread calls.
class PieceWriter {
public:
    /// `file` is open for writing, and stays open until this is gone.
    explicit PieceWriter(int file) : file_(file) {}
    /// What was not written by then is given up.
    ~PieceWriter();
    PieceWriter(const PieceWriter&) = delete;
    PieceWriter& operator=(const PieceWriter&) = delete;

    /// From here on the digest of what passes is made.
    void KeepDigest() { digest_ = std::make_unique<Sha256>(); }
    bool KeepsDigest() const { return digest_ != nullptr; }

    /// How large a piece is best now: a short file shows early what the disk makes of it, a thread
    /// is not woken for little.
    std::size_t PieceSize() const { return std::size_t{1} << (thread_.joinable() ? 18 : 16); }
    /// Takes a piece and leaves an empty string, with room, in its place. What went wrong with
    /// this piece or an earlier one; then nothing more is written.
    std::error_code Take(std::string& piece);
    /// Waits until all that was taken is written.
    std::error_code Finish();

    /// Of all that was written, behind Finish. Needs KeepDigest ahead of the first piece.
    std::string Digest() const { return digest_->Hex(); }

private:
    bool HasThread();
    void HandOver(std::string& piece);
    void Work();
    std::error_code Write(std::string_view bytes);
    void BeginToStore();

    const int file_;
    std::unique_ptr<Sha256> digest_;
    std::size_t written_ = 0;

    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by the mutex once there is a thread.
    std::string next_;  ///< waits to be written; empty when none does
    bool busy_ = false;
    bool ends_ = false;
    std::error_code error_;
};

}  // namespace zolmara
