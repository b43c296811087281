// The reserved memory of the own board, by the types of its parts. Where a part lies is told as it is described, also
// where that is no place within the memory; mapped is what lies there.
#include "drv_basic/storage/drv_highmem.h"

#include "sim/devices/storage/high_memory.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_highmem_init() {
    return operate([](board &b) { map_reserved_memory(b, b.self()); });
}

uint32_t drv_highmem_exit() {
    return operate([](board &) { unmap_reserved_memory(); });
}

uint32_t drv_highmem_get_base_addr(uint32_t type, uint64_t *base_addr) {
    return operate([&](board &b) {
        refuse_null(base_addr);
        const part_bytes bytes = bytes_of_part(b, b.self(), type);
        *base_addr = reinterpret_cast<uintptr_t>(map_reserved_memory(b, b.self()) + bytes.offset);
    });
}

uint32_t drv_highmem_get_len(uint32_t type, uint32_t *len) {
    return operate([&](board &b) {
        refuse_null(len);
        *len = b.get(b.find<memory_part::family>(DRV_INST_SELF, type), memory_part::length);
    });
}

uint32_t drv_highmem_get_phys_addr(uint32_t type, uint64_t *phys_addr) {
    return operate([&](board &b) {
        refuse_null(phys_addr);
        *phys_addr = b.get_wide(b.find<memory_part::family>(DRV_INST_SELF, type), memory_part::start);
    });
}
