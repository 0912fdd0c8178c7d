// Text files of separated values.

#include <algorithm>
#include <orcus/csv_parser.hpp>

#include "core/CsvText.h"
#include "core/Globals.h"
#include "spreadsheet/SheetReaders.h"

namespace zolmara {

namespace {

class CsvHandler : public orcus::csv_handler {
public:
    explicit CsvHandler(const TakeRow& take) : take_(take) {}

    void begin_row() {
        row_ = {.Sheet = {}, .Row = ++rows_, .Cells = {}};
        column_ = 0;
    }
    void cell(const char* text, std::size_t size, bool) {
        const int column = column_++;
        if (size > 0 && column < kMaxSheetColumns)
            row_.Cells.push_back({column, SheetCellKind::Text,
                                  std::string(WithoutCsvMark(std::string_view(text, size)))});
    }
    void end_row() {
        if (!row_.Cells.empty()) take_(std::move(row_));
    }

private:
    const TakeRow& take_;
    SheetRow row_;
    std::int64_t rows_ = 0;
    int column_ = 0;
};

/// The text in UTF-8 with line feeds alone as line ends.
std::string PlainText(std::string_view file) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (file.starts_with(kByteOrderMark)) file.remove_prefix(kByteOrderMark.size());
    std::string text = IsValidUtf8(file) ? std::string(file) : FromCodePage1252(file);
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool ofPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (!ofPair) plain += text[i] == '\r' ? '\n' : text[i];
    }
    return plain;
}

/// What parts the headings: the sign of the three that comes most often in the first line that has
/// one.
char Separator(std::string_view text) {
    constexpr std::string_view kSigns = ",;\t";
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        const auto count = [&](char sign) { return std::ranges::count(line, sign); };
        const char most = *std::ranges::max_element(kSigns, {}, count);
        if (count(most) >= 3) return most;
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return ',';
}

}  // namespace

void ReadCsv(std::string_view file, const TakeRow& take) {
    if (file.find('\0') != std::string_view::npos)
        throw UnreadableSheets("it holds characters that are no text");
    const std::string text = PlainText(file);
    orcus::csv::parser_config config;
    config.delimiters = Separator(text);
    config.text_qualifier = '"';
    config.trim_cell_value = false;
    CsvHandler handler(take);
    try {
        orcus::csv_parser<CsvHandler>(text.data(), text.size(), handler, config).parse();
    } catch (const orcus::csv::parse_error& error) {
        throw UnreadableSheets(std::string("it is broken: ") + error.what());
    }
}

}  // namespace zolmara
