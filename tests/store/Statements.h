#pragma once

// The statements that the system runs against a Cost Report File, as data: grouped by the
// worksheet or table they concern, each group in the order in which its statements run.

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/Variant.h"

namespace zolmara::test {

struct Step {
    enum Kind {
        Runs,     ///< an action statement, or a SELECT that opens
        Rows,     ///< a SELECT that gives Expected rows
        Gives,    ///< a SELECT whose first row begins with Expected
        Leaves,   ///< an action statement after which Source gives Expected
        Finds,    ///< a criteria on Source, whose row's first field then is Expected; Null: none
        Refused,  ///< what the file must not take, to show that an index stands
        Remakes,  ///< the table Text is made anew, empty and without indexes
        Appends,  ///< a field CC is appended to the table Text
        Drops,    ///< the table Text is deleted
    };
    Kind What;
    std::string Text;
    Variant Expected = {};
    std::string Source = {};
};

inline Step Run(std::string text) { return {Step::Runs, std::move(text)}; }
inline Step Rows(std::string text, int count) { return {Step::Rows, std::move(text), count}; }
inline Step Gives(std::string text, Variant value) {
    return {Step::Gives, std::move(text), std::move(value)};
}
inline Step Leaves(std::string text, std::string source, Variant value) {
    return {Step::Leaves, std::move(text), std::move(value), std::move(source)};
}
inline Step Finds(std::string source, std::string criteria, Variant value) {
    return {Step::Finds, std::move(criteria), std::move(value), std::move(source)};
}
inline Step Refused(std::string text) { return {Step::Refused, std::move(text)}; }
inline Step Remakes(std::string table) { return {Step::Remakes, std::move(table)}; }
inline Step Appends(std::string table) { return {Step::Appends, std::move(table)}; }
inline Step Drops(std::string table) { return {Step::Drops, std::move(table)}; }

/// Statements that run one after the other on one file. With items they run once for each; in
/// their texts {T} is the item, {P} its part, {L} its first letter.
struct StatementGroup {
    std::string Name;
    std::vector<Step> Steps;
    std::vector<std::string> Items = {""};
};
inline std::ostream& operator<<(std::ostream& out, const StatementGroup& group) {
    return out << group.Name;
}

}  // namespace zolmara::test
