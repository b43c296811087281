// Every sub-command with each allocation of the program failing in turn.
#include <gtest/gtest.h>

#include <map>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

class ModuleTable : public testing::TestWithParam<std::string> {};
class ModuleAllocations : public testing::TestWithParam<std::string> {};
class CommandAllocations : public testing::TestWithParam<sub_command> {};

// A sub-command that calls its driver all the same, without the area that it could not have: the script complains that
// it has nowhere to write its text to.
bool lacks_area(const process_result &result) {
    constexpr int misused_script = 99;
    return result.status == misused_script && result.err.find("the call gives no area for") != std::string::npos;
}

process_result run_failing(size_t allocation, const test_line &line) {
    process_result result =
        run_with({"--script", script_file(line.script), "--fail-alloc", std::to_string(allocation)}, line.words);
    if (!lacks_area(result)) {
        expect_clean_end(result, joined(line.words) + " failing allocation " + std::to_string(allocation));
    }
    return result;
}

// The table, and a copy of name and help for each row.
size_t allocations_of_table(size_t rows) {
    return 1 + 2 * rows;
}

// What a diagnose module prints between its lines and the end of the usage when it has no row.
const std::string usage_without_rows = "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
                                       "List the functionalities for kestro_test \n";

// The diagnose modules say that they have no table, or no row, and go on. By their tags.
const std::map<std::string, std::string> diagnose_modules{{"diagnose_cmd_test", "diagnose"}, {"diag_test", "diag"}};

std::vector<std::string> modules_that_need_their_table() {
    std::vector<std::string> modules = all_modules();
    std::erase_if(modules, [](const std::string &module) { return diagnose_modules.contains(module); });
    return modules;
}

// Behind the last allocation of a run, failing one changes nothing any more.
void sweep_handler(const good_run &reference, size_t first) {
    constexpr int unaffected_runs = 3;
    int unaffected = 0;
    for (size_t n = first; unaffected < unaffected_runs; ++n) {
        ASSERT_LT(n, first + 200) << "no end of allocations in " << joined(reference.line.words);
        const process_result result = run_failing(n, reference.line);
        const bool same = result.out == reference.output && result.status == reference.status;
        unaffected = same ? unaffected + 1 : 0;
    }
}

} // namespace

TEST(RootAllocationSweep, ATableThatCannotBeHadEndsTheRun) {
    const size_t modules = all_modules().size();
    EXPECT_EQ(run_failing(1, {{}, ""}).out, "malloc for root cmd failure\r\n");
    for (size_t n = 2; n <= allocations_of_table(modules); ++n) {
        const process_result result = run_failing(n, {{"-h"}, ""});
        EXPECT_EQ(result.out, "kestro_test: strdup failed\nroot cmd regist failure\r\n");
        EXPECT_EQ(result.status, 1);
    }
}

TEST(DiagnoseModuleAllocations, GoOnWithoutATableOrARow) {
    const size_t first = allocations_of_table(all_modules().size()) + 1;
    for (const auto &[module, tag] : diagnose_modules) {
        const std::string no_row = "[" + tag + " module] cmd register fail.\n" + usage_without_rows;
        const process_result without_table = run_failing(first, {{module}, ""});
        EXPECT_EQ(without_table.out,
                  "[" + tag + " module] malloc cmd-tbl buff fail.\nkestro_test: cmd full\n" + no_row);
        EXPECT_EQ(without_table.status, 0);
        for (const size_t copy : {first + 1, first + 2}) {
            const process_result without_row = run_failing(copy, {{module}, ""});
            EXPECT_EQ(without_row.out, "kestro_test: strdup failed\n" + no_row);
            EXPECT_EQ(without_row.status, 0);
        }
    }
}

TEST_P(ModuleTable, AModuleTableThatCannotBeHadFailsTheModule) {
    const size_t first = allocations_of_table(all_modules().size()) + 1;
    const process_result result = run_failing(first, {{GetParam()}, ""});
    EXPECT_EQ(result.out, operate_fail(GetParam()));
    EXPECT_EQ(result.status, 255);
}

TEST_P(ModuleAllocations, ARowThatCannotBeRegisteredLeavesTheOthers) {
    const size_t rows = rows_of(GetParam());
    const size_t first = allocations_of_table(all_modules().size()) + 2;
    for (size_t n = first; n < first + 2 * rows; n += static_cast<size_t>(stride())) {
        const process_result result = run_failing(n, {words_that_list(GetParam()), ""});
        EXPECT_EQ(result.out.substr(0, 27), "kestro_test: strdup failed\n") << n;
        EXPECT_NE(result.out.find("List the functionalities"), std::string::npos);
        EXPECT_EQ(result.status, 0);
    }
}

TEST_P(CommandAllocations, FailInTurn) {
    const size_t rows = rows_of(GetParam().module);
    const size_t first = allocations_of_table(all_modules().size()) + allocations_of_table(rows) + 1;
    sweep_handler(swept_runs(GetParam()).front(), first);
}

INSTANTIATE_TEST_SUITE_P(All, ModuleTable, testing::ValuesIn(modules_that_need_their_table()),
                         [](const auto &module) { return module.param; });
INSTANTIATE_TEST_SUITE_P(All, ModuleAllocations, testing::ValuesIn(all_modules()),
                         [](const auto &module) { return module.param; });
INSTANTIATE_TEST_SUITE_P(All, CommandAllocations, testing::ValuesIn(sub_commands_swept_here()), name_of_command);
