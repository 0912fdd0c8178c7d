#pragma once

// What stands although the disk failed behind the last step of saving it.

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "store/base/StoreError.h"

namespace zolmara {

/// The end of the message; `stands` is such as "the change is in the file".
inline std::string UnconfirmedWords(std::string_view stands) {
    return fmt::format(
        "the disk failed behind the last step of saving: {}, and may be lost again if the power "
        "fails now",
        stands);
}

/// Raised where there is no way back any more: everybody sees what was saved, and only that it
/// would outlast a loss of power is not certain. Whoever takes it for a failure tells a lie.
class NotConfirmed : public StoreError {
public:
    NotConfirmed(const std::string& path, std::string_view stands)
        : StoreError(Kind::DiskFull, fmt::format("{}: {}", path, UnconfirmedWords(stands))) {}
};

}  // namespace zolmara
