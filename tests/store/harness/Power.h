#pragma once

// The loss of power. The death of a program leaves all that it has written; the loss of power
// leaves what was synced, and of the rest as much or as little as the disk had come to.

#include <map>
#include <string>

extern "C" {
/// From here on the folder `beside` keeps what the disk holds for certain of the files in the
/// folder `below`: all that is there now, and what is synced from now on.
void PowerWatch(const char* below, const char* beside);
/// The library's own: a descriptor was synced.
void PowerSynced(int file);
}

namespace zolmara::test {

/// What came to the disk beyond what was synced.
enum class Beyond {
    Nothing,
    Statements,  ///< all that was written to Cost Report Files, and nothing of their journals
    Names,       ///< all names, given and taken, and no content
    Some,        ///< names or none, and of each file some pages
};

/// The files, by name, that a folder may have after the power went. `seed` chooses what Some is.
std::map<std::string, std::string> AfterPowerLoss(const std::string& below,
                                                  const std::string& beside, Beyond beyond,
                                                  unsigned seed);

}  // namespace zolmara::test
