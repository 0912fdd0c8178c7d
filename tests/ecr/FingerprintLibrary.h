#pragma once

// The tests' fingerprint library, put where the program looks for it.

#include <cstdlib>
#include <filesystem>
#include <string>

#include "ecr/EcrSupport.h"
#include "support/Paths.h"

namespace zolmara::test {

class FingerprintLibraryHere {
public:
    explicit FingerprintLibraryHere(const TempFolder& folder) : calls_(folder.File("calls.txt")) {
        std::filesystem::copy_file(kHcfafp, folder.File("libhcfafp.so"));
        setenv("HCFAFP_CALLS", calls_.c_str(), 1);
        SetMode("");
    }
    ~FingerprintLibraryHere() {
        unsetenv("HCFAFP_CALLS");
        unsetenv("HCFAFP_MODE");
    }
    FingerprintLibraryHere(const FingerprintLibraryHere&) = delete;
    FingerprintLibraryHere& operator=(const FingerprintLibraryHere&) = delete;

    /// "refuse": no seal, and not 0. "complain": sealed, and not 0. "short": a short text.
    /// "no image": no seal on print images. "third image": on the third one only.
    void SetMode(const std::string& mode) { setenv("HCFAFP_MODE", mode.c_str(), 1); }

    /// The arguments of every call: path, whether the text buffer was empty, and the numbers.
    Lines Calls() const;

private:
    std::string calls_;
};

}  // namespace zolmara::test
