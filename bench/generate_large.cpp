// Writes the import file of a large home office:
//   generate-large OUT.txt [COMPONENTS [COST_CENTERS [FILLED_PER_MILLE [DIRECT_PER_MILLE]]]]

#include <fmt/format.h>

#include <fstream>
#include <string>

#include "bench/LargeStatement.h"
#include "core/Globals.h"

namespace {

int NumberOr(int count, char** words, int index, int fallback) {
    return index < count ? static_cast<int>(zolmara::Val(words[index])) : fallback;
}

}  // namespace

int main(int count, char** words) {
    if (count < 2) {
        fmt::print(stderr,
                   "usage: generate-large OUT.txt [COMPONENTS [COST_CENTERS [FILLED_PER_MILLE "
                   "[DIRECT_PER_MILLE]]]]\n");
        return 1;
    }
    zolmara::bench::LargeShape shape;
    shape.Components = NumberOr(count, words, 2, shape.Components);
    shape.CostCenters = NumberOr(count, words, 3, shape.CostCenters);
    shape.FilledPerMille = NumberOr(count, words, 4, shape.FilledPerMille);
    shape.DirectPerMille = NumberOr(count, words, 5, shape.DirectPerMille);

    std::ofstream file(words[1]);
    const std::size_t lines = zolmara::bench::WriteLargeStatement(file, shape);
    file.close();
    if (!file) {
        fmt::print(stderr, "{} could not be written\n", words[1]);
        return 4;
    }
    fmt::print("{} lines\n", lines);
    return 0;
}
