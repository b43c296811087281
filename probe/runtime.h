// What the generated wrappers stand on.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>

#define KESTRO_EXPORTED __attribute__((visibility("default")))

namespace kestro_probe {

// In the order of the table of operations; generated. The real operations are filled in as they are found.
extern void *const wrappers[];
extern std::atomic<void *> real_operations[];

// The real operation where the call is to go straight on to it: nothing is asked of the probe, or the caller is not
// the main program. Null where answer() has to see to it.
void *straight_to(size_t operation, const void *caller);

// Records and answers a call.
uint64_t answer(uint32_t operation, void *const *arguments, const void *caller) noexcept;

// The text that a printf-like call means. Null for a null format.
class formatted_text {
  public:
    __attribute__((format(printf, 2, 0))) formatted_text(const char *format, va_list values);
    formatted_text(const formatted_text &) = delete;
    formatted_text &operator=(const formatted_text &) = delete;
    ~formatted_text();
    const char *text() const {
        return text_;
    }

  private:
    char *text_ = nullptr;
};

// What the program's own threads begin with: they are numbered as they call; threads of the drivers are not.
void enter_program_thread();

// Whether a name that is looked up at run time is one that the script or recording answers.
bool is_answered(uint32_t operation);

} // namespace kestro_probe
