#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/Dialogs.h"
#include "ecr/EcrSupport.h"
#include "ecr/Fingerprint.h"
#include "ecr/FingerprintLibrary.h"
#include "ecr/LocalSeal.h"
#include "support/Paths.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

std::string Failure(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

class Fingerprint : public EcrCrf {
protected:
    std::string TextFile(std::string_view name, std::string_view content) {
        const std::string path = folder.File(name);
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
};

// --- The local seal ------------------------------------------------------------------------

// The digests of the empty text and of "abc" are those that the standard gives.
TEST_F(Fingerprint, TheLocalSealIsTheDigestOfTheFile) {
    const std::string path = TextFile("HO.txt", "abc");
    const std::string seal =
        "LOCALSEAL-1:ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    EXPECT_EQ(SealLocally(path, false, DigestOfFile(path)), seal);
    EXPECT_EQ(seal.size(), kFingerprintLength);
    EXPECT_EQ(BytesOf(path), "abc4" + seal + "\r\n");
}

TEST_F(Fingerprint, APrintImageGetsALineThatNamesIt) {
    const std::string path = TextFile("PI.txt", "");
    const std::string seal =
        "LOCALSEAL-1:e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
    EXPECT_EQ(SealLocally(path, true, DigestOfFile(path)), seal);
    EXPECT_EQ(BytesOf(path), "***FINGERPRINT " + seal + "\r\n");
}

TEST_F(Fingerprint, ALongFileIsReadToItsEnd) {
    const std::string path = TextFile("long.txt", std::string(1000000, 'a'));
    EXPECT_EQ(SealLocally(path, false, DigestOfFile(path)),
              "LOCALSEAL-1:cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST_F(Fingerprint, AFileThatIsNotThereCannotBeSealed) {
    EXPECT_THROW(DigestOfFile(folder.File("none.txt")), StoreError);
    EXPECT_FALSE(fs::exists(folder.File("none.txt")));
}

TEST_F(Fingerprint, WithoutLibraryTheLocalSealIsTaken) {
    host.Folder = folder.Path();
    EXPECT_EQ(FingerprintLibrary(), std::nullopt);
    const std::string path = TextFile("HO.txt", "abc");
    EXPECT_EQ(Sealer().Seal(path, false).substr(0, 12), "LOCALSEAL-1:");
    EXPECT_EQ(host.Boxes.size(), 0u);
}

TEST_F(Fingerprint, TheNoticeSaysWhichSealIsInUse) {
    host.Folder = folder.Path();
    EXPECT_EQ(SealNotice(),
              "Sealed by the local seal, since the government's fingerprint library is not in the "
              "program's folder. Files with the local seal cannot be submitted.");
    const std::string library = TextFile("libhcfafp.so", "");
    EXPECT_EQ(SealNotice(), "Sealed by the government's fingerprint library " + library + ".");
}

// --- The library ---------------------------------------------------------------------------

class FingerprintByLibrary : public Fingerprint {
protected:
    FingerprintLibraryHere library{folder};
    FingerprintByLibrary() { host.Folder = folder.Path(); }
};

TEST_F(FingerprintByLibrary, TheFiveArgumentsOfAReport) {
    const std::string path = TextFile("HO123456.23A1", "record\r\n");
    Sealer().Seal(path, false);
    EXPECT_EQ(library.Calls(), Lines{path + "|empty|0|0|0"});
    EXPECT_EQ(BytesOf(path), "record\r\n4 of the test\r\n");
}

TEST_F(FingerprintByLibrary, TheFiveArgumentsOfAPrintImageWithLog) {
    const std::string path = TextFile("PI123456.23A1", "");
    TextFile("hcfafp.log", "");
    Sealer().Seal(path, true);
    EXPECT_EQ(library.Calls(), Lines{path + "|empty|0|1|1"});
    EXPECT_EQ(BytesOf(path), "***FINGERPRINT of the test\r\n");
}

TEST_F(FingerprintByLibrary, TheLogIsLookedForBesideTheCrf) {
    TempFolder elsewhere;
    gCRFDir = elsewhere.Path();
    TextFile("hcfafp.log", "");
    Sealer().Seal(TextFile("HO.txt", ""), false);
    EXPECT_TRUE(library.Calls().at(0).ends_with("|0|0|0"));
    std::ofstream(elsewhere.File("hcfafp.log")) << "";
    Sealer().Seal(TextFile("HO.txt", ""), false);
    EXPECT_TRUE(library.Calls().at(1).ends_with("|0|0|1"));
}

TEST_F(FingerprintByLibrary, TheTextIsTheFirst76Characters) {
    const std::string text = Sealer().Seal(TextFile("HO.txt", ""), false);
    EXPECT_EQ(text, "ECR:012345678901234567890123456789012345678901234567890123456789012345678901");
    EXPECT_EQ(text.size(), 76u);
}

TEST_F(FingerprintByLibrary, AShorterTextEndsAtItsEndAndIsInCodePage1252) {
    library.SetMode("short");
    EXPECT_EQ(Sealer().Seal(TextFile("HO.txt", ""), false), "shorté");
}

TEST_F(FingerprintByLibrary, ARefusedFileIsToldAndItsTextKept) {
    library.SetMode("refuse");
    const std::string path = TextFile("HO.txt", "abc");
    const std::string text = Sealer().Seal(path, false);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, "Invalid file format, please call Velquist");
    EXPECT_EQ(host.Boxes[0].Title, "Finger print error");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
    EXPECT_EQ(text.substr(0, 6), "ECR:01");
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST_F(FingerprintByLibrary, APathTooLongForTheLibraryIsNotCut) {
    const std::string path = "/" + std::string(249, 'p');
    const std::string error = Failure([&] { Sealer().Seal(path, false); });
    EXPECT_NE(error.find("too long for the fingerprint library"), std::string::npos) << error;
    EXPECT_EQ(library.Calls(), Lines{});
}

// What is meant to be the government's seal must not become the local one in silence.
TEST_F(Fingerprint, ALibraryThatCannotBeLoadedIsAnError) {
    host.Folder = folder.Path();
    const std::string library = TextFile("libhcfafp.so", "no library");
    const std::string error = Failure([] { Sealer(); });
    EXPECT_TRUE(error.starts_with("The fingerprint library " + library + " cannot be used: "))
        << error;
}

TEST_F(Fingerprint, ALinkToALibraryThatIsGoneIsAnErrorAndNoLocalSeal) {
    host.Folder = folder.Path();
    fs::create_symlink(folder.File("nowhere.so"), folder.File("libhcfafp.so"));
    const std::string error = Failure([] { Sealer(); });
    EXPECT_NE(error.find("libhcfafp.so cannot be used"), std::string::npos) << error;
}

TEST_F(FingerprintByLibrary, AfterARefusalTheNoticeDoesNotClaimTheSeal) {
    Sealer sealer;
    EXPECT_TRUE(sealer.Notice().starts_with("Sealed by the government's fingerprint library "));
    library.SetMode("refuse");
    sealer.Seal(TextFile("HO.txt", "abc"), false);
    EXPECT_EQ(sealer.Notice(), "The government's fingerprint library " +
                                   folder.File("libhcfafp.so") +
                                   " reported an invalid file; the files cannot be submitted.");
}

TEST_F(Fingerprint, ALibraryWithoutItsFunctionIsAnError) {
    host.Folder = folder.Path();
    fs::copy_file(kEmptyLibrary, folder.File("libhcfafp.so"));
    const std::string error = Failure([] { Sealer(); });
    EXPECT_NE(error.find("HcfaFp"), std::string::npos) << error;
}

}  // namespace
}  // namespace zolmara::test
