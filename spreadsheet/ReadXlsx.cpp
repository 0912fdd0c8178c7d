// Workbooks of the kind xlsx: parts of XML in a zip archive.

#include <fmt/format.h>

#include <map>
#include <vector>

#include "core/Globals.h"
#include "spreadsheet/SheetDates.h"
#include "spreadsheet/SheetReaders.h"
#include "spreadsheet/XmlWalk.h"
#include "spreadsheet/ZipEntries.h"

namespace zolmara {

namespace {

/// The parts that a part names, by their ids.
struct Relations : XmlHandler {
    std::map<std::string, std::string> Targets;
    std::map<std::string, std::string> ByType;  ///< by the last word of the type

    void Begin(const XmlElement& element) override {
        if (element.Name != "Relationship") return;
        const std::string target = element.Attribute("Target");
        const std::string type = element.Attribute("Type");
        Targets[element.Attribute("Id")] = target;
        ByType[type.substr(type.rfind('/') + 1)] = target;
    }
};

struct SheetList : XmlHandler {
    std::vector<std::pair<std::string, std::string>> Sheets;  ///< name and id of the part
    bool Since1904 = false;

    void Begin(const XmlElement& element) override {
        if (element.Name == "sheet")
            Sheets.emplace_back(element.Attribute("name"), element.Attribute("id"));
        if (element.Name == "workbookPr") {
            const std::string since = element.Attribute("date1904");
            Since1904 = since == "1" || since == "true";
        }
    }
};

/// The texts that cells name by number. A text in pieces is joined; phonetic signs are not of it.
struct SharedTexts : XmlHandler {
    std::vector<std::string> Texts;

    void Begin(const XmlElement& element) override {
        if (element.Name == "si") Texts.emplace_back();
        if (element.Name == "rPh") ++phonetic_;
        inText_ = element.Name == "t" && phonetic_ == 0;
    }
    void End(std::string_view name) override {
        if (name == "rPh") --phonetic_;
        if (name == "t") inText_ = false;
    }
    void Text(std::string_view text) override {
        if (inText_ && !Texts.empty()) Texts.back() += text;
    }

private:
    int phonetic_ = 0;
    bool inText_ = false;
};

/// Which cell formats show dates.
struct DateStyles : XmlHandler {
    std::vector<bool> IsDate;

    void Begin(const XmlElement& element) override {
        if (element.Name == "numFmt")
            codes_[element.Attribute("numFmtId")] = IsDateFormat(element.Attribute("formatCode"));
        if (element.Name == "cellXfs") inCells_ = true;
        if (element.Name == "xf" && inCells_) IsDate.push_back(Shows(element));
    }
    void End(std::string_view name) override {
        if (name == "cellXfs") inCells_ = false;
    }

private:
    bool Shows(const XmlElement& element) const {
        const std::string id = element.Attribute("numFmtId");
        const auto code = codes_.find(id);
        return code != codes_.end() ? code->second : IsDateFormat(static_cast<int>(Val(id)));
    }

    std::map<std::string, bool> codes_;
    bool inCells_ = false;
};

/// What all sheets of a workbook share.
struct Workbook {
    SharedTexts Texts;
    DateStyles Styles;
    bool Since1904 = false;
};

constexpr std::int64_t kMaxRows = 1048576;

/// The column of "AB12", from 0; -1 without letters.
int ColumnOf(std::string_view reference) {
    int column = 0;
    for (const char c : reference) {
        if (c < 'A' || c > 'Z' || column > kMaxSheetColumns) break;
        column = column * 26 + (c - 'A' + 1);
    }
    return column - 1;
}

class SheetHandler : public XmlHandler {
public:
    SheetHandler(const Workbook& book, std::string name, const TakeRow& take)
        : book_(book), name_(std::move(name)), take_(take) {}

    void Begin(const XmlElement& element) override {
        if (element.Name == "row") BeginRow(element);
        if (element.Name == "c") BeginCell(element);
        if (element.Name == "f") formula_ = true;
        if (element.Name == "v") inValue_ = true;
        if (element.Name == "is") inline_ = true;
        if (element.Name == "t" && inline_) inValue_ = true;
        if (element.Name == "rPh") inline_ = false;
        if (element.Name == "mergeCell")
            take_({.Sheet = name_, .Cells = {}, .Merged = element.Attribute("ref")});
    }
    void End(std::string_view name) override {
        if (name == "v" || name == "t") inValue_ = false;
        if (name == "is") inline_ = false;
        if (name == "c") EndCell();
        if (name == "row" && !row_.Cells.empty()) take_(std::move(row_));
    }
    void Text(std::string_view text) override {
        if (inValue_) value_ += text;
    }

private:
    void BeginRow(const XmlElement& element) {
        const std::string number = element.Attribute("r");
        const auto told = static_cast<std::int64_t>(Val(number));
        rowNumber_ = number.empty() ? rowNumber_ + 1 : told;
        if (rowNumber_ < 1 || rowNumber_ > kMaxRows)
            throw UnreadableSheets(fmt::format("sheet {} has no row {}", name_, number));
        row_ = {.Sheet = name_, .Row = rowNumber_, .Cells = {}};
        column_ = -1;
    }

