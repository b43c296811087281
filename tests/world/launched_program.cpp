// Stands where kestro_test would: prints the words and the part of the environment that the launcher gave it, and ends
// as its first word says.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

int main(int count, char **arguments) {
    for (int i = 0; i < count; ++i) {
        printf("word[%s]\n", arguments[i]);
    }
    for (const char *name :
         {"LD_LIBRARY_PATH", "LD_PRELOAD", "KESTRO_SIM_BOARD", "KESTRO_SIM_SEAT", "KESTRO_SIM_STATE", "KESTRO_SIM_ROOT",
          "KESTRO_SIM_CLOCK", "KESTRO_SIM_FAIL_ALLOC", "KESTRO_PROBE_SCRIPT", "KESTRO_PROBE_STRICT",
          "KESTRO_PROBE_TRACE", "KESTRO_PROBE_REPLAY", "KESTRO_PROBE_FAIL_CALL"}) {
        const char *value = getenv(name);
        printf("%s=%s\n", name, value != nullptr ? value : "(none)");
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
