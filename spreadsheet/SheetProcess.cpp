#include "spreadsheet/SheetProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

#include "core/SharedLibrary.h"
#include "spreadsheet/SheetSender.h"
#include "store/Dao.h"
#include "store/files/FileGuard.h"

namespace zolmara {

namespace {

// --- In the process of its own ---------------------------------------------------------------

/// The address space that is in use, in bytes.
[[maybe_unused]] std::uint64_t UsedMemory() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

void Limit(int resource, std::uint64_t amount) {
    const rlimit limit{static_cast<rlim_t>(amount), static_cast<rlim_t>(amount)};
    setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

void SetLimits(const SheetLimits& limits) {
    // The sanitizers take all addresses at their start, and look at an object through a pipe.
#if !defined(__SANITIZE_ADDRESS__)
    Limit(RLIMIT_AS, UsedMemory() + limits.MemoryBytes);
    Limit(RLIMIT_NOFILE, 0);
#endif
    Limit(RLIMIT_CPU, limits.CpuSeconds);
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_FSIZE, 0);
}

/// Closes everything but the two: an open CRF is not this process's business.
void CloseAllBut(int one, int other) {
    const auto [low, high] = std::minmax(one, other);
    close_range(3, static_cast<unsigned>(low) - 1, 0);
    if (high > low + 1)
        close_range(static_cast<unsigned>(low) + 1, static_cast<unsigned>(high) - 1, 0);
    close_range(static_cast<unsigned>(high) + 1, ~0U, 0);
}

std::string WholeFile(int file, std::uint64_t size) {
    std::string content(size, '\0');
    std::size_t at = 0;
    while (at < content.size()) {
        const ssize_t got = read(file, content.data() + at, content.size() - at);
        if (got <= 0) throw UnreadableSheets("it cannot be read");
        at += static_cast<std::size_t>(got);
    }
    return content;
}

using Reader = void (*)(std::string_view, const TakeRow&);

Reader ReaderOf(SheetFileKind kind) {
    switch (kind) {
        case SheetFileKind::Xlsx:
            return ReadXlsx;
        case SheetFileKind::Ods:
            return ReadOds;
        case SheetFileKind::Csv:
            return ReadCsv;
    }
    return ReadCsv;
}

constexpr const char* kTooMuchMemory = "it takes more memory than a file of cells may";

/// Reads the file and sends its rows; never comes back.
[[noreturn]] void Work(int file, std::uint64_t size, int pipe, SheetFileKind kind,
                       const SheetLimits& limits) {
    SheetSender sender(pipe, limits.RowBytes);
    try {
        CloseAllBut(file, pipe);
        SetLimits(limits);
        const std::string content = WholeFile(file, size);
        ReaderOf(kind)(content, [&](const SheetRow& row) { sender.Send(row); });
        sender.SendEnd("");
    } catch (const UnreadableSheets& error) {
        sender.SendEnd(error.what());
    } catch (const std::bad_alloc&) {
        sender.SendEnd(kTooMuchMemory);
    } catch (const std::exception& error) {
        sender.SendEnd(std::string("it is broken: ") + error.what());
    }
    _exit(0);
}

// --- In the program --------------------------------------------------------------------------

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
    throw StoreError(StoreError::Kind::CannotOpen,
                     fmt::format("Unable to open the import file {}: {}.", path, reason));
}

Descriptor OpenChecked(const std::string& path, const SheetLimits& limits, std::uint64_t& size) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) Refuse(path, "there is no such file");
    if (std::filesystem::is_directory(status)) Refuse(path, "it is a folder");
    if (!std::filesystem::is_regular_file(status)) Refuse(path, "it is no file of cells");
    NeedUnprotected(path);
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat facts {};
    if (!file.IsOpen() || fstat(file.Number(), &facts) != 0 || !S_ISREG(facts.st_mode))
        Refuse(path, "it cannot be read");
    size = static_cast<std::uint64_t>(facts.st_size);
    if (size > limits.FileBytes)
        Refuse(path,
               fmt::format("it is larger than {} MB", limits.FileBytes / (1024ULL * 1024ULL)));
    return file;
}

}  // namespace

