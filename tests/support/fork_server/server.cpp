// Makes a fresh kestro_test for each run of a test without loading it anew: most of what a start costs is the loader's
// work and the libraries' own start.
//
// The library stands last in LD_PRELOAD. The loader starts libraries from the last to the first, so when this one's
// constructor runs, the driver libraries are ready, and those in front (the probe and the world, which read the run's
// environment) have not begun. Here the process waits for requests and forks. A child takes on the request's
// environment, directory and output, and goes on: the libraries in front read their variables, and main runs with the
// request's words. Neither the product nor what it is run with knows of it.
//
// It is C++ without a C++ run-time library, and without the sanitizers, which are not all set up yet when it runs.
#include "tests/support/fork_server/rehearsal.h"
#include "tests/support/fork_server/request.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace kestro_tests;

// Kept to the end of the child: its words and environment lie in it.
char *texts = nullptr;
char **words = nullptr;
int word_count = 0;

[[noreturn]] void end_server() {
    _exit(0);
}

void receive_whole(int socket, void *target, size_t size) {
    auto *place = static_cast<char *>(target);
    while (size > 0) {
        const ssize_t got = recv(socket, place, size, 0);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            end_server();
        }
        place += got;
        size -= static_cast<size_t>(got);
    }
}

void send_number(int socket, int32_t number) {
    if (send(socket, &number, sizeof(number), MSG_NOSIGNAL) != sizeof(number)) {
        end_server();
    }
}

// The descriptors come with the first byte of the head.
run_request receive_head(int socket, int (&descriptors)[descriptors_of_run]) {
    run_request head{};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(descriptors))] = {};
    iovec part{&head, sizeof(head)};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof(control);
    ssize_t got = -1;
    do {
        got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (got < 0 && errno == EINTR);
    const cmsghdr *passed = got > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (passed == nullptr || passed->cmsg_type != SCM_RIGHTS) {
        end_server();
    }
    memcpy(descriptors, CMSG_DATA(passed), sizeof(descriptors));
    receive_whole(socket, reinterpret_cast<char *>(&head) + got, sizeof(head) - static_cast<size_t>(got));
    return head;
}

// Takes that many texts off the row; gives them as a list with a null at its end.
char **take_texts(char *&at, uint32_t count) {
    auto **list = static_cast<char **>(calloc(count + 1, sizeof(char *)));
    for (uint32_t i = 0; list != nullptr && i < count; ++i) {
        list[i] = at;
        at += strlen(at) + 1;
    }
    return list;
}

// Gives the directory of the run.
const char *take_run(const run_request &head) {
    char *at = texts;
    const char *directory = at;
    at += strlen(at) + 1;
    words = take_texts(at, head.words);
    environ = take_texts(at, head.variables);
    word_count = static_cast<int>(head.words);
    if (words == nullptr || environ == nullptr) {
        _exit(126);
    }
    return directory;
}

void become_run(const run_request &head, const int (&descriptors)[descriptors_of_run], int socket) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(descriptors[0], STDOUT_FILENO);
    dup2(descriptors[1], STDERR_FILENO);
    close(descriptors[0]);
    close(descriptors[1]);
    close(socket);
    const char *directory = take_run(head);
    if (*directory != '\0' && chdir(directory) != 0) {
        _exit(126);
    }
}

int32_t end_of(pid_t run) {
    int status = 0;
    while (waitpid(run, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// Comes back in each child, and in the server for a rehearsal, whose end leads into here again.
void serve(int socket) {
    for (;;) {
        int descriptors[descriptors_of_run];
        const run_request head = receive_head(socket, descriptors);
        texts = static_cast<char *>(malloc(head.size));
        if (texts == nullptr) {
            end_server();
        }
        receive_whole(socket, texts, head.size);
        if (head.is_rehearsal != 0 && begin_rehearsal()) {
            take_run(head);
            return;
        }
        const pid_t run = head.is_rehearsal != 0 ? 0 : fork();
        if (run == 0 && head.is_rehearsal == 0) {
            become_run(head, descriptors, socket);
            return;
        }
        close(descriptors[0]);
        close(descriptors[1]);
        free(texts);
        send_number(socket, run);
        send_number(socket, run < 0 ? 127 << 8 : run == 0 ? 0 : end_of(run));
    }
}

__attribute__((constructor)) void start() {
    const char *socket = getenv(server_variable);
    if (socket == nullptr) {
        return;
    }
    // A test program that is killed takes its server and what runs with it.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    serve(atoi(socket));
}

// The libraries in front have ended by now.
__attribute__((destructor)) void finish() {
    if (is_rehearsing()) {
        end_rehearsal();
    }
}

} // namespace

// The C library hands the words of the process on to main; those of the server are not the run's.
using main_function = int(int, char **, char **);
using start_function = int(main_function *, int, char **, void (*)(), void (*)(), void (*)(), void *);

extern "C" __attribute__((visibility("default"))) int __libc_start_main(main_function *main, int count, char **given,
                                                                        void (*init)(), void (*fini)(),
                                                                        void (*loader_fini)(), void *stack_end) {
    void *real = dlsym(RTLD_NEXT, "__libc_start_main");
    return reinterpret_cast<start_function *>(real)(main, words != nullptr ? word_count : count,
                                                    words != nullptr ? words : given, init, fini, loader_fini,
                                                    stack_end);
}
