#pragma once

namespace zolmara {

/// The name of the way to a file's bytes by which a Cost Report File is opened, for
/// sqlite3_open_v2. It is the system's own but for one thing: a journal is kept in memory until
/// SQLite wants it on the disk, which is ahead of the first page that is written to the file. A
/// batch that comes out as it began is taken back without a trace on the disk.
///
/// From that moment on the journal is a file like any other. Where one stands there already, or
/// none can be made, it is a file from the beginning, so that whoever writes is told at once.
const char* LateJournalVfs();

}  // namespace zolmara
