#include "spreadsheet/BookEvaluator.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

#include "core/Globals.h"
#include "spreadsheet/SheetFiles.h"
#include "spreadsheet/XmlWalk.h"

namespace zolmara::test {
namespace {

using Value = BookValue;
using enum BookKind;

Value NumberValue(double number) { return {.Kind = Number, .Number = number}; }
Value TextValue(std::string text) { return {.Kind = Text, .Text = std::move(text)}; }
Value Fault(const std::string& what) { return {.Kind = Error, .Text = what}; }
Value Truth(bool truth) { return NumberValue(truth ? 1 : 0); }

// --- Reading ---------------------------------------------------------------------------------

struct BookParts : XmlHandler {
    std::vector<std::string> Sheets;
    std::map<std::string, std::string> Names;
    std::string Name;

    void Begin(const XmlElement& element) override {
        if (element.Name == "sheet") Sheets.push_back(element.Attribute("name"));
        Name = element.Name == "definedName" ? element.Attribute("name") : "";
    }
    void Text(std::string_view text) override {
        if (!Name.empty()) Names[Name] += text;
    }
};

struct SheetCells : XmlHandler {
    std::map<BookAddress, BookCell> Cells;
    BookCell Cell;
    BookAddress At;
    std::string Type;
    std::string Value;
    std::string* Target = nullptr;

    void Begin(const XmlElement& element) override {
        if (element.Name == "c") {
            Cell = {};
            Value.clear();
            At = AddressOf(element.Attribute("r"));
            Type = element.Attribute("t");
        }
        if (element.Name == "f") {
            Cell.IsArray = element.Attribute("t") == "array";
            Target = &Cell.Formula;
        }
        if (element.Name == "v" || element.Name == "t") Target = &Value;
    }
    void End(std::string_view name) override {
        Target = nullptr;
        if (name != "c") return;
        if (Type == "str" || Type == "inlineStr")
            Cell.Cached = TextValue(Value);
        else if (!Value.empty())
            Cell.Cached = NumberValue(std::stod(Value));
        Cells[At] = Cell;
    }
    void Text(std::string_view text) override {
        if (Target != nullptr) *Target += text;
    }
};

// --- Formulas --------------------------------------------------------------------------------

class Parser {
public:
    Parser(Book& book, std::string sheet, BookAddress own, const std::string& text)
        : book_(book), sheet_(std::move(sheet)), own_(own), text_(text) {}

    Value Whole() {
        Value value = Comparison();
        if (at_ != text_.size()) return Fault("left over: " + text_.substr(at_));
        return value;
    }

private:
    using Values = std::vector<Value>;
    using Binary = Value (*)(const Value&, const Value&);

    // --- Characters
    bool Takes(std::string_view word) {
        if (text_.compare(at_, word.size(), word) != 0) return false;
        at_ += word.size();
        return true;
    }
    char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    // --- Values
    static double NumberOf(const Value& value) { return value.Kind == Number ? value.Number : 0; }
    static const Value* ErrorIn(const Value& a, const Value& b) {
        if (a.Kind == Error) return &a;
        return b.Kind == Error ? &b : nullptr;
    }
    template <class Act>
    static Value Each(const Value& a, const Value& b, const Act& act) {
        if (a.Kind != Matrix && b.Kind != Matrix) {
            if (const Value* error = ErrorIn(a, b)) return *error;
            return act(a, b);
        }
        const Value& shape = a.Kind == Matrix ? a : b;
        Value result{.Kind = Matrix, .Columns = shape.Columns};
        for (std::size_t i = 0; i < shape.Cells.size(); ++i)
            result.Cells.push_back(Each(a.Kind == Matrix ? a.Cells.at(i) : a,
                                        b.Kind == Matrix ? b.Cells.at(i) : b, act));
        return result;
    }
    template <class Act>
    static Value Arithmetic(const Value& a, const Value& b, const Act& act) {
        return Each(a, b, [&](const Value& x, const Value& y) {
            if (x.Kind == Text || y.Kind == Text) return Fault("#VALUE!");
            return NumberValue(act(NumberOf(x), NumberOf(y)));
        });
    }
    template <class Act>
    static Value Map(const Value& a, const Act& act) {
        return Arithmetic(a, NumberValue(0), [&](double x, double) { return act(x); });
    }

    /// Less than, equal to or greater than 0; nothing is "" to a text and 0 to a number.
    static int Compare(const Value& a, const Value& b) {
        const bool textual = a.Kind == Text || b.Kind == Text;
        if (!textual) return NumberOf(a) < NumberOf(b) ? -1 : NumberOf(a) > NumberOf(b) ? 1 : 0;
        if (a.Kind == Number) return -1;
        if (b.Kind == Number) return 1;
        return a.Text.compare(b.Text);
    }

