// Checks the description and makes the store. A description that has not changed since it was last found good is not
// read again: the launcher starts thousands of times a day.
#include "sim/core/prepare.h"

#include "sim/core/state_dir.h"
#include "sim/core/store.h"
#include "sim/core/validate.h"

namespace kestro_sim {

namespace {

void check_board_of_store(const store &opened, const std::filesystem::path &state_dir, const description &board) {
    const store_identity kept = opened.identity();
    if (kept.board != board.name()) {
        throw store_error((state_dir / "store").string() + ": holds board '" + kept.board + "', not '" + board.name() +
                          "'; choose another directory with --state, or make the board new with --reset");
    }
    if (kept.fingerprint != fingerprint(board)) {
        throw store_error((state_dir / "store").string() +
                          ": was made for other cards or another EEPROM layout of "
                          "board '" +
                          kept.board + "'; choose another directory with --state, or make the board new with --reset");
    }
}

void prepare(const std::filesystem::path &file, const std::filesystem::path &state_dir, bool reset) {
    claim_state_dir(state_dir);
    const state_lock lock(state_dir);
    const uint64_t stamp = file_stamp(file);
    const bool is_made = std::filesystem::exists(state_dir / "store");
    if (is_made && !reset) {
        store opened(state_dir);
        if (stamp != 0 && opened.identity().stamp == stamp) {
            return;
        }
        const description board(file);
        validate_form(board);
        validate_families(board);
        validate_devices(board);
        check_board_of_store(opened, state_dir, board);
        opened.set_stamp(stamp);
        return;
    }
    const description board(file);
    validate_form(board);
    validate_families(board);
    validate_devices(board);
    make_state(state_dir, board, stamp);
}

} // namespace

std::optional<std::string> prepare_board(const std::filesystem::path &description,
                                         const std::filesystem::path &state_dir, bool reset) {
    try {
        prepare(description, state_dir, reset);
    } catch (const std::exception &problem) {
        return problem.what();
    }
    return std::nullopt;
}

} // namespace kestro_sim
