#include "tests/selftest/board_run.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "tests/support/command.h"

namespace kestro_tests {

namespace {

// A banner is a line of its own with a line end in front; that of one power supply has no blank at its end.
size_t next_banner(const std::string &output, size_t from) {
    constexpr const char *mark = "\r\n##### ";
    size_t at = output.find(mark, from);
    while (at != std::string::npos && output.find(" begin \r\n", at) != output.find("\r\n", at + 2) - 7) {
        at = output.find(mark, at + 1);
    }
    return at;
}

size_t end_of_banner(const std::string &output, size_t begin) {
    return output.find("\r\n", begin + 2) + 2;
}

} // namespace

process_result run_board(std::vector<std::string> options) {
    options.insert(options.end(), {"--clock", "virtual"});
    return run_sim(options, {"board_test", "board_onekey_test"});
}

std::string banners_of(const std::string &output) {
    std::string banners;
    for (size_t at = next_banner(output, 0); at != std::string::npos; at = next_banner(output, at + 1)) {
        banners += output.substr(at, end_of_banner(output, at) - at);
    }
    return banners;
}

std::string section_of(const std::string &output, const std::string &name) {
    const size_t banner = output.find("\r\n##### " + name + " test begin \r\n");
    if (banner == std::string::npos) {
        ADD_FAILURE() << "no section " << name << " in\n" << output;
        return "";
    }
    const size_t begin = end_of_banner(output, banner);
    // The next banner begins with a line end of its own, which the last line before it does not have.
    return output.substr(begin, std::min(next_banner(output, begin - 2), output.find(timing_lines, begin)) - begin);
}

std::string root_with_label(const std::string &label) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/opt/hostx/home");
    write_file(root + "/opt/hostx/home/elabel.txt", label);
    return root;
}

} // namespace kestro_tests
