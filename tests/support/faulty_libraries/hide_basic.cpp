// Preloaded: the library of the basic drivers, which the program is linked with, cannot be opened by name.
#include <cstring>
#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) void *dlopen(const char *file, int flags) noexcept {
    using dlopen_function = void *(const char *, int);
    const auto open_next = reinterpret_cast<dlopen_function *>(dlsym(RTLD_NEXT, "dlopen"));
    const bool is_hidden = file != nullptr && strcmp(file, "libdrv_basic.so") == 0;
    return open_next(is_hidden ? "hidden/libdrv_basic.so" : file, flags);
}
