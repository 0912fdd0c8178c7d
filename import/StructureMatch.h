#pragma once

// Which line of one file is which line of another: cost centers and components are known by what
// they are, not by where they stand.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

/// A cost center or a component.
struct Entity {
    Currency Line;
    std::string Name;
    std::string Number;  ///< of a component; may be empty
};

/// The lines of one list that stand for lines of another.
class LineMatch {
public:
    LineMatch() = default;
    /// Matched are, in this order: the same line with the same number or name; the same number;
    /// the same name; the same line, where not both have a number.
    LineMatch(const std::vector<Entity>& here, const std::vector<Entity>& there);

    /// The other file's line. A line that is none of the list's is the same in both files;
    /// nothing for one of the list that the other file lacks.
    std::optional<Currency> There(Currency here) const;
    /// What a line is called in either file.
    std::string NameHere(Currency line) const;
    std::string NameThere(Currency line) const;

private:
    void Match(const std::vector<Entity>& here, const std::vector<Entity>& there,
               bool (*same)(const Entity&, const Entity&));

    std::map<Currency, Currency> there_;
    std::map<Currency, bool> taken_;
    std::map<Currency, std::string> namesHere_;
    std::map<Currency, std::string> namesThere_;
};

/// The structure of two files, line by line.
struct StructureMatch {
    StructureMatch(Database& here, Database& there);

    /// What the rows of a table stand for; none where a line is a line of the form.
    const LineMatch* RowsOf(std::string_view table) const;

    LineMatch CostCenters;
    std::vector<LineMatch> Components;  ///< of the three parts
};

}  // namespace zolmara
