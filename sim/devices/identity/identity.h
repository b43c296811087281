// The identity EEPROM of one board or card, by its sections, as labels, bar codes and addresses use it.
#pragma once

#include "sim/core/board.h"
#include "sim/core/eeprom.h"
#include "sim/devices/identity/eeprom_content.h"

#include <optional>
#include <span>
#include <vector>

namespace kestro_sim {

class identity {
  public:
    // Refuses an empty place, one whose identity bus ends elsewhere (no_such_instance), and an instance without EEPROM
    // (not_supported).
    identity(board &b, const std::string &place);

    const std::string &instance() const {
        return instance_;
    }
    std::optional<eeprom_section> find(uint32_t section_id) const;
    eeprom_section require(uint32_t section_id, error when_missing) const;

    // Refuses a range beyond the section, and an empty one: out_of_range.
    std::vector<uint8_t> read(const eeprom_section &section, uint32_t offset, uint32_t length) const;
    void write(change &writes, const eeprom_section &section, uint32_t offset, std::span<const uint8_t> bytes) const;

  private:
    board &board_;
    std::string instance_;
    std::string image_;
};

// Electronic labels are kept twice, master and backup copy. What is read beyond the end of a shorter section is zero.
std::vector<uint8_t> read_label(const identity &eeprom, uint32_t length);
void write_label(const identity &eeprom, change &writes, std::span<const uint8_t> label);

// Bar codes lie one behind the other in their section.
inline constexpr uint32_t bar_code_size = 128;
eeprom_section bar_code_area(const identity &eeprom, uint32_t number);

} // namespace kestro_sim
