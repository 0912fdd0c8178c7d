#include "import/TextFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "core/Globals.h"
#include "store/Dao.h"
#include "store/files/FileGuard.h"

namespace zolmara {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

std::size_t SequenceLength(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte >= 0xF0) return 4;
    if (byte >= 0xE0) return 3;
    return byte >= 0xC0 ? 2 : 1;
}

/// The bytes at the end of a piece that begin a character which goes on behind it.
std::size_t UnfinishedTail(std::string_view piece) {
    const std::size_t furthest = std::min<std::size_t>(piece.size(), 3);
    for (std::size_t back = 1; back <= furthest; ++back) {
        const char byte = piece[piece.size() - back];
        if (!IsContinuation(byte)) return SequenceLength(byte) > back ? back : 0;
    }
    return 0;
}

/// Takes the last character off a line that was cut, since it may be but a part of one.
void DropLastCharacter(std::string& line) {
    while (!line.empty() && IsContinuation(line.back())) line.pop_back();
    if (!line.empty()) line.pop_back();
}

}  // namespace

TextFile::TextFile(const std::string& path) : path_(path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) Refuse("there is no such file");
    if (std::filesystem::is_directory(status)) Refuse("it is a folder");
    if (!std::filesystem::is_regular_file(status)) Refuse("it is no text file");
    // Not an open CRF: the closing of this file would drop SQLite's locks on it.
    NeedUnprotected(path);
    size_ = std::filesystem::file_size(path, error);
    file_.open(path, std::ios::binary);
    if (error || !file_) Refuse("it cannot be read");
    CheckEncoding();
}

void TextFile::Refuse(const std::string& reason) const {
    throw StoreError(StoreError::Kind::CannotOpen,
                     fmt::format("Unable to open the import file {}: {}.", path_, reason));
}

bool TextFile::FillBuffer() {
    buffer_.resize(kBufferSize);
    file_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (file_.bad()) Refuse("it cannot be read");
    buffer_.resize(static_cast<std::size_t>(file_.gcount()));
    at_ = 0;
    read_ += buffer_.size();
    return !buffer_.empty();
}

void TextFile::CheckEncoding() {
    std::string piece;
    while (utf8_ && FillBuffer()) {
        piece += buffer_;
        const auto tail = UnfinishedTail(piece);
        utf8_ = IsValidUtf8(std::string_view(piece).substr(0, piece.size() - tail));
        piece.erase(0, piece.size() - tail);
    }
    utf8_ = utf8_ && piece.empty();
    file_.clear();
    file_.seekg(0);
    read_ = 0;
    FillBuffer();
    if (buffer_.starts_with(kByteOrderMark)) at_ = kByteOrderMark.size();
}

void TextFile::Append(std::string& line, const char* from, const char* to) {
    const auto room = kMaxLine - line.size();
    const auto size = static_cast<std::size_t>(to - from);
    line.append(from, std::min(size, room));
    cut_ = cut_ || size > room;
    lost_ = lost_ || (size > room && std::any_of(from + room, to, [](char c) { return c != ' '; }));
}

/// Adds what the buffer holds of the line. True when its end was found.
bool TextFile::TakePiece(std::string& line) {
    const char* from = buffer_.data() + at_;
    const char* end = buffer_.data() + buffer_.size();
    if (afterReturn_ && from != end && *from == '\n') ++from;
    afterReturn_ = false;
    const char* stop = std::find_if(from, end, [](char c) { return c == '\n' || c == '\r'; });
    Append(line, from, stop);
    at_ = static_cast<std::size_t>(stop - buffer_.data());
    if (stop == end) return false;
    afterReturn_ = *stop == '\r';
    ++at_;
    return true;
}

bool TextFile::NextLine(std::string& line) {
    line.clear();
    cut_ = false;
    lost_ = false;
    bool ended = false;
    bool any = false;
    while (!ended) {
        if (at_ == buffer_.size() && !FillBuffer()) break;
        any = true;
        ended = TakePiece(line);
    }
    if (cut_ && utf8_) DropLastCharacter(line);
    if (!utf8_) line = FromCodePage1252(line);
    return any;
}

double TextFile::PartRead() const {
    return size_ == 0 ? 1 : static_cast<double>(read_) / static_cast<double>(size_);
}

}  // namespace zolmara
