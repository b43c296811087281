#include "shell/driver_library.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>

namespace {

// The system's text first: asking the loader for its own may change errno.
void print_failure(const char *call, const char *subject, failure_line line) {
    const char *system_text = strerror(errno);
    const char *loader_text = dlerror();
    if (line == failure_line::brief) {
        printf("%s %s fail\n", call, subject);
        return;
    }
    const char *blank = line == failure_line::with_reasons ? " " : "";
    printf("%s %s fail,%serror %s %s\n", call, subject, blank, system_text, loader_text);
}

} // namespace

void *open_library(const char *file, failure_line line) {
    void *library = dlopen(file, RTLD_NOW);
    if (library == nullptr) {
        print_failure("dlopen", file, line);
    }
    return library;
}

void close_library(void *library) {
    dlclose(library);
}

void *find_symbol(void *library, const char *name, failure_line line) {
    void *symbol = dlsym(library, name);
    if (symbol == nullptr) {
        print_failure("dlsym", name, line);
        close_library(library);
    }
    return symbol;
}

int open_held_library(held_library &library) {
    library.handle = dlopen(library.file, RTLD_LAZY | RTLD_NODELETE);
    if (library.handle == nullptr) {
        printf("dlopen %s fail %s \r\n", library.file, dlerror());
        return -1;
    }
    return 0;
}

void close_held_library(held_library &library) {
    if (library.handle != nullptr) {
        dlclose(library.handle);
        library.handle = nullptr;
    }
}

void *find_symbol(held_library &library, const char *name) {
    // The loader takes an empty handle for "the whole program", and would find what the library does not have.
    void *symbol = library.handle != nullptr ? dlsym(library.handle, name) : nullptr;
    if (symbol == nullptr) {
        printf("dlsym %s fail, fd 0x%x\r\n", name, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(library.handle)));
        close_held_library(library);
    }
    return symbol;
}
