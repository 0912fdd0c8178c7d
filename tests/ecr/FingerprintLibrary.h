#pragma once

// The tests' fingerprint library, put where the program looks for it.

#include <filesystem>
#include <string>

#include "ecr/EcrSupport.h"
#include "support/EnvironmentValue.h"
#include "support/Paths.h"

namespace zolmara::test {

class FingerprintLibraryHere {
public:
    explicit FingerprintLibraryHere(const TempFolder& folder) : calls_(folder.File("calls.txt")) {
        std::filesystem::copy_file(kHcfafp, folder.File("libhcfafp.so"));
    }

    /// "refuse": no seal, and not 0. "complain": sealed, and not 0. "short": a short text.
    /// "no image": no seal on print images. "third image": on the third one only.
    void SetMode(const std::string& mode) { mode_.Set(mode); }

    /// The arguments of every call: path, whether the text buffer was empty, and the numbers.
    Lines Calls() const;

private:
    std::string calls_;
    EnvironmentValue callsFile_{"HCFAFP_CALLS", calls_};
    EnvironmentValue mode_{"HCFAFP_MODE", ""};
};

}  // namespace zolmara::test
