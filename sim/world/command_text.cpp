// Leads the board's paths in a shell command to the board's files. It reads words and quotes, not the shell's language:
// a path put together from variables stays the desk's.
#include "sim/world/command_text.h"

#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cstring>

namespace kestro_sim {

namespace {

struct text_sink {
    char *text;
    size_t size;
    size_t length;
};

void put(text_sink &sink, char character) {
    if (sink.length + 1 < sink.size) {
        sink.text[sink.length] = character;
    }
    ++sink.length;
}

bool is_path_character(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || (character != '\0' && strchr("_.-/~+@%", character) != nullptr);
}

bool starts_board_path(const char *text) {
    for (unsigned i = 0; i < board_place_count; ++i) {
        const size_t length = strlen(board_places[i]);
        const bool matches = strncmp(text, board_places[i], length) == 0;
        if (matches && (text[length] == '/' || !is_path_character(text[length]))) {
            return true;
        }
    }
    return false;
}

// Whether the shell would take the character for something else within these quotes.
bool needs_backslash(char character, char quote) {
    if (quote == '"') {
        return strchr("$`\"\\", character) != nullptr;
    }
    return quote == '\0' && !is_path_character(character);
}

// The directory of the board's files, so that the shell reads it as it is. Quote: 0, ' or ".
void put_root(text_sink &sink, char quote) {
    for (const char *character = settings.root; *character != '\0'; ++character) {
        if (quote == '\'' && *character == '\'') {
            put(sink, '\'');
            put(sink, '\\');
            put(sink, '\'');
        } else if (needs_backslash(*character, quote)) {
            put(sink, '\\');
        }
        put(sink, *character);
    }
}

// The quote that holds after this character.
char quote_after(char quote, char character) {
    if (quote == '\0') {
        return character == '\'' || character == '"' ? character : '\0';
    }
    return character == quote ? '\0' : quote;
}

} // namespace

size_t command_on_desk(const char *command, char *text, size_t size) {
    text_sink sink{text, size, 0};
    char quote = '\0';
    for (const char *at = command; *at != '\0'; ++at) {
        const bool word_starts = at == command || !is_path_character(at[-1]);
        if (word_starts && starts_board_path(at)) {
            put_root(sink, quote);
        }
        if (*at == '\\' && quote != '\'' && at[1] != '\0') {
            put(sink, *at++);
        } else {
            quote = quote_after(quote, *at);
        }
        put(sink, *at);
    }
    if (size != 0) {
        text[sink.length < size ? sink.length : size - 1] = '\0';
    }
    return sink.length;
}

} // namespace kestro_sim
