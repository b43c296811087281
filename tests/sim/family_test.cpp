// What is said of device families and register spaces is sound, and the documentation shows it.
#include "sim/core/catalogue.h"
#include "sim/core/nearest.h"
#include "sim/core/register_table.h"
#include "sim/core/registers.h"
#include "tests/support/process.h"

#include <bit>
#include <gtest/gtest.h>
#include <set>

namespace kestro_tests {

namespace {

using kestro_sim::all_families;
using kestro_sim::all_spaces;
using kestro_sim::device_family;
using kestro_sim::need;
using kestro_sim::reg;

std::string name_of(const device_family &family) {
    return std::string(family.module) + "/" + family.node;
}

uint32_t all_bits(uint32_t width) {
    return width == 32 ? UINT32_MAX : (1U << width) - 1;
}

void expect_sound(const kestro_sim::register_space &space, const kestro_sim::space_field &field,
                  const std::string &where) {
    EXPECT_NE(field.mask, 0U) << where;
    EXPECT_EQ(field.mask & ~all_bits(space.width), 0U) << where;
    const uint32_t from_bit_0 = field.mask >> std::countr_zero(field.mask);
    EXPECT_EQ(from_bit_0 & (from_bit_0 + 1), 0U) << where << ": bits with a gap";
    EXPECT_TRUE(field.family->has(*field.bound)) << where;
    EXPECT_FALSE(field.bound->is_text()) << where;
    EXPECT_TRUE(field.access == kestro_sim::bus::read_only || field.bound->changed_by == kestro_sim::writer::driver)
        << where << ": the bus writes what drivers may not";
}

} // namespace

TEST(Families, HaveTheirNodesForThemselves) {
    std::set<std::string> names;
    for (const device_family *family : all_families()) {
        EXPECT_TRUE(names.insert(name_of(*family)).second) << name_of(*family);
        EXPECT_TRUE(std::string_view(family->module).starts_with("sim_")) << family->module;
        EXPECT_EQ(kestro_sim::find_family(family->module, family->node), family);
    }
    EXPECT_GT(names.size(), 30U);
}

TEST(Families, SayTheirRegistersInFull) {
    for (const device_family *family : all_families()) {
        std::set<std::string> names;
        for (size_t i = 0; i < family->count; ++i) {
            const reg &which = *family->list[i];
            const std::string where = name_of(*family) + "/" + which.name;
            EXPECT_TRUE(names.insert(which.name).second) << where << " is there twice";
            EXPECT_NE(std::string(which.meaning), "") << where;
            EXPECT_TRUE(which.is_text() ? which.text_max > 0 : which.least < which.most) << where;
            EXPECT_TRUE(which.needed != need::reset || kestro_sim::is_in_range(which, which.reset_value)) << where;
        }
    }
}

TEST(RegisterSpaces, AreLaidOutWithoutOverlap) {
    for (const auto *space : all_spaces()) {
        uint64_t next = 0;
        for (const auto &which : space->registers) {
            const std::string where = std::string(space->name) + "/" + which.name;
            EXPECT_GE(which.address, next) << where;
            next = uint64_t{which.address} + which.count;
            EXPECT_LE(next, space->size) << where;
            EXPECT_EQ((which.reset_value | which.read_only | which.clear_by_one) & ~all_bits(space->width), 0U)
                << where;
        }
    }
}

TEST(RegisterSpaces, BindTheirFieldsToRegisters) {
    for (const auto *space : all_spaces()) {
        for (const auto &which : space->registers) {
            uint32_t taken = which.read_only | which.clear_by_one;
            for (const auto &field : which.fields) {
                const std::string where = std::string(space->name) + "/" + which.name;
                expect_sound(*space, field, where);
                EXPECT_EQ(taken & field.mask, 0U) << where << ": bits with two owners";
                taken |= field.mask;
            }
        }
    }
}

TEST(Registers, AreWrittenAndReadByPeople) {
    constexpr reg celsius = reg::number("celsius", -40, 125, "C", "x");
    EXPECT_EQ(kestro_sim::read_value(celsius, "-12"), static_cast<uint64_t>(-12));
    EXPECT_EQ(kestro_sim::read_value(celsius, "0xfffffff4"), static_cast<uint64_t>(-12));
    EXPECT_EQ(kestro_sim::read_value(celsius, "126"), std::nullopt);
    EXPECT_EQ(kestro_sim::read_value(celsius, "-41"), std::nullopt);
    EXPECT_EQ(kestro_sim::read_value(celsius, "warm"), std::nullopt);
    EXPECT_EQ(kestro_sim::shown_text(celsius, static_cast<uint64_t>(-12)), "-12 C");
    EXPECT_EQ(kestro_sim::values_of(celsius), "a number from -40 to 125 (C)");
    constexpr reg version = reg::bits("version", 0xFFFF, "x");
    EXPECT_EQ(kestro_sim::number_text(version, 0x107), "0x0107");
    EXPECT_EQ(kestro_sim::read_value(version, "0x10000"), std::nullopt);
    EXPECT_EQ(kestro_sim::values_of(reg::flag("on", "x")), "0 or 1");
    EXPECT_EQ(kestro_sim::values_of(reg::text("name", 20, "x")), "a text of at most 20 bytes");
}

TEST(Registers, ChoicesHaveNames) {
    static constexpr const char *names[]{"off", "green"};
    constexpr reg color = reg::choice("color", names, "x");
    EXPECT_EQ(kestro_sim::read_value(color, "green"), 1U);
    EXPECT_EQ(kestro_sim::read_value(color, "1"), 1U);
    EXPECT_EQ(kestro_sim::read_value(color, "2"), std::nullopt);
    EXPECT_EQ(kestro_sim::read_value(color, "gree"), std::nullopt);
    EXPECT_EQ(kestro_sim::shown_text(color, 1), "1 (green)");
    EXPECT_EQ(kestro_sim::values_of(color), "0 off, 1 green");
}

TEST(Registers, NearestNameIsTheOneThatWasMeant) {
    const std::vector<std::string> names{"millivolts", "warning_low", "warning_high"};
    EXPECT_EQ(kestro_sim::nearest_name("milivolts", names), "millivolts");
    EXPECT_EQ(kestro_sim::nearest_name("warning_lwo", names), "warning_low");
    EXPECT_EQ(kestro_sim::nearest_name("temperature", names), "");
    EXPECT_EQ(kestro_sim::suggestion("temperature", names), "there are millivolts, warning_low, warning_high");
    EXPECT_EQ(kestro_sim::suggestion("x", {}), "there is none");
}

TEST(RegisterTables, AreThoseOfTheDocumentation) {
    const std::string text = read_file(source_dir() + "/docs/registers.md");
    const size_t from = text.find(kestro_sim::table_begin);
    const size_t to = text.find(kestro_sim::table_end);
    ASSERT_NE(from, std::string::npos);
    ASSERT_NE(to, std::string::npos);
    const size_t begin = from + std::string(kestro_sim::table_begin).size();
    EXPECT_TRUE(text.substr(begin, to - begin) == kestro_sim::register_tables())
        << "docs/registers.md is older than the families; scripts/document writes it anew";
}

} // namespace kestro_tests
