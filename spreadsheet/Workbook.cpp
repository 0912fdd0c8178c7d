#include "spreadsheet/Workbook.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "core/Globals.h"
#include "spreadsheet/ZipFunctions.h"
#include "store/Dao.h"

namespace zolmara {

namespace {

/// Nothing in the first bytes of a workbook tells who wrote it: the person is asked for every one.
bool IsNobodysOutput(std::string_view /*head*/) { return false; }

struct CloseEntry {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

/// How many bytes a part unpacks to, if it ends as a sheet does; -1 where it does not.
long WholeSize(zip_t* archive, const std::string& part) {
    constexpr std::string_view kEnd = "</worksheet>";
    const std::unique_ptr<zip_file_t, CloseEntry> file(zip_fopen(archive, part.c_str(), 0));
    if (file == nullptr) return -1;
    std::string piece(std::size_t{1} << 18, '\0');
    std::string tail;
    long size = 0;
    zip_int64_t got = 0;
    while ((got = zip_fread(file.get(), piece.data(), piece.size())) > 0) {
        size += static_cast<long>(got);
        tail.append(piece, 0, static_cast<std::size_t>(got));
        tail.erase(0, tail.size() - std::min(tail.size(), kEnd.size()));
    }
    return got == 0 && tail == kEnd ? size : -1;
}

}  // namespace

Workbook::Workbook(const std::string& path, bool streamed) : file_(path, IsNobodysOutput) {
    lxw_workbook_options options = {};
    options.constant_memory = streamed ? LXW_TRUE : LXW_FALSE;
    book_ = workbook_new_opt(file_.AsidePath().c_str(), &options);
    if (book_ == nullptr) throw StoreError(StoreError::Kind::Other, path + ": no memory");
}

Workbook::~Workbook() {
    if (book_ != nullptr) lxw_workbook_free(book_);
}

void Workbook::Check(lxw_error error) const {
    if (error == LXW_NO_ERROR) return;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("{}: {}", file_.Path(), lxw_strerror(error)));
}

lxw_worksheet* Workbook::AddSheet(const std::string& name) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, name.c_str());
    if (sheet == nullptr)
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("{}: sheet {} cannot be made", file_.Path(), name));
    sheets_.push_back(sheet);
    return sheet;
}

lxw_format* Workbook::Format(const CellLook& look) {
    const auto [known, isNew] = formats_.try_emplace(look, nullptr);
    if (!isNew) return known->second;
    lxw_format* format = workbook_add_format(book_);
    if (!look.NumberFormat.empty()) format_set_num_format(format, look.NumberFormat.c_str());
    if (look.Bold) format_set_bold(format);
    if (look.Wrap) format_set_text_wrap(format);
    if (look.Wrap || look.Centered || look.AtTop) format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
    if (look.Centered) format_set_align(format, LXW_ALIGN_CENTER);
    if (look.Indented) format_set_indent(format, 1);
    constexpr lxw_color_t kHeading = 0xE8ECF0;
    constexpr lxw_color_t kToKey = 0xFFFDE7;
    constexpr lxw_color_t kLink = 0x0B57A4;
    if (look.Shaded) format_set_bg_color(format, kHeading);
    if (look.Unlocked) {
        format_set_unlocked(format);
        format_set_bg_color(format, kToKey);
        format_set_border(format, LXW_BORDER_HAIR);
    }
    if (look.Link) {
        format_set_font_color(format, kLink);
        format_set_underline(format, LXW_UNDERLINE_SINGLE);
    }
    return known->second = format;
}

void Workbook::DefineName(const std::string& name, const std::string& reference) {
    Check(workbook_define_name(book_, name.c_str(), reference.c_str()));
}

/// The sizes of the rows that went to the disk so far; the library does not look whether they did.
std::vector<long> Workbook::StreamedSizes() const {
    std::vector<long> sizes;
    for (const lxw_worksheet* sheet : sheets_) {
        FILE* rows = sheet->optimize_tmpfile;
        const bool failed = rows != nullptr && (fflush(rows) != 0 || ferror(rows) != 0);
        if (failed) Fail("the disk takes no more");
        sizes.push_back(rows == nullptr ? 0 : ftell(rows));
    }
    return sizes;
}

/// Looks whether every sheet is whole: a full disk goes unseen by the library.
void Workbook::NeedWhole(const std::vector<long>& sizes) const {
    zip_t* archive = zip_open(file_.AsidePath().c_str(), ZIP_RDONLY, nullptr);
    bool whole = archive != nullptr;
    for (std::size_t i = 0; whole && i < sizes.size(); ++i)
        whole = WholeSize(archive, fmt::format("xl/worksheets/sheet{}.xml", i + 1)) > sizes[i];
    if (archive != nullptr) zip_discard(archive);
    if (!whole) Fail("the disk takes no more");
}

void Workbook::Fail(const std::string& reason) const {
    throw StoreError(StoreError::Kind::DiskFull, fmt::format("{}: {}", file_.Path(), reason));
}

void Workbook::Put() {
    const std::vector<long> sizes = StreamedSizes();
    const lxw_error error = workbook_close(std::exchange(book_, nullptr));
    if (error != LXW_NO_ERROR) Fail(lxw_strerror(error));
    NeedWhole(sizes);
    file_.Put();
}

void NeedWorkbookName(const std::string& path) {
    if (LCase(std::filesystem::path(path).extension().string()) == ".xlsx") return;
    throw StoreError(StoreError::Kind::Other, path + ": a workbook is written to .xlsx");
}

constexpr std::size_t kMaxCellText = 32767;

std::string SheetText(std::string_view text) {
    std::string kept(LeftText(text, kMaxCellText));
    for (char& c : kept)
        if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') c = ' ';
    return kept;
}

void PutText(lxw_worksheet* sheet, lxw_row_t row, int column, std::string_view text,
             lxw_format* format) {
    const auto place = static_cast<lxw_col_t>(column);
    if (text.empty() && format == nullptr) return;
    if (text.empty())
        worksheet_write_blank(sheet, row, place, format);
    else
        worksheet_write_string(sheet, row, place, SheetText(text).c_str(), format);
}

void PutNumber(lxw_worksheet* sheet, lxw_row_t row, int column, double number, lxw_format* format) {
    worksheet_write_number(sheet, row, static_cast<lxw_col_t>(column), number, format);
}

}  // namespace zolmara
