// cdr_test: every sub-command on the real program, with the driver scripted. Each run brings the chips up before its
// sub-command and takes the named one down behind it.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/library_faults.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

const std::string bus_up = "drv_mdio_init(inst_id=0xffffffff) = 0\n";
const std::string bus_down = "drv_mdio_exit(inst_id=0xffffffff) = 0\n";
const std::string cdr_begin = "\n*********   cdr_test test begin:  ********\n";
const std::string cdr_end = "\n*********   cdr_test test   end:  ********\n";
const std::string cdr_module_fail = "kestro_test operate cdr_test fail! \n";
const std::string too_few = "cdr test too few args!\n";

// A run on a chip of an instance: the calls and lines before and behind its sub-command.
struct cdr_run {
    std::string inst = "0xff000009";
    std::string chip = "1";

    std::string calls_before() const {
        return bus_up + "drv_cdr_soft_init(inst_id=" + inst + ") = 0\ndrv_cdr_init_chip(inst_id=" + inst + ") = 0\n";
    }
    std::string calls_behind() const {
        return "drv_cdr_destroy_chip(inst_id=" + inst + ", chip_id=" + chip + ") = 0\n" + bus_down;
    }
    std::string lines_before() const {
        return "test_cdr_soft_init success, inst_id=" + inst + ".\r\ndrv_cdr_init_chip success, inst_id=" + inst +
               ".\r\n" + cdr_begin;
    }
    std::string lines_behind() const {
        return cdr_end + "[TEST RESULT: SUCCESS]\r\ndrv_cdr_destroy_chip success, inst_id=" + inst +
               ", chip_id=" + chip + ".\r\n";
    }
    // What stands behind the lines of a sub-command that failed.
    static std::string failure_of(const std::string &name) {
        return timing_lines + operate_fail(name) + "[TEST RESULT: FAIL]\r\n" + cdr_end + cdr_module_fail;
    }

    void succeeds(const std::string &words, const std::string &calls, const std::string &lines) const {
        expect_run("cdr_test " + words, calls_before() + calls + "\n" + calls_behind(),
                   lines_before() + lines + timing_lines + lines_behind(), 0);
    }
    void fails(const std::string &words, const std::string &calls, const std::string &lines) const {
        expect_run("cdr_test " + words, calls_before() + calls,
                   lines_before() + lines + failure_of(split_words(words).at(0)), 255);
    }
};

const cdr_run on_chip_1;
const cdr_run on_no_number{"0x0", "0"};

const std::string init_3 =
    "drv_cdr_init_interface(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}) = 0\n";
const std::string init_3_failed =
    "drv_cdr_init_interface(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}) = 0x811101a4\n";
const std::string init_3_line =
    "drv_cdr_init_interface success,inst_id=0xff000009, chip_id=1, inf_id=3, chl_rate=25.\r\n";
const std::string init_3_failed_line =
    "drv_cdr_init_interface fail,inst_id=0xff000009, chip_id=1, inf_id=3, chl_rate=25,ret=0x811101a4.\r\n";
const std::string init_0 = "drv_cdr_init_interface(inst_id=0, chip_id=0, selector={inf_id=0 chl_rate=0}) = 0\n";
const std::string init_0_line = "drv_cdr_init_interface success,inst_id=0x0, chip_id=0, inf_id=0, chl_rate=0.\r\n";

} // namespace

TEST(CdrTest, UsageListsTheSubCommandsInOrder) {
    const std::string listed = "\nUsage: kestro_test [OPTION]\t\n"
                               "List the functionalities for kestro_test \n"
                               " drv_cdr_init_chip inst_id\n"
                               " drv_cdr_destroy_chip inst_id chip_id\n"
                               " drv_cdr_init_interface inst_id chip_id inf_id chl_rate\n"
                               " drv_cdr_destroy_interface inst_id chip_id inf_id chl_rate\n"
                               " drv_cdr_reg_read inst_id chip_id sub_chip_id reg_addr\n"
                               " drv_cdr_reg_write inst_id chip_id sub_chip_id reg_addr reg_value\n"
                               " drv_cdr_get_interface_config inst_id chip_id inf_id chl_rate\n"
                               " drv_cdr_get_interface_status inst_id chip_id inf_id chl_rate\n"
                               " drv_cdr_get_interface_link inst_id chip_id inf_id chl_rate dir\n"
                               " drv_cdr_get_digit_eye inst_id chip_id inf_id\n";
    // The chips have been brought up by then, and are taken down again: an unknown word is no failure.
    const std::string script = on_chip_1.calls_before() + on_chip_1.calls_behind();
    expect_run("cdr_test drv_cdr_none 0xff000009 1", script,
               on_chip_1.lines_before() +
                   "kestro_test: option drv_cdr_none not recognised.\n\ndrv_cdr_none 0xff000009 1 " + listed +
                   on_chip_1.lines_behind(),
               0);
    expect_run("cdr_test -h 0xff000009 1", script,
               on_chip_1.lines_before() + "\n-h 0xff000009 1 " + listed + on_chip_1.lines_behind(), 0);
}

