#include "print/PdfFile.h"

#include <fmt/format.h>
#include <zlib.h>

#include <algorithm>
#include <new>

namespace zolmara {
namespace {

constexpr std::size_t kPagesInGroup = 90;

/// Pages of a report are blanks and digits: more effort makes them a little smaller and takes
/// several times as long.
constexpr int kEffort = 2;

std::string Reference(std::size_t object) { return fmt::format("{} 0 R ", object); }

}  // namespace

PdfFile::PdfFile(const std::string& path, const OwnOutput& own, std::string_view producer)
    : file_(path, own), catalog_(NewNumber()), root_(NewNumber()), info_(NewNumber()) {
    // Bytes above ASCII tell those who pass the file on that it is no text.
    Write("%PDF-1.4\n%\xB5\xB6\xB7\xB8\n");
    // Near the beginning, where an earlier file of this program is known by it.
    WriteObject(info_, fmt::format("<< /Producer ({}) >>", producer));
    WriteObject(catalog_, fmt::format("<< /Type /Catalog /Pages {}>>", Reference(root_)));
}

PdfFile::Number PdfFile::NewNumber() {
    places_.push_back(0);
    return places_.size();
}

void PdfFile::Write(std::string_view bytes) {
    file_.Write(bytes);
    written_ += bytes.size();
}

void PdfFile::WriteObject(Number number, std::string_view body) {
    places_[number - 1] = written_;
    Write(fmt::format("{} 0 obj\n{}\nendobj\n", number, body));
}

void PdfFile::WriteStream(Number number, std::string_view content) {
    uLongf size = compressBound(static_cast<uLong>(content.size()));
    packed_.resize(size);
    const int done = compress2(reinterpret_cast<Bytef*>(packed_.data()), &size,
                               reinterpret_cast<const Bytef*>(content.data()),
                               static_cast<uLong>(content.size()), kEffort);
    if (done != Z_OK) throw std::bad_alloc();
    places_[number - 1] = written_;
    Write(fmt::format("{} 0 obj\n<< /Length {} /Filter /FlateDecode >>\nstream\n", number, size));
    Write(std::string_view(packed_).substr(0, size));
    Write("\nendstream\nendobj\n");
}

std::string PdfFile::Font(const std::string& baseName) {
    const auto found = std::ranges::find(fonts_, baseName);
    const auto place = found - fonts_.begin();
    if (found == fonts_.end()) fonts_.push_back(baseName);
    return fmt::format("/F{}", place + 1);
}

void PdfFile::AddPage(int width, int height, std::string_view content) {
    try {
        WritePage(width, height, content);
    } catch (...) {
        failure_ = std::current_exception();
        throw;
    }
}

void PdfFile::WritePage(int width, int height, std::string_view content) {
    if (group_.Pages.empty()) group_.Node = NewNumber();
    const Number page = NewNumber();
    const Number text = NewNumber();
    WriteObject(page, fmt::format("<<\n/Type /Page\n/Parent {}\n/MediaBox [ 0 0 {} {} ]\n"
                                  "/Contents {}\n>>",
                                  Reference(group_.Node), width, height, Reference(text)));
    WriteStream(text, content);
    group_.Pages.push_back(page);
    ++pages_;
    if (group_.Pages.size() == kPagesInGroup) EndGroup();
}

void PdfFile::EndGroup() {
    if (group_.Pages.empty()) return;
    std::string kids;
    for (const Number page : group_.Pages) kids += Reference(page);
    WriteObject(group_.Node, fmt::format("<< /Type /Pages /Parent {}/Count {} /Kids [ {}] >>",
                                         Reference(root_), group_.Pages.size(), kids));
    groups_ += Reference(group_.Node);
    group_.Pages.clear();
}

std::string PdfFile::FontList() const {
    std::string list;
    for (std::size_t i = 0; i < fonts_.size(); ++i) {
        list += fmt::format(
            "/F{} << /Type /Font /Subtype /Type1 /BaseFont /{} "
            "/Encoding /WinAnsiEncoding >> ",
            i + 1, fonts_[i]);
    }
    return list;
}

void PdfFile::WriteTables() {
    EndGroup();
    WriteObject(root_,
                fmt::format("<< /Type /Pages /Count {} /Kids [ {}]\n/Resources << /Font << {}>> >> "
                            ">>",
                            pages_, groups_, FontList()));
    const std::uint64_t table = written_;
    Write(fmt::format("xref\n0 {}\n0000000000 65535 f \n", places_.size() + 1));
    for (const std::uint64_t place : places_) Write(fmt::format("{:010} 00000 n \n", place));
    Write(fmt::format("trailer\n<< /Size {} /Root {}/Info {}>>\nstartxref\n{}\n%%EOF\n",
                      places_.size() + 1, Reference(catalog_), Reference(info_), table));
}

void PdfFile::Put() {
    if (failure_) std::rethrow_exception(failure_);
    WriteTables();
    file_.Put();
}

}  // namespace zolmara
