// Tells the main program from the libraries by addresses, and finds what stands behind a wrapper.
#include "probe/linkage.h"

#include "probe/descriptor.h"
#include "probe/runtime.h"

#include <dlfcn.h>
#include <link.h>

namespace kestro_probe {

namespace {

struct address_range {
    uintptr_t begin = 0;
    uintptr_t end = 0;
};

// Written once, before main.
address_range main_program;

// The dynamic linker lists the main program first; its executable segments are one range.
int keep_first(dl_phdr_info *info, size_t, void *) {
    for (size_t i = 0; i < info->dlpi_phnum; ++i) {
        const auto &segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) {
            continue;
        }
        const uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
        main_program.begin = main_program.end == 0 ? begin : main_program.begin;
        main_program.end = begin + segment.p_memsz;
    }
    return 1;
}

// A lookup through a library also finds what the whole program sees first, which is the wrapper.
void *found_behind(size_t operation, void *handle) {
    void *found = real_dlsym()(handle, operations[operation].name);
    return found != wrappers[operation] ? found : nullptr;
}

void *found_through_caller(size_t operation, const void *caller) {
    Dl_info info{};
    link_map *object = nullptr;
    if (dladdr1(caller, &info, reinterpret_cast<void **>(&object), RTLD_DL_LINKMAP) == 0 || object == nullptr) {
        return nullptr;
    }
    void *handle = dlopen(object->l_name, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
        return nullptr;
    }
    void *found = found_behind(operation, handle);
    dlclose(handle);
    return found;
}

} // namespace

dlsym_function real_dlsym() {
    static std::atomic<void *> kept{nullptr};
    void *found = kept;
    // The C library's versions of dlsym: since 2.34 of all processors, before that of x86-64 and of ARM.
    for (const char *version : {"GLIBC_2.34", "GLIBC_2.2.5", "GLIBC_2.4"}) {
        if (found == nullptr) {
            found = dlvsym(RTLD_NEXT, "dlsym", version);
        }
    }
    kept = found;
    return reinterpret_cast<dlsym_function>(found);
}

void find_main_program() {
    dl_iterate_phdr(keep_first, nullptr);
}

bool is_main_program(const void *address) {
    const auto at = reinterpret_cast<uintptr_t>(address);
    return at >= main_program.begin && at < main_program.end;
}

void *real_operation(size_t operation, const void *caller) {
    void *found = real_operations[operation];
    if (found != nullptr) {
        return found;
    }
    found = found_behind(operation, RTLD_NEXT);
    if (found == nullptr && !is_main_program(caller)) {
        // Not kept: the library may be closed, and opened elsewhere.
        return found_through_caller(operation, caller);
    }
    real_operations[operation] = found;
    return found;
}

} // namespace kestro_probe
