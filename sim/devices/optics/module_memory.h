// The memory map of a transceiver, as its bus shows it: made anew of how the module stands whenever somebody looks.
#pragma once

#include "sim/devices/optics/optical_module.h"

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace kestro_sim::optics {

// The lower half of an address space stands in front of its pages.
inline constexpr int lower = -1;
inline constexpr uint32_t half = 128;

// The addresses on the bus, in eight bits.
inline constexpr uint8_t first_device = 0xA0;
inline constexpr uint8_t diagnostics_device = 0xA2;

using half_page = std::array<uint8_t, half>;
using memory = std::map<std::pair<uint8_t, int>, half_page>;

// One page below the lower half that belongs to it: addresses from 0 to 255.
class memory_view {
  public:
    memory_view(memory &of, uint8_t device, int page) : lower_(of[{device, lower}]), upper_(of[{device, page}]) {
    }
    uint8_t &operator[](uint32_t address) {
        return address < half ? lower_[address] : upper_[address - half];
    }
    // The higher byte first.
    void word(uint32_t address, int64_t value);
    // Filled up with blanks.
    void text(uint32_t address, uint32_t length, std::string_view what);
    // The low byte of the sum from the first address to the last.
    void sum(uint32_t first, uint32_t last, uint32_t at);

  private:
    half_page &lower_;
    half_page &upper_;
};

// The words that a limit is in the map. In the order of the maps: high alarm, low alarm, high warning, low warning.
using limit_words = std::array<int32_t, 4>;

struct all_limits {
    limit_words temperature;
    limit_words voltage;
    limit_words bias;
    limit_words tx_power;
    limit_words rx_power;
    limit_words laser_temperature;
    limit_words tec_current;
};

all_limits limits_of(const model &kind);

// Which of the four are overstepped: bits 3 to 0 in the order of the words.
uint32_t overstepped(int32_t value, const limit_words &words);

// What a map is made of.
struct map_source {
    board &b;
    const optical_module::fitted &which;
    const optical_module::measurements measured;
    const all_limits limits;
    const bool is_ready;
};

memory memory_of(board &b, const optical_module::fitted &which);

// A byte that the bus writes. What is read-only stays as it is.
void write_byte(board &b, const optical_module::fitted &which, uint8_t device, int page, uint32_t address,
                uint8_t value);

// Pages that a device of the module has; a device without pages has the page 0 alone.
bool has_device(const model &kind, uint8_t device);
bool has_page(const model &kind, uint8_t device, int page);

// Below: of one kind of management each.
void fill_sfp(memory &to, const map_source &from);
void fill_qsfp(memory &to, const map_source &from);
void fill_cmis(memory &to, const map_source &from);

void write_sfp(board &b, const optical_module::fitted &which, uint32_t address, uint8_t value);
void write_qsfp(board &b, const optical_module::fitted &which, uint32_t address, uint8_t value);
void write_cmis(board &b, const optical_module::fitted &which, int page, uint32_t address, uint8_t value);

} // namespace kestro_sim::optics
