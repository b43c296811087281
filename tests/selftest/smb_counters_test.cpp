// Error counters of the management bus: a check that no section runs.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string tx_pass = "Success: board get smb tx cnt pass\r\n";
const std::string rx_pass = "Success: board get smb rx cnt pass\r\n";
const std::string none_line = "Info   : board is not support smb tx and rx err cnt.\r\n";

struct link_ids {
    std::string tx;
    std::string rx;
};

std::string chips(const std::vector<link_ids> &answers) {
    std::string script = entry_count("board_mng", "board_epld", static_cast<int>(answers.size()));
    for (size_t i = 0; i < answers.size(); ++i) {
        script += element("board_mng", "board_epld", static_cast<int>(i), "smb_tx_err_id", answers[i].tx) +
                  element("board_mng", "board_epld", static_cast<int>(i), "smb_rx_err_id", answers[i].rx);
    }
    return script;
}

std::string tx(int link, const std::string &answer) {
    return "drv_smb_get_tx_err_count(inst_id=0xffffffff, slot_id=" + std::to_string(link) + ") = " + answer + " x1\n";
}

std::string rx(int link, const std::string &answer) {
    return "drv_smb_get_rx_err_count(inst_id=0xffffffff, slot_id=" + std::to_string(link) + ") = " + answer + " x1\n";
}

void expect_smb(const std::string &script, const std::string &lines, int result) {
    expect_part("smb_counters", script, lines, result);
}

} // namespace

TEST(SmbCountersCheckTest, EveryChip) {
    expect_smb(chips({{"0 value=0", "0 value=1"}, {"0 value=254", "0 value=9"}}) + tx(0, "0 count=0") +
                   rx(1, "0 count=0") + tx(254, "0") + rx(9, "0"),
               tx_pass + rx_pass + tx_pass + rx_pass, 0);
}

TEST(SmbCountersCheckTest, ABoardWithoutControlChipsHasNoLine) {
    expect_smb(chips({}), "", -1);
    expect_smb(no_entry_count("board_mng", "board_epld", "0x51"), "", -1);
}

TEST(SmbCountersCheckTest, ChipsWithoutALink) {
    expect_smb(chips({{"0 value=255", "0 value=255"}, {"0x51", "0x51"}, {"0", "0"}}), none_line, 0);
}

TEST(SmbCountersCheckTest, OneDirectionOnly) {
    expect_smb(chips({{"0 value=3", "0 value=255"}}) + tx(3, "0"), tx_pass, 0);
    expect_smb(chips({{"0x51", "0 value=3"}}) + rx(3, "0"), rx_pass, 0);
    // The first chip's link is not taken for the second's.
    expect_smb(chips({{"0 value=3", "0x51"}, {"0x51", "0 value=4"}}) + tx(3, "0") + rx(4, "0"), tx_pass + rx_pass, 0);
}

TEST(SmbCountersCheckTest, ErrorsThatWereCounted) {
    expect_smb(chips({{"0 value=3", "0 value=3"}}) + tx(3, "0 count=26") + rx(3, "0 count=0"),
               "Error  : board get smb tx cnt fail 0x0. cnt 26\r\n" + rx_pass, -1);
    expect_smb(chips({{"0 value=3", "0 value=3"}}) + tx(3, "0 count=0") + rx(3, "0 count=4294967295"),
               tx_pass + "Error  : board get smb rx cnt fail 0x0. cnt 4294967295\r\n", -1);
}

TEST(SmbCountersCheckTest, CountersThatCannotBeRead) {
    expect_smb(chips({{"0 value=3", "0 value=3"}, {"0 value=4", "0 value=4"}}) + tx(3, "0x71") + rx(3, "0x72 count=5") +
                   tx(4, "0 count=0") + rx(4, "0 count=0"),
               "Error  : board get smb tx cnt fail 0x71. cnt 0\r\n"
               "Error  : board get smb rx cnt fail 0x72. cnt 5\r\n" +
                   tx_pass + rx_pass,
               -1);
    expect_smb(chips({{"0 value=3", "0x51"}}) + tx(3, "0x811101a4"),
               "Error  : board get smb tx cnt fail 0x811101a4. cnt 0\r\n", -1);
}
