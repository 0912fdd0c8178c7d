#pragma once

// Calls of the system that write, counted, and failing or deadly at a given one. The library of
// the same name stands in front of the system's own calls: linked into the tests, and preloaded
// into the programs that they start.

#include <string>
#include <vector>

extern "C" {
/// From here on the n-th call that changes a file below the folder fails with this error number,
/// or with -1 kills the process. Beginning with 1; 0 only counts. "only" names the calls that
/// count, "write,fsync"; empty for all.
void FaultsArm(const char* folder, int n, int error, const char* only);
/// The calls counted since then. Nothing is counted any more.
int FaultsDisarm();
/// How often a descriptor was closed while this process held locks of SQLite's kind on its file.
int FaultsDroppedLocks();
}

namespace zolmara::test {

/// The settings of the environment that do the same in a program that is started: the count of
/// the calls is written to the file `report`, and the number of dropped locks behind it.
struct FaultPlan {
    std::string Folder;
    int At = 0;
    int Error = -1;
    std::string Only;
    std::string Report;
};
/// They, "NAME=value" each, with the library preloaded.
std::vector<std::string> FaultEnvironment(const FaultPlan& plan);

/// What a program reported: calls and dropped locks; -1 when it died.
struct FaultReport {
    int Calls = -1;
    int DroppedLocks = -1;
};
FaultReport ReadFaultReport(const FaultPlan& plan);

}  // namespace zolmara::test
