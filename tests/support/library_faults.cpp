#include "tests/support/library_faults.h"

#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

#include <filesystem>
#include <regex>
#include <sstream>

namespace kestro_tests {

namespace {

namespace fs = std::filesystem;
using texts = std::vector<std::string>;

std::string file_of(const std::string &library) {
    return "lib" + library + ".so";
}

bool is_linked(const std::string &library) {
    return library == "drv_basic";
}

// The names of operations lie one after the other, each between zeros. The loader finds one by its hash and compares it
// then, so one that has changed is not found, and nothing else is.
std::string without_operation(std::string content, const std::string &operation) {
    const std::string name = '\0' + operation + '\0';
    size_t changed = 0;
    for (size_t at = content.find(name); at != std::string::npos; at = content.find(name, at + 1)) {
        content[at + 1] = 'D';
        ++changed;
    }
    EXPECT_GT(changed, 0U) << "the library has no " << operation;
    return content;
}

std::string harmless_library(const std::string &library) {
    return build_dir() + "/noop/" + file_of(library);
}

// A folder with the library as the fault has it.
std::string folder_with(const library_fault &fault) {
    const std::string folder = new_scratch_dir();
    const std::string file = folder + "/" + file_of(fault.library);
    switch (fault.what) {
    case library_fault::kind::missing:
        break;
    case library_fault::kind::lacking:
        write_file(file, without_operation(read_file(harmless_library(fault.library)), fault.operation));
        break;
    case library_fault::kind::no_library:
        write_file(file, "This is a text, where a library is due.\n");
        break;
    case library_fault::kind::crashing:
        fs::copy_file(build_dir() + "/tests/libcrashing_driver.so", file);
        break;
    }
    return folder;
}

// What the loader notes of what it does, for one run.
class loader_notes {
  public:
    loader_notes() : folder_(new_scratch_dir()) {
    }

    texts environment() const {
        return {"LD_DEBUG=files", "LD_DEBUG_OUTPUT=" + folder_ + "/notes"};
    }

    library_use of(const std::string &library) const {
        library_use use;
        for (const fs::directory_entry &file : fs::directory_iterator(folder_)) {
            std::istringstream notes(read_file(file.path()));
            for (std::string line; std::getline(notes, line);) {
                count(line, file_of(library), use);
            }
        }
        return use;
    }

  private:
    static void count(const std::string &line, const std::string &file, library_use &use) {
        if (line.find(file) == std::string::npos) {
            return;
        }
        use.opened += line.find("opening file=") != std::string::npos ? 1 : 0;
        use.closed += line.find("destroying link map") != std::string::npos ? 1 : 0;
        use.stays = use.stays || line.find("NODELETE") != std::string::npos;
    }

    std::string folder_;
};

std::string escaped(const std::string &text) {
    static const std::regex special(R"([.^$|()\[\]{}*+?\\])");
    return std::regex_replace(text, special, R"(\$&)");
}

std::string replaced(std::string text, const std::string &mark, const std::string &with) {
    for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + with.size())) {
        text.replace(at, mark.size(), with);
    }
    return text;
}

bool agrees(const std::string &printed, const std::string &expected, const library_fault &fault) {
    std::string loader = "[^\n]*" + escaped(file_of(fault.library)) + "[^\n]*";
    loader += fault.operation.empty() ? "" : escaped(fault.operation) + "[^\n]*";
    std::string pattern = replaced(escaped(expected), "<system>", "[A-Z][A-Za-z ]*");
    pattern = replaced(replaced(pattern, "<loader>", loader), "<handle>", "[1-9a-f][0-9a-f]*");
    return std::regex_match(printed, std::regex(pattern));
}

// The options of the launcher, and the environment, for a run without the simulated libraries that a board may lack.
struct faulty_board {
    texts options;
    process_options process;
};

faulty_board board_with(const library_fault &fault, const std::string &script) {
    static const std::string state = new_scratch_dir();
    faulty_board board;
    board.options = {
        "--state", state, "--clock", "virtual", "--strict", "--script", scratch_file("script", script + "\n")};
    if (!is_linked(fault.library)) {
        board.options.insert(board.options.end(), {"--without", fault.library});
        board.process.environment = {"LD_LIBRARY_PATH=" + folder_with(fault)};
    } else if (fault.what == library_fault::kind::missing) {
        board.process.environment = {"LD_PRELOAD=" + build_dir() + "/tests/libhide_basic.so"};
    } else {
        // Loaded first, it is what the program's own list of libraries means.
        board.process.environment = {"LD_PRELOAD=" + folder_with(fault) + "/" + file_of(fault.library)};
    }
    return board;
}

} // namespace

library_fault missing(const std::string &library) {
    return {library_fault::kind::missing, library, ""};
}

library_fault lacking(const std::string &library, const std::string &operation) {
    return {library_fault::kind::lacking, library, operation};
}

library_fault no_library(const std::string &library) {
    return {library_fault::kind::no_library, library, ""};
}

library_fault crashing(const std::string &library) {
    return {library_fault::kind::crashing, library, ""};
}

void expect_run_with(const library_fault &fault, const std::string &line, const std::string &script,
                     const std::string &output, int status) {
    if (lists_lines() || !is_tried_here(line + fault.library + fault.operation)) {
        return;
    }
    SCOPED_TRACE("kestro_test " + line + ", " + fault.library + " " + fault.operation);
    faulty_board board = board_with(fault, script);
    const loader_notes notes;
    for (const std::string &variable : notes.environment()) {
        board.process.environment.push_back(variable);
    }
    const process_result result = run_launcher(board.options, split_words(line), board.process);
    if (!agrees(result.out, output, fault)) {
        EXPECT_EQ(result.out, output);
    }
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
    if (fault.what == library_fault::kind::lacking && !is_linked(fault.library)) {
        const library_use use = notes.of(fault.library);
        EXPECT_TRUE(use.closed == use.opened || use.stays) << "the library was left open";
    }
    if (fault.what != library_fault::kind::crashing) {
        EXPECT_EQ(result.err, "");
    }
}

void expect_failure_with(const library_fault &fault, const std::string &line, const std::string &script,
                         const std::string &body) {
    const texts words = split_words(line);
    expect_run_with(fault, line, script, body + timing_lines + operate_fail(words.at(1)) + operate_fail(words.at(0)),
                    255);
}

library_use library_used(const std::string &library, const std::string &line, const std::string &script) {
    faulty_board board = board_with(missing(library), script);
    const loader_notes notes;
    board.process.environment = notes.environment();
    board.process.environment.push_back("LD_LIBRARY_PATH=" + build_dir() + "/noop");
    run_launcher(board.options, split_words(line), board.process);
    return notes.of(library);
}

} // namespace kestro_tests
