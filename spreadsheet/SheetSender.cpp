#include "spreadsheet/SheetSender.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>

#include "spreadsheet/SheetReaders.h"

namespace zolmara {

void SheetSender::Number(std::uint64_t number) {
    const auto narrow = static_cast<std::uint32_t>(number);
    buffer_.append(reinterpret_cast<const char*>(&narrow), sizeof narrow);
}

void SheetSender::Text(std::string_view text) {
    text = text.substr(0, kMaxSheetText);
    Number(text.size());
    buffer_ += text;
}

void SheetSender::Send(const SheetRow& row) {
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    Number(static_cast<std::uint32_t>(SheetRecord::Row));
    Text(row.Sheet);
    Number(static_cast<std::uint64_t>(row.Row));
    Text(row.Merged);
    Number(row.Cells.size());
    for (const SheetCell& cell : row.Cells) {
        Number(static_cast<std::uint64_t>(cell.Column));
        Number(static_cast<std::uint64_t>(cell.Kind));
        Text(cell.Text);
    }
    if (buffer_.size() >= kPiece) Flush();
    if (sent_ > most_)
        throw UnreadableSheets(
            fmt::format("its rows hold more than {} MB", most_ / (1024ULL * 1024ULL)));
}

void SheetSender::SendEnd(std::string_view reason) {
    Number(static_cast<std::uint32_t>(SheetRecord::End));
    Text(reason);
    Flush();
}

/// Nobody who could be told is left where the other end is closed.
void SheetSender::Flush() {
    std::string_view rest = buffer_;
    sent_ += rest.size();
    while (!rest.empty()) {
        const ssize_t sent = write(pipe_, rest.data(), rest.size());
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) _exit(1);
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    buffer_.clear();
}

}  // namespace zolmara
