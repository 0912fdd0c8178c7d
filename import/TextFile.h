#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace zolmara {

/// A text file, read a line at a time without ever holding more than a piece of it. A line ends
/// with CR, LF or CR LF. The text is UTF-8 when all of the file is valid UTF-8, with a leading
/// byte order mark or without, else code page 1252; lines are given in UTF-8.
class TextFile {
public:
    /// The longest piece of a line that is given; what is behind it in the line is passed over.
    static constexpr std::size_t kMaxLine = std::size_t{64} * 1024;

    /// Opens the file and looks through it once. StoreError::CannotOpen, with the path, for one
    /// that is not there, is a folder or a device, or cannot be read.
    explicit TextFile(const std::string& path);

    /// The next line without its end; false behind the last one.
    bool NextLine(std::string& line);
    /// True where something else than blanks of the last line was passed over.
    bool WasCut() const { return lost_; }

    /// How much of the file has been read, from 0 to 1.
    double PartRead() const;

private:
    bool FillBuffer();
    bool TakePiece(std::string& line);
    void Append(std::string& line, const char* from, const char* to);
    void CheckEncoding();
    [[noreturn]] void Refuse(const std::string& reason) const;

    std::string path_;
    std::ifstream file_;
    std::string buffer_;
    std::size_t at_ = 0;
    std::uintmax_t size_ = 0;
    std::uintmax_t read_ = 0;
    bool utf8_ = true;
    bool afterReturn_ = false;
    bool cut_ = false;
    bool lost_ = false;
};

}  // namespace zolmara
