// Power that goes, or a kill, at each write that a load makes: the logic is the old one, the new one, or that of an
// FPGA that has none, and the next load mends that.
#include "sim/devices/chips/logic_load.h"

#include "sim/devices/management/restart.h"
#include "tests/sim/fault_points.h"
#include "tests/sim/support.h"
#include "tests/support/logic_image.h"
#include "tests/support/thoroughness.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

namespace logic_load = kestro_sim::logic_load;
namespace logic_chip = kestro_sim::logic_chip;
using logic_device = kestro_sim::device_of<logic_chip::family>;

std::vector<uint8_t> image_of(uint32_t part, uint32_t version) {
    const std::string image = image_bytes({.part = part, .version = version});
    return {image.begin(), image.end()};
}

// The work on the master's chip, in one process.
void on_chip(const test_board &made, uint32_t id,
             const std::function<void(kestro_sim::board &, const logic_device &)> &work) {
    kestro_sim::board simulated(made.description, made.state, made.seat);
    if (!simulated.begin_operation()) {
        throw std::runtime_error("another store");
    }
    work(simulated, kestro_sim::board::at<logic_chip::family>(made.seat, id));
}

void load_fpga(const test_board &made, uint32_t version) {
    on_chip(made, 1, [&](kestro_sim::board &simulated, const logic_device &chip) {
        logic_load::finish_fpga(simulated, chip,
                                logic_load::begin_fpga(simulated, chip, image_of(0x00F90001, version)));
    });
}

void load_by_test_port(const test_board &made, uint32_t version) {
    on_chip(made, 0, [&](kestro_sim::board &simulated, const logic_device &chip) {
        logic_load::finish_by_restart(simulated, chip,
                                      logic_load::begin_cpld(simulated, chip, image_of(0x00C50001, version)));
    });
}

// "0x300", or "no logic".
std::string logic_of(const test_board &made, uint32_t id) {
    std::string found;
    on_chip(made, id, [&](kestro_sim::board &simulated, const logic_device &chip) {
        try {
            logic_chip::need_logic(simulated, chip);
            found = std::to_string(logic_chip::read_version(simulated, chip)) + " of day " +
                    std::to_string(logic_chip::read_build_day(simulated, chip));
        } catch (const kestro_sim::refusal &) {
            found = "no logic";
        }
    });
    return found;
}

uint32_t latest_reason(const test_board &made) {
    uint32_t reason = 0;
    on_chip(made, 0, [&](kestro_sim::board &simulated, const logic_device &) {
        reason = simulated.get(kestro_sim::board::at<kestro_sim::reset_reason::family>(made.seat),
                               kestro_sim::reset_reason::reason);
    });
    return reason;
}

} // namespace

TEST(LogicLoadFault, AnFpgaIsLoadedOrHasNoLogic) {
    const test_board made = new_delivered("mpu_master");
    load_fpga(made, 1);
    int without = 0;
    for (int n = 1; n < 1000 && !HasFailure(); n += stride()) {
        SCOPED_TRACE(n);
        const outcome end = run_with_fault(fault::killed, n, [&] { load_fpga(made, 2); });
        const std::string found = logic_of(made, 1);
        if (end == outcome::done) {
            EXPECT_EQ(found, "2 of day 10");
            break;
        }
        EXPECT_TRUE(found == "1 of day 10" || found == "no logic" || found == "2 of day 10") << found;
        without += found == "no logic" ? 1 : 0;
        load_fpga(made, 1);
        EXPECT_EQ(logic_of(made, 1), "1 of day 10");
    }
    EXPECT_GT(without, 0);
}

// New logic and restart come together.
TEST(LogicLoadFault, TheTestPortRestartsWithNewLogicOrNotAtAll) {
    const test_board made = new_delivered("mpu_master");
    int before = 0;
    for (int n = 1; n < 1000 && !HasFailure(); n += stride()) {
        SCOPED_TRACE(n);
        EXPECT_EQ(latest_reason(made), 1U);
        const outcome end = run_with_fault(fault::killed, n, [&] { load_by_test_port(made, 0x0109); });
        const bool is_new = logic_of(made, 0) == "265 of day 10";
        EXPECT_EQ(logic_of(made, 0), is_new ? "265 of day 10" : "263 of day 14");
        EXPECT_EQ(latest_reason(made), is_new ? 4U : 1U);
        if (is_new) {
            EXPECT_TRUE(end == outcome::done || before > 0);
            break;
        }
        ++before;
    }
    EXPECT_GT(before, 1);
}

} // namespace kestro_tests
