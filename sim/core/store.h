// The state of a board: the registers of its devices, its storage images, and the journal that keeps both whole.
//
// STATE/store       header, journal, checksums and the registers that were written ("cells"); see store_layout.h
// STATE/images/     raw images of the storage devices
//
// Every access happens while the lock of the state directory is held (state_dir.h). A change is first written into the
// journal, then marked committed with one write, then applied, then the mark is taken off. Whoever finds the mark set
// (the writer was killed) applies the journal again: it says which bytes go where, so applying it twice does no harm.
// So after a kill at any instant a change has either happened entirely or not at all. A change that cannot be written
// (full disk) is taken back.
//
// The file is read and written, not mapped: whatever the disk refuses is an error code then, and no signal.
#pragma once

#include "sim/core/store_error.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

// The path of a register, "instance/module/node/entry/element", and what a cell has room for.
inline constexpr size_t cell_key_max = 111;
inline constexpr size_t journal_capacity = size_t{64} * 1024;

// Writes that happen together or not at all.
class change {
  public:
    struct item {
        bool is_image;
        std::string name; // of the register or the image
        uint64_t value;   // of the register
        uint32_t offset;  // in the image
        std::vector<uint8_t> bytes;
    };

    void put(std::string_view key, uint64_t value);
    void write(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes);

    const std::vector<item> &items() const {
        return items_;
    }

  private:
    void append(item added, size_t size);

    std::vector<item> items_;
    size_t size_ = 0;
};

// How many bytes of one image fit into a change with nothing else.
size_t largest_write();

struct store_contents; // store_contents.h
struct store_plan;

struct store_identity {
    uint64_t fingerprint; // of the chassis
    uint64_t stamp;       // not used
    std::string board;    // the name of the chassis
};

class store {
  public:
    // Writes a new store to STATE/store for the images in STATE/images.
    static void create(const std::filesystem::path &state_dir, const store_identity &identity);

    // Opens STATE/store and finishes a change that was cut short; throws store_error when the file is something else.
    explicit store(const std::filesystem::path &state_dir);
    store(const store &) = delete;
    store &operator=(const store &) = delete;
    ~store();

    store_identity identity() const;
    void set_stamp(uint64_t stamp);

    // What an operation begins with: finishes the change of a process that was killed, and takes in what other
    // processes have written. False when a new store lies in the place of this one (reset).
    [[nodiscard]] bool refresh();

    // What an operation ends with: no descriptor stays open in the product between its driver calls.
    void rest();

    bool is_retired() const;

    // Registers as refresh() found them. A damaged one is store_error with the code damaged, as are damaged images.
    std::optional<uint64_t> get(std::string_view key) const;
    std::vector<uint8_t> read(std::string_view image, uint32_t offset, size_t length) const;
    size_t image_size(std::string_view image) const;

    // False when the table of registers has no room. Throws store_error when it could not be written; then nothing was.
    [[nodiscard]] bool commit(const change &writes);

    // The two halves of commit: after the first, recover() (of this or another process) brings the change about. A
    // process may be killed while others have the store open, so every operation starts with it.
    void record(const change &writes);
    void recover();

    // Throws store_error that names the first register that is damaged, or the first image that is missing or has
    // another size.
    void check_registers() const;
    void check_images() const;

    // Takes the images as they now are.
    void accept_images();

  private:
    bool wake();
    void write_journal(const store_plan &made);
    void apply_or_take_back(store_plan &made);

    std::unique_ptr<store_contents> known_;
};

} // namespace kestro_sim
