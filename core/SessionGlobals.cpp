#include "core/Globals.h"

namespace zolmara {

std::string gCRFPath;
std::string gCRFDir;
std::string gCRFTitle;
std::string gFormNum;
Variant gFYStart;
Variant gFYEnd;
std::string gProviderName;
std::string gProviderNumber;

bool gDebug = false;
std::string gTitlePrefix = "Velquist - ";
const std::string gVersion = ZOLMARA_VERSION;
std::string gLogType;

const std::array<StateCode, 53> gStateCodes{{
    {"AL", "01"},    {"AK", "02"},    {"AZ", "03"}, {"AR", "04"},       {"CA", "05 55 75 92"},
    {"CO", "06"},    {"CT", "07"},    {"DE", "08"}, {"DC", "09"},       {"FL", "10 68 69"},
    {"GA", "11"},    {"HI", "12"},    {"ID", "13"}, {"IL", "14 78"},    {"IN", "15"},
    {"IA", "16 76"}, {"KS", "17 70"}, {"KY", "18"}, {"LA", "19 71 95"}, {"ME", "20"},
    {"MD", "21 80"}, {"MA", "22"},    {"MI", "23"}, {"MN", "24 77"},    {"MS", "25"},
    {"MO", "26"},    {"MT", "27"},    {"NE", "28"}, {"NV", "29"},       {"NH", "30"},
    {"NJ", "31"},    {"NM", "32"},    {"NY", "33"}, {"NC", "34"},       {"ND", "35"},
    {"OH", "36 72"}, {"OK", "37"},    {"OR", "38"}, {"PA", "39 73"},    {"PR", "40"},
    {"RI", "41"},    {"SC", "42"},    {"SD", "43"}, {"TN", "44"},       {"TX", "45 67 74 97"},
    {"UT", "46"},    {"VT", "47"},    {"VI", "48"}, {"VA", "49"},       {"WA", "50"},
    {"WV", "51"},    {"WI", "52"},    {"WY", "53"},
}};

}  // namespace zolmara
