// Which paths belong to the board, and where they lie on the desk. The board's files stand in a directory that is laid
// out like the board's own root; links in it lead within it, as they do on the board.
#pragma once

#include <climits>
#include <type_traits>

namespace kestro_sim {

enum class last_link { follow, keep };

// Part of the list of places that are the board's. Relative paths are the desk's.
bool is_board_path(const char *path);

// Where a board path lies on the desk; the file need not exist. False with errno when the path leads nowhere.
bool place_on_desk(const char *path, last_link last, char (&place)[PATH_MAX]);

// The board path without links and dots. False with errno when the file does not exist.
bool board_realpath(const char *path, char (&resolved)[PATH_MAX]);

// Calls with the place on the desk of a board path, and with any other path as it is.
template <typename action> auto at_desk(const char *path, last_link last, action call) -> decltype(call(path)) {
    if (!is_board_path(path)) {
        return call(path);
    }
    char place[PATH_MAX];
    if (!place_on_desk(path, last, place)) {
        if constexpr (std::is_pointer_v<decltype(call(path))>) {
            return nullptr;
        } else {
            return -1;
        }
    }
    return call(place);
}

// The places of the list, for what looks for them in a text.
extern const char *const board_places[];
extern const unsigned board_place_count;

} // namespace kestro_sim
