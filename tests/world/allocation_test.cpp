// One chosen allocation of the program fails, and no other.
#include "tests/world/world_run.h"

#include <gtest/gtest.h>

using kestro_tests::process_result;

namespace {

const std::vector<std::string> kinds = {"malloc",   "calloc",    "realloc",       "strdup",         "strndup",
                                        "asprintf", "vasprintf", "aligned_alloc", "posix_memalign", "reallocarray"};

// What the program shows when the allocation of this number fails; 0: none.
std::string shown(size_t failing) {
    std::string text;
    for (size_t i = 0; i < kinds.size(); ++i) {
        text += kinds[i] + (i + 1 == failing ? ": Cannot allocate memory" : ": ok");
        text += kinds[i] == "posix_memalign" ? ", errno 0\n" : "\n";
    }
    return text + "fopen: ok\n";
}

TEST(FailingAllocation, EachFailsInTurnAndNoOther) {
    for (size_t failing = 1; failing <= kinds.size(); ++failing) {
        const process_result result =
            kestro_tests::run_in_world({"allocate"}, {"KESTRO_SIM_FAIL_ALLOC=" + std::to_string(failing)});
        EXPECT_EQ(result.out, shown(failing));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }
}

TEST(FailingAllocation, BeyondTheLastNothingFails) {
    EXPECT_EQ(kestro_tests::run_in_world({"allocate"}, {"KESTRO_SIM_FAIL_ALLOC=11"}).out, shown(0));
    EXPECT_EQ(kestro_tests::run_in_world({"allocate"}, {"KESTRO_SIM_FAIL_ALLOC"}).out, shown(0));
}

} // namespace
