#include "tests/selftest/board_run.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "tests/support/command.h"

namespace kestro_tests {

namespace {

constexpr const char *mark = "\r\n##### ";

// The banner ends with its line.
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
    for (size_t at = output.find(mark); at != std::string::npos; at = output.find(mark, at + 1)) {
        banners += output.substr(at, end_of_banner(output, at) - at);
    }
    return banners;
}

std::string section_of(const std::string &output, const std::string &name) {
    const size_t banner = output.find(mark + name + " test begin \r\n");
    if (banner == std::string::npos) {
        ADD_FAILURE() << "no section " << name << " in\n" << output;
        return "";
    }
    const size_t begin = end_of_banner(output, banner);
    // The next banner begins with a line end of its own, which the last line before it does not have.
    return output.substr(begin, std::min(output.find(mark, begin - 2), output.find(timing_lines, begin)) - begin);
}

std::string root_with_label(const std::string &label) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/opt/hostx/home");
    write_file(root + "/opt/hostx/home/elabel.txt", label);
    return root;
}

} // namespace kestro_tests
