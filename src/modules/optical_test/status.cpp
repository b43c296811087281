// optical_test: what the driver answers with one value of a port (presence, signals, attributes, the bus to a module).
#include <cstdint>
#include <cstdio>
#include <type_traits>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"

namespace optical_commands {

namespace {

using value_operation = uint32_t(uint32_t inst_id, const drv_opt_port_para *port_para, uint32_t *value);

struct answer {
    bool asked;
    uint32_t ret;
    uint32_t value;
};

// Not asked, and failed, where the library lacks the operation.
template <typename operation> answer ask(const char *name, int count, char **args) {
    static_assert(std::is_same_v<operation, value_operation>);
    const auto get = find<operation>(name);
    if (get == nullptr) {
        return {false, static_cast<uint32_t>(-1), 0};
    }
    const selected_port port = read_port(count, args);
    answer given = {true, 0, 0};
    given.ret = get(port.words.inst_id, &port.selector, &given.value);
    return given;
}

// Most of these lines have one shape: what it is about, and what is said when it is so and when not.
struct status_text {
    const char *lead;
    const char *so;
    const char *not_so;
};

constexpr status_text present = {"present_status: ", "PRESENT", "NO PRESENT"};
constexpr status_text physical_present = {"physical_present_status: ", "PRESENT", "NO PRESENT"};
constexpr status_text los = {"los_status: ", "LOS", "NO LOS"};
constexpr status_text tx_fault = {"tx_fault_status :", "FAULT", "NO FAULT"};
constexpr status_text linear = {"linear_attr: ", "TYPE_LINEAR", "TYPE_NO_LINEAR"};

int show(const status_text &text, const answer &given, bool so) {
    if (given.asked) {
        printf("%s%s  value = %d ret = 0x%x\n", text.lead, so ? text.so : text.not_so, static_cast<int>(given.value),
               given.ret);
    }
    return static_cast<int>(given.ret);
}

} // namespace

int get_optical_present_status(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_present_status)>("drv_opt_get_present_status", count, args);
    return show(present, given, given.value == 1);
}

int get_optical_physical_present_status(int count, char **args) {
    const answer given =
        ask<decltype(drv_opt_get_physical_present_status)>("drv_opt_get_physical_present_status", count, args);
    return show(physical_present, given, given.value == 1);
}

// A bit of each lane, so any value is a loss.
int get_optical_los_status(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_los_status)>("drv_opt_get_los_status", count, args);
    return show(los, given, given.value != 0);
}

int get_optical_tx_fault_status(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_tx_fault_status)>("drv_opt_get_tx_fault_status", count, args);
    return show(tx_fault, given, given.value == 1);
}

int get_optical_linear_attr(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_linear_attr)>("drv_opt_get_linear_attr", count, args);
    return show(linear, given, given.value == 1);
}

int get_optical_physical_pull_status(int count, char **args) {
    const answer given =
        ask<decltype(drv_opt_get_physical_pull_status)>("drv_opt_get_physical_pull_status", count, args);
    if (given.asked) {
        printf("pull_status: %s  value = %d\n", given.value == 1 ? "PULL" : "NO PULL", static_cast<int>(given.value));
    }
    return static_cast<int>(given.ret);
}

int get_optical_encode_type(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_encode_type)>("drv_opt_get_encode_type", count, args);
    if (given.asked) {
        printf("encode_type = %d\n", static_cast<int>(given.value));
    }
    return static_cast<int>(given.ret);
}

int get_optical_lane_num(int count, char **args) {
    const answer given = ask<decltype(drv_opt_get_lane_num)>("drv_opt_get_lane_num", count, args);
    if (given.asked) {
        printf("lane_num = %d, ret = %d\n", static_cast<int>(given.value), static_cast<int>(given.ret));
    }
    return static_cast<int>(given.ret);
}

// "POK" is the word for a bus that is not well; what reads these lines knows it.
int get_optical_bus_status(int count, char **args) {
    const answer given = ask<decltype(drv_opt_bus_status_get)>("drv_opt_bus_status_get", count, args);
    if (given.asked) {
        printf("bus status: %s, value = %d ret = 0x%x\n", given.value != 0 ? "POK" : "OK",
               static_cast<int>(given.value), given.ret);
    }
    return static_cast<int>(given.ret);
}

} // namespace optical_commands
