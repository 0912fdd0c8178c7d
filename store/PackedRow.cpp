#include "store/PackedRow.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace zolmara {
namespace {

template <class T>
void Add(std::string& row, char kind, const T& value) {
    row += kind;
    row.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
T Take(const std::string& row, std::size_t& at) {
    T value;
    std::memcpy(&value, row.data() + at, sizeof value);
    at += sizeof value;
    return value;
}

}  // namespace

void PackCell(std::string& row, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            row += 'n';
            return;
        case SQLITE_INTEGER:
            return Add(row, 'i', std::int64_t{sqlite3_value_int64(value)});
        case SQLITE_FLOAT:
            return Add(row, 'd', sqlite3_value_double(value));
        default:
            break;
    }
    const bool text = sqlite3_value_type(value) == SQLITE_TEXT;
    const void* const bytes = text ? sqlite3_value_text(value) : sqlite3_value_blob(value);
    const auto size = static_cast<std::uint32_t>(sqlite3_value_bytes(value));
    Add(row, text ? 't' : 'b', size);
    if (size > 0) row.append(static_cast<const char*>(bytes), size);
}

void PackNumber(std::string& row, double number) {
    if (std::isnan(number))
        row += 'n';
    else
        Add(row, 'd', number);
}

bool BindPackedRow(sqlite3_stmt* statement, const std::string& row, int first, int count) {
    std::size_t at = 0;
    for (int i = first; i < first + count; ++i) {
        if (at >= row.size()) return false;
        const char kind = row[at++];
        if (kind == 'n') {
            sqlite3_bind_null(statement, i);
        } else if (kind == 'i') {
            sqlite3_bind_int64(statement, i, Take<std::int64_t>(row, at));
        } else if (kind == 'd') {
            sqlite3_bind_double(statement, i, Take<double>(row, at));
        } else {
            const auto size = Take<std::uint32_t>(row, at);
            const auto bind = kind == 't' ? sqlite3_bind_text : nullptr;
            if (bind)
                bind(statement, i, row.data() + at, static_cast<int>(size), SQLITE_STATIC);
            else
                sqlite3_bind_blob(statement, i, row.data() + at, static_cast<int>(size),
                                  SQLITE_STATIC);
            at += size;
        }
    }
    return at == row.size();
}

}  // namespace zolmara
