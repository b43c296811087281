// Asking about the board's files: status, permission, and the real name of a path. The status record passes through
// untouched, whichever of its layouts the caller was built with.
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kestro_sim {

namespace {

using stat_function = int(const char *, void *);
using versioned_stat_function = int(int, const char *, void *);
using fstatat_function = int(int, const char *, void *, int);
using versioned_fstatat_function = int(int, int, const char *, void *, int);
using statx_function = int(int, const char *, int, unsigned, void *);
using access_function = int(const char *, int);
using realpath_function = char *(const char *, char *);
using checked_realpath_function = char *(const char *, char *, size_t);

last_link links_of(int flags) {
    return (flags & AT_SYMLINK_NOFOLLOW) != 0 ? last_link::keep : last_link::follow;
}

int stat_at(next_function<stat_function> &next, const char *path, void *status, last_link last) {
    return at_desk(path, last, [&](const char *place) { return next.get()(place, status); });
}

int stat_at(next_function<versioned_stat_function> &next, int version, const char *path, void *status, last_link last) {
    return at_desk(path, last, [&](const char *place) { return next.get()(version, place, status); });
}

int stat_at(next_function<fstatat_function> &next, int directory, const char *path, void *status, int flags) {
    return at_desk(path, links_of(flags),
                   [&](const char *place) { return next.get()(directory, place, status, flags); });
}

int stat_at(next_function<versioned_fstatat_function> &next, int version, int directory, const char *path, void *status,
            int flags) {
    return at_desk(path, links_of(flags),
                   [&](const char *place) { return next.get()(version, directory, place, status, flags); });
}

// A null area asks for one from the heap.
char *give_realpath(const char *path, char *area) {
    char resolved[PATH_MAX];
    if (!board_realpath(path, resolved)) {
        return nullptr;
    }
    return area == nullptr ? strdup(resolved) : strcpy(area, resolved);
}

} // namespace

WORLD_EXPORT int world_stat(const char *path, void *status) __asm__("stat");
int world_stat(const char *path, void *status) {
    static next_function<stat_function> next{"stat"};
    return stat_at(next, path, status, last_link::follow);
}

WORLD_EXPORT int world_stat64(const char *path, void *status) __asm__("stat64");
int world_stat64(const char *path, void *status) {
    static next_function<stat_function> next{"stat64"};
    return stat_at(next, path, status, last_link::follow);
}

WORLD_EXPORT int world_lstat(const char *path, void *status) __asm__("lstat");
int world_lstat(const char *path, void *status) {
    static next_function<stat_function> next{"lstat"};
    return stat_at(next, path, status, last_link::keep);
}

WORLD_EXPORT int world_lstat64(const char *path, void *status) __asm__("lstat64");
int world_lstat64(const char *path, void *status) {
    static next_function<stat_function> next{"lstat64"};
    return stat_at(next, path, status, last_link::keep);
}

WORLD_EXPORT int world_fstatat(int directory, const char *path, void *status, int flags) __asm__("fstatat");
int world_fstatat(int directory, const char *path, void *status, int flags) {
    static next_function<fstatat_function> next{"fstatat"};
    return stat_at(next, directory, path, status, flags);
}

WORLD_EXPORT int world_fstatat64(int directory, const char *path, void *status, int flags) __asm__("fstatat64");
int world_fstatat64(int directory, const char *path, void *status, int flags) {
    static next_function<fstatat_function> next{"fstatat64"};
    return stat_at(next, directory, path, status, flags);
}

// Programs built before glibc 2.33 come through these.
WORLD_EXPORT int world_xstat(int version, const char *path, void *status) __asm__("__xstat");
int world_xstat(int version, const char *path, void *status) {
    static next_function<versioned_stat_function> next{"__xstat"};
    return stat_at(next, version, path, status, last_link::follow);
}

WORLD_EXPORT int world_xstat64(int version, const char *path, void *status) __asm__("__xstat64");
int world_xstat64(int version, const char *path, void *status) {
    static next_function<versioned_stat_function> next{"__xstat64"};
    return stat_at(next, version, path, status, last_link::follow);
}

WORLD_EXPORT int world_lxstat(int version, const char *path, void *status) __asm__("__lxstat");
int world_lxstat(int version, const char *path, void *status) {
    static next_function<versioned_stat_function> next{"__lxstat"};
    return stat_at(next, version, path, status, last_link::keep);
}

WORLD_EXPORT int world_lxstat64(int version, const char *path, void *status) __asm__("__lxstat64");
int world_lxstat64(int version, const char *path, void *status) {
    static next_function<versioned_stat_function> next{"__lxstat64"};
    return stat_at(next, version, path, status, last_link::keep);
}

WORLD_EXPORT int world_fxstatat(int version, int directory, const char *path, void *status,
                                int flags) __asm__("__fxstatat");
int world_fxstatat(int version, int directory, const char *path, void *status, int flags) {
    static next_function<versioned_fstatat_function> next{"__fxstatat"};
    return stat_at(next, version, directory, path, status, flags);
}

WORLD_EXPORT int world_fxstatat64(int version, int directory, const char *path, void *status,
                                  int flags) __asm__("__fxstatat64");
int world_fxstatat64(int version, int directory, const char *path, void *status, int flags) {
    static next_function<versioned_fstatat_function> next{"__fxstatat64"};
    return stat_at(next, version, directory, path, status, flags);
}

// 32-bit programs with 64-bit times come through these.
#ifndef __LP64__
WORLD_EXPORT int world_stat_time64(const char *path, void *status) __asm__("__stat64_time64");
int world_stat_time64(const char *path, void *status) {
    static next_function<stat_function> next{"__stat64_time64"};
    return stat_at(next, path, status, last_link::follow);
}

WORLD_EXPORT int world_lstat_time64(const char *path, void *status) __asm__("__lstat64_time64");
int world_lstat_time64(const char *path, void *status) {
    static next_function<stat_function> next{"__lstat64_time64"};
    return stat_at(next, path, status, last_link::keep);
}

WORLD_EXPORT int world_fstatat_time64(int directory, const char *path, void *status,
                                      int flags) __asm__("__fstatat64_time64");
int world_fstatat_time64(int directory, const char *path, void *status, int flags) {
    static next_function<fstatat_function> next{"__fstatat64_time64"};
    return stat_at(next, directory, path, status, flags);
}
#endif

WORLD_EXPORT int world_statx(int directory, const char *path, int flags, unsigned mask, void *status) __asm__("statx");
int world_statx(int directory, const char *path, int flags, unsigned mask, void *status) {
    static next_function<statx_function> next{"statx"};
    return at_desk(path, links_of(flags),
                   [=](const char *place) { return next.get()(directory, place, flags, mask, status); });
}

WORLD_EXPORT int world_access(const char *path, int mode) __asm__("access");
int world_access(const char *path, int mode) {
    static next_function<access_function> next{"access"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode); });
}

