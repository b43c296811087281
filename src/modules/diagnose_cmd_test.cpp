// diagnose_cmd_test: the drivers' registry of diagnose commands. Four commands of this program are registered and then
// asked for as a person at the diagnosis would type them, with parameters and with help.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bounds/bounds.h"
#include "drv_basic/service/drv_diag_cmd.h"
#include "modules/diagnose_module.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/words.h"

namespace {

constexpr uint32_t output_size = 2048;
constexpr size_t command_size = 128;

uint32_t written(int length) {
    return length < 0 ? UINT32_MAX : 0;
}

uint32_t exec_no_para(char *output, uint32_t size, uint32_t /*first*/, uint32_t /*second*/, uint32_t /*third*/) {
    return written(sprintf_s(output, size, "[diagnose module] test_exec_cmd no para.........."));
}

uint32_t exec_one_para(char *output, uint32_t size, uint32_t first, uint32_t /*second*/, uint32_t /*third*/) {
    return written(sprintf_s(output, size, "[diagnose module] test_exec_cmd one para [0x%x].............", first));
}

uint32_t exec_two_para(char *output, uint32_t size, uint32_t first, uint32_t second, uint32_t /*third*/) {
    return written(
        sprintf_s(output, size, "[diagnose module] test_exec_cmd two para [0x%x] [0x%x].........", first, second));
}

uint32_t exec_three_para(char *output, uint32_t size, uint32_t first, uint32_t second, uint32_t third) {
    return written(sprintf_s(output, size, "[diagnose module] test_exec_cmd three para [0x%x] [0x%x] [0x%x].........",
                             first, second, third));
}

// They stay: a driver keeps their texts by address as long as the program runs.
constexpr std::array normal_list = {
    drv_diag_record{"diagnose test no para", exec_no_para, "diagnose test no para", "[argcnt=0] diagnose test no para"},
    drv_diag_record{"diagnose test bus", exec_one_para, "diagnose test bus", "[argcnt=1] diagnose test bus <bus-id>"},
    drv_diag_record{"diagnose test chip reg", exec_two_para, "diagnose test chip reg",
                    "[argcnt=2] diagnose test chip reg <chip-id> <reg-id>"},
    drv_diag_record{"diagnose test eth port", exec_three_para, "diagnose test eth port",
                    "[argcnt=3] diagnose test eth port <inst-id> <chip-id> <port-id>"},
};

// Nothing to call: a driver that took it would jump to nowhere when somebody types the words.
constexpr std::array list_without_handler = {
    drv_diag_record{"diagnose test error case one", nullptr, "diagnose test error case one", "[argcnt=0]"},
};

const char *outcome(bool is_good) {
    return is_good ? "pass" : "fail";
}

void register_commands() {
    uint32_t ret = drv_diag_cmd_init();
    printf("[diagnose module] test_int_cmd case........................%s.\n", outcome(ret == 0));
    ret = drv_diag_reg_cmd_list(normal_list.data(), static_cast<uint32_t>(normal_list.size()));
    printf("[diagnose module] test_reg_cmd normal case.................%s.\n", outcome(ret == 0));
    ret = drv_diag_reg_cmd_list(list_without_handler.data(), static_cast<uint32_t>(list_without_handler.size()));
    printf("[diagnose module] test_reg_cmd error one case..............%s.\n\n", outcome(ret != 0));
}

// The output has one byte more than the driver is told, so that a text up to its last byte ends.
uint32_t process(const char *command, char *output) {
    memset(output, 0, output_size + 1);
    return drv_diag_cmd_process(command, output, output_size);
}

// The answer and its outcome share a line.
void show_answer(const char *command, char *output) {
    const uint32_t ret = process(command, output);
    if (ret == 0) {
        printf("%s", output);
    }
    printf("%s.\n", outcome(ret == 0));
}

uint32_t hexadecimal_word(int count, char **args, int index) {
    constexpr int base = 16;
    return index < count ? word_to_u32(args[index], base) : 0;
}

// Typed in hexadecimal, asked for in decimal: the registry has to read both.
void run_commands(int count, char **args, char *output) {
    const auto bus = static_cast<int>(hexadecimal_word(count, args, 0));
    const auto chip = static_cast<int>(hexadecimal_word(count, args, 1));
    const auto port = static_cast<int>(hexadecimal_word(count, args, 2));
    char command[command_size] = {};
    sprintf_s(command, sizeof(command), "diagnose test no para");
    show_answer(command, output);
    sprintf_s(command, sizeof(command), "diagnose test bus %d", bus);
    show_answer(command, output);
    sprintf_s(command, sizeof(command), "diagnose test chip reg %d %d", bus, chip);
    show_answer(command, output);
    sprintf_s(command, sizeof(command), "diagnose test eth port %d %d %d", bus, chip, port);
    show_answer(command, output);
    puts("");
}

void show_help(const char *words, char *output) {
    char command[command_size] = {};
    printf("[diagnose module] test help func [%s]............begin\n", words);
    sprintf_s(command, sizeof(command), "%s", words);
    const uint32_t ret = process(command, output);
    if (ret == 0) {
        printf("%s", output);
    }
    printf("[diagnose module] test help func............%s\n\n", outcome(ret == 0));
}

// The outcomes are in the lines; the run itself fails only where there is no room for answers.
int test_func(int count, char **args) {
    register_commands();
    char *output = new_text_area(output_size);
    if (output == nullptr) {
        return -1;
    }
    run_commands(count, args, output);
    for (const char *words : {"help", "diagnose help", "diagnose test help", "diagnose test eth port help"}) {
        show_help(words, output);
    }
    free(output);
    return 0;
}

constexpr std::array rows = {
    command_row{"test_func", test_func, "test_func"},
};

static_assert(rows_are_sound(rows));

} // namespace

int diagnose_cmd_test(int count, char **args) {
    return run_diagnose_module(rows[0], count, args, "diagnose");
}