TEST(CdrTest, RunEndsWithoutTheWordsThatItNeeds) {
    expect_run("cdr_test", "", too_few + cdr_module_fail, 255);
    expect_run("cdr_test drv_cdr_init_chip", "", too_few + cdr_module_fail, 255);
    expect_run("cdr_test -h", "", too_few + cdr_module_fail, 255);
    for (const std::string name :
         {"init_chip", "destroy_chip", "init_interface", "destroy_interface", "reg_read", "reg_write",
          "get_interface_config", "get_interface_status", "get_interface_link", "get_digit_eye", "none"}) {
        expect_run("cdr_test drv_cdr_" + name + " 0xff000009", bus_up + "drv_cdr_soft_init(inst_id=0xff000009) = 0",
                   "test_cdr_soft_init success, inst_id=0xff000009.\r\n" + too_few + cdr_module_fail, 255);
    }
}

TEST(CdrTest, RunEndsWithASoftInitThatFails) {
    expect_run("cdr_test drv_cdr_reg_read 0xff000009 1 0 2",
               bus_up + "drv_cdr_soft_init(inst_id=0xff000009) = 0x811101a4",
               "test_cdr_soft_init fail, inst_id=0xff000009, ret=0x811101a4.\r\n" + cdr_module_fail, 255);
    expect_run("cdr_test drv_cdr_reg_read board", bus_up + "drv_cdr_soft_init(inst_id=0) = 7",
               "test_cdr_soft_init fail, inst_id=0x0, ret=0x7.\r\n" + cdr_module_fail, 255);
}

TEST(CdrTest, RunEndsWithAChipInitThatFails) {
    expect_run("cdr_test drv_cdr_reg_read 0xff000009 1 0 2",
               bus_up + "drv_cdr_soft_init(inst_id=0xff000009) = 0\ndrv_cdr_init_chip(inst_id=0xff000009) = 0x811101a4",
               "test_cdr_soft_init success, inst_id=0xff000009.\r\n"
               "drv_cdr_init_chip fail, inst_id=0xff000009, ret=0x811101a4.\r\n" +
                   cdr_module_fail,
               255);
}

// What the bus answers is not looked at.
TEST(CdrTest, RunGoesOnWithoutTheBus) {
    expect_run("cdr_test drv_cdr_init_chip 0xff000009 1",
               "drv_mdio_init(inst_id=0xffffffff) = 0x811101a4\n"
               "drv_cdr_soft_init(inst_id=0xff000009) = 0\n"
               "drv_cdr_init_chip(inst_id=0xff000009) = 0 x2\n"
               "drv_cdr_destroy_chip(inst_id=0xff000009, chip_id=1) = 0\n"
               "drv_mdio_exit(inst_id=0xffffffff) = 0x811101a4",
               on_chip_1.lines_before() + "drv_cdr_init_chip success, inst_id=0xff000009.\r\n" + timing_lines +
                   on_chip_1.lines_behind(),
               0);
}

TEST(CdrTest, RunFailsWhenTheChipCannotBeTakenDown) {
    expect_run("cdr_test drv_cdr_reg_read 0xff000009 1 0 2",
               on_chip_1.calls_before() +
                   "drv_cdr_reg_read(inst_id=0xff000009, chip_id=1, sub_chip_id=0, reg_addr=2) = 0 value=5\n"
                   "drv_cdr_destroy_chip(inst_id=0xff000009, chip_id=1) = 0x12\n" +
                   bus_down,
               on_chip_1.lines_before() +
                   "drv_cdr_reg_read success, inst_id=0xff000009, chip_id=1, sub_chip_id=0,reg_addr=0x2, "
                   "read_value=0x5.\r\n" +
                   timing_lines + cdr_end +
                   "[TEST RESULT: SUCCESS]\r\n"
                   "drv_cdr_destroy_chip fail, inst_id=0xff000009, chip_id=1, ret=0x12.\r\n" +
                   cdr_module_fail,
               255);
}

