#include "store/RunStopped.h"

#include <fmt/format.h>

namespace zolmara {

RunStopped::RunStopped(const std::string& text)
    : StoreError(Kind::Other,
                 fmt::format("{}. The run has stopped; what was finished stands.", text)) {}

void RunStep(std::string_view name, const std::function<void()>& step) {
    try {
        step();
    } catch (const RunStopped&) {
        throw;
    } catch (const StoreError& error) {
        const auto text = fmt::format("{}: {}", name, error.what());
        if (error.IsFileError()) throw StoreError(error.kind(), text);
        throw RunStopped(text);
    } catch (const std::exception& error) {
        throw RunStopped(fmt::format("{}: {}", name, error.what()));
    }
}

}  // namespace zolmara
