// Makes everything ready for a run and becomes kestro_test, so that signals and the exit status are the product's own.
#include "sim/launcher/launch.h"

#include "sim/core/opened_libraries.h"
#include "sim/core/prepare.h"
#include "sim/core/state_check.h"
#include "sim/core/store_error.h"
#include "sim/core/time.h"
#include "sim/launcher/discard.h"
#include "sim/launcher/hand.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
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

// A word with a slash is a path; one without is a program beside the launcher.
places places_in(const fs::path &base, const std::string &program) {
    const bool is_path = program.find('/') != std::string::npos;
    return {is_path ? fs::absolute(program) : base / program, base / "sim", base / "sim/libkestro_world.so",
            base / "probe/libkestro_probe.so"};
}

fs::path absolute(const std::string &path) {
    std::error_code problem;
    const fs::path whole = fs::absolute(path, problem);
    if (problem) {
        throw launch_error(path, "the directory that kestro_sim was started in is gone (" + problem.message() + ")",
                           "start it in another, or give the whole path");
    }
    return whole.lexically_normal();
}

// Relative values do not count, as the base directories' convention has it.
std::optional<fs::path> directory_of(const char *variable) {
    const char *value = getenv(variable);
    if (value == nullptr || value[0] != '/') {
        return std::nullopt;
    }
    return fs::path(value);
}

fs::path find_state(const launch_options &options, const std::string &chassis) {
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
    return *base / "kestro_sim" / chassis;
}

fs::path find_root(const launch_options &options, const fs::path &state, const std::string &seat) {
    if (options.root.empty()) {
        return state / "root" / seat;
    }
    fs::path root = absolute(options.root);
    std::error_code none;
    if (!fs::is_directory(root, none)) {
        throw launch_error(root.string(), "there is no such directory",
                           "--root takes one that is laid out like the board's root");
    }
    return root;
}

fs::path readable(const std::string &file, const std::string &option) {
    fs::path path = absolute(file);
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
    fs::path path = absolute(file);
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
    for (const char *variable :
         {"KESTRO_SIM_BOARD", "KESTRO_SIM_STATE", "KESTRO_SIM_ROOT", "KESTRO_SIM_CLOCK", "KESTRO_SIM_SEAT",
          "KESTRO_SIM_TIME", "KESTRO_SIM_FAIL_ALLOC", "KESTRO_SIM_WATCHDOG", "KESTRO_PROBE_SCRIPT",
          "KESTRO_PROBE_STRICT", "KESTRO_PROBE_TRACE", "KESTRO_PROBE_TRACE_OUTPUT", "KESTRO_PROBE_REPLAY",
          "KESTRO_PROBE_FAIL_CALL", "KESTRO_PROBE_SIGNAL_CALL"}) {
        unsetenv(variable);
    }
}

bool needs_probe(const launch_options &options) {
    return options.strict || !options.script.empty() || !options.trace.empty() || !options.replay.empty() ||
           !options.fail_call.empty() || !options.signal_call.empty();
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
}

// The linked libraries lie in one folder; each that a board may lack has its own, which is left out of the path for a
// board that does lack it.
void set_library_path(const launch_options &options, const fs::path &sim, const std::vector<std::string> &lacking) {
    std::string folders = sim.string();
    for (const std::string library : opened_libraries) {
        const bool is_there =
            std::find(lacking.begin(), lacking.end(), library) == lacking.end() &&
            std::find(options.without.begin(), options.without.end(), library) == options.without.end();
        folders += is_there ? ":" + (sim / "opened" / library).string() : "";
    }
    const char *path = getenv("LD_LIBRARY_PATH");
    set("LD_LIBRARY_PATH", folders + (path != nullptr && *path != '\0' ? ":" + std::string(path) : ""));
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
    set_if_given("KESTRO_PROBE_TRACE_OUTPUT", options.trace_output ? "1" : "");
    set_if_given("KESTRO_PROBE_STRICT", options.strict ? "1" : "");
    set_if_given("KESTRO_PROBE_FAIL_CALL", options.fail_call);
    set_if_given("KESTRO_PROBE_SIGNAL_CALL", options.signal_call);
}

