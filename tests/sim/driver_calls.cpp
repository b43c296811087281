// Makes driver calls, one per argument ("mac_get_num 0xffffffff 1"), and prints the result code and the answers of
// each on a line of its own. Areas are handed over with a guard behind them, so that a write beyond the end shows.
#include "board_xml.h"
#include "drv_barcode.h"
#include "drv_eeprom.h"
#include "drv_elabel.h"
#include "drv_log.h"
#include "drv_mac.h"
#include "drv_msc.h"
#include "nb_bsp.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr uint32_t untouched = 0xCCCCCCCCU;
constexpr size_t guard = 64;

// The words of one call; a word "null" stands for a null pointer.
class words {
  public:
    explicit words(const std::string &text) : stream_(text) {
    }
    std::string next() {
        std::string word;
        stream_ >> word;
        return word;
    }
    uint32_t number() {
        return static_cast<uint32_t>(strtoul(next().c_str(), nullptr, 0));
    }

  private:
    std::istringstream stream_;
};

// Text arguments of the description queries.
struct name_argument {
    explicit name_argument(words &call) : text(call.next()) {
    }
    const char *get() const {
        return text == "null" ? nullptr : text.c_str();
    }
    std::string text;
};

// An area of size bytes that the driver writes.
struct area {
    explicit area(size_t length) : size(length), bytes(length + guard, 0xCC) {
    }
    bool is_guard_whole() const {
        return std::all_of(bytes.begin() + static_cast<ptrdiff_t>(size), bytes.end(),
                           [](uint8_t byte) { return byte == 0xCC; });
    }
    size_t size;
    std::vector<uint8_t> bytes;
};

void print_text(const std::vector<uint8_t> &bytes, size_t size) {
    printf(" \"");
    for (size_t i = 0; i < size && bytes[i] != 0; ++i) {
        if (bytes[i] >= 0x20 && bytes[i] < 0x7F) {
            printf("%c", bytes[i]);
        } else {
            printf("\\%02x", bytes[i]);
        }
    }
    printf("\"");
}

void print_hex(const std::vector<uint8_t> &bytes, size_t size) {
    printf(" [");
    for (size_t i = 0; i < size; ++i) {
        printf("%s%02x", i == 0 ? "" : " ", bytes[i]);
    }
    printf("]");
}

enum class show { text, hex };

void print_area(uint32_t result, const area &read, show how) {
    printf("0x%x", result);
    if (result == 0) {
        how == show::text ? print_text(read.bytes, read.size) : print_hex(read.bytes, read.size);
    }
    printf("%s\n", read.is_guard_whole() ? "" : " OVERRUN");
}

// By reference: the call that is the first argument writes the value.
template <typename Value> void print_value(uint32_t result, const Value &value) {
    if (result == 0) {
        printf("0x0 %llu\n", static_cast<unsigned long long>(value));
    } else {
        printf("0x%x%s\n", result, value == untouched ? "" : " TOUCHED");
    }
}

void print_result(uint32_t result) {
    printf("0x%x\n", result);
}

// Text padded with zeros to len bytes.
std::vector<uint8_t> padded(const std::string &text, size_t len) {
    std::vector<uint8_t> bytes(text.begin(), text.end());
    bytes.resize(len, 0);
    return bytes;
}

using area_read = uint32_t (*)(uint32_t, uint32_t, uint8_t *, uint32_t);
using area_write = uint32_t (*)(uint32_t, uint32_t, const uint8_t *, uint32_t);

void read_area(words &call, area_read read) {
    const uint32_t inst = call.number();
    const uint32_t id = call.number();
    const uint32_t len = call.number();
    area text(std::min<uint32_t>(len, 4096));
    print_area(read(inst, id, text.bytes.data(), len), text, show::text);
}

void write_area(words &call, area_write write) {
    const uint32_t inst = call.number();
    const uint32_t id = call.number();
    const uint32_t len = call.number();
    const std::vector<uint8_t> text = padded(call.next(), std::max<size_t>(len, 4096));
    print_result(write(inst, id, text.data(), len));
}

// The same byte all over, so that a mixture of two writes shows.
void fill_area(words &call, area_write write, uint32_t size) {
    const uint32_t inst = call.number();
    const auto byte = static_cast<uint8_t>(call.number());
    const uint32_t times = call.number();
    uint32_t result = 0;
    for (uint32_t i = 0; i < times; ++i) {
        const std::vector<uint8_t> label(size, static_cast<uint8_t>(byte + (i & 1U)));
        result |= write(inst, 0, label.data(), size);
    }
    print_result(result);
}

