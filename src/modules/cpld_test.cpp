// cpld_test: the programmable logic of the board. Chip 0 is the control CPLD, the others are control FPGAs; each has
// registers, a self-test, the links to the agents and ports behind it, and knows where the network processor is.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/chips/drv_cpld.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::bare;

// What the driver gets for the findings of a check.
constexpr uint32_t findings_size = 256;

int cpld_read(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t offset = 0;
    uint32_t data = 0;
    print_begin_banner(style, "test_cpld_reg_read");
    check_args(3, count, args, &inst_id, &chip_id, &offset);
    const uint32_t ret = drv_cpld_reg_read(inst_id, chip_id, offset, &data);
    printf("cpld_read:inst_id:%x chip_id:%x offset:%x  data:%x ret:%x\n", inst_id, chip_id, offset, data, ret);
    print_end_banner(style, "test_cpld_reg_read");
    return static_cast<int>(ret);
}

int cpld_write(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t offset = 0;
    uint32_t data = 0;
    print_begin_banner(style, "test_cpld_reg_write");
    check_args(4, count, args, &inst_id, &chip_id, &offset, &data);
    const uint32_t ret = drv_cpld_reg_write(inst_id, chip_id, offset, data);
    printf("cpld_write:inst_id:%x chip_id:%x offset:%x  data:%x ret:%x\n", inst_id, chip_id, offset, data, ret);
    print_end_banner(style, "test_cpld_reg_write");
    return static_cast<int>(ret);
}

constexpr uint32_t dumped_registers = 1024;

// A refused dump has no end banner: no test took place. Without an area the driver is called all the same; it is for
// the driver to refuse.
int test_dump(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t start = 0;
    uint32_t num = 0;
    print_begin_banner(style, "test_cpld_reg_dump");
    check_args(4, count, args, &inst_id, &chip_id, &start, &num);
    if (num > dumped_registers) {
        printf("dump num must less than 1024 \n");
        return 0;
    }
    const uint32_t len = (num + 2) * 8;
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        printf("malloc failed\n");
    }
    const uint32_t ret = drv_cpld_reg_dump(inst_id, chip_id, start, num, buffer, len);
    printf("inst_id:%d ret:0x%x\n", static_cast<int>(inst_id), ret);
    printf("chip_id:0x%x, start:0x%x, num:0x%x len:0x%x\n buf:\n%s", chip_id, start, num, len,
           buffer == nullptr ? "(null)" : buffer);
    free(buffer);
    printf("\r\n");
    print_end_banner(style, "test_cpld_reg_dump");
    return static_cast<int>(ret);
}

// The findings are not shown here: the self-test of the board shows them.
int test_selftest(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t result = 0;
    char findings[findings_size] = {};
    print_begin_banner(style, "test_cpld_selftest");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_cpld_selftest(inst_id, chip_id, &result, findings, findings_size);
    printf("inst_id:%x ret:0x%x\n", inst_id, ret);
    printf("chip_id:%x,  result:%x\n", chip_id, result);
    print_end_banner(style, "test_cpld_selftest");
    return static_cast<int>(ret);
}

// Taken down and brought up again, all chips of the instance together: the chip named has no part in it. What cannot be
// taken down is not brought up, and the code shown is that of the step that failed.
int test_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    print_begin_banner(style, "test_cpld_init");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    uint32_t ret = drv_cpld_deinit(inst_id);
    if (ret == 0) {
        ret = drv_cpld_init(inst_id);
    }
    printf("inst_id:%x ret:0x%x\n", inst_id, ret);
    print_end_banner(style, "test_cpld_init");
    return static_cast<int>(ret);
}

int test_all_function(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t flag = 0;
    print_begin_banner(style, "test_cpld_test_all_function");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_cpld_test_all_function(inst_id, chip_id, &flag);
    printf("inst_id:%x chip_id:%x flag:%x  ret:0x%x  \n", inst_id, chip_id, flag, ret);
    printf("##############################  use command \"cat /dev/kestro_log/drv_log_cpld\" to check all info  "
           "#################\n");
    print_end_banner(style, "test_cpld_test_all_function");
    return static_cast<int>(ret);
}

