#include "store/harness/Faults.h"

#include <cstdlib>
#include <fstream>

#include "support/Paths.h"

namespace zolmara::test {

void PutFaultsIntoEnvironment(const FaultPlan& plan) {
    setenv("LD_PRELOAD", kFaultLibrary, 1);
    // A program that is built with a sanitizer wants that in front of everything else.
    setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
    setenv("ZOLMARA_FAULT_FOLDER", plan.Folder.c_str(), 1);
    setenv("ZOLMARA_FAULT_AT", std::to_string(plan.At).c_str(), 1);
    setenv("ZOLMARA_FAULT_ERROR", std::to_string(plan.Error).c_str(), 1);
    setenv("ZOLMARA_FAULT_ONLY", plan.Only.c_str(), 1);
    setenv("ZOLMARA_FAULT_REPORT", plan.Report.c_str(), 1);
}

FaultReport ReadFaultReport(const FaultPlan& plan) {
    FaultReport report;
    std::ifstream(plan.Report) >> report.Calls >> report.DroppedLocks;
    return report;
}

}  // namespace zolmara::test
