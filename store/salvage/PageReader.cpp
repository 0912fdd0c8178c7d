#include "store/salvage/PageReader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include "store/base/StoreError.h"

namespace zolmara::salvage {
namespace {

// The file's header, the first bytes of page 1.
constexpr std::string_view kMagic{"SQLite format 3\0", 16};
constexpr std::size_t kFileHeaderSize = 100;
constexpr std::size_t kPageSizeAt = 16;
constexpr std::size_t kReservedAt = 20;
constexpr std::size_t kFirstTrunkAt = 32;
constexpr std::size_t kDefaultPageSize = 4096;
constexpr std::size_t kSmallestPageSize = 512;
constexpr std::size_t kLargestPageSize = 65536;
constexpr std::size_t kSmallestUsable = 480;

// The header of a b-tree page, from its first byte.
constexpr std::size_t kFirstFreeBlockAt = 1;
constexpr std::size_t kCellCountAt = 3;
constexpr std::size_t kContentStartAt = 5;
constexpr std::size_t kFragmentsAt = 7;
constexpr std::size_t kRightChildAt = 8;
constexpr std::size_t kLeafHeaderSize = 8;
constexpr std::size_t kInteriorHeaderSize = 12;
constexpr std::size_t kPointerSize = 2;
constexpr std::size_t kSmallestCell = 4;
constexpr std::size_t kPageNoSize = 4;

// A page of the list of free pages: the next such page, a count, then free pages.
constexpr std::size_t kTrunkCountAt = 4;
constexpr std::size_t kTrunkLeavesAt = 8;

constexpr std::size_t kOverflowRounds = 32;

bool IsLeaf(PageKind kind) { return kind == PageKind::TableLeaf || kind == PageKind::IndexLeaf; }

bool IsTable(PageKind kind) {
    return kind == PageKind::TableLeaf || kind == PageKind::TableInterior;
}

PageKind KindOf(std::uint8_t byte) {
    switch (static_cast<PageKind>(byte)) {
        case PageKind::IndexInterior:
        case PageKind::TableInterior:
        case PageKind::IndexLeaf:
        case PageKind::TableLeaf:
            return static_cast<PageKind>(byte);
        default:
            return PageKind::None;
    }
}

std::vector<std::uint8_t> ReadWhole(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        throw StoreError(StoreError::Kind::CannotOpen, path + ": the file cannot be opened");
    }
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = in ? static_cast<std::streamoff>(in.tellg()) : -1;
    std::vector<std::uint8_t> content(size > 0 ? static_cast<std::size_t>(size) : 0);
    in.seekg(0);
    in.read(reinterpret_cast<char*>(content.data()), size > 0 ? size : 0);
    if (size < 0 || !in) {
        throw StoreError(StoreError::Kind::CannotOpen, "unable to read database file: " + path);
    }
    return content;
}

void CutIntoPages(PageFile& file, std::size_t pageSize, std::size_t reserved) {
    file.PageSize = pageSize;
    file.Usable = pageSize - reserved;
    file.Count = static_cast<PageNo>((file.Length + pageSize - 1) / pageSize);
    file.Content.resize(file.Count * pageSize);
}

std::size_t SoundPages(const PageFile& file) {
    std::size_t count = 0;
    for (PageNo page = 1; page <= file.Count; ++page) count += ParsePage(file, page).Sound;
    return count;
}

// The header's page size counts when it makes better sense of the file than the usual one: the
// header may be the very thing that is damaged.
void ChoosePageSize(PageFile& file) {
    CutIntoPages(file, kDefaultPageSize, 0);
    const Bytes header(file.Content);
    if (file.Length < kFileHeaderSize ||
        !std::equal(kMagic.begin(), kMagic.end(), file.Content.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; })) {
        return;
    }
    const std::uint64_t field = ReadBig(header, kPageSizeAt, 2);
    const std::size_t size = field == 1 ? kLargestPageSize : static_cast<std::size_t>(field);
    const std::size_t reserved = header[kReservedAt];
    const bool sane =
        size >= kSmallestPageSize && (size & (size - 1)) == 0 && size >= kSmallestUsable + reserved;
    if (!sane || (size == kDefaultPageSize && reserved == 0)) return;
    const std::size_t usual = SoundPages(file);
    CutIntoPages(file, size, reserved);
    if (SoundPages(file) <= usual) CutIntoPages(file, kDefaultPageSize, 0);
}

