// Keeps beside a folder what its disk would hold if the power went now. See Power.h.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

namespace {

char folder[PATH_MAX];
char mirror[PATH_MAX];

/// A file that was seen. Its descriptor is never closed: that would drop SQLite's locks, and a
/// node that stays open is given to no other file.
struct Seen {
    dev_t Device;
    ino_t Node;
    int File;
};
Seen seen[512];
int seenCount = 0;

void MirrorPath(char* path, const char* name) {
    snprintf(path, 2 * PATH_MAX, "%s/%s", mirror, name);
}

void AppendLine(const char* name, const char* mode, const char* line) {
    char path[2 * PATH_MAX];
    MirrorPath(path, name);
    FILE* const file = fopen(path, mode);
    if (!file) return;
    fputs(line, file);
    fclose(file);
}

/// The number of a file; -1 for none. One that comes for the first time has nothing on the disk.
int NumberOf(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info {};
    if (file < 0 || fstat(file, &info) != 0 || !S_ISREG(info.st_mode)) return -1;
    for (int i = 0; i < seenCount; ++i)
        if (seen[i].Device == info.st_dev && seen[i].Node == info.st_ino) return i;
    if (seenCount == 512) return -1;
    seen[seenCount] = {info.st_dev, info.st_ino, file};
    char text[64];
    snprintf(text, sizeof text, "%d", seenCount);
    AppendLine(text, "w", "");
    snprintf(text, sizeof text, "%d %llu\n", seenCount,
             static_cast<unsigned long long>(info.st_ino));
    AppendLine("nodes", "a", text);
    return seenCount++;
}

void KeepContent(int number) {
    char path[2 * PATH_MAX];
    char name[32];
    snprintf(name, sizeof name, "%d", number);
    MirrorPath(path, name);
    FILE* const copy = fopen(path, "w");
    if (!copy) return;
    char buffer[65536];
    off_t at = 0;
    for (ssize_t got = 0; (got = pread(seen[number].File, buffer, sizeof buffer, at)) > 0;
         at += got)
        fwrite(buffer, 1, static_cast<std::size_t>(got), copy);
    fclose(copy);
}

/// The names of the folder itself; folders in it are made for the while only.
void KeepNames(bool withContent) {
    AppendLine("names", "w", "");
    DIR* const entries = opendir(folder);
    if (!entries) return;
    while (const dirent* entry = readdir(entries)) {
        char path[2 * PATH_MAX];
        snprintf(path, sizeof path, "%s/%s", folder, entry->d_name);
        struct stat info {};
        if (lstat(path, &info) != 0 || !S_ISREG(info.st_mode)) continue;
        const int number = NumberOf(path);
        if (number < 0) continue;
        if (withContent) KeepContent(number);
        char line[PATH_MAX];
        snprintf(line, sizeof line, "%d %s\n", number, entry->d_name);
        AppendLine("names", "a", line);
    }
    closedir(entries);
}

}  // namespace

extern "C" {

void PowerWatch(const char* below, const char* beside) {
    snprintf(folder, sizeof folder, "%s", below);
    snprintf(mirror, sizeof mirror, "%s", beside);
    KeepNames(true);
}

void PowerSynced(int file) {
    if (mirror[0] == '\0') return;
    const int former = errno;
    char link[64];
    char path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t size = readlink(link, path, sizeof path - 1);
    if (size > 0) {
        path[size] = '\0';
        const std::size_t below = strlen(folder);
        if (strcmp(path, folder) == 0) {
            KeepNames(false);
        } else if (strncmp(path, folder, below) == 0 && path[below] == '/') {
            if (const int number = NumberOf(link); number >= 0) KeepContent(number);
        }
    }
    errno = former;
}
}