void fill_macs(words &call) {
    const uint32_t inst = call.number();
    const auto byte = static_cast<uint8_t>(call.number());
    const uint32_t times = call.number();
    uint32_t result = 0;
    for (uint32_t i = 0; i < times; ++i) {
        const std::vector<uint8_t> addr(6, static_cast<uint8_t>(byte + (i & 1U)));
        result |= drv_mac_set_addr_num(inst, 1, addr[0], addr.data());
    }
    print_result(result);
}

std::vector<uint8_t> address(words &call) {
    const unsigned long long number = strtoull(call.next().c_str(), nullptr, 0);
    std::vector<uint8_t> bytes;
    for (int shift = 40; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<uint8_t>(number >> shift));
    }
    return bytes;
}

void mac_get_addr_num(words &call) {
    const uint32_t inst = call.number();
    const uint32_t type = call.number();
    const uint32_t num = call.number();
    const uint32_t size = call.number();
    area addresses(size);
    print_area(drv_mac_get_addr_num(inst, type, num, addresses.bytes.data(), size), addresses, show::hex);
}

void eeprom_read(words &call) {
    const uint32_t inst = call.number();
    const uint32_t section = call.number();
    const uint32_t offset = call.number();
    const uint32_t len = call.number();
    area bytes(std::min<uint32_t>(len, 16384));
    print_area(drv_eeprom_read_data(inst, section, offset, bytes.bytes.data(), len), bytes, show::hex);
}

void eeprom_write(words &call) {
    const uint32_t inst = call.number();
    const uint32_t section = call.number();
    const uint32_t offset = call.number();
    const uint32_t len = call.number();
    const std::vector<uint8_t> bytes(std::clamp<uint32_t>(len, 1, 16384), static_cast<uint8_t>(call.number()));
    print_result(drv_eeprom_write_data(inst, section, offset, bytes.data(), len));
}

// The kernel ends this process at an instant of the work that nobody chose.
void kill_after_us(words &call) {
    sigevent how{};
    how.sigev_notify = SIGEV_SIGNAL;
    how.sigev_signo = SIGKILL;
    timer_t timer{};
    const long delay = static_cast<long>(call.number());
    const itimerspec when{{0, 0}, {delay / 1000000, delay % 1000000 * 1000 + 1}};
    if (timer_create(CLOCK_MONOTONIC, &how, &timer) != 0 || timer_settime(timer, 0, &when, nullptr) != 0) {
        perror("kill_after_us");
        exit(3);
    }
}

void find_section(words &call) {
    const uint32_t inst = call.number();
    const uint32_t section = call.number();
    uint32_t device = untouched;
    uint32_t offset = untouched;
    uint32_t size = untouched;
    const uint32_t result = find_section_info_by_section(inst, section, &device, &offset, &size);
    if (result == 0) {
        printf("0x0 %u %u %u\n", device, offset, size);
    } else {
        print_value(result, device & offset & size);
    }
}

void element_string(words &call) {
    const uint32_t inst = call.number();
    const name_argument module(call);
    const name_argument node(call);
    const name_argument entry(call);
    const name_argument element(call);
    const uint32_t size = call.number();
    area text(size);
    print_area(xml_get_element_string(inst, module.get(), node.get(), entry.get(), element.get(),
                                      reinterpret_cast<char *>(text.bytes.data()), size),
               text, show::text);
}

template <typename Value, typename Query> void element_value(words &call, Query query) {
    const uint32_t inst = call.number();
    const name_argument module(call);
    const name_argument node(call);
    const name_argument entry(call);
    const name_argument element(call);
    Value value = untouched;
    print_value(query(inst, module.get(), node.get(), entry.get(), element.get(), &value), value);
}

template <typename Query> void query1(words &call, Query query) {
    const uint32_t inst = call.number();
    const name_argument module(call);
    uint32_t value = untouched;
    print_value(query(inst, module.get(), &value), value);
}

template <typename Query> void query2(words &call, Query query) {
    const uint32_t inst = call.number();
    const name_argument module(call);
    const name_argument node(call);
    uint32_t value = untouched;
    print_value(query(inst, module.get(), node.get(), &value), value);
}