void MarkPages(PageFile& file) {
    file.Marks.resize(file.Count + 1ULL);
    for (PageNo page = 1; page <= file.Count; ++page) {
        const Bytes bytes = PageBytes(file, page);
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        file.Marks[page] = std::hash<std::string_view>{}(text);
    }
    file.SortedMarks = file.Marks;
    std::sort(file.SortedMarks.begin() + 1, file.SortedMarks.end());
}

// How much of a payload stays on the page; the rest goes to overflow pages.
std::size_t LocalPayload(std::size_t usable, PageKind kind, std::uint64_t payload) {
    const std::size_t most =
        kind == PageKind::TableLeaf ? usable - 35 : (usable - 12) * 64 / 255 - 23;
    if (payload <= most) return static_cast<std::size_t>(payload);
    const std::size_t least = (usable - 12) * 32 / 255 - 23;
    const auto rest = static_cast<std::size_t>((payload - least) % (usable - kPageNoSize));
    return least + rest <= most ? least + rest : least;
}

bool ReadPayloadPlace(const PageFile& file, Bytes page, PageKind kind, std::size_t at, Cell& cell) {
    if (cell.PayloadSize > std::uint64_t{file.Count} * file.Usable) return false;
    cell.LocalAt = at;
    cell.LocalSize = LocalPayload(file.Usable, kind, cell.PayloadSize);
    at += cell.LocalSize;
    if (cell.LocalSize < cell.PayloadSize) {
        cell.Overflow = static_cast<PageNo>(ReadBig(page, at, kPageNoSize));
        at += kPageNoSize;
    }
    cell.Size = std::max(at - cell.At, kSmallestCell);
    return at <= file.Usable;
}

std::optional<Cell> ReadCell(const PageFile& file, Bytes page, PageKind kind, std::size_t at) {
    Cell cell;
    cell.At = at;
    if (!IsLeaf(kind)) {
        if (at + kPageNoSize > page.size()) return std::nullopt;
        cell.Child = static_cast<PageNo>(ReadBig(page, at, kPageNoSize));
        at += kPageNoSize;
    }
    if (kind != PageKind::TableInterior) {
        const auto payload = ReadVarint(page, at);
        if (!payload) return std::nullopt;
        cell.PayloadSize = *payload;
    }
    if (IsTable(kind)) {
        const auto key = ReadVarint(page, at);
        if (!key) return std::nullopt;
        cell.Key = static_cast<std::int64_t>(*key);
    }
    if (kind == PageKind::TableInterior) {
        cell.Size = at - cell.At;
        return cell;
    }
    if (!ReadPayloadPlace(file, page, kind, at, cell)) return std::nullopt;
    return cell;
}

using Extents = std::vector<std::pair<std::size_t, std::size_t>>;

// The chain of free blocks, which ascends; false where it leaves its bounds.
bool AddFreeBlocks(Bytes page, std::size_t at, Extents& extents) {
    std::size_t behind = 0;
    while (at != 0) {
        if (at < behind || at + kSmallestCell > page.size()) return false;
        const auto size = static_cast<std::size_t>(ReadBig(page, at + kPointerSize, 2));
        if (size < kSmallestCell || at + size > page.size()) return false;
        extents.emplace_back(at, size);
        behind = at + size;
        at = static_cast<std::size_t>(ReadBig(page, at, kPointerSize));
    }
    return true;
}

// True where the extents lie behind `start`, none over another, and leave `spare` bytes between.
bool FillExactly(Extents& extents, std::size_t start, std::size_t end, std::size_t spare) {
    std::sort(extents.begin(), extents.end());
    std::size_t behind = start;
    std::size_t used = 0;
    for (const auto& [at, size] : extents) {
        if (at < behind) return false;
        behind = at + size;
        used += size;
    }
    return start <= end && behind <= end && start + used + spare == end;
}