TEST(CdrTest, InitChip) {
    const std::string again = "drv_cdr_init_chip success, inst_id=0xff000009.\r\n";
    const auto script = [](const std::string &inst, const std::string &chip) {
        return bus_up + "drv_cdr_soft_init(inst_id=" + inst + ") = 0\ndrv_cdr_init_chip(inst_id=" + inst +
               ") = 0 x2\ndrv_cdr_destroy_chip(inst_id=" + inst + ", chip_id=" + chip + ") = 0\n" + bus_down;
    };
    expect_run("cdr_test drv_cdr_init_chip 0xff000009 1", script("0xff000009", "1"),
               on_chip_1.lines_before() + again + timing_lines + on_chip_1.lines_behind(), 0);
    expect_run("cdr_test drv_cdr_init_chip 0xff000009 1 5 6", script("0xff000009", "1"),
               on_chip_1.lines_before() + again + timing_lines + on_chip_1.lines_behind(), 0);
    expect_run("cdr_test drv_cdr_init_chip board chip", script("0", "0"),
               on_no_number.lines_before() + "drv_cdr_init_chip success, inst_id=0x0.\r\n" + timing_lines +
                   on_no_number.lines_behind(),
               0);
    expect_run("cdr_test drv_cdr_init_chip 0xff000009 1",
               bus_up + "drv_cdr_soft_init(inst_id=0xff000009) = 0\n"
                        "drv_cdr_init_chip(inst_id=0xff000009) = 0 x1\n"
                        "drv_cdr_init_chip(inst_id=0xff000009) = 0x811101a4 x1",
               on_chip_1.lines_before() + "drv_cdr_init_chip fail, inst_id=0xff000009, ret=0x811101a4.\r\n" +
                   cdr_run::failure_of("drv_cdr_init_chip"),
               255);
}

// The chip goes down twice, and the bus is left twice.
TEST(CdrTest, DestroyChip) {
    const auto script = [](const std::string &inst, const std::string &chip) {
        return bus_up + "drv_cdr_soft_init(inst_id=" + inst + ") = 0\ndrv_cdr_init_chip(inst_id=" + inst +
               ") = 0\ndrv_cdr_destroy_chip(inst_id=" + inst + ", chip_id=" + chip +
               ") = 0 x2\ndrv_mdio_exit(inst_id=0xffffffff) = 0 x2";
    };
    const std::string again = "drv_cdr_destroy_chip success, inst_id=0xff000009, chip_id=1.\r\n";
    expect_run("cdr_test drv_cdr_destroy_chip 0xff000009 1", script("0xff000009", "1"),
               on_chip_1.lines_before() + again + timing_lines + on_chip_1.lines_behind(), 0);
    expect_run("cdr_test drv_cdr_destroy_chip 0xff000009 1 2", script("0xff000009", "1"),
               on_chip_1.lines_before() + again + timing_lines + on_chip_1.lines_behind(), 0);
    expect_run("cdr_test drv_cdr_destroy_chip board chip", script("0", "0"),
               on_no_number.lines_before() + "drv_cdr_destroy_chip success, inst_id=0x0, chip_id=0.\r\n" +
                   timing_lines + on_no_number.lines_behind(),
               0);
    on_chip_1.fails("drv_cdr_destroy_chip 0xff000009 1",
                    "drv_cdr_destroy_chip(inst_id=0xff000009, chip_id=1) = 0x811101a4\n" + bus_down,
                    "drv_cdr_destroy_chip fail, inst_id=0xff000009, chip_id=1, ret=0x811101a4.\r\n");
}

TEST(CdrTest, InitInterface) {
    on_chip_1.succeeds("drv_cdr_init_interface 0xff000009 1 3 25", init_3, init_3_line);
    on_chip_1.succeeds("drv_cdr_init_interface 0xff000009 1 3 25 9", init_3, init_3_line);
    on_no_number.succeeds("drv_cdr_init_interface board chip port fast", init_0, init_0_line);
    on_chip_1.fails("drv_cdr_init_interface 0xff000009 1 3 25", init_3_failed, init_3_failed_line);
    on_chip_1.fails("drv_cdr_init_interface 0xff000009 1 3", "", too_few);
}

// Chips, interfaces and rates are shown with a sign.
TEST(CdrTest, NumbersAreShownWithASign) {
    const cdr_run on_last_chip{"0xffffffff", "-1"};
    on_last_chip.succeeds("drv_cdr_init_interface 0xffffffff 0xffffffff 0xfffffffe 4294967293",
                          "drv_cdr_init_interface(inst_id=0xffffffff, chip_id=0xffffffff, "
                          "selector={inf_id=0xfffffffe chl_rate=0xfffffffd}) = 0",
                          "drv_cdr_init_interface success,inst_id=0xffffffff, chip_id=-1, inf_id=-2, "
                          "chl_rate=-3.\r\n");
}

