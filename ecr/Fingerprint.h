#pragma once

// The fingerprint of the submission files: by the government's library where it lies in the
// program's folder, else by the local seal.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace zolmara {

/// The library's one function: the file's path (250 bytes, may be rewritten), the fingerprint text
/// (100 bytes, is filled), 0, the kind of file (0 report, 1 print image), and 1 to write a log.
/// 0 when all went well.
using HcfaFpFunction = std::int32_t (*)(char* path, char* fingerprint, std::int32_t* reserved,
                                        std::int32_t* kind, std::int32_t* log);

/// The path of the fingerprint library; nothing where it is not in the program's folder.
std::optional<std::string> FingerprintLibrary();

/// Which seal is in use, for whoever is about to submit: a sentence.
std::string SealNotice();

class OutFile;

class Sealer {
public:
    /// Loads the library if it is there. An error with its path when it cannot be used: files
    /// must not get the local seal where the government's was meant.
    Sealer();

    /// Seals a file in place and gives its fingerprint, at most 76 characters. Shows a message
    /// when the library refuses the file. StoreError when the local seal cannot be written; an
    /// error for a path too long for the library.
    std::string Seal(const std::string& path, bool printImage);
    /// The same for a file that is completed aside. It needs not be read where its digest was kept.
    std::string Seal(const OutFile& file, bool printImage);
    /// Whether the seal is the local one, for which the digest of a file is needed.
    bool IsLocal() const { return function_ == nullptr; }

    /// What the seals put on so far are worth, for whoever is about to submit: a sentence.
    std::string Notice() const;

private:
    std::string SealByLibrary(const std::string& path, bool printImage);

    std::string name_;      ///< of the library
    bool refused_ = false;  ///< the library did not take a file
    std::shared_ptr<void> library_;
    HcfaFpFunction function_ = nullptr;
};

}  // namespace zolmara
