#include "core/StandardFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace zolmara {

void HoldStandardFiles() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) != -1) continue;
        // An opening takes the lowest number that is free, and those below are taken by now.
        ::open("/dev/null", number == STDERR_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace zolmara
