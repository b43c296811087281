// Drivers are found through the loader, as kestro_test finds those it opens at run time: on a board the board's
// libraries, behind kestro_sim the simulated ones.
#include "probe/caller.h"

#include "probe/areas.h"
#include "probe/call.h"
#include "probe/cursor.h"
#include "probe/real_call.h"
#include "probe/trace.h"

#include <chrono>
#include <dlfcn.h>
#include <thread>

namespace kestro_probe {

namespace {

// Libraries stay open: what they registered or opened themselves lasts until the program ends.
void *find_driver(const operation &op) {
    const std::string file = std::string("lib") + op.library + ".so";
    void *library = dlopen(file.c_str(), RTLD_LAZY | RTLD_GLOBAL);
    if (library == nullptr) {
        const char *reason = dlerror();
        throw call_error(std::string(reason != nullptr ? reason : file) +
                         "; the folder of the driver libraries must stand in LD_LIBRARY_PATH, or start with "
                         "kestro_sim --run kestro_call");
    }
    void *driver = dlsym(library, op.name);
    if (driver == nullptr) {
        throw call_error(file + " has no " + op.name + "; this board lacks the operation");
    }
    return driver;
}

// A driver that fails leaves its outputs as they were; what it changed all the same is worth seeing.
std::vector<named_value> telling_outputs(const call &made, uint64_t code, const std::vector<named_value> &before) {
    std::vector<named_value> outputs = read_outputs(made);
    std::vector<named_value> telling;
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (code == 0 || !(outputs[i] == before[i])) {
            telling.push_back(std::move(outputs[i]));
        }
    }
    return telling;
}

bool make(const rule &asked) {
    void *driver = find_driver(operations[asked.operation]);
    const call_areas areas(asked);
    const call made = make_call(asked.operation, areas.arguments());
    const std::vector<named_value> before = read_outputs(made);
    rule line;
    line.operation = asked.operation;
    const std::string head = print_call(asked.operation, shown_inputs(made));
    const uint64_t begun = begin_line(head);
    line.code = real_calls[asked.operation](driver, areas.arguments());
    line.outputs = telling_outputs(made, line.code, before);
    end_line(begun, head, print_answer(line));
    const std::vector<std::string> overrun = areas.overrun();
    for (const std::string &name : overrun) {
        write_line("# the driver wrote beyond the end of " + name);
    }
    return line.code == 0 && overrun.empty();
}

} // namespace

bool is_blank(const std::string &line) {
    cursor here{line};
    return at_end(here);
}

request parse_request(const std::string &place, const std::string &line) {
    request asked;
    cursor here{line};
    try {
        cursor ahead = here;
        if (take_word(ahead) == "wait" && !take(ahead, '(')) {
            asked.is_pause = true;
            asked.seconds = take_real(ahead, scalar::float64);
            if (!(asked.seconds >= 0) || !at_end(ahead)) {
                throw syntax_error(1, "a pause is written as wait 0.5, in seconds");
            }
            return asked;
        }
        asked.call = parse_call(line);
    } catch (const syntax_error &fault) {
        throw call_error(place + ":" + std::to_string(fault.column) + ": " + fault.what());
    }
    return asked;
}

// With the drivers of the board in the process, as they are in any program that waits for it: a simulated board's time
// goes on with them. Where there are none, a pause is one all the same.
void pause_for(double seconds) {
    if (seconds > 0) {
        dlopen("libdrv_basic.so", RTLD_LAZY | RTLD_GLOBAL);
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

bool carry_out(const request &asked) {
    if (asked.is_pause) {
        pause_for(asked.seconds);
        return true;
    }
    return make(asked.call);
}

std::string signature(const operation &op) {
    std::string inputs;
    std::string outputs;
    for (const parameter &one : op.parameters) {
        if (is_input(one.direction) && !one.hidden) {
            inputs += (inputs.empty() ? "" : ", ") + std::string(one.name);
        }
        if (is_output(one.direction)) {
            outputs += std::string(" ") + one.name;
        }
    }
    return std::string(op.name) + "(" + inputs + ") =" + (outputs.empty() ? " -" : outputs);
}

} // namespace kestro_probe