// The help counts the three answers as words, and so does the check: beside the instance and the chip it wants three
// words that nothing is made of. Month and day are shown under the names "date" and "time".
int build_time(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t year = 0;
    uint32_t month = 0;
    uint32_t day = 0;
    print_begin_banner(style, "test_cpld_get_build_time");
    check_args(5, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_cpld_get_build_time(inst_id, chip_id, &year, &month, &day);
    printf("cpld build time:inst_id:%x chip_id:%x year:%x  date:%x time:%x ret:%x\n", inst_id, chip_id, year, month,
           day, ret);
    print_end_banner(style, "test_cpld_get_build_time");
    return static_cast<int>(ret);
}

int test_spicheck(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t channel = 0;
    uint32_t result = 0;
    char findings[findings_size] = {};
    print_begin_banner(style, "test_cpld_check_agent_spi_status");
    check_args(3, count, args, &inst_id, &chip_id, &channel);
    const uint32_t ret = drv_cpld_check_agent_spi_status(inst_id, chip_id, channel, &result, findings, findings_size);
    printf("inst_id:%x ret:0x%x\n", inst_id, ret);
    printf("chip_id:%x channel:%x, result:%x\n", chip_id, channel, result);
    print_end_banner(style, "test_cpld_check_agent_spi_status");
    return static_cast<int>(ret);
}

int check_pcielink(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t channel = 0;
    uint32_t result = 0;
    print_begin_banner(style, "test_cpld_check_pcie_link_status");
    check_args(3, count, args, &inst_id, &chip_id, &channel);
    char *findings = new_text_area(findings_size);
    if (findings == nullptr) {
        printf("malloc failed\n");
        return 0;
    }
    const uint32_t ret = drv_cpld_check_pcie_link_status(inst_id, chip_id, channel, &result, findings, findings_size);
    printf("inst_id:%x ret:0x%x\n", inst_id, ret);
    printf("log:%s\n", findings);
    printf("chip_id:%x channel:%x, result:%x\n", chip_id, channel, result);
    free(findings);
    print_end_banner(style, "test_cpld_check_pcie_link_status");
    return static_cast<int>(ret);
}

int cpld_set_np_para(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_cpld_set_np_para");
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        printf("cpld_set_np_para input too short para.\n");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t slave_addr = word_to_u32(inputs[1]);
    const uint64_t np_addr = word_to_u64(inputs[2]);
    const uint32_t ret = drv_cpld_set_np_para(inst_id, chip_id, slave_addr, np_addr);
    printf("inst_id:%x ret:0x%x\n", inst_id, ret);
    printf("chip_id:%x, slave_addr:%x, np_addr:%llx\n", chip_id, slave_addr, static_cast<unsigned long long>(np_addr));
    print_end_banner(style, "test_cpld_set_np_para");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"cpld_read", cpld_read, "cpld_read inst_id chip_id offset"},
    command_row{"cpld_write", cpld_write, "cpld_write inst_id chip_id offset data"},
    command_row{"test_dump", test_dump, "test_dump inst_id chip_id offset"},
    command_row{"test_selftest", test_selftest, "test_selftest inst_id chip_id"},
    command_row{"test_init", test_init, "test_init inst_id chip_id"},
    command_row{"test_all_function", test_all_function, "test_all_function inst_id chip_id"},
    command_row{"build_time", build_time, "build_time inst_id chip_id year  date  time"},
    command_row{"test_spicheck", test_spicheck, "test_spicheck inst_id chip_id channel"},
    command_row{"check_pcielink", check_pcielink, "check_pcielink inst_id chip_id channel"},
    command_row{"cpld_set_np_para", cpld_set_np_para, "cpld_set_np_para inst_id chip_id slave_addr np_addr"},
};

static_assert(rows_are_sound(rows));

} // namespace

int cpld_test(int count, char **args) {
    return run_module(rows, count, args);
}
