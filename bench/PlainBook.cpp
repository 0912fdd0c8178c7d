#include "bench/PlainBook.h"

#include <fmt/format.h>
#include <xlsxwriter.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

#include "core/Globals.h"
#include "spreadsheet/XmlWalk.h"
#include "spreadsheet/ZipEntries.h"

namespace zolmara::bench {
namespace {

enum class Kind : std::uint8_t { Sheet, Blank, Number, Text, Formula, TextFormula, ArrayFormula };

/// A cell as it lies in the file, its texts behind it.
struct Head {
    Kind What = Kind::Blank;
    std::uint16_t Column = 0;
    std::uint16_t Style = 0;
    std::uint32_t Row = 0;
    std::uint32_t TextSize = 0;
    std::uint32_t ResultSize = 0;
    double Number = 0;
};

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

File Open(const std::string& path, const char* mode) {
    File file(std::fopen(path.c_str(), mode));
    if (!file) throw std::runtime_error(path + " cannot be opened");
    return file;
}

// --- Keeping ---------------------------------------------------------------------------------

class Keeper : public XmlHandler {
public:
    explicit Keeper(FILE* out) : out_(out) {}

    void BeginSheet() { Put({.What = Kind::Sheet}, "", ""); }
    void Begin(const XmlElement& element) override {
        if (element.Name == "c") {
            cell_ = {};
            type_ = element.Attribute("t");
            Place(element.Attribute("r"));
            cell_.Style = static_cast<std::uint16_t>(Val(element.Attribute("s")));
            formula_.clear();
            value_.clear();
            inCell_ = true;
        } else if (element.Name == "f") {
            isArray_ = element.Attribute("t") == "array";
        }
        text_.clear();
    }
    void Text(std::string_view text) override { text_ += text; }
    void End(std::string_view name) override {
        if (!inCell_) return;
        if (name == "f") formula_ = text_;
        if (name == "v" || name == "t") value_ = text_;
        if (name == "c") Keep();
    }
    long Count() const { return count_; }

private:
    void Place(const std::string& address) {
        std::size_t at = 0;
        int column = 0;
        for (; at < address.size() && address[at] >= 'A'; ++at)
            column = column * 26 + (address[at] - 'A' + 1);
        cell_.Column = static_cast<std::uint16_t>(column - 1);
        cell_.Row = static_cast<std::uint32_t>(Val(address.substr(at)) - 1);
    }

    void Keep() {
        inCell_ = false;
        ++count_;
        cell_.Number = Val(value_);
        if (!formula_.empty()) {
            cell_.What = isArray_         ? Kind::ArrayFormula
                         : type_ == "str" ? Kind::TextFormula
                                          : Kind::Formula;
            isArray_ = false;
            Put(cell_, "=" + formula_, value_);
        } else {
            cell_.What = type_ == "inlineStr" ? Kind::Text
                         : value_.empty()     ? Kind::Blank
                                              : Kind::Number;
            Put(cell_, cell_.What == Kind::Text ? value_ : "", "");
        }
    }

    void Put(Head head, const std::string& text, const std::string& result) {
        head.TextSize = static_cast<std::uint32_t>(text.size());
        head.ResultSize = static_cast<std::uint32_t>(result.size());
        std::fwrite(&head, sizeof head, 1, out_);
        std::fwrite(text.data(), 1, text.size(), out_);
        std::fwrite(result.data(), 1, result.size(), out_);
    }

    FILE* out_;
    Head cell_;
    std::string type_;
    std::string text_;
    std::string formula_;
    std::string value_;
    bool inCell_ = false;
    bool isArray_ = false;
    long count_ = 0;
};

// --- Writing ---------------------------------------------------------------------------------

class PlainBook {
public:
    explicit PlainBook(const std::string& path) {
        lxw_workbook_options options = {};
        options.constant_memory = LXW_TRUE;
        book_ = workbook_new_opt(path.c_str(), &options);
    }

    void Take(const Head& head, const std::string& text, const std::string& result) {
        const lxw_row_t row = head.Row;
        const lxw_col_t column = head.Column;
        switch (head.What) {
            case Kind::Sheet:
                sheet_ = workbook_add_worksheet(book_, nullptr);
                return;
            case Kind::Blank:
                worksheet_write_blank(sheet_, row, column, Format(head.Style));
                return;
            case Kind::Number:
                worksheet_write_number(sheet_, row, column, head.Number, Format(head.Style));
                return;
            case Kind::Text:
                worksheet_write_string(sheet_, row, column, text.c_str(), Format(head.Style));
                return;
            case Kind::Formula:
                worksheet_write_formula_num(sheet_, row, column, text.c_str(), Format(head.Style),
                                            head.Number);
                return;
            case Kind::TextFormula:
                worksheet_write_formula_str(sheet_, row, column, text.c_str(), Format(head.Style),
                                            result.c_str());
                return;
            case Kind::ArrayFormula:
                worksheet_write_array_formula_num(sheet_, row, column, row, column, text.c_str(),
                                                  Format(head.Style), head.Number);
                return;
        }
    }
    void Close() {
        if (workbook_close(book_) != LXW_NO_ERROR)
            throw std::runtime_error("the plain workbook could not be written");
    }

private:
    lxw_format* Format(std::uint16_t style) {
        if (style == 0) return nullptr;
        lxw_format*& format = formats_[style];
        if (format != nullptr) return format;
        format = workbook_add_format(book_);
        format_set_num_format(format, fmt::format("#,##0;-#,##0;\"{}\"", style).c_str());
        return format;
    }

    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    std::map<std::uint16_t, lxw_format*> formats_;
};

bool ReadText(FILE* in, std::string& text, std::size_t size) {
    text.resize(size);
    return std::fread(text.data(), 1, size, in) == size;
}

}  // namespace

long KeepCells(const std::string& workbook, const std::string& kept) {
    std::ifstream in(workbook, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const ZipEntries parts(bytes);
    const File out = Open(kept, "wb");
    Keeper keeper(out.get());
    for (int sheet = 1;; ++sheet) {
        const std::string part = fmt::format("xl/worksheets/sheet{}.xml", sheet);
        if (!parts.Has(part)) return keeper.Count();
        keeper.BeginSheet();
        WalkXml(parts.Read(part), part, keeper);
    }
}

void WritePlainBook(const std::string& kept, const std::string& workbook) {
    const File in = Open(kept, "rb");
    PlainBook book(workbook);
    Head head;
    std::string text;
    std::string result;
    while (std::fread(&head, sizeof head, 1, in.get()) == 1 &&
           ReadText(in.get(), text, head.TextSize) && ReadText(in.get(), result, head.ResultSize))
        book.Take(head, text, result);
    book.Close();
}

}  // namespace zolmara::bench
