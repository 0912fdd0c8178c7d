#pragma once

// The pages of a database file, read without the database library: the file as a row of pages,
// the b-tree pages among them, and the cells on a page. Nothing here trusts a byte of the file;
// what lies outside its bounds is simply not there.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zolmara::salvage {

/// Pages count from 1.
using PageNo = std::uint32_t;
using Bytes = std::span<const std::uint8_t>;

/// First byte of a b-tree page.
enum class PageKind : std::uint8_t {
    None = 0x00,
    IndexInterior = 0x02,
    TableInterior = 0x05,
    IndexLeaf = 0x0A,
    TableLeaf = 0x0D,
};

/// A file held in memory.
struct PageFile {
    std::vector<std::uint8_t> Content;  ///< whole pages; a truncated last one is filled with zeros
    std::size_t Length = 0;             ///< bytes that the file really had
    std::size_t PageSize = 0;
    std::size_t Usable = 0;  ///< bytes of a page that the b-tree may use
    PageNo Count = 0;
    std::vector<std::uint64_t> Marks;        ///< a digest of each page
    std::vector<std::uint64_t> SortedMarks;  ///< the same in ascending order, from position 1
    /// Bytes that may still be read from overflow pages. Keeps a file that was made to send the
    /// reader in circles from taking hours.
    mutable std::size_t OverflowBudget = 0;
};

/// Reads the file. StoreError::CannotOpen when it cannot be read.
PageFile ReadPageFile(const std::string& path);

/// A page's bytes; none for a page that the file does not have.
Bytes PageBytes(const PageFile& file, PageNo page);

/// How many of a page's bytes the file really had.
std::size_t BytesThere(const PageFile& file, PageNo page);

/// True where another page has the same bytes.
bool HasTwin(const PageFile& file, PageNo page);

/// For each page number, true where the file's list of free pages names it.
std::vector<bool> FreePages(const PageFile& file);

/// For each page number, true where a sound interior page of a table names it as its child.
std::vector<bool> ChildPages(const PageFile& file);

/// A cell on a b-tree page. What the page's kind does not have is 0.
struct Cell {
    std::size_t At = 0;    ///< offset on the page
    std::size_t Size = 0;  ///< bytes on the page
    PageNo Child = 0;
    std::int64_t Key = 0;  ///< the rowid, on pages of a table
    std::uint64_t PayloadSize = 0;
    std::size_t LocalAt = 0;    ///< where the payload begins on the page
    std::size_t LocalSize = 0;  ///< how much of the payload is on the page
    PageNo Overflow = 0;        ///< first page of the rest
};

/// A b-tree page as far as it can be read.
struct TreePage {
    PageNo Number = 0;
    PageKind Kind = PageKind::None;
    PageNo RightChild = 0;
    std::vector<std::optional<Cell>> Cells;  ///< in the page's order; empty where unreadable
    /// Every byte is accounted for: all cells readable, none over another, keys ascending, and
    /// the free room as large as the page says.
    bool Sound = false;
};

/// Reads a page as the kind that its first byte tells.
TreePage ParsePage(const PageFile& file, PageNo page);

/// The i-th cell of a page that was parsed, as the file has it now.
std::optional<Cell> ParseCell(const PageFile& file, const TreePage& tree, std::size_t i);

/// How many bytes behind the start of a page's content neither a readable cell nor free room
/// claims; below 0 where they claim more than there is. Nothing where the chain of free blocks
/// leads astray. A sound page has none.
std::optional<std::int64_t> UnclaimedBytes(const PageFile& file, const TreePage& tree);

/// Reads a page of a table. A first byte that tells nothing of the kind is forgiven where the
/// rest of the page is sound.
TreePage ParseTablePage(const PageFile& file, PageNo page);

/// A big-endian whole number of `size` bytes; 0 outside the bytes.
std::uint64_t ReadBig(Bytes bytes, std::size_t at, std::size_t size);

/// A number of 1 to 9 bytes, seven bits each; moves `at` behind it. Nothing when it runs over
/// the end.
std::optional<std::uint64_t> ReadVarint(Bytes bytes, std::size_t& at);

}  // namespace zolmara::salvage
