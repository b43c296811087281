// Interrupt lines. A combiner collects several into one line of the processor; its description says which.
#include "selftest/chips/interrupts.h"

#include "bounds/bounds.h"
#include "drv_basic/chips/drv_intr.h"
#include "drv_basic/service/drv_log.h"
#include "nb_ctl/board_xml.h"
#include "selftest/files.h"
#include "selftest/selftest_log.h"

namespace {

constexpr const char *module = "irq_combiner";
constexpr uint32_t no_index = UINT32_MAX;
constexpr uint32_t interrupt_log = 62;
constexpr size_t name_size = 60;

// No combiner has more inputs; a description that answers to every name is not walked for ever.
constexpr uint32_t max_lines = 1024;

struct interrupt_line {
    uint32_t combiner;
    uint32_t hwirq;
    uint32_t index;
    uint32_t type;
};

const char *type_name(uint32_t type) {
    switch (type) {
    case 1:
        return "card-offline-int";
    case 2:
        return "lpu-offline-int";
    case 5:
        return "lpu-mode-butto-intn";
    case 7:
        return "card-int";
    case 8:
        return "card-bp-int";
    case 9:
        return "msc-scc-int";
    case 10:
        return "msc-xsc-int";
    case 11:
        return "np-int";
    case 12:
        return "mac-int";
    case 13:
        return "woffline-int";
    case 14:
        return "sfu-offline-int";
    case 30:
        return "peer-wdg-rst-int";
    case 32:
        return "dyinggasp-int";
    case 34:
        return "reset-bitton-int";
    default:
        return "other-int";
    }
}

// Nothing is raised for the test: what comes is real, and is only written down.
uint32_t note_interrupt(uint32_t index, uint32_t type, void *) {
    drv_log_record(interrupt_log, log_info, 0, "The interrupt check callback start. index 0x%x type 0x%x \r\n", index,
                   type);
    return 0;
}

bool succeeds(const char *step, uint32_t ret, const interrupt_line &line, report_sink sink) {
    if (ret != 0) {
        report_append(sink, "Error  : irq_combiner@%u %s fail 0x%x index 0x%x type %s %u\r\n", line.combiner, step, ret,
                      line.index, type_name(line.type), line.type);
    }
    return ret == 0;
}

bool is_known_to_kernel(const interrupt_line &line) {
    uint32_t found = 0;
    return irq_in_proc_interrupts(line.combiner, line.hwirq, &found) == 0 && found != 0;
}

// It is looked for while it is registered: the kernel's table shows no other. The last step leaves it enabled, for the
// drivers that live on it.
int check_interrupt(const interrupt_line &line, report_sink sink) {
    const uint32_t index = line.index;
    const uint32_t type = line.type;
    if (!succeeds("regist", drv_intr_set_regist(index, type, note_interrupt, nullptr), line, sink)) {
        return -1;
    }
    if (!is_known_to_kernel(line)) {
        report_append(sink, "Error  : irq_combiner@%u regist check /proc/interrupts fail index 0x%x type %s %u\r\n",
                      line.combiner, index, type_name(type), type);
        return -1;
    }
    if (!succeeds("unregist", drv_intr_set_unregist(index, type), line, sink) ||
        !succeeds("re regist", drv_intr_set_regist(index, type, note_interrupt, nullptr), line, sink) ||
        !succeeds("disable", drv_intr_disable(index, type), line, sink) ||
        !succeeds("enable", drv_intr_enable(index, type), line, sink)) {
        return -1;
    }
    report_append(sink, "Success: irq_combiner@%u regist unregist enable disbale test pass index 0x%x type %s %u\r\n",
                  line.combiner, index, type_name(type), type);
    return 0;
}

// The entries of a combiner are not counted: they end where one has no hwirq.
int check_combiner(uint32_t inst_id, uint32_t combiner, report_sink sink) {
    char node[name_size] = {};
    if (sprintf_s(node, sizeof(node), "irq_combiner@%u", combiner) < 0) {
        return 0;
    }
    int result = 0;
    for (uint32_t i = 0; i < max_lines; ++i) {
        char entry[name_size] = {};
        interrupt_line line{combiner, 0, no_index, 0};
        if (sprintf_s(entry, sizeof(entry), "hwirq_cfg%u", i) < 0 ||
            xml_get_element_value_u32(inst_id, module, node, entry, "hwirq", &line.hwirq) != 0) {
            break;
        }
        if (xml_get_element_value_u32(inst_id, module, node, entry, "index_id", &line.index) != 0) {
            line.index = no_index;
        }
        const uint32_t ret = xml_get_element_value_u32(inst_id, module, node, entry, "type", &line.type);
        if (ret != 0) {
            report_append(sink, "Error  : intr get xml type fail 0x%x. entry_name %s \r\n", ret, entry);
            result = -1;
            continue;
        }
        result |= check_interrupt(line, sink);
    }
    return result;
}

} // namespace

int intr_section(uint32_t inst_id, report_sink sink) {
    uint32_t combiners = 0;
    const uint32_t ret = xml_get_node_num(inst_id, module, &combiners);
    if (ret != 0) {
        report_append(sink, "Error  : intr get xml irq_combiner fail 0x%x\r\n", ret);
        return -1;
    }
    int result = 0;
    for (uint32_t i = 0; i < combiners; ++i) {
        result |= check_combiner(inst_id, i, sink);
    }
    return result;
}
