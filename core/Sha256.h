#pragma once

// The digest SHA-256 of bytes that pass.

#include <memory>
#include <string>
#include <string_view>

namespace zolmara {

class Sha256 {
public:
    /// std::runtime_error, here and below, when the system's library makes no digests.
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view bytes);
    /// The digest of all bytes so far, in lower case hex. More may be added.
    std::string Hex() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace zolmara
