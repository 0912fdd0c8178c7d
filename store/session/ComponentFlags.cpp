#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "store/ReadSnapshot.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::int64_t kFirstLine = 4;
constexpr std::int64_t kLines = 9;

/// One byte for each hundredth of a line, from 4.00 to 12.99.
std::array<std::uint8_t, static_cast<std::size_t>(kLines * 100)> componentFlags{};

std::uint8_t* FlagsOf(Currency line) {
    const std::int64_t hundredth = line.Units() / kSubscriptStep.Units() - kFirstLine * 100;
    if (hundredth < 0 || hundredth >= kLines * 100) return nullptr;
    return &componentFlags[static_cast<std::size_t>(hundredth)];
}

unsigned PlaceOf(const Variant& cell) {
    const std::string letter = FirstLetter(cell);
    const std::size_t at = std::string_view("NOP").find(letter);
    if (letter.empty() || at == std::string_view::npos) return 0;
    return static_cast<unsigned>(at) + 1;
}

}  // namespace

void ClearComponentFlags() { componentFlags.fill(0); }

void RebuildComponentFlags() {
    ClearComponentFlags();
    const ReadSnapshot snapshot(gDB);
    // A CRF whose S-1 is being made anew is open without it for a moment.
    if (!gDB.HasTable("S1p1")) return;
    Recordset rows = gDB.OpenRecordset(
        "SELECT LineNum, Col_4 As ColA, Col_5 As ColB, Col_6 As ColC FROM S1p1 "
        "WHERE Int(LineNum) In(4,5,6,7,8,9,10) ORDER BY LineNum;");
    for (; !rows.Eof(); rows.MoveNext()) {
        if (std::uint8_t* flags = FlagsOf(CurOr(rows["LineNum"]))) {
            *flags = static_cast<std::uint8_t>(PlaceOf(rows["ColA"]) | PlaceOf(rows["ColB"]) << 2 |
                                               PlaceOf(rows["ColC"]) << 4);
        }
    }
}

std::uint8_t ComponentFlags(Currency line) {
    const std::uint8_t* flags = FlagsOf(line);
    return flags ? *flags : std::uint8_t{0};
}

}  // namespace zolmara
