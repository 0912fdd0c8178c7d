#pragma once

// Roads to a file beside the menus: the recent files, a file named on the command line, a file
// dropped on the window.

#include <string>
#include <vector>

namespace zolmara::ui {

/// Opens a CRF as "Open" does, with its gate and its question. False when it did not open; what
/// stood in the way has been told.
bool OpenFile(const std::string& path);

/// A CRF opens; a text file or a workbook asks to be imported into the open CRF. Anything else is
/// refused in words, and what is open stays open.
void TakeFile(const std::string& path);

/// The same for what is dropped or named at once: several files are refused in words.
void TakeFiles(const std::vector<std::string>& paths);

/// Imports a file into the open CRF as ImportFile does, and says so where it ended well.
bool ImportAndTell(const std::string& path);

/// The CRFs that were open last, the last one first, those that are gone left out.
std::vector<std::string> RecentFiles();
/// Puts a CRF ahead of the others.
void RememberFile(const std::string& path);

}  // namespace zolmara::ui
