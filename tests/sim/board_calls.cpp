// Makes calls of the board families, one per argument ("board_get_type 0xffffffff"): the words are the operation's
// inputs in order. Prints the result code and the answers of each call on a line of its own. Areas are handed over with
// a guard behind them, so that a write beyond the end shows; so does an answer that comes with an error.
#include "drv_board.h"
#include "drv_pic.h"
#include "drv_smb.h"
#include "drv_subboard.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr uint32_t untouched = 0xCCCCCCCCU;
constexpr uint8_t untouched_byte = 0xCC;
constexpr size_t area_limit = 4096;

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
    // The size of an area is the word behind it.
    uint32_t peek_number() {
        const auto here = stream_.tellg();
        const uint32_t found = number();
        stream_.clear();
        stream_.seekg(here);
        return found;
    }

  private:
    std::istringstream stream_;
};

// One parameter of an operation: reads its word, or holds what the driver writes.
template <typename Type> class parameter;

template <> class parameter<uint32_t> {
  public:
    static constexpr bool is_output = false;
    explicit parameter(words &call) : value_(call.number()) {
    }
    uint32_t get() const {
        return value_;
    }
    void print() const {
    }
    bool is_touched() const {
        return false;
    }

  private:
    uint32_t value_;
};

template <typename Number> class number_output {
  public:
    static constexpr bool is_output = true;
    explicit number_output(words &) : value_(static_cast<Number>(untouched)) {
    }
    Number *get() {
        return &value_;
    }
    void print() const {
        printf(" %lld", static_cast<long long>(value_));
    }
    bool is_touched() const {
        return value_ != static_cast<Number>(untouched);
    }

  private:
    Number value_;
};

template <> class parameter<uint32_t *> : public number_output<uint32_t> { using number_output::number_output; };

template <> class parameter<int32_t *> : public number_output<int32_t> { using number_output::number_output; };

class area_output {
  public:
    static constexpr bool is_output = true;
    explicit area_output(words &call) : size_(call.peek_number()), bytes_(area_limit, untouched_byte) {
    }
    size_t written() const {
        const auto last =
            std::find_if(bytes_.rbegin(), bytes_.rend(), [](uint8_t byte) { return byte != untouched_byte; });
        return static_cast<size_t>(bytes_.rend() - last);
    }
    bool is_touched() const {
        return written() != 0;
    }
    void print_overrun() const {
        printf("%s", written() > size_ ? " OVERRUN" : "");
    }

  protected:
    size_t size_;
    std::vector<uint8_t> bytes_;
};

template <> class parameter<char *> : public area_output {
  public:
    using area_output::area_output;
    char *get() {
        return reinterpret_cast<char *>(bytes_.data());
    }
    void print() const {
        printf(" \"%s\"", reinterpret_cast<const char *>(bytes_.data()));
        print_overrun();
    }
};

template <> class parameter<uint8_t *> : public area_output {
  public:
    using area_output::area_output;
    uint8_t *get() {
        return bytes_.data();
    }
    void print() const {
        printf(" [");
        for (size_t i = 0; i < written(); ++i) {
            printf("%s%02x", i == 0 ? "" : " ", bytes_[i]);
        }
        printf("]");
        print_overrun();
    }
};

template <> class parameter<drv_card_list *> {
  public:
    static constexpr bool is_output = true;
    explicit parameter(words &) {
        memset(&list_, untouched_byte, sizeof(list_));
    }
    drv_card_list *get() {
        return &list_;
    }
    void print() const {
        std::array<uint8_t, sizeof(list_)> bytes{};
        memcpy(bytes.data(), &list_, sizeof(list_));
        printf(" %u [", list_.count);
        for (size_t i = sizeof(list_.count); i < bytes.size(); ++i) {
            printf("%02x", bytes[i]);
        }
        printf("]");
    }
    bool is_touched() const {
        return list_.count != untouched;
    }

  private:
    drv_card_list list_{};
};

template <typename Type> void print_answer(uint32_t result, const parameter<Type> &one) {
    if (result == 0) {
        one.print();
    } else if (one.is_touched()) {
        printf(" TOUCHED");
    }
}

using handler = std::function<void(words &)>;

template <typename... Types> handler call_of(uint32_t (*operation)(Types...)) {
    return [operation](words &call) {
        std::tuple<parameter<Types>...> all{parameter<Types>(call)...};
        const uint32_t result =
            std::apply([&](auto &...each) { return operation(static_cast<Types>(each.get())...); }, all);
        printf("0x%x", result);
        std::apply([&](auto &...each) { (print_answer(result, each), ...); }, all);
        printf("\n");
    };
}

