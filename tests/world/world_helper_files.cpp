// The helper program's calls on files and programs.
#include "tests/world/world_helper.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/watchdog.h>
#include <spawn.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// What programs built with more checks call instead; the headers do not declare them.
extern "C" {
int __open_2(const char *path, int flags);
int __open64_2(const char *path, int flags);
int __openat_2(int directory, const char *path, int flags);
int __openat64_2(int directory, const char *path, int flags);
char *__realpath_chk(const char *path, char *area, size_t size);
}

namespace {

void show_descriptor(const char *name, int descriptor) {
    char text[100] = "";
    if (descriptor < 0) {
        printf("%s: %s\n", name, strerror(errno));
        return;
    }
    const ssize_t length = read(descriptor, text, sizeof(text) - 1);
    printf("%s: %.*s\n", name, static_cast<int>(length < 0 ? 0 : length), text);
    close(descriptor);
}

void show_stream(const char *name, FILE *stream) {
    char text[100] = "";
    if (stream == nullptr) {
        printf("%s: %s\n", name, strerror(errno));
        return;
    }
    printf("%s: %s\n", name, fgets(text, sizeof(text), stream) != nullptr ? text : "");
    if (stream != stdin) {
        fclose(stream);
    }
}

template <typename size_type> void show_size(const char *name, int result, const size_type &size) {
    if (result == 0) {
        printf("%s: %lld\n", name, static_cast<long long>(size));
    } else {
        printf("%s: %s\n", name, strerror(errno));
    }
}

void show_result(const char *name, int result) {
    printf("%s: %s\n", name, result == 0 ? "ok" : strerror(errno));
}

// The calls of programs built before glibc 2.33. Their version number says which layout the record has.
#ifdef __LP64__
constexpr int stat_version = 1;
#else
constexpr int stat_version = 3;
#endif

void show_versioned(const char *name, const char *path) {
    using versioned_stat = int(int, const char *, void *);
    auto *function = reinterpret_cast<versioned_stat *>(dlsym(RTLD_DEFAULT, name));
    struct stat status {};
    struct stat64 status64 {};
    const bool is_64 = strstr(name, "64") != nullptr;
    const int result = function(stat_version, path, is_64 ? static_cast<void *>(&status64) : &status);
    show_size(name, result, is_64 ? static_cast<long long>(status64.st_size) : status.st_size);
}

void show_versioned_at(const char *name, const char *path) {
    using versioned_fstatat = int(int, int, const char *, void *, int);
    auto *function = reinterpret_cast<versioned_fstatat *>(dlsym(RTLD_DEFAULT, name));
    struct stat status {};
    struct stat64 status64 {};
    const bool is_64 = strstr(name, "64") != nullptr;
    const int result = function(stat_version, AT_FDCWD, path, is_64 ? static_cast<void *>(&status64) : &status, 0);
    show_size(name, result, is_64 ? static_cast<long long>(status64.st_size) : status.st_size);
}

template <typename record> void show_names(const char *name, int found, record **entries) {
    if (found < 0) {
        printf("%s: %s\n", name, strerror(errno));
        return;
    }
    printf("%s:", name);
    for (int i = 0; i < found; ++i) {
        printf(" %s", entries[i]->d_name);
        free(entries[i]);
    }
    printf("\n");
    free(entries);
}

int status_of(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

} // namespace

int show_files(int count, char **words) {
    const char *path = count > 0 ? words[0] : "";
    show_descriptor("open", open(path, O_RDONLY));
    show_descriptor("open64", open64(path, O_RDONLY));
    show_descriptor("openat", openat(AT_FDCWD, path, O_RDONLY));
    show_descriptor("openat64", openat64(AT_FDCWD, path, O_RDONLY));
    show_descriptor("__open_2", __open_2(path, O_RDONLY));
    show_descriptor("__open64_2", __open64_2(path, O_RDONLY));
    show_descriptor("__openat_2", __openat_2(AT_FDCWD, path, O_RDONLY));
    show_descriptor("__openat64_2", __openat64_2(AT_FDCWD, path, O_RDONLY));
    show_stream("fopen", fopen(path, "r"));
    show_stream("fopen64", fopen64(path, "r"));
    show_stream("freopen", freopen(path, "r", stdin));
    show_stream("freopen64", freopen64(path, "r", stdin));
    return 0;
}

int show_status(int count, char **words) {
    const char *path = count > 0 ? words[0] : "";
    struct stat status {};
    struct stat64 status64 {};
    struct statx extended {};
    show_size("stat", stat(path, &status), status.st_size);
    show_size("stat64", stat64(path, &status64), status64.st_size);
    show_size("lstat", lstat(path, &status), status.st_size);
    show_size("lstat64", lstat64(path, &status64), status64.st_size);
    show_size("fstatat", fstatat(AT_FDCWD, path, &status, 0), status.st_size);
    show_size("fstatat64", fstatat64(AT_FDCWD, path, &status64, 0), status64.st_size);
    show_versioned("__xstat", path);
    show_versioned("__xstat64", path);
    show_versioned("__lxstat", path);
    show_versioned("__lxstat64", path);
    show_versioned_at("__fxstatat", path);
    show_versioned_at("__fxstatat64", path);
    show_size("statx", statx(AT_FDCWD, path, 0, STATX_SIZE, &extended), extended.stx_size);
    show_result("access", access(path, R_OK));
    show_result("faccessat", faccessat(AT_FDCWD, path, R_OK, 0));
    return 0;
}

int show_realpath(int count, char **words) {
    const char *path = count > 0 ? words[0] : "";
    char area[PATH_MAX] = "";
    const char *found = realpath(path, area);
    printf("realpath: %s\n", found != nullptr ? found : strerror(errno));
    char *made = realpath(path, nullptr);
    printf("realpath of its own: %s\n", made != nullptr ? made : strerror(errno));
    free(made);
    found = __realpath_chk(path, area, sizeof(area));
    printf("__realpath_chk: %s\n", found != nullptr ? found : strerror(errno));
    made = canonicalize_file_name(path);
    printf("canonicalize_file_name: %s\n", made != nullptr ? made : strerror(errno));
    free(made);
    return 0;
}

int show_directory(int count, char **words) {
    const char *path = count > 0 ? words[0] : "";
    DIR *directory = opendir(path);
    printf("opendir: %s\n", directory != nullptr ? "ok" : strerror(errno));
    if (directory != nullptr) {
        closedir(directory);
    }
    dirent64 **entries = nullptr;
    const int found = scandir64(path, &entries, nullptr, alphasort64);
    show_names("scandir64", found, entries);
// Today's file systems have numbers that do not fit the 32-bit target's first record.
#ifdef __LP64__
    dirent **native = nullptr;
    const int found_native = scandir(path, &native, nullptr, alphasort);
    show_names("scandir", found_native, native);
#endif
    return 0;
}

// Makes, renames and removes files in a directory of the board.
int change_entries(int count, char **words) {
    const std::string folder = count > 0 ? words[0] : "";
    char target[100] = "";
    show_result("mkdir", mkdir((folder + "/made").c_str(), 0755));
    const int made = creat((folder + "/made/file").c_str(), 0600);
    show_result("creat", made < 0 ? -1 : close(made));
    const int opened = open((folder + "/made/new").c_str(), O_CREAT | O_EXCL | O_WRONLY, 0640);
    show_result("open for the first time", opened < 0 ? -1 : close(opened));
    struct stat status {};
    stat((folder + "/made/new").c_str(), &status);
    printf("mode: %o\n", static_cast<unsigned>(status.st_mode & 0777));
    show_result("chmod", chmod((folder + "/made/file").c_str(), 0400));
    show_result("rename", rename((folder + "/made/file").c_str(), (folder + "/renamed").c_str()));
    show_result("unlink", unlink((folder + "/made/new").c_str()));
    show_result("rmdir", rmdir((folder + "/made").c_str()));
    show_result("remove", remove((folder + "/gone").c_str()));
    const ssize_t length = readlink((folder + "/link").c_str(), target, sizeof(target) - 1);
    printf("readlink: %s\n", length < 0 ? strerror(errno) : target);
    return 0;
}

int run_script(int count, char **words) {
    const char *path = count > 0 ? words[0] : "";
    char name[] = "install_itp.sh";
    char number[] = "7";
    char *line[] = {name, number, nullptr};
    char *environment[] = {nullptr};
    fflush(stdout);
    pid_t child = fork();
    if (child == 0) {
        execve(path, line, environment);
        _exit(errno);
    }
    printf("execve: %d\n", status_of(child));
    fflush(stdout);
    child = fork();
    if (child == 0) {
        execv(path, line);
        _exit(errno);
    }
    printf("execv: %d\n", status_of(child));
    fflush(stdout);
    const int error = posix_spawn(&child, path, nullptr, nullptr, line, environment);
    printf("posix_spawn: %d\n", error != 0 ? error : status_of(child));
    return 0;
}

int run_command(int count, char **words) {
    const char *command = count > 0 ? words[0] : "";
    const int status = system(command);
    printf("system: %d\n", WEXITSTATUS(status));
    FILE *pipe = popen(command, "r");
    char line[300] = "";
    while (fgets(line, sizeof(line), pipe) != nullptr) {
        printf("popen: %s", line);
    }
    printf("popen: %d\n", WEXITSTATUS(pclose(pipe)));
    return 0;
}

int show_environment(int count, char **words) {
    for (int i = 0; i < count; ++i) {
        const char *value = getenv(words[i]);
        printf("%s=%s\n", words[i], value != nullptr ? value : "(none)");
    }
    return 0;
}

int use_watchdog(int count, char **words) {
    const int device = open(count > 0 ? words[0] : "", O_RDWR);
    if (device < 0) {
        printf("open: %s\n", strerror(errno));
        return 0;
    }
    uint32_t value = 0;
    show_result("keep alive", ioctl(device, WDIOC_KEEPALIVE, 0));
    show_result("get timeout", ioctl(device, WDIOC_GETTIMEOUT, &value));
    printf("timeout %u\n", value);
    value = 12;
    show_result("set timeout", ioctl(device, WDIOC_SETTIMEOUT, &value));
    value = 0;
    show_result("set timeout to nothing", ioctl(device, WDIOC_SETTIMEOUT, &value));
    value = WDIOS_DISABLECARD;
    show_result("disable", ioctl(device, WDIOC_SETOPTIONS, &value));
    value = 0x80;
    show_result("unknown option", ioctl(device, WDIOC_SETOPTIONS, &value));
    close(device);
    return 0;
}
