// Workbooks of the kind ods: one part of XML holds all sheets.

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "spreadsheet/SheetReaders.h"
#include "spreadsheet/XmlWalk.h"
#include "spreadsheet/ZipEntries.h"

namespace zolmara {

namespace {

constexpr std::int64_t kMaxRows = 1048576;

/// "2024-01-31T00:00:00" as 1/31/2024; as it is where it is none.
std::string DateText(const std::string& value) {
    const auto date = DateOf(Variant(value.substr(0, value.find('T'))));
    return date ? Text(Variant(*date)) : value;
}

class ContentHandler : public XmlHandler {
public:
    explicit ContentHandler(const TakeRow& take) : take_(take) {}

    void Begin(const XmlElement& element) override {
        if (element.Name == "table") BeginSheet(element);
        if (element.Name == "table-row") BeginRow(element);
        if (element.Name == "table-cell" || element.Name == "covered-table-cell")
            BeginCell(element);
        if (element.Name == "annotation") ++notes_;
        if (element.Name == "p" && InCell()) BeginParagraph();
        if (element.Name == "s" && InCell()) value_.append(Count(element, "c"), ' ');
        if (element.Name == "tab" && InCell()) value_ += '\t';
        if (element.Name == "line-break" && InCell()) value_ += '\n';
    }
    void End(std::string_view name) override {
        if (name == "annotation") --notes_;
        if (name == "p" && InCell()) inParagraph_ = false;
        if (name == "table-cell" || name == "covered-table-cell") EndCell();
        if (name == "table-row") EndRow();
    }
    void Text(std::string_view text) override {
        if (inParagraph_ && notes_ == 0) value_ += text;
    }

private:
    /// A number of times that is told, at least 1; hostile ones are cut.
    static std::size_t Count(const XmlElement& element, std::string_view attribute) {
        const double count = Val(element.Attribute(attribute));
        return static_cast<std::size_t>(std::clamp(count, 1.0, static_cast<double>(kMaxRows)));
    }

    bool InCell() const { return inCell_ && notes_ == 0; }

    void BeginSheet(const XmlElement& element) {
        name_ = element.Attribute("name");
        nextRow_ = 1;
    }
    void BeginRow(const XmlElement& element) {
        row_ = {.Sheet = name_, .Row = nextRow_, .Cells = {}};
        rows_ = Count(element, "number-rows-repeated");
        column_ = 0;
    }
    void BeginParagraph() {
        if (paragraphs_++ > 0) value_ += '\n';
        inParagraph_ = true;
    }

    void BeginCell(const XmlElement& element) {
        inCell_ = true;
        value_.clear();
        paragraphs_ = 0;
        repeat_ = Count(element, "number-columns-repeated");
        type_ = element.Attribute("value-type");
        number_ = element.Attribute("value");
        date_ = element.Attribute("date-value");
        truth_ = element.Attribute("boolean-value");
        formula_ = element.Attribute("formula");
        if (Count(element, "number-columns-spanned") > 1 ||
            Count(element, "number-rows-spanned") > 1)
            TakeMerged(element);
    }

    void TakeMerged(const XmlElement& element) {
        const auto columns = static_cast<int>(
            std::min<std::size_t>(Count(element, "number-columns-spanned"), kMaxSheetColumns));
        const auto rows = static_cast<std::int64_t>(Count(element, "number-rows-spanned"));
        merged_.push_back(CellAddressOf(column_, nextRow_) + ":" +
                          CellAddressOf(column_ + columns - 1, nextRow_ + rows - 1));
    }

    void EndCell() {
        inCell_ = false;
        inParagraph_ = false;
        SheetCell cell = TypedCell();
        const bool holds = !cell.Text.empty() || cell.Kind == SheetCellKind::Formula;
        for (std::size_t i = 0; i < repeat_ && column_ < kMaxSheetColumns; ++i, ++column_) {
            cell.Column = column_;
            if (holds) row_.Cells.push_back(cell);
        }
    }

    /// A formula that failed is kept as a text or a number, with its error as the text shown.
    bool IsError() const {
        return !formula_.empty() && (value_.starts_with('#') || value_.starts_with("Err:"));
    }

    SheetCell TypedCell() const {
        using enum SheetCellKind;
        if (IsError()) return {0, Error, value_};
        if (type_ == "date") return {0, Date, DateText(date_)};
        if (type_ == "boolean") return {0, Truth, truth_ == "true" ? "TRUE" : "FALSE"};
        const auto number = ParseNumber(number_);
        if (number) return {0, Number, NumberText(*number)};
        if (type_.empty() && !formula_.empty()) return {0, Formula, {}};
        return {0, SheetCellKind::Text, value_};
    }

    void EndRow() {
        for (std::string& range : merged_)
            take_({.Sheet = name_, .Cells = {}, .Merged = std::move(range)});
        merged_.clear();
        if (row_.Cells.empty()) {
            nextRow_ += static_cast<std::int64_t>(rows_);
            return;
        }
        for (std::size_t i = 0; i < rows_; ++i) {
            if (nextRow_ > kMaxRows)
                throw UnreadableSheets(
                    fmt::format("sheet {} has more than {} rows", name_, kMaxRows));
            row_.Row = nextRow_++;
            take_(SheetRow(row_));
        }
    }

    const TakeRow& take_;
    std::string name_;
    SheetRow row_;
    std::int64_t nextRow_ = 1;
    std::size_t rows_ = 1;
    int column_ = 0;
    std::size_t repeat_ = 1;
    std::string type_;
    std::string number_;
    std::string date_;
    std::string truth_;
    std::string formula_;
    std::string value_;
    std::vector<std::string> merged_;
    int paragraphs_ = 0;
    int notes_ = 0;
    bool inCell_ = false;
    bool inParagraph_ = false;
};

}  // namespace

void ReadOds(std::string_view file, const TakeRow& take) {
    const ZipEntries parts(file);
    if (!parts.Has("content.xml")) throw UnreadableSheets("it is no workbook");
    ContentHandler content(take);
    WalkXml(parts.Read("content.xml"), "content.xml", content);
}

}  // namespace zolmara