WORLD_EXPORT int world_faccessat(int directory, const char *path, int mode, int flags) __asm__("faccessat");
int world_faccessat(int directory, const char *path, int mode, int flags) {
    static next_function<int(int, const char *, int, int)> next{"faccessat"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(directory, place, mode, flags); });
}

WORLD_EXPORT char *world_realpath(const char *path, char *area) __asm__("realpath");
char *world_realpath(const char *path, char *area) {
    static next_function<realpath_function> next{"realpath"};
    return is_board_path(path) ? give_realpath(path, area) : next.get()(path, area);
}

// The C library ends the program when the area is too small for any path; so it does here.
WORLD_EXPORT char *world_realpath_chk(const char *path, char *area, size_t size) __asm__("__realpath_chk");
char *world_realpath_chk(const char *path, char *area, size_t size) {
    static next_function<checked_realpath_function> next{"__realpath_chk"};
    return is_board_path(path) && size >= PATH_MAX ? give_realpath(path, area) : next.get()(path, area, size);
}

WORLD_EXPORT char *world_canonicalize(const char *path) __asm__("canonicalize_file_name");
char *world_canonicalize(const char *path) {
    static next_function<char *(const char *)> next{"canonicalize_file_name"};
    return is_board_path(path) ? give_realpath(path, nullptr) : next.get()(path);
}

} // namespace kestro_sim
