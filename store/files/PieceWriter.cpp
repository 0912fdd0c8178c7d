#include "store/files/PieceWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <utility>

namespace zolmara {
namespace {

/// From where on a thread is worth its start.
constexpr std::size_t kLong = std::size_t{1} << 20;

}  // namespace

PieceWriter::~PieceWriter() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        next_.clear();
        ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

std::error_code PieceWriter::Take(std::string& piece) {
    if (HasThread()) {
        HandOver(piece);
    } else {
        if (!error_) error_ = Write(piece);
        piece.clear();
    }
    const std::lock_guard lock(mutex_);
    return error_;
}

std::error_code PieceWriter::Finish() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return next_.empty() && !busy_; });
    return error_;
}

/// Where the system gives no thread the file is written without one.
bool PieceWriter::HasThread() {
    if (thread_.joinable()) return true;
    if (written_ < kLong) return false;
    try {
        thread_ = std::thread([this] { Work(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void PieceWriter::HandOver(std::string& piece) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return next_.empty(); });
    std::swap(next_, piece);
    changed_.notify_all();
}

void PieceWriter::Work() {
    std::string piece;
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [&] { return ends_ || !next_.empty(); });
        if (ends_) return;
        std::swap(piece, next_);
        busy_ = true;
        const bool failed = static_cast<bool>(error_);
        lock.unlock();
        changed_.notify_all();
        const std::error_code error = failed ? std::error_code() : Write(piece);
        piece.clear();
        lock.lock();
        busy_ = false;
        if (error) error_ = error;
        changed_.notify_all();
    }
}

std::error_code PieceWriter::Write(std::string_view bytes) {
    try {
        if (digest_) digest_->Add(bytes);
    } catch (const std::exception&) {
        return std::make_error_code(std::errc::io_error);
    }
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t written = ::write(file_, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return {errno, std::generic_category()};
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    written_ += bytes.size();
    BeginToStore();
    return {};
}

/// The disk begins to take a long file while the rest of it is made. Systems that cannot do it do
/// without: all of it is on the disk only when the file is synced.
void PieceWriter::BeginToStore() {
    if (written_ >= kLong) ::sync_file_range(file_, 0, 0, SYNC_FILE_RANGE_WRITE);
}

}  // namespace zolmara
