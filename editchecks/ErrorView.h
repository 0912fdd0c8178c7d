#pragma once

// What frmViewError shows, made ready for any front end.

#include <string>
#include <vector>

namespace zolmara {

/// A row of table Error.
struct Finding {
    std::string Level;
    std::string Code;
    std::string Message;
};

struct ErrorView {
    std::vector<Finding> Rows;    ///< in the order of finding
    int LongestMessage = 0;       ///< characters
    std::vector<int> RowHeights;  ///< twips each row needs for its lines
    int RowHeight = 0;            ///< twips of the message with the most lines; the grid's
    bool ErrorSeen = false;       ///< lblNonFatal is visible
    std::string Note;             ///< the text of lblNonFatal; empty without a blocking finding
    bool CanBuildECR = false;     ///< cmdBuildECR is enabled
};

inline constexpr int kLevelWidth = 1400;         ///< twips
inline constexpr int kCodeWidth = 700;           ///< twips
inline constexpr int kLeastMessageWidth = 2700;  ///< twips; it takes what is left
inline constexpr int kTwipsPerLine = 230;

/// Reads the findings of the last run, or the messages of the last import. A CRF that has had
/// neither gives no rows, and nothing can be built from it.
ErrorView ReadErrorView();

}  // namespace zolmara
