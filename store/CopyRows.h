#pragma once

// A file that is only read from, and rows carried from it to another exactly as they are stored.

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "store/Dao.h"

namespace zolmara {

/// Opens a file that is only to be read from. It stays as it is to the last byte, and nothing is
/// made or deleted beside it. StoreError::ReadOnly when a program that died left it in the middle
/// of a change, which only an opening for writing puts right.
Database OpenReadOnly(const std::string& path);

/// StoreError::Damaged when the file's structure is broken. Reads the whole file.
void NeedWhole(Database& db);

/// What is asked and told while rows are carried over.
struct CopyWatch {
    /// A row that the target refuses, by its first field; the next one follows.
    std::function<void(const Variant& key, const StoreError& reason)> Refused;
    /// After every so many rows: how many there have been.
    std::function<void(std::size_t rows)> Progress;
};

/// Inserts every row of a table of one file into the table of that name of another, behind the
/// rows that are there. Every text, number, date and Null goes over as it is stored, to the last
/// bit. Gives the number of rows inserted. StoreError when a table lacks one of the fields, and for
/// a failure of either file.
std::size_t CopyRows(Database& from, Database& to, std::string_view table,
                     std::span<const std::string> fields, const CopyWatch& watch);

}  // namespace zolmara
