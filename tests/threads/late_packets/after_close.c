/* Stands in front of the loader: lets late packets of a library arrive between its close and what comes next. */
#include <dlfcn.h>
#include <stddef.h>

int dlclose(void *library) {
    void (*wait_for_late_packets)(void) = NULL;
    int (*next)(void *) = NULL;
    *(void **)&wait_for_late_packets = dlsym(library, "wait_for_late_packets");
    *(void **)&next = dlsym(RTLD_NEXT, "dlclose");
    const int result = next(library);
    if (wait_for_late_packets != NULL) {
        wait_for_late_packets();
    }
    return result;
}
