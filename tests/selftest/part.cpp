#include "tests/selftest/part.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "tests/support/simulator.h"
#include "tests/support/thoroughness.h"

namespace kestro_tests {

namespace {

std::string program() {
    return build_dir() + "/tests/selftest_part";
}

std::string node_of(const std::string &module, const std::string &node) {
    return "inst_id=0xffffffff, module=\"" + module + "\", node=\"" + node + "\"";
}

} // namespace

void expect_part_on(const std::string &root, const std::string &name, const std::string &script,
                    const std::string &lines, int result) {
    static const std::string state = new_scratch_dir();
    const std::string script_file = scratch_file("script", script);
    std::vector<std::vector<std::string>> ways = {{name}};
    if (is_tried_here(name + script)) {
        ways.push_back({name, "report"});
    }
    for (const std::vector<std::string> &words : ways) {
        const process_result run = run_sim({"--state", state, "--root", root, "--clock", "virtual", "--strict",
                                            "--script", script_file, "--run", program()},
                                           words);
        EXPECT_EQ(run.out, lines + "result " + std::to_string(result) + "\n") << words.back();
        EXPECT_EQ(run.err, "") << words.back();
        EXPECT_EQ(run.status, 0) << words.back();
    }
}

void expect_part(const std::string &name, const std::string &script, const std::string &lines, int result) {
    static const std::string empty_root = new_scratch_dir();
    expect_part_on(empty_root, name, script, lines, result);
}

process_result run_part(const std::vector<std::string> &options, const std::string &name) {
    std::vector<std::string> all = {"--run", program()};
    if (std::find(options.begin(), options.end(), "--clock") == options.end()) {
        all.insert(all.end(), {"--clock", "virtual"});
    }
    if (std::find(options.begin(), options.end(), "--state") == options.end()) {
        all.insert(all.end(), {"--state", new_scratch_dir()});
    }
    all.insert(all.end(), options.begin(), options.end());
    return run_sim(all, {name});
}

std::string entry_count(const std::string &module, const std::string &node, int entries) {
    return "xml_get_entry_num(" + node_of(module, node) + ") = 0 count=" + std::to_string(entries) + "\n";
}

std::string no_entry_count(const std::string &module, const std::string &node, const std::string &code) {
    return "xml_get_entry_num(" + node_of(module, node) + ") = " + code + "\n";
}

std::string element(const std::string &module, const std::string &node, int entry, const std::string &name,
                    const std::string &answer) {
    return "xml_get_element_value_u32(" + node_of(module, node) + ", entry=\"entry" + std::to_string(entry) +
           "\", element=\"" + name + "\") = " + answer + "\n";
}

} // namespace kestro_tests
