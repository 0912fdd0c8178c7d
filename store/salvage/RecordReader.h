#pragma once

// The records in the cells of a damaged database file.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "store/salvage/PageReader.h"

namespace zolmara::salvage {

/// A value as the file keeps it.
struct Value {
    /// Lost stands for a value that cannot be told; no file keeps one.
    enum class Type { Null, Integer, Real, Text, Blob, Lost };
    Type Kind = Type::Null;
    std::int64_t Integer = 0;
    double Real = 0;
    std::string Bytes;  ///< of a Text or Blob

    bool IsNumber() const { return Kind == Type::Integer || Kind == Type::Real; }
    /// The number; 0 for what is none.
    double Number() const;
};

/// Same kind and same value; whole and broken numbers compare as numbers.
bool SameValue(const Value& a, const Value& b);

using Record = std::vector<Value>;

/// The record in a cell. Nothing when its overflow pages are broken, or when lengths and types
/// do not fill the payload to the byte.
std::optional<Record> ReadRecord(const PageFile& file, PageNo page, const Cell& cell);

/// The records that a cell would hold if one bit of its record's header were another: what a
/// record that cannot be read may have been.
std::vector<Record> ReadRecordsByOneBit(const PageFile& file, PageNo page, const Cell& cell);

/// What all of them agree in; Lost where they do not. Nothing of none.
std::optional<Record> CommonOf(const std::vector<Record>& records);

/// The values at the beginning of a record that lie on the page itself, whether or not the rest
/// can be read.
Record ReadRecordHead(const PageFile& file, PageNo page, const Cell& cell);

/// Puts "?" for each byte that cannot be in a text (no UTF-8, or a zero). Gives how many.
std::size_t MendText(std::string& text);

}  // namespace zolmara::salvage
