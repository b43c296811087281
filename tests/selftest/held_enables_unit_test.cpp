// A signal that comes while an enable of the power watch or of the dying gasp holds a test's value waits until the
// board has its own again.
#include <gtest/gtest.h>

#include <csignal>
#include <vector>

#include "drv_basic/protection/drv_dyinggasp.h"
#include "drv_basic/protection/drv_woffline.h"
#include "selftest/environment/dyinggasp.h"
#include "selftest/environment/woffline.h"
#include "tests/selftest/fake_drivers.h"

using namespace kestro_tests;

namespace {

// One enable stands for each of them: no check touches two.
struct fake_enable {
    uint32_t value = 1;
    uint32_t refusal = 0; // of the first write
    uint32_t read_back_result = 0;
    std::vector<uint32_t> writes;
};

fake_enable enable;

volatile sig_atomic_t signals_seen = 0;
volatile sig_atomic_t writes_at_signal = 0;

void note_signal(int) {
    signals_seen = signals_seen + 1;
    writes_at_signal = static_cast<sig_atomic_t>(enable.writes.size());
}

// The operator ends the run at the first write.
uint32_t write_enable(uint32_t value) {
    enable.writes.push_back(value);
    if (enable.writes.size() > 1) {
        enable.value = value;
        return 0;
    }
    raise(SIGTERM);
    if (enable.refusal == 0) {
        enable.value = value;
    }
    return enable.refusal;
}

uint32_t read_enable(uint32_t *value) {
    *value = enable.value;
    return enable.writes.empty() ? 0 : enable.read_back_result;
}

class HeldEnablesTest : public testing::Test {
  protected:
    void SetUp() override {
        begin_anew();
        struct sigaction note = {};
        note.sa_handler = note_signal;
        sigaction(SIGTERM, &note, &before_);
    }
    void TearDown() override {
        sigaction(SIGTERM, &before_, nullptr);
        begin_anew();
    }

    static void begin_anew() {
        drivers() = {};
        enable = {};
        signals_seen = 0;
    }

    // The signal came once, after so many writes, and the next one comes at once.
    static void expect_held_until(int writes) {
        EXPECT_EQ(signals_seen, 1);
        EXPECT_EQ(writes_at_signal, writes);
        raise(SIGTERM);
        EXPECT_EQ(signals_seen, 2);
    }

    report_sink sink() {
        fill_ = 0;
        return {report_.data(), &fill_};
    }

  private:
    struct sigaction before_ = {};
    std::vector<char> report_ = std::vector<char>(report_capacity);
    uint32_t fill_ = 0;
};

int check_side(uint32_t inst_id, report_sink sink) {
    return check_woffline_side(inst_id, 0, sink);
}

constexpr int (*inverting_checks[])(uint32_t, report_sink) = {check_side, check_woffline_interrupt,
                                                              check_woffline_isolation};

} // namespace

uint32_t drv_woffline_get_state(uint32_t, uint32_t, uint32_t *) {
    return 0;
}

uint32_t drv_woffline_get_peer_state(uint32_t, uint32_t, uint32_t *) {
    return 0;
}

uint32_t drv_woffline_get_en_state(uint32_t, uint32_t *value) {
    return read_enable(value);
}

uint32_t drv_woffline_set_en_state(uint32_t, uint32_t value) {
    return write_enable(value);
}

uint32_t drv_woffline_get_irq_enable(uint32_t, uint32_t *value) {
    return read_enable(value);
}

uint32_t drv_woffline_set_irq_enable(uint32_t, uint32_t value) {
    return write_enable(value);
}

uint32_t drv_woffline_get_sfu_isolate_en(uint32_t, uint32_t *value) {
    return read_enable(value);
}

uint32_t drv_woffline_set_sfu_isolate_en(uint32_t, uint32_t value) {
    return write_enable(value);
}

uint32_t drv_dyinggasp_set_simulation_enable(uint32_t, uint32_t value) {
    return write_enable(value);
}

uint32_t drv_dyinggasp_set_enable(uint32_t, uint32_t, uint32_t value) {
    return write_enable(value);
}

TEST_F(HeldEnablesTest, AnInvertedEnableIsRestoredFirst) {
    for (const auto check : inverting_checks) {
        begin_anew();
        EXPECT_EQ(check(0xffffffff, sink()), 0);
        EXPECT_EQ(enable.writes, (std::vector<uint32_t>{0, 1}));
        expect_held_until(2);
    }
}

TEST_F(HeldEnablesTest, OneThatCannotBeReadBackToo) {
    for (const auto check : inverting_checks) {
        begin_anew();
        enable.read_back_result = 0x3f;
        EXPECT_EQ(check(0xffffffff, sink()), -1);
        EXPECT_EQ(enable.writes, (std::vector<uint32_t>{0, 1}));
        expect_held_until(2);
    }
}

TEST_F(HeldEnablesTest, OneThatRefusesItsTestValueHasNothingToRestore) {
    for (const auto check : inverting_checks) {
        begin_anew();
        enable.refusal = 0x2f;
        EXPECT_EQ(check(0xffffffff, sink()), -1);
        EXPECT_EQ(enable.writes, (std::vector<uint32_t>{0}));
        expect_held_until(1);
    }
}

TEST_F(HeldEnablesTest, DyingGaspIsLeftEnabledFirst) {
    for (const uint32_t refusal : {0U, 0x1fU}) {
        begin_anew();
        enable.refusal = refusal;
        drivers().entry_num = 1;
        EXPECT_EQ(check_dyinggasp_simulation(0xffffffff, sink()), refusal == 0 ? 0 : -1);
        EXPECT_EQ(enable.writes, (std::vector<uint32_t>{1, 0, 1}));
        expect_held_until(3);
        begin_anew();
        enable.refusal = refusal;
        drivers().entry_num = 1;
        drivers().elements["dyinggasp_mng/dyinggasp_enable/entry0/id"] = 2;
        EXPECT_EQ(check_dyinggasp_cards(0xffffffff, sink()), refusal == 0 ? 0 : -1);
        EXPECT_EQ(enable.writes, (std::vector<uint32_t>{1, 0, 1}));
        expect_held_until(3);
    }
}
