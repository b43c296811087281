// The reserved memory: where its parts are, and that a process reads them where they are mapped.
#include "tests/sim/support.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string damaged = "0x81110109\n";
const std::string no_board = "0x8111010a\n";

std::vector<std::string> places_of(const std::string &type) {
    return {"drv_highmem_get_phys_addr(type=" + type + ")", "drv_highmem_get_len(type=" + type + ")"};
}

const std::string set_odd = "drv_memenv_set(name=\"odd\", value=\"call\")";

} // namespace

TEST(HighMemory, PartsLieWithinTheMemory) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"nb_get_himem_info()"}), "0x0 start=0x70000000 length=0x20000\n");
    EXPECT_EQ(answers(board, places_of("0x100")), "0x0 phys_addr=0x70000000\n0x0 len=16384\n");
    EXPECT_EQ(answers(board, places_of("0x10")), "0x0 phys_addr=0x70010000\n0x0 len=16384\n");
    EXPECT_EQ(answers(board, places_of("1")), "0x0 phys_addr=0x7001c000\n0x0 len=16384\n");
    EXPECT_EQ(answers(new_delivered("lpu"), places_of("2")), "0x0 phys_addr=0x38014000\n0x0 len=32768\n");
}

TEST(HighMemory, EveryTypeHasAnAddressAndNoOtherHas) {
    const test_board board = new_delivered("mpu_slave");
    for (const std::string type : {"0x100", "0x14", "0x13", "0x12", "0x11", "0x10", "2", "1"}) {
        EXPECT_EQ(odd_calls(board, {"show_memory", type, "2"}).out, "00 00 0x0\n") << type;
    }
    for (const std::string type : {"0", "3", "0x15", "0x101", "0xffffffff"}) {
        EXPECT_EQ(
            answers(board, {"drv_highmem_get_base_addr(type=" + type + ")", "drv_highmem_get_len(type=" + type + ")",
                            "drv_highmem_get_phys_addr(type=" + type + ")"}),
            no_such_device + no_such_device + no_such_device)
            << type;
    }
}

TEST(HighMemory, InitAndExitInAnyOrder) {
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_highmem_exit()", "drv_highmem_init()", "drv_highmem_init()",
                                                    "drv_highmem_exit()", "drv_highmem_exit()"}),
              ok + ok + ok + ok + ok);
}

// "KENV" is what the drivers put there.
TEST(HighMemory, WhatOneRunWritesTheNextOneReads) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(odd_calls(master, {"show_memory", "16", "4"}).out, "00 00 00 00 0x0\n");
    EXPECT_EQ(answers(master, {set_odd}), ok);
    EXPECT_EQ(odd_calls(master, {"show_memory", "16", "4"}).out, "4b 45 4e 56 0x0\n");
    EXPECT_EQ(odd_calls(slave, {"show_memory", "16", "4"}).out, "00 00 00 00 0x0\n");
}

TEST(HighMemory, AMappedPartShowsWhatIsWrittenLater) {
    EXPECT_EQ(odd_calls(new_delivered("mpu_master"), {"remap_memory", "16"}).out, "0 then 75, kept, again 75 0x0\n");
}

// Where it is described it is told, but nothing of it is mapped.
TEST(HighMemory, PartsBeyondTheMemory) {
    const auto of_part = [](const std::string &start, const std::string &length) {
        return answers(
            new_altered("mpu_master",
                        {{"self/sim_himem/part/1/start", start}, {"self/sim_himem/part/1/length", length}}),
            {"drv_highmem_get_phys_addr(type=1)", "drv_highmem_get_len(type=1)", "drv_highmem_get_base_addr(type=1)"});
    };
    EXPECT_EQ(of_part("0x6fffffff", "1"), "0x0 phys_addr=0x6fffffff\n0x0 len=1\n" + out_of_range);
    EXPECT_EQ(of_part("0x7001ffff", "2"), "0x0 phys_addr=0x7001ffff\n0x0 len=2\n" + out_of_range);
    EXPECT_EQ(of_part("0x70020001", "0"), "0x0 phys_addr=0x70020001\n0x0 len=0\n" + out_of_range);
    EXPECT_EQ(of_part("0x7fffffffffffffff", "0xffffffff"),
              "0x0 phys_addr=0x7fffffffffffffff\n0x0 len=0xffffffff\n" + out_of_range);
    EXPECT_EQ(of_part("0x70000000", "0xffffffff"), "0x0 phys_addr=0x70000000\n0x0 len=0xffffffff\n" + out_of_range);
    EXPECT_EQ(odd_calls(new_altered("mpu_master", {{"self/sim_himem/part/1/start", "0x7001ffff"},
                                                   {"self/sim_himem/part/1/length", "1"}}),
                        {"show_memory", "1", "1"})
                  .out,
              "00 0x0\n");
}

TEST(HighMemory, ABoardThatKeepsNoMemory) {
    const test_board board =
        new_board(scratch_file("plain.xml", "<board name=\"plain\" like=\"mpu\" slot=\"9\">"
                                            "<module name=\"sim_himem\" remove=\"yes\"/><module name=\"sim_storage\">"
                                            "<node name=\"image\"><entry name=\"himem\" remove=\"yes\"/></node>"
                                            "</module></board>"));
    EXPECT_EQ(answers(board, {"nb_get_himem_info()", "drv_highmem_init()", "drv_highmem_exit()",
                              "drv_highmem_get_base_addr(type=16)", "drv_highmem_get_len(type=16)",
                              "drv_highmem_get_phys_addr(type=16)"}),
              not_supported + not_supported + ok + not_supported + not_supported + not_supported);
    EXPECT_EQ(answers(board, {"drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10)", "drv_memenv_save()",
                              "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})"}),
              not_supported + not_supported + ok);
}

// A read behind the end of a file that is mapped would be a signal.
TEST(HighMemory, AnImageThatIsGoneOrTooShort) {
    const test_board board = new_delivered("mpu_master");
    const std::string image = board.state + "/images/himem-slot9.bin";
    std::filesystem::resize_file(image, 100);
    const process_result cut = call_drivers(board, {"drv_highmem_init()", "drv_highmem_get_base_addr(type=16)"});
    EXPECT_EQ(cut.out, damaged + damaged);
    EXPECT_EQ(cut.err,
              "kestro_sim: " + image + ": has another length than when it was made; make a new state with --reset\n");
    std::filesystem::remove(image);
    const process_result gone = call_drivers(board, {"drv_highmem_init()"});
    EXPECT_EQ(gone.out, no_board);
    EXPECT_EQ(gone.err, "kestro_sim: " + image +
                            ": cannot be mapped (No such file or directory); choose another directory with --state\n");
}

} // namespace kestro_tests
