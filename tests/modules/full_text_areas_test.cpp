// Every area that a driver fills with text, filled to its last byte without a terminator: the text ends where the area
// does, and nothing that lies behind it is shown. Where a number of the driver's may lie behind it, the number has no
// zero byte that would end the text by chance.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// As long as the area, so that the probe has no room for a terminator.
std::string filling(size_t size) {
    return std::string(size, 'F');
}

std::string dfx(size_t size) {
    return "dfx=\"" + filling(size) + "\"";
}

// A length as a number, as a word, and as the result print shows it.
struct full_size {
    size_t size;
    std::string len;
    std::string hex;
};

std::string items(const std::string &text) {
    return text + result_end;
}

} // namespace

TEST(FullTextAreaTest, FindingsOfTheSmiBuses) {
    for (const std::string check : {"smi_crc", "smi_los", "smi"}) {
        expect_failure("board_test board_check_" + check + " 2",
                       "drv_board_check_" + check + "(bus_id=2, size=128) = 0x71 result=4 " + dfx(128),
                       "failed, result:4 dfx:" + filling(128) + " ret:0x71\r\n" + items("para[0]=0x71 para[1]=0x4 "));
    }
}

TEST(FullTextAreaTest, FindingsOfTheMemory) {
    expect_failure("board_test board_get_ddr_event 1",
                   "drv_board_get_ddr_event(cpu_chip_no=1, size=128) = 0x61 state=2 " + dfx(128),
                   "failed, state:2 dfx:" + filling(128) + " ret:0x61\r\n" + items("para[0]=0x61 para[1]=0x2 "));
    expect_failure("board_test board_check_dimm_bus_status 1",
                   "drv_board_check_dimm_bus_status(dimm_no=1, size=128) = 0x61 status=2 " + dfx(128),
                   "failed, status:2 dfx:" + filling(128) + " ret:0x61\r\n" + items("para[0]=0x61 para[1]=0x2 "));
}

