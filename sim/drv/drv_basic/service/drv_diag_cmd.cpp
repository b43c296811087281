// Diagnose commands. Which there are the device files say (sim/core/catalogue.h), so a family adds one where it knows
// the answer.
#include "drv_basic/service/drv_diag_cmd.h"

#include "sim/core/catalogue.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

// Of this process; only touched within operations.
bool has_begun = false;

const diag_command *find_command(std::string_view words) {
    for (const diag_command &command : all_diag_commands()) {
        if (words == command.words) {
            return &command;
        }
    }
    return nullptr;
}

} // namespace

uint32_t drv_diag_cmd_init(void) {
    return operate([](board &) { has_begun = true; });
}

uint32_t drv_diag_cmd_process(const char *command, char *output, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(command, output);
        refuse_if(!has_begun, error::not_ready);
        const diag_command *known = find_command(command);
        refuse_if(known == nullptr, error::no_such_device);
        write_text(output, size, known->answer(b));
    });
}
