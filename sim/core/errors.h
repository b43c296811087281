// The result codes of the simulated drivers, and how an operation ends with one.
#pragma once

#include "drv_types.h"

namespace kestro_sim {

// The low byte 0xA4 is kept for "not supported": the checks of the product look at nothing else of a code.
enum class error : uint32_t {
    not_supported = DRV_NOT_SUPPORTED, // this board or card has no such device
    null_pointer = 0x81110101U,        // an output or input area is missing
    no_such_instance = 0x81110102U,    // the instance id names nothing, or an empty slot
    no_such_device = 0x81110103U,      // the board has such devices, but not this chip, type, id or pin
    no_such_section = 0x81110104U,     // the EEPROM has no section of that number
    not_described = 0x81110105U,       // the board description has no such module, node, entry or element
    bad_value = 0x81110106U,           // a value that the device does not take
    out_of_range = 0x81110107U,        // offset or length beyond the device's area
    too_small = 0x81110108U,           // the caller's area does not hold the answer
    damaged = 0x81110109U,             // neither copy of the stored data makes sense
    no_board = 0x8111010AU,            // no board description or no state directory to run on
    store_full = 0x8111010BU,          // no room for one more device register
    out_of_memory = 0x8111010CU,
    disk_full = 0x8111010DU, // nothing was written: the desk's disk has no room
    read_only = 0x8111010EU, // nothing was written: the state may only be read
    not_ready = 0x8111010FU, // it is there, but without power, pulled out, or not yet begun
};

// Thrown to end a driver operation with a result code; operate() turns it into the code.
struct refusal {
    error code;
};

[[noreturn]] inline void refuse(error code) {
    throw refusal{code};
}

inline void refuse_if(bool condition, error code) {
    if (condition) {
        refuse(code);
    }
}

template <typename... Pointers> void refuse_null(const Pointers *...pointers) {
    refuse_if(((pointers == nullptr) || ...), error::null_pointer);
}

} // namespace kestro_sim
