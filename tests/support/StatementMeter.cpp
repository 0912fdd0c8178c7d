#include "support/StatementMeter.h"

#include <sqlite3.h>

namespace zolmara::test {
namespace {

StoreWork total;

int OnStatementEnd(unsigned, void*, void* statement, void*) {
    ++total.Statements;
    total.Steps +=
        sqlite3_stmt_status(static_cast<sqlite3_stmt*>(statement), SQLITE_STMTSTATUS_VM_STEP, 1);
    return 0;
}

int Watch(sqlite3* handle, const char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(handle, SQLITE_TRACE_PROFILE, OnStatementEnd, nullptr);
}

// SQLite declares the entry point of an extension without its arguments.
const auto kWatch = reinterpret_cast<void (*)()>(Watch);

}  // namespace

StatementMeter::StatementMeter() { sqlite3_auto_extension(kWatch); }
StatementMeter::~StatementMeter() { sqlite3_cancel_auto_extension(kWatch); }

StoreWork StatementMeter::CountOf(const std::function<void()>& work) const {
    const StoreWork before = total;
    work();
    return {total.Statements - before.Statements, total.Steps - before.Steps};
}

}  // namespace zolmara::test
