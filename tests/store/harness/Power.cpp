#include "store/harness/Power.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "store/base/FileBasics.h"

namespace fs = std::filesystem;

namespace zolmara::test {
namespace {

constexpr std::size_t kPage = 4096;

/// A name and the node of its file.
using Names = std::map<std::string, ino_t>;

class Disk {
public:
    Disk(const std::string& below, std::string beside) : beside_(std::move(beside)) {
        std::ifstream nodes(beside_ + "/nodes");
        int number = 0;
        for (ino_t node = 0; nodes >> number >> node;) numbers_[node] = number;
        for (const auto& entry : fs::directory_iterator(below)) {
            if (!entry.is_regular_file()) continue;
            struct stat info {};
            ::stat(entry.path().c_str(), &info);
            written_[entry.path().filename().string()] = info.st_ino;
            contents_[info.st_ino] = ReadWholeFile(entry.path().string()).value_or("");
        }
    }

    const Names& Written() const { return written_; }
    Names Synced() const {
        Names names;
        std::ifstream in(beside_ + "/names");
        int number = 0;
        for (std::string name; in >> number && in.ignore() && std::getline(in, name);)
            names[name] = NodeOf(number);
        return names;
    }
    std::string SyncedContent(ino_t node) const {
        const auto number = numbers_.find(node);
        if (number == numbers_.end()) return {};
        return ReadWholeFile(beside_ + "/" + std::to_string(number->second)).value_or("");
    }
    /// A file that has lost its last name is as it was synced.
    std::string WrittenContent(ino_t node) const {
        const auto content = contents_.find(node);
        return content == contents_.end() ? SyncedContent(node) : content->second;
    }

private:
    ino_t NodeOf(int number) const {
        const auto has = [&](const auto& entry) { return entry.second == number; };
        const auto entry = std::ranges::find_if(numbers_, has);
        return entry == numbers_.end() ? 0 : entry->first;
    }

    std::string beside_;
    Names written_;
    std::map<ino_t, int> numbers_;
    std::map<ino_t, std::string> contents_;
};

/// Some pages of the one and some of the other.
std::string Mixed(const std::string& synced, const std::string& written, std::mt19937& random) {
    std::string mixed = random() % 2 == 0 ? synced : written;
    for (std::size_t at = 0; at < mixed.size(); at += kPage) {
        const std::string& from = random() % 2 == 0 ? synced : written;
        if (at >= from.size()) continue;
        const std::size_t count = std::min({kPage, from.size() - at, mixed.size() - at});
        mixed.replace(at, count, from, at, count);
    }
    return mixed;
}

}  // namespace

std::map<std::string, std::string> AfterPowerLoss(const std::string& below,
                                                  const std::string& beside, Beyond beyond,
                                                  unsigned seed) {
    const Disk disk(below, beside);
    std::mt19937 random(seed);
    const bool all = beyond == Beyond::Names || (beyond == Beyond::Some && random() % 2 == 0);
    std::map<std::string, std::string> files;
    for (const auto& [name, node] : all ? disk.Written() : disk.Synced()) {
        std::string synced = disk.SyncedContent(node);
        if (beyond == Beyond::Some)
            synced = Mixed(synced, disk.WrittenContent(node), random);
        else if (beyond == Beyond::Statements && name.ends_with(".CRF"))
            synced = disk.WrittenContent(node);
        files[name] = std::move(synced);
    }
    return files;
}

}  // namespace zolmara::test