TEST(FullTextAreaTest, FindingsOfTheBoard) {
    expect_success("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(size=127) = 0 status=1 " + dfx(127),
                   "success, status:1 dfx:" + filling(127) + "\r\n" + items("para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_check_corrosion_status",
                   "drv_board_check_corrosion_status(size=128) = 7 status=0x46464646 " + dfx(128),
                   "failed, corrosion status:1179010630 dfx:" + filling(128) + " ret:0x7\r\n" +
                       items("para[0]=0x7 para[1]=0x46464646 "));
    expect_success("board_test board_check_four_corner_status 2",
                   "drv_board_check_four_corner_status(chip_id=2, size=128) = 0 status=26 " + dfx(128),
                   "four_corner_status hex:0x001a dec:0026\r\nfour_corner_status dfx_info:" + filling(128) + "\r\n" +
                       items("para[0]=0x0 para[1]=0x1a "));
}

TEST(FullTextAreaTest, FindingsOfSlotsAndCards) {
    expect_success(
        "board_test board_check_slotid", "drv_board_check_slotid(size=128) = 0 result=0x46464646 " + dfx(128),
        "success, check_result:1179010630 dfx:" + filling(128) + "\r\n" + items("para[0]=0x0 para[1]=0x46464646 "));
    expect_success("board_test board_check_fullin_status",
                   "drv_board_check_fullin_status(size=128) = 0 status=0x46464646 " + dfx(128),
                   "success, fullin_status:0x46464646 dfx_info:" + filling(128) + "\r\n" +
                       items("para[0]=0x0 para[1]=0x46464646 "));
    expect_success("board_test subboard_get_online_status_ex 2",
                   "drv_subboard_get_online_status_ex(subboard_id=2, size=128) = 0 status=1 " + dfx(128),
                   "online_status:1 dfx:" + filling(128) + "\r\n" + items("para[0]=0x0 para[1]=0x1 "));
}

TEST(FullTextAreaTest, FindingsOfTheProcessingUnits) {
    expect_success("board_test board_get_mpu_status", "drv_board_get_mpu_status(size=127) = 0 status=2 " + dfx(127),
                   "status:Error status, dfx_msg:" + filling(127) + "\r\n" + items("para[0]=0x0 para[1]=0x2 "));
    expect_failure("board_test board_get_mpu_status", "drv_board_get_mpu_status(size=127) = 5 status=2 " + dfx(127),
                   "failed, dfx_msg:" + filling(127) + " ret:0x5\r\n" + items("para[0]=0x5 para[1]=0x2 "));
    expect_success("board_test board_check_mpu_status", "drv_board_check_mpu_status(size=127) = 0 result=3 " + dfx(127),
                   "result:3, dfx_msg:" + filling(127) + "\r\n" + items("para[0]=0x0 para[1]=0x3 "));
    expect_success("board_test board_check_int_status 6 2",
                   "drv_board_check_int_status(index_id=6, type=2, size=127) = 0 result=1 " + dfx(127),
                   "result:1, dfx_msg:" + filling(127) + "\r\n" + items("para[0]=0x0 para[1]=0x1 "));
}

TEST(FullTextAreaTest, FirmwareVersion) {
    expect_success("board_test board_get_bios_ver",
                   "drv_board_get_bios_ver(size=127) = 0 text=\"" + filling(127) + "\"",
                   "ver:" + filling(127) + "\r\n" + items("para[0]=0x0 para[1]=" + filling(127) + " "));
}

// The sizes are those at which a heap block is full to its last byte, on either machine.
TEST(FullTextAreaTest, FindingsOfTheVoltages) {
    for (const auto &[size, len, hex] : {full_size{24, "24", "18"}, {28, "28", "1c"}, {40, "40", "28"}}) {
        const std::string buffer = "buffer=\"" + filling(size) + "\"";
        expect_success("voltage_test voltage_alarm_status 3 1 " + len,
                       "drv_voltage_get_alarm(voltage_id=3, alarm_type=1, len=" + len + ") = 0 alarm_status=2 " +
                           buffer,
                       "drv_voltage_get_alarm, alarm_status:2\r\ndrv_voltage_get_alarm, buffer:" + filling(size) +
                           "\r\n" + items("para[0]=0x0 para[1]=0x2 para[2]=0x" + hex + " "));
        expect_success("voltage_test voltage_avs_dump " + len, "drv_avs_dump_dfx_info(len=" + len + ") = 0 " + buffer,
                       "drv_avs_dump_dfx_info, buffer:" + filling(size) + "\r\n" +
                           items("para[0]=0x0 para[1]=" + filling(size) + " "));
        expect_success("voltage_test voltage_check_vrm_alert 1 " + len,
                       "drv_voltage_check_vrm_alert(chip_id=1, len=" + len + ") = 0 result=1 " + buffer,
                       "drv_voltage_check_vrm_alert, result:1\r\ndrv_voltage_check_vrm_alert, buffer:" + filling(size) +
                           "\r\n" + items("para[0]=0x0 para[1]=0x1 para[2]=" + filling(size) + " "));
        expect_success("voltage_test voltage_check_power 1 " + len,
                       "drv_voltage_check_power(power_id=1, len=" + len + ") = 0 result=1 " + buffer,
                       "drv_voltage_check_power, result:1\r\ndrv_voltage_check_power, buffer:" + filling(size) +
                           "\r\n" + items("para[0]=0x0 para[1]=0x1 para[2]=" + filling(size) + " "));
    }
}

TEST(FullTextAreaTest, NameOfAVoltage) {
    expect_success("voltage_test voltage_get_desc 3",
                   "drv_voltage_get_node_desc(voltage_id=3, size=64) = 0 desc=\"" + filling(64) + "\"",
                   "voltage_get_desc:" + filling(64) + "\r\n" + items("para[0]=0x0 para[1]=" + filling(64) + " "));
}

TEST(FullTextAreaTest, AnswersOfTheLampPatches) {
    for (const std::string number : {"1", "2"}) {
        expect_success("led_test led_func" + number + " lamp 4",
                       "drv_led_patch_func" + number + "(buffer=\"lamp\", size=125) = 0 buffer=\"" + filling(125) +
                           "\"",
                       "drv led patch func" + number + ":" + filling(125) + "\r\n" + items("para[0]=0x0 "));
    }
}

TEST(FullTextAreaTest, AddressesAsText) {
    std::string lines = "drv_mac_get_addr_num::inst_id:0xffffffff type:1 num:40 ret:0x0\n";
    for (int i = 0; i < 40; ++i) {
        lines += (i < 10 ? "mac[ " : "mac[") + std::to_string(i) + "] : mac[46-46-46-46-46-46]\n";
    }
    expect_success("mac_test drv_mac_get_addr_num 1 40",
                   "drv_mac_get_addr_num(type_id=1, num=40, size=240) = 0 buffer=\"" + filling(240) + "\"",
                   "\n*********   test_mac_get_addr_num test begin:  ********\n" + lines +
                       items("para[0]=0x0 para[1]=" + filling(240) + " ") +
                       "\n*********   test_mac_get_addr_num test   end:  ********\n");
    expect_success("mac_test drv_mac_get_addr 1", "drv_mac_get_addr(type_id=1) = 0 addr=\"" + filling(6) + "\"",
                   "\n*********   test_mac_get_addr test begin:  ********\n"
                   "drv_mac_get_addr::inst_id:0xffffffff type:1 mac[46-46-46-46-46-46] ret:0x0\n" +
                       items("para[0]=0x0 para[1]=" + filling(6) + " ") +
                       "\n*********   test_mac_get_addr test   end:  ********\n");
}

TEST(FullTextAreaTest, BarCodesAndLabels) {
    std::string bytes;
    for (int i = 0; i < 1024; ++i) {
        bytes += std::string(i % 16 == 0 ? "\r\n" : "") + "[" + std::to_string(i) + "]=0x46 ";
    }
    expect_success("barcode_test barcode_read 1 2 1024",
                   "drv_barcode_read(inst_id=1, barcode_id=2, len=1024) = 0 area=\"" + filling(1024) + "\"",
                   "drv_barcode_read success, inst_id=0x1, barcode_id=0x2, len=0x400.\r\n\r\nBarCode:[" +
                       filling(1024) + "]\r\n" + bytes + items("para[0]=0x0 "));
    expect_success("elabel_test elabel_read 1 0",
                   "drv_elabel_read(inst_id=1, elabel_id=0, len=1200) = 0 area=\"" + filling(1200) + "\"",
                   "drv_elabel_read success, inst_id=0x1, elabel_id=0x0.\r\n\r\n" + filling(1200) + "\r\n" +
                       items("para[0]=0x0 "));
}
