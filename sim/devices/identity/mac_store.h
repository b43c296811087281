// MAC addresses of a board or card: records of type, count and base address in its identity EEPROM, kept twice.
#pragma once

#include "sim/core/mac_area.h"
#include "sim/devices/identity/identity.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kestro_sim {

class mac_store {
  public:
    // The master copy, or the backup when the master makes no sense. Refuses a place that keeps none.
    mac_store(board &b, const std::string &place);

    mac_record &of_type(uint32_t type_id);

    // Into both copies.
    void save();

  private:
    board &board_;
    identity eeprom_;
    std::vector<eeprom_section> copies_;
    std::vector<mac_record> records_;
};

void set_base(mac_record &record, const uint8_t *addr);
void set_count(mac_record &record, uint32_t num);

// One of the addresses of a type, as the chip that has it was loaded with it: whoever asks.
mac_address address_at(board &b, const std::string &place, uint32_t type_id, uint32_t number);

} // namespace kestro_sim
