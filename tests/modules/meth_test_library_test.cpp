// meth_test on boards whose library of management ports is missing or at fault, and that it is closed on every path.
#include <gtest/gtest.h>

#include "tests/support/library_faults.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

const std::string library = "drv_mng_eth";

// A sub-command with the words that it takes.
struct sub_command_line {
    std::string name;
    std::string words;

    std::string line() const {
        return "meth_test " + name + words;
    }
};

// Those that say in brief what is wrong with the library.
const std::vector<sub_command_line> brief = {
    {"drv_meth_init", " 3"},
    {"drv_meth_exit", " 3"},
    {"drv_meth_get_port_num", ""},
    {"drv_meth_set_switch_flag", " 3 1"},
    {"drv_meth_is_readable", " 3"},
    {"drv_meth_get_rx_pkt", " 3 64"},
    {"drv_meth_tx_pkt", " 3 hello 5"},
    {"drv_meth_get_autonego", " 3"},
    {"drv_meth_get_speed", " 3"},
    {"drv_meth_get_media_type", " 3"},
    {"drv_meth_get_link_status", " 3"},
    {"drv_meth_get_mac", " 3"},
    {"drv_meth_set_active_ornot", " 3 1"},
    {"drv_meth_set_shutdown", " 3 1"},
    {"drv_meth_get_phy_test", " 3"},
    {"drv_meth_set_led", " 3 1"},
};

// Those that give the reasons.
const std::vector<sub_command_line> with_reasons = {
    {"drv_meth_get_rx_packets", " 3"},
    {"drv_meth_get_tx_packets", " 3"},
    {"drv_meth_get_statistic", " 3"},
    {"drv_meth_dump_info", " 3 1"},
};

// A script under which the sub-command comes to its end, with this answer of its operation.
std::string script_of(const sub_command_line &command, const std::string &answer) {
    const bool sends = command.name == "drv_meth_tx_pkt";
    return (sends ? "drv_meth_init = 0\ndrv_meth_register_callback = 0\n" : "") + command.name + " = " + answer;
}

void expect_closed(const std::string &line, const std::string &script) {
    if (!is_tried_here(line + script)) {
        return;
    }
    SCOPED_TRACE(line + ", " + script);
    const library_use use = library_used(library, line, script);
    EXPECT_EQ(use.opened, 1);
    EXPECT_EQ(use.closed, 1);
    EXPECT_FALSE(use.stays);
}

} // namespace

TEST(MethLibraryTest, BriefLinesOfALibraryThatIsMissing) {
    for (const sub_command_line &command : brief) {
        expect_failure_with(missing(library), command.line(), "", "dlopen libdrv_mng_eth.so fail\n");
    }
}

TEST(MethLibraryTest, BriefLinesOfAnOperationThatIsMissing) {
    for (const sub_command_line &command : brief) {
        expect_failure_with(lacking(library, command.name), command.line(), "", "dlsym " + command.name + " fail\n");
    }
}

TEST(MethLibraryTest, SendingNeedsThreeOperations) {
    for (const std::string operation : {"drv_meth_init", "drv_meth_register_callback", "drv_meth_tx_pkt"}) {
        expect_failure_with(lacking(library, operation), "meth_test drv_meth_tx_pkt 3 hello 5", "",
                            "dlsym " + operation + " fail\n");
    }
}

TEST(MethLibraryTest, ReasonsOfALibraryThatIsMissing) {
    for (const sub_command_line &command : with_reasons) {
        expect_failure_with(missing(library), command.line(), "",
                            "dlopen libdrv_mng_eth.so fail, error <system> <loader>\n");
    }
}

TEST(MethLibraryTest, ReasonsOfAnOperationThatIsMissing) {
    for (const sub_command_line &command : with_reasons) {
        expect_failure_with(lacking(library, command.name), command.line(), "",
                            "dlsym " + command.name + " fail, error <system> <loader>\n");
    }
}

TEST(MethLibraryTest, AFileThatIsNoLibrary) {
    expect_failure_with(no_library(library), "meth_test drv_meth_get_speed 3", "", "dlopen libdrv_mng_eth.so fail\n");
    expect_failure_with(no_library(library), "meth_test drv_meth_get_statistic 3", "",
                        "dlopen libdrv_mng_eth.so fail, error <system> <loader>\n");
}

TEST(MethLibraryTest, ALibraryThatCrashesWhenItIsLoaded) {
    expect_run_with(crashing(library), "meth_test drv_meth_tx_pkt 3 hello 5", "", "", 139);
}

TEST(MethLibraryTest, WordsAreCountedBeforeTheLibraryIsOpened) {
    if (lists_lines()) {
        return;
    }
    for (const sub_command_line &command : brief) {
        if (command.name != "drv_meth_get_port_num" && is_tried_here(command.name)) {
            EXPECT_EQ(library_used(library, "meth_test " + command.name, "").opened, 0) << command.name;
        }
    }
    EXPECT_EQ(library_used(library, "meth_test drv_meth_get_port_num 3", "").opened, 0);
}

TEST(MethLibraryTest, ItIsClosedWhateverTheDriverAnswers) {
    if (lists_lines()) {
        return;
    }
    for (const std::vector<sub_command_line> *commands : {&brief, &with_reasons}) {
        for (const sub_command_line &command : *commands) {
            expect_closed(command.line(), script_of(command, "0"));
            expect_closed(command.line(), script_of(command, "0x811101a4"));
        }
    }
}

TEST(MethLibraryTest, ItIsClosedWhenMemoryIsOut) {
    if (lists_lines()) {
        return;
    }
    expect_closed("meth_test drv_meth_get_rx_pkt 3 4294967295", "");
    expect_closed("meth_test drv_meth_tx_pkt 3 hello 4294967295", "drv_meth_init = 0");
}
