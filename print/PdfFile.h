#pragma once

// A PDF file of text, written page by page: a page that has been added is in the file and out of
// memory, so that thousands of pages take no more of it than one.

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "store/files/FileDoor.h"

namespace zolmara {

class PdfFile {
public:
    /// Begins the file aside. `producer` is the program's name in it. StoreError when the folder
    /// takes no file, or another's file of that name is kept.
    PdfFile(const std::string& path, const OwnOutput& own, std::string_view producer);

    /// The name by which a page's content calls one of the fonts that every reader has, such as
    /// "Courier-Bold", in code page 1252.
    std::string Font(const std::string& baseName);
    /// Adds a page of this size in points, with its content in the language of PDF. StoreError
    /// when the disk takes no more; then the file cannot be put any more.
    void AddPage(int width, int height, std::string_view content);

    /// Completes the file and gives it its name. StoreError when that fails.
    void Put();

private:
    using Number = std::size_t;  ///< of an object, from 1

    Number NewNumber();
    void Write(std::string_view bytes);
    void WriteObject(Number number, std::string_view body);
    void WriteStream(Number number, std::string_view content);
    /// The pages since the last group become one: a list in a PDF file ends at 8,191 entries.
    void EndGroup();
    void WritePage(int width, int height, std::string_view content);
    std::string FontList() const;
    void WriteTables();

    OutFile file_;
    std::uint64_t written_ = 0;
    std::exception_ptr failure_;
    std::vector<std::uint64_t> places_;  ///< where each object begins
    Number catalog_;
    Number root_;  ///< of the tree of pages
    Number info_;
    std::vector<std::string> fonts_;
    int pages_ = 0;
    struct Group {
        Number Node = 0;
        std::vector<Number> Pages;
    };
    Group group_;
    std::string groups_;  ///< what the root lists
    std::string packed_;
};

}  // namespace zolmara