void entry_exist(words &call) {
    const uint32_t inst = call.number();
    const name_argument module(call);
    const name_argument node(call);
    const name_argument entry(call);
    uint32_t value = untouched;
    print_value(xml_is_entry_exist(inst, module.get(), node.get(), entry.get(), &value), value);
}

void get_number(words &call, uint32_t (*query)(uint32_t, uint32_t *)) {
    const uint32_t argument = call.number();
    uint32_t value = untouched;
    print_value(query(argument, &value), value);
}

void mac_get_num(words &call) {
    const uint32_t inst = call.number();
    const uint32_t type = call.number();
    uint32_t value = untouched;
    print_value(drv_mac_get_num(inst, type, &value, call.number()), value);
}

void mac_get_addr(words &call) {
    const uint32_t inst = call.number();
    area addr(DRV_MAC_SIZE);
    print_area(drv_mac_get_addr(inst, call.number(), addr.bytes.data()), addr, show::hex);
}

void msc_get_state(words &call) {
    const uint32_t inst = call.number();
    uint32_t value = untouched;
    print_value(drv_msc_get_state(inst, call.number(), &value), value);
}

void himem(words &) {
    uint64_t start = 0;
    uint64_t length = 0;
    const uint32_t result = nb_get_himem_info(&start, &length);
    printf("0x%x 0x%llx 0x%llx\n", result, static_cast<unsigned long long>(start),
           static_cast<unsigned long long>(length));
}

// Every pointer parameter in turn is null.
void null_pointers(words &) {
    const uint32_t self = DRV_INST_SELF;
    uint32_t number = 0;
    uint64_t wide = 0;
    char text[8];
    for (const uint32_t result : {drv_elabel_read(self, 0, nullptr, 1200),
                                  drv_elabel_write(self, 0, nullptr, 1200),
                                  drv_barcode_read(self, 0, nullptr, 128),
                                  drv_barcode_write(self, 0, nullptr, 128),
                                  drv_mac_set_addr(self, 1, nullptr),
                                  drv_mac_get_addr(self, 1, nullptr),
                                  drv_mac_get_num(self, 1, nullptr, 0),
                                  drv_mac_set_addr_num(self, 1, 1, nullptr),
                                  drv_mac_get_addr_num(self, 1, 1, nullptr, 6),
                                  drv_eeprom_read_data(self, 0, 0, nullptr, 1),
                                  drv_eeprom_write_data(self, 0, 0, nullptr, 1),
                                  drv_msc_get_state(self, 0, nullptr),
                                  nb_gpio_read(5, nullptr),
                                  nb_get_himem_info(nullptr, &wide),
                                  nb_get_himem_info(&wide, nullptr),
                                  get_card_id(0xFF000005U, nullptr),
                                  find_section_info_by_section(self, 0, nullptr, &number, &number),
                                  find_section_info_by_section(self, 0, &number, nullptr, &number),
                                  find_section_info_by_section(self, 0, &number, &number, nullptr),
                                  xml_get_entry_num(self, nullptr, "i2c_dev", &number),
                                  xml_get_entry_num(self, "i2c", nullptr, &number),
                                  xml_get_entry_num(self, "i2c", "i2c_dev", nullptr),
                                  xml_get_node_num(self, nullptr, &number),
                                  xml_get_node_num(self, "i2c", nullptr),
                                  xml_get_specified_node_num(self, "i2c", "i2c_dev", nullptr),
                                  xml_get_element_string(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr, 8),
                                  xml_get_element_string(self, "i2c", "i2c_dev", "entry0", nullptr, text, 8),
                                  xml_get_element_value_u32(self, "i2c", "i2c_dev", nullptr, "chip_id", &number),
                                  xml_get_element_value_u32(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr),
                                  xml_get_element_value_u64(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr),
                                  xml_is_module_exist(self, "i2c", nullptr),
                                  xml_is_node_exist(self, nullptr, "i2c_dev", &number),
                                  xml_is_entry_exist(self, "i2c", "i2c_dev", nullptr, &number),
                                  xml_is_element_exist(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr)}) {
        printf("0x%x\n", result);
    }
}

using handler = std::function<void(words &)>;

