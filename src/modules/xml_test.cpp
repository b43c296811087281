// xml_test: asks the board description, which tells of each board what is on it: a tree of modules, nodes, entries and
// elements by their names. A query that fails prints nothing of its own. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "modules/modules.h"
#include "nb_ctl/board_xml.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr uint32_t string_size = 128;

// The words that lead to an element, or null, and the usage line is printed.
char **words_of_element(int count, char **args, const char *name, uint32_t *inst_id) {
    char **inputs = after_optional_inst(count, args, 4, inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test xml_test %s [inst_id] [module] [node] [entry] [attr]\r\n", name);
    }
    return inputs;
}

char **words_of_node(int count, char **args, const char *name, uint32_t *inst_id) {
    char **inputs = after_optional_inst(count, args, 2, inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test xml_test %s [inst_id] [module] [node]\r\n", name);
    }
    return inputs;
}

void print_u32(uint32_t value) {
    printf("hex:0x%04x dec:%04d\r\n", value, static_cast<int>(value));
}

void print_existence(uint32_t flag) {
    printf("hex:0x%04x dec:%04d str:%s\r\n", flag, static_cast<int>(flag), flag != 0 ? "exist" : "not exist");
}

int xml_get_string(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_element(count, args, "xml_get_string", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    char text[string_size + 1] = {};
    const uint32_t ret = xml_get_element_string(inst_id, inputs[0], inputs[1], inputs[2], inputs[3], text, string_size);
    if (ret == 0) {
        printf("string:%s\r\n", text);
    }
    return static_cast<int>(ret);
}

int xml_get_value_u32(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_element(count, args, "xml_get_value_u32", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    uint32_t value = 0;
    const uint32_t ret = xml_get_element_value_u32(inst_id, inputs[0], inputs[1], inputs[2], inputs[3], &value);
    if (ret == 0) {
        print_u32(value);
    }
    return static_cast<int>(ret);
}

int xml_get_value_u64(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_element(count, args, "xml_get_value_u64", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    uint64_t value = 0;
    const uint32_t ret = xml_get_element_value_u64(inst_id, inputs[0], inputs[1], inputs[2], inputs[3], &value);
    if (ret == 0) {
        printf("hex:0x%08llx dec:%08lld\r\n", static_cast<unsigned long long>(value), static_cast<long long>(value));
    }
    return static_cast<int>(ret);
}

int xml_get_entry_number(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_node(count, args, "xml_get_entry_number", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    uint32_t number = 0;
    const uint32_t ret = xml_get_entry_num(inst_id, inputs[0], inputs[1], &number);
    if (ret == 0) {
        print_u32(number);
    }
    return static_cast<int>(ret);
}

// With a node it is asked how many there are of that name, without one how many are numbered.
int xml_get_node_number(int count, char **args) {
    if (count < 1) {
        printf("./kestro_test xml_test %s [inst_id] [module] [str]\r\n", "xml_get_node_number");
        return -1;
    }
    uint32_t number = 0;
    uint32_t ret = 0;
    if (count == 1) {
        ret = xml_get_node_num(DRV_INST_SELF, args[0], &number);
    } else if (count == 2) {
        ret = xml_get_node_num(word_to_u32(args[0]), args[1], &number);
    } else {
        ret = xml_get_specified_node_num(word_to_u32(args[0]), args[1], args[2], &number);
    }
    if (ret == 0) {
        print_u32(number);
    }
    return static_cast<int>(ret);
}

int xml_guest_element_exist(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_element(count, args, "xml_guest_element_exist", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    uint32_t flag = 0;
    const uint32_t ret = xml_is_element_exist(inst_id, inputs[0], inputs[1], inputs[2], inputs[3], &flag);
    if (ret == 0) {
        print_existence(flag);
    }
    return static_cast<int>(ret);
}

int xml_guest_entry_exist(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test xml_test %s [inst_id] [module] [node] [entry]\r\n", "xml_guest_entry_exist");
        return -1;
    }
    uint32_t flag = 0;
    const uint32_t ret = xml_is_entry_exist(inst_id, inputs[0], inputs[1], inputs[2], &flag);
    if (ret == 0) {
        print_existence(flag);
    }
    return static_cast<int>(ret);
}

int xml_guest_node_exist(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = words_of_node(count, args, "xml_guest_node_exist", &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    uint32_t flag = 0;
    const uint32_t ret = xml_is_node_exist(inst_id, inputs[0], inputs[1], &flag);
    if (ret == 0) {
        print_existence(flag);
    }
    return static_cast<int>(ret);
}

int xml_guest_module_exist(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test xml_test %s [inst_id] [module]\r\n", "xml_guest_module_exist");
        return -1;
    }
    uint32_t flag = 0;
    const uint32_t ret = xml_is_module_exist(inst_id, inputs[0], &flag);
    if (ret == 0) {
        print_existence(flag);
    }
    return static_cast<int>(ret);
}

int xml_file_load(int count, char **args) {
    if (count < 1) {
        printf("./kestro_test xml_test %s [inst_id]\r\n", "xml_file_load");
        return -1;
    }
    const uint32_t ret = xml_load(word_to_u32(args[0]));
    printf("xml_load ret:%u\r\n", ret);
    return static_cast<int>(ret);
}

int xml_file_unload(int count, char **args) {
    if (count < 1) {
        printf("./kestro_test xml_test %s [inst_id]\r\n", "xml_file_unload");
        return -1;
    }
    const uint32_t ret = xml_unload(word_to_u32(args[0]));
    printf("xml_unload ret:%u\r\n", ret);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"xml_get_string", xml_get_string, "xml_get_string"},
    command_row{"xml_get_value_u32", xml_get_value_u32, "xml_get_value_u32"},
    command_row{"xml_get_value_u64", xml_get_value_u64, "xml_get_value_u64"},
    command_row{"xml_get_entry_number", xml_get_entry_number, "xml_get_entry_number"},
    command_row{"xml_get_node_number", xml_get_node_number, "xml_get_node_number"},
    // "guest" is how these have always been called.
    command_row{"xml_guest_element_exist", xml_guest_element_exist, "xml_guest_element_exist"},
    command_row{"xml_guest_entry_exist", xml_guest_entry_exist, "xml_guest_entry_exist"},
    command_row{"xml_guest_node_exist", xml_guest_node_exist, "xml_guest_node_exist"},
    command_row{"xml_guest_module_exist", xml_guest_module_exist, "xml_guest_module_exist"},
    command_row{"xml_file_load", xml_file_load, "xml_file_load"},
    command_row{"xml_file_unload", xml_file_unload, "xml_file_unload"},
};

static_assert(rows_are_sound(rows));

} // namespace

int xml_test(int count, char **args) {
    return run_module(rows, count, args);
}
