// PCI Express: configuration space, windows that are sized and moved, devices that go and come back, and links.
#include "tests/sim/support.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string gone = "0x0 data=0xffffffff\n";

// The switch is at bus 1; the timing and management chip with two functions at bus 2.
std::string read_at(uint32_t bus, uint32_t function, uint32_t offset) {
    return "drv_pci_config_read32(bus=" + std::to_string(bus) + ", function=" + std::to_string(function) +
           ", offset=" + std::to_string(offset) + ")";
}

std::string write_at(uint32_t bus, uint32_t function, uint32_t offset, const std::string &data) {
    return "drv_pci_config_write32(bus=" + std::to_string(bus) + ", function=" + std::to_string(function) +
           ", offset=" + std::to_string(offset) + ", data=" + data + ")";
}

// Numbers above 65535 are shown in hexadecimal.
std::string data(uint32_t value) {
    char shown[32];
    snprintf(shown, sizeof shown, value > 65535 ? "0x0 data=0x%x\n" : "0x0 data=%u\n", value);
    return shown;
}

process_result technician(const test_board &board, const std::vector<std::string> &actions) {
    std::vector<std::string> line{launcher(), "--state", board.state};
    line.insert(line.end(), actions.begin(), actions.end());
    return run_process(line);
}

} // namespace

TEST(PciDriver, ConfigurationSpaceOfANewBoard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {read_at(1, 0, 0x00), read_at(1, 0, 0x04), read_at(1, 0, 0x08), read_at(1, 0, 0x0C),
                              read_at(1, 0, 0x10), read_at(1, 0, 0x14), read_at(1, 0, 0x18)}),
              data(0x08014B54) + data(0x00100006) + data(0x02800002) + data(0x10) + data(0xE000000C) + data(0x80) +
                  data(0xF0000000));
    EXPECT_EQ(answers(board, {read_at(1, 0, 0x1C), read_at(1, 0, 0x34), read_at(1, 0, 0x38), read_at(1, 0, 0x3C),
                              read_at(1, 0, 0x40), read_at(1, 0, 0x44), read_at(1, 0, 0x50), read_at(1, 0, 0xFC)}),
              data(0) + data(0x40) + data(0) + data(0x1FF) + data(0x00020010) + data(0) + data(0x00130000) + data(0));
    EXPECT_EQ(answers(board, {read_at(2, 0, 0), read_at(2, 1, 0), read_at(2, 1, 0x10), read_at(2, 1, 0x18)}),
              data(0x07104B54) + data(0x07114B54) + data(0) + data(0xF0104000));
}

TEST(PciDriver, WindowsAnswerAllOnesWithTheirSize) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {write_at(1, 0, 0x10, "0xffffffff"), read_at(1, 0, 0x10), write_at(1, 0, 0x14, "0xffffffff"),
                        read_at(1, 0, 0x14), write_at(1, 0, 0x18, "0xffffffff"), read_at(1, 0, 0x18),
                        write_at(2, 1, 0x18, "0xffffffff"), read_at(2, 1, 0x18)}),
        ok + data(0xFF00000C) + ok + data(0xFFFFFFFF) + ok + data(0xFFFF0000) + ok + data(0xFFFFF000));
}

TEST(PciDriver, WindowsMoveWithTheirRegisters) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_pci_get_device_bar(bdf=0x100, bar=0)", "drv_pci_get_device_bar(bdf=0x100, bar=2)",
                              "drv_pci_get_device_bar(bdf=0x201, bar=2)"}),
              "0x0 address=0x80e0000000 size=0x1000000\n0x0 address=0xf0000000 size=0x10000\n"
              "0x0 address=0xf0104000 size=4096\n");
    EXPECT_EQ(answers(board, {write_at(1, 0, 0x10, "0xd1234567"), write_at(1, 0, 0x14, "1"),
                              "drv_pci_get_device_bar(bdf=0x100, bar=0)", read_at(1, 0, 0x10)}),
              ok + ok + "0x0 address=0x1d1000000 size=0x1000000\n" + data(0xD100000C));
}