    // --- Grammar
    Value Comparison() {
        Value left = Additive();
        constexpr std::string_view kSigns[] = {"<>", "<=", ">=", "<", ">", "="};
        for (const std::string_view sign : kSigns) {
            if (!Takes(sign)) continue;
            const Value right = Additive();
            return Each(left, right, [&](const Value& a, const Value& b) {
                const int order = Compare(a, b);
                return Truth(sign == "<>"   ? order != 0
                             : sign == "<=" ? order <= 0
                             : sign == ">=" ? order >= 0
                             : sign == "<"  ? order < 0
                             : sign == ">"  ? order > 0
                                            : order == 0);
            });
        }
        return left;
    }
    Value Additive() {
        Value left = Term();
        for (;;) {
            if (Takes("+"))
                left = Arithmetic(left, Term(), [](double a, double b) { return a + b; });
            else if (Takes("-"))
                left = Arithmetic(left, Term(), [](double a, double b) { return a - b; });
            else
                return left;
        }
    }
    Value Term() {
        Value left = Factor();
        for (;;) {
            if (Takes("*"))
                left = Arithmetic(left, Factor(), [](double a, double b) { return a * b; });
            else if (Takes("/"))
                left = Divided(left, Factor());
            else
                return left;
        }
    }
    static Value Divided(const Value& a, const Value& b) {
        return Each(a, b, [](const Value& x, const Value& y) {
            if (x.Kind == Text || y.Kind == Text) return Fault("#VALUE!");
            if (NumberOf(y) == 0) return Fault("#DIV/0!");
            return NumberValue(NumberOf(x) / NumberOf(y));
        });
    }
    Value Factor() {
        if (Takes("-")) return Map(Factor(), [](double x) { return -x; });
        if (Takes("(")) {
            Value inner = Comparison();
            if (!Takes(")")) return Fault("no bracket");
            return inner;
        }
        if (Peek() == '"') return TextValue(Quoted('"'));
        if (Peek() == '\'') {
            const std::string sheet = Quoted('\'');
            if (!Takes("!")) return Fault("no sheet");
            return Reference(sheet);
        }
        if (std::isdigit(Peek()) != 0 || Peek() == '.') return Literal();
        if (std::isalpha(Peek()) != 0 || Peek() == '$') return Word();
        return Fault("what is this: " + text_.substr(at_));
    }
    std::string Quoted(char mark) {
        const std::size_t end = text_.find(mark, at_ + 1);
        std::string inner = text_.substr(at_ + 1, end - at_ - 1);
        at_ = end + 1;
        return inner;
    }
    Value Literal() {
        std::size_t size = 0;
        const double number = std::stod(text_.substr(at_), &size);
        at_ += size;
        return NumberValue(number);
    }
    Value Word() {
        std::size_t end = at_;
        while (end < text_.size() && std::isalpha(text_[end]) != 0) ++end;
        if (end == text_.size() || text_[end] != '(') return Reference(sheet_);
        const std::string name = text_.substr(at_, end - at_);
        at_ = end + 1;
        return Function(name);
    }

    BookAddress Address() {
        std::string plain;
        while (std::isalnum(Peek()) != 0 || Peek() == '$') {
            if (Peek() != '$') plain += Peek();
            ++at_;
        }
        return AddressOf(plain);
    }
    Value Reference(const std::string& sheet) {
        const BookAddress first = Address();
        if (!Takes(":")) return book_.Value(sheet, first);
        const BookAddress last = Address();
        Value range{.Kind = Matrix, .Columns = last.second - first.second + 1};
        for (int row = first.first; row <= last.first; ++row)
            for (int column = first.second; column <= last.second; ++column)
                range.Cells.push_back(book_.Value(sheet, {row, column}));
        return range;
    }

    // --- Functions
    Value Function(const std::string& name) {
        Values arguments;
        while (!Takes(")")) {
            if (at_ >= text_.size()) return Fault("no bracket");
            arguments.push_back(Comparison());
            Takes(",");
        }
        return Call(name, arguments);
    }

    static void Flatten(const Value& value, Values& out) {
        if (value.Kind != Matrix) return out.push_back(value);
        for (const Value& cell : value.Cells) Flatten(cell, out);
    }
    template <class Act>
    static Value Fold(const Values& arguments, double start, const Act& act) {
        Values all;
        for (const Value& argument : arguments) Flatten(argument, all);
        double result = start;
        for (const Value& value : all) {
            if (value.Kind == Error) return value;
            if (value.Kind == Number) result = act(result, value.Number);
        }
        return NumberValue(result);
    }

    Value Call(const std::string& name, Values& arguments) {
        if (name == "SUM") return Fold(arguments, 0, [](double a, double b) { return a + b; });
        if (name == "MAX") {
            return Fold(arguments, -1e308, [](double a, double b) { return std::max(a, b); });
        }
        if (name == "IF") return If(arguments);
        if (name == "AND") {
            bool all = true;
            for (const Value& value : arguments) all = all && NumberOf(value) != 0;
            return Truth(all);
        }
        if (name == "ROW") return NumberValue(own_.first);
        if (name == "ABS") return Map(arguments.at(0), [](double x) { return std::abs(x); });
        if (name == "TRUNC") return Map(arguments.at(0), [](double x) { return std::trunc(x); });
        if (name == "INT") return Map(arguments.at(0), [](double x) { return std::floor(x); });
        if (name == "ROUND") return Rounded(arguments.at(0), NumberOf(arguments.at(1)));
        if (name == "TEXT") return arguments.at(0);  // its one format keeps 15 digits: VALUE cuts
        if (name == "VALUE") return Map(arguments.at(0), [](double x) { return ThroughText(x); });
        if (name == "MATCH") return Match(arguments);
        if (name == "INDEX") return Index(arguments);
        if (name == "IFERROR")
            return arguments.at(0).Kind == Error ? arguments.at(1) : arguments.at(0);
        if (name == "SUMIFS") return SumIfs(arguments);
        return Fault("unknown function " + name);
    }

