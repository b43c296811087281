// Runs of one sub-command with banners and a result print, as a list: for modules whose rows are alike.
#pragma once

#include <string>
#include <vector>

#include "tests/support/command.h"

namespace kestro_tests {

// The words behind the sub-command, the call that they make with its answer ("inst_id=9) = 0 num=4"), the line about
// it, and the items of the result print.
struct run {
    std::string words;
    std::string call;
    std::string line;
    std::string items;
};

// A sub-command that is called as its operation: "drv_msc_init", in the banners "test_msc_init".
struct told_operation {
    std::string module;
    banners width;
    std::string name;

    std::string line(const run &one) const {
        return module + " drv_" + name + " " + one.words;
    }
    std::string script(const run &one) const {
        return "drv_" + name + "(" + one.call;
    }
    std::string body(const run &one) const {
        return framed(width, "test_" + name, one.line, one.items);
    }
};

inline void expect_runs(const told_operation &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_success(operation.line(one), operation.script(one), operation.body(one));
    }
}

inline void expect_failures(const told_operation &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_failure(operation.line(one), operation.script(one), operation.body(one));
    }
}

} // namespace kestro_tests