TEST(PciDriver, WindowsThatADeviceLacks) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_pci_get_device_bar(bdf=0x100, bar=1)", "drv_pci_get_device_bar(bdf=0x100, bar=3)",
                        "drv_pci_get_device_bar(bdf=0x100, bar=6)", "drv_pci_get_device_bar(bdf=0x200, bar=0)",
                        "drv_pci_get_device_bar(bdf=0x108, bar=0)", "drv_pci_get_device_bar(bdf=0x10000, bar=0)"}),
        bad_value + not_supported + bad_value + not_supported + no_such_device + bad_value);
}

TEST(PciDriver, CommandTakesItsBitsAndTheIdentityNone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {write_at(1, 0, 0x04, "0x0000ffff"), read_at(1, 0, 0x04), write_at(1, 0, 0x04, "0"),
                              read_at(1, 0, 0x04), write_at(1, 0, 0x00, "0"), read_at(1, 0, 0x00),
                              write_at(1, 0, 0x3C, "0xffffff42"), read_at(1, 0, 0x3C), write_at(1, 0, 0x60, "7"),
                              read_at(1, 0, 0x60)}),
              ok + data(0x00100547) + ok + data(0x00100000) + ok + data(0x08014B54) + ok + data(0x142) + ok + data(0));
}

TEST(PciDriver, ErrorsAreClearedByOnes) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(technician(board, {"--set", "slot9/pci/device/0/status=0xf910"}).err, "");
    EXPECT_EQ(answers(board, {read_at(1, 0, 0x04), write_at(1, 0, 0x04, "0x00000006"), read_at(1, 0, 0x04),
                              write_at(1, 0, 0x04, "0x88100006"), read_at(1, 0, 0x04),
                              write_at(1, 0, 0x04, "0xffff0006"), read_at(1, 0, 0x04)}),
              data(0xF9100006) + ok + data(0xF9100006) + ok + data(0x71100006) + ok + data(0x00100006));
}

TEST(PciDriver, ARemovedDeviceReadsAllOnesUntilItIsProbed) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {write_at(1, 0, 0x04, "0x0447"), write_at(1, 0, 0x18, "0xf2000000"),
                              "drv_pci_hotplug_remove_device(bus=1)"}),
              ok + ok + ok);
    EXPECT_EQ(answers(board, {read_at(1, 0, 0), read_at(1, 0, 0x10), read_at(1, 0, 0xFC),
                              write_at(1, 0, 0x18, "0xf3000000"), "drv_pci_get_device_bar(bdf=0x100, bar=2)",
                              "drv_pci_hotplug_remove_device(bus=1)", read_at(2, 0, 0)}),
              gone + gone + gone + ok + no_such_device + no_such_device + data(0x07104B54));
    EXPECT_EQ(answers(board, {"drv_pci_device_probe(bus=1)", read_at(1, 0, 0), read_at(1, 0, 0x04),
                              "drv_pci_get_device_bar(bdf=0x100, bar=2)"}),
              ok + data(0x08014B54) + data(0x00100006) + "0x0 address=0xf2000000 size=0x10000\n");
}

TEST(PciDriver, ProbingWhatIsThereChangesNothing) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {write_at(1, 0, 0x04, "0x0447"), "drv_pci_device_probe(bus=1)", read_at(1, 0, 0x04)}),
              ok + ok + data(0x00100447));
}

TEST(PciDriver, UnknownDevicesAndOffsets) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {read_at(3, 0, 0), read_at(1, 1, 0), read_at(256, 0, 0), read_at(1, 8, 0),
                        "drv_pci_config_read32(bus=1, device=32)", "drv_pci_config_read32(bus=1, device=1)",
                        read_at(1, 0, 2), read_at(1, 0, 0x100), write_at(1, 0, 0x100, "0"), write_at(1, 0, 6, "0"),
                        "drv_pci_device_probe(bus=3)", "drv_pci_hotplug_remove_device(bus=3)"}),
        no_such_device + no_such_device + bad_value + bad_value + bad_value + no_such_device + bad_value +
            out_of_range + out_of_range + bad_value + no_such_device + no_such_device);
    EXPECT_EQ(answers(board, {"drv_pci_hotplug_remove_device(bus=1)", read_at(1, 0, 0x100), write_at(1, 0, 0x100, "0"),
                              read_at(1, 0, 2)}),
              ok + out_of_range + out_of_range + bad_value);
}

