#include "print/PrintFile.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <map>
#include <stdexcept>

#include "core/Globals.h"
#include "print/PrintPage.h"
#include "store/Files.h"

namespace zolmara {
namespace {

struct OutputFile {
    std::string Path;
    std::string Scratch;
    std::FILE* Stream = nullptr;
};

std::map<FileNumber, OutputFile>& OpenFiles() {
    static std::map<FileNumber, OutputFile> files;
    return files;
}

OutputFile& Opened(FileNumber file) {
    const auto found = OpenFiles().find(file);
    if (found == OpenFiles().end())
        throw std::logic_error(fmt::format("Print file number {} is not open.", file));
    return found->second;
}

FileNumber LowestFreeNumber() {
    FileNumber number = 1;
    while (OpenFiles().contains(number)) ++number;
    return number;
}

[[noreturn]] void WriteFailed(const OutputFile& file) {
    FileFailed(file.Path, std::error_code(errno, std::generic_category()));
}

void Write(const OutputFile& file, std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.Stream) != bytes.size()) WriteFailed(file);
}

bool IsControl(char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7f'; }

/// What a line of text is in the file.
std::string LineBytes(std::string_view text) {
    std::string bytes = ToCodePage1252(text);
    for (char& byte : bytes) {
        if (IsControl(byte)) byte = ' ';
    }
    bytes += "\r\n";
    return bytes;
}

void Complete(OutputFile& file) {
    std::FILE* const stream = std::exchange(file.Stream, nullptr);
    if (std::fclose(stream) != 0) WriteFailed(file);
    PutInPlace(file.Scratch, file.Path);
}

}  // namespace

FileNumber OpenPrintFile(const std::string& path) {
    const FileNumber number = LowestFreeNumber();
    OutputFile file{path, fmt::format("{}.{}-{}.tmp", path, ::getpid(), number), nullptr};
    file.Stream = std::fopen(file.Scratch.c_str(), "wb");
    if (!file.Stream) WriteFailed(file);
    OpenFiles()[number] = std::move(file);
    gPageOrientDone = 0;
    return number;
}

void ClosePrintFile(FileNumber number) {
    OutputFile file = Opened(number);
    OpenFiles().erase(number);
    try {
        Complete(file);
    } catch (...) {
        DeleteFile(file.Scratch);
        throw;
    }
}

void DropPrintFile(FileNumber number) noexcept {
    const auto found = OpenFiles().find(number);
    if (found == OpenFiles().end()) return;
    std::fclose(found->second.Stream);
    DeleteFile(found->second.Scratch);
    OpenFiles().erase(found);
}

void PrintLine(FileNumber file, std::string_view text) { Write(Opened(file), LineBytes(text)); }

void PrintPageChange(FileNumber file, std::string_view control) {
    const OutputFile& output = Opened(file);
    Write(output, control);
    Write(output, "\r\n");
}

void OwnPrintFile::Close() { ClosePrintFile(std::exchange(number_, FileNumber{0})); }

}  // namespace zolmara