// The value, or a null pointer where output number null_at is.
template <typename Type> Type value_or_null(parameter<Type> &one, size_t &output, size_t null_at) {
    if constexpr (parameter<Type>::is_output) {
        return output++ == null_at ? nullptr : one.get();
    } else {
        return one.get();
    }
}

// The same call with each of its outputs in turn a null pointer.
template <typename... Types> handler nulls_of(uint32_t (*operation)(Types...)) {
    return [operation](words &call) {
        std::tuple<parameter<Types>...> all{parameter<Types>(call)...};
        constexpr size_t outputs = (static_cast<size_t>(parameter<Types>::is_output) + ... + 0);
        for (size_t null_at = 0; null_at < outputs; ++null_at) {
            size_t output = 0;
            const uint32_t result = std::apply(
                [&](auto &...each) {
                    const std::tuple<Types...> values{value_or_null(each, output, null_at)...};
                    return std::apply(operation, values);
                },
                all);
            printf("%s0x%x", null_at == 0 ? "" : " ", result);
        }
        printf("\n");
    };
}

class call_table {
  public:
    template <typename... Types> void add(const std::string &name, uint32_t (*operation)(Types...)) {
        calls_[name] = call_of(operation);
        calls_["null_" + name] = nulls_of(operation);
    }
    void add_special(const std::string &name, const handler &special) {
        calls_[name] = special;
    }
    bool make(const std::string &text) const {
        words call(text);
        const auto found = calls_.find(call.next());
        if (found == calls_.end()) {
            return false;
        }
        found->second(call);
        return true;
    }

  private:
    std::map<std::string, handler> calls_;
};

void add_board(call_table &table) {
    table.add("init", drv_board_init);
    table.add("deinit", drv_board_deinit);
    table.add("get_type", drv_board_get_type);
    table.add("set_type", drv_board_set_type);
    table.add("get_pcb_ver", drv_board_get_pcb_ver);
    table.add("get_usr_pcb_ver", drv_board_get_usr_pcb_ver);
    table.add("get_soft_pcb_ver", drv_board_get_soft_pcb_ver);
    table.add("get_bom_ver", drv_board_get_bom_ver);
    table.add("get_bom_id", drv_board_get_bom_id);
    table.add("get_power", drv_board_get_power);
    table.add("get_capability", drv_board_get_capability);
    table.add("get_online_status", drv_board_get_online_status);
    table.add("get_online_status_ex", drv_board_get_online_status_ex);
    table.add("set_online_status", drv_board_set_online_status);
    table.add("get_self_online_status", drv_board_get_self_online_status);
    table.add("get_peer_online_status", drv_board_get_peer_online_status);
    table.add("get_fullin_status", drv_board_get_fullin_status);
    table.add("check_fullin_status", drv_board_check_fullin_status);
    table.add("get_self_slotid", drv_board_get_self_slotid);
    table.add("get_peer_slotid", drv_board_get_peer_slotid);
    table.add("get_self_logic_slotid", drv_board_get_self_logic_slotid);
    table.add("get_peer_logic_slotid", drv_board_get_peer_logic_slotid);
    table.add("check_slotid", drv_board_check_slotid);
    table.add("get_card_ok", drv_board_get_card_ok);
    table.add("get_card_list", drv_board_get_card_list);
    table.add("get_mpu_status", drv_board_get_mpu_status);
    table.add("check_mpu_status", drv_board_check_mpu_status);
    table.add("check_int_status", drv_board_check_int_status);
}

