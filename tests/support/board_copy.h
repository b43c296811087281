// A state directory for many runs, each on a new board: making the board anew each time would cost more than the run.
#pragma once

#include <map>
#include <string>

namespace kestro_tests {

class board_copy {
  public:
    // Takes the files that a state directory holds now.
    explicit board_copy(std::string directory);

    // Gives the directory with exactly these files again. Files are compared by what they hold: what is written
    // through a mapping changes no file's time on every file system.
    const std::string &restored() const;

  private:
    std::string directory_;
    std::map<std::string, std::string> files_; // by path
};

} // namespace kestro_tests
