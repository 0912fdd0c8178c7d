#pragma once

// Files like a CRF made with the plain library, ways to damage them, and what a repair is held to.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "store/Dao.h"
#include "store/salvage/Salvage.h"

namespace zolmara::salvagetest {

namespace fs = std::filesystem;

inline constexpr std::size_t kPage = 4096;

using FileBytes = std::vector<char>;
using TableDump = std::map<std::int64_t, std::string>;  // a row's values as one text, by rowid
using Contents = std::map<std::string, TableDump>;

class Sqlite {
public:
    explicit Sqlite(const fs::path& path) {
        EXPECT_EQ(SQLITE_OK, sqlite3_open(path.c_str(), &handle_));
    }
    ~Sqlite() { sqlite3_close(handle_); }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;

    void Run(const std::string& sql) {
        char* error = nullptr;
        ASSERT_EQ(SQLITE_OK, sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &error))
            << error << "\n"
            << sql.substr(0, 200);
    }

    void Each(const std::string& sql, const std::function<void(sqlite3_stmt*)>& row) {
        sqlite3_stmt* statement = nullptr;
        ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr))
            << sqlite3_errmsg(handle_);
        while (sqlite3_step(statement) == SQLITE_ROW) row(statement);
        EXPECT_EQ(SQLITE_OK, sqlite3_finalize(statement)) << sqlite3_errmsg(handle_);
    }

    static std::string Text(sqlite3_stmt* statement, int column) {
        return reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    }

    std::string Text(const std::string& sql) {
        std::string text;
        Each(sql, [&](sqlite3_stmt* s) { text += Text(s, 0); });
        return text;
    }

private:
    sqlite3* handle_ = nullptr;
};

inline std::string ValueText(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return "null|";
        case SQLITE_INTEGER:
            return fmt::format("i{}|", sqlite3_column_int64(statement, column));
        case SQLITE_FLOAT:
            return fmt::format("r{}|", sqlite3_column_double(statement, column));
        default:
            return fmt::format("t{}|", Sqlite::Text(statement, column));
    }
}

inline Contents Dump(const fs::path& path) {
    Sqlite db(path);
    Contents contents;
    db.Each("SELECT name FROM sqlite_schema WHERE type='table'",
            [&](sqlite3_stmt* s) { contents[Sqlite::Text(s, 0)]; });
    for (auto& [name, rows] : contents) {
        db.Each("SELECT rowid, * FROM \"" + name + "\"", [&, &into = rows](sqlite3_stmt* s) {
            std::string& row = into[sqlite3_column_int64(s, 0)];
            for (int i = 1; i < sqlite3_column_count(s); ++i) row += ValueText(s, i);
        });
    }
    return contents;
}

inline std::size_t CountRows(const Contents& contents) {
    std::size_t count = 0;
    for (const auto& [name, rows] : contents) count += rows.size();
    return count;
}

inline std::string SchemaOf(const fs::path& path) {
    return Sqlite(path).Text(
        "SELECT type||' '||name||' '||coalesce(sql,'')||char(10) FROM sqlite_schema "
        "ORDER BY type DESC, rowid");
}

struct PageUse {
    std::string Table;  // "sqlite_schema" for the list of tables
    bool IsIndex = false;
    std::string Kind;  // "leaf", "internal", "overflow"
    std::size_t Cells = 0;
};

inline std::map<std::size_t, PageUse> PageUses(const fs::path& path) {
    Sqlite db(path);
    std::map<std::size_t, PageUse> uses;
    db.Each(
        "SELECT d.pageno, coalesce(s.tbl_name, d.name), coalesce(s.type='index',0), d.pagetype, "
        "d.ncell FROM dbstat d LEFT JOIN sqlite_schema s ON s.name=d.name",
        [&](sqlite3_stmt* s) {
            uses[static_cast<std::size_t>(sqlite3_column_int64(s, 0))] = {
                Sqlite::Text(s, 1), sqlite3_column_int(s, 2) != 0, Sqlite::Text(s, 3),
                static_cast<std::size_t>(sqlite3_column_int64(s, 4))};
        });
    return uses;
}

inline FileBytes ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return FileBytes(std::istreambuf_iterator<char>(in), {});
}