std::map<std::string, handler> identity_calls() {
    return {
        {"elabel_init", [](words &w) { print_result(drv_elabel_init(w.number())); }},
        {"elabel_deinit", [](words &w) { print_result(drv_elabel_deinit(w.number())); }},
        {"elabel_read", [](words &w) { read_area(w, drv_elabel_read); }},
        {"elabel_write", [](words &w) { write_area(w, drv_elabel_write); }},
        {"elabel_fill", [](words &w) { fill_area(w, drv_elabel_write, DRV_ELABEL_SIZE); }},
        {"barcode_init", [](words &w) { print_result(drv_barcode_init(w.number())); }},
        {"barcode_deinit", [](words &w) { print_result(drv_barcode_deinit(w.number())); }},
        {"barcode_read", [](words &w) { read_area(w, drv_barcode_read); }},
        {"barcode_write", [](words &w) { write_area(w, drv_barcode_write); }},
        {"barcode_fill", [](words &w) { fill_area(w, drv_barcode_write, DRV_BARCODE_SIZE); }},
        {"mac_init", [](words &w) { print_result(drv_mac_init(w.number())); }},
        {"mac_deinit", [](words &w) { print_result(drv_mac_deinit(w.number())); }},
        {"mac_fill", fill_macs},
        {"mac_get_num", mac_get_num},
        {"mac_get_addr", mac_get_addr},
        {"mac_get_addr_num", mac_get_addr_num},
        {"mac_set_num",
         [](words &w) {
             const uint32_t inst = w.number();
             const uint32_t type = w.number();
             print_result(drv_mac_set_num(inst, type, w.number(), 0));
         }},
        {"mac_set_addr",
         [](words &w) {
             const uint32_t inst = w.number();
             const uint32_t type = w.number();
             print_result(drv_mac_set_addr(inst, type, address(w).data()));
         }},
        {"mac_set_addr_num",
         [](words &w) {
             const uint32_t inst = w.number();
             const uint32_t type = w.number();
             const uint32_t num = w.number();
             print_result(drv_mac_set_addr_num(inst, type, num, address(w).data()));
         }},
        {"eeprom_read", eeprom_read},
        {"eeprom_write", eeprom_write},
    };
}

std::map<std::string, handler> other_calls() {
    return {
        {"kill_after_us", kill_after_us},
        {"null_pointers", null_pointers},
        {"msc_get_state", msc_get_state},
        {"log",
         [](words &w) {
             const uint32_t id = w.number();
             const uint32_t level = w.number();
             print_result(drv_log_record(id, level, 0, "%s\r\n", w.next().c_str()));
         }},
        {"log_without_format",
         [](words &) {
             uint32_t (*const record)(uint32_t, uint32_t, uint32_t, const char *, ...) = drv_log_record;
             print_result(record(1, 1, 0, nullptr));
         }},
        {"gpio_read", [](words &w) { get_number(w, nb_gpio_read); }},
        {"gpio_write",
         [](words &w) {
             const uint32_t pin = w.number();
             print_result(nb_gpio_write(pin, w.number()));
         }},
        {"himem", himem},
        {"card_id", [](words &w) { get_number(w, get_card_id); }},
        {"find_section", find_section},
        {"load", [](words &w) { print_result(xml_load(w.number())); }},
        {"unload", [](words &w) { print_result(xml_unload(w.number())); }},
        {"entry_num", [](words &w) { query2(w, xml_get_entry_num); }},
        {"node_num", [](words &w) { query1(w, xml_get_node_num); }},
        {"specified_node_num", [](words &w) { query2(w, xml_get_specified_node_num); }},
        {"string", element_string},
        {"u32", [](words &w) { element_value<uint32_t>(w, xml_get_element_value_u32); }},
        {"u64", [](words &w) { element_value<uint64_t>(w, xml_get_element_value_u64); }},
        {"module_exist", [](words &w) { query1(w, xml_is_module_exist); }},
        {"node_exist", [](words &w) { query2(w, xml_is_node_exist); }},
        {"entry_exist", entry_exist},
        {"element_exist", [](words &w) { element_value<uint32_t>(w, xml_is_element_exist); }},
    };
}

} // namespace

int main(int count, char **arguments) {
    std::map<std::string, handler> calls = identity_calls();
    calls.merge(other_calls());
    for (int i = 1; i < count; ++i) {
        words call(arguments[i]);
        const std::string name = call.next();
        const auto found = calls.find(name);
        if (found == calls.end()) {
            fprintf(stderr, "no such call: %s\n", name.c_str());
            return 2;
        }
        found->second(call);
        fflush(stdout);
    }
    return 0;
}
