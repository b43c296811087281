// The launcher's command line.
#pragma once

#include "sim/core/hand.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kestro_sim {

// A mistake that its user can put right. The text is one line: file or option, what is wrong, what would be right.
struct launch_error : std::runtime_error {
    using std::runtime_error::runtime_error;
    launch_error(const std::string &subject, const std::string &wrong, const std::string &right)
        : std::runtime_error(subject + ": " + wrong + "; " + right) {
    }
};

struct launch_options {
    std::string run = "kestro_test"; // the program: a name beside the launcher, or a path
    std::string board = "mpu_master";
    std::string clock = "real";
    std::string state;  // empty: the chassis' own below the user's state directory
    std::string root;   // empty: the board's files in the state directory
    std::string script; // probe
    std::string trace;  // probe
    bool trace_output = false;
    std::string replay;    // probe
    std::string fail_call; // probe
    std::string signal_call;
    std::string fail_alloc; // world
    bool strict = false;    // probe
    bool reset = false;
    bool discard = false;
    bool accept_images = false;
    std::vector<std::string> without; // libraries that the board lacks
    std::vector<std::string> pull;    // places
    std::vector<std::string> plug;
    std::vector<hand_action> by_hand; // in the order of the command line
    std::vector<std::string> words;   // kestro_test's own

    // What the technician does to the chassis; without words for kestro_test it is all that is done.
    bool has_hand() const {
        return accept_images || !pull.empty() || !plug.empty() || !by_hand.empty();
    }
};

// Gives nothing when help was asked for and printed. Throws launch_error.
std::optional<launch_options> read_options(int count, char **arguments);

} // namespace kestro_sim
