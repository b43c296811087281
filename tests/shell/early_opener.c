/* Opens a file when it is loaded, as driver libraries open their devices. The file stays open. */
#include <fcntl.h>
#include <stdlib.h>

__attribute__((constructor)) static void open_device(void) {
    const char *path = getenv("EARLY_OPENER_FILE");
    if (path != NULL && open(path, O_RDWR) < 0) {
        abort();
    }
}
