// Start and end of the probe, and what happens to a driver call in between.
#include "probe/runtime.h"

#include "probe/input_file.h"
#include "probe/linkage.h"
#include "probe/output.h"
#include "probe/real_call.h"
#include "probe/report.h"
#include "probe/session.h"
#include "probe/trace.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace kestro_probe {

namespace {

constexpr int deviation_status = 99;
constexpr int usage_status = 2;

// Made before main when anything is asked of the probe, and never unmade: drivers may still call while the program
// ends.
session *running = nullptr;

// Calls of this thread that real drivers are at work on.
thread_local int calls_under_way = 0;

// The main thread is the first, the program's others are counted as they make their first call.
std::atomic<uint32_t> threads_known{1};
thread_local bool of_program = false;
thread_local uint32_t thread_number = 0;

[[noreturn]] void give_up(const std::string &text) {
    report_note(text);
    _exit(usage_status);
}

uint32_t thread_of_caller() {
    if (thread_number == 0 && gettid() == getpid()) {
        thread_number = 1;
    } else if (thread_number == 0 && of_program) {
        thread_number = ++threads_known;
    }
    return thread_number;
}

// A recording is answered from the file alone.
void refuse_pass(script &read) {
    for (const rule &line : read.rules) {
        if (line.what == outcome::pass) {
            read.faults.push_back(read.file + ":" + std::to_string(line.line) +
                                  ":1: a recording cannot pass a call on; write the result, or use it as a script");
        }
    }
}

script load(const settings &asked) {
    const std::string &name = asked.replay.empty() ? asked.script : asked.replay;
    if (name.empty()) {
        return {};
    }
    std::string fault;
    const std::string content = read_input(name, fault);
    if (!fault.empty()) {
        give_up(fault);
    }
    script read = parse_script(name, content);
    if (!asked.replay.empty()) {
        refuse_pass(read);
    }
    if (!read.faults.empty()) {
        std::string all;
        for (const std::string &one : read.faults) {
            all += (all.empty() ? "" : "\n") + one;
        }
        give_up(all);
    }
    return read;
}

void before_fork() {
    running->guard().lock();
}

void after_fork_in_parent() {
    running->guard().unlock();
}

void after_fork_in_child() {
    running->guard().unlock();
    become_child();
}

// What a replay cannot make happen again is in the trace for people only, as a comment: calls of a forked child, and
// calls out of a callback that a driver made, for in a replay no driver is there to make it.
std::string comment_mark() {
    if (is_child()) {
        return "# child: ";
    }
    return calls_under_way > 0 || thread_number == 0 ? "# callback: " : "";
}

std::string begun(const rule &line) {
    return comment_mark() + print_thread(line.thread) + print_call(line.operation, line.inputs);
}

std::string answered(const rule &line, const call &made) {
    return print_answer(line) + (shown_in_part(made) ? "   # longer areas are shown up to 16 MiB" : "");
}

void trace(const rule &line, const call &made) {
    if (is_tracing()) {
        write_line(begun(line) + answered(line, made));
    }
}

[[noreturn]] void crash() {
    struct sigaction by_default {};
    by_default.sa_handler = SIG_DFL;
    sigaction(SIGSEGV, &by_default, nullptr);
    sigset_t segv;
    sigemptyset(&segv);
    sigaddset(&segv, SIGSEGV);
    pthread_sigmask(SIG_UNBLOCK, &segv, nullptr);
    raise(SIGSEGV);
    _exit(128 + SIGSEGV);
}

[[noreturn]] void hang() {
    for (;;) {
        pause();
    }
}

void write_and_report(const rule &answering, const call &made) {
    for (const std::string &misfit : write_outputs(answering, made)) {
        report_finding(running->place_of(answering) + ": " + misfit + ": " + answering.source);
    }
}

bool is_named(const rule *by, uint32_t parameter) {
    return by != nullptr && std::any_of(by->outputs.begin(), by->outputs.end(),
                                        [&](const named_value &named) { return named.parameter == parameter; });
}

// A driver that fails leaves its outputs as they were, and then what stands there says nothing: shown is what changed.
std::vector<named_value> telling_outputs(const call &made, uint64_t code, const rule *by,
                                         const std::vector<named_value> &before) {
    std::vector<named_value> outputs = read_outputs(made);
    std::vector<named_value> telling;
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (code == 0 || is_named(by, outputs[i].parameter) || !(outputs[i] == before[i])) {
            telling.push_back(std::move(outputs[i]));
        }
    }
    return telling;
}

uint64_t missing(const call &made) {
    report_note(std::string("kestro_probe: no driver library has ") + operations[made.operation].name +
                " and no rule answers it: " + print_call(made.operation, shown_inputs(made)));
    return failure_code;
}

