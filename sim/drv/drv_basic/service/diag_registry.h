// The diagnose commands there are in this process: those of the devices, and those that the program has registered.
//
// The program's texts are taken over when it registers them: kestro_call's are gone with the call. A handler is called
// by whoever asked, when no lock is held: it may call drivers, and register commands.
#pragma once

#include "drv_basic/service/drv_diag_cmd.h"

#include "sim/core/board.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace kestro_sim {

// How many the program may register, and how long their texts may be.
inline constexpr size_t diag_commands_max = 128;
inline constexpr size_t diag_command_max = 127;
inline constexpr size_t diag_help_max = 255;

// Takes all records or refuses: a text or handler that is missing (null_pointer), a list without records, a text that
// is too long or makes no sense, words that end in "help", words of a device's command or twice in the list
// (bad_value), more commands than there is room for (store_full). Words that the program has registered before are
// answered by the new record.
void register_diag_commands(std::span<const drv_diag_record> records);

// A text, or a handler that has still to be called with these parameters.
struct diag_answer {
    std::string text;
    drv_diag_handler handler = nullptr;
    std::array<uint32_t, DRV_DIAG_PARAMETERS> parameters{};
};

// What a line of words is answered; a listing has no more lines than fit into size bytes. Refuses words that no command
// has (no_such_device), and too few, too many or odd parameters (bad_value).
diag_answer answer_to(board &b, std::string_view line, size_t size);

} // namespace kestro_sim
