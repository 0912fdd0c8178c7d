#include "store/WholeStep.h"

#include "store/DatabaseImpl.h"

namespace zolmara {

void RunWholeStep(Database& db, const std::function<void()>& work) {
    RunBatch(db, [&] {
        Database::Impl& impl = db.impl();
        SqliteRun(impl.Handle, "SAVEPOINT whole_step", impl.Path);
        try {
            work();
            SqliteRun(impl.Handle, "RELEASE whole_step", impl.Path);
        } catch (...) {
            sqlite3_exec(impl.Handle, "ROLLBACK TO whole_step; RELEASE whole_step", nullptr,
                         nullptr, nullptr);
            impl.AfterLostChange();
            throw;
        }
    });
}

}  // namespace zolmara
