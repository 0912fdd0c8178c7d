#pragma once

// Lines of an import file that are dropped without a message of their own: "#VALUE!" alone, and
// worksheets of the S family that nothing is imported into. The end of the import counts them, so
// that nobody takes them for imported.

#include <map>
#include <string>

namespace zolmara {

class PassedOver {
public:
    /// Counts a line, by what it was.
    void Add(const std::string& what) { ++counts_[what]; }
    /// The note that counts them; empty when there were none.
    std::string Note() const;

private:
    std::map<std::string, int> counts_;
};

}  // namespace zolmara
