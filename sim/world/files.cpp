// Opening the board's files and directories.
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>

namespace kestro_sim {

namespace {

// The mode is an optional argument of the C library's functions. It is passed in the same place as a declared one, and
// handed on unread: whether it means anything is for the real function to tell from the flags.
using open_function = int(const char *, int, ...);
using openat_function = int(int, const char *, int, ...);
using checked_open_function = int(const char *, int);
using checked_openat_function = int(int, const char *, int);
using fopen_function = FILE *(const char *, const char *);
using freopen_function = FILE *(const char *, const char *, FILE *);
using scandir_filter = int(const void *);
using scandir_order = int(const void *, const void *);
using scandir_function = int(const char *, void *, scandir_filter *, scandir_order *);

last_link links_of(int flags) {
    const bool makes_new = (flags & (O_CREAT | O_EXCL)) == (O_CREAT | O_EXCL);
    return makes_new || (flags & O_NOFOLLOW) != 0 ? last_link::keep : last_link::follow;
}

} // namespace

WORLD_EXPORT int world_open(const char *path, int flags, mode_t mode) __asm__("open");
int world_open(const char *path, int flags, mode_t mode) {
    static next_function<open_function> next{"open"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(place, flags, mode); });
}

WORLD_EXPORT int world_open64(const char *path, int flags, mode_t mode) __asm__("open64");
int world_open64(const char *path, int flags, mode_t mode) {
    static next_function<open_function> next{"open64"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(place, flags, mode); });
}

WORLD_EXPORT int world_open_2(const char *path, int flags) __asm__("__open_2");
int world_open_2(const char *path, int flags) {
    static next_function<checked_open_function> next{"__open_2"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(place, flags); });
}

WORLD_EXPORT int world_open64_2(const char *path, int flags) __asm__("__open64_2");
int world_open64_2(const char *path, int flags) {
    static next_function<checked_open_function> next{"__open64_2"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(place, flags); });
}

WORLD_EXPORT int world_openat(int directory, const char *path, int flags, mode_t mode) __asm__("openat");
int world_openat(int directory, const char *path, int flags, mode_t mode) {
    static next_function<openat_function> next{"openat"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(directory, place, flags, mode); });
}

WORLD_EXPORT int world_openat64(int directory, const char *path, int flags, mode_t mode) __asm__("openat64");
int world_openat64(int directory, const char *path, int flags, mode_t mode) {
    static next_function<openat_function> next{"openat64"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(directory, place, flags, mode); });
}

WORLD_EXPORT int world_openat_2(int directory, const char *path, int flags) __asm__("__openat_2");
int world_openat_2(int directory, const char *path, int flags) {
    static next_function<checked_openat_function> next{"__openat_2"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(directory, place, flags); });
}

WORLD_EXPORT int world_openat64_2(int directory, const char *path, int flags) __asm__("__openat64_2");
int world_openat64_2(int directory, const char *path, int flags) {
    static next_function<checked_openat_function> next{"__openat64_2"};
    return at_desk(path, links_of(flags), [=](const char *place) { return next.get()(directory, place, flags); });
}

WORLD_EXPORT int world_creat(const char *path, mode_t mode) __asm__("creat");
int world_creat(const char *path, mode_t mode) {
    return world_open(path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

WORLD_EXPORT int world_creat64(const char *path, mode_t mode) __asm__("creat64");
int world_creat64(const char *path, mode_t mode) {
    return world_open64(path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

WORLD_EXPORT FILE *world_fopen(const char *path, const char *mode) __asm__("fopen");
FILE *world_fopen(const char *path, const char *mode) {
    static next_function<fopen_function> next{"fopen"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode); });
}

WORLD_EXPORT FILE *world_fopen64(const char *path, const char *mode) __asm__("fopen64");
FILE *world_fopen64(const char *path, const char *mode) {
    static next_function<fopen_function> next{"fopen64"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode); });
}

WORLD_EXPORT FILE *world_freopen(const char *path, const char *mode, FILE *stream) __asm__("freopen");
FILE *world_freopen(const char *path, const char *mode, FILE *stream) {
    static next_function<freopen_function> next{"freopen"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode, stream); });
}

WORLD_EXPORT FILE *world_freopen64(const char *path, const char *mode, FILE *stream) __asm__("freopen64");
FILE *world_freopen64(const char *path, const char *mode, FILE *stream) {
    static next_function<freopen_function> next{"freopen64"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode, stream); });
}

WORLD_EXPORT DIR *world_opendir(const char *path) __asm__("opendir");
DIR *world_opendir(const char *path) {
    static next_function<DIR *(const char *)> next{"opendir"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place); });
}

WORLD_EXPORT int world_scandir(const char *path, void *list, scandir_filter *filter,
                               scandir_order *order) __asm__("scandir");
int world_scandir(const char *path, void *list, scandir_filter *filter, scandir_order *order) {
    static next_function<scandir_function> next{"scandir"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, list, filter, order); });
}

WORLD_EXPORT int world_scandir64(const char *path, void *list, scandir_filter *filter,
                                 scandir_order *order) __asm__("scandir64");
int world_scandir64(const char *path, void *list, scandir_filter *filter, scandir_order *order) {
    static next_function<scandir_function> next{"scandir64"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, list, filter, order); });
}

} // namespace kestro_sim
