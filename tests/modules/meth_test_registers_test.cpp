// meth_test: the PHY's own test and the registers, with the driver scripted. Reading and writing one register are in no
// table: the program unlisted_command calls their handlers.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/modules/unlisted.h"
#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

std::string filling(size_t size) {
    return std::string(size, 'F');
}

const std::string module_fail = operate_fail("meth_test");

// A handler in no table, without the library, or with another in its place.
void expect_unlisted_with(const std::string &library, const std::string &line, const std::string &output) {
    if (lists_lines()) {
        return;
    }
    SCOPED_TRACE(line);
    const std::string folder = new_scratch_dir();
    if (!library.empty()) {
        std::filesystem::copy_file(library, folder + "/libdrv_mng_eth.so");
    }
    std::vector<std::string> options = unlisted_options("");
    options.insert(options.end(), {"--without", "drv_mng_eth"});
    process_options process;
    process.environment = {"LD_LIBRARY_PATH=" + folder};
    const process_result run = run_launcher(options, split_words(line), process);
    EXPECT_EQ(run.out, output + "result -1\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

} // namespace

TEST(MethRegistersTest, PhyTest) {
    expect_success("meth_test drv_meth_get_phy_test 3",
                   "drv_meth_get_phy_test(port=3, size=256) = 0 result=2 buffer=\"pair B is open\"",
                   "port:3 \n\nport3, result2, buf:pair B is open, buf_len:256\r\n");
    expect_success("meth_test drv_meth_get_phy_test 0xffffffff",
                   "drv_meth_get_phy_test(port=0xffffffff, size=256) = 0 result=0xffffffff buffer=\"\"",
                   "port:4294967295 \n\nport-1, result-1, buf:, buf_len:256\r\n");
    expect_success("meth_test drv_meth_get_phy_test phy", "drv_meth_get_phy_test(port=0, size=256) = 0",
                   "port:0 \n\nport0, result0, buf:, buf_len:256\r\n");
    expect_success("meth_test drv_meth_get_phy_test 3",
                   "drv_meth_get_phy_test(port=3, size=256) = 0 result=1 buffer=\"" + filling(256) + "\"",
                   "port:3 \n\nport3, result1, buf:" + filling(256) + ", buf_len:256\r\n");
    expect_failure("meth_test drv_meth_get_phy_test 3",
                   "drv_meth_get_phy_test(port=3, size=256) = 0x811101a4 result=2 buffer=\"no answer\"",
                   "port:3 \n\ndrv_meth_get_phy_test ret:2165375396\n\n");
    expect_failure("meth_test drv_meth_get_phy_test", "", "invalid arg num [port]\n");
    expect_failure("meth_test drv_meth_get_phy_test 3 4", "", "invalid arg num [port]\n");
}

TEST(MethRegistersTest, PhyTestWithoutMemory) {
    expect_without_text_area("meth_test drv_meth_get_phy_test 3", "drv_meth_get_phy_test = 0",
                             "port:3 \n\nget phy test malloc buf failure" + std::string(timing_lines) +
                                 operate_fail("drv_meth_get_phy_test") + module_fail,
                             255);
}

TEST(MethRegistersTest, DumpInfo) {
    expect_success("meth_test drv_meth_dump_info 3 1",
                   "drv_meth_dump_info(port=3, mac_phy=1, size=16384) = 0 buffer=\"00: 1140\\r\\n01: 796d\\r\\n\"",
                   "meth port:3 mac_phy:1 \n\nbuff:\n00: 1140\r\n01: 796d\r\n \n\n");
    expect_success("meth_test drv_meth_dump_info 0xffffffff 4294967294",
                   "drv_meth_dump_info(port=0xffffffff, mac_phy=0xfffffffe, size=16384) = 0",
                   "meth port:4294967295 mac_phy:4294967294 \n\nbuff:\n \n\n");
    expect_success("meth_test drv_meth_dump_info eth phy",
                   "drv_meth_dump_info(port=0, mac_phy=0, size=16384) = 0 buffer=\"" + filling(16384) + "\"",
                   "meth port:0 mac_phy:0 \n\nbuff:\n" + filling(16384) + " \n\n");
    expect_failure("meth_test drv_meth_dump_info 3 1",
                   "drv_meth_dump_info(port=3, mac_phy=1, size=16384) = 0x811101a4 buffer=\"00: 1140\"",
                   "meth port:3 mac_phy:1 \n\ndrv_meth_dump_info ret:0x811101a4\n\n");
    for (const std::string words : {"", " 3", " 3 1 2"}) {
        expect_failure("meth_test drv_meth_dump_info" + words, "", "invalid arg num [port] [mac_phy]\n");
    }
}

TEST(MethRegistersTest, DumpInfoWithoutMemory) {
    expect_without_text_area("meth_test drv_meth_dump_info 3 1", "drv_meth_dump_info = 0",
                             "meth port:3 mac_phy:1 \n\nmeth_dump_info malloc size 16384 fail.\n\n" +
                                 std::string(timing_lines) + operate_fail("drv_meth_dump_info") + module_fail,
                             255);
}

TEST(MethRegistersTest, ReadReg) {
    expect_unlisted("drv_meth_read_reg 3 1 0x1f", "drv_meth_read_reg(port=3, mac_phy=1, addr=31) = 0 val=4660",
                    "port:3  mac_phy:1  addr:31\n\nval:4660\n\n", "0");
    expect_unlisted("drv_meth_read_reg 0xffffffff 4294967294 4294967293",
                    "drv_meth_read_reg(port=0xffffffff, mac_phy=0xfffffffe, addr=0xfffffffd) = 0 val=0xfffffffc",
                    "port:4294967295  mac_phy:4294967294  addr:4294967293\n\nval:4294967292\n\n", "0");
    expect_unlisted("drv_meth_read_reg eth phy id", "drv_meth_read_reg(port=0, mac_phy=0, addr=0) = 0",
                    "port:0  mac_phy:0  addr:0\n\nval:0\n\n", "0");
    expect_unlisted("drv_meth_read_reg 3 1 31", "drv_meth_read_reg(port=3, mac_phy=1, addr=31) = 0x12 val=1",
                    "port:3  mac_phy:1  addr:31\n\ndrv_meth_read_reg ret:18\n\n", "18");
    for (const std::string words : {"", " 3 1", " 3 1 31 5"}) {
        expect_unlisted("drv_meth_read_reg" + words, "", "invalid arg num [port] [mac_phy] [addr]\n", "-1");
    }
}

TEST(MethRegistersTest, WriteReg) {
    expect_unlisted("drv_meth_write_reg 3 1 0x1f 010", "drv_meth_write_reg(port=3, mac_phy=1, addr=31, val=8) = 0",
                    "port:3  mac_phy:1  addr:31 val:8\n\ndrv_meth_write_reg ret:0\n\n", "0");
    expect_unlisted(
        "drv_meth_write_reg 0xffffffff 4294967294 4294967293 4294967292",
        "drv_meth_write_reg(port=0xffffffff, mac_phy=0xfffffffe, addr=0xfffffffd, val=0xfffffffc) = 0",
        "port:4294967295  mac_phy:4294967294  addr:4294967293 val:4294967292\n\ndrv_meth_write_reg ret:0\n\n", "0");
    expect_unlisted("drv_meth_write_reg eth phy id new", "drv_meth_write_reg(port=0, mac_phy=0, addr=0, val=0) = 0",
                    "port:0  mac_phy:0  addr:0 val:0\n\ndrv_meth_write_reg ret:0\n\n", "0");
    expect_unlisted("drv_meth_write_reg 3 1 31 8", "drv_meth_write_reg(port=3, mac_phy=1, addr=31, val=8) = 0x12",
                    "port:3  mac_phy:1  addr:31 val:8\n\ndrv_meth_write_reg ret:18\n\n", "18");
    for (const std::string words : {"", " 3 1 31", " 3 1 31 5 6"}) {
        expect_unlisted("drv_meth_write_reg" + words, "", "invalid arg num [port] [mac_phy] [addr] [val]\n", "-1");
    }
}

TEST(MethRegistersTest, ReadAndWriteRegWithALibraryAtFault) {
    const std::string other_library = build_dir() + "/noop/libnb_ctl.so";
    expect_unlisted_with("", "drv_meth_read_reg 3 1 31", "dlopen libdrv_mng_eth.so fail\n");
    expect_unlisted_with("", "drv_meth_write_reg 3 1 31 8", "dlopen libdrv_mng_eth.so fail\n");
    expect_unlisted_with(other_library, "drv_meth_read_reg 3 1 31", "dlsym drv_meth_read_reg fail\n");
    expect_unlisted_with(other_library, "drv_meth_write_reg 3 1 31 8", "dlsym drv_meth_write_reg fail\n");
}
