#include "ecr/LocalSeal.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

#include "core/DigestFunctions.h"
#include "store/Files.h"

namespace zolmara {
namespace {

constexpr std::string_view kSealName = "LOCALSEAL-1:";

[[noreturn]] void Fail(const std::string& path) {
    FileFailed(path, std::error_code(errno, std::generic_category()));
}

void NeedDigest(int done) {
    if (done != 1) throw std::runtime_error("The digest of the local seal cannot be made.");
}

/// The SHA-256 of a file's content, in lower case hex.
std::string DigestOf(const std::string& path) {
    static constexpr std::size_t kChunk = std::size_t{1} << 16;
    const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> digest(EVP_MD_CTX_new(),
                                                                    EVP_MD_CTX_free);
    NeedDigest(digest && EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr) == 1 ? 1 : 0);
    std::ifstream file(path, std::ios::binary);
    if (!file) Fail(path);
    std::vector<char> chunk(kChunk);
    while (file) {
        file.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        NeedDigest(
            EVP_DigestUpdate(digest.get(), chunk.data(), static_cast<std::size_t>(file.gcount())));
    }
    if (file.bad()) Fail(path);
    std::array<unsigned char, 32> bytes{};
    NeedDigest(EVP_DigestFinal_ex(digest.get(), bytes.data(), nullptr));
    return fmt::format("{:02x}", fmt::join(bytes, ""));
}

}  // namespace

std::string SealLocally(const std::string& path, bool printImage) {
    std::string seal = std::string(kSealName) + DigestOf(path);
    const std::string line =
        printImage ? fmt::format("{} {}\r\n", kPiFingerprintMark, seal) : "4" + seal + "\r\n";
    std::ofstream file(path, std::ios::binary | std::ios::app);
    file << line << std::flush;
    if (!file) Fail(path);
    return seal;
}

}  // namespace zolmara
