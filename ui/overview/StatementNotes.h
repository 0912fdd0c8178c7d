#pragma once

// What is remembered of the open CRF between sessions, in the user's data folder: when it was
// calculated and checked last, and what was keyed since. Nothing of it lies in the CRF; where
// another program, or another user, has changed the file since, nothing is known.

#include <string>

namespace zolmara::ui {

struct StatementNotes {
    std::string Calculated = {};  ///< when, in words; empty where it is not known
    std::string Checked = {};
    int Keyed = 0;         ///< entries stored in worksheet windows since the last calculation
    bool Changed = false;  ///< written to by anything since the last calculation
};

/// Of the open CRF.
StatementNotes TheNotes();

/// A calculation has ended well, and the edit checks with it.
void NoteCalculation(bool checked);
/// What is written while this lives leaves the figures as they are: a signature, the date of the
/// files that are built, header lines, findings. The calculation is as good as before.
class FiguresStay {
public:
    FiguresStay();
    ~FiguresStay();
    FiguresStay(const FiguresStay&) = delete;
    FiguresStay& operator=(const FiguresStay&) = delete;

private:
    std::string path_;
    bool changed_;
};

/// A row or a block has been stored.
void NoteEntry();

/// The open CRF may be another one, or none: what is known of it is read, and what was known of the
/// former one is kept. The main window calls it when the statement changes.
void FollowNotes();

}  // namespace zolmara::ui
