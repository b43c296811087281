// Runs of optical_test: what each of them begins and ends with, and the forms in which a port can be named.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

namespace kestro_tests::optical {

// Bringing the driver up for an instance: a card of four ports, 1 to 4, all of one type.
inline std::string begin_calls(const std::string &inst) {
    return "drv_opt_init(inst_id=" + inst +
           ") = 0\n"
           "drv_opt_get_card_port_map(slot=" +
           inst +
           ", frame=0, size=192) = 0 map=[{package_type=1 number=4 start_id=1} {package_type=15}]\n"
           "drv_cbb_optical_get_port_type_str_from_value(value=1, size=16) = 0 text=\"QSFP\"\n"
           "drv_cbb_optical_delay_nointerupt(count=5000000) = 0\n";
}

inline std::string end_call(const std::string &inst) {
    return "drv_opt_exit(inst_id=" + inst + ") = 0\n";
}

inline const std::string up_line = "##########################opitcal init success##########################\n";

// What is printed of that card.
inline const std::string begin_lines =
    "package_type:QSFP      , package_type_value:1, number:  4, start_id:  1\n" + up_line;

// How the words name a port: the calls that are made for it, what every operation is told then ("@" in the scripts
// below), and the line about it.
struct named_port {
    std::string words;
    std::string inst;
    std::string calls;
    std::string told;
    std::string line;
};

inline const named_port port_3 = {
    "9 3 0 1",
    "9",
    "",
    "inst_id=9, port_para={package_type=1 port=3 lanebitmap=1}",
    "inst_id = 0x9, port_para: package_type = 1, package 0, port = 3, lanebitmap = 0x1\n",
};

// Without words it is port 0 of instance 0; this card's map has it in the row of the end marker.
inline const named_port no_port = {
    "",
    "0",
    "drv_opt_get_lane_num(inst_id=0, port_para={package_type=15 port=0 lanebitmap=0}) = 0 lane_num=4\n",
    "inst_id=0, port_para={package_type=15 port=0 lanebitmap=0xf}",
    "inst_id = 0x0, port_para: package_type = 15, package 0, port = 0, lanebitmap = 0xf\n",
};

inline named_port with_words(named_port port, const std::string &words) {
    port.words = words;
    return port;
}

// A sub-command, the words behind those of the port, its own calls with "@", and what it prints behind the port's line.
struct row {
    std::string name;
    std::string words;
    std::string calls;
    std::string body;
};

inline std::string line_of(const row &one, const named_port &port) {
    return "optical_test " + one.name + " " + port.words + " " + one.words;
}

inline std::string script_of(const row &one, const named_port &port) {
    std::string calls = one.calls;
    for (size_t at = calls.find('@'); at != std::string::npos; at = calls.find('@', at)) {
        calls.replace(at, 1, port.told);
    }
    return begin_calls(port.inst) + port.calls + calls + end_call(port.inst);
}

inline void expect_row(const row &one, const named_port &port = port_3) {
    expect_success(line_of(one, port), script_of(one, port), begin_lines + port.line + one.body);
}

inline void expect_failed_row(const row &one, const named_port &port = port_3) {
    expect_failure(line_of(one, port), script_of(one, port), begin_lines + port.line + one.body);
}

// A sub-command that takes a port alone: with too many words, with none, and with words that are no numbers.
inline void expect_all_forms(const row &one) {
    expect_row(one);
    expect_row(one, with_words(port_3, "9 3 0 1 7 8 9 10 11"));
    expect_row(one, no_port);
    expect_row(one, with_words(no_port, "board port package lanes"));
}

// The calls of a run with their inputs, in the order in which they are made; "@" stands for port 3.
inline std::vector<std::string> calls_made(const row &one) {
    const std::string trace = scratch_file("trace", "");
    run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--script",
             scratch_file("script", script_of(one, port_3)), "--trace", trace},
            split_words(line_of(one, port_3)));
    const std::string told = "inst_id=0x9, port_para={package_type=1 port=3 lanebitmap=1}";
    std::vector<std::string> calls;
    std::istringstream lines(read_file(trace));
    for (std::string line; std::getline(lines, line);) {
        line.resize(line.find(" = "));
        const size_t at = line.find(told);
        calls.push_back(at == std::string::npos ? line : line.replace(at, told.size(), "@"));
    }
    return calls;
}

// Expects these calls, in this order, between those with which every run begins and ends.
inline void expect_calls(const row &one, const std::vector<std::string> &calls) {
    if (lists_lines()) {
        return;
    }
    SCOPED_TRACE(line_of(one, port_3));
    std::vector<std::string> run = {
        "drv_opt_init(inst_id=0x9)",
        "drv_opt_get_card_port_map(slot=9, frame=0, size=192)",
        "drv_cbb_optical_get_port_type_str_from_value(value=1, size=16)",
        "drv_cbb_optical_delay_nointerupt(count=0x4c4b40)",
    };
    run.insert(run.end(), calls.begin(), calls.end());
    run.emplace_back("drv_opt_exit(inst_id=0x9)");
    EXPECT_EQ(calls_made(one), run);
}

} // namespace kestro_tests::optical
