// highmem_test: the regions of memory that is kept from the kernel, by type, and whether they keep clear of each other.
// No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/storage/drv_highmem.h"
#include "modules/modules.h"
#include "nb_bsp/nb_bsp.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int report_invalid_words() {
    printf("invalid arg num\n");
    return -1;
}

// The type that the one word names; the driver is brought up on the way, and a failure of that is told alone.
uint32_t begin_query(char **args) {
    const uint32_t type = word_to_u32(args[0]);
    printf("type: %u\n\n", type);
    const uint32_t ret = drv_highmem_init();
    if (ret != 0) {
        printf("drv_highmem_init ret:%d\n\n", static_cast<int>(ret));
    }
    return type;
}

// Where this process sees the region: an address is as wide as its pointers.
int highmem_get_base_addr(int count, char **args) {
    if (count != 1) {
        return report_invalid_words();
    }
    uint64_t address = 0;
    const uint32_t ret = drv_highmem_get_base_addr(begin_query(args), &address);
    printf("base_addr: 0x%lx\n\n", static_cast<unsigned long>(address));
    return static_cast<int>(ret);
}

int highmem_get_len(int count, char **args) {
    if (count != 1) {
        return report_invalid_words();
    }
    uint32_t len = 0;
    const uint32_t ret = drv_highmem_get_len(begin_query(args), &len);
    printf("len: 0x%x\n\n", len);
    return static_cast<int>(ret);
}

int highmem_get_phys_addr(int count, char **args) {
    if (count != 1) {
        return report_invalid_words();
    }
    uint64_t address = 0;
    const uint32_t ret = drv_highmem_get_phys_addr(begin_query(args), &address);
    printf("phys_addr: 0x%llx\n\n", static_cast<unsigned long long>(address));
    return static_cast<int>(ret);
}

int highmem_init(int count, char ** /*args*/) {
    if (count != 0) {
        return report_invalid_words();
    }
    printf("no arg \n");
    const uint32_t ret = drv_highmem_init();
    printf("drv_highmem_init ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int highmem_exit(int count, char ** /*args*/) {
    if (count != 0) {
        return report_invalid_words();
    }
    printf("no arg \n");
    const uint32_t ret = drv_highmem_exit();
    printf("drv_highmem_exit ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

// The whole area, and where the last region that was found sound ends. All in physical addresses, as the area is.
struct memory_walk {
    unsigned long long start;
    unsigned long long end;
    unsigned long long previous_end;
};

struct memory_region {
    uint32_t type;
    unsigned long long start;
    uint32_t length;
};

bool find_region(memory_region *region) {
    uint64_t start = 0;
    if (drv_highmem_get_phys_addr(region->type, &start) != 0) {
        printf("Highmem test [Type:0x%x] : get addr..............................Fail.\n", region->type);
        return false;
    }
    if (drv_highmem_get_len(region->type, &region->length) != 0) {
        printf("Highmem test [Type:0x%x] : get len..............................Fail.\n", region->type);
        return false;
    }
    region->start = start;
    return true;
}

void report_misplaced(const memory_region &region) {
    printf("Highmem test [Type:0x%x] ..............................Fail.\n", region.type);
}

// Of several reasons the first one is told. A region that reaches round the end of all addresses reaches beyond the
// area, though its end is a small number.
void check_region(const memory_region &region, memory_walk *walk) {
    const unsigned long long end = region.start + region.length;
    if (region.start < walk->start || region.start > walk->end) {
        report_misplaced(region);
        printf(" --- highmem start addr = 0x%llx, highmem end addr = 0x%llx, this type start addr = 0x%llx.\n",
               walk->start, walk->end, region.start);
    } else if (end < region.start || end > walk->end) {
        report_misplaced(region);
        printf(" --- highmem start addr = 0x%llx, highmem end addr = 0x%llx, this type end addr = 0x%llx.\n",
               walk->start, walk->end, end);
    } else if (walk->previous_end > region.start) {
        report_misplaced(region);
        printf(" --- this type start addr = 0x%llx, but pre type end addr = 0x%llx.\n", region.start,
               walk->previous_end);
    } else {
        walk->previous_end = end;
        printf("Highmem test [Type:0x%x][0x%llx : 0x%llx]..............................PASS.\n", region.type,
               region.start, end);
    }
}

// The regions in the order in which they lie in memory, the lowest first. Only an area that is not known fails the
// test.
int highmem_test_addr_conflict(int /*count*/, char ** /*args*/) {
    constexpr uint32_t types[] = {0x100, 0x14, 0x13, 0x12, 0x11, 0x10, 0x2, 0x1};
    uint64_t start = 0;
    uint64_t length = 0;
    if (nb_get_himem_info(&start, &length) != 0) {
        printf("Highmem test : nb_get_himem_info..............................Fail.\n");
        return 1;
    }
    if (drv_highmem_init() != 0) {
        printf("Highmem test : drv_highmem_init ..............................Fail.\n");
    }
    memory_walk walk{start, start + length, start};
    for (const uint32_t type : types) {
        memory_region region{type, 0, 0};
        if (find_region(&region)) {
            check_region(region, &walk);
        }
    }
    return 0;
}

constexpr std::array rows = {
    command_row{"drv_highmem_get_base_addr", highmem_get_base_addr, "drv_highmem_get_base_addr type"},
    command_row{"drv_highmem_get_len", highmem_get_len, "drv_highmem_get_len type"},
    command_row{"drv_highmem_get_phys_addr", highmem_get_phys_addr, "drv_highmem_get_phys_addr type"},
    command_row{"drv_highmem_init", highmem_init, "drv_highmem_init"},
    command_row{"drv_highmem_exit", highmem_exit, "drv_highmem_exit"},
    command_row{"drv_highmem_test_addr_conflict", highmem_test_addr_conflict, "drv_highmem_test_addr_conflict"},
};

static_assert(rows_are_sound(rows));

} // namespace

int highmem_test(int count, char **args) {
    return run_module(rows, count, args);
}
