// Stands where the board's library would: refuses a description that says so, else writes down what it was asked for.
#include "sim/core/prepare.h"
#include "sim/core/time.h"

#include <fstream>
#include <iterator>

namespace kestro_sim {

std::optional<std::string> prepare_board(const std::filesystem::path &description,
                                         const std::filesystem::path &state_dir, bool reset) {
    std::ifstream file(description);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (text.find("broken") != std::string::npos) {
        return description.string() + ":1: <broken> is no part of a board; a description begins with <board>";
    }
    std::filesystem::create_directories(state_dir);
    std::ofstream(state_dir / "prepared") << description.string() << "\n" << (reset ? "reset" : "kept") << "\n";
    return std::nullopt;
}

// Two and a half seconds in the life of this board.
int64_t board_time_at_start(const std::filesystem::path &) {
    return 2500 * nanoseconds_per_millisecond;
}

} // namespace kestro_sim