TEST(CdrTest, DestroyInterface) {
    const std::string call =
        "drv_cdr_destroy_interface(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}) = ";
    const std::string line =
        "drv_cdr_destroy_interface success,inst_id=0xff000009, chip_id=1, inf_id=3, chl_rate=25.\r\n";
    on_chip_1.succeeds("drv_cdr_destroy_interface 0xff000009 1 3 25", call + "0", line);
    on_chip_1.succeeds("drv_cdr_destroy_interface 0xff000009 1 3 25 9", call + "0", line);
    on_no_number.succeeds("drv_cdr_destroy_interface board chip port fast",
                          "drv_cdr_destroy_interface(inst_id=0, chip_id=0, selector={inf_id=0 chl_rate=0}) = 0",
                          "drv_cdr_destroy_interface success,inst_id=0x0, chip_id=0, inf_id=0, chl_rate=0.\r\n");
    on_chip_1.fails(
        "drv_cdr_destroy_interface 0xff000009 1 3 25", call + "0x811101a4",
        "drv_cdr_destroy_interface fail,inst_id=0xff000009, chip_id=1, inf_id=3, chl_rate=25, ret=0x811101a4.\r\n");
    on_chip_1.fails("drv_cdr_destroy_interface 0xff000009 1 3", "", too_few);
}

TEST(CdrTest, RegRead) {
    const std::string call = "drv_cdr_reg_read(inst_id=0xff000009, chip_id=1, sub_chip_id=2, reg_addr=0x20) = ";
    const std::string line =
        "drv_cdr_reg_read success, inst_id=0xff000009, chip_id=1, sub_chip_id=2,reg_addr=0x20, read_value=0xbeef.\r\n";
    on_chip_1.succeeds("drv_cdr_reg_read 0xff000009 1 2 0x20", call + "0 value=0xbeef", line);
    on_chip_1.succeeds("drv_cdr_reg_read 0xff000009 1 2 040 7", call + "0 value=0xbeef", line);
    on_no_number.succeeds("drv_cdr_reg_read board chip part reg",
                          "drv_cdr_reg_read(inst_id=0, chip_id=0, sub_chip_id=0, reg_addr=0) = 0",
                          "drv_cdr_reg_read success, inst_id=0x0, chip_id=0, sub_chip_id=0,reg_addr=0x0, "
                          "read_value=0x0.\r\n");
    on_chip_1.fails("drv_cdr_reg_read 0xff000009 1 2 0x20", call + "0x811101a4",
                    "drv_cdr_reg_read fail, inst_id=0xff000009, chip_id=1, sub_chip_id=2,reg_addr=0x20, "
                    "read_value=0x0, ret=0x811101a4.\r\n");
    on_chip_1.fails("drv_cdr_reg_read 0xff000009 1 2 0x20", call + "0x12 value=7",
                    "drv_cdr_reg_read fail, inst_id=0xff000009, chip_id=1, sub_chip_id=2,reg_addr=0x20, "
                    "read_value=0x7, ret=0x12.\r\n");
    on_chip_1.fails("drv_cdr_reg_read 0xff000009 1 2", "", too_few);
}