SheetProcess::SheetProcess(const std::string& path, SheetFileKind kind, const SheetLimits& limits) {
    const Descriptor file = OpenChecked(path, limits, size_);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) Refuse(path, std::strerror(errno));
    pipe_ = Descriptor(ends[0]);
    const Descriptor writing(ends[1]);
    // The process that reads may open nothing any more.
    ZipLibrary().Load();
    child_ = fork();
    if (child_ < 0) Refuse(path, std::strerror(errno));
    if (child_ == 0) Work(file.Number(), size_, writing.Number(), kind, limits);
}

SheetProcess::~SheetProcess() {
    if (child_ <= 0) return;
    kill(child_, SIGKILL);
    while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) continue;
}

double SheetProcess::PartRead() const {
    // The rows take about as much room as the file's own text, which may be packed ten to one.
    constexpr double kUnpacked = 8;
    const double part = static_cast<double>(received_) / (kUnpacked * static_cast<double>(size_));
    return std::min(part, 1.0);
}

/// Sees to it that so many bytes lie ready. False where the process ends before that.
bool SheetProcess::Fill(std::size_t bytes) {
    constexpr std::size_t kPiece = std::size_t{256} * 1024;
    if (buffer_.size() - at_ >= bytes) return true;
    buffer_.erase(0, at_);
    at_ = 0;
    while (buffer_.size() < bytes) {
        const std::size_t had = buffer_.size();
        buffer_.resize(had + kPiece);
        const ssize_t got = read(pipe_.Number(), buffer_.data() + had, kPiece);
        buffer_.resize(had + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        received_ += static_cast<std::uint64_t>(got);
    }
    return true;
}

namespace {
/// What arrives is not believed: the process may be in a stranger's hands.
struct BrokenStream {};
}  // namespace

std::uint32_t SheetProcess::TakeNumber() {
    std::uint32_t number = 0;
    if (!Fill(sizeof number)) throw BrokenStream{};
    std::memcpy(&number, buffer_.data() + at_, sizeof number);
    at_ += sizeof number;
    return number;
}

std::string SheetProcess::TakeText() {
    const std::uint32_t size = TakeNumber();
    if (size > kMaxSheetText || !Fill(size)) throw BrokenStream{};
    std::string text = buffer_.substr(at_, size);
    at_ += size;
    return text;
}

SheetRow SheetProcess::TakeRecord() {
    SheetRow row;
    row.Sheet = TakeText();
    row.Row = TakeNumber();
    row.Merged = TakeText();
    const std::uint32_t count = TakeNumber();
    if (count > static_cast<std::uint32_t>(kMaxSheetColumns)) throw BrokenStream{};
    for (std::uint32_t i = 0; i < count; ++i) {
        SheetCell cell;
        const std::uint32_t column = TakeNumber();
        const std::uint32_t kind = TakeNumber();
        if (column >= static_cast<std::uint32_t>(kMaxSheetColumns) ||
            kind > static_cast<std::uint32_t>(SheetCellKind::Formula))
            throw BrokenStream{};
        cell.Column = static_cast<int>(column);
        cell.Kind = static_cast<SheetCellKind>(kind);
        cell.Text = TakeText();
        row.Cells.push_back(std::move(cell));
    }
    return row;
}

std::optional<SheetRow> SheetProcess::Next() {
    if (ended_) return std::nullopt;
    try {
        if (TakeNumber() == static_cast<std::uint32_t>(SheetRecord::Row)) return TakeRecord();
        End(TakeText());
    } catch (const BrokenStream&) {
        End(WordsOfDeath());
    }
    return std::nullopt;
}

void SheetProcess::End(const std::string& failure) {
    ended_ = true;
    failure_ = failure;
}

std::string SheetProcess::WordsOfDeath() {
    int status = 0;
    kill(child_, SIGTERM);  // one that still runs has sent what nobody can read
    while (waitpid(child_, &status, 0) < 0 && errno == EINTR) continue;
    child_ = -1;
    if (WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL))
        return "it takes more time or memory than a file of cells may";
    return "it is so broken that its reader gave up";
}

}  // namespace zolmara
