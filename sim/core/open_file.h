// An open file that is closed with its scope.
#pragma once

#include <unistd.h>
#include <utility>

namespace kestro_sim {

class open_file {
  public:
    open_file() = default;
    explicit open_file(int descriptor) : descriptor_(descriptor) {
    }
    open_file(open_file &&other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {
    }
    open_file &operator=(open_file &&other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        other.release();
        return *this;
    }
    ~open_file() {
        release();
    }
    explicit operator bool() const {
        return descriptor_ >= 0;
    }
    int get() const {
        return descriptor_;
    }

  private:
    void release() {
        if (descriptor_ >= 0) {
            close(descriptor_);
            descriptor_ = -1;
        }
    }

    int descriptor_ = -1;
};

} // namespace kestro_sim
