#pragma once

// One run of reports: the file that they go into and the page that they are laid out on. It goes
// along to all that print.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "print/PrintFile.h"

namespace zolmara {

inline constexpr std::int16_t kPortrait = 1;
inline constexpr std::int16_t kLandscape = 2;

/// The names of the page's values are given.
struct PrintRun {
    /// With a number below 1 each report of the run has a file of its own in the CRF's folder, and
    /// is sent to the printer.
    explicit PrintRun(FileNumber file = 0) : File(file) {}

    FileNumber File;                   ///< an open file
    std::int16_t gPageOrient = 0;      ///< kPortrait or kLandscape; 0 while no report is set up
    std::int16_t gPageWidth = 0;       ///< columns
    std::int16_t gPageCenter = 0;      ///< the centre column
    std::int16_t gPageLines = 0;       ///< lines before a break
    std::int16_t gPageOrientDone = 0;  ///< the orientation last written to the file; 0 none

    /// The user's own lines in the page head, as they stood when the report began.
    std::optional<std::vector<std::string>> HeaderLines = {};

    void SetPageLandscape();
    void SetPagePortrait();

    /// The page as it is set up, for a file that has been opened and has nothing in it.
    PrintRun For(FileNumber file) const;
};

}  // namespace zolmara
