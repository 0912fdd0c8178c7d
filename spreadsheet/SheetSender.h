#pragma once

// How rows go through the pipe from the process that reads a file: numbers of 32 bits and texts
// with their length ahead. SheetProcess takes them.

#include <cstdint>
#include <string>
#include <string_view>

#include "spreadsheet/SheetRow.h"

namespace zolmara {

enum class SheetRecord : std::uint32_t {
    Row = 1,
    End = 2,  ///< with the reason why not all was read, or an empty text
};

/// Longer texts are cut: no cell of the form takes a quarter of it, and the import says so.
inline constexpr std::size_t kMaxSheetText = 1024;

class SheetSender {
public:
    /// `most`: bytes of all rows together.
    SheetSender(int pipe, std::uint64_t most) : pipe_(pipe), most_(most) {}

    /// UnreadableSheets for more than that: a few bytes of a file can say that a row stands there a
    /// million times.
    void Send(const SheetRow& row);
    void SendEnd(std::string_view reason);

private:
    void Number(std::uint64_t number);
    void Text(std::string_view text);
    void Flush();

    int pipe_;
    std::uint64_t most_;
    std::uint64_t sent_ = 0;
    std::string buffer_;
};

}  // namespace zolmara
