// The registers of the board management devices. A misspelt name would leave a device out without a word, so here every
// name is known; which of them a board has is its own affair.
#include "sim/core/validate.h"

#include <algorithm>
#include <span>

namespace kestro_sim {

namespace {

// A text has the most bytes it may have; a number has 0 there.
struct register_rule {
    std::string_view name;
    size_t text_max = 0;
};

struct device_rule {
    std::string_view module;
    std::string_view node;
    std::span<const register_rule> registers;
};

constexpr size_t part_number_max = 20;
constexpr size_t version_max = 126;

constexpr register_rule unit_registers[]{
    {"type"},          {"pcb_ver"},     {"usr_pcb_ver"}, {"soft_pcb_ver"}, {"bom_ver"},         {"bom_id"},
    {"power_watts"},   {"fullin"},      {"logic_slot"},  {"peer_slot"},    {"peer_logic_slot"}, {"bootstep"},
    {"factory_reset"}, {"low_voltage"}, {"mpu"},         {"card_fault"}};
constexpr register_rule memory_registers[]{
    {"bootrom_mib"}, {"flash_mib"}, {"nandflash_mib"}, {"nvram_mib"}, {"sdram_mib"}};
constexpr register_rule dimm_registers[]{
    {"maker"},    {"site"},       {"year"},     {"week"},    {"serial"},   {"part_number", part_number_max},
    {"revision"}, {"chip_maker"}, {"stepping"}, {"celsius"}, {"bus_fault"}};
constexpr register_rule ddr_registers[]{{"ddr_event"}};
constexpr register_rule bios_registers[]{{"version", version_max}, {"area"}};
constexpr register_rule logic_registers[]{{"version"}, {"is_fpga"}};
constexpr register_rule fault_register[]{{"fault"}};
constexpr register_rule status_register[]{{"status"}};
constexpr register_rule value_register[]{{"value"}};
constexpr register_rule on_register[]{{"on"}};
constexpr register_rule interrupt_registers[]{{"type"}, {"fault"}};
constexpr register_rule tpm_registers[]{{"absent"}, {"active"}};
constexpr register_rule sfu_registers[]{{"isolate"}, {"fullin_isolate_en"}};
constexpr register_rule bbox_registers[]{{"enable"}, {"seconds"}};
constexpr register_rule smi_registers[]{{"source"}, {"backup_enable"}};
constexpr register_rule smi_bus_registers[]{{"crc_errors"}, {"los"}};
constexpr register_rule subboard_registers[]{{"absent"}, {"type"}, {"pcb_ver"}, {"bom_ver"}, {"bom_id"}};
constexpr register_rule smb_registers[]{{"tx_errors"}, {"rx_errors"}};

constexpr device_rule rules[] = {
    {"sim_board", "unit", unit_registers},
    {"sim_board", "memory", memory_registers},
    {"sim_board", "dimm", dimm_registers},
    {"sim_board", "cpu", ddr_registers},
    {"sim_board", "bios", bios_registers},
    {"sim_board", "bios_area", fault_register},
    {"sim_board", "logic", logic_registers},
    {"sim_board", "capability", value_register},
    {"sim_board", "power", on_register},
    {"sim_board", "corner", status_register},
    {"sim_board", "corrosion", status_register},
    {"sim_board", "interrupt", interrupt_registers},
    {"sim_board", "tpm", tpm_registers},
    {"sim_board", "sfu", sfu_registers},
    {"sim_board", "bbox", bbox_registers},
    {"sim_board", "smi", smi_registers},
    {"sim_board", "smi_bus", smi_bus_registers},
    {"sim_board", "presence", status_register},
    {"sim_subboard", "subboard", subboard_registers},
    {"sim_smb", "link", smb_registers},
};

std::string name_of(pugi::xml_node item) {
    return item.attribute("name").value();
}

template <typename Rules, typename Project> std::string listed(const Rules &known, Project name) {
    std::string all;
    for (const auto &one : known) {
        all += name(one).empty() ? "" : (all.empty() ? "" : ", ") + std::string(name(one));
    }
    return all;
}

void check_register(const description &board, pugi::xml_node element, const device_rule &rule) {
    const auto known = std::find_if(rule.registers.begin(), rule.registers.end(),
                                    [&](const register_rule &one) { return one.name == name_of(element); });
    if (known == rule.registers.end()) {
        board.fail(element, "unknown element '" + name_of(element) + "'",
                   "a device of node " + std::string(rule.node) +
                       " has: " + listed(rule.registers, [](const register_rule &one) { return one.name; }));
    }
    if (known->text_max == 0 && !element_number(element)) {
        board.fail(element, "element '" + name_of(element) + "' is no number", "give it value=\"a number\"");
    }
    const auto text = element_text(element);
    if (known->text_max != 0 && (!text || text->size() > known->text_max)) {
        board.fail(element,
                   "element '" + name_of(element) + "' is no text of at most " + std::to_string(known->text_max) +
                       " bytes",
                   "give it text=\"...\"");
    }
}

void check_node(const description &board, pugi::xml_node node, const device_rule &rule) {
    for (const pugi::xml_node entry : node.children("entry")) {
        const auto id = parse_number(name_of(entry));
        if (!id || *id > UINT32_MAX || name_of(entry) != std::to_string(*id)) {
            board.fail(entry, "entry '" + name_of(entry) + "' is no number",
                       "entries of devices are named by their plain number");
        }
        for (const pugi::xml_node element : entry.children("element")) {
            check_register(board, element, rule);
        }
    }
}

bool is_ruled(std::string_view module) {
    return std::any_of(std::begin(rules), std::end(rules),
                       [&](const device_rule &rule) { return rule.module == module; });
}

void check_module(const description &board, pugi::xml_node module) {
    const std::string module_name = name_of(module);
    for (const pugi::xml_node node : module.children("node")) {
        const auto rule = std::find_if(std::begin(rules), std::end(rules), [&](const device_rule &one) {
            return one.module == module_name && one.node == name_of(node);
        });
        if (rule == std::end(rules)) {
            const auto of_module = [&](const device_rule &one) {
                return one.module == module_name ? one.node : std::string_view();
            };
            board.fail(node, "unknown node '" + name_of(node) + "'", module_name + " has: " + listed(rules, of_module));
        }
        check_node(board, node, *rule);
    }
}

} // namespace

void validate_board_devices(const description &board) {
    for (const pugi::xml_node place : board.chassis().children("place")) {
        for (const pugi::xml_node module : place.children("module")) {
            if (is_ruled(name_of(module))) {
                check_module(board, module);
            }
        }
    }
}

} // namespace kestro_sim
