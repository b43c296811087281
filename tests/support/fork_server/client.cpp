#include "tests/support/fork_server/client.h"

#include "tests/support/fork_server/request.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestro_tests {

namespace {

using texts = std::vector<std::string>;

// What the loader, the C library and the sanitizers read when a process starts.
bool is_read_at_start(const std::string &variable) {
    const std::string name = variable.substr(0, variable.find('='));
    return name.starts_with("LD_") || name.starts_with("MALLOC_") || name == "GLIBC_TUNABLES" ||
           name.ends_with("SAN_OPTIONS");
}

std::string joined(const texts &parts) {
    return std::accumulate(parts.begin(), parts.end(), std::string(),
                           [](std::string all, const std::string &part) { return std::move(all) + part + '\0'; });
}

class server {
  public:
    server(const std::string &program, texts environment) {
        std::array<int, 2> ends{};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
            throw std::runtime_error("no socket for the fork server");
        }
        environment.push_back(std::string(server_variable) + "=" + std::to_string(ends[1]));
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        fcntl(ends[1], F_SETFD, 0);
        process_ = spawn({program}, environment, "", {nowhere, STDERR_FILENO});
        close(nowhere);
        close(ends[1]);
        socket_ = ends[0];
    }
    server(const server &) = delete;
    server &operator=(const server &) = delete;
    ~server() {
        close(socket_);
        waitpid(process_, nullptr, 0);
    }

    pid_t start(const std::string &row, const run_request &head, const output_pair &output) const {
        send_head(head, output);
        for (size_t sent = 0; sent < row.size();) {
            const ssize_t part = send(socket_, row.data() + sent, row.size() - sent, MSG_NOSIGNAL);
            if (part < 0 && errno != EINTR) {
                throw std::runtime_error("the fork server has ended");
            }
            sent += part > 0 ? static_cast<size_t>(part) : 0;
        }
        return receive_number();
    }

    int32_t receive_number() const {
        int32_t number = 0;
        if (recv(socket_, &number, sizeof(number), MSG_WAITALL) != sizeof(number)) {
            throw std::runtime_error("the fork server has ended");
        }
        return number;
    }

  private:
    void send_head(run_request head, const output_pair &output) const {
        const std::array<int, descriptors_of_run> passed = {output.out, output.err};
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(passed))> control{};
        iovec part{&head, sizeof(head)};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr *rights = CMSG_FIRSTHDR(&message);
        rights->cmsg_level = SOL_SOCKET;
        rights->cmsg_type = SCM_RIGHTS;
        rights->cmsg_len = CMSG_LEN(sizeof(passed));
        memcpy(CMSG_DATA(rights), passed.data(), sizeof(passed));
        if (sendmsg(socket_, &message, MSG_NOSIGNAL) != sizeof(head)) {
            throw std::runtime_error("the fork server has ended");
        }
    }

    pid_t process_ = -1;
    int socket_ = -1;
};

// The server's library goes last, behind all that reads the environment of a run.
texts environment_of_server(const texts &environment) {
    texts changed;
    std::string preload;
    for (const std::string &variable : environment) {
        if (variable.starts_with("LD_PRELOAD=")) {
            preload = variable.substr(variable.find('=') + 1) + ":";
        } else {
            changed.push_back(variable);
        }
    }
    changed.push_back("LD_PRELOAD=" + preload + build_dir() + "/tests/libfork_server.so");
    return changed;
}

bool is_scripted(const texts &environment) {
    return std::any_of(environment.begin(), environment.end(),
                       [](const std::string &variable) { return variable.starts_with("KESTRO_PROBE_SCRIPT="); });
}

const texts rehearsed_words = {"mac_test", "drv_mac_get_num", "0xffffffff", "1"};

// As the run to come, but that nothing is injected or recorded, and that another script answers.
texts environment_of_rehearsal(const texts &environment) {
    static const std::string script =
        scratch_file("rehearsal", "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0 num=2\n");
    texts changed;
    std::copy_if(environment.begin(), environment.end(), std::back_inserter(changed), [](const std::string &variable) {
        return !variable.starts_with("KESTRO_PROBE_") && !variable.starts_with("KESTRO_SIM_FAIL_ALLOC=");
    });
    if (is_scripted(environment)) {
        changed.insert(changed.end(), {"KESTRO_PROBE_SCRIPT=" + script, "KESTRO_PROBE_STRICT=1"});
    }
    return changed;
}

// Programs of the tests take other words.
bool knows_the_rehearsal(const std::string &program) {
    return program.ends_with("/kestro_test");
}

void rehearse(const server &source, const std::string &program, const texts &environment) {
    texts argv = {program};
    argv.insert(argv.end(), rehearsed_words.begin(), rehearsed_words.end());
    const texts variables = environment_of_rehearsal(environment);
    const std::string row = '\0' + joined(argv) + joined(variables);
    const run_request head = {static_cast<uint32_t>(row.size()), static_cast<uint32_t>(argv.size()),
                              static_cast<uint32_t>(variables.size()), 1};
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    source.start(row, head, {nowhere, nowhere});
    source.receive_number();
    close(nowhere);
}

struct kept_server {
    std::unique_ptr<server> source;
    bool has_rehearsed_script;
    bool has_rehearsed_board;
};

const server &server_for(const std::string &program, const texts &environment) {
    static std::map<std::string, kept_server> servers;
    texts key = {program};
    std::copy_if(environment.begin(), environment.end(), std::back_inserter(key), is_read_at_start);
    kept_server &kept = servers[joined(key)];
    if (!kept.source) {
        kept.source = std::make_unique<server>(program, environment_of_server(environment));
    }
    bool &has_rehearsed = is_scripted(environment) ? kept.has_rehearsed_script : kept.has_rehearsed_board;
    if (getenv("KESTRO_EMULATOR") != nullptr && knows_the_rehearsal(program) && !has_rehearsed) {
        rehearse(*kept.source, program, environment);
        has_rehearsed = true;
    }
    return *kept.source;
}

} // namespace

process_result run_forked(const texts &argv, const texts &environment, const process_options &options) {
    const server &source = server_for(argv.at(0), environment);
    const std::string row = options.directory + '\0' + joined(argv) + joined(environment);
    const run_request head = {static_cast<uint32_t>(row.size()), static_cast<uint32_t>(argv.size()),
                              static_cast<uint32_t>(environment.size()), 0};
    const started_program program = {
        [&](const output_pair &output) { return source.start(row, head, output); },
        [&](pid_t) { return source.receive_number(); },
    };
    return run_to_end(program, options);
}

} // namespace kestro_tests
