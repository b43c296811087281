// Tells the board's paths from the desk's, and follows links in the board's files without ever leaving them.
#include "sim/world/paths.h"

#include "sim/world/world.h"

#include <cerrno>
#include <cstring>
#include <sys/types.h>
#include <unistd.h>

namespace kestro_sim {

const char *const board_places[] = {
    "/opt/hostx",          // software and data of the board
    "/home/release",       // property files of fan boards
    "/home/1",             // property file of a power board
    "/proc/interrupts",    // interrupt counters
    "/dev/watchdog",       // system watchdog
    "/dev/kestro_log",     // driver logs
    "/etc/install_itp.sh", // install script of the test package, in the two places it may have
    "/etc/init.d/install_itp.sh",
};
const unsigned board_place_count = sizeof(board_places) / sizeof(board_places[0]);

namespace {

constexpr int most_links = 40; // as many as Linux follows

struct component {
    const char *text;
    size_t length;
};

// Takes the next part off a path; length 0 at its end.
component next_component(const char *&path) {
    while (*path == '/') {
        ++path;
    }
    const component next{path, strcspn(path, "/")};
    path += next.length;
    return next;
}

bool is_text(const component &part, const char *text) {
    return part.length == strlen(text) && memcmp(part.text, text, part.length) == 0;
}

void drop_last(char *path, size_t &length) {
    while (length > 0 && path[--length] != '/') {
    }
    path[length] = '\0';
}

bool append(char (&path)[PATH_MAX], size_t &length, const component &part) {
    if (length + 1 + part.length >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return false;
    }
    path[length] = '/';
    memcpy(path + length + 1, part.text, part.length);
    length += 1 + part.length;
    path[length] = '\0';
    return true;
}

// Takes dots and doubled slashes out of an absolute path without looking at any file.
bool normalise(const char *path, char (&normal)[PATH_MAX]) {
    size_t length = 0;
    normal[0] = '\0';
    for (component part = next_component(path); part.length != 0; part = next_component(path)) {
        if (is_text(part, "..")) {
            drop_last(normal, length);
        } else if (!is_text(part, ".") && !append(normal, length, part)) {
            return false;
        }
    }
    return true;
}

bool is_below(const char *path, const char *place) {
    const size_t length = strlen(place);
    return strncmp(path, place, length) == 0 && (path[length] == '\0' || path[length] == '/');
}

bool is_place_of_board(const char *normal) {
    for (size_t i = 0; i < settings.own_path_count; ++i) {
        if (is_below(normal, settings.own_paths[i])) {
            return false;
        }
    }
    for (const char *place : board_places) {
        if (is_below(normal, place)) {
            return true;
        }
    }
    return false;
}

bool below_root(const char *path, char (&place)[PATH_MAX]) {
    const size_t length = strlen(path);
    if (settings.root_length + length >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return false;
    }
    memcpy(place, settings.root, settings.root_length);
    memcpy(place + settings.root_length, path, length + 1);
    return true;
}

// Length of the target of a link in the board's files; 0 when it is none.
size_t read_link(const char *path, char (&target)[PATH_MAX]) {
    static next_function<ssize_t(const char *, char *, size_t)> next{"readlink"};
    char place[PATH_MAX];
    if (!below_root(path, place)) {
        return 0;
    }
    const ssize_t length = next.get()(place, target, sizeof(target) - 1);
    if (length <= 0) {
        return 0;
    }
    target[length] = '\0';
    return static_cast<size_t>(length);
}

// Puts a link's target before what is left of the path.
bool splice(char (&rest)[PATH_MAX], const char *left, const char *target, size_t target_length) {
    const size_t left_length = strlen(left);
    if (target_length + 1 + left_length >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return false;
    }
    memmove(rest + target_length + 1, left, left_length + 1);
    memcpy(rest, target, target_length);
    rest[target_length] = '/';
    return true;
}

// A walk through the board's files: what is behind, without links, and what is still ahead.
struct walk_state {
    char (&resolved)[PATH_MAX];
    size_t length;
    char rest[PATH_MAX];
    const char *left;
    int links;
};

// Goes one part further, and where that is a link, puts what it leads to ahead.
bool step(walk_state &walk, const component &part, last_link last) {
    const size_t before = walk.length;
    if (!append(walk.resolved, walk.length, part)) {
        return false;
    }
    char target[PATH_MAX];
    const bool is_last = walk.left[strspn(walk.left, "/")] == '\0';
    const size_t target_length = is_last && last == last_link::keep ? 0 : read_link(walk.resolved, target);
    if (target_length == 0) {
        return true;
    }
    if (++walk.links > most_links) {
        errno = ELOOP;
        return false;
    }
    walk.length = target[0] == '/' ? 0 : before;
    walk.resolved[walk.length] = '\0';
    const bool fits = splice(walk.rest, walk.left, target, target_length);
    walk.left = walk.rest;
    return fits;
}

// Walks a path as the board's kernel would, with the board's root as root. What does not exist stays as it is written.
bool walk_path(const char *path, last_link last, char (&resolved)[PATH_MAX]) {
    walk_state walk{resolved, 0, "", nullptr, 0};
    if (strlen(path) >= sizeof(walk.rest)) {
        errno = ENAMETOOLONG;
        return false;
    }
    strcpy(walk.rest, path);
    walk.left = walk.rest;
    resolved[0] = '\0';
    for (component part = next_component(walk.left); part.length != 0; part = next_component(walk.left)) {
        if (is_text(part, "..")) {
            drop_last(resolved, walk.length);
        } else if (!is_text(part, ".") && !step(walk, part, last)) {
            return false;
        }
    }
    return true;
}

bool is_there(const char *place) {
    static next_function<int(const char *, int)> next{"access"};
    return next.get()(place, F_OK) == 0;
}

constexpr char logs[] = "/dev/kestro_log/";
constexpr size_t logs_length = sizeof(logs) - 1;

bool is_log(const char *resolved) {
    return strncmp(resolved, logs, logs_length) == 0;
}

// The drivers keep their logs in the state, and know which there are.
bool is_log_of_drivers(const char *resolved, char (&place)[PATH_MAX]) {
    static next_function<int(const char *, char *, size_t)> next{"kestro_sim_log_file"};
    return next.get() != nullptr && next.get()(resolved + logs_length, place, sizeof(place)) != 0;
}

// A file of the board's root stands in front of a log of the same name.
bool find_place(const char *resolved, char (&place)[PATH_MAX]) {
    if (!below_root(resolved, place)) {
        return false;
    }
    char log[PATH_MAX];
    if (is_log(resolved) && !is_there(place) && is_log_of_drivers(resolved, log)) {
        strcpy(place, log);
    }
    return true;
}

} // namespace

bool is_board_path(const char *path) {
    char normal[PATH_MAX];
    return settings.root_length != 0 && path != nullptr && path[0] == '/' && normalise(path, normal) &&
           is_place_of_board(normal);
}

bool place_on_desk(const char *path, last_link last, char (&place)[PATH_MAX]) {
    char resolved[PATH_MAX];
    return walk_path(path, last, resolved) && find_place(resolved, place);
}

bool board_realpath(const char *path, char (&resolved)[PATH_MAX]) {
    char place[PATH_MAX];
    if (!walk_path(path, last_link::follow, resolved) || !find_place(resolved, place) || !is_there(place)) {
        return false;
    }
    // A link out of the listed places has no name of its own that would lead back to it.
    return is_place_of_board(resolved) || normalise(path, resolved);
}

} // namespace kestro_sim
