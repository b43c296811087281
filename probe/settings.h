// What the environment asks of the probe.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestro_probe {

constexpr uint32_t failure_code = 0xdead;

// Which calls fail, counted from 1; 0 is none.
struct fail_call {
    uint64_t first = 0;
    bool all_after = false;
    uint32_t code = failure_code;
};

// At which calls the program gets a signal before the call is answered, counted from 1; a number may come twice.
struct signal_calls {
    std::vector<uint64_t> calls;
    int number = 0;
};

struct settings {
    std::string script;
    std::string trace;
    std::string replay;
    bool strict = false;
    bool trace_output = false; // what the program prints is in the trace too
    fail_call failing;
    signal_calls signals;
    std::string fault; // what is wrong with the settings, empty when nothing is
};

// "3", "3=0x811101a4", "3+" or "3+=1"; false when the text is none of these.
bool parse_fail_call(const std::string &text, fail_call &failing);

// "3", "3,3" or "3,7=TERM", of INT (without any), TERM and HUP; false when the text is none of these.
bool parse_signal_calls(const std::string &text, signal_calls &signals);

settings read_settings();

// Programs that the program starts run without the probe.
void clean_environment();

bool asks_for_anything(const settings &asked);

} // namespace kestro_probe