bool KeysAscend(const TreePage& tree) {
    for (std::size_t i = 1; i < tree.Cells.size(); ++i) {
        if (tree.Cells[i]->Key <= tree.Cells[i - 1]->Key) return false;
    }
    return true;
}

std::size_t HeaderAt(PageNo page) { return page == 1 ? kFileHeaderSize : 0; }

std::size_t FirstFreeBlock(Bytes page, std::size_t header) {
    return static_cast<std::size_t>(ReadBig(page, header + kFirstFreeBlockAt, 2));
}

std::size_t ContentStart(Bytes page, std::size_t header) {
    const auto start = static_cast<std::size_t>(ReadBig(page, header + kContentStartAt, 2));
    return start == 0 ? kLargestPageSize : start;
}

std::size_t PointersAt(PageNo page, PageKind kind) {
    return HeaderAt(page) + (IsLeaf(kind) ? kLeafHeaderSize : kInteriorHeaderSize);
}

bool IsSound(const TreePage& tree, Bytes page, std::size_t header, std::size_t pointersEnd) {
    Extents extents;
    for (const auto& cell : tree.Cells) {
        if (!cell) return false;
        extents.emplace_back(cell->At, cell->Size);
    }
    const std::size_t start = ContentStart(page, header);
    return start >= pointersEnd && AddFreeBlocks(page, FirstFreeBlock(page, header), extents) &&
           FillExactly(extents, start, page.size(), page[header + kFragmentsAt]) &&
           (!IsTable(tree.Kind) || KeysAscend(tree));
}

/// The i-th of so many cells.
std::optional<Cell> CellOf(const PageFile& file, PageNo number, PageKind kind, std::size_t i,
                           std::size_t count) {
    const Bytes page = PageBytes(file, number).first(file.Usable);
    const std::size_t pointers = PointersAt(number, kind);
    const auto at =
        static_cast<std::size_t>(ReadBig(page, pointers + i * kPointerSize, kPointerSize));
    if (at < pointers + count * kPointerSize) return std::nullopt;
    auto cell = ReadCell(file, page, kind, at);
    if (cell && cell->At + cell->Size > BytesThere(file, number)) cell.reset();
    return cell;
}

TreePage ParseAs(const PageFile& file, PageNo number, PageKind kind) {
    TreePage tree;
    tree.Number = number;
    if (number < 1 || number > file.Count || kind == PageKind::None) return tree;
    const Bytes page = PageBytes(file, number).first(file.Usable);
    tree.Kind = kind;
    const std::size_t header = HeaderAt(number);
    const std::size_t pointers = PointersAt(number, kind);
    if (!IsLeaf(kind)) {
        tree.RightChild = static_cast<PageNo>(ReadBig(page, header + kRightChildAt, kPageNoSize));
    }
    const std::size_t told = static_cast<std::size_t>(ReadBig(page, header + kCellCountAt, 2));
    const std::size_t count = std::min(told, (page.size() - pointers) / kPointerSize);
    tree.Cells.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        tree.Cells.push_back(CellOf(file, number, kind, i, count));
    tree.Sound = told == count && IsSound(tree, page, header, pointers + count * kPointerSize);
    return tree;
}

}  // namespace

std::uint64_t ReadBig(Bytes bytes, std::size_t at, std::size_t size) {
    if (at > bytes.size() || size > bytes.size() - at) return 0;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | bytes[at + i];
    return value;
}

std::optional<std::uint64_t> ReadVarint(Bytes bytes, std::size_t& at) {
    constexpr int kLastByte = 8;
    std::uint64_t value = 0;
    for (int i = 0; i <= kLastByte; ++i) {
        if (at >= bytes.size()) return std::nullopt;
        const std::uint8_t byte = bytes[at++];
        if (i == kLastByte) return value << 8 | byte;
        value = value << 7 | (byte & 0x7FU);
        if (byte < 0x80) return value;
    }
    return value;
}

PageFile ReadPageFile(const std::string& path) {
    PageFile file;
    file.Content = ReadWhole(path);
    file.Length = file.Content.size();
    ChoosePageSize(file);
    MarkPages(file);
    file.OverflowBudget = file.Content.size() * kOverflowRounds;
    return file;
}

