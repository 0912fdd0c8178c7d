#pragma once

// What the tests of the edit checks share.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/TestCrf.h"

namespace zolmara::test {

using Findings = std::vector<std::string>;

/// The rows of table Error as "Level | Code | Message", the levels as NF, PE and none.
Findings AllFindings();

/// Those of the rows that begin with the text.
Findings Only(const Findings& findings, std::string_view beginning);

/// A new CRF with an empty table Error.
class CheckedCrf : public TestCrf {
protected:
    CheckedCrf();

    /// What a check finds on its own.
    static Findings Found(void (*check)());
    template <class Check>
    static Findings FoundBy(const Check& check) {
        ClearErrors();
        check();
        return AllFindings();
    }

    using Fields = std::initializer_list<std::pair<std::string_view, Variant>>;
    /// Adds a row with the given key, and sets fields of one that is there.
    static void AddRow(std::string_view table, double line, Fields fields = {});
    static void SetRow(std::string_view table, double line, Fields fields);

    /// Keys what makes the new CRF one without any finding, and calculates it.
    static void MakeClean();
};

}  // namespace zolmara::test
