// Calls about the transceivers of the delivered chassis, and numbers out of their answers.
#pragma once

#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace kestro_tests {

struct optical_port {
    int package;
    int port;
    std::string lanes;
};

// Of a main processing unit.
inline const optical_port copper_port{1, 1, "1"};
inline const optical_port empty_port{1, 2, "1"};
inline const optical_port lr_port{2, 11, "1"};
inline const optical_port warm_port{2, 12, "1"};
inline const optical_port failed_port{2, 13, "1"};
inline const optical_port hung_port{2, 14, "1"};
inline const optical_port sr4_port{5, 21, "0xf"};
inline const optical_port cut_port{5, 22, "0xf"};
inline const optical_port wide_port{7, 31, "0xff"};

// Of a line card.
inline const optical_port wide_port_of_lpu{7, 1, "0xff"};
inline const optical_port dark_port_of_lpu{5, 11, "0xf"};

inline const std::string not_ready = "0x8111010f\n";
inline const std::string out_of_its_range = "0x81110107\n";

inline std::string optical_call(const std::string &operation, const optical_port &at, const std::string &rest = "") {
    return "drv_opt_" + operation + "(port_para={package_type=" + std::to_string(at.package) +
           " port=" + std::to_string(at.port) + " lanebitmap=" + at.lanes + "}" + (rest.empty() ? "" : ", " + rest) +
           ")";
}

inline std::string optical_read(const optical_port &at, const std::string &device, int page, int address, int length) {
    return optical_call("register_read", at,
                        "device=" + device + ", page=" + std::to_string(page) + ", address=" + std::to_string(address) +
                            ", length=" + std::to_string(length));
}

inline std::string optical_write(const optical_port &at, const std::string &device, int page, int address,
                                 const std::string &bytes) {
    return optical_call("register_write", at,
                        "device=" + device + ", page=" + std::to_string(page) + ", address=" + std::to_string(address) +
                            ", data=[" + bytes + "]");
}

// Of "value=3 data=[1 2.5]" in an answer: the numbers behind the name, or those in the list.
inline std::vector<double> numbers_in(const std::string &answer, const std::string &name) {
    const size_t at = answer.find(name + "=");
    EXPECT_NE(at, std::string::npos) << name << " in " << answer;
    if (at == std::string::npos) {
        return {};
    }
    std::string rest = answer.substr(at + name.size() + 1);
    rest = rest.starts_with('[') ? rest.substr(1, rest.find(']') - 1) : rest.substr(0, rest.find_first_of(" }\n"));
    std::istringstream words(rest);
    std::vector<double> numbers;
    for (std::string word; words >> word;) {
        numbers.push_back(std::strtod(word.c_str(), nullptr));
    }
    return numbers;
}

inline std::vector<std::string> lines_of(const std::string &text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

class OpticalDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat_};
        for (const std::string &setting : by_hand) {
            options.insert(options.end(), {"--set", setting});
        }
        return answers_of(options, lines);
    }

    // The numbers of one answer.
    std::vector<double> asked(const std::string &line, const std::string &name) const {
        return numbers_in(answers({line}), name);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string seat_ = "mpu_master";
};

} // namespace kestro_tests
