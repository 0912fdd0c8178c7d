#include "ecr/LocalSeal.h"

#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "core/Sha256.h"
#include "store/Files.h"

namespace zolmara {
namespace {

constexpr std::string_view kSealName = "LOCALSEAL-1:";

[[noreturn]] void Fail(const std::string& path) {
    FileFailed(path, std::error_code(errno, std::generic_category()));
}

}  // namespace

std::string DigestOfFile(const std::string& path) {
    static constexpr std::size_t kChunk = std::size_t{1} << 16;
    Sha256 digest;
    std::ifstream file(path, std::ios::binary);
    if (!file) Fail(path);
    std::string chunk(kChunk, ' ');
    while (file) {
        file.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        digest.Add(std::string_view(chunk).substr(0, static_cast<std::size_t>(file.gcount())));
    }
    if (file.bad()) Fail(path);
    return digest.Hex();
}

std::string SealLocally(const std::string& path, bool printImage, std::string_view digest) {
    std::string seal = fmt::format("{}{}", kSealName, digest);
    const std::string line =
        printImage ? fmt::format("{} {}\r\n", kPiFingerprintMark, seal) : "4" + seal + "\r\n";
    std::ofstream file(path, std::ios::binary | std::ios::app);
    file << line << std::flush;
    if (!file) Fail(path);
    return seal;
}

}  // namespace zolmara