    static Value Rounded(const Value& value, double digits) {
        const double power = std::pow(10, digits);
        return Map(value, [&](double x) { return std::round(x * power) / power; });
    }
    static Value If(const Values& arguments) {
        const Value& condition = arguments.at(0);
        if (condition.Kind == Error) return condition;
        if (condition.Kind != Matrix)
            return NumberOf(condition) != 0 ? arguments.at(1) : arguments.at(2);
        Value result{.Kind = Matrix, .Columns = condition.Columns};
        const auto pick = [](const Value& from, std::size_t i) {
            return from.Kind == Matrix ? from.Cells.at(i) : from;
        };
        for (std::size_t i = 0; i < condition.Cells.size(); ++i)
            result.Cells.push_back(NumberOf(condition.Cells[i]) != 0 ? pick(arguments.at(1), i)
                                                                     : pick(arguments.at(2), i));
        return result;
    }
    static Value Match(const Values& arguments) {
        Values all;
        Flatten(arguments.at(1), all);
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i].Kind == arguments[0].Kind && Compare(all[i], arguments[0]) == 0)
                return NumberValue(static_cast<double>(i + 1));
        return Fault("#N/A");
    }
    static Value Index(const Values& arguments) {
        const Value& place = arguments.at(1);
        if (place.Kind == Error) return place;
        return arguments.at(0).Cells.at(static_cast<std::size_t>(place.Number) - 1);
    }
    static Value SumIfs(const Values& arguments) {
        Values amounts;
        Values lines;
        Flatten(arguments.at(0), amounts);
        Flatten(arguments.at(1), lines);
        const bool positive = arguments.size() > 3 && arguments.at(4).Text == ">0";
        double sum = 0;
        for (std::size_t i = 0; i < amounts.size(); ++i) {
            const bool named =
                lines.at(i).Kind == Number && lines.at(i).Number == NumberOf(arguments.at(2));
            if (named && (!positive || NumberOf(amounts[i]) > 0)) sum += NumberOf(amounts[i]);
        }
        return NumberValue(sum);
    }

    Book& book_;
    std::string sheet_;
    BookAddress own_;
    const std::string& text_;
    std::size_t at_ = 0;
};

}  // namespace

BookAddress AddressOf(const std::string& reference) {
    std::size_t i = 0;
    int column = 0;
    for (; i < reference.size() && std::isalpha(reference[i]) != 0; ++i)
        column = column * 26 + (reference[i] - 'A' + 1);
    return {std::stoi(reference.substr(i)), column - 1};
}

Book::Book(const std::string& path) : path_(path) {
    BookParts parts;
    WalkXml(ReadZip(path, "xl/workbook.xml"), "workbook.xml", parts);
    names_ = parts.Names;
    order_ = parts.Sheets;
    for (std::size_t i = 0; i < order_.size(); ++i) {
        Sheet& sheet = sheets_[order_[i]];
        sheet.Path = fmt::format("xl/worksheets/sheet{}.xml", i + 1);
        SheetCells cells;
        WalkXml(ReadZip(path, sheet.Path), sheet.Path, cells);
        sheet.Cells = std::move(cells.Cells);
    }
}

std::vector<std::string> Book::Sheets() const { return order_; }

const std::map<BookAddress, BookCell>& Book::Cells(const std::string& sheet) const {
    return sheets_.at(sheet).Cells;
}

std::string Book::Xml(const std::string& sheet) const {
    return ReadZip(path_, sheets_.at(sheet).Path);
}

const BookValue& Book::Value(const std::string& sheet, const BookAddress& cell) {
    static const BookValue kBlank;
    const auto found = sheets_.find(sheet);
    if (found == sheets_.end()) {
        static const BookValue kNoSheet = Fault("#REF!");
        return kNoSheet;
    }
    const auto known = found->second.Known.find(cell);
    if (known != found->second.Known.end()) return known->second;
    const auto standing = found->second.Cells.find(cell);
    if (standing == found->second.Cells.end()) return kBlank;
    const BookCell& told = standing->second;
    if (told.Formula.empty()) return told.Cached;
    BookValue value = Parser(*this, sheet, cell, told.Formula).Whole();
    // A reference to nothing shows 0.
    if (value.Kind == Blank) value = NumberValue(0);
    return found->second.Known[cell] = std::move(value);
}

void Book::Set(const std::string& sheet, const BookAddress& cell, double number) {
    sheets_.at(sheet).Cells[cell] = {.Cached = NumberValue(number)};
    for (auto& [name, standing] : sheets_) standing.Known.clear();
}

}  // namespace zolmara::test
