// Master and backup copies of a card's identity, section against section.
#include "selftest/identity/uniformity.h"

#include <cstring>

#include "drv_basic/storage/drv_eeprom.h"

namespace {

constexpr uint32_t max_section_size = 1200;

// The backup section of MAC addresses reports only its failure.
struct copy_texts {
    const char *read_fail;
    const char *read_pass;
};

struct uniformity {
    uint32_t master_section;
    uint32_t backup_section;
    uint32_t size;
    copy_texts master;
    copy_texts backup;
    const char *same;
    const char *different;
};

bool read_copy(uint32_t inst_id, uint32_t section_id, uint8_t *area, uint32_t size, const copy_texts &texts,
               report_sink sink) {
    const uint32_t ret = drv_eeprom_read_data(inst_id, section_id, 0, area, size);
    if (ret != 0) {
        report_append(sink, "%s [ret]:%#x\r\n", texts.read_fail, ret);
    } else if (texts.read_pass != nullptr) {
        report_append(sink, "%s\r\n", texts.read_pass);
    }
    return ret == 0;
}

int check(uint32_t inst_id, const uniformity &pair, report_sink sink) {
    uint8_t master[max_section_size] = {};
    uint8_t backup[max_section_size] = {};
    const bool master_read = read_copy(inst_id, pair.master_section, master, pair.size, pair.master, sink);
    const bool backup_read = read_copy(inst_id, pair.backup_section, backup, pair.size, pair.backup, sink);
    if (master_read && backup_read) {
        report_append(sink, "%s\r\n", memcmp(master, backup, pair.size) == 0 ? pair.same : pair.different);
    }
    return 0;
}

constexpr uniformity elabel_copies = {
    0,
    1,
    1200,
    {"Error: master elabel read fail. please check elabel is already load.", "Success: master elabel read test pass."},
    {"Error: backup elabel read fail. please check card is support back elabel, only qrm old card is not support.",
     "Success: backup elabel read test pass."},
    "Success: master and backup elabel uniformity check pass.",
    "Error: master and backup elabel uniformity check fail. ",
};

constexpr uniformity mac_copies = {
    8,
    9,
    128,
    {"Error: master mac read fail. please check card is support mac, only eth card is support.",
     "Success: master mac read test pass."},
    {"Error: backup mac read fail. need backup mac section.", nullptr},
    "Success: master and backup mac uniformity check pass. ",
    "Error: master and backup mac uniformity check fail. ",
};

static_assert(elabel_copies.size <= max_section_size && mac_copies.size <= max_section_size);

} // namespace

int elabel_uniformity_check(uint32_t inst_id, report_sink sink) {
    return check(inst_id, elabel_copies, sink);
}

int mac_uniformity_check(uint32_t inst_id, report_sink sink) {
    return check(inst_id, mac_copies, sink);
}
