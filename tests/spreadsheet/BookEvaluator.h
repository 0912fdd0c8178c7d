#pragma once

// A workbook read back from its XML, and an evaluator of its formulas: what a spreadsheet program
// would come to. It knows no more than the words that the formulas use, and fails on any other.

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zolmara::test {

enum class BookKind { Blank, Number, Text, Error, Matrix };

/// A value of a formula. A matrix has rows of columns.
struct BookValue {
    BookKind Kind = BookKind::Blank;
    double Number = 0;
    std::string Text = {};
    int Columns = 0;
    std::vector<BookValue> Cells = {};  ///< of a matrix, row by row
};

struct BookCell {
    std::string Formula = {};  ///< empty for a value
    bool IsArray = false;
    BookValue Cached;  ///< the value, or the formula's result as stored
};

using BookAddress = std::pair<int, int>;  ///< row from 1, column from 0

class Book {
public:
    /// Reads a workbook; fails the test on what it does not understand.
    explicit Book(const std::string& path);

    std::vector<std::string> Sheets() const;
    const std::map<BookAddress, BookCell>& Cells(const std::string& sheet) const;
    const std::map<std::string, std::string>& Names() const { return names_; }
    std::string Xml(const std::string& sheet) const;

    /// What a cell comes to, all formulas that it rests on evaluated anew.
    const BookValue& Value(const std::string& sheet, const BookAddress& cell);
    /// Keys a number into a cell: what if.
    void Set(const std::string& sheet, const BookAddress& cell, double number);

private:
    struct Sheet {
        std::string Path;
        std::map<BookAddress, BookCell> Cells;
        std::map<BookAddress, BookValue> Known;
    };
    std::string path_;
    std::vector<std::string> order_;
    std::map<std::string, Sheet> sheets_;
    std::map<std::string, std::string> names_;
};

/// "C5" as an address.
BookAddress AddressOf(const std::string& reference);

}  // namespace zolmara::test
