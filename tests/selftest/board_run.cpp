#include "tests/selftest/board_run.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kestro_tests {

const short_section no_barcode = {
    "xml_get_entry_num(inst_id=0xffffffff, module=\"barcode\", node=\"barcode_attr\") = 0x31\n",
    "Error: barcode_ xml get entry num fail.\r\n",
};

const short_section no_elabel = {
    "drv_elabel_read(inst_id=0xffffffff, elabel_id=0, len=1200) = 0x32\n",
    "drv_elabel_read fail, inst_id=0xffffffff, elabel_id=0x0, ret=0x32.\r\n",
};

const short_section no_mac = {
    "xml_get_entry_num(inst_id=0xffffffff, module=\"mac_mng\", node=\"mac_storage_main\") = 0x33\n",
    "Error: mac xml get entry num fail.\r\n",
};

const std::string no_msc_state = "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x34\n";

std::string board_output(const board_lines &lines) {
    return "\r\n##### board mng test begin \r\n"
           "\r\n##### voltage test begin \r\n"
           "\r\n##### temperature test begin \r\n"
           "\r\n##### barcode test begin \r\n" +
           lines.barcode + "\r\n##### elabel test begin \r\n" + lines.elabel + "\r\n##### mac test begin \r\n" +
           lines.mac +
           "\r\n##### woffline test begin \r\n"
           "\r\n##### slot test begin \r\n"
           "\r\n##### digital test begin \r\n"
           "\r\n##### board capability test begin \r\n"
           "\r\n##### soft-reset test begin \r\n"
           "\r\n##### sub-board test begin \r\n"
           "\r\n##### dyinggasp test begin \r\n"
           "\r\n##### intr test begin \r\n"
           "\r\n##### cpld test begin \r\n"
           "\r\n##### i2c test begin \r\n"
           "\r\n##### lbc bus test begin \r\n"
           "\r\n##### mdio test begin \r\n"
           "\r\n##### pci test begin \r\n"
           "\r\n##### chip9555 test begin \r\n"
           "\r\n##### rtc test begin \r\n"
           "\r\n##### msc test begin \r\n" +
           lines.behind_msc + timing_lines;
}

void expect_board_run(const std::string &script, const std::string &root, const board_lines &lines) {
    static const std::string state = new_scratch_dir();
    const std::string script_file = scratch_file("script", script);
    const process_result result =
        run_sim({"--state", state, "--root", root, "--clock", "virtual", "--strict", "--script", script_file},
                {"board_test", "board_onekey_test"});
    EXPECT_EQ(result.out, board_output(lines));
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

std::string root_with_label(const std::string &label) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/opt/hostx/home");
    write_file(root + "/opt/hostx/home/elabel.txt", label);
    return root;
}

} // namespace kestro_tests
