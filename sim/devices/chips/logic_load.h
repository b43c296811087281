// Loading programmable logic. A load has two steps, and the time that it takes lies between them: begin() checks the
// image and takes the chip's logic away from it, or what was in the idle half of its flash; the other one is made when
// the last byte is there. Who is killed in between leaves a load that was begun, and the next one mends it.
//
//   FPGA    has no logic while it is loaded, and answers nothing; runs the new one at once, but keeps it only as long
//   as
//           it has power: a cold start takes the logic of its flash
//   CPLD    goes on with what it has; a cold start takes the new half of its flash
//   card    its CPLD is held still while it is loaded, and runs the new logic at once and for good
#pragma once

#include "sim/core/logic_image.h"
#include "sim/devices/chips/spi_chips.h"
#include "sim/devices/management/firmware.h"

#include <span>

namespace kestro_sim::logic_load {

// Which load of the chip it is, and how long it takes.
struct begun {
    uint32_t number = 0;
    int64_t nanoseconds = 0;
};

// All refuse a chip that takes no images, or is of the other kind (not_supported), what decode_logic_image() refuses,
// and an image for another part (no_such_device).
begun begin_fpga(board &b, const device_of<logic_chip::family> &chip, std::span<const uint8_t> image);
begun begin_cpld(board &b, const device_of<logic_chip::family> &chip, std::span<const uint8_t> image);
begun begin_card(board &b, const device_of<pic_cpld::family> &chip, std::span<const uint8_t> image);

// Refuse (not_ready) when another load was begun meanwhile, or the chip started anew.
void finish_fpga(board &b, const device_of<logic_chip::family> &chip, const begun &load);
void finish_cpld(board &b, const device_of<logic_chip::family> &chip, const begun &load);
void finish_by_restart(board &b, const device_of<logic_chip::family> &chip, const begun &load); // of a CPLD
void finish_card(board &b, const device_of<pic_cpld::family> &chip, const begun &load);

// What the logic chips of a place do when it starts cold.
void start_logic(board &b, change &writes, const std::string &place);

} // namespace kestro_sim::logic_load
