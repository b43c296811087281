// Stands where the board's library would: refuses a description that says so, else writes down what it was asked for.
#include "sim/core/prepare.h"
#include "sim/core/state_check.h"
#include "sim/core/time.h"

#include <fstream>
#include <iterator>

namespace kestro_sim {

namespace fs = std::filesystem;

board_choice choose_board(const std::string &word, const fs::path &delivered) {
    const fs::path named = delivered / (word + ".seat");
    if (fs::exists(named)) {
        return {delivered, named, {}, "double", "seat_of_" + word};
    }
    const fs::path file = fs::absolute(word).lexically_normal();
    if (!fs::exists(file)) {
        throw description_error("--board: there is no board '" + word + "'; right is another");
    }
    return {delivered, file, {}, "own", "seat_of_file"};
}

fs::path prepare_board(const board_choice &choice, const fs::path &state_dir, bool reset) {
    std::ifstream file(choice.chassis_file);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (text.find("broken") != std::string::npos) {
        throw description_error(choice.chassis_file.string() + ":1: <broken> stands here; here <board> is due");
    }
    fs::create_directories(state_dir);
    std::ofstream(state_dir / "prepared") << choice.chassis_file.string() << "\n" << (reset ? "reset" : "kept") << "\n";
    return state_dir / "merged.xml";
}

std::vector<std::string> lacking_libraries(const fs::path &, const std::string &seat) {
    return seat == "seat_of_bare" ? std::vector<std::string>{"drv_mng_eth", "drv_clusterport"}
                                  : std::vector<std::string>{};
}

void refit(const fs::path &merged, const fs::path &state_dir, const refitting &wanted) {
    std::ofstream done(state_dir / "refitted");
    done << merged.filename().string();
    for (const std::string &place : wanted.pull) {
        done << " pull " << place;
    }
    for (const std::string &place : wanted.plug) {
        done << " plug " << place;
    }
}

// The watchdog of one board is on; another board is told that there is such a one.
bool require_fitted(const fs::path &, const std::string &seat) {
    if (seat == "seat_of_pulled") {
        throw description_error("the board at " + seat + " is pulled out");
    }
    return seat == "seat_of_watched" || seat == "seat_of_mpu_slave";
}

bool settle_before_run(const fs::path &merged, const fs::path &state_dir, const std::string &seat) {
    std::ofstream(state_dir / "settled") << merged.filename().string();
    return seat == "seat_of_watched";
}

void let_board_time_stand(bool) {
}

void accept_images(const fs::path &state_dir) {
    if (fs::exists(state_dir / "odd image")) {
        throw description_error((state_dir / "odd image").string() +
                                ": is no file of 8 bytes; put one of that size there");
    }
    std::ofstream(state_dir / "prepared", std::ios::app) << "accepted\n";
}

// Two and a half seconds in the life of this board.
int64_t board_time_at_start(const std::filesystem::path &) {
    return 2500 * nanoseconds_per_millisecond;
}

} // namespace kestro_sim
