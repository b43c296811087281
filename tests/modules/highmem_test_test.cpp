// highmem_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include <vector>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// What board support and driver answer of one region.
struct placed_region {
    std::string type;
    std::string start;
    std::string length;
};

std::string placed(const std::vector<placed_region> &regions) {
    std::string script;
    for (const placed_region &region : regions) {
        script += "drv_highmem_get_phys_addr(type=" + region.type + ") = 0 phys_addr=" + region.start +
                  "\ndrv_highmem_get_len(type=" + region.type + ") = 0 len=" + region.length + "\n";
    }
    return script;
}

std::string area(const std::string &start, const std::string &length) {
    return "nb_get_himem_info() = 0 start=" + start + " length=" + length + "\ndrv_highmem_init() = 0\n";
}

std::string pass(const std::string &type, const std::string &start, const std::string &end) {
    return "Highmem test [Type:" + type + "][" + start + " : " + end + "]..............................PASS.\n";
}

std::string fail(const std::string &type) {
    return "Highmem test [Type:" + type + "] ..............................Fail.\n";
}

// The eight regions of a type each 0x100 bytes long, but for those that the test places.
const std::vector<placed_region> in_order = {
    {"0x100", "0x1000", "0x100"}, {"0x14", "0x1100", "0x100"}, {"0x13", "0x1200", "0x80"}, {"0x12", "0x1300", "0x100"},
    {"0x11", "0x1400", "0x100"},  {"0x10", "0x1500", "0x100"}, {"0x2", "0x1600", "0x100"}, {"0x1", "0x1700", "0x100"}};

std::string in_order_but(size_t which, const std::string &start, const std::string &length) {
    std::vector<placed_region> regions = in_order;
    regions[which].start = start;
    regions[which].length = length;
    return placed(regions);
}

// Of the regions in order, from one to another.
std::string passes(size_t from, size_t to) {
    static const char *const ends[] = {"0x1100", "0x1200", "0x1280", "0x1400", "0x1500", "0x1600", "0x1700", "0x1800"};
    std::string lines;
    for (size_t i = from; i <= to; ++i) {
        lines += pass(in_order[i].type, in_order[i].start, ends[i]);
    }
    return lines;
}

const std::string conflict = "highmem_test drv_highmem_test_addr_conflict";

} // namespace

TEST(HighmemTest, UsageListsTheSubCommandsInOrder) {
    expect_run("highmem_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_highmem_get_base_addr type\n"
               " drv_highmem_get_len type\n"
               " drv_highmem_get_phys_addr type\n"
               " drv_highmem_init\n"
               " drv_highmem_exit\n"
               " drv_highmem_test_addr_conflict\n",
               0);
}

TEST(HighmemTest, GetBaseAddr) {
    expect_success("highmem_test drv_highmem_get_base_addr 0x10",
                   "drv_highmem_init() = 0\ndrv_highmem_get_base_addr(type=16) = 0 base_addr=0xb6f01000",
                   "type: 16\n\nbase_addr: 0xb6f01000\n\n");
    expect_success("highmem_test drv_highmem_get_base_addr region",
                   "drv_highmem_init() = 0\ndrv_highmem_get_base_addr(type=0) = 0 base_addr=0",
                   "type: 0\n\nbase_addr: 0x0\n\n");
    expect_success("highmem_test drv_highmem_get_base_addr 1",
                   "drv_highmem_init() = 0xffffffff\ndrv_highmem_get_base_addr(type=1) = 0 base_addr=0x1000",
                   "type: 1\n\ndrv_highmem_init ret:-1\n\nbase_addr: 0x1000\n\n");
    expect_failure("highmem_test drv_highmem_get_base_addr 0xffffffff",
                   "drv_highmem_init() = 0\ndrv_highmem_get_base_addr(type=0xffffffff) = 0x811101a4",
                   "type: 4294967295\n\nbase_addr: 0x0\n\n");
    expect_failure("highmem_test drv_highmem_get_base_addr", "", "invalid arg num\n");
    expect_failure("highmem_test drv_highmem_get_base_addr 1 2", "", "invalid arg num\n");
}

