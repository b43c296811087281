// What a family of devices is made of: its registers, said once, beside the code of the device.
//
//   namespace kestro_sim::rail {
//   inline constexpr reg millivolts = reg::number("millivolts", 0, 60000, "mV", "what the monitor measures").written();
//   inline constexpr device_family family{"sim_voltage", "rail", "a voltage rail", {millivolts, ...}};
//   }
//
// From here come the check of descriptions, the typed access of sim/core/board.h, what the bench technician lists and
// sets, and the table in docs/registers.md. A register that a family does not declare does not compile with a device
// of that family, nor does a driver's write to one that drivers only read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace kestro_sim {

enum class reg_type : uint8_t { number, flag, choice, text };

// Who changes a register. What is made when the state is made new (labels, sizes of images) is not there to be read or
// set afterwards: the image that was made from it is.
enum class writer : uint8_t { driver, technician, nobody, production };

enum class need : uint8_t {
    optional, // a device without it answers "not supported"
    required,
    reset, // a device that does not say otherwise has the reset value
};

// Where a register is declared; two of one name in two families differ by it. Addresses would tell them apart as well,
// but under a sanitizer the compiler does not compare addresses while it compiles.
struct declared_at {
    uint64_t place;

    constexpr declared_at(const char *file = __builtin_FILE(), unsigned line = __builtin_LINE()) : place(line) {
        for (; *file != '\0'; ++file) {
            place = *file == '/' ? line : (place ^ static_cast<unsigned char>(*file)) * 0x100000001B3U;
        }
    }
};

// Numbers are kept as 64 bits; below 0 as the two's complement.
struct reg {
    const char *name = nullptr;
    reg_type type = reg_type::number;
    writer changed_by = writer::technician;
    need needed = need::optional;
    bool is_hexadecimal = false; // what people read in hexadecimal: masks, versions, addresses
    int64_t least = 0;
    int64_t most = 0;
    size_t text_max = 0;
    uint64_t reset_value = 0;
    const char *unit = "";
    const char *meaning = "";
    const char *const *choices = nullptr; // names of the values from 0 to most
    uint64_t place = 0;                   // where it is declared

    static constexpr reg number(const char *name, int64_t least, int64_t most, const char *unit, const char *meaning,
                                declared_at where = {__builtin_FILE(), __builtin_LINE()}) {
        reg made;
        made.place = where.place;
        made.name = name;
        made.least = least;
        made.most = most;
        made.unit = unit;
        made.meaning = meaning;
        return made;
    }

    // A mask, a version, a register of an unknown chip: all 32 bits.
    static constexpr reg bits(const char *name, int64_t most, const char *meaning,
                              declared_at where = {__builtin_FILE(), __builtin_LINE()}) {
        reg made = number(name, 0, most, "", meaning, where);
        made.is_hexadecimal = true;
        return made;
    }

    static constexpr reg flag(const char *name, const char *meaning,
                              declared_at where = {__builtin_FILE(), __builtin_LINE()}) {
        reg made = number(name, 0, 1, "", meaning, where);
        made.type = reg_type::flag;
        return made;
    }

    template <size_t N>
    static constexpr reg choice(const char *name, const char *const (&names)[N], const char *meaning,
                                declared_at where = {__builtin_FILE(), __builtin_LINE()}) {
        reg made = number(name, 0, static_cast<int64_t>(N) - 1, "", meaning, where);
        made.type = reg_type::choice;
        made.choices = names;
        return made;
    }

    static constexpr reg text(const char *name, size_t max, const char *meaning,
                              declared_at where = {__builtin_FILE(), __builtin_LINE()}) {
        reg made = number(name, 0, 0, "", meaning, where);
        made.type = reg_type::text;
        made.text_max = max;
        return made;
    }

