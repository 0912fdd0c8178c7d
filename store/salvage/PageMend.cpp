#include "store/salvage/PageMend.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "store/salvage/RecordReader.h"

namespace zolmara::salvage {
namespace {

/// A file with more broken pages has suffered worse than single bits, and trying takes its time.
constexpr std::size_t kMostPages = 3;
constexpr std::size_t kFileHeaderSize = 100;
constexpr std::size_t kPageHeaderSize = 12;
constexpr std::size_t kPointerSize = 2;
/// Two numbers of up to nine bytes, or a child page and one, stand ahead of a cell's content.
constexpr std::size_t kCellHeadSize = 18;

std::size_t HeaderAt(PageNo page) { return page == 1 ? kFileHeaderSize : 0; }

bool IsSound(const PageFile& file, PageNo page) {
    const TreePage tree = ParsePage(file, page);
    return tree.Sound && !tree.Cells.empty();
}

/// A byte that says where something on the page lies, and the cells that are read by it.
struct Place {
    bool OfHeader = false;
    bool OfPointer = false;
    std::vector<std::size_t> Cells{};
};
using Places = std::map<std::size_t, Place>;

Places StructureOf(const PageFile& file, const TreePage& tree) {
    Places places;
    const std::size_t header = HeaderAt(tree.Number);
    for (std::size_t at = header; at < header + kPageHeaderSize; ++at) places[at].OfHeader = true;
    const Bytes content = PageBytes(file, tree.Number);
    const bool leaf = tree.Kind == PageKind::TableLeaf || tree.Kind == PageKind::IndexLeaf;
    const std::size_t pointers = header + (leaf ? 8 : kPageHeaderSize);
    for (std::size_t i = 0; i < tree.Cells.size(); ++i) {
        const std::size_t pointer = pointers + i * kPointerSize;
        for (std::size_t at = pointer; at < pointer + kPointerSize; ++at) {
            places[at].OfPointer = true;
            places[at].Cells.push_back(i);
        }
        const auto start = static_cast<std::size_t>(ReadBig(content, pointer, kPointerSize));
        for (std::size_t at = start; at < std::min(start + kCellHeadSize, file.Usable); ++at)
            places[at].Cells.push_back(i);
    }
    return places;
}

/// Free and overflow pages have no structure to be mended, only pages that are a tree's but for
/// the first byte's one bit.
bool MayBeATreePage(const PageFile& file, PageNo page) {
    return ParsePage(file, page).Kind != PageKind::None;
}

struct Bit {
    std::size_t Byte;
    unsigned Number;
};

void Flip(PageFile& file, PageNo page, Bit bit) {
    const std::size_t at = (page - std::size_t{1}) * file.PageSize + bit.Byte;
    file.Content[at] ^= static_cast<std::uint8_t>(1U << bit.Number);
}

/// The records of a leaf that can be read: of two bits that make a page sound, the right one
/// makes its records readable, too.
std::size_t ReadableRecords(const PageFile& file, PageNo page) {
    const TreePage tree = ParsePage(file, page);
    if (tree.Kind == PageKind::TableInterior) return tree.Cells.size();
    return static_cast<std::size_t>(std::count_if(
        tree.Cells.begin(), tree.Cells.end(),
        [&](const auto& cell) { return cell && ReadRecord(file, page, *cell).has_value(); }));
}

/// Sorts out the bits that cannot make a page sound, without reading all of it: of a sound page
/// every cell is readable, and cells and free room claim every byte.
class Hopes {
public:
    Hopes(const PageFile& file, const TreePage& tree)
        : tree_(tree),
          unclaimed_(UnclaimedBytes(file, tree)),
          unreadable_(std::count(tree.Cells.begin(), tree.Cells.end(), std::nullopt)) {}

    /// Of a file where a bit of the byte has been changed.
    bool IsAny(const PageFile& file, std::size_t byte, const Place& place) const {
        if (place.OfHeader) return true;
        bool inCell = place.OfPointer;
        auto unreadable = unreadable_;
        std::int64_t unclaimed = unclaimed_.value_or(1);
        for (const std::size_t i : place.Cells) {
            const auto& before = tree_.Cells[i];
            const auto after = ParseCell(file, tree_, i);
            if (!after) return false;
            if (!before) --unreadable;
            if (before) {
                unclaimed += static_cast<std::int64_t>(before->Size);
                inCell |= byte >= before->At && byte < before->At + before->Size;
            }
            unclaimed -= static_cast<std::int64_t>(after->Size);
        }
        // A byte of no cell may be one of the free blocks' own numbers.
        return unreadable == 0 && (!inCell || (unclaimed_ && unclaimed == 0));
    }

private:
    const TreePage& tree_;
    std::optional<std::int64_t> unclaimed_;
    std::ptrdiff_t unreadable_;
};

void MendPage(PageFile& file, PageNo page) {
    const TreePage tree = ParsePage(file, page);
    const Hopes hopes(file, tree);
    std::vector<Bit> best;
    std::size_t most = 0;
    for (const auto& [byte, place] : StructureOf(file, tree)) {
        for (unsigned number = 0; number < 8; ++number) {
            const Bit bit{byte, number};
            Flip(file, page, bit);
            const bool sound = hopes.IsAny(file, byte, place) && IsSound(file, page);
            const std::size_t readable = sound ? ReadableRecords(file, page) : 0;
            Flip(file, page, bit);
            if (readable == 0 || readable < most) continue;
            if (readable > most) best.clear();
            most = readable;
            best.push_back(bit);
        }
    }
    if (best.size() == 1) Flip(file, page, best.front());
}

}  // namespace

void MendPages(PageFile& file) {
    std::vector<PageNo> broken;
    const std::vector<bool> free = FreePages(file);
    for (PageNo page = 1; page <= file.Count; ++page) {
        if (free[page] || !MayBeATreePage(file, page) || ParsePage(file, page).Sound) continue;
        broken.push_back(page);
    }
    if (broken.size() > kMostPages) return;
    for (const PageNo page : broken) MendPage(file, page);
}

}  // namespace zolmara::salvage
