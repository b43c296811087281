#include "tests/support/process.h"

#include "tests/support/thoroughness.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestro_tests {

namespace {

using steady = std::chrono::steady_clock;

// The programs of an ARM build do not run on the desk's processor by themselves.
std::string emulator() {
    const char *name = getenv("KESTRO_EMULATOR");
    return name != nullptr ? name : "";
}

std::vector<char *> pointers_to(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    for (std::string &text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

struct reading_ends {
    int out;
    int err;
};

// Whether the child is to be killed now.
bool is_due(const process_options &options, long elapsed_ms, process_result &result) {
    if (elapsed_ms >= options.time_limit_ms) {
        result.timed_out = true;
        return true;
    }
    return (options.kill_after_ms >= 0 && elapsed_ms >= options.kill_after_ms) ||
           (options.kill_when && options.kill_when());
}

// Takes what the pipe has; closes it at its end.
void drain(pollfd &pipe, std::string &text) {
    std::array<char, 65536> buffer{};
    const ssize_t got = read(pipe.fd, buffer.data(), buffer.size());
    if (got > 0) {
        text.append(buffer.data(), static_cast<size_t>(got));
        return;
    }
    close(pipe.fd);
    pipe.fd = -1;
}

// An operator who presses Ctrl-C as the lines come.
class operator_at_keyboard {
  public:
    operator_at_keyboard(pid_t run, std::vector<std::string> texts) : run_(run), texts_(std::move(texts)) {
    }
    void look_at(const std::string &output) {
        for (size_t found = 0; next_ < texts_.size() && found != std::string::npos;) {
            found = output.find(texts_[next_], seen_);
            if (found != std::string::npos) {
                seen_ = found + texts_[next_++].size();
                kill(run_, SIGINT);
            }
        }
    }

  private:
    pid_t run_;
    std::vector<std::string> texts_;
    size_t next_ = 0;
    size_t seen_ = 0;
};

// How long the pipes of a child that was killed may stay open: what it started may hold them, and never end.
constexpr long last_words_ms = 1000;

// Reads both pipes until they close; kills the child when its time is over.
void collect(pid_t run, const reading_ends &running, const process_options &options, process_result &result) {
    const auto begin = steady::now();
    std::array<pollfd, 2> pipes{{{running.out, POLLIN, 0}, {running.err, POLLIN, 0}}};
    operator_at_keyboard presses(run, options.interrupt_at);
    bool killed = false;
    long last_ms = LONG_MAX;
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        poll(pipes.data(), pipes.size(), options.kill_when ? 2 : 20);
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(steady::now() - begin).count();
        if (!killed && is_due(options, static_cast<long>(elapsed), result)) {
            kill(run, result.timed_out ? SIGKILL : options.kill_signal);
            killed = true;
            last_ms = static_cast<long>(elapsed) + last_words_ms;
        }
        if (elapsed > last_ms) {
            std::for_each(pipes.begin(), pipes.end(), [](const pollfd &pipe) { close(pipe.fd); });
            return;
        }
        for (size_t i = 0; i < pipes.size(); ++i) {
            if (pipes[i].fd >= 0 && pipes[i].revents != 0) {
                drain(pipes[i], i == 0 ? result.out : result.err);
            }
        }
        presses.look_at(result.out);
    }
}

struct scratch_root {
    std::filesystem::path path;
    int count = 0;

    scratch_root() {
        std::string name = (std::filesystem::temp_directory_path() / "kestro-tests-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no scratch directory");
        }
        path = name;
    }
    scratch_root(const scratch_root &) = delete;
    scratch_root &operator=(const scratch_root &) = delete;
    ~scratch_root() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

} // namespace

std::vector<std::string> merged_environment(const std::vector<std::string> &changes) {
    std::set<std::string_view> changed;
    for (const std::string_view change : changes) {
        changed.insert(change.substr(0, change.find('=')));
    }
    std::vector<std::string> merged;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        if (!changed.contains(variable.substr(0, variable.find('=')))) {
            merged.emplace_back(variable);
        }
    }
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(merged),
                 [](const std::string &c) { return c.find('=') != std::string::npos; });
    return merged;
}

pid_t spawn(std::vector<std::string> argv, std::vector<std::string> environment, const std::string &directory,
            const output_pair &output) {
    if (!emulator().empty() && argv.at(0).starts_with(build_dir())) {
        argv.insert(argv.begin(), emulator());
    }
    const std::vector<char *> argv_pointers = pointers_to(argv);
    const std::vector<char *> environment_pointers = pointers_to(environment);
    const pid_t pid = fork();
    if (pid != 0) {
        return pid;
    }
    // Crashes are part of the tests; nobody wants their cores.
    const rlimit no_core = {0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    dup2(output.out, STDOUT_FILENO);
    dup2(output.err, STDERR_FILENO);
    if (!directory.empty() && chdir(directory.c_str()) != 0) {
        _exit(126);
    }
    execvpe(argv_pointers[0], argv_pointers.data(), environment_pointers.data());
    _exit(127);
}

process_result run_to_end(const started_program &program, const process_options &options) {
    std::array<int, 2> out{};
    std::array<int, 2> err{};
    if (pipe2(out.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t run = program.start({out[1], err[1]});
    close(out[1]);
    close(err[1]);
    process_result result;
    collect(run, {out[0], err[0]}, options, result);
    const int status = program.end(run);
    result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return result;
}

process_result run_process(const std::vector<std::string> &argv, const process_options &options) {
    const started_program program = {
        [&](const output_pair &output) {
            return spawn(argv, merged_environment(options.environment), options.directory, output);
        },
        [](pid_t run) {
            int status = 0;
            while (waitpid(run, &status, 0) < 0 && errno == EINTR) {
            }
            return status;
        },
    };
    return run_to_end(program, options);
}

std::string build_dir() {
    static const char *const under_test = getenv("KESTRO_BUILD_UNDER_TEST");
    return under_test != nullptr ? under_test : KESTRO_BUILD_DIR;
}

std::string launcher() {
    const bool is_slow = !emulator().empty() && build_dir() != KESTRO_BUILD_DIR && !everything_is_tried();
    return is_slow ? test_program("desk_launcher") : build_dir() + "/kestro_sim";
}

std::string test_program(const std::string &name) {
    return KESTRO_BUILD_DIR "/tests/" + name;
}

std::string source_dir() {
    return KESTRO_SOURCE_DIR;
}

std::string new_scratch_dir() {
    static scratch_root root;
    const std::filesystem::path path = root.path / std::to_string(root.count++);
    std::filesystem::create_directories(path);
    return path.string();
}

std::string scratch_file(const std::string &name, const std::string &content) {
    const std::string path = new_scratch_dir() + "/" + name;
    write_file(path, content);
    return path;
}

std::string read_file(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return std::move(content).str();
}

void write_file(const std::string &path, const std::string &content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
}

} // namespace kestro_tests
