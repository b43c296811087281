// The test of one card. What can be tested depends on its generation, which the layout of its EEPROM tells: the old
// formats let the board read their sensors, the present one keeps its MAC addresses twice, and a KV line card keeps
// addresses and nothing else.
#include "selftest/cards/card_test.h"

#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_init.h"
#include "nb_bsp/nb_bsp.h"
#include "selftest/cards/card_layout.h"
#include "selftest/environment/temperature.h"
#include "selftest/environment/voltage.h"
#include "selftest/identity/barcode_storage.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/identity/mac_storage.h"
#include "selftest/identity/uniformity.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t no_card_number = 65535;
constexpr uint32_t card_mac = 2;

// The board support answers 1 where it gives the number of a card that it has not brought up yet.
constexpr uint32_t card_not_up = 1;

bool has_type(uint32_t inst_id, report_sink sink) {
    uint32_t type = 0;
    const uint32_t ret = drv_board_get_type(inst_id, &type);
    if (ret != 0 || type == 0 || type == UINT32_MAX) {
        report_append(sink, "Error: get type fail :0x%x type 0x%x", ret, type);
        return false;
    }
    report_append(sink, "Success: card type is 0x%x \r\n", type);
    return true;
}

// Only a storage that says so is left out; one that fails has to show it in the write test.
int check_card_mac(uint32_t inst_id, uint32_t layout, report_sink sink) {
    uint32_t num = 0;
    if (is_not_supported(drv_mac_get_num(inst_id, card_mac, &num, 0))) {
        report_append(sink, "Info   : card mac is not support.\r\n");
        return 0;
    }
    int result = 0;
    if (layout == next_generation_card) {
        result = mac_uniformity_check(inst_id, sink);
    }
    return result | mac_write_test(inst_id, card_mac, sink);
}

// Cards of the old QRM format have no backup of their label.
int check_card_elabel(uint32_t inst_id, uint32_t layout, report_sink sink) {
    int result = 0;
    if (layout != qrm_old_card) {
        result = elabel_uniformity_check(inst_id, sink);
    }
    return result | elabel_write_test(inst_id, 0, sink);
}

// Newer cards read their sensors themselves; their buses do not lead to the board.
bool board_reads_sensors(uint32_t layout) {
    return layout == router_old_card || layout == qrm_old_card;
}

int check_card_temperature(uint32_t inst_id, uint32_t layout, report_sink sink) {
    if (!board_reads_sensors(layout)) {
        report_append(sink, "card is not support temperature access from board.\r\n");
        return 0;
    }
    return temperature_section(inst_id, sink);
}

int check_card_voltage(uint32_t inst_id, uint32_t layout, report_sink sink) {
    if (!board_reads_sensors(layout)) {
        report_append(sink, "card is not support voltage access from board.\r\n");
        return 0;
    }
    return voltage_section(inst_id, sink);
}

int check_card_power(uint32_t inst_id, report_sink sink) {
    uint32_t power = 0;
    const uint32_t ret = drv_board_get_power(inst_id, &power);
    if (is_not_supported(ret)) {
        report_append(sink, "Info   : card get power is not support.\r\n");
        return 0;
    }
    if (ret == 0 && power != 0) {
        report_append(sink, "Success: card get power pass power = 0x%x. \r\n", power);
        return 0;
    }
    report_append(sink, "Error  : card get power ret = 0x%x power = 0x%x.\r\n", ret, power);
    return -1;
}

// A KV line card passes here, even when its MAC test has failed: its lines tell. Its layout stays noted, as the test
// does not come to its end.
int test_present_card(uint32_t inst_id, uint32_t card_number, report_sink sink) {
    int result = static_cast<int>(drv_init_entry(inst_id));
    result |= recognise_card_layout(inst_id, card_number, sink);
    const uint32_t layout = card_layout_of(card_number);
    result |= check_card_mac(inst_id, layout, sink);
    if (layout == kv_lpu_card) {
        return 0;
    }
    result |= check_card_elabel(inst_id, layout, sink);
    result |= barcode_write_test(inst_id, 0, sink);
    // Once more: label and bar code lie beside the addresses, and writing them must have left these alone.
    result |= check_card_mac(inst_id, layout, sink);
    result |= check_card_temperature(inst_id, layout, sink);
    result |= check_card_voltage(inst_id, layout, sink);
    result |= check_card_power(inst_id, sink);
    set_card_layout(card_number, unknown_card);
    return result;
}

} // namespace

// A failure without a number is no reason to stop: the presence of the card tells more.
int card_onekey_test(uint32_t inst_id, report_sink sink) {
    uint32_t card_number = no_card_number;
    uint32_t ret = get_card_id(inst_id, &card_number);
    if (ret != 0 && ret != card_not_up && card_number < card_numbers) {
        report_append(sink, "card get card id, invalid inst_id:0x%x", inst_id);
        return static_cast<int>(ret);
    }
    uint32_t status = 0;
    ret = drv_board_get_online_status(inst_id, &status);
    if (ret != 0) {
        report_append(sink, "Error: get present fail :0x%x", ret);
        return static_cast<int>(ret);
    }
    if (status == 1) {
        report_append(sink, "Success: card is not present \r\n");
        return 0;
    }
    return has_type(inst_id, sink) ? test_present_card(inst_id, card_number, sink) : -1;
}