// The call is in the trace before the driver has it: it may not come back.
uint64_t call_real(const call &made, void *real, const rule *by, rule &line) {
    const bool tracing = is_tracing();
    const int entered = errno;
    const std::vector<named_value> before = tracing ? read_outputs(made) : std::vector<named_value>();
    const std::string head = tracing ? begun(line) : "";
    const uint64_t begun_line = tracing ? begin_line(head) : 0;
    errno = entered;
    ++calls_under_way;
    line.code = real_calls[made.operation](real, made.arguments);
    --calls_under_way;
    const int error = errno;
    if (by != nullptr) {
        write_and_report(*by, made);
    }
    if (tracing) {
        line.outputs = telling_outputs(made, line.code, by, before);
        end_line(begun_line, head, answered(line, made));
    }
    errno = error;
    return line.code;
}

// The rule's own outputs are what the trace shows, in the order of the declaration as everywhere.
uint64_t answer_by_rule(const call &made, const rule &by, rule &line) {
    line.what = by.what;
    line.outputs = by.outputs;
    std::sort(line.outputs.begin(), line.outputs.end(),
              [](const named_value &a, const named_value &b) { return a.parameter < b.parameter; });
    if (by.what == outcome::code) {
        write_and_report(by, made);
    }
    trace(line, made);
    if (by.what == outcome::crash) {
        crash();
    }
    if (by.what == outcome::hang) {
        hang();
    }
    return line.code;
}

uint64_t carry_out(const decision &decided, const call &made, rule &line, const void *caller) {
    line.code = decided.code;
    if (decided.real) {
        void *real = real_operation(made.operation, caller);
        if (real != nullptr) {
            return call_real(made, real, decided.by, line);
        }
        line.code = missing(made);
    } else if (decided.by != nullptr) {
        return answer_by_rule(made, *decided.by, line);
    }
    trace(line, made);
    return line.code;
}

uint64_t answer_main_program(uint32_t operation, void *const *arguments, const void *caller) {
    const int error = errno;
    const call made = make_call(operation, arguments, thread_of_caller());
    rule line;
    line.operation = operation;
    line.thread = made.thread;
    if (is_tracing()) {
        line.inputs = shown_inputs(made);
    }
    const decision decided = running->decide(made);
    for (int i = 0; i < decided.signals; ++i) {
        raise(running->signal_sent());
    }
    errno = error;
    return carry_out(decided, made, line, caller);
}

__attribute__((constructor)) void start() {
    find_main_program();
    const settings asked = read_settings();
    clean_environment();
    if (!asked.fault.empty()) {
        give_up("kestro_probe: " + asked.fault);
    }
    if (!asks_for_anything(asked)) {
        return;
    }
    script rules = load(asked);
    if (!asked.trace.empty()) {
        const int trace_file = open(asked.trace.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666);
        if (trace_file < 0) {
            give_up(asked.trace + ": " + strerror(errno) + "; name a file that can be written");
        }
        start_trace(trace_file, asked.trace);
        if (asked.trace_output && !start_showing_output()) {
            give_up(asked.trace + ": the output cannot be shown in it: " + strerror(errno));
        }
    }
    running = new session(asked, std::move(rules));
    pthread_atfork(before_fork, after_fork_in_parent, after_fork_in_child);
}

// What the program has printed comes before what the probe has to say about it.
__attribute__((destructor)) void finish() {
    if (running == nullptr || is_child()) {
        return;
    }
    fflush(nullptr);
    running->report_left_over();
    if (findings() > 0) {
        _exit(deviation_status);
    }
}

} // namespace

void *straight_to(size_t operation, const void *caller) {
    if (running != nullptr && is_main_program(caller)) {
        return nullptr;
    }
    return real_operation(operation, caller);
}

uint64_t answer(uint32_t operation, void *const *arguments, const void *caller) noexcept {
    try {
        if (void *real = straight_to(operation, caller)) {
            return real_calls[operation](real, arguments);
        }
        if (running != nullptr && is_main_program(caller)) {
            return answer_main_program(operation, arguments, caller);
        }
        return missing(make_call(operation, arguments));
    } catch (const std::exception &fault) {
        report_finding(std::string("kestro_probe: ") + operations[operation].name + ": " + fault.what());
    }
    return failure_code;
}

formatted_text::formatted_text(const char *format, va_list values) {
    if (format != nullptr && vasprintf(&text_, format, values) < 0) {
        text_ = nullptr;
    }
}

formatted_text::~formatted_text() {
    free(text_);
}

void enter_program_thread() {
    of_program = true;
}

bool is_answered(uint32_t operation) {
    return running != nullptr && running->names(operation);
}

} // namespace kestro_probe
