// The copies of a board's variables as bytes, and a store that is killed at each write of a save.
#include "sim/core/env_image.h"
#include "sim/devices/storage/flash_environment.h"
#include "tests/sim/fault_points.h"
#include "tests/sim/support.h"
#include "tests/support/thoroughness.h"

#include <gtest/gtest.h>

namespace kestro_tests {

using kestro_sim::board;
using kestro_sim::decode_env;
using kestro_sim::encode_env;
using kestro_sim::env_copy;
using kestro_sim::env_variable;

namespace {

using copy_bytes = std::vector<uint8_t>;

std::string told(const std::optional<env_copy> &copy) {
    if (!copy) {
        return "not whole";
    }
    std::string text = std::to_string(copy->generation) + ":";
    for (const env_variable &variable : copy->variables) {
        text += " " + variable.name + "=" + variable.value;
    }
    return text;
}

const env_copy sample{0x01020304, {{"a", "1"}, {"bc", ""}}};
const copy_bytes sample_head{'K', 'E', 'N', 'V', 4, 3, 2, 1, 8, 0, 0, 0};
const copy_bytes sample_text{'a', '=', '1', 0, 'b', 'c', '=', 0};

copy_bytes with_text(const std::string &text) {
    copy_bytes made = encode_env({1, {{text, ""}}});
    return made;
}

constexpr const char *slow_store = "<node name=\"store\"><entry name=\"0\"/></node>";
constexpr const char *quick_store =
    "<node name=\"store\"><entry name=\"0\"><element name=\"save_time\" value=\"0\"/></entry></node>";

test_board quick_master() {
    return new_changed("mpu_master", slow_store, quick_store);
}

// In a child that is killed sooner or later.
void set_and_save(const test_board &made, const std::string &value) {
    board simulated(made.description, made.state, made.seat);
    if (!simulated.begin_operation()) {
        throw std::runtime_error("another store");
    }
    auto variables = kestro_sim::read_environment(simulated, made.seat);
    variables.resize(2);
    variables.push_back({"a", value});
    // So that a copy has two blocks with something in them.
    for (int i = 0; i < 140; ++i) {
        variables.push_back({"filling" + std::to_string(i), std::string(240, value[0])});
    }
    kestro_sim::write_environment(simulated, made.seat, variables);
    kestro_sim::begin_saving(simulated, made.seat);
    kestro_sim::go_on_saving(simulated, made.seat);
}

std::string value_of(const std::vector<env_variable> &variables) {
    for (const env_variable &variable : variables) {
        if (variable.name == "a") {
            return variable.value;
        }
    }
    return "none";
}

// What a start would make of the flash as it stands, and whether both copies are whole.
struct found {
    std::string value;
    bool both;
};

found in_flash(const test_board &made) {
    board simulated(made.description, made.state, made.seat);
    EXPECT_TRUE(simulated.begin_operation());
    const auto main = decode_env(simulated.read_image("flash-slot9.bin", 0x80000, 0x80000));
    const auto backup = decode_env(simulated.read_image("flash-slot9.bin", 0x100000, 0x80000));
    if (!main && !backup) {
        return {"no copy is whole", false};
    }
    const bool is_main = main && (!backup || main->generation >= backup->generation);
    return {value_of(is_main ? main->variables : backup->variables), main && backup};
}

// The next run, and a start after it.
std::string after_a_start(const test_board &made) {
    board simulated(made.description, made.state, made.seat);
    EXPECT_TRUE(simulated.begin_operation());
    kestro_sim::change writes;
    kestro_sim::note_start_in_flash(simulated, writes, made.seat, kestro_sim::restart_reason::power_on, false);
    simulated.commit(writes);
    return value_of(kestro_sim::read_environment(simulated, made.seat));
}

} // namespace

TEST(EnvImage, IsHeadAndText) {
    const copy_bytes made = encode_env(sample);
    ASSERT_EQ(made.size(), 24U);
    EXPECT_EQ(copy_bytes(made.begin(), made.begin() + 12), sample_head);
    EXPECT_EQ(copy_bytes(made.begin() + 16, made.end()), sample_text);
    EXPECT_EQ(told(decode_env(made)), "16909060: a=1 bc=");
    EXPECT_EQ(told(decode_env(encode_env({7, {}}))), "7:");
}

TEST(EnvImage, WhatLiesBehindItDoesNotCount) {
    copy_bytes made = encode_env(sample);
    made.resize(100, 0xFF);
    EXPECT_EQ(told(decode_env(made)), "16909060: a=1 bc=");
}

TEST(EnvImage, EveryBitThatFlipsIsNoticed) {
    const copy_bytes made = encode_env(sample);
    for (size_t bit = 0; bit < made.size() * 8; ++bit) {
        copy_bytes changed = made;
        changed[bit / 8] = static_cast<uint8_t>(changed[bit / 8] ^ 1U << bit % 8);
        EXPECT_EQ(told(decode_env(changed)), "not whole") << bit;
    }
}

TEST(EnvImage, EveryShorterAreaIsNotWhole) {
    const copy_bytes made = encode_env(sample);
    for (size_t size = 0; size < made.size(); ++size) {
        EXPECT_EQ(told(decode_env({made.data(), size})), "not whole") << size;
    }
}

// The checksum is right; no driver writes such texts.
TEST(EnvImage, OddTextsAreNotWhole) {
    EXPECT_EQ(told(decode_env(encode_env({1, {{"", "x"}}}))), "not whole");
    EXPECT_EQ(told(decode_env(with_text(std::string(64, 'n')))), "not whole");
    EXPECT_EQ(told(decode_env(with_text(std::string(63, 'n')))), "1: " + std::string(63, 'n') + "=");
    EXPECT_EQ(told(decode_env(encode_env({1, {{"a", std::string(256, 'v')}}}))), "not whole");
    EXPECT_EQ(told(decode_env(encode_env({1, {{"a", std::string("b\0c", 3)}}}))), "not whole");
    EXPECT_EQ(told(decode_env(encode_env({1, {{"a", std::string("b\0c=d", 5)}}}))), "1: a=b c=d");
}

TEST(EnvImage, ALengthBeyondACopyIsNotFollowed) {
    std::vector<env_variable> many(60 * 1024 / 256, {"abcd", std::string(250, 'v')});
    EXPECT_EQ(told(decode_env(encode_env({1, many}))), "not whole");
    many.pop_back();
    EXPECT_TRUE(decode_env(encode_env({1, many})));
}

TEST(EnvImage, ASnapshotThatIsLostEndsTheSave) {
    const test_board made = new_delivered("mpu_master");
    board simulated(made.description, made.state, made.seat);
    ASSERT_TRUE(simulated.begin_operation());
    kestro_sim::write_environment(simulated, made.seat, {{"a", "1"}});
    kestro_sim::begin_saving(simulated, made.seat);
    EXPECT_TRUE(kestro_sim::is_saving(simulated, made.seat));
    simulated.write_image("environment-slot9.bin", 0x10000, copy_bytes(1024, 0));
    EXPECT_FALSE(kestro_sim::is_saving(simulated, made.seat));
    EXPECT_EQ(after_a_start(made), "none");
}

TEST(EnvImage, ASaveThatIsKilledAtEachWriteLeavesACopyWhole) {
    const test_board made = quick_master();
    set_and_save(made, "old");
    EXPECT_EQ(in_flash(made).value, "old");
    int torn = 0;
    int n = 1;
    for (; n < 1000 && !HasFailure(); n += long_stride()) {
        SCOPED_TRACE(n);
        const outcome end = run_with_fault(fault::killed, n, [&] { set_and_save(made, "new"); });
        const found left = in_flash(made);
        EXPECT_TRUE(left.value == "old" || left.value == "new") << left.value;
        torn += left.both ? 0 : 1;
        if (end == outcome::done) {
            EXPECT_EQ(left.value, "new");
            break;
        }
        ASSERT_EQ(end, outcome::killed);
        // What was begun goes on, and the start finds what the flash then holds.
        const std::string started = after_a_start(made);
        EXPECT_TRUE(started == "old" || started == "new") << started;
        EXPECT_TRUE(in_flash(made).both);
        set_and_save(made, "old");
        EXPECT_EQ(in_flash(made).value, "old");
        EXPECT_TRUE(in_flash(made).both);
    }
    EXPECT_GT(n, 40);
    EXPECT_GT(torn, 10 / long_stride());
}

} // namespace kestro_tests