TEST(CdrTest, RegWrite) {
    const std::string write =
        "drv_cdr_reg_write(inst_id=0xff000009, chip_id=1, sub_chip_id=2, reg_addr=0x20, value=0xbeef) = ";
    const std::string read = "drv_cdr_reg_read(inst_id=0xff000009, chip_id=1, sub_chip_id=2, reg_addr=0x20) = ";
    const std::string of = "inst_id=0xff000009, chip_id=1, sub_chip_id=2,reg_addr=0x20, ";
    const std::string written = "drv_cdr_reg_write success, " + of + "write_value=0xbeef.\r\n";
    const std::string not_written = "drv_cdr_reg_write fail, " + of + "write_value=0xbeef, ret=0x811101a4.\r\n";
    const std::string words = "drv_cdr_reg_write 0xff000009 1 2 0x20 0xbeef";

    // What is read back is whatever stands there.
    on_chip_1.succeeds(words, write + "0\n" + read + "0 value=0xbe0f",
                       written + "drv_cdr_reg_read success, " + of + "read_value=0xbe0f.\r\n");
    on_chip_1.succeeds(words + " 5", write + "0\n" + read + "0",
                       written + "drv_cdr_reg_read success, " + of + "read_value=0x0.\r\n");
    on_no_number.succeeds("drv_cdr_reg_write board chip part reg value",
                          "drv_cdr_reg_write(inst_id=0, chip_id=0, sub_chip_id=0, reg_addr=0, value=0) = 0\n"
                          "drv_cdr_reg_read(inst_id=0, chip_id=0, sub_chip_id=0, reg_addr=0) = 0 value=1",
                          "drv_cdr_reg_write success, inst_id=0x0, chip_id=0, sub_chip_id=0,reg_addr=0x0, "
                          "write_value=0x0.\r\n"
                          "drv_cdr_reg_read success, inst_id=0x0, chip_id=0, sub_chip_id=0,reg_addr=0x0, "
                          "read_value=0x1.\r\n");
    on_chip_1.fails(words, write + "0x811101a4\n" + read + "0 value=3",
                    not_written + "drv_cdr_reg_read success, " + of + "read_value=0x3.\r\n");
    on_chip_1.fails(words, write + "0\n" + read + "0x811101a4",
                    written + "drv_cdr_reg_read fail, " + of + "read_value=0x0, ret=0x811101a4.\r\n");
    on_chip_1.fails(words, write + "0x811101a4\n" + read + "0x12",
                    not_written + "drv_cdr_reg_read fail, " + of + "read_value=0x0, ret=0x12.\r\n");
    on_chip_1.fails("drv_cdr_reg_write 0xff000009 1 2 0x20", "", too_few);
}

namespace {

// The three queries that answer with a text: the name of each, and what of the interface its lines show.
struct text_query {
    std::string name;
    std::string rate;       // of a success
    std::string rate_0;     // for words that are no numbers
    std::string failed_sep; // in front of the code of a failure
};

const text_query text_queries[]{
    {"drv_cdr_get_interface_config", ", chl_rate=25", ", chl_rate=0", ","},
    {"drv_cdr_get_interface_status", ", chl_rate=25", ", chl_rate=0", ","},
    {"drv_cdr_get_digit_eye", "", "", ", "},
};

std::string text_call(const text_query &query) {
    return query.name + "(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}, size=10240) = ";
}

std::string told(const text_query &query, const std::string &text) {
    return query.name + " success, inst_id=0xff000009, chip_id=1, inf_id=3" + query.rate + ".\r\n" + text + "\r\n";
}

std::string not_told(const text_query &query, const std::string &code, const std::string &text) {
    return query.name + " fail, inst_id=0xff000009, chip_id=1, inf_id=3" + query.rate + query.failed_sep +
           "ret=" + code + ".\r\n" + text + "\r\n";
}

} // namespace

TEST(CdrTest, TextQueries) {
    for (const text_query &query : text_queries) {
        const std::string words = query.name + " 0xff000009 1 3 25";
        const std::string text = "two\\nlines";
        on_chip_1.succeeds(words, init_3 + text_call(query) + "0 text=\"" + text + "\"",
                           init_3_line + told(query, "two\nlines"));
        on_chip_1.succeeds(words + " 8", init_3 + text_call(query) + "0", init_3_line + told(query, ""));
        on_no_number.succeeds(
            query.name + " board chip port fast",
            init_0 + query.name + "(inst_id=0, chip_id=0, selector={inf_id=0 chl_rate=0}, size=10240) = 0 text=\"x\"",
            init_0_line + query.name + " success, inst_id=0x0, chip_id=0, inf_id=0" + query.rate_0 + ".\r\nx\r\n");
        on_chip_1.fails(query.name + " 0xff000009 1 3", "", too_few);
    }
}

TEST(CdrTest, TextQueriesThatFail) {
    for (const text_query &query : text_queries) {
        const std::string words = query.name + " 0xff000009 1 3 25";
        on_chip_1.fails(words, init_3 + text_call(query) + "0x811101a4",
                        init_3_line + not_told(query, "0x811101a4", ""));
        on_chip_1.fails(words, init_3 + text_call(query) + "0x12 text=\"half\"",
                        init_3_line + not_told(query, "0x12", "half"));
        // An interface that did not come up is asked all the same, and the query is what counts.
        on_chip_1.succeeds(words, init_3_failed + text_call(query) + "0 text=\"dark\"",
                           init_3_failed_line + told(query, "dark"));
        on_chip_1.fails(words, init_3_failed + text_call(query) + "0x12",
                        init_3_failed_line + not_told(query, "0x12", ""));
    }
}

