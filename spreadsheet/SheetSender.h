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

/// Longer texts are cut: no cell of the form takes as much.
inline constexpr std::size_t kMaxSheetText = 64UL * 1024;

class SheetSender {
public:
    explicit SheetSender(int pipe) : pipe_(pipe) {}

    void Send(const SheetRow& row);
    void SendEnd(std::string_view reason);

private:
    void Number(std::uint64_t number);
    void Text(std::string_view text);
    void Flush();

    int pipe_;
    std::string buffer_;
};

}  // namespace zolmara
