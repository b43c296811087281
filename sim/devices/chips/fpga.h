// What the programmable logic chips do beside holding registers: their checks, and the dump of their registers. All of
// it goes through the register space, as the bus does.
#pragma once

#include "sim/core/finding.h"
#include "sim/core/register_space.h"
#include "sim/devices/management/firmware.h"

namespace kestro_sim::logic_chip {

using one = device_of<family>;

// Refuses (not_supported) a chip whose registers are not laid out.
const register_space &space_of(const one &chip);

// Patterns through the scratch register.
finding selftest(board &b, const one &chip);

// Refuse a chip that has none (not_supported), and a channel beyond the last (no_such_device).
finding check_agent(board &b, const one &chip, uint32_t channel);
finding check_port(board &b, const one &chip, uint32_t channel);
finding check_receiver(board &b, const one &chip, uint32_t channel);

// All links together. Refuses (not_supported) a chip that has none.
finding check_chip_links(board &b, const one &chip);

// Of FPGAs: a CPLD keeps its logic without power (not_supported), and particles do not turn it (no finding).
finding check_repeated_loads(board &b, const one &chip);
finding check_upsets(board &b, const one &chip);
void clear_upsets(board &b, const one &chip);

// Bit 0 the self-test, bit 1 the agents, bit 2 the ports: set where a check that the chip has found a fault.
uint32_t failed_functions(board &b, const one &chip);

// Sixteen registers a line, behind the address of the first.
std::string dump(board &b, const one &chip, uint32_t start, uint32_t num);

void set_np(board &b, const one &chip, uint32_t slave, uint64_t address);

} // namespace kestro_sim::logic_chip
