// Makes everything ready for a run and becomes kestro_test, so that signals and the exit status are the product's own.
#include "sim/launcher/launch.h"

#include "sim/core/prepare.h"
#include "sim/launcher/discard.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace kestro_sim {

namespace {

namespace fs = std::filesystem;

struct places {
    fs::path product;
    fs::path sim;
    fs::path world;
    fs::path probe;
};

fs::path own_directory() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error) {
        throw launch_error("/proc/self/exe", error.message(), "/proc must be mounted");
    }
    return self.parent_path();
}

places places_in(const fs::path &base) {
    return {base / "kestro_test", base / "sim", base / "sim/libkestro_world.so", base / "probe/libkestro_probe.so"};
}

fs::path absolute(const std::string &path) {
    return fs::absolute(path).lexically_normal();
}

std::string names_of_boards(const fs::path &boards) {
    std::vector<std::string> names;
    std::error_code none;
    for (const fs::directory_entry &entry : fs::directory_iterator(boards, none)) {
        if (entry.path().extension() == ".xml") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    std::string list;
    for (const std::string &name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

// A word with a slash is a file; one without is first a name among the boards, then a file in this directory.
fs::path find_board(const std::string &board, const fs::path &boards) {
    const bool is_path = board.find('/') != std::string::npos;
    const fs::path named = boards / (board + ".xml");
    if (!is_path && access(named.c_str(), F_OK) == 0) {
        return named;
    }
    const fs::path file = absolute(board);
    std::error_code none;
    if (fs::exists(file, none) && !fs::is_directory(file, none)) {
        return file;
    }
    if (is_path) {
        throw launch_error(file.string(), "there is no such file",
                           "--board takes the file of a description, or a name: " + names_of_boards(boards));
    }
    throw launch_error("--board", "there is no board '" + board + "'",
                       "right are the file of a description and the names " + names_of_boards(boards));
}

// Relative values do not count, as the base directories' convention has it.
std::optional<fs::path> directory_of(const char *variable) {
    const char *value = getenv(variable);
    if (value == nullptr || value[0] != '/') {
        return std::nullopt;
    }
    return fs::path(value);
}

fs::path find_state(const launch_options &options, const fs::path &board) {
    if (!options.state.empty()) {
        return absolute(options.state);
    }
    std::optional<fs::path> base = directory_of("XDG_STATE_HOME");
    if (!base) {
        base = directory_of("HOME");
        if (!base) {
            throw launch_error("--state", "neither XDG_STATE_HOME nor HOME is an absolute path",
                               "set one of them, or name a directory with --state");
        }
        *base /= ".local/state";
    }
    return *base / "kestro_sim" / board.stem();
}

fs::path find_root(const launch_options &options, const fs::path &state) {
    if (options.root.empty()) {
        return state / "root";
    }
    const fs::path root = absolute(options.root);
    std::error_code none;
    if (!fs::is_directory(root, none)) {
        throw launch_error(root.string(), "there is no such directory",
                           "--root takes one that is laid out like the board's root");
    }
    return root;
}

fs::path readable(const std::string &file, const std::string &option) {
    const fs::path path = absolute(file);
    std::error_code none;
    if (fs::is_directory(path, none)) {
        throw launch_error(path.string(), "is a directory", option + " takes a file");
    }
    if (access(path.c_str(), R_OK) != 0) {
        throw launch_error(path.string(), strerror(errno), option + " takes a file that can be read");
    }
    return path;
}

// Opening is the only sure test. What is there is kept: the probe empties the file when the run begins.
fs::path writable(const std::string &file, const std::string &option) {
    const fs::path path = absolute(file);
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    // A named pipe whose reader is not there yet is no mistake.
    if (descriptor < 0 && errno != ENXIO) {
        throw launch_error(path.string(), strerror(errno), option + " takes a file that can be written");
    }
    close(descriptor);
    return path;
}

void set(const char *variable, const std::string &value) {
    setenv(variable, value.c_str(), 1);
}

void set_if_given(const char *variable, const std::string &value) {
    if (!value.empty()) {
        set(variable, value);
    }
}

// Nothing of an earlier run may reach this one.
void clear_environment() {
    for (const char *variable : {"KESTRO_SIM_BOARD", "KESTRO_SIM_STATE", "KESTRO_SIM_ROOT", "KESTRO_SIM_CLOCK",
                                 "KESTRO_SIM_FAIL_ALLOC", "KESTRO_PROBE_SCRIPT", "KESTRO_PROBE_STRICT",
                                 "KESTRO_PROBE_TRACE", "KESTRO_PROBE_REPLAY", "KESTRO_PROBE_FAIL_CALL"}) {
        unsetenv(variable);
    }
}

bool needs_probe(const launch_options &options) {
    return options.strict || !options.script.empty() || !options.trace.empty() || !options.replay.empty() ||
           !options.fail_call.empty();
}

// The loader only warns of a library that it cannot preload, and such a run would not be what was asked for.
void add_preload(std::string &list, const fs::path &library) {
    if (access(library.c_str(), R_OK) != 0) {
        throw launch_error(library.string(), strerror(errno), "the whole of kestro_test must be built");
    }
    if (library.string().find_first_of(" :") != std::string::npos) {
        throw launch_error(library.string(), "the loader cannot preload from a path with a blank or a colon",
                           "move the build to a path without");
    }
    list += (list.empty() ? "" : ":") + library.string();
}

void set_loader_environment(const launch_options &options, const places &parts) {
    const char *preload = getenv("LD_PRELOAD");
    std::string list = preload != nullptr ? preload : "";
    if (needs_probe(options)) {
        add_preload(list, parts.probe);
    }
    add_preload(list, parts.world);
    set("LD_PRELOAD", list);
    const char *path = getenv("LD_LIBRARY_PATH");
    set("LD_LIBRARY_PATH", parts.sim.string() + (path != nullptr && *path != '\0' ? ":" + std::string(path) : ""));
}

void set_probe_environment(const launch_options &options) {
    if (!options.script.empty()) {
        set("KESTRO_PROBE_SCRIPT", readable(options.script, "--script").string());
    }
    if (!options.replay.empty()) {
        set("KESTRO_PROBE_REPLAY", readable(options.replay, "--replay").string());
    }
    if (!options.trace.empty()) {
        set("KESTRO_PROBE_TRACE", writable(options.trace, "--trace").string());
    }
    set_if_given("KESTRO_PROBE_STRICT", options.strict ? "1" : "");
    set_if_given("KESTRO_PROBE_FAIL_CALL", options.fail_call);
}

void check_product(const fs::path &product) {
    std::error_code none;
    if (!fs::is_regular_file(product, none)) {
        throw launch_error(product.string(), "there is no such program", "kestro_test lies beside kestro_sim");
    }
    if (access(product.c_str(), X_OK) != 0) {
        throw launch_error(product.string(), strerror(errno), "kestro_test must be a program that can be run");
    }
}

// The emulator hands its environment on to the program that it is given.
[[noreturn]] void become(const fs::path &product, const std::vector<std::string> &words) {
    const char *emulator = getenv("KESTRO_EMULATOR");
    const bool emulated = emulator != nullptr && *emulator != '\0';
    const std::string program = emulated ? emulator : product.string();
    std::vector<std::string> line;
    if (emulated) {
        line.push_back(program);
    }
    line.push_back(product.string());
    line.insert(line.end(), words.begin(), words.end());
    std::vector<char *> pointers;
    for (std::string &word : line) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    throw launch_error(program, strerror(errno),
                       emulated ? "KESTRO_EMULATOR takes the path of a program"
                                : "kestro_test must be a program of this machine");
}

} // namespace

fs::path make_ready(const launch_options &options, const fs::path &base) {
    const places parts = places_in(base);
    check_product(parts.product);
    const fs::path board = find_board(options.board, parts.sim / "boards");
    const fs::path state = find_state(options, board);
    const fs::path root = find_root(options, state);
    clear_environment();
    set_probe_environment(options);
    set_loader_environment(options, parts);
    if (const std::optional<std::string> problem = prepare_board(board, state, options.reset)) {
        throw launch_error(*problem);
    }
    set("KESTRO_SIM_BOARD", board.string());
    const fs::path used = options.discard ? copy_to_discard(state) : state;
    set("KESTRO_SIM_STATE", used.string());
    set("KESTRO_SIM_ROOT", (options.root.empty() ? used / "root" : root).string());
    set("KESTRO_SIM_CLOCK", options.clock);
    set_if_given("KESTRO_SIM_FAIL_ALLOC", options.fail_alloc);
    return parts.product;
}

void launch(const launch_options &options) {
    become(make_ready(options, own_directory()), options.words);
}

} // namespace kestro_sim