TEST(HighmemTest, GetLen) {
    expect_success("highmem_test drv_highmem_get_len 0x100",
                   "drv_highmem_init() = 0\ndrv_highmem_get_len(type=256) = 0 len=0xfffffff0",
                   "type: 256\n\nlen: 0xfffffff0\n\n");
    expect_success("highmem_test drv_highmem_get_len 020",
                   "drv_highmem_init() = 0x811101a4\ndrv_highmem_get_len(type=16) = 0 len=1",
                   "type: 16\n\ndrv_highmem_init ret:-2129591900\n\nlen: 0x1\n\n");
    expect_success("highmem_test drv_highmem_get_len region",
                   "drv_highmem_init() = 0\ndrv_highmem_get_len(type=0) = 0 len=0", "type: 0\n\nlen: 0x0\n\n");
    expect_failure("highmem_test drv_highmem_get_len 3",
                   "drv_highmem_init() = 0\ndrv_highmem_get_len(type=3) = 0x81110103", "type: 3\n\nlen: 0x0\n\n");
    expect_failure("highmem_test drv_highmem_get_len", "", "invalid arg num\n");
    expect_failure("highmem_test drv_highmem_get_len 1 2", "", "invalid arg num\n");
}

TEST(HighmemTest, GetPhysAddr) {
    expect_success("highmem_test drv_highmem_get_phys_addr 2",
                   "drv_highmem_init() = 0\ndrv_highmem_get_phys_addr(type=2) = 0 phys_addr=0x1234567890abcdef",
                   "type: 2\n\nphys_addr: 0x1234567890abcdef\n\n");
    expect_success("highmem_test drv_highmem_get_phys_addr region",
                   "drv_highmem_init() = 0\ndrv_highmem_get_phys_addr(type=0) = 0 phys_addr=0",
                   "type: 0\n\nphys_addr: 0x0\n\n");
    expect_success("highmem_test drv_highmem_get_phys_addr 1",
                   "drv_highmem_init() = 5\ndrv_highmem_get_phys_addr(type=1) = 0 phys_addr=0x70000000",
                   "type: 1\n\ndrv_highmem_init ret:5\n\nphys_addr: 0x70000000\n\n");
    expect_failure("highmem_test drv_highmem_get_phys_addr 3",
                   "drv_highmem_init() = 0\ndrv_highmem_get_phys_addr(type=3) = 1", "type: 3\n\nphys_addr: 0x0\n\n");
    expect_failure("highmem_test drv_highmem_get_phys_addr", "", "invalid arg num\n");
    expect_failure("highmem_test drv_highmem_get_phys_addr 1 2", "", "invalid arg num\n");
}

TEST(HighmemTest, InitAndExit) {
    for (const std::string step : {"drv_highmem_init", "drv_highmem_exit"}) {
        expect_success("highmem_test " + step, step + "() = 0", "no arg \n" + step + " ret:0\n\n");
        expect_failure("highmem_test " + step, step + "() = 0x811101a4", "no arg \n" + step + " ret:-2129591900\n\n");
        expect_failure("highmem_test " + step + " 1", "", "invalid arg num\n");
    }
}

// The first and the second touch, as most do; in front of the fourth there is a gap. The last ends with the area.
TEST(HighmemConflictTest, RegionsInOrderPass) {
    expect_success(conflict, area("0x1000", "0x800") + placed(in_order), passes(0, 7));
    expect_success(conflict + " 1 2 3", area("0x1000", "0x800") + placed(in_order), passes(0, 7));
}

