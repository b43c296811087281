// The language that scripts and traces share: one rule, or one recorded call, a line.
//
//   drv_mac_get_num(inst_id=0xffffffff, type_id=1) = 0x0 num=4 x3   # comment
#pragma once

#include "probe/value.h"

namespace kestro_probe {

enum class outcome : uint8_t { code, pass, crash, hang };

struct named_value {
    uint32_t parameter; // index into the operation's parameters
    value content;

    bool operator==(const named_value &) const = default;
};

struct rule {
    uint32_t operation = 0; // index into the table of operations
    bool any_input = false; // written without parentheses
    std::vector<named_value> inputs;
    outcome what = outcome::code;
    uint32_t code = 0;
    std::vector<named_value> outputs;
    uint64_t times = 0; // 0: any number of times
    size_t line = 0;
    std::string source; // the line as it stands in the file, for reports
};

struct script {
    std::string file;
    std::vector<rule> rules;
    std::vector<std::string> faults; // "file:line:column: what is wrong; what would be right"
};

// Index of an operation, or the number of operations when there is none of that name.
uint32_t find_operation(std::string_view name);

// Takes a whole file apart; each line that is wrong adds one fault.
script parse_script(const std::string &file, std::string_view content);

// The line that parse_script reads as this rule; comments and blanks aside, the same bytes as it was read from.
std::string print_rule(const rule &shown);

// The call alone, without result: "op(name=value, name=value)".
std::string print_call(uint32_t operation, const std::vector<named_value> &inputs);

} // namespace kestro_probe