// The lines of one query each as they stand, beside those above that are put together.
TEST(CdrTest, TextQueriesLineByLine) {
    on_chip_1.fails("drv_cdr_get_interface_config 0xff000009 1 3 25", init_3 + text_call(text_queries[0]) + "5",
                    init_3_line + "drv_cdr_get_interface_config fail, inst_id=0xff000009, chip_id=1, inf_id=3, "
                                  "chl_rate=25,ret=0x5.\r\n\r\n");
    on_chip_1.fails("drv_cdr_get_interface_status 0xff000009 1 3 25", init_3 + text_call(text_queries[1]) + "5",
                    init_3_line + "drv_cdr_get_interface_status fail, inst_id=0xff000009, chip_id=1, inf_id=3, "
                                  "chl_rate=25,ret=0x5.\r\n\r\n");
    on_chip_1.fails("drv_cdr_get_digit_eye 0xff000009 1 3 25", init_3 + text_call(text_queries[2]) + "5",
                    init_3_line + "drv_cdr_get_digit_eye fail, inst_id=0xff000009, chip_id=1, inf_id=3, "
                                  "ret=0x5.\r\n\r\n");
    on_chip_1.succeeds("drv_cdr_get_interface_config 0xff000009 1 3 25",
                       init_3 + text_call(text_queries[0]) + "0 text=\"a\"",
                       init_3_line + "drv_cdr_get_interface_config success, inst_id=0xff000009, chip_id=1, inf_id=3, "
                                     "chl_rate=25.\r\na\r\n");
    on_chip_1.succeeds("drv_cdr_get_interface_status 0xff000009 1 3 25",
                       init_3 + text_call(text_queries[1]) + "0 text=\"b\"",
                       init_3_line + "drv_cdr_get_interface_status success, inst_id=0xff000009, chip_id=1, inf_id=3, "
                                     "chl_rate=25.\r\nb\r\n");
    on_chip_1.succeeds("drv_cdr_get_digit_eye 0xff000009 1 3 25", init_3 + text_call(text_queries[2]) + "0 text=\"c\"",
                       init_3_line +
                           "drv_cdr_get_digit_eye success, inst_id=0xff000009, chip_id=1, inf_id=3.\r\nc\r\n");
}

TEST(CdrTest, TextsThatFillTheirArea) {
    const std::string full(10240, 'F');
    for (const text_query &query : text_queries) {
        on_chip_1.succeeds(query.name + " 0xff000009 1 3 25", init_3 + text_call(query) + "0 text=\"" + full + "\"",
                           init_3_line + told(query, full));
    }
}

TEST(CdrTest, TextQueriesWithoutTheirArea) {
    const std::string script = on_chip_1.calls_before() + init_3;
    const auto expect_starved = [&](const text_query &query, const std::string &line) {
        expect_without_text_area("cdr_test " + query.name + " 0xff000009 1 3 25",
                                 script + text_call(query) + "0\n" + on_chip_1.calls_behind(),
                                 on_chip_1.lines_before() + line + cdr_run::failure_of(query.name), 255);
    };
    expect_starved(text_queries[0], "test_cdr_get_interface_config malloc fail.\r\n");
    expect_starved(text_queries[1], "test_cdr_get_interface_status malloc fail.\r\n");
    expect_starved(text_queries[2], "test_cdr_get_interface_digit_eye malloc fail.\r\n");
}

TEST(CdrTest, Link) {
    const std::string call =
        "drv_cdr_get_interface_link(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}, dir=1) = ";
    const std::string up = "drv_cdr_get_interface_link success, inst_id=0xff000009, chip_id=1, inf_id=3, "
                           "chl_rate=25,dir=1, link_status=up.\r\n";
    const std::string words = "drv_cdr_get_interface_link 0xff000009 1 3 25 1";
    on_chip_1.succeeds(words, init_3 + call + "0 status=1", init_3_line + up);
    // The driver's code says whether the link is up, the status word does not.
    on_chip_1.succeeds(words + " 4", init_3 + call + "0 status=0", init_3_line + up);
    on_chip_1.succeeds(words, init_3_failed + call + "0", init_3_failed_line + up);
    on_no_number.succeeds("drv_cdr_get_interface_link board chip port fast way",
                          init_0 + "drv_cdr_get_interface_link(inst_id=0, chip_id=0, selector={inf_id=0 chl_rate=0}, "
                                   "dir=0) = 0",
                          init_0_line + "drv_cdr_get_interface_link success, inst_id=0x0, chip_id=0, inf_id=0, "
                                        "chl_rate=0,dir=0, link_status=up.\r\n");
    on_chip_1.fails("drv_cdr_get_interface_link 0xff000009 1 3 25", "", too_few);
}

