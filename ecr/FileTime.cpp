#include "ecr/FileTime.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <ctime>

namespace zolmara {

bool SetFileTime(const std::string& path, const DateTime& lastWrite) {
    std::tm local{};
    local.tm_year = lastWrite.Year() - 1900;
    local.tm_mon = static_cast<int>(lastWrite.Month()) - 1;
    local.tm_mday = static_cast<int>(lastWrite.Day());
    local.tm_hour = lastWrite.Hour();
    local.tm_min = lastWrite.Minute();
    local.tm_sec = lastWrite.Second();
    local.tm_isdst = -1;
    const std::time_t universal = std::mktime(&local);
    const std::array<timespec, 2> times = {{{0, UTIME_OMIT}, {universal, 0}}};
    return ::utimensat(AT_FDCWD, path.c_str(), times.data(), 0) == 0;
}

}  // namespace zolmara
