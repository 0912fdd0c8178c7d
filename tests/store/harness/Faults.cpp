#include "store/harness/Faults.h"

#include <fstream>

#include "support/Paths.h"

namespace zolmara::test {

std::vector<std::string> FaultEnvironment(const FaultPlan& plan) {
    return {std::string("LD_PRELOAD=") + kFaultLibrary,
            // A program that is built with a sanitizer wants that in front of everything else.
            "ASAN_OPTIONS=verify_asan_link_order=0", "ZOLMARA_FAULT_FOLDER=" + plan.Folder,
            "ZOLMARA_FAULT_AT=" + std::to_string(plan.At),
            "ZOLMARA_FAULT_ERROR=" + std::to_string(plan.Error), "ZOLMARA_FAULT_ONLY=" + plan.Only,
            "ZOLMARA_FAULT_REPORT=" + plan.Report};
}

FaultReport ReadFaultReport(const FaultPlan& plan) {
    FaultReport report;
    std::ifstream(plan.Report) >> report.Calls >> report.DroppedLocks;
    return report;
}

}  // namespace zolmara::test
