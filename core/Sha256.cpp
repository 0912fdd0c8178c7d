#include "core/Sha256.h"

#include <fmt/format.h>

#include <array>
#include <stdexcept>

#include "core/DigestFunctions.h"

namespace zolmara {
namespace {

using Context = std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)>;

void Need(bool done) {
    if (!done) throw std::runtime_error("The digest of the local seal cannot be made.");
}

Context NewContext() {
    Context context(EVP_MD_CTX_new(), [](EVP_MD_CTX* old) { EVP_MD_CTX_free(old); });
    Need(context != nullptr);
    return context;
}

}  // namespace

struct Sha256::State {
    Context Digest = NewContext();
};

Sha256::Sha256() : state_(std::make_unique<State>()) {
    Need(EVP_DigestInit_ex(state_->Digest.get(), EVP_sha256(), nullptr) == 1);
    // The functions are found here, so that another thread may add bytes.
    Add("");
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes) {
    Need(EVP_DigestUpdate(state_->Digest.get(), bytes.data(), bytes.size()) == 1);
}

std::string Sha256::Hex() const {
    const Context ended = NewContext();
    std::array<unsigned char, 32> bytes{};
    Need(EVP_MD_CTX_copy_ex(ended.get(), state_->Digest.get()) == 1);
    Need(EVP_DigestFinal_ex(ended.get(), bytes.data(), nullptr) == 1);
    return fmt::format("{:02x}", fmt::join(bytes, ""));
}

}  // namespace zolmara
