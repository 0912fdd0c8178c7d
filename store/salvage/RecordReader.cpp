#include "store/salvage/RecordReader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace zolmara::salvage {
namespace {

constexpr std::size_t kNextPageSize = 4;  // an overflow page begins with the next one's number
constexpr std::size_t kMostColumns = 32767;

// Serial types, which tell a value's kind and length.
constexpr std::uint64_t kSerialInt64 = 6;
constexpr std::uint64_t kSerialReal = 7;
constexpr std::uint64_t kSerialZero = 8;
constexpr std::uint64_t kSerialOne = 9;
constexpr std::uint64_t kSerialBlob = 12;
constexpr std::size_t kFixedSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};

bool IsReserved(std::uint64_t serial) { return serial > kSerialOne && serial < kSerialBlob; }

std::uint64_t SizeOf(std::uint64_t serial) {
    return serial <= kSerialOne ? kFixedSizes[serial] : (serial - kSerialBlob) / 2;
}

bool Repeats(std::vector<PageNo> pages) {
    std::sort(pages.begin(), pages.end());
    return std::adjacent_find(pages.begin(), pages.end()) != pages.end();
}

// The rest of a payload. The chain must be as long as the payload needs, and end there.
bool AppendOverflow(const PageFile& file, const Cell& cell, std::vector<std::uint8_t>& payload) {
    const auto rest = static_cast<std::size_t>(cell.PayloadSize - cell.LocalSize);
    if (rest > file.OverflowBudget) return false;
    std::vector<PageNo> chain;
    PageNo next = cell.Overflow;
    while (payload.size() < cell.PayloadSize) {
        if (next < 2 || next > file.Count) return false;
        chain.push_back(next);
        const Bytes page = PageBytes(file, next).first(file.Usable);
        const std::size_t part =
            std::min<std::size_t>(page.size() - kNextPageSize,
                                  static_cast<std::size_t>(cell.PayloadSize) - payload.size());
        if (kNextPageSize + part > BytesThere(file, next)) return false;
        payload.insert(payload.end(), page.begin() + kNextPageSize,
                       page.begin() + static_cast<std::ptrdiff_t>(kNextPageSize + part));
        next = static_cast<PageNo>(ReadBig(page, 0, kNextPageSize));
        file.OverflowBudget -= std::min(file.OverflowBudget, part);
    }
    return next == 0 && !Repeats(std::move(chain));
}

std::optional<std::vector<std::uint8_t>> ReadPayload(const PageFile& file, PageNo number,
                                                     const Cell& cell) {
    const Bytes page = PageBytes(file, number);
    if (cell.LocalAt + cell.LocalSize > page.size()) return std::nullopt;
    const Bytes local = page.subspan(cell.LocalAt, cell.LocalSize);
    std::vector<std::uint8_t> payload(local.begin(), local.end());
    if (cell.LocalSize < cell.PayloadSize && !AppendOverflow(file, cell, payload)) {
        return std::nullopt;
    }
    return payload;
}

std::int64_t ReadInteger(Bytes bytes, std::size_t at, std::size_t size) {
    const auto shift = static_cast<unsigned>(8 * (sizeof(std::int64_t) - size));
    return static_cast<std::int64_t>(ReadBig(bytes, at, size) << shift) >> shift;
}

Value ReadValue(Bytes bytes, std::size_t at, std::uint64_t serial) {
    Value value;
    if (serial == 0) return value;
    if (serial >= kSerialBlob) {
        value.Kind = serial % 2 == 0 ? Value::Type::Blob : Value::Type::Text;
        const Bytes part = bytes.subspan(at, static_cast<std::size_t>(SizeOf(serial)));
        value.Bytes.assign(part.begin(), part.end());
    } else if (serial == kSerialReal) {
        value.Kind = Value::Type::Real;
        value.Real = std::bit_cast<double>(ReadBig(bytes, at, sizeof(double)));
    } else {
        value.Kind = Value::Type::Integer;
        value.Integer = serial <= kSerialInt64 ? ReadInteger(bytes, at, kFixedSizes[serial])
                                               : static_cast<std::int64_t>(serial - kSerialZero);
    }
    return value;
}

std::optional<std::vector<std::uint64_t>> ReadSerials(Bytes bytes, std::size_t& at) {
    const auto headerSize = ReadVarint(bytes, at);
    if (!headerSize || *headerSize > bytes.size()) return std::nullopt;
    std::vector<std::uint64_t> serials;
    while (at < *headerSize) {
        const auto serial = ReadVarint(bytes, at);
        if (!serial || IsReserved(*serial)) return std::nullopt;
        serials.push_back(*serial);
    }
    if (at != *headerSize || serials.empty() || serials.size() > kMostColumns) return std::nullopt;
    return serials;
}

