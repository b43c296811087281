// The language that scripts and traces share: one rule, or one recorded call, a line.
//
//   drv_mac_get_num(inst_id=0xffffffff, type_id=1) = 0x0 num=4 x3   # comment
//   @2 drv_reset_get_code() = 0x811101a4                              of the second thread
//   drv_board_init(inst_id=0xffffffff) ...                            begun; the line is there again when it came back
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
    uint32_t thread = 0;    // the thread that calls; 0: any
    uint32_t operation = 0; // index into the table of operations
    bool any_input = false; // written without parentheses
    std::vector<named_value> inputs;
    outcome what = outcome::code;
    uint64_t code = 0; // of a signed result, sign-extended
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

// A call alone, as "op(name=value, name=value)". Outputs may be named as well: what stands in their areas before.
// Throws syntax_error.
rule parse_call(std::string_view line);

// The line that parse_script reads as this rule; comments and blanks aside, the same bytes as it was read from.
std::string print_rule(const rule &shown);

// The call alone, without result: "op(name=value, name=value)".
std::string print_call(uint32_t operation, const std::vector<named_value> &inputs);

// What stands behind the call: " = 0x0 name=value".
std::string print_answer(const rule &shown);

// "@2 " of the second thread; nothing of the first.
std::string print_thread(uint32_t thread);

// Stands behind a call that is begun, where other lines come before its end.
constexpr const char *begun_mark = " ...";

} // namespace kestro_probe