TEST(HighmemConflictTest, AddressesAreThoseOfA64BitMachine) {
    const std::string gib = "0x40000000";
    expect_success(conflict,
                   area("0xfffffff000000000", "0x200000000") + placed({{"0x100", "0xfffffff000000000", gib},
                                                                       {"0x14", "0xfffffff040000000", gib},
                                                                       {"0x13", "0xfffffff080000000", gib},
                                                                       {"0x12", "0xfffffff0c0000000", gib},
                                                                       {"0x11", "0xfffffff100000000", gib},
                                                                       {"0x10", "0xfffffff140000000", gib},
                                                                       {"0x2", "0xfffffff180000000", gib},
                                                                       {"0x1", "0xfffffff1c0000000", gib}}),
                   pass("0x100", "0xfffffff000000000", "0xfffffff040000000") +
                       pass("0x14", "0xfffffff040000000", "0xfffffff080000000") +
                       pass("0x13", "0xfffffff080000000", "0xfffffff0c0000000") +
                       pass("0x12", "0xfffffff0c0000000", "0xfffffff100000000") +
                       pass("0x11", "0xfffffff100000000", "0xfffffff140000000") +
                       pass("0x10", "0xfffffff140000000", "0xfffffff180000000") +
                       pass("0x2", "0xfffffff180000000", "0xfffffff1c0000000") +
                       pass("0x1", "0xfffffff1c0000000", "0xfffffff200000000"));
}

TEST(HighmemConflictTest, AnAreaThatIsNotKnownIsTheOnlyFailure) {
    expect_failure(conflict, "nb_get_himem_info() = 0x811101a4 start=0x1000 length=0x800",
                   "Highmem test : nb_get_himem_info..............................Fail.\n");
}

TEST(HighmemConflictTest, GoesOnWithoutItsInit) {
    expect_success(conflict,
                   "nb_get_himem_info() = 0 start=0x1000 length=0x800\ndrv_highmem_init() = 1\n" + placed(in_order),
                   "Highmem test : drv_highmem_init ..............................Fail.\n" + passes(0, 7));
}

// A region that cannot be asked for is left out: what lies above it is compared with what lies below it.
TEST(HighmemConflictTest, RegionsThatCannotBeAskedFor) {
    expect_success(
        conflict,
        area("0x1000", "0x800") +
            "drv_highmem_get_phys_addr(type=0x14) = 0x811101a4 phys_addr=0x1100\n"
            "drv_highmem_get_len(type=0x2) = 1 len=0x100\n" +
            placed({{"0x100", "0x1000", "0x100"},
                    {"0x13", "0x1080", "0x80"},
                    {"0x12", "0x1300", "0x100"},
                    {"0x11", "0x1400", "0x100"},
                    {"0x10", "0x1500", "0x100"}}) +
            "drv_highmem_get_phys_addr(type=0x2) = 0 phys_addr=0x1600\n" + placed({{"0x1", "0x1700", "0x100"}}),
        pass("0x100", "0x1000", "0x1100") + "Highmem test [Type:0x14] : get addr..............................Fail.\n" +
            fail("0x13") + " --- this type start addr = 0x1080, but pre type end addr = 0x1100.\n" + passes(3, 5) +
            "Highmem test [Type:0x2] : get len..............................Fail.\n" + passes(7, 7));
}

TEST(HighmemConflictTest, NothingCanBeAskedFor) {
    std::string lines;
    for (const std::string type : {"0x100", "0x14", "0x13", "0x12", "0x11", "0x10", "0x2", "0x1"}) {
        lines += "Highmem test [Type:" + type + "] : get addr..............................Fail.\n";
    }
    expect_success(conflict, area("0x1000", "0x800") + "drv_highmem_get_phys_addr = 1", lines);
}

// The end that counts stays that of the region below: the one above touches it and passes.
TEST(HighmemConflictTest, OverlapWithTheRegionBelow) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(1, "0x10ff", "0x200"),
                   pass("0x100", "0x1000", "0x1100") + fail("0x14") +
                       " --- this type start addr = 0x10ff, but pre type end addr = 0x1100.\n" + passes(2, 7));
}

TEST(HighmemConflictTest, OverlapWithTheRegionAbove) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(1, "0x1100", "0x101"),
                   pass("0x100", "0x1000", "0x1100") + pass("0x14", "0x1100", "0x1201") + fail("0x13") +
                       " --- this type start addr = 0x1200, but pre type end addr = 0x1201.\n" + passes(3, 7));
}