// The virtual clock goes on from run to run.
std::string time_at_start(const fs::path &state) {
    try {
        return std::to_string(board_time_at_start(state));
    } catch (const std::exception &problem) {
        throw launch_error(problem.what());
    }
}

void check_product(const fs::path &product) {
    std::error_code none;
    if (!fs::is_regular_file(product, none)) {
        const bool usual = product.filename() == "kestro_test";
        throw launch_error(product.string(), "there is no such program",
                           usual ? "kestro_test lies beside kestro_sim"
                                 : "--run takes a program beside kestro_sim, such as kestro_call, or a path");
    }
    if (access(product.c_str(), X_OK) != 0) {
        throw launch_error(product.string(), strerror(errno),
                           product.filename().string() + " must be a program that can be run");
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
    pointers.reserve(line.size() + 1);
    for (std::string &word : line) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    throw launch_error(program, strerror(errno),
                       emulated ? "KESTRO_EMULATOR takes the path of a program"
                                : product.filename().string() + " must be a program of this machine");
}

void launch(const launch_options &options, const fs::path &base) {
    if (const std::optional<fs::path> program = make_ready(options, base.empty() ? own_directory() : base)) {
        become(*program, options.words);
    }
}

} // namespace

std::optional<fs::path> make_ready(const launch_options &options, const fs::path &base) {
    const places parts = places_in(base, options.run);
    const board_choice board = choose_board(options.board, parts.sim / "chassis");
    const fs::path kept = find_state(options, board.chassis);
    const bool is_run = !options.words.empty() || options.run != "kestro_test" || !options.has_hand();
    if (is_run) {
        check_product(parts.product);
    }
    find_root(options, kept, board.seat);
    clear_environment();
    set_probe_environment(options);
    set_loader_environment(options, parts);
    let_board_time_stand(options.clock == "virtual");
    const fs::path merged = prepare_board(board, kept, options.reset);
    const fs::path state = options.discard ? copy_to_discard(kept) : kept;
    if (options.accept_images) {
        accept_images(state);
    }
    if (!options.pull.empty() || !options.plug.empty()) {
        refit(merged, state, {options.pull, options.plug});
    }
    act_by_hand(options, merged, state);
    if (!is_run) {
        return std::nullopt;
    }
    const bool are_watched = require_fitted(state, board.seat);
    const bool is_watched = are_watched && settle_before_run(merged, state, board.seat);
    set_library_path(options, parts.sim, lacking_libraries(merged, board.seat));
    set("KESTRO_SIM_BOARD", merged.string());
    set("KESTRO_SIM_SEAT", board.seat);
    set("KESTRO_SIM_STATE", state.string());
    set("KESTRO_SIM_ROOT", find_root(options, state, board.seat).string());
    set("KESTRO_SIM_CLOCK", options.clock);
    set_if_given("KESTRO_SIM_TIME", options.clock == "virtual" ? time_at_start(state) : "");
    set_if_given("KESTRO_SIM_FAIL_ALLOC", options.fail_alloc);
    set_if_given("KESTRO_SIM_WATCHDOG", is_watched ? "1" : "");
    return parts.product;
}

int run_launcher(int count, char **arguments, const fs::path &base) {
    try {
        if (const auto options = read_options(count, arguments)) {
            launch(*options, base);
        }
    } catch (const fs::filesystem_error &problem) {
        std::cerr << "kestro_sim: " << said_plainly(problem) << "\n";
        return 2;
    } catch (const std::exception &problem) {
        std::cerr << "kestro_sim: " << problem.what() << "\n";
        return 2;
    }
    return EXIT_SUCCESS;
}

} // namespace kestro_sim