TEST(CdrTest, ALinkThatIsDownIsASuccess) {
    const std::string down = "drv_cdr_get_interface_link success, inst_id=0xff000009, chip_id=1, inf_id=3, "
                             "chl_rate=25,dir=0, link_status=down,ret=0x811101a4.\r\n";
    const std::string call =
        "drv_cdr_get_interface_link(inst_id=0xff000009, chip_id=1, selector={inf_id=3 chl_rate=25}, dir=0) = "
        "0x811101a4";
    on_chip_1.succeeds("drv_cdr_get_interface_link 0xff000009 1 3 25 0", init_3 + call, init_3_line + down);
    on_chip_1.succeeds("drv_cdr_get_interface_link 0xff000009 1 3 25 0", init_3_failed + call,
                       init_3_failed_line + down);
}

namespace {

// A full command line of each sub-command, the operations that it looks up between the banners, and the calls and
// lines up to each of them.
struct looked_up {
    std::string words;
    std::string operation;
    std::string calls;
    std::string lines;
};

const std::string cdr_library = "drv_inphi115050";

const std::string write_5 =
    "drv_cdr_reg_write(inst_id=0xff000009, chip_id=1, sub_chip_id=2, reg_addr=3, value=5) = 0\n";
const std::string write_5_line =
    "drv_cdr_reg_write success, inst_id=0xff000009, chip_id=1, sub_chip_id=2,reg_addr=0x3, "
    "write_value=0x5.\r\n";

const looked_up lookups[]{
    {"drv_cdr_init_interface 0xff000009 1 3 25", "drv_cdr_init_interface", "", ""},
    {"drv_cdr_destroy_interface 0xff000009 1 3 25", "drv_cdr_destroy_interface", "", ""},
    {"drv_cdr_reg_read 0xff000009 1 2 3", "drv_cdr_reg_read", "", ""},
    {"drv_cdr_reg_write 0xff000009 1 2 3 5", "drv_cdr_reg_write", "", ""},
    {"drv_cdr_reg_write 0xff000009 1 2 3 5", "drv_cdr_reg_read", write_5, write_5_line},
    {"drv_cdr_get_interface_config 0xff000009 1 3 25", "drv_cdr_init_interface", "", ""},
    {"drv_cdr_get_interface_config 0xff000009 1 3 25", "drv_cdr_get_interface_config", init_3, init_3_line},
    {"drv_cdr_get_interface_status 0xff000009 1 3 25", "drv_cdr_init_interface", "", ""},
    {"drv_cdr_get_interface_status 0xff000009 1 3 25", "drv_cdr_get_interface_status", init_3, init_3_line},
    {"drv_cdr_get_interface_link 0xff000009 1 3 25 1", "drv_cdr_init_interface", "", ""},
    {"drv_cdr_get_interface_link 0xff000009 1 3 25 1", "drv_cdr_get_interface_link", init_3, init_3_line},
    {"drv_cdr_get_digit_eye 0xff000009 1 3 25", "drv_cdr_init_interface", "", ""},
    {"drv_cdr_get_digit_eye 0xff000009 1 3 25", "drv_cdr_get_digit_eye", init_3, init_3_line},
    {"drv_cdr_destroy_chip 0xff000009 1", "drv_cdr_destroy_chip", bus_down, ""},
};

// All ten, each with the words that it needs.
const std::string full_lines[]{
    "drv_cdr_init_chip 0xff000009 1",
    "drv_cdr_destroy_chip 0xff000009 1",
    "drv_cdr_init_interface 0xff000009 1 3 25",
    "drv_cdr_destroy_interface 0xff000009 1 3 25",
    "drv_cdr_reg_read 0xff000009 1 2 3",
    "drv_cdr_reg_write 0xff000009 1 2 3 5",
    "drv_cdr_get_interface_config 0xff000009 1 3 25",
    "drv_cdr_get_interface_status 0xff000009 1 3 25",
    "drv_cdr_get_interface_link 0xff000009 1 3 25 1",
    "drv_cdr_get_digit_eye 0xff000009 1 3 25",
};

} // namespace

TEST(CdrTest, WithoutTheLibrary) {
    const std::string output = "dlopen libdrv_inphi115050.so fail <loader> \r\n"
                               "dlsym drv_cdr_soft_init fail, fd 0x0\r\n" +
                               cdr_module_fail;
    for (const std::string &words : full_lines) {
        expect_run_with(missing(cdr_library), "cdr_test " + words, bus_up, output, 255);
    }
    expect_run_with(missing(cdr_library), "cdr_test drv_cdr_none 0xff000009", bus_up, output, 255);
    expect_run_with(no_library(cdr_library), "cdr_test drv_cdr_init_chip 0xff000009 1", bus_up, output, 255);
}

