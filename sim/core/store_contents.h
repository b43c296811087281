// What a process knows of STATE/store, and how it reaches the bytes of the state. Inside of the store only.
#pragma once

#include "sim/core/open_file.h"
#include "sim/core/store_layout.h"

#include <map>

namespace kestro_sim {

struct known_cell {
    uint32_t index;
    uint64_t value;
    bool is_damaged;
};

// Bytes that go into the store (target 0) or into an image (its number and 1).
struct store_piece {
    uint32_t target;
    uint64_t offset;
    std::vector<uint8_t> bytes;
};

struct store_contents {
    std::filesystem::path state_dir;
    open_file file;
    int write_problem = 0; // why the store may only be read
    store_layout::header head{};
    std::vector<store_layout::image_entry> images;
    std::map<std::string, known_cell, std::less<>> cells;
    std::vector<uint32_t> nameless; // damaged, and nobody knows which registers they are

    std::filesystem::path store_file() const {
        return state_dir / "store";
    }
    std::filesystem::path image_file(size_t number) const;

    void open_store();
    // Throws store_error for what is no store of this kind. Reading both in one go: every operation does.
    store_layout::header read_header(store_layout::journal_head *mark = nullptr) const;
    void read_images();
    void read_cells();
    void read_store(void *bytes, size_t size, uint64_t offset) const;
    void write_store(const void *bytes, size_t size, uint64_t offset) const;
    void write_header(store_layout::header changed);
    void require_writable() const;

    [[noreturn]] void fail_on_register(std::string_view key) const;
    [[noreturn]] void fail_on_nameless() const;

    size_t number_of(std::string_view image) const;
    open_file open_image(size_t number, int flags) const;
    std::vector<uint32_t> read_sums(size_t number, size_t first, size_t count) const;
    size_t block_length(size_t number, size_t block) const;

    // The bytes of whole blocks, checked.
    std::vector<uint8_t> read_blocks(size_t number, const open_file &image, size_t first, size_t count) const;
};

// The files that a change is written into, each opened once.
class store_targets {
  public:
    explicit store_targets(const store_contents &known) : known_(known) {
    }
    const open_file &of(uint32_t target);
    std::filesystem::path name_of(uint32_t target) const;

  private:
    const store_contents &known_;
    std::map<uint32_t, open_file> images_;
};

// What a change comes to.
struct store_plan {
    store_layout::header head;
    std::map<std::string, known_cell, std::less<>> cells;
    std::vector<store_piece> pieces;
    store_targets files;
};

// Nothing when the table of registers has no room.
std::optional<store_plan> plan_of(const store_contents &known, const change &writes);

} // namespace kestro_sim
