// Making, renaming and removing the board's files.
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <sys/types.h>

namespace kestro_sim {

namespace {

using path_function = int(const char *);
using path_mode_function = int(const char *, mode_t);

} // namespace

WORLD_EXPORT int world_unlink(const char *path) __asm__("unlink");
int world_unlink(const char *path) {
    static next_function<path_function> next{"unlink"};
    return at_desk(path, last_link::keep, [](const char *place) { return next.get()(place); });
}

WORLD_EXPORT int world_remove(const char *path) __asm__("remove");
int world_remove(const char *path) {
    static next_function<path_function> next{"remove"};
    return at_desk(path, last_link::keep, [](const char *place) { return next.get()(place); });
}

WORLD_EXPORT int world_rmdir(const char *path) __asm__("rmdir");
int world_rmdir(const char *path) {
    static next_function<path_function> next{"rmdir"};
    return at_desk(path, last_link::keep, [](const char *place) { return next.get()(place); });
}

WORLD_EXPORT int world_mkdir(const char *path, mode_t mode) __asm__("mkdir");
int world_mkdir(const char *path, mode_t mode) {
    static next_function<path_mode_function> next{"mkdir"};
    return at_desk(path, last_link::keep, [=](const char *place) { return next.get()(place, mode); });
}

WORLD_EXPORT int world_chmod(const char *path, mode_t mode) __asm__("chmod");
int world_chmod(const char *path, mode_t mode) {
    static next_function<path_mode_function> next{"chmod"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, mode); });
}

WORLD_EXPORT int world_rename(const char *from, const char *to) __asm__("rename");
int world_rename(const char *from, const char *to) {
    static next_function<int(const char *, const char *)> next{"rename"};
    return at_desk(from, last_link::keep, [=](const char *place_from) {
        return at_desk(to, last_link::keep, [=](const char *place_to) { return next.get()(place_from, place_to); });
    });
}

WORLD_EXPORT ssize_t world_readlink(const char *path, char *target, size_t size) __asm__("readlink");
ssize_t world_readlink(const char *path, char *target, size_t size) {
    static next_function<ssize_t(const char *, char *, size_t)> next{"readlink"};
    return at_desk(path, last_link::keep, [=](const char *place) { return next.get()(place, target, size); });
}

} // namespace kestro_sim
