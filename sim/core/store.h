// The state of a board: the registers of its devices, its storage images, and the journal that keeps both whole.
//
// STATE/store       header, journal and a table of device registers ("cells"), memory-mapped
// STATE/images/     raw images of the storage devices
//
// Every access happens while the lock of the state directory is held (state_dir.h). A change that spans more than one
// machine word is first written into the journal, then marked committed with one store, then applied, then the mark
// is taken off. Whoever finds the mark set (the writer was killed) applies the journal again: applying it twice does
// no harm. So after a kill at any instant a change has either happened entirely or not at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

// The path of a register, "instance/module/node/entry/element", and what a cell has room for.
inline constexpr size_t cell_key_max = 111;
inline constexpr size_t journal_capacity = 64U * 1024U;

// What is wrong with a state directory: "file: what; what to do".
struct store_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Writes that happen together or not at all.
class change {
  public:
    void put(std::string_view key, uint64_t value);
    void write(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes);

    size_t cells() const {
        return cells_;
    }
    const std::vector<uint8_t> &journal() const {
        return journal_;
    }

  private:
    void append(uint32_t what, std::string_view name, uint32_t offset, std::span<const uint8_t> bytes);

    std::vector<uint8_t> journal_;
    size_t cells_ = 0;
};

// How many bytes of one image fit into a change with nothing else.
size_t largest_write();

struct store_identity {
    uint64_t fingerprint; // of the chassis
    uint64_t stamp;       // not used
    std::string board;    // the name of the chassis
};

class store {
  public:
    // Writes a new, empty store to a file.
    static void create(const std::filesystem::path &file, const store_identity &identity);

    // Opens STATE/store and finishes a change that was cut short; throws store_error when the file is something else.
    explicit store(const std::filesystem::path &state_dir);
    store(const store &) = delete;
    store &operator=(const store &) = delete;
    ~store();

    store_identity identity() const;
    void set_stamp(uint64_t stamp);

    // A store that has been replaced by a new one (reset) is not written any more.
    bool is_retired() const;
    void retire();

    std::optional<uint64_t> get(std::string_view key) const;
    std::vector<uint8_t> read(std::string_view image, uint32_t offset, size_t length) const;
    size_t image_size(std::string_view image) const;

    // False when the table of registers has no room.
    [[nodiscard]] bool commit(const change &writes);

    // The two halves of commit: after the first, recover() (of this or another process) brings the change about. A
    // process may be killed while others have the store open, so every operation starts with it.
    void record(const change &writes);
    void recover();

  private:
    struct layout;

    void apply(std::span<const uint8_t> journal);
    void put_cell(std::string_view key, uint64_t value);
    size_t slot_of(std::string_view key) const;
    void write_image(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes) const;

    std::filesystem::path state_dir_;
    layout *map_ = nullptr;
};

} // namespace kestro_sim