TEST(PciDriver, CoresTellOfTheirLinks) {
    const test_board board = new_delivered("mpu_master");
    const std::string first = "{link=1 speed=3 mode=0 max_payload=256 max_read_request=512 dllp_err=0 tlp_err=0}";
    const std::string second = "{link=1 speed=2 mode=0 max_payload=128 max_read_request=512 dllp_err=0 tlp_err=0}";
    const std::string said = answers(board, {"drv_pci_get_dfx_info()"});
    EXPECT_TRUE(said.starts_with("0x0 info={core_num=2 core=[" + first + " " + second)) << said;
}

// The second core has two functions behind it: its link is down when both are gone.
TEST(PciDriver, LinkGoesDownWithTheLastDevice) {
    const test_board board = new_delivered("mpu_master");
    const std::string first = "0x0 info={core_num=2 core=[{link=1 speed=3 mode=0 max_payload=256 "
                              "max_read_request=512 dllp_err=0 tlp_err=0} ";
    EXPECT_EQ(answers(board, {"drv_pci_hotplug_remove_device(bus=2)"}), ok);
    EXPECT_TRUE(answers(board, {"drv_pci_get_dfx_info()"}).starts_with(first + "{link=1 speed=2"));
    EXPECT_EQ(answers(board, {"drv_pci_hotplug_remove_device(bus=2, function=1)"}), ok);
    EXPECT_TRUE(answers(board, {"drv_pci_get_dfx_info()"}).starts_with(first + "{link=0 speed=0"));
    EXPECT_EQ(answers(board, {"drv_pci_device_probe(bus=2, function=1)", read_at(2, 1, 0x50)}), ok + data(0x00120000));
    EXPECT_TRUE(answers(board, {"drv_pci_get_dfx_info()"}).starts_with(first + "{link=1 speed=2"));
}

TEST(PciDriver, ALinkThatDoesNotTrain) {
    const test_board board =
        new_altered("mpu_master", {{"self/sim_pci/core/0/link", "0"}, {"self/sim_pci/core/1/tlp_err", "12"}});
    const std::string said = answers(board, {"drv_pci_get_dfx_info()"});
    EXPECT_TRUE(said.starts_with("0x0 info={core_num=2 core=[{link=0 speed=0 mode=0 max_payload=256 "
                                 "max_read_request=512 dllp_err=0 tlp_err=0} {link=1 speed=2 mode=0 max_payload=128 "
                                 "max_read_request=512 dllp_err=0 tlp_err=12}"))
        << said;
}

TEST(PciDriver, StatusOfACore) {
    const std::string first = "drv_pci_get_status(core_num=0)";
    const std::string second = "drv_pci_get_status(core_num=1)";
    EXPECT_EQ(answers(new_delivered("mpu_master"), {first, second, "drv_pci_get_status(core_num=2)"}),
              "0x0 status=49\n0x0 status=33\n" + no_such_device);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_pci/core/0/link", "0"}, {"self/sim_pci/core/1/mute", "1"}}),
                      {first, second}),
              "0x0 status=0\n0x8111010f\n");
    EXPECT_EQ(answers(new_delivered("lpu"), {first}), not_supported);
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_pci_get_status(status=null)"}), null_pointer);
}

TEST(PciDriver, BoardsWithoutPciAndMissingAreas) {
    EXPECT_EQ(answers(new_delivered("lpu"), {read_at(1, 0, 0), "drv_pci_get_dfx_info()", "drv_pci_device_probe(bus=1)",
                                             "drv_pci_get_device_bar(bdf=0x100)"}),
              not_supported + not_supported + not_supported + not_supported);
    EXPECT_EQ(answers(new_delivered("mpu_slave"),
                      {"drv_pci_config_read32(bus=1, data=null)", "drv_pci_get_device_bar(bdf=0x100, address=null)",
                       "drv_pci_get_device_bar(bdf=0x100, size=null)", "drv_pci_get_dfx_info(info=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
