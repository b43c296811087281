// The dispatcher, its usage listing and its timing lines.
#include "shell/dispatch.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <sys/time.h>

namespace {

bool is_help_word(const char *word) {
    for (const char *help : {"-?", "-h", "-help", "--help"}) {
        if (strcmp(word, help) == 0) {
            return true;
        }
    }
    return false;
}

void print_elapsed(const timeval &start, const timeval &end) {
    const long seconds = static_cast<long>(end.tv_sec - start.tv_sec);
    const long microseconds = static_cast<long>(end.tv_usec - start.tv_usec);
    printf("%s used second:%ld\r\n", "cmd_exec", seconds);
    printf("%s used millisecond:%ld\r\n", "cmd_exec", 1000 * seconds + microseconds / 1000);
}

} // namespace

void print_usage(int count, char **args, command_table table) {
    puts("");
    for (int i = 0; i < count; ++i) {
        printf("%s ", args[i]);
    }
    puts("\nUsage: kestro_test [OPTION]\t");
    puts("List the functionalities for kestro_test ");
    for (const command_entry &entry : table) {
        if (entry.help != nullptr) {
            printf(" %s\n", entry.help);
        }
    }
}

int dispatch(int count, char **args, command_table table, int timing) {
    if (count <= 0) {
        puts("kestro_test: too few args!");
        print_usage(count, args, table);
        return 0;
    }
    const command_entry *entry = find_command(args[0], table);
    if (entry == nullptr) {
        if (!is_help_word(args[0])) {
            printf("kestro_test: option %s not recognised.\n", args[0]);
        }
        print_usage(count, args, table);
        return 0;
    }
    timeval start{};
    timeval end{};
    if (timing == timing_on) {
        gettimeofday(&start, nullptr);
    }
    const int result = entry->handler(count - 1, args + 1);
    if (timing == timing_on) {
        gettimeofday(&end, nullptr);
        print_elapsed(start, end);
    }
    if (result != 0) {
        printf("kestro_test operate %s fail! \n", args[0]);
        return -1;
    }
    return 0;
}

int run_module(std::span<const command_row> rows, int count, char **args, int timing) {
    const command_table table = new_command_table();
    if (table.empty()) {
        return -1;
    }
    // A row that could not be registered has said so; the others still serve.
    register_rows(rows, table);
    const int result = dispatch(count, args, table, timing);
    free_command_table(table);
    return result;
}