    void BeginCell(const XmlElement& element) {
        const std::string reference = element.Attribute("r");
        column_ = reference.empty() ? column_ + 1 : ColumnOf(reference);
        type_ = element.Attribute("t");
        style_ = element.Attribute("s");
        value_.clear();
        formula_ = false;
    }

    void EndCell() {
        const bool holds = !value_.empty() || formula_;
        const bool fits = column_ >= 0 && column_ < kMaxSheetColumns &&
                          row_.Cells.size() < static_cast<std::size_t>(kMaxSheetColumns);
        if (holds && fits) row_.Cells.push_back(TypedCell());
    }

    SheetCell TypedCell() const {
        using enum SheetCellKind;
        if (type_ == "s") return {column_, Text, SharedText()};
        if (type_ == "str" || type_ == "inlineStr") return {column_, Text, value_};
        if (type_ == "b") return {column_, Truth, value_ == "1" ? "TRUE" : "FALSE"};
        if (type_ == "e") return {column_, Error, value_};
        if (type_ == "d") return {column_, Date, value_};
        return value_.empty() ? SheetCell{column_, Formula, {}} : NumberCell();
    }

    SheetCell NumberCell() const {
        const auto number = ParseNumber(value_);
        if (!number) return {column_, SheetCellKind::Text, value_};
        if (IsDate()) {
            const std::string date = DateOfSerial(*number, book_.Since1904);
            if (!date.empty()) return {column_, SheetCellKind::Date, date};
        }
        return {column_, SheetCellKind::Number, NumberText(*number)};
    }

    bool IsDate() const {
        const auto style = static_cast<std::size_t>(std::max(Val(style_), 0.0));
        return style < book_.Styles.IsDate.size() && book_.Styles.IsDate[style];
    }

    std::string SharedText() const {
        const double index = ParseNumber(value_).value_or(-1);
        if (index < 0 || index >= static_cast<double>(book_.Texts.Texts.size()))
            throw UnreadableSheets(fmt::format("cell {} names a text that is not there",
                                               CellAddressOf(name_, column_, rowNumber_)));
        return book_.Texts.Texts[static_cast<std::size_t>(index)];
    }

    const Workbook& book_;
    std::string name_;
    const TakeRow& take_;
    SheetRow row_;
    std::int64_t rowNumber_ = 0;
    int column_ = -1;
    std::string type_;
    std::string style_;
    std::string value_;
    bool formula_ = false;
    bool inValue_ = false;
    bool inline_ = false;
};

/// The path in the archive of a part that another one names.
std::string PathOf(const std::string& folder, const std::string& target) {
    return target.starts_with('/') ? target.substr(1) : folder + target;
}

void Walk(const ZipEntries& parts, const std::string& path, XmlHandler& handler) {
    WalkXml(parts.Read(path), path, handler);
}

std::string WorkbookPath(const ZipEntries& parts) {
    Relations top;
    Walk(parts, "_rels/.rels", top);
    const auto found = top.ByType.find("officeDocument");
    if (found == top.ByType.end()) throw UnreadableSheets("it is no workbook");
    return PathOf("", found->second);
}

}  // namespace

void ReadXlsx(std::string_view file, const TakeRow& take) {
    const ZipEntries parts(file);
    const std::string path = WorkbookPath(parts);
    const std::size_t slash = path.rfind('/') + 1;
    const std::string folder = path.substr(0, slash);
    SheetList list;
    Walk(parts, path, list);
    Relations relations;
    Walk(parts, folder + "_rels/" + path.substr(slash) + ".rels", relations);
    Workbook book;
    book.Since1904 = list.Since1904;
    const auto walkPart = [&](const char* type, XmlHandler& handler) {
        const auto part = relations.ByType.find(type);
        if (part != relations.ByType.end()) Walk(parts, PathOf(folder, part->second), handler);
    };
    walkPart("sharedStrings", book.Texts);
    walkPart("styles", book.Styles);
    for (const auto& [name, id] : list.Sheets) {
        SheetHandler sheet(book, name, take);
        Walk(parts, PathOf(folder, relations.Targets[id]), sheet);
    }
}

}  // namespace zolmara
