#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace zolmara::bench {

/// A new folder in a folder, which is removed with all that it holds.
class Scratch {
public:
    explicit Scratch(const std::string& folder) : path_(folder + "/run-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr)
            throw std::runtime_error("no folder can be made in " + folder);
    }
    ~Scratch() {
        std::error_code passedOver;
        std::filesystem::remove_all(path_, passedOver);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

}  // namespace zolmara::bench
