#include "print/PrintFile.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>

#include "core/Globals.h"
#include "print/PrintPage.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

using OpenFile = std::unique_ptr<OutFile>;

std::map<FileNumber, OpenFile>& OpenFiles() {
    static std::map<FileNumber, OpenFile> files;
    return files;
}

OutFile& Opened(FileNumber file) {
    const auto found = OpenFiles().find(file);
    if (found == OpenFiles().end())
        throw std::logic_error(fmt::format("Print file number {} is not open.", file));
    return *found->second;
}

/// Frees the number.
OpenFile Take(FileNumber number) {
    Opened(number);
    return std::move(OpenFiles().extract(number).mapped());
}

FileNumber LowestFreeNumber() {
    FileNumber number = 1;
    while (OpenFiles().contains(number)) ++number;
    return number;
}

bool IsControl(char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7f'; }

/// True for a line that stands in the file as it is, which nearly every one does. All bytes are
/// looked at, without a way out, so that many are looked at at once.
bool IsPlainLine(std::string_view text) {
    unsigned char other = 0;
    for (const char byte : text) {
        const auto aboveBlank = static_cast<unsigned char>(byte - ' ');
        other = other | static_cast<unsigned char>(aboveBlank > '~' - ' ');
    }
    return other == 0;
}

/// What a line of text is in the file.
std::string LineBytes(std::string_view text) {
    std::string bytes = ToCodePage1252(text);
    for (char& byte : bytes) {
        if (IsControl(byte)) byte = ' ';
    }
    bytes += kLineEnd;
    return bytes;
}

}  // namespace

bool IsPrintedReport(std::string_view head) {
    const auto has = [&](std::string_view text) {
        return head.find(text) != std::string_view::npos;
    };
    return head.starts_with(kFormFeed) && (has(kReportMark) || has(kFindingsMark));
}

FileNumber OpenPrintFile(const std::string& path, const OwnOutput& own) {
    const FileNumber number = LowestFreeNumber();
    OpenFiles()[number] = std::make_unique<OutFile>(path, own);
    return number;
}

void ClosePrintFile(FileNumber number) { Take(number)->Put(); }

const std::string& PrintFileAside(FileNumber file) {
    Opened(file).Complete();
    return Opened(file).AsidePath();
}

void DropPrintFile(FileNumber number) noexcept { OpenFiles().erase(number); }

void PrintLine(FileNumber file, std::string_view text) {
    OutFile& output = Opened(file);
    if (!IsPlainLine(text)) return output.Write(LineBytes(text));
    output.Write(text);
    output.Write(kLineEnd);
}

void PrintPlainLines(FileNumber file, std::string_view lines) { Opened(file).Write(lines); }

void PrintPageChange(FileNumber file, std::string_view control) {
    OutFile& output = Opened(file);
    output.Write(control);
    output.Write(kLineEnd);
}

OwnPrintFile::OwnPrintFile(const std::string& path, const OwnOutput& own)
    : number_(OpenPrintFile(path, own)), path_(path), state_(gDB) {}

void OwnPrintFile::KeepDigest() const { Opened(number_).KeepDigest(); }

void OwnPrintFile::Close() {
    state_.NeedToHold(path_);
    ClosePrintFile(std::exchange(number_, FileNumber{0}));
}

std::unique_ptr<OutFile> OwnPrintFile::Release() {
    OpenFile file = Take(std::exchange(number_, FileNumber{0}));
    file->Deliver();
    return file;
}

}  // namespace zolmara
