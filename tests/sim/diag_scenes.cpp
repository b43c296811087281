// What a program does with the registry of diagnose commands and kestro_call cannot: its handlers write, fail, call
// drivers and register commands themselves; its texts go away; it registers as many as there is room for. Each scene
// prints what it sees.
#include "drv_basic/management/drv_board.h"
#include "drv_basic/service/drv_diag_cmd.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using area = std::array<char, 64>;

void ask(const char *words, uint32_t size = sizeof(area)) {
    area output{};
    const uint32_t result = drv_diag_cmd_process(words, output.data(), size);
    printf("%s: 0x%x '%.*s'\n", words, result, static_cast<int>(output.size()), output.data());
}

uint32_t add(const std::string &words, const std::string &help, drv_diag_handler handler) {
    const drv_diag_record record{words.c_str(), handler, words.c_str(), help.c_str()};
    return drv_diag_reg_cmd_list(&record, 1);
}

uint32_t say_parameters(char *output, uint32_t size, uint32_t first, uint32_t second, uint32_t third) {
    snprintf(output, size, "%u bytes %u %u %u", size, first, second, third);
    return 0;
}

uint32_t say_other(char *output, uint32_t size, uint32_t, uint32_t, uint32_t) {
    snprintf(output, size, "other");
    return 0;
}

// Fills its area and ends no text.
uint32_t fill(char *output, uint32_t size, uint32_t, uint32_t, uint32_t) {
    memset(output, 'f', size);
    return 0;
}

uint32_t fail_as_told(char *output, uint32_t size, uint32_t first, uint32_t, uint32_t) {
    snprintf(output, size, "half");
    return first;
}

// Drivers may be asked for anything, the diagnosis as well.
uint32_t call_drivers(char *output, uint32_t size, uint32_t, uint32_t, uint32_t) {
    uint32_t slot = 0;
    area inner{};
    const uint32_t result = drv_board_get_self_slotid(&slot) |
                            drv_diag_cmd_process("say 4 5 6", inner.data(), static_cast<uint32_t>(inner.size())) |
                            add("late", "[argcnt=0] late", say_other);
    snprintf(output, size, "slot %u, %s, 0x%x", slot, inner.data(), result);
    return 0;
}

void handlers() {
    const drv_diag_record all[]{{"say", say_parameters, "say", "[argcnt=3]"},
                                {"say so", say_parameters, "say so", "[argcnt=1]"},
                                {"fill", fill, "fill", "[argcnt=0]"},
                                {"fail", fail_as_told, "fail", "[argcnt=1]"},
                                {"drivers", call_drivers, "drivers", "[argcnt=0]"}};
    printf("0x%x\n", drv_diag_reg_cmd_list(all, 5));
    ask("say 1 2 3");
    ask("say so 7", 20);
    ask("fill");
    ask("fill", 1);
    ask("fail 0");
    ask("fail 0xffffffff");
    ask("fail 17");
    ask("late");
    ask("drivers");
    ask("late");
}

// Every text is gone and its memory used for another when the commands are asked for.
void texts() {
    std::vector<std::string> kept{"a text that lies on the heap", "[argcnt=0] and a help text that does so, too"};
    printf("0x%x\n", add(kept[0], kept[1], say_other));
    for (std::string &each : kept) {
        each.assign(each.size(), 'x');
    }
    kept.clear();
    ask("a text that lies on the heap");
    ask("a help");
}

// Words that are registered again take no room of their own.
void room() {
    uint32_t result = 0;
    for (int i = 0; i < 127; ++i) {
        result |= add("word" + std::to_string(i), "[argcnt=0]", say_other);
    }
    printf("0x%x\n", result);
    const drv_diag_record two[]{{"one", say_other, "one", "[argcnt=0]"}, {"two", say_other, "two", "[argcnt=0]"}};
    printf("0x%x\n", drv_diag_reg_cmd_list(two, 2));
    ask("one");
    const uint32_t last = drv_diag_reg_cmd_list(two, 1);
    const uint32_t too_many = drv_diag_reg_cmd_list(two + 1, 1);
    const uint32_t again = add("word5", "[argcnt=3]", say_parameters);
    printf("0x%x 0x%x 0x%x\n", last, too_many, again);
    ask("word5 1 2 3");
    ask("word6");
    const std::vector<drv_diag_record> many(129, two[0]);
    printf("0x%x 0x%x\n", drv_diag_reg_cmd_list(many.data(), 129), drv_diag_reg_cmd_list(two, 0xFFFFFFFF));
}

} // namespace

int main(int count, char **words) {
    const std::string scene = count == 2 ? words[1] : "";
    if (drv_diag_cmd_init() != 0) {
        return 1;
    }
    if (scene == "handlers") {
        handlers();
    } else if (scene == "texts") {
        texts();
    } else if (scene == "room") {
        room();
    } else {
        return 2;
    }
    return 0;
}
