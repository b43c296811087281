// An open file that is closed with its scope.
#pragma once

#include <unistd.h>

namespace kestro_sim {

class open_file {
  public:
    explicit open_file(int descriptor) : descriptor_(descriptor) {
    }
    open_file(const open_file &) = delete;
    open_file &operator=(const open_file &) = delete;
    ~open_file() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }
    explicit operator bool() const {
        return descriptor_ >= 0;
    }
    int get() const {
        return descriptor_;
    }

  private:
    int descriptor_;
};

} // namespace kestro_sim
