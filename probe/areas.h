// The memory behind the arguments of a call that is made by hand.
#pragma once

#include "probe/script.h"

#include <cstddef>
#include <deque>
#include <optional>

namespace kestro_probe {

// Not named: numbers are 0, save the instance, which is the board itself; what is read is null; what is written gets an
// area as long as its size says, and a size that is not named fits its area.
class call_areas {
  public:
    explicit call_areas(const rule &asked);
    call_areas(const call_areas &) = delete;
    call_areas &operator=(const call_areas &) = delete;

    void *const *arguments() const {
        return arguments_.data();
    }

    // Parameters whose driver wrote behind the end of their area.
    std::vector<std::string> overrun() const;

  private:
    struct area {
        std::string owner;
        std::vector<char> bytes;
    };

    const value *given(size_t parameter) const;
    void settle_sizes();
    void settle_size(const parameter &sized, const value *content);
    void *place(size_t parameter);
    void *allocate(const std::string &owner, size_t size, char fill);
    void *handle(const char *owner, const char *name);
    void prepare_records(const shape &place, const value *content, char *memory);
    void prepare_record(const record &layout, const value *content, char *memory);
    void *prepare_member(const record &layout, const field &member, const value *content, char *memory);
    static void settle_member(const record &layout, const field &member, const value &content, char *memory);

    const operation &op_;
    std::string owner_; // the parameter that is being prepared
    std::vector<std::optional<value>> given_;
    std::deque<uint64_t> slots_;
    std::vector<void *> arguments_;
    std::deque<area> areas_;
};

} // namespace kestro_probe