Bytes PageBytes(const PageFile& file, PageNo page) {
    if (page < 1 || page > file.Count) return {};
    const std::size_t at = (page - std::size_t{1}) * file.PageSize;
    return Bytes(file.Content).subspan(at, file.PageSize);
}

std::size_t BytesThere(const PageFile& file, PageNo page) {
    const std::size_t at = (page - std::size_t{1}) * file.PageSize;
    return at >= file.Length ? 0 : std::min(file.PageSize, file.Length - at);
}

bool HasTwin(const PageFile& file, PageNo page) {
    const auto [first, last] =
        std::equal_range(file.SortedMarks.begin() + 1, file.SortedMarks.end(), file.Marks[page]);
    return last - first > 1;
}

std::vector<bool> FreePages(const PageFile& file) {
    std::vector<bool> free(file.Count + 1ULL, false);
    std::vector<bool> seen(file.Count + 1ULL, false);
    auto trunk = static_cast<PageNo>(ReadBig(PageBytes(file, 1), kFirstTrunkAt, kPageNoSize));
    while (trunk > 1 && trunk <= file.Count && !seen[trunk]) {
        seen[trunk] = true;
        const Bytes page = PageBytes(file, trunk);
        const std::uint64_t count = ReadBig(page, kTrunkCountAt, kPageNoSize);
        if (count > file.Usable / kPageNoSize - 2) break;
        free[trunk] = true;
        for (std::size_t i = 0; i < count; ++i) {
            const auto leaf = ReadBig(page, kTrunkLeavesAt + i * kPageNoSize, kPageNoSize);
            if (leaf > 1 && leaf <= file.Count) free[static_cast<std::size_t>(leaf)] = true;
        }
        trunk = static_cast<PageNo>(ReadBig(page, 0, kPageNoSize));
    }
    return free;
}

std::vector<bool> ChildPages(const PageFile& file) {
    std::vector<bool> children(file.Count + 1ULL, false);
    for (PageNo page = 1; page <= file.Count; ++page) {
        const TreePage tree = ParsePage(file, page);
        if (!tree.Sound || tree.Kind != PageKind::TableInterior) continue;
        if (tree.RightChild <= file.Count) children[tree.RightChild] = true;
        for (const auto& cell : tree.Cells) {
            if (cell->Child <= file.Count) children[cell->Child] = true;
        }
    }
    return children;
}

TreePage ParsePage(const PageFile& file, PageNo page) {
    const Bytes bytes = PageBytes(file, page);
    const std::size_t header = page == 1 ? kFileHeaderSize : 0;
    return ParseAs(file, page, header < bytes.size() ? KindOf(bytes[header]) : PageKind::None);
}

std::optional<Cell> ParseCell(const PageFile& file, const TreePage& tree, std::size_t i) {
    return CellOf(file, tree.Number, tree.Kind, i, tree.Cells.size());
}

std::optional<std::int64_t> UnclaimedBytes(const PageFile& file, const TreePage& tree) {
    const Bytes page = PageBytes(file, tree.Number).first(file.Usable);
    const std::size_t header = HeaderAt(tree.Number);
    Extents extents;
    if (!AddFreeBlocks(page, FirstFreeBlock(page, header), extents)) return std::nullopt;
    for (const auto& cell : tree.Cells)
        if (cell) extents.emplace_back(cell->At, cell->Size);
    auto unclaimed = static_cast<std::int64_t>(page.size()) -
                     static_cast<std::int64_t>(ContentStart(page, header)) -
                     page[header + kFragmentsAt];
    for (const auto& [at, size] : extents) unclaimed -= static_cast<std::int64_t>(size);
    return unclaimed;
}

TreePage ParseTablePage(const PageFile& file, PageNo page) {
    TreePage told = ParsePage(file, page);
    if (IsTable(told.Kind)) return told;
    for (const PageKind kind : {PageKind::TableLeaf, PageKind::TableInterior}) {
        TreePage tree = ParseAs(file, page, kind);
        if (tree.Sound && !tree.Cells.empty()) return tree;
    }
    return TreePage{};
}

}  // namespace zolmara::salvage