    constexpr reg written() const {
        return changed(writer::driver);
    }
    constexpr reg fixed() const {
        return changed(writer::nobody);
    }
    constexpr reg of_production() const {
        return changed(writer::production);
    }
    constexpr reg required() const {
        reg made = *this;
        made.needed = need::required;
        return made;
    }
    constexpr reg or_else(uint64_t value) const {
        reg made = *this;
        made.needed = need::reset;
        made.reset_value = value;
        return made;
    }

    constexpr bool is_same_as(const reg &other) const {
        return place == other.place && std::string_view(name) == other.name;
    }
    constexpr bool is_text() const {
        return type == reg_type::text;
    }
    constexpr bool is_wide() const {
        return most > int64_t{UINT32_MAX};
    }

  private:
    constexpr reg changed(writer by) const {
        reg made = *this;
        made.changed_by = by;
        return made;
    }
};

inline constexpr int64_t any_u32 = UINT32_MAX;

// A family holds the registers of its own namespace, not copies.
class reg_ref {
  public:
    constexpr reg_ref() = default;
    constexpr reg_ref(const reg &which) : which_(&which) {
    }
    constexpr const reg &operator*() const {
        return *which_;
    }

  private:
    const reg *which_ = nullptr;
};

// Entries of devices are named by their plain number; a few are known by a name of their own, and EEPROM layouts are
// nodes of any name.
enum class naming : uint8_t { by_number, by_name, nodes_by_name };

struct device_family {
    static constexpr size_t registers_max = 32;

    const char *module;
    const char *node;
    const char *what; // one device in words
    std::array<reg_ref, registers_max> list{};
    size_t count = 0;
    naming entries = naming::by_number;
    uint64_t id_max = UINT32_MAX;

    constexpr device_family(const char *of_module, const char *of_node, const char *words,
                            std::initializer_list<reg_ref> registers)
        : module(of_module), node(of_node), what(words) {
        for (const reg_ref &one : registers) {
            list.at(count++) = one;
        }
    }

    constexpr device_family named(naming how) const {
        device_family made = *this;
        made.entries = how;
        return made;
    }
    constexpr device_family up_to(uint64_t id) const {
        device_family made = *this;
        made.id_max = id;
        return made;
    }

    constexpr bool has(const reg &which) const {
        for (size_t i = 0; i < count; ++i) {
            if ((*list[i]).is_same_as(which)) {
                return true;
            }
        }
        return false;
    }

    const reg *find(std::string_view name) const {
        for (size_t i = 0; i < count; ++i) {
            if (name == (*list[i]).name) {
                return &*list[i];
            }
        }
        return nullptr;
    }
};

// Never defined: their names are what the compiler says of a register that does not belong here.
void this_family_has_no_such_register();
void a_text_is_no_number();
void a_number_is_no_text();
void drivers_only_read_this_register();
void this_register_is_wider_than_32_bits();

// Registers of one family, checked when they are named.
template <const device_family &Family> class numeric_of {
  public:
    consteval numeric_of(const reg &which) : which_(&which) {
        if (!Family.has(which)) {
            this_family_has_no_such_register();
        }
        if (which.is_text()) {
            a_text_is_no_number();
        }
    }
    constexpr const reg &operator*() const {
        return *which_;
    }

  private:
    const reg *which_;
};

template <const device_family &Family> class word_of : public numeric_of<Family> {
  public:
    consteval word_of(const reg &which) : numeric_of<Family>(which) {
        if (which.is_wide()) {
            this_register_is_wider_than_32_bits();
        }
    }
};

template <const device_family &Family> class written_of : public numeric_of<Family> {
  public:
    consteval written_of(const reg &which) : numeric_of<Family>(which) {
        if (which.changed_by != writer::driver) {
            drivers_only_read_this_register();
        }
    }
};

template <const device_family &Family> class text_of {
  public:
    consteval text_of(const reg &which) : which_(&which) {
        if (!Family.has(which)) {
            this_family_has_no_such_register();
        }
        if (!which.is_text()) {
            a_number_is_no_text();
        }
    }
    constexpr const reg &operator*() const {
        return *which_;
    }

  private:
    const reg *which_;
};

} // namespace kestro_sim
