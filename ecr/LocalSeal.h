#pragma once

// The local seal: what seals the submission files where the government's fingerprint library is
// not at hand. It shows whether a file has been changed; the contractor does not accept it.

#include <cstddef>
#include <string>
#include <string_view>

namespace zolmara {

inline constexpr std::size_t kFingerprintLength = 76;

/// What a line of a sealed print image begins with.
inline constexpr std::string_view kPiFingerprintMark = "***FINGERPRINT";

/// The SHA-256 of a file, in lower case hex. StoreError when it cannot be read.
std::string DigestOfFile(const std::string& path);

/// Seals a file: appends a Type 4 record to an electronic report, a "***FINGERPRINT" line to a
/// print image. Gives the seal, "LOCALSEAL-1:" and the digest, which is that of the file as it is
/// (DigestOfFile). StoreError when the file cannot be written.
std::string SealLocally(const std::string& path, bool printImage, std::string_view digest);

}  // namespace zolmara
