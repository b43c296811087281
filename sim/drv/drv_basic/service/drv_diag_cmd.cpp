// Diagnose commands. Which the devices have their files say (sim/core/catalogue.h), so a family adds one where it knows
// the answer; which the program has it registers itself.
#include "drv_basic/service/drv_diag_cmd.h"

#include "sim/drv/driver.h"
#include "sim/drv/drv_basic/service/diag_registry.h"

using namespace kestro_sim;

namespace {

// Of this process; only touched within operations.
bool has_begun = false;

} // namespace

// There is nothing in it that has to be brought up but its commands, which have an init of their own.
uint32_t drv_diag_init(void) {
    return operate([](board &) {});
}

uint32_t drv_diag_cmd_init(void) {
    return operate([](board &) { has_begun = true; });
}

uint32_t drv_diag_reg_cmd_list(const drv_diag_record *records, uint32_t count) {
    return operate([&](board &) {
        refuse_null(records);
        refuse_if(!has_begun, error::not_ready);
        register_diag_commands({records, count});
    });
}

// The program's handlers are called behind the operation, without the lock.
uint32_t drv_diag_cmd_process(const char *command, char *output, uint32_t size) {
    diag_answer answer;
    const uint32_t result = operate([&](board &b) {
        refuse_null(command, output);
        refuse_if(!has_begun, error::not_ready);
        refuse_if(size == 0, error::too_small);
        answer = answer_to(b, command, size);
        if (answer.handler == nullptr) {
            write_text(output, size, answer.text);
        }
    });
    if (result != 0 || answer.handler == nullptr) {
        return result;
    }
    return answer.handler(output, size, answer.parameters[0], answer.parameters[1], answer.parameters[2]);
}
