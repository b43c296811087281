// meth_test drv_meth_tx_pkt with a driver that calls back from its own thread: beside the program's own lines, after
// its library has been closed, and while the process ends. Real time and the real program, which the sanitized builds
// run as well.
#include <gtest/gtest.h>

#include <regex>

#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

process_result send_packet(const std::string &port, const std::string &packet, const std::string &length) {
    process_options options;
    options.environment = {
        "LD_LIBRARY_PATH=" + build_dir() + "/tests/late_packets:" + build_dir() + "/noop",
        "LD_PRELOAD=" + build_dir() + "/tests/libafter_close.so",
        // How long the sanitizer lets other threads go on at the exit.
        "TSAN_OPTIONS=atexit_sleep_ms=100",
    };
    return run_process({build_dir() + "/kestro_test", "meth_test", "drv_meth_tx_pkt", port, packet, length}, options);
}

std::string without_all(std::string text, const std::string &part, int *count) {
    *count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
        ++*count;
    }
    return text;
}

// The run took some time, which is all that may differ.
std::string untimed(const std::string &text) {
    return std::regex_replace(text, std::regex("(second:)[0-9]+"), "$1_");
}

const std::string timing = "cmd_exec used second:_\r\ncmd_exec used millisecond:_\r\n";

void expect_sent(const process_result &run, const std::string &output) {
    EXPECT_EQ(untimed(run.out), output);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(run.timed_out);
}

// The packet that comes back before the send returns.
void expect_echo(const std::string &packet, const std::string &length, const std::string &shown,
                 const std::string &block) {
    SCOPED_TRACE(packet + " of " + length);
    expect_sent(send_packet("0", packet, length), "port:0  buf_len:" + length + "\ntx_buf:" + shown +
                                                      "\r\nrecv_buf:\r\n" + block + "drv_meth_tx_pkt ret:0\n\n" +
                                                      timing);
}

} // namespace

TEST(LatePackets, BytesStandSixteenOnALine) {
    expect_echo("0123456789abcdefFEDCBA9876543210", "32", "0123456789abcdefFEDCBA9876543210",
                "test:\r\n"
                "0x300x310x320x330x340x350x360x370x380x390x610x620x630x640x650x66\r\n"
                "0x460x450x440x430x420x410x390x380x370x360x350x340x330x320x310x30\r\n");
    expect_echo("0123456789abcdef", "16", "0123456789abcdef",
                "test:\r\n0x300x310x320x330x340x350x360x370x380x390x610x620x630x640x650x66\r\n");
}

TEST(LatePackets, TheEndOfAPacketEndsNoLine) {
    expect_echo("0123456789abcdefg", "17", "0123456789abcdefg",
                "test:\r\n0x300x310x320x330x340x350x360x370x380x390x610x620x630x640x650x66\r\n0x67");
    expect_echo("0123456789abcde", "15", "0123456789abcde",
                "test:\r\n0x300x310x320x330x340x350x360x370x380x390x610x620x630x640x65");
}

TEST(LatePackets, APacketIsAsLongAsItsNumberSays) {
    expect_echo("hello", "2", "he", "test:\r\n0x680x65");
    expect_echo("hello", "8", "hello", "test:\r\n0x680x650x6c0x6c0x6f0x00x00x0");
    expect_echo("hello", "0", "", "test:\r\n");
    expect_echo("\xff\x80\x09", "3", "\xff\x80\x09", "test:\r\n0xff0x800x9");
}

TEST(LatePackets, AfterTheCloseTheyAreStillPrinted) {
    const std::string block = "test:\r\n0x610x620x630x640x650x660x670x680x690x6a0x6b0x6c0x6d0x6e0x6f0x70\r\n";
    expect_sent(send_packet("1", "abcdefghijklmnop", "16"),
                "port:1  buf_len:16\ntx_buf:abcdefghijklmnop\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n" + block +
                    block + timing);
}

TEST(LatePackets, OnceTheOutputHasEndedNothingIsPrinted) {
    expect_sent(send_packet("2", "abcdefghijklmnop", "16"),
                "port:2  buf_len:16\ntx_buf:abcdefghijklmnop\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n" + timing);
}

TEST(LatePackets, WithoutEndTheyTearNoLineAndAreNotTorn) {
    const std::string block = "test:\r\n"
                              "0x770x690x740x680x6f0x750x740x200x650x6e0x640x2c0x200x770x690x74\r\n"
                              "0x680x6f0x750x740x200x650x6e0x640x2c0x200x770x690x740x680x6f0x75\r\n";
    for (int i = 0; i < 10; ++i) {
        process_result run = send_packet("3", "hello", "5");
        int blocks = 0;
        run.out = without_all(run.out, block, &blocks);
        EXPECT_GE(blocks, 3);
        expect_sent(run, "port:3  buf_len:5\ntx_buf:hello\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n" + timing);
    }
}