inline void WriteFile(const fs::path& path, const FileBytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// Rows 1, 2, ... of a worksheet have the lines 1, 1.01, 1.02, 1.03, 2, ...
inline std::string LineOf(std::size_t row) {
    const std::size_t whole = (row - 1) / 4 + 1;
    const std::size_t part = (row - 1) % 4;
    return part == 0 ? fmt::format("{}", whole) : fmt::format("{}.{:02}", whole, part);
}

inline void AddWorksheet(Sqlite& db, const std::string& name, int columns, bool index = true) {
    std::string sql = "CREATE TABLE \"" + name +
                      "\" (\"LineNum\" CURRENCY CHECK(\"LineNum\" BETWEEN -9e14 AND 9e14), "
                      "\"CCName\" TEXT(36) COLLATE NOCASE CHECK(length(\"CCName\")<=36)";
    for (int i = 1; i <= columns; ++i) {
        sql += fmt::format(", \"Col_{0}\" DOUBLE CHECK(\"Col_{0}\" BETWEEN -1e308 AND 1e308)", i);
    }
    db.Run(sql + ")");
    if (!index) return;
    db.Run(fmt::format("CREATE UNIQUE INDEX \"{0}_LineNum\" ON \"{0}\" (\"LineNum\")", name));
}

inline std::string SomeFigure(std::mt19937& random) {
    const unsigned draw = static_cast<unsigned>(random());
    if (draw % 7 == 0) return "NULL";
    return draw % 3 == 0 ? fmt::format("{}", draw % 100000) : fmt::format("{}", draw / 7.0);
}

inline void FillWorksheet(Sqlite& db, const std::string& name, int columns, std::size_t rows,
                          unsigned seed) {
    std::mt19937 random(seed);
    for (std::size_t row = 1; row <= rows; ++row) {
        std::string values = fmt::format("{}, 'Cost center {} of {}'", LineOf(row), row, name);
        for (int i = 0; i < columns; ++i) values += ", " + SomeFigure(random);
        db.Run("INSERT INTO \"" + name + "\" VALUES (" + values + ")");
    }
}

inline void AddOtherTables(Sqlite& db) {
    db.Run(
        "CREATE TABLE Worksheets (Item TEXT(20) COLLATE NOCASE CHECK(length(Item)<=20), "
        "Calc_Lvl SMALLINT CHECK(Calc_Lvl BETWEEN -32768 AND 32767 AND "
        "Calc_Lvl=CAST(Calc_Lvl AS INTEGER)))");
    db.Run("CREATE UNIQUE INDEX WorksheetsItem ON Worksheets (Item)");
    db.Run("CREATE TABLE Log (Stamp DATETIME, Type TEXT(1), Message LONGTEXT)");
    for (std::size_t i = 1; i <= 12; ++i) {
        const std::string text(i * 900, static_cast<char>('a' + i));
        db.Run(fmt::format("INSERT INTO Worksheets VALUES('Item{}', {})", i, i % 3 * 400));
        db.Run(fmt::format("INSERT INTO Log VALUES('2024-01-{:02} 10:00:00', 'C', '{}')", i, text));
    }
}

struct CrfShape {
    unsigned Small = 8;  // small worksheets
    int WideColumns = 40;
    std::size_t WideRows = 70;
};

inline void MakeCrf(const fs::path& path, const CrfShape& shape) {
    Sqlite db(path);
    db.Run(
        "PRAGMA page_size=4096; PRAGMA synchronous=OFF; PRAGMA application_id=0x5A4D4C52; "
        "PRAGMA user_version=1; BEGIN");
    AddOtherTables(db);
    AddWorksheet(db, "Bp1", shape.WideColumns);
    FillWorksheet(db, "Bp1", shape.WideColumns, shape.WideRows, 1);
    for (unsigned i = 0; i < shape.Small; ++i) {
        const std::string name = fmt::format("S{}p1", i);
        const int columns = 3 + static_cast<int>(i % 5);
        AddWorksheet(db, name, columns);
        FillWorksheet(db, name, columns, 10 + i * 5 % 60, 100 + i);
    }
    AddWorksheet(db, "Cp1", shape.WideColumns);
    FillWorksheet(db, "Cp1", shape.WideColumns, shape.WideRows / 2, 2);
    AddWorksheet(db, "Empty", 4);
    db.Run("COMMIT");
}

inline void Overwrite(FileBytes& bytes, std::size_t page, const std::function<char()>& byte) {
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>((page - 1) * kPage);
    std::generate(at, at + static_cast<std::ptrdiff_t>(kPage), byte);
}

inline void Zero(FileBytes& bytes, std::size_t page) {
    Overwrite(bytes, page, [] { return '\0'; });
}

inline void PutBig(FileBytes& bytes, std::size_t at, std::size_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<char>(value >> (8 * (3 - i)) & 0xFFU);
    }
}

inline std::string AllLosses(const SalvageResult& result) {
    std::string all;
    for (const auto& loss : result.Losses) all += loss + "\n";
    return all;
}

