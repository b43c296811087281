// The identity EEPROM of one instance, as the label, bar code, MAC and EEPROM drivers use it.
#pragma once

#include "sim/core/eeprom.h"
#include "sim/core/operation.h"

#include <optional>
#include <span>
#include <vector>

namespace kestro_sim {

class identity {
  public:
    // Refuses an empty place, one whose identity bus ends elsewhere (no_such_instance), and an instance without EEPROM
    // (not_supported).
    identity(board &b, uint32_t inst_id);

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

} // namespace kestro_sim
