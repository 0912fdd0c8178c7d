#pragma once

// Printed pages, kept on the disk: a large statement has thousands of them.

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace zolmara::ui {

/// A page as it was printed.
struct PrintedPage {
    int Orientation = 1;  ///< 1 portrait, 2 landscape
    std::vector<std::string> Lines;
};

/// Copies share their pages. The file has no name and goes with the last of them; where it lies
/// stands in store/files/UnnamedFile.h.
class PageSpool {
public:
    PageSpool();
    PageSpool(std::initializer_list<PrintedPage> pages);

    /// An error with a text for the user, the folder in it, when the disk takes no more.
    void Add(const PrintedPage& page);
    std::size_t Size() const;
    bool Empty() const { return Size() == 0; }
    /// The page of this number, from 0.
    PrintedPage At(std::size_t number) const;
    int OrientationOf(std::size_t number) const;
    /// How many pages were read back, in all copies.
    std::size_t Reads() const;

private:
    struct Store;
    std::shared_ptr<Store> store_;
};

}  // namespace zolmara::ui