class SalvageFixture : public testing::Test {
protected:
    void SetUp() override {
        // Hundreds of files, each of them synchronised: in memory where the system has such a
        // folder.
        const fs::path memory = "/dev/shm";
        const fs::path parent = fs::is_directory(memory) ? memory : fs::temp_directory_path();
        std::string name = (parent / "salvage-XXXXXX").string();
        ASSERT_NE(nullptr, mkdtemp(name.data()));
        folder_ = name;
    }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path In(const std::string& name) const { return folder_ / name; }

    void Make(const CrfShape& shape = {}) {
        MakeCrf(In("whole.CRF"), shape);
        Learn();
    }
    void Change(const std::function<void(Sqlite&)>& change) {
        {
            Sqlite db(In("whole.CRF"));
            change(db);
        }
        Learn();
    }
    void Learn() {
        before_ = Dump(In("whole.CRF"));
        uses_ = PageUses(In("whole.CRF"));
        whole_ = ReadFile(In("whole.CRF"));
    }
    std::size_t PageCount() const { return whole_.size() / kPage; }

    /// Repairs the bytes; the new file's rows are then in `after_`.
    SalvageResult Repair(const FileBytes& bytes) {
        fs::remove(In("new.CRF"));
        WriteFile(In("damaged.CRF"), bytes);
        SalvageResult result = SalvageDatabase(In("damaged.CRF"), In("new.CRF"));
        EXPECT_EQ("ok", Sqlite(In("new.CRF")).Text("PRAGMA integrity_check"));
        after_ = Dump(In("new.CRF"));
        EXPECT_EQ(CountRows(after_), result.RowsKept);
        return result;
    }
    StoreError::Kind RepairFails(const FileBytes& bytes) {
        fs::remove(In("new.CRF"));
        WriteFile(In("damaged.CRF"), bytes);
        return FailureOf(In("damaged.CRF"), In("new.CRF"));
    }
    static StoreError::Kind FailureOf(const fs::path& source, const fs::path& target) {
        try {
            SalvageDatabase(source, target);
        } catch (const StoreError& error) {
            return error.kind();
        }
        ADD_FAILURE() << "no StoreError";
        return StoreError::Kind::Other;
    }

    std::vector<std::size_t> PagesOf(const std::string& table, const std::string& kind) const {
        std::vector<std::size_t> pages;
        for (const auto& [page, use] : uses_) {
            if (use.Table == table && !use.IsIndex && use.Kind == kind) pages.push_back(page);
        }
        EXPECT_FALSE(pages.empty()) << table << " " << kind;
        return pages;
    }
    std::vector<std::size_t> LostRows(const std::string& table) {
        std::vector<std::size_t> lost;
        for (const auto& [rowId, row] : before_[table]) {
            if (!after_[table].contains(rowId)) lost.push_back(static_cast<std::size_t>(rowId));
        }
        return lost;
    }

    /// Every row that is there must be one that was there, in its own table. A text with letters
    /// that could not be read is another, and is told of.
    void ExpectNoStrangeRows(const std::string& losses = "") const {
        const bool mended = losses.find("letters that could not be read") != std::string::npos;
        for (const auto& [name, rows] : after_) {
            ASSERT_TRUE(before_.contains(name)) << name;
            for (const auto& [rowId, row] : rows) {
                const auto found = before_.at(name).find(rowId);
                ASSERT_NE(before_.at(name).end(), found) << name << " " << rowId;
                if (mended && row.find('?') != std::string::npos) continue;
                ASSERT_EQ(found->second, row) << name << " " << rowId;
            }
        }
    }
    /// A table that lacks a row must be named, unless its name itself is lost.
    void ExpectLossesNamed(const std::string& losses) const {
        const bool namesLost = losses.find("Table definitions lost: ") != std::string::npos ||
                               losses.find("The file's list of tables") != std::string::npos;
        for (const auto& [name, rows] : before_) {
            const bool whole = after_.contains(name) && after_.at(name).size() == rows.size();
            const bool named = losses.find(" " + name) != std::string::npos;
            const bool nameless = namesLost && !after_.contains(name);
            EXPECT_TRUE(whole || named || nameless) << name << "\n" << losses;
        }
    }
    /// Tables none of whose pages is touched come back exactly.
    void ExpectUntouchedTables(const std::set<std::size_t>& touched, const std::string& losses) {
        std::set<std::string> hit;
        for (const auto& [page, use] : uses_) {
            if (touched.contains(page)) hit.insert(use.Table);
        }
        if (hit.contains("sqlite_schema")) return;
        for (const auto& [name, rows] : before_) {
            if (hit.contains(name)) continue;
            EXPECT_EQ(rows, after_[name]) << name << "\n" << losses;
        }
    }

    fs::path folder_;
    Contents before_;
    Contents after_;
    std::map<std::size_t, PageUse> uses_;
    FileBytes whole_;
};

}  // namespace zolmara::salvagetest
