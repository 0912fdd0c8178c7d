// Files so long that a thread of their own writes them: whole and in order, with their digest, and
// nothing of them where the disk takes no more.

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>

#include "core/Sha256.h"
#include "store/Files.h"
#include "store/files/FileDoor.h"
#include "store/harness/Faults.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLong = 5'000'000;

/// Bytes of which no stretch is like another.
std::string ManyBytes(std::size_t count) {
    std::string bytes;
    for (std::uint32_t number = 1; bytes.size() < count; ++number) bytes += std::to_string(number);
    bytes.resize(count);
    return bytes;
}

class LongFile : public SessionTest {
protected:
    /// Writes in pieces that fit nothing.
    static void Write(OutFile& file, std::string_view bytes) {
        for (std::size_t size = 1; !bytes.empty(); size = size * 3 % 70001 + 1) {
            file.Write(bytes.substr(0, size));
            bytes.remove_prefix(std::min(size, bytes.size()));
        }
    }
    std::string path = folder.File("long.txt");
    const std::string bytes = ManyBytes(kLong);
};

TEST_F(LongFile, IsWrittenWholeAndInOrder) {
    OutFile file(path, AnyFile);
    Write(file, bytes);
    file.Put();
    EXPECT_TRUE(ReadWholeFile(path) == bytes);
}

TEST_F(LongFile, GoesOnBehindACompletion) {
    OutFile file(path, AnyFile);
    Write(file, bytes);
    file.Complete();
    EXPECT_TRUE(ReadWholeFile(file.AsidePath()) == bytes);
    Write(file, bytes);
    file.Put();
    EXPECT_TRUE(ReadWholeFile(path) == bytes + bytes);
}

TEST_F(LongFile, ThatIsDeliveredIsThereForItsReaders) {
    OutFile file(path, AnyFile);
    Write(file, bytes);
    file.Deliver();
    EXPECT_TRUE(ReadWholeFile(file.AsidePath()) == bytes);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(LongFile, HasTheDigestOfAllItsBytes) {
    OutFile file(path, AnyFile);
    file.KeepDigest();
    // A million times "a": the digest that the standard gives.
    file.Write(std::string(1000000, 'a'));
    file.Deliver();
    EXPECT_EQ(file.Digest(), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    Write(file, bytes);
    file.Deliver();
    Sha256 whole;
    whole.Add(std::string(1000000, 'a') + bytes);
    EXPECT_EQ(file.Digest(), whole.Hex());
}

TEST_F(LongFile, OnAFullDiskLeavesWhatWasThere) {
    WriteWholeFile(path, "former");
    for (const int call : {1, 6, 15}) {
        std::string told;
        FaultsArm(folder.Path().c_str(), call, ENOSPC, "write");
        try {
            OutFile file(path, AnyFile);
            Write(file, bytes);
            file.Put();
        } catch (const StoreError& error) {
            told = error.what();
        }
        EXPECT_GE(FaultsDisarm(), call);
        EXPECT_TRUE(told.starts_with(path)) << call << told;
        EXPECT_EQ(ReadWholeFile(path), "former");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()),
                  1);
    }
}

TEST_F(LongFile, ThatIsGivenUpLeavesNothing) {
    {
        OutFile file(path, AnyFile);
        Write(file, bytes);
    }
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

}  // namespace
}  // namespace zolmara::test
