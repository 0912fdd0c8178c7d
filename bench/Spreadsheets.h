#pragma once

// What spreadsheets take for the same statement: LibreOffice as a command and as a program that
// is open already, and Gnumeric as a command. All of them are to come to the program's own
// figures; else there is no figure of theirs.

#include <stdexcept>
#include <string>

#include "bench/Process.h"
#include "bench/StaleBook.h"

namespace zolmara::bench {

struct NotInstalled : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Spreadsheets {
public:
    /// Profiles and results go to the folder; the user's own are not touched.
    explicit Spreadsheets(std::string folder);

    struct Warm {
        double Edit = 0;      ///< seconds for one cell edited, calculated, all dependents read
        double Full = 0;      ///< seconds for a whole calculation, nothing saved
        double Call = 0;      ///< seconds of the call from outside, which both have in them
        long Dependents = 0;  ///< how many cells the one moves
    };
    /// Each raises NotInstalled, and std::runtime_error when it fails, takes too long, or comes to
    /// other figures.
    Warm WarmOffice(const StaleBook& book);
    /// Opens the workbook, calculates all of it, and writes it as a workbook.
    Least OfficeCommand(const StaleBook& book);
    /// Opens the workbook, calculates all of it, and writes its figures as plain text, a file a
    /// sheet, which is quicker than a workbook.
    Least GnumericCommand(const StaleBook& book);

private:
    void NeedProfile();
    std::string File(const std::string& name) const { return folder_ + "/" + name; }

    std::string folder_;
    bool profile_ = false;
};

}  // namespace zolmara::bench
