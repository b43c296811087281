// cdr_test: the clock-and-data-recovery chips between the switch fabric's lanes and the front ports.
//
// The chips keep nothing while no driver runs them, so each run brings them up, carries out one sub-command and takes
// the chip that it was about down again. Their driver is a library that a board may lack; the module holds it for the
// run and looks an operation up whenever it comes to it.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/network/drv_mdio.h"
#include "drv_inphi115050/drv_cdr.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/driver_library.h"
#include "shell/words.h"

namespace {

constexpr uint32_t every_bus = 0xFFFFFFFF;
constexpr uint32_t text_size = 10240;

held_library library{"libdrv_inphi115050.so", nullptr};

bool is_too_few(int count, int needs_more_than) {
    if (count > needs_more_than) {
        return false;
    }
    puts("cdr test too few args!");
    return true;
}

// What the bus and the library answer is left alone: without either of them the soft init fails, and says so.
int soft_init(uint32_t inst_id) {
    drv_mdio_init(every_bus);
    open_held_library(library);
    const auto operation = find_operation<decltype(drv_cdr_soft_init)>(library, "drv_cdr_soft_init");
    if (operation == nullptr) {
        return -1;
    }
    const uint32_t ret = operation(inst_id);
    if (ret != 0) {
        printf("test_cdr_soft_init fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
        return static_cast<int>(ret);
    }
    printf("test_cdr_soft_init success, inst_id=0x%x.\r\n", inst_id);
    return 0;
}

// All chips of the instance are brought up, but the word that names one has to be there: the run ends with it.
int init_chip(int count, char **args) {
    if (is_too_few(count, 1)) {
        return -1;
    }
    const auto operation = find_operation<decltype(drv_cdr_init_chip)>(library, "drv_cdr_init_chip");
    if (operation == nullptr) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = operation(inst_id);
    if (ret != 0) {
        printf("drv_cdr_init_chip fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
        return static_cast<int>(ret);
    }
    printf("drv_cdr_init_chip success, inst_id=0x%x.\r\n", inst_id);
    return 0;
}

int take_chip_down(uint32_t inst_id, uint32_t chip_id) {
    const auto operation = find_operation<decltype(drv_cdr_destroy_chip)>(library, "drv_cdr_destroy_chip");
    if (operation == nullptr) {
        return -1;
    }
    const uint32_t ret = operation(inst_id, chip_id);
    if (ret != 0) {
        printf("drv_cdr_destroy_chip fail, inst_id=0x%x, chip_id=%d, ret=%#x.\r\n", inst_id, static_cast<int>(chip_id),
               ret);
        return static_cast<int>(ret);
    }
    printf("drv_cdr_destroy_chip success, inst_id=0x%x, chip_id=%d.\r\n", inst_id, static_cast<int>(chip_id));
    return 0;
}

// The bus is left whatever became of the chip.
int destroy_chip(int count, char **args) {
    if (is_too_few(count, 1)) {
        return -1;
    }
    const int result = take_chip_down(word_to_u32(args[0]), word_to_u32(args[1]));
    drv_mdio_exit(every_bus);
    return result;
}

// An interface as the command line names it, in four words.
struct interface_words {
    uint32_t inst_id;
    uint32_t chip_id;
    drv_cdr_interface selector;
};

interface_words words_of_interface(char **args) {
    return {word_to_u32(args[0]), word_to_u32(args[1]), {word_to_u32(args[2]), word_to_u32(args[3])}};
}

// False when the library has no such operation.
bool bring_up(const interface_words &on, uint32_t *ret) {
    const auto operation = find_operation<decltype(drv_cdr_init_interface)>(library, "drv_cdr_init_interface");
    if (operation == nullptr) {
        return false;
    }
    *ret = operation(on.inst_id, on.chip_id, &on.selector);
    if (*ret != 0) {
        printf("drv_cdr_init_interface fail,inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d,ret=%#x.\r\n", on.inst_id,
               static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), *ret);
    } else {
        printf("drv_cdr_init_interface success,inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d.\r\n", on.inst_id,
               static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate));
    }
    return true;
}

int init_interface(int count, char **args) {
    if (is_too_few(count, 3)) {
        return -1;
    }
    uint32_t ret = 0;
    return bring_up(words_of_interface(args), &ret) ? static_cast<int>(ret) : -1;
}

int destroy_interface(int count, char **args) {
    if (is_too_few(count, 3)) {
        return -1;
    }
    const auto operation = find_operation<decltype(drv_cdr_destroy_interface)>(library, "drv_cdr_destroy_interface");
    if (operation == nullptr) {
        return -1;
    }
    const interface_words on = words_of_interface(args);
    const uint32_t ret = operation(on.inst_id, on.chip_id, &on.selector);
    if (ret != 0) {
        printf("drv_cdr_destroy_interface fail,inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d, ret=%#x.\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), ret);
        return static_cast<int>(ret);
    }
    printf("drv_cdr_destroy_interface success,inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d.\r\n", on.inst_id,
           static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id), static_cast<int>(on.selector.chl_rate));
    return 0;
}

// A register as the command line names it, in four words.
struct register_words {
    uint32_t inst_id;
    uint32_t chip_id;
    uint32_t sub_chip_id;
    uint32_t reg_addr;
};

register_words words_of_register(char **args) {
    return {word_to_u32(args[0]), word_to_u32(args[1]), word_to_u32(args[2]), word_to_u32(args[3])};
}

int read_register(const register_words &of) {
    const auto operation = find_operation<decltype(drv_cdr_reg_read)>(library, "drv_cdr_reg_read");
    if (operation == nullptr) {
        return -1;
    }
    uint32_t value = 0;
    const uint32_t ret = operation(of.inst_id, of.chip_id, of.sub_chip_id, of.reg_addr, &value);
    if (ret != 0) {
        printf("drv_cdr_reg_read fail, inst_id=0x%x, chip_id=%d, sub_chip_id=%d,reg_addr=0x%x, read_value=0x%x, "
               "ret=%#x.\r\n",
               of.inst_id, static_cast<int>(of.chip_id), static_cast<int>(of.sub_chip_id), of.reg_addr, value, ret);
        return static_cast<int>(ret);
    }
    printf("drv_cdr_reg_read success, inst_id=0x%x, chip_id=%d, sub_chip_id=%d,reg_addr=0x%x, read_value=0x%x.\r\n",
           of.inst_id, static_cast<int>(of.chip_id), static_cast<int>(of.sub_chip_id), of.reg_addr, value);
    return 0;
}

int reg_read(int count, char **args) {
    return is_too_few(count, 3) ? -1 : read_register(words_of_register(args));
}

// Also after a write that failed, the read tells what stands there now.
int reg_write(int count, char **args) {
    if (is_too_few(count, 4)) {
        return -1;
    }
    const auto operation = find_operation<decltype(drv_cdr_reg_write)>(library, "drv_cdr_reg_write");
    if (operation == nullptr) {
        return -1;
    }
    const register_words of = words_of_register(args);
    const uint32_t value = word_to_u32(args[4]);
    const uint32_t ret = operation(of.inst_id, of.chip_id, of.sub_chip_id, of.reg_addr, value);
    if (ret != 0) {
        printf("drv_cdr_reg_write fail, inst_id=0x%x, chip_id=%d, sub_chip_id=%d,reg_addr=0x%x, write_value=0x%x, "
               "ret=%#x.\r\n",
               of.inst_id, static_cast<int>(of.chip_id), static_cast<int>(of.sub_chip_id), of.reg_addr, value, ret);
    } else {
        printf("drv_cdr_reg_write success, inst_id=0x%x, chip_id=%d, sub_chip_id=%d,reg_addr=0x%x, "
               "write_value=0x%x.\r\n",
               of.inst_id, static_cast<int>(of.chip_id), static_cast<int>(of.sub_chip_id), of.reg_addr, value);
    }
    return static_cast<int>(ret) | read_register(of);
}

// What a query said about an interface, in an area that the caller frees; null when it could not be asked.
struct text_answer {
    char *text;
    uint32_t ret;
};

// An interface that does not come up is asked all the same: its texts tell why.
text_answer ask(const interface_words &on, const char *query, const char *without_area) {
    char *text = new_text_area(text_size);
    if (text == nullptr) {
        close_held_library(library);
        puts(without_area);
        return {nullptr, 0};
    }
    uint32_t ignored = 0;
    if (bring_up(on, &ignored)) {
        const auto operation = find_operation<decltype(drv_cdr_get_interface_config)>(library, query);
        if (operation != nullptr) {
            const uint32_t ret = operation(on.inst_id, on.chip_id, &on.selector, text, text_size);
            return {text, ret};
        }
    }
    free(text);
    return {nullptr, 0};
}

int get_interface_config(int count, char **args) {
    if (is_too_few(count, 3)) {
        return -1;
    }
    const interface_words on = words_of_interface(args);
    const text_answer answer = ask(on, "drv_cdr_get_interface_config", "test_cdr_get_interface_config malloc fail.\r");
    if (answer.text == nullptr) {
        return -1;
    }
    if (answer.ret != 0) {
        printf("drv_cdr_get_interface_config fail, inst_id=0x%x, chip_id=%d, inf_id=%d, "
               "chl_rate=%d,ret=%#x.\r\n%s\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), answer.ret, answer.text);
    } else {
        printf("drv_cdr_get_interface_config success, inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d.\r\n%s\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), answer.text);
    }
    free(answer.text);
    return static_cast<int>(answer.ret);
}

int get_interface_status(int count, char **args) {
    if (is_too_few(count, 3)) {
        return -1;
    }
    const interface_words on = words_of_interface(args);
    const text_answer answer = ask(on, "drv_cdr_get_interface_status", "test_cdr_get_interface_status malloc fail.\r");
    if (answer.text == nullptr) {
        return -1;
    }
    if (answer.ret != 0) {
        printf("drv_cdr_get_interface_status fail, inst_id=0x%x, chip_id=%d, inf_id=%d, "
               "chl_rate=%d,ret=%#x.\r\n%s\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), answer.ret, answer.text);
    } else {
        printf("drv_cdr_get_interface_status success, inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d.\r\n%s\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), answer.text);
    }
    free(answer.text);
    return static_cast<int>(answer.ret);
}

// A link that is down is an answer, too: it is told as a success, with the driver's code behind it.
int get_interface_link(int count, char **args) {
    if (is_too_few(count, 4)) {
        return -1;
    }
    const interface_words on = words_of_interface(args);
    const uint32_t dir = word_to_u32(args[4]);
    uint32_t ignored = 0;
    if (!bring_up(on, &ignored)) {
        return -1;
    }
    const auto operation = find_operation<decltype(drv_cdr_get_interface_link)>(library, "drv_cdr_get_interface_link");
    if (operation == nullptr) {
        return -1;
    }
    uint32_t status = 0;
    const uint32_t ret = operation(on.inst_id, on.chip_id, &on.selector, dir, &status);
    if (ret != 0) {
        printf("drv_cdr_get_interface_link success, inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d,dir=%d, "
               "link_status=down,ret=%#x.\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), static_cast<int>(dir), ret);
    } else {
        printf("drv_cdr_get_interface_link success, inst_id=0x%x, chip_id=%d, inf_id=%d, chl_rate=%d,dir=%d, "
               "link_status=up.\r\n",
               on.inst_id, static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id),
               static_cast<int>(on.selector.chl_rate), static_cast<int>(dir));
    }
    return 0;
}

// The rate is needed here as elsewhere, though the usage does not name it and the lines do not show it.
int get_digit_eye(int count, char **args) {
    if (is_too_few(count, 3)) {
        return -1;
    }
    const interface_words on = words_of_interface(args);
    const text_answer answer = ask(on, "drv_cdr_get_digit_eye", "test_cdr_get_interface_digit_eye malloc fail.\r");
    if (answer.text == nullptr) {
        return -1;
    }
    if (answer.ret != 0) {
        printf("drv_cdr_get_digit_eye fail, inst_id=0x%x, chip_id=%d, inf_id=%d, ret=%#x.\r\n%s\r\n", on.inst_id,
               static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id), answer.ret, answer.text);
    } else {
        printf("drv_cdr_get_digit_eye success, inst_id=0x%x, chip_id=%d, inf_id=%d.\r\n%s\r\n", on.inst_id,
               static_cast<int>(on.chip_id), static_cast<int>(on.selector.inf_id), answer.text);
    }
    free(answer.text);
    return static_cast<int>(answer.ret);
}

constexpr std::array rows = {
    command_row{"drv_cdr_init_chip", init_chip, "drv_cdr_init_chip inst_id"},
    command_row{"drv_cdr_destroy_chip", destroy_chip, "drv_cdr_destroy_chip inst_id chip_id"},
    command_row{"drv_cdr_init_interface", init_interface, "drv_cdr_init_interface inst_id chip_id inf_id chl_rate"},
    command_row{"drv_cdr_destroy_interface", destroy_interface,
                "drv_cdr_destroy_interface inst_id chip_id inf_id chl_rate"},
    command_row{"drv_cdr_reg_read", reg_read, "drv_cdr_reg_read inst_id chip_id sub_chip_id reg_addr"},
    command_row{"drv_cdr_reg_write", reg_write, "drv_cdr_reg_write inst_id chip_id sub_chip_id reg_addr reg_value"},
    command_row{"drv_cdr_get_interface_config", get_interface_config,
                "drv_cdr_get_interface_config inst_id chip_id inf_id chl_rate"},
    command_row{"drv_cdr_get_interface_status", get_interface_status,
                "drv_cdr_get_interface_status inst_id chip_id inf_id chl_rate"},
    command_row{"drv_cdr_get_interface_link", get_interface_link,
                "drv_cdr_get_interface_link inst_id chip_id inf_id chl_rate dir"},
    command_row{"drv_cdr_get_digit_eye", get_digit_eye, "drv_cdr_get_digit_eye inst_id chip_id inf_id"},
};

static_assert(rows_are_sound(rows));

int run_framed(int count, char **args, command_table table) {
    print_begin_banner(banner_style::narrow, "cdr_test");
    const int result = dispatch(count, args, table, timing_on);
    if (result != 0) {
        puts("[TEST RESULT: FAIL]\r");
        print_end_banner(banner_style::narrow, "cdr_test");
        return result;
    }
    print_end_banner(banner_style::narrow, "cdr_test");
    puts("[TEST RESULT: SUCCESS]\r");
    return destroy_chip(count - 1, args + 1);
}

// The first word is the sub-command; the chips are up before anybody asks whether there is one of that name.
int run(int count, char **args, command_table table) {
    if (is_too_few(count, 1)) {
        return -1;
    }
    int result = soft_init(word_to_u32(args[1]));
    if (result == 0) {
        result = init_chip(count - 1, args + 1);
    }
    return result != 0 ? result : run_framed(count, args, table);
}

} // namespace

int cdr_test(int count, char **args) {
    const command_table table = new_command_table();
    if (table.empty()) {
        return -1;
    }
    register_rows(rows, table);
    const int result = run(count, args, table);
    free_command_table(table);
    return result;
}
