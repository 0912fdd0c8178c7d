#pragma once

// Where the lines of an import come from: a text file, or a file of another kind that gives the
// same four fields.

#include <string>
#include <vector>

#include "import/Staging.h"

namespace zolmara {

class LineSource {
public:
    virtual ~LineSource() = default;

    /// The next line, its fields checked (ParseImportLine, CheckImportLine). False behind the
    /// last one.
    virtual bool Next(ImportLine& line) = 0;
    /// How much has been read, from 0 to 1.
    virtual double PartRead() const = 0;
    /// Once there is no next line: why not all could be read. Then nothing is loaded. Empty where
    /// all was read.
    virtual std::string Failure() const { return {}; }
    /// What was passed over and is worth telling.
    virtual std::vector<std::string> Notes() const { return {}; }
};

}  // namespace zolmara
