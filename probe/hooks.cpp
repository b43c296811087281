// Stands in front of the C library's dlsym, so that operations of driver libraries that the main program opens at run
// time are recorded and answered like the others.
#include "probe/linkage.h"
#include "probe/runtime.h"
#include "probe/script.h"

#include <dlfcn.h>

namespace {

using namespace kestro_probe;

// A lookup by the main program. What it finds becomes what the wrapper stands in front of.
void *look_up(void *handle, const char *name) {
    void *found = real_dlsym()(handle, name);
    const uint32_t operation = name != nullptr ? find_operation(name) : static_cast<uint32_t>(operations.size());
    if (operation == operations.size()) {
        return found;
    }
    void *wrapper = entry_points[operation].wrapper;
    if (found == nullptr && is_answered(operation)) {
        // The program asks dlerror whether the lookup failed.
        dlerror();
        return wrapper;
    }
    if (found != nullptr && found != wrapper) {
        real_operations[operation] = found;
    }
    return found != nullptr ? wrapper : nullptr;
}

} // namespace

// The C library's dlsym looks at its return address: RTLD_NEXT means the next library behind the caller. So a call of
// any other library has to go on as a jump. This file is built so that the compiler makes it one, whatever the build.
extern "C" KESTRO_EXPORTED void *dlsym(void *__restrict handle, const char *__restrict name) noexcept {
    if (!is_main_program(__builtin_return_address(0))) {
        return real_dlsym()(handle, name);
    }
    return look_up(handle, name);
}
