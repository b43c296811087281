// Programs and commands that kestro_test starts: a script of the board is taken from the board's files, a shell command
// that names the board's files works on them.
#include "sim/world/command_text.h"
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <spawn.h>

namespace kestro_sim {

namespace {

using exec_function = int(const char *, char *const *);
using exec_environment_function = int(const char *, char *const *, char *const *);
using spawn_function = int(pid_t *, const char *, const posix_spawn_file_actions_t *, const posix_spawnattr_t *,
                           char *const *, char *const *);

// Runs an action with the command's text as the desk needs it.
template <typename action> auto with_command(const char *command, action call) -> decltype(call(command)) {
    if (settings.root_length == 0 || command == nullptr) {
        return call(command);
    }
    const size_t length = command_on_desk(command, nullptr, 0);
    char *text = static_cast<char *>(malloc(length + 1));
    if (text == nullptr) {
        return call(command);
    }
    command_on_desk(command, text, length + 1);
    const auto result = call(text);
    const int error = errno;
    free(text);
    errno = error;
    return result;
}

} // namespace

WORLD_EXPORT int world_execve(const char *path, char *const *words, char *const *environment) __asm__("execve");
int world_execve(const char *path, char *const *words, char *const *environment) {
    static next_function<exec_environment_function> next{"execve"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, words, environment); });
}

WORLD_EXPORT int world_execv(const char *path, char *const *words) __asm__("execv");
int world_execv(const char *path, char *const *words) {
    static next_function<exec_function> next{"execv"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, words); });
}

WORLD_EXPORT int world_execvp(const char *path, char *const *words) __asm__("execvp");
int world_execvp(const char *path, char *const *words) {
    static next_function<exec_function> next{"execvp"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, words); });
}

WORLD_EXPORT int world_execvpe(const char *path, char *const *words, char *const *environment) __asm__("execvpe");
int world_execvpe(const char *path, char *const *words, char *const *environment) {
    static next_function<exec_environment_function> next{"execvpe"};
    return at_desk(path, last_link::follow, [=](const char *place) { return next.get()(place, words, environment); });
}

// Gives an error number instead of setting errno.
WORLD_EXPORT int world_posix_spawn(pid_t *child, const char *path, const posix_spawn_file_actions_t *actions,
                                   const posix_spawnattr_t *attributes, char *const *words,
                                   char *const *environment) __asm__("posix_spawn");
int world_posix_spawn(pid_t *child, const char *path, const posix_spawn_file_actions_t *actions,
                      const posix_spawnattr_t *attributes, char *const *words, char *const *environment) {
    static next_function<spawn_function> next{"posix_spawn"};
    const int result = at_desk(path, last_link::follow, [=](const char *place) {
        return next.get()(child, place, actions, attributes, words, environment);
    });
    return result == -1 ? errno : result;
}

WORLD_EXPORT int world_system(const char *command) __asm__("system");
int world_system(const char *command) {
    static next_function<int(const char *)> next{"system"};
    return with_command(command, [](const char *text) { return next.get()(text); });
}

WORLD_EXPORT FILE *world_popen(const char *command, const char *mode) __asm__("popen");
FILE *world_popen(const char *command, const char *mode) {
    static next_function<FILE *(const char *, const char *)> next{"popen"};
    return with_command(command, [=](const char *text) { return next.get()(text, mode); });
}

} // namespace kestro_sim
