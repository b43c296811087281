// Stands in front of two functions of the C library: of dlsym, so that operations of driver libraries that the main
// program opens at run time are recorded and answered like the others; of pthread_create, to tell its threads from
// those of the drivers.
#include "probe/linkage.h"
#include "probe/runtime.h"
#include "probe/script.h"

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <pthread.h>

namespace {

using namespace kestro_probe;

// A lookup by the main program. What it finds becomes what the wrapper stands in front of.
void *look_up(void *handle, const char *name) {
    void *found = real_dlsym()(handle, name);
    const uint32_t operation = name != nullptr ? find_operation(name) : static_cast<uint32_t>(operations.size());
    if (operation == operations.size()) {
        return found;
    }
    void *wrapper = wrappers[operation];
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

using thread_function = void *(*)(void *);
using create_function = int (*)(pthread_t *, const pthread_attr_t *, thread_function, void *);

struct program_thread {
    thread_function function;
    void *argument;
};

void *run_program_thread(void *given) {
    const program_thread started = *static_cast<program_thread *>(given);
    free(given);
    enter_program_thread();
    return started.function(started.argument);
}

create_function real_pthread_create() {
    return reinterpret_cast<create_function>(real_dlsym()(RTLD_NEXT, "pthread_create"));
}

} // namespace

extern "C" KESTRO_EXPORTED int pthread_create(pthread_t *__restrict thread, const pthread_attr_t *__restrict attr,
                                              thread_function start_routine, void *__restrict arg) noexcept {
    const create_function create = real_pthread_create();
    if (create == nullptr) {
        return EAGAIN;
    }
    void *given = is_main_program(__builtin_return_address(0)) ? malloc(sizeof(program_thread)) : nullptr;
    if (given == nullptr) {
        return create(thread, attr, start_routine, arg);
    }
    *static_cast<program_thread *>(given) = {start_routine, arg};
    const int result = create(thread, attr, run_program_thread, given);
    if (result != 0) {
        free(given);
    }
    return result;
}

// The C library's dlsym looks at its return address: RTLD_NEXT means the next library behind the caller. So a call of
// any other library has to go on as a jump. This file is built so that the compiler makes it one, whatever the build.
extern "C" KESTRO_EXPORTED void *dlsym(void *__restrict handle, const char *__restrict name) noexcept {
    if (!is_main_program(__builtin_return_address(0))) {
        return real_dlsym()(handle, name);
    }
    return look_up(handle, name);
}
