// bus_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// What a read of so many bytes asks for, of bus and inst_id as given.
std::string read_call(const std::string &inst_id, const std::string &fields) {
    return "drv_i2c_read_basebus(inst_id=" + inst_id + ", bus_id=2, request={" + fields + "}) = ";
}

std::string write_call(const std::string &inst_id, const std::string &fields) {
    return "drv_i2c_write_basebus(inst_id=" + inst_id + ", bus_id=2, request={" + fields + "}) = ";
}

const std::string read_usage = "kestro_test bus_test i2c_read_basebus inst_id bus_id channel slave_addr offset "
                               "slave_addr_width reg_addr_width len\n";
const std::string write_usage = "kestro_test bus_test i2c_write_basebus inst_id bus_id channel slave_addr offset "
                                "slave_addr_width reg_addr_width value\n";

} // namespace

TEST(BusTest, UsageListsTheSubCommandsInOrder) {
    expect_run("bus_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " kestro_test bus_test i2c_read_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
               "reg_addr_width len \n"
               " kestro_test bus_test i2c_write_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
               "reg_addr_width value \n",
               0);
}

// The first line of a dump has one byte, the next ones 16.
TEST(BusTest, ReadOfSeventeenBytes) {
    expect_success("bus_test i2c_read_basebus 0xff000005 2 3 0x50 0x104 7 16 17",
                   read_call("0xff000005", "channel=3 slave_addr=0x50 offset=0x104 reg_addr_width=16 "
                                           "slave_addr_width=7 direction=1 reserved=0 length=17") +
                       "0 request={data=[00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f f0]}",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = 260, len:17\r\n00 \r\n"
                   "01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f f0 \r\n");
}

TEST(BusTest, ReadOfEighteenBytesLeavesItsLineOpen) {
    expect_success("bus_test i2c_read_basebus 2 3 80 0 10 8 18",
                   read_call("0xffffffff", "channel=3 slave_addr=80 offset=0 reg_addr_width=8 slave_addr_width=10 "
                                           "direction=1 reserved=0 length=18") +
                       "0 request={data=[00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f f0 f1]}",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = 0, len:18\r\n00 \r\n"
                   "01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f f0 \r\nf1 ");
}

// Nothing is taken for no byte: the driver gets no area.
TEST(BusTest, ReadOfOneByteAndOfNone) {
    expect_success("bus_test i2c_read_basebus 2 3 4 5 6 7 1",
                   read_call("0xffffffff", "channel=3 slave_addr=4 offset=5 reg_addr_width=7 slave_addr_width=6 "
                                           "direction=1 length=1") +
                       "0 request={data=[5a]}",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = 5, len:1\r\n5a \r\n");
    expect_success("bus_test i2c_read_basebus 2 3 4 5 6 7 0",
                   read_call("0xffffffff", "channel=3 slave_addr=4 offset=5 reg_addr_width=7 slave_addr_width=6 "
                                           "direction=1 length=0 data=null") +
                       "0",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = 5, len:0\r\n");
}

// The bytes are shown whatever the driver says; what it did not write is zero.
TEST(BusTest, ReadFailure) {
    expect_failure("bus_test i2c_read_basebus 1 2 3 4 5 6 7 3 9",
                   read_call("1", "channel=3 slave_addr=4 offset=5 reg_addr_width=7 slave_addr_width=6 direction=1 "
                                  "length=3") +
                       "0x8111010f request={data=[11]}",
                   "i2c_bus_read_basebus:[ret]:-2129592049\r\n offset = 5, len:3\r\n11 \r\n00 00 ");
}

TEST(BusTest, WordsThatAreCut) {
    expect_success("bus_test i2c_read_basebus 2 0x10003 0x20004 0xfffffffe 4294967295 0xfffffffd 1",
                   read_call("0xffffffff", "channel=3 slave_addr=4 offset=0xfffffffe reg_addr_width=0xfffffffd "
                                           "slave_addr_width=0xffffffff direction=1 length=1") +
                       "0 request={data=[00]}",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = -2, len:1\r\n00 \r\n");
    expect_success("bus_test i2c_write_basebus 2 0x10003 0x20004 0xfffffffe 4294967295 0xfffffffd 0x1a5",
                   write_call("0xffffffff", "channel=3 slave_addr=4 offset=0xfffffffe reg_addr_width=0xfffffffd "
                                            "slave_addr_width=0xffffffff direction=0 length=1 data=[a5]") +
                       "0",
                   "i2c_bus_write_basebus:[ret]:0\r\n offset = -2, value:165\r\n");
}

TEST(BusTest, ReadOfMoreThanThereIsMemory) {
    expect_failure("bus_test i2c_read_basebus 2 3 4 5 6 7 4294967295", "", "Failed to malloc -1\r\n");
    expect_failure("bus_test i2c_read_basebus 1 2 3 4 5 6 7 0x7fffffff", "", "Failed to malloc 2147483647\r\n");
}

TEST(BusTest, Write) {
    expect_success("bus_test i2c_write_basebus 0xff000005 2 3 0x50 0x104 7 16 0xff",
                   write_call("0xff000005", "channel=3 slave_addr=0x50 offset=0x104 reg_addr_width=16 "
                                            "slave_addr_width=7 direction=0 reserved=0 length=1 data=[ff]") +
                       "0",
                   "i2c_bus_write_basebus:[ret]:0\r\n offset = 260, value:255\r\n");
    expect_success("bus_test i2c_write_basebus 2 3 80 4 10 8 7",
                   write_call("0xffffffff", "channel=3 slave_addr=80 offset=4 reg_addr_width=8 slave_addr_width=10 "
                                            "direction=0 reserved=0 length=1 data=[07]") +
                       "0",
                   "i2c_bus_write_basebus:[ret]:0\r\n offset = 4, value:7\r\n");
    expect_failure("bus_test i2c_write_basebus 1 2 3 4 5 6 7 8 9",
                   write_call("1", "channel=3 slave_addr=4 offset=5 reg_addr_width=7 slave_addr_width=6 direction=0 "
                                   "length=1 data=[08]") +
                       "0x12",
                   "i2c_bus_write_basebus:[ret]:18\r\n offset = 5, value:8\r\n");
}

TEST(BusTest, WordsThatAreNoNumbers) {
    expect_success("bus_test i2c_read_basebus a b c d e f g",
                   "drv_i2c_read_basebus(inst_id=0xffffffff, bus_id=0, request={channel=0 slave_addr=0 offset=0 "
                   "reg_addr_width=0 slave_addr_width=0 direction=1 length=0 data=null}) = 0",
                   "i2c_bus_read_basebus:[ret]:0\r\n offset = 0, len:0\r\n");
    expect_success("bus_test i2c_write_basebus a b c d e f g",
                   "drv_i2c_write_basebus(inst_id=0xffffffff, bus_id=0, request={channel=0 slave_addr=0 offset=0 "
                   "reg_addr_width=0 slave_addr_width=0 direction=0 length=1 data=[00]}) = 0",
                   "i2c_bus_write_basebus:[ret]:0\r\n offset = 0, value:0\r\n");
}

TEST(BusTest, TooFewWords) {
    for (const std::string words : {"", " 1", " 1 2 3 4 5 6"}) {
        expect_failure("bus_test i2c_read_basebus" + words, "", read_usage);
        expect_failure("bus_test i2c_write_basebus" + words, "", write_usage);
    }
}
