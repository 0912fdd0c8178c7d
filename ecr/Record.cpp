#include "ecr/Record.h"

#include <cmath>

#include "core/Fortran.h"
#include "core/Globals.h"

namespace zolmara {

namespace {

std::string NumberField(double whole, bool blankZero) {
    return Fortran(whole, "I3", " ", blankZero);
}

std::string SubscriptField(double subscript) { return Fortran(subscript, "I2", " ", true); }

}  // namespace

void EcrRun::WriteRecord() const { PrintLine(ECRFile, ECRLine); }

std::string LineField(Currency key, bool blankZero) {
    const double line = key.ToDouble();
    const double whole = std::trunc(line);
    return NumberField(whole, blankZero) + SubscriptField(std::trunc((line - whole) * 100 + 0.5));
}

std::string ColumnField(Currency column) {
    const Currency whole = Currency::FromWhole(column.Whole());
    return NumberField(whole.ToDouble(), false) +
           SubscriptField(Currency::FromUnits((column - whole).Units() * 100).ToDouble());
}

std::string ColumnField(int column) { return NumberField(column, false) + "  "; }

std::string PadText(std::string_view text, std::size_t width) {
    return std::string(LeftText(std::string(text) + std::string(width, ' '), width));
}

}  // namespace zolmara
