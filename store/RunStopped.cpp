#include "store/RunStopped.h"

#include <fmt/format.h>

#include "store/PlainWords.h"

namespace zolmara {

namespace {

/// A reason that is a sentence of its own ends in its point once.
std::string_view WithoutPoint(std::string_view text) {
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

}  // namespace

RunStopped::RunStopped(const std::string& text)
    : StoreError(Kind::Other, fmt::format("{}. The run has stopped; what was finished stands.",
                                          WithoutPoint(text))) {}

void RunStep(std::string_view name, const std::function<void()>& step) {
    try {
        step();
    } catch (const RunStopped&) {
        throw;
    } catch (const StoreError& error) {
        const auto text = fmt::format("{}: {}", name, PlainWords(error));
        if (error.IsFileError()) throw StoreError(error.kind(), text);
        throw RunStopped(text);
    } catch (const std::exception& error) {
        throw RunStopped(fmt::format("{}: {}", name, PlainWords(error)));
    }
}

}  // namespace zolmara
