#include "store/salvage/PageMend.h"

#include <algorithm>
#include <set>

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

/// The bytes that say where everything on the page lies.
std::set<std::size_t> StructureOf(const PageFile& file, PageNo page) {
    std::set<std::size_t> bytes;
    const auto add = [&](std::size_t from, std::size_t count) {
        for (std::size_t at = from; at < std::min(from + count, file.Usable); ++at)
            bytes.insert(at);
    };
    const std::size_t header = HeaderAt(page);
    add(header, kPageHeaderSize);
    const TreePage tree = ParsePage(file, page);
    const Bytes content = PageBytes(file, page);
    const bool leaf = tree.Kind == PageKind::TableLeaf || tree.Kind == PageKind::IndexLeaf;
    const std::size_t pointers = header + (leaf ? 8 : kPageHeaderSize);
    add(pointers, kPointerSize * tree.Cells.size());
    for (std::size_t i = 0; i < tree.Cells.size(); ++i)
        add(static_cast<std::size_t>(ReadBig(content, pointers + i * kPointerSize, kPointerSize)),
            kCellHeadSize);
    return bytes;
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

void MendPage(PageFile& file, PageNo page) {
    std::vector<Bit> best;
    std::size_t most = 0;
    for (const std::size_t byte : StructureOf(file, page)) {
        for (unsigned number = 0; number < 8; ++number) {
            const Bit bit{byte, number};
            Flip(file, page, bit);
            const std::size_t readable = IsSound(file, page) ? ReadableRecords(file, page) : 0;
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
