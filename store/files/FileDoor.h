#pragma once

// The door through which every file is written. A file appears under its name when it is whole
// and on the disk, with the mode, owner and group of the one that it replaces; links are
// followed; what must not be replaced stays.

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/base/StoreError.h"
#include "store/files/PieceWriter.h"
#include "store/files/Scratch.h"

namespace zolmara {

/// Says from a file's first bytes (kHeadBytes, or all) whether it is an earlier output of the same
/// writer, which is replaced as told. Everything else that stands in the way needs the person's
/// consent. An empty file holds nothing and is replaced.
using OwnOutput = std::function<bool(std::string_view head)>;
inline constexpr std::size_t kHeadBytes = 4096;

/// For a file that is the program's own by its name, such as the settings.
bool AnyFile(std::string_view head);

/// Raised when a file that stands in the way was kept: the person said so, or was not asked.
class FileKept : public StoreError {
public:
    explicit FileKept(const std::string& text) : StoreError(Kind::Other, text) {}
};

/// As long as one lives, files of others are replaced, or kept, without a question: what a
/// command line says of it. Without one the person is asked.
class ReplaceAsTold {
public:
    /// `hint` ends the message about a file that was kept, such as "--force replaces it".
    ReplaceAsTold(bool replace, std::string hint);
    ~ReplaceAsTold();
    ReplaceAsTold(const ReplaceAsTold&) = delete;
    ReplaceAsTold& operator=(const ReplaceAsTold&) = delete;

private:
    friend void NeedConsent(const std::string& path);
    bool replace_;
    std::string hint_;
    ReplaceAsTold* former_;
};

/// Asks for the consent to replace a file that is none of the writer's own. FileKept without it.
void NeedConsent(const std::string& path);

/// Raises unless `path` may be written: StoreError::Other for a protected file and for any other
/// Cost Report File that is no output of this writer, whatever was consented; CannotOpen for what
/// is no regular file, ReadOnly for a file marked so, FileKept for another's file that is to stay.
/// Whoever writes several files asks for all of them first.
void NeedMayWrite(const std::string& path, const OwnOutput& own);

/// A file that is written aside and then put in place. Given up unless it is put.
class OutFile {
public:
    /// Asks NeedMayWrite. StoreError, too, when the folder takes no file.
    OutFile(const std::string& path, OwnOutput own);
    ~OutFile();
    OutFile(const OutFile&) = delete;
    OutFile& operator=(const OutFile&) = delete;

    const std::string& Path() const { return path_; }
    /// The file as it is so far, for what writes or reads it by its name.
    const std::string& AsidePath() const { return scratch_.Path(); }

    /// From here on, ahead of the first byte, the digest of what is written is made.
    void KeepDigest() { writer_.KeepDigest(); }
    bool KeepsDigest() const { return writer_.KeepsDigest(); }
    /// SHA-256 in hex of what was written up to Deliver. Needs KeepDigest.
    std::string Digest() const { return writer_.Digest(); }

    /// StoreError when the disk takes no more; it may come with a later call.
    void Write(std::string_view bytes);
    /// All that was written is in the file aside, for what reads it or writes to it by its name. It
    /// need not be on the disk yet. More may be written.
    void Deliver();
    /// The same, and it is on the disk.
    void Complete();
    /// Completes the file and gives it its name. Then it is finished. StoreError when that fails;
    /// what stood there is as it was. NotConfirmed where it has its name and the disk did not
    /// confirm that.
    void Put();

private:
    friend class FilesTogether;
    static std::string JudgedTarget(const std::string& path, const OwnOutput& own);
    void Flush();
    bool IsUnchanged() const { return judged_ == StandingAt(target_); }
    void NeedUnchanged();
    void MakeReady();
    void TakeName();

    std::string path_;
    std::string target_;  ///< behind the links
    OwnOutput own_;
    Scratch scratch_;
    PieceWriter writer_;
    std::string buffer_;
    struct Standing {
        bool There = false;
        dev_t Device = 0;
        ino_t Node = 0;
        bool operator==(const Standing&) const = default;
    };
    static Standing StandingAt(const std::string& path);
    Standing judged_;  ///< what stood there when it was judged
};

class PutJournal;

/// Files that take their names together, or none does. Between the making and the names there is
/// room for what must be saved ahead of them.
class FilesTogether {
public:
    /// All are completed, and what can fail ahead of the names fails here. They must outlive this.
    explicit FilesTogether(const std::vector<OutFile*>& files);
    ~FilesTogether();
    FilesTogether(const FilesTogether&) = delete;
    FilesTogether& operator=(const FilesTogether&) = delete;

    /// Gives the names. StoreError when one cannot be given: then what stood under the others'
    /// names has come back. NotConfirmed where all have their names. Where the program dies on the
    /// way, the next ClearScratch or FinishPuts in a folder of theirs gives the rest of the names
    /// (see PutJournal.h).
    void Put();

private:
    struct Part {
        OutFile* File;
        std::unique_ptr<Scratch> Former;  ///< what stood under its name
        bool Named = false;
    };
    void WriteJournal();
    void GiveNames();
    static void KeepFormer(Part& part);
    void TakeNamesBack();
    bool IsOnDisk() const;
    std::string Paths() const;

    std::vector<Part> parts_;
    std::unique_ptr<PutJournal> journal_;
};

/// Puts two files in place at once.
void PutTogether(OutFile& first, OutFile& second);

/// Brings the names in the folder of a file to the disk; false when the disk fails.
bool SyncedFolderOf(const std::string& path);

/// Gives a file that is written aside and closed the mode, owner and group that a file at `target`
/// has, brings it to the disk, and gives it that name. Where none stands it gets the mode of the
/// file `like`, or without that the mode of new files. With `mayReplace` false nothing that stands
/// there is replaced, also not what came in this moment: then the result is false. StoreError when
/// that fails, NotConfirmed where it has its name and the disk did not confirm that.
bool PutFile(const std::string& aside, const std::string& target, bool mayReplace,
             const std::string& like = "");

}  // namespace zolmara
