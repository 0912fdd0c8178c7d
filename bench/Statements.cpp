#include "bench/Statements.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/session/Session.h"
#include "worksheets/NewCrf.h"

namespace zolmara::bench {

LargeShape ShapeOf(const Size& size) {
    LargeShape shape;
    shape.Components = size.Components;
    shape.CostCenters = size.CostCenters;
    return shape;
}

void MakeNew(const std::string& path) {
    std::filesystem::remove(path);
    NewCrfFields fields;
    fields.FormNum = "287";
    fields.ProviderNum = "12-3456";
    fields.FYStart = "10/1/2022";
    fields.FYEnd = "9/30/2023";
    fields.FacilityName = "Large Home Office";
    if (!CreateCrf(path, fields)) throw std::runtime_error(path + " could not be made");
}

void Import(const std::string& text) {
    if (!ImportAsciiFile(text)) throw std::runtime_error(text + " was not taken in whole");
}

void MakeStatement(const std::string& path, const LargeShape& shape) {
    const std::string text = path + ".txt";
    {
        std::ofstream file(text, std::ios::binary);
        WriteLargeStatement(file, shape);
    }
    MakeNew(path);
    Import(text);
    Calc_All();
    std::filesystem::remove(text);
}

void Open(const std::string& path) {
    if (!OpenCrf(path)) throw std::runtime_error(path + " was refused");
}

}  // namespace zolmara::bench