TEST(CdrTest, WithoutWhatTheRunBeginsWith) {
    for (const std::string &words : full_lines) {
        expect_run_with(lacking(cdr_library, "drv_cdr_soft_init"), "cdr_test " + words, bus_up,
                        "dlsym drv_cdr_soft_init fail, fd 0x<handle>\r\n" + cdr_module_fail, 255);
        expect_run_with(lacking(cdr_library, "drv_cdr_init_chip"), "cdr_test " + words,
                        bus_up + "drv_cdr_soft_init(inst_id=0xff000009) = 0",
                        "test_cdr_soft_init success, inst_id=0xff000009.\r\n"
                        "dlsym drv_cdr_init_chip fail, fd 0x<handle>\r\n" +
                            cdr_module_fail,
                        255);
    }
}

TEST(CdrTest, WithoutAnOperation) {
    for (const looked_up &one : lookups) {
        expect_run_with(lacking(cdr_library, one.operation), "cdr_test " + one.words,
                        on_chip_1.calls_before() + one.calls,
                        on_chip_1.lines_before() + one.lines + "dlsym " + one.operation + " fail, fd 0x<handle>\r\n" +
                            cdr_run::failure_of(split_words(one.words).at(0)),
                        255);
    }
}

// The bus is left all the same.
TEST(CdrTest, WithoutWhatTheRunEndsWith) {
    expect_run_with(lacking(cdr_library, "drv_cdr_destroy_chip"), "cdr_test drv_cdr_init_interface 0xff000009 1 3 25",
                    on_chip_1.calls_before() + init_3 + bus_down,
                    on_chip_1.lines_before() + init_3_line + timing_lines + cdr_end +
                        "[TEST RESULT: SUCCESS]\r\ndlsym drv_cdr_destroy_chip fail, fd 0x<handle>\r\n" +
                        cdr_module_fail,
                    255);
}

TEST(CdrTest, TheLibraryIsHeldForTheRun) {
    if (lists_lines()) {
        return;
    }
    const library_use use =
        library_used(cdr_library, "cdr_test drv_cdr_get_interface_config 0xff000009 1 3 25",
                     on_chip_1.calls_before() + init_3 + text_call(text_queries[0]) + "0\n" + on_chip_1.calls_behind());
    EXPECT_EQ(use.opened, 1);
    EXPECT_EQ(use.closed, 0);
    EXPECT_TRUE(use.stays);
}

// What was printed before the library was opened is nothing; the crash is the run's end.
TEST(CdrTest, WithALibraryThatCrashes) {
    expect_run_with(crashing(cdr_library), "cdr_test drv_cdr_init_chip 0xff000009 1", bus_up, "", 128 + SIGSEGV);
}

// On a simulated chassis, run after run: the chip is brought up for each, so it locks in each and keeps nothing.
TEST(CdrTest, RunsOnASimulatedBoard) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir() + "/state";
    const auto shows = [&](const std::string &words, const std::string &part,
                           const std::vector<std::string> &by_hand = {}) {
        std::vector<std::string> options{"--state", state, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        const process_result result = run_launcher(options, split_words("cdr_test " + words));
        EXPECT_NE(result.out.find(part), std::string::npos) << result.out;
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
    };
    const std::string link = "drv_cdr_get_interface_link 0xffffffff 0 1 10 0";
    shows(link, "chl_rate=10,dir=0, link_status=up.\r\ncmd_exec");
    shows(link, "chl_rate=10,dir=0, link_status=down,ret=0x8111010f.\r\ncmd_exec",
          {"--set", "slot9/cdr/interface/1/line_signal=0"});
    shows("drv_cdr_get_digit_eye 0xffffffff 0 1 10", "inf_id=1.\r\nline lane 0: eye closed\nline lane 1: eye closed\n"
                                                     "host lane 0: eye 360 mV high, 700 mUI wide\n");
    shows(link, "link_status=up.\r\n", {"--set", "slot9/cdr/interface/1/line_signal=3"});
    shows("drv_cdr_reg_write 0xffffffff 0 1 2 0xbeef", "reg_addr=0x2, read_value=0xbeef.\r\n");
    shows("drv_cdr_reg_read 0xffffffff 0 1 2", "reg_addr=0x2, read_value=0x0.\r\n");
}
