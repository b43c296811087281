// Stands where kestro_test would: prints the words and the part of the environment that the launcher gave it, and ends
// as its first word says.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <sys/wait.h>

// Prints what a file of the state holds, and writes over it.
static void show_and_change(const char *name) {
    char path[4096];
    char text[64] = "";
    snprintf(path, sizeof(path), "%s/%s", getenv("KESTRO_SIM_STATE"), name);
    FILE *file = fopen(path, "r+");
    if (file != nullptr) {
        printf("file=%s\n", fgets(text, sizeof(text), file));
        rewind(file);
        fputs("changed", file);
        fclose(file);
    }
}

int main(int count, char **arguments) {
    for (int i = 0; i < count; ++i) {
        printf("word[%s]\n", arguments[i]);
    }
    for (const char *name :
         {"LD_LIBRARY_PATH", "LD_PRELOAD", "KESTRO_SIM_BOARD", "KESTRO_SIM_SEAT", "KESTRO_SIM_STATE", "KESTRO_SIM_ROOT",
          "KESTRO_SIM_CLOCK", "KESTRO_SIM_TIME", "KESTRO_SIM_FAIL_ALLOC", "KESTRO_SIM_WATCHDOG", "KESTRO_PROBE_SCRIPT",
          "KESTRO_PROBE_STRICT", "KESTRO_PROBE_TRACE", "KESTRO_PROBE_TRACE_OUTPUT", "KESTRO_PROBE_REPLAY",
          "KESTRO_PROBE_FAIL_CALL", "KESTRO_PROBE_SIGNAL_CALL"}) {
        const char *value = getenv(name);
        printf("%s=%s\n", name, value != nullptr ? value : "(none)");
    }
    if (count == 3 && strcmp(arguments[1], "keep") == 0) {
        show_and_change(arguments[2]);
    }
    if (count == 2 && strcmp(arguments[1], "children") == 0) {
        printf("children=%s\n", wait(nullptr) < 0 ? "none" : "some");
    }
    fflush(stdout);
    if (count == 3 && strcmp(arguments[1], "exit") == 0) {
        return atoi(arguments[2]);
    }
    if (count == 2 && strcmp(arguments[1], "crash") == 0) {
        signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    }
    return 0;
}