// A whole number is always kept in the least bytes that hold it, so that one in more than it
// needs is what is left of another.
bool IsShortest(std::int64_t value, std::uint64_t serial) {
    if (serial == 0 || serial > kSerialInt64) return true;
    if (serial == 1) return value != 0 && value != 1;
    const std::int64_t bits = static_cast<std::int64_t>(8 * kFixedSizes[serial - 1]) - 1;
    return value < -(std::int64_t{1} << bits) || value >= (std::int64_t{1} << bits);
}

// Values until one runs over the end, or is a number that the file never keeps.
Record ReadValues(Bytes bytes, std::size_t& at, const std::vector<std::uint64_t>& serials) {
    Record record;
    for (const std::uint64_t serial : serials) {
        if (SizeOf(serial) > bytes.size() - at) break;
        Value value = ReadValue(bytes, at, serial);
        if (std::isnan(value.Real) || !IsShortest(value.Integer, serial)) break;
        record.push_back(std::move(value));
        at += static_cast<std::size_t>(SizeOf(serial));
    }
    return record;
}

// Length of the UTF-8 letter at `at`; 0 where there is none.
std::size_t LetterLength(const std::string& text, std::size_t at) {
    const auto lead = static_cast<std::uint8_t>(text[at]);
    if (lead < 0x80) return lead == 0 ? 0 : 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<std::uint8_t>(text[at + i]) & 0xC0U) != 0x80U) return 0;
    }
    return length;
}

}  // namespace

double Value::Number() const {
    return Kind == Type::Integer ? static_cast<double>(Integer) : Kind == Type::Real ? Real : 0;
}

bool SameValue(const Value& a, const Value& b) {
    if (a.Kind == Value::Type::Integer && b.Kind == Value::Type::Integer) {
        return a.Integer == b.Integer;
    }
    if (a.IsNumber() && b.IsNumber()) return a.Number() == b.Number();
    return a.Kind == b.Kind && a.Bytes == b.Bytes;
}

namespace {

std::optional<Record> Decode(Bytes bytes) {
    std::size_t at = 0;
    const auto serials = ReadSerials(bytes, at);
    if (!serials) return std::nullopt;
    Record record = ReadValues(bytes, at, *serials);
    if (record.size() != serials->size() || at != bytes.size()) return std::nullopt;
    return record;
}

}  // namespace

std::optional<Record> ReadRecord(const PageFile& file, PageNo page, const Cell& cell) {
    const auto payload = ReadPayload(file, page, cell);
    return payload ? Decode(*payload) : std::nullopt;
}

std::vector<Record> ReadRecordsByOneBit(const PageFile& file, PageNo page, const Cell& cell) {
    constexpr std::size_t kLongestHeader = 2048;
    std::vector<Record> records;
    auto payload = ReadPayload(file, page, cell);
    if (!payload || payload->empty()) return records;
    std::size_t at = 0;
    const auto told = ReadVarint(*payload, at).value_or(0);
    const auto header = std::min({static_cast<std::size_t>(std::max<std::uint64_t>(told, 1)),
                                  payload->size(), kLongestHeader});
    for (std::size_t byte = 0; byte < header; ++byte) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            (*payload)[byte] ^= static_cast<std::uint8_t>(1U << bit);
            if (auto record = Decode(*payload)) records.push_back(std::move(*record));
            (*payload)[byte] ^= static_cast<std::uint8_t>(1U << bit);
        }
    }
    return records;
}

std::optional<Record> CommonOf(const std::vector<Record>& records) {
    if (records.empty()) return std::nullopt;
    Record common = records.front();
    for (const auto& record : records) {
        if (record.size() != common.size()) return std::nullopt;
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (!SameValue(common[i], record[i])) common[i] = Value{Value::Type::Lost, 0, 0, ""};
        }
    }
    return common;
}

Record ReadRecordHead(const PageFile& file, PageNo page, const Cell& cell) {
    const Bytes whole = PageBytes(file, page);
    if (cell.LocalAt + cell.LocalSize > whole.size()) return {};
    const Bytes bytes = whole.subspan(cell.LocalAt, cell.LocalSize);
    std::size_t at = 0;
    const auto serials = ReadSerials(bytes, at);
    return serials ? ReadValues(bytes, at, *serials) : Record{};
}

std::size_t MendText(std::string& text) {
    std::size_t mended = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = LetterLength(text, at);
        if (length == 0) {
            text[at] = '?';
            ++mended;
        }
        at += std::max<std::size_t>(length, 1);
    }
    return mended;
}

}  // namespace zolmara::salvage
