// Makes driver calls by hand and prints the trace line of each.
#pragma once

#include "probe/script.h"

#include <stdexcept>

namespace kestro_probe {

// What is wrong with a line or with the libraries, and what would be right.
struct call_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A line of kestro_call: a call, or a pause.
struct request {
    bool is_pause = false;
    double seconds = 0;
    rule call;
};

// Throws call_error. place: where the line stands, for the message.
request parse_request(const std::string &place, const std::string &line);

// Whether the line holds anything but blanks and a comment.
bool is_blank(const std::string &line);

// Carries it out; false when a driver answered other than 0 or wrote beyond an area. Throws call_error.
bool carry_out(const request &asked);

void pause_for(double seconds);

// Its parameters and outputs, a line.
std::string signature(const operation &op);

} // namespace kestro_probe
