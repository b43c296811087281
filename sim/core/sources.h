// The XML files that a chassis is described in, and where in them each part of the merged chassis stands: a mistake is
// named with the file and line that its writer knows.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace kestro_sim {

// What is wrong with a description: "file:line: what; what would be right".
struct description_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class source_set {
  public:
    // The document element of a file, which is read once; throws description_error when it cannot be read or is no
    // well-formed XML.
    pugi::xml_node read(const std::filesystem::path &file);

    // A node of the merged chassis comes from this one.
    void note_origin(pugi::xml_node made, pugi::xml_node from);

    // Throws description_error that points at where the node stands.
    [[noreturn]] void fail(pugi::xml_node where, const std::string &what, const std::string &right) const;

    std::vector<std::filesystem::path> files() const;

  private:
    struct source {
        std::filesystem::path file;
        std::string content;
        pugi::xml_document document;
    };
    struct origin {
        const source *from;
        size_t offset;
    };
    origin origin_of(pugi::xml_node node) const;
    [[noreturn]] static void fail_at(const origin &where, const std::string &what, const std::string &right);

    std::vector<std::unique_ptr<source>> sources_;
    std::unordered_map<size_t, origin> origins_;
};

} // namespace kestro_sim
