// Source files and origins. A node is known by its handle, which stays the same as long as the node is there.
#include "sim/core/sources.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace kestro_sim {

namespace {

std::string read_all(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream || std::filesystem::is_directory(file)) {
        throw description_error(file.string() + ": cannot be read as a board description (" + std::strerror(errno) +
                                "); give the name of a board or the path of its XML file");
    }
    return content;
}

} // namespace

pugi::xml_node source_set::read(const std::filesystem::path &file) {
    for (const auto &known : sources_) {
        if (known->file == file) {
            return known->document.document_element();
        }
    }
    auto opened = std::make_unique<source>();
    opened->file = file;
    opened->content = read_all(file);
    const pugi::xml_parse_result result = opened->document.load_buffer(opened->content.data(), opened->content.size(),
                                                                       pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        fail_at({opened.get(), static_cast<size_t>(std::max<ptrdiff_t>(result.offset, 0))},
                std::string("not well-formed XML: ") + result.description(),
                "a <chassis>, <board> or <part> of <module>, <node>, <entry> and <element>");
    }
    sources_.push_back(std::move(opened));
    const pugi::xml_node root = sources_.back()->document.document_element();
    if (const pugi::xml_node second = root.next_sibling()) {
        fail(second, "something behind the <" + std::string(root.name()) + ">", "a file describes one");
    }
    return root;
}

void source_set::note_origin(pugi::xml_node made, pugi::xml_node from) {
    origins_[made.hash_value()] = origin_of(from);
}

// What was made without a model of its own (an empty module, a counted entry) stands where its parent does.
source_set::origin source_set::origin_of(pugi::xml_node node) const {
    for (pugi::xml_node at = node; at; at = at.parent()) {
        if (const auto found = origins_.find(at.hash_value()); found != origins_.end()) {
            return found->second;
        }
        for (const auto &known : sources_) {
            if (at.root() == known->document.root()) {
                return {known.get(), static_cast<size_t>(std::max<ptrdiff_t>(at.offset_debug(), 0))};
            }
        }
    }
    return {sources_.front().get(), 0};
}

void source_set::fail(pugi::xml_node where, const std::string &what, const std::string &right) const {
    fail_at(origin_of(where), what, right);
}

void source_set::fail_at(const origin &where, const std::string &what, const std::string &right) {
    const std::string &content = where.from->content;
    const auto end = content.begin() + static_cast<ptrdiff_t>(std::min(where.offset, content.size()));
    const auto lines = std::count(content.begin(), end, '\n');
    throw description_error(where.from->file.string() + ":" + std::to_string(lines + 1) + ": " + what + "; " + right);
}

std::vector<std::filesystem::path> source_set::files() const {
    std::vector<std::filesystem::path> all;
    for (const auto &known : sources_) {
        all.push_back(known->file);
    }
    return all;
}

} // namespace kestro_sim