TEST(HighmemConflictTest, RegionsBelowAndAboveTheArea) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(0, "0xfff", "0x100"),
                   fail("0x100") +
                       " --- highmem start addr = 0x1000, highmem end addr = 0x1800, this type start addr = 0xfff.\n" +
                       passes(1, 7));
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(7, "0x1801", "0"),
                   passes(0, 6) + fail("0x1") +
                       " --- highmem start addr = 0x1000, highmem end addr = 0x1800, this type start addr = 0x1801.\n");
}

TEST(HighmemConflictTest, ARegionPastTheEnd) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(7, "0x1700", "0x101"),
                   passes(0, 6) + fail("0x1") +
                       " --- highmem start addr = 0x1000, highmem end addr = 0x1800, this type end addr = 0x1801.\n");
}

// It begins where the area ends, and has nothing.
TEST(HighmemConflictTest, AnEmptyRegionAtTheEndPasses) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(7, "0x1800", "0"),
                   passes(0, 6) + pass("0x1", "0x1800", "0x1800"));
}

// Of the reasons the first: outside, past the end, overlap.
TEST(HighmemConflictTest, OneReasonIsTold) {
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(1, "0x1080", "0x1000"),
                   pass("0x100", "0x1000", "0x1100") + fail("0x14") +
                       " --- highmem start addr = 0x1000, highmem end addr = 0x1800, this type end addr = 0x2080.\n" +
                       passes(2, 7));
    expect_success(conflict, area("0x1000", "0x800") + in_order_but(1, "0x80", "0x10000"),
                   pass("0x100", "0x1000", "0x1100") + fail("0x14") +
                       " --- highmem start addr = 0x1000, highmem end addr = 0x1800, this type start addr = 0x80.\n" +
                       passes(2, 7));
}

// An area up to the last address: the region above wraps to a small end.
TEST(HighmemConflictTest, ARegionThatReachesRoundTheEndOfAllAddresses) {
    expect_success(conflict,
                   area("0xffffffff00000000", "0xffffffff") + "drv_highmem_get_phys_addr(type=0x100) = 0 "
                                                              "phys_addr=0xffffffff00000000\n"
                                                              "drv_highmem_get_len(type=0x100) = 0 len=0xffffffff\n"
                                                              "drv_highmem_get_phys_addr(type=0x14) = 0 "
                                                              "phys_addr=0xffffffffffffffff\n"
                                                              "drv_highmem_get_len(type=0x14) = 0 len=1\n"
                                                              "drv_highmem_get_phys_addr = 1",
                   pass("0x100", "0xffffffff00000000", "0xffffffffffffffff") + fail("0x14") +
                       " --- highmem start addr = 0xffffffff00000000, highmem end addr = 0xffffffffffffffff, this "
                       "type end addr = 0x0.\n"
                       "Highmem test [Type:0x13] : get addr..............................Fail.\n"
                       "Highmem test [Type:0x12] : get addr..............................Fail.\n"
                       "Highmem test [Type:0x11] : get addr..............................Fail.\n"
                       "Highmem test [Type:0x10] : get addr..............................Fail.\n"
                       "Highmem test [Type:0x2] : get addr..............................Fail.\n"
                       "Highmem test [Type:0x1] : get addr..............................Fail.\n");
}

// The area itself reaches round: nothing lies between a start and an end that is below it.
TEST(HighmemConflictTest, AnAreaThatReachesRoundTheEndOfAllAddresses) {
    expect_success(conflict,
                   area("0xffffffffffffff00", "0x200") + placed({{"0x100", "0xffffffffffffff00", "0x80"}}) +
                       "drv_highmem_get_phys_addr = 1",
                   fail("0x100") + " --- highmem start addr = 0xffffffffffffff00, highmem end addr = 0x100, this type "
                                   "start addr = 0xffffffffffffff00.\n"
                                   "Highmem test [Type:0x14] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x13] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x12] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x11] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x10] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x2] : get addr..............................Fail.\n"
                                   "Highmem test [Type:0x1] : get addr..............................Fail.\n");
}
