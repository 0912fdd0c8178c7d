#pragma once

// The calculation of the whole Cost Report File.

namespace zolmara {

/// Calculates every worksheet in the order of the registry: by level, then by display name.
/// Ahead of its calculation each worksheet's text fields lose their line breaks. Messages of the
/// run are kept in Log under "C". The run is one batch; open windows show the new figures after
/// it.
///
/// A failure ends the run at its worksheet and goes on to the caller as RunStopped, or as the
/// StoreError of the file, with the worksheet's display name ahead; the worksheets before it stay
/// calculated. The menus, the status line and the log type are put right on every way out.
void Calc_All();

/// Leaves the CRF as Calc_All would, and says what it would say, without calculating the
/// worksheets that would come out as they are: whose tables, and those that they take from, hold
/// what they held when this session calculated them last. The first run of a session calculates
/// all of them.
void Calc_Changed();

}  // namespace zolmara
