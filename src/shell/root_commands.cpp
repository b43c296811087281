// The root command table.
#include "shell/root_commands.h"

#include <array>

#include "modules/modules.h"

namespace {

constexpr std::array rows = {
    command_row{"board_test", board_test, "kestro_test board_test"},
    command_row{"voltage_test", voltage_test, "kestro_test voltage_test"},
    command_row{"temp_test", temp_test, "kestro_test temp_test"},
    command_row{"reset_test", reset_test, "kestro_test reset_test"},
    command_row{"mac_test", mac_test, "kestro_test mac_test"},
    command_row{"slot_test", slot_test, "kestro_test slot_test"},
    command_row{"powerdetec_test", powerdetec_test, "kestro_test powerdetec_test"},
    command_row{"tempdetec_test", tempdetec_test, "kestro_test tempdetec_test"},
    command_row{"voltdetec_test", voltdetec_test, "kestro_test voltdetec_test"},
    command_row{"avs_test", avs_test, "kestro_test avs_test"},
    command_row{"device_test", device_test, "kestro_test device_test"},
    command_row{"elabel_test", elabel_test, "kestro_test elabel_test"},
    command_row{"barcode_test", barcode_test, "kestro_test barcode_test"},
    command_row{"led_test", led_test, "kestro_test led_test"},
};

static_assert(rows_are_sound(rows));

} // namespace

std::span<const command_row> root_commands() {
    return rows;
}