void add_devices(call_table &table) {
    table.add("get_bootrom_size", drv_board_get_bootrom_size);
    table.add("get_flash_size", drv_board_get_flash_size);
    table.add("get_nandflash_size", drv_board_get_nandflash_size);
    table.add("get_nvram_size", drv_board_get_nvram_size);
    table.add("get_sdram_size", drv_board_get_sdram_size);
    table.add("get_dimm_info", drv_board_get_dimm_info);
    table.add("get_dimm_temperature", drv_board_get_dimm_temperature);
    table.add("check_dimm_bus_status", drv_board_check_dimm_bus_status);
    table.add("get_ddr_event", drv_board_get_ddr_event);
    table.add("get_cpld_ver", drv_board_get_cpld_ver);
    table.add("get_cpld_num", drv_board_get_cpld_num);
    table.add("get_ctrl_fpga_num", drv_board_get_ctrl_fpga_num);
    table.add("get_bios_ver", drv_board_get_bios_ver);
    table.add("get_area", drv_board_get_area);
    table.add("check_bios", drv_board_check_bios);
    table.add("get_peer_bootstep", drv_board_get_peer_bootstep);
    table.add("get_self_bootstep", drv_board_get_self_bootstep);
    table.add("set_self_bootstep", drv_board_set_self_bootstep);
    table.add("get_factory_reset_flag", drv_board_get_factory_reset_flag);
    table.add("set_power_on", drv_board_set_power_on);
    table.add("set_power_off", drv_board_set_power_off);
    table.add("get_power_status", drv_board_get_power_status);
    table.add("check_low_voltage", drv_board_check_low_voltage);
    table.add("get_four_corner_status", drv_board_get_four_corner_status);
    table.add("check_four_corner_status", drv_board_check_four_corner_status);
    table.add("check_corrosion_status", drv_board_check_corrosion_status);
    table.add("set_sfu_isolate", drv_board_set_sfu_isolate);
    table.add("get_sfu_isolate", drv_board_get_sfu_isolate);
    table.add("set_sfu_fullin_isolate_en", drv_board_set_sfu_fullin_isolate_en);
    table.add("get_sfu_fullin_isolate_en", drv_board_get_sfu_fullin_isolate_en);
    table.add("set_bbox_enable", drv_board_set_bbox_enable);
    table.add("set_bbox_time", drv_board_set_bbox_time);
    table.add("check_smi", drv_board_check_smi);
    table.add("check_smi_crc", drv_board_check_smi_crc);
    table.add("check_smi_los", drv_board_check_smi_los);
    table.add("set_backup_smi_en", drv_board_set_backup_smi_en);
    table.add("set_smi_source", drv_board_set_smi_source);
    table.add("get_smi_source", drv_board_get_smi_source);
    table.add("get_tpm_online_status", drv_board_get_tpm_online_status);
    table.add("get_tpm_active_status", drv_board_get_tpm_active_status);
}

void add_other_families(call_table &table) {
    table.add("subboard_get_type", drv_subboard_get_type);
    table.add("subboard_get_pcb_ver", drv_subboard_get_pcb_ver);
    table.add("subboard_get_bom_ver", drv_subboard_get_bom_ver);
    table.add("subboard_get_bom_id", drv_subboard_get_bom_id);
    table.add("subboard_get_online_status", drv_subboard_get_online_status);
    table.add("subboard_get_online_status_ex", drv_subboard_get_online_status_ex);
    table.add("smb_get_tx_err_count", drv_smb_get_tx_err_count);
    table.add("smb_get_rx_err_count", drv_smb_get_rx_err_count);
    table.add("pic_xml_load", drv_pic_xml_load);
    table.add("pic_xml_unload", drv_pic_xml_unload);
}

// Asks a driver from within the callback, as listeners do.
uint32_t print_in_out(uint32_t slot_id, uint32_t in, void *user_data) {
    uint32_t own_slot = untouched;
    const uint32_t result = drv_board_get_self_slotid(&own_slot);
    printf("%s: slot %u in %u, told to slot %u with 0x%x\n", static_cast<const char *>(user_data), slot_id, in,
           own_slot, result);
    return 0;
}

void add_listeners(call_table &table) {
    table.add_special("in_out_reg", [](words &call) {
        static char who[] = "listener";
        const std::string name = call.next();
        printf("0x%x\n", drv_board_in_out_reg(print_in_out, who, name.c_str(), call.number()));
    });
    table.add_special("in_out_unreg", [](words &) { printf("0x%x\n", drv_board_in_out_unreg(print_in_out)); });
    table.add_special("in_out_reg_null_handler", [](words &call) {
        printf("0x%x\n", drv_board_in_out_reg(nullptr, nullptr, call.next().c_str(), 0));
    });
    table.add_special("in_out_unreg_null_handler", [](words &) { printf("0x%x\n", drv_board_in_out_unreg(nullptr)); });
    table.add_special("in_out_reg_null_name",
                      [](words &) { printf("0x%x\n", drv_board_in_out_reg(print_in_out, nullptr, nullptr, 0)); });
}

} // namespace

int main(int count, char **arguments) {
    call_table table;
    add_board(table);
    add_devices(table);
    add_other_families(table);
    add_listeners(table);
    for (int i = 1; i < count; ++i) {
        if (!table.make(arguments[i])) {
            fprintf(stderr, "no such call: %s\n", arguments[i]);
            return 2;
        }
        fflush(stdout);
    }
    return 0;
}
