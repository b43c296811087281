// Puts the chassis together: what sits where, then each board from its kind, then what a user's own board changes.
#include "sim/core/chassis.h"

#include "sim/core/chassis_form.h"
#include "sim/core/merge.h"
#include "sim/core/validate.h"

#include <algorithm>

namespace kestro_sim {

namespace {

namespace fs = std::filesystem;

constexpr uint64_t card_max = 255;
constexpr int include_depth_max = 8;

// Everything that stands on an element but what the form itself asks for.
variable_map variables_of(pugi::xml_node item, std::initializer_list<std::string_view> own) {
    variable_map given;
    for (const pugi::xml_attribute attribute : item.attributes()) {
        if (std::find(own.begin(), own.end(), attribute.name()) == own.end()) {
            given[attribute.name()] = attribute.value();
        }
    }
    return given;
}

class chassis_maker {
  public:
    explicit chassis_maker(const board_choice &choice)
        : choice_(choice), made_(std::make_unique<description>()), sources_(made_->sources()) {
    }

    std::unique_ptr<description> make() {
        root_ = sources_.read(choice_.chassis_file);
        require_tag(sources_, root_, "chassis");
        require_name(sources_, root_);
        read_own_board();
        made_->chassis().append_attribute("name") = root_.attribute("name").value();
        sources_.note_origin(made_->chassis(), root_);
        make_chassis_place();
        for (const pugi::xml_node slot : root_.children("slot")) {
            make_slot(slot);
        }
        change_other_places();
        finish();
        return std::move(made_);
    }

  private:
    void read_own_board() {
        if (!choice_.board_file.empty()) {
            own_ = sources_.read(choice_.board_file);
            require_tag(sources_, own_, "board");
            require_name(sources_, own_);
            const uint64_t slot = require_number(sources_, own_, "slot", slot_max);
            own_place_ = slot_place(static_cast<uint32_t>(slot));
            if (!find_slot(slot)) {
                sources_.fail(own_, "the chassis has no slot " + std::to_string(slot),
                              "use one of " + choice_.chassis_file.string());
            }
        }
    }

    pugi::xml_node find_slot(uint64_t number) const {
        for (const pugi::xml_node slot : root_.children("slot")) {
            if (parse_number(slot.attribute("number").value()) == number) {
                return slot;
            }
        }
        return {};
    }

    pugi::xml_node new_place(const std::string &name, pugi::xml_node from) {
        if (made_->place(name)) {
            sources_.fail(from, in_quotes(name) + " is there twice", "a slot or place holds one board");
        }
        pugi::xml_node place = made_->chassis().append_child("place");
        place.append_attribute("name") = name.c_str();
        sources_.note_origin(place, from);
        return place;
    }

    // The slots, as the backplane is built, and what else the chassis file says of no board.
    void make_chassis_place() {
        pugi::xml_node place = new_place(std::string(chassis_place), root_);
        pugi::xml_node module = add_named(place, "module", "sim_chassis");
        pugi::xml_node range = add_named(add_named(module, "node", "slots"), "entry", "range");
        pugi::xml_node slots = add_named(module, "node", "slot");
        uint64_t first = slot_max;
        uint64_t last = 0;
        for (const pugi::xml_node slot : root_.children("slot")) {
            const uint64_t number = require_number(sources_, slot, "number", slot_max);
            const uint64_t type = require_number(sources_, slot, "type", card_max);
            if (named_child(slots, std::to_string(number))) {
                sources_.fail(slot, "slot " + std::to_string(number) + " is there twice", "slots differ by number");
            }
            pugi::xml_node entry = add_named(slots, "entry", std::to_string(number));
            sources_.note_origin(entry, slot);
            add_number(entry, "type", type);
            first = std::min(first, number);
            last = std::max(last, number);
        }
        add_number(range, "first", first);
        add_number(range, "last", last);
        add_modules(place, root_, 0);
        variables_[place.attribute("name").value()] = variables_of(root_, {"name", "seat"});
    }

    static pugi::xml_node add_named(pugi::xml_node parent, const char *tag, const std::string &name) {
        pugi::xml_node made = parent.append_child(tag);
        made.append_attribute("name") = name.c_str();
        return made;
    }

    static void add_number(pugi::xml_node entry, const char *name, uint64_t value) {
        add_named(entry, "element", name).append_attribute("value") = std::to_string(value).c_str();
    }

    void make_slot(pugi::xml_node slot) {
        const auto number = static_cast<uint32_t>(*parse_number(slot.attribute("number").value()));
        const std::string place = slot_place(number);
        const bool is_own = place == own_place_;
        if (!slot.attribute("board") && !is_own) {
            if (const pugi::xml_node card = slot.child("card")) {
                sources_.fail(card, "a card on no board", "the slot names its board with board=\"...\"");
            }
            return;
        }
        variable_map given = slot_variables(slot, number);
        make_board(place, is_own ? own_ : slot, is_own ? own_ : kind_of(slot), given);
        for (const pugi::xml_node card : slot.children("card")) {
            make_card(place, card, given);
        }
    }

    // What a slot gives its board beside what stands on it: its number, which of the slots of its type it is, and of
    // two such slots the other.
    variable_map slot_variables(pugi::xml_node slot, uint32_t number) const {
        variable_map given = variables_of(slot, {"number", "type", "board", "seat"});
        std::vector<uint64_t> alike;
        for (const pugi::xml_node other : root_.children("slot")) {
            if (std::string_view(other.attribute("type").value()) == slot.attribute("type").value()) {
                alike.push_back(parse_number(other.attribute("number").value()).value_or(0));
            }
        }
        std::sort(alike.begin(), alike.end());
        const auto self = std::find(alike.begin(), alike.end(), number);
        given["slot"] = std::to_string(number);
        given["index"] = std::to_string(self - alike.begin());
        if (alike.size() == 2) {
            given["peer_slot"] = std::to_string(alike[self == alike.begin() ? 1 : 0]);
        }
        return given;
    }

    void make_card(const std::string &board, pugi::xml_node card, const variable_map &board_gives) {
        const auto number = static_cast<uint32_t>(require_number(sources_, card, "place", card_max));
        if (!made_->entry(board, "sim_chassis", "card", std::to_string(number))) {
            sources_.fail(card, "the board has no place " + std::to_string(number) + " for a card",
                          "its places are the entries of node card of its module sim_chassis");
        }
        if (!card.attribute("board")) {
            return;
        }
        variable_map given = variables_of(card, {"place", "board"});
        given["slot"] = board_gives.at("slot");
        given["place"] = std::to_string(number);
        make_board(card_place(board, number), card, kind_of(card), given);
    }

    void make_board(const std::string &name, pugi::xml_node where, pugi::xml_node kind, variable_map given) {
        pugi::xml_node place = new_place(name, where);
        board_files files{name, {}, {}};
        lay_kind(place, kind, given, files, 0);
        files.variables = given;
        variables_[name] = given;
        if (!files.roots.empty()) {
            made_->files.push_back(std::move(files));
        }
    }

    // A board is what it is like, with what it says itself laid over that.
    void lay_kind(pugi::xml_node place, pugi::xml_node kind, variable_map &given, board_files &files, int depth) {
        check_depth(kind, depth);
        for (const auto &[name, value] : variables_of(kind, {"name", "like", "slot"})) {
            given.emplace(name, value);
        }
        if (const pugi::xml_attribute like = kind.attribute("like")) {
            lay_kind(place, read_named(kind, "boards", like.value(), "board"), given, files, depth + 1);
            // What differs is laid over the finished board, whose lists are filled by then.
            substitute(sources_, place, given);
            fill_lists(sources_, place);
        }
        files_of_ = &files;
        add_modules(place, kind, depth);
        files_of_ = nullptr;
        add_root(files, file_of(kind));
    }

    void add_modules(pugi::xml_node place, pugi::xml_node from, int depth) {
        check_depth(from, depth);
        for (const pugi::xml_node include : from.children("include")) {
            const pugi::xml_node part = read_named(include, "parts", include.attribute("part").value(), "part");
            add_modules(place, part, depth + 1);
            if (files_of_ != nullptr) {
                add_root(*files_of_, file_of(part));
            }
        }
        lay_over(sources_, place, from, [&](pugi::xml_node item) {
            return is_tag(item, "include") || (is_tag(item, "slot") && from == root_) ||
                   (is_tag(item, "place") && from == own_);
        });
    }

    void check_depth(pugi::xml_node where, int depth) const {
        if (depth > include_depth_max) {
            sources_.fail(where, "this leads in a circle", "a board or part does not hold itself");
        }
    }

    pugi::xml_node kind_of(pugi::xml_node slot) {
        return read_named(slot, "boards", slot.attribute("board").value(), "board");
    }

    // Beside the user's own file first, then among what is delivered.
    pugi::xml_node read_named(pugi::xml_node where, const char *folder, const std::string &name, const char *tag) {
        if (name.empty() || name.find('/') != std::string::npos) {
            sources_.fail(where, "a " + std::string(tag) + " without a name",
                          "give the name of a file in " + std::string(folder) + "/");
        }
        const fs::path own = choice_.board_file.empty() ? choice_.chassis_file : choice_.board_file;
        for (const fs::path &directory : {own.parent_path(), choice_.chassis_file.parent_path(), choice_.delivered}) {
            const fs::path file = directory / folder / (name + ".xml");
            std::error_code none;
            if (fs::exists(file, none)) {
                const pugi::xml_node root = sources_.read(file);
                require_tag(sources_, root, tag);
                files_[root.hash_value()] = file;
                return root;
            }
        }
        sources_.fail(where, "there is no " + std::string(tag) + " " + in_quotes(name),
                      "right is one of: " + names_in(choice_.delivered / folder));
    }

    static std::string names_in(const fs::path &directory) {
        std::vector<std::string> names;
        std::error_code none;
        for (const fs::directory_entry &entry : fs::directory_iterator(directory, none)) {
            if (entry.path().extension() == ".xml") {
                names.push_back(entry.path().stem().string());
            }
        }
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string &name : names) {
            all += (all.empty() ? "" : ", ") + name;
        }
        return all;
    }

    fs::path file_of(pugi::xml_node root) const {
        const auto known = files_.find(root.hash_value());
        return known != files_.end() ? known->second : choice_.board_file;
    }

    // Files of a board lie beside its description; later ones are laid over earlier ones.
    static void add_root(board_files &files, fs::path description) {
        const fs::path root = description.replace_extension(".root");
        std::error_code none;
        if (fs::is_directory(root, none)) {
            files.roots.push_back(root);
        }
    }

    // A user's own board may change other places too: <place name="slot5"> with modules.
    void change_other_places() {
        for (const pugi::xml_node change : own_.children("place")) {
            const std::string name = change.attribute("name").value();
            const pugi::xml_node place = made_->place(name);
            if (!place) {
                sources_.fail(change, "nothing is at place " + in_quotes(name),
                              "right is one of: " + places_of(*made_));
            }
            lay_over(sources_, place, change);
        }
    }

    static std::string places_of(const description &made) {
        std::string all;
        for (const pugi::xml_node place : made.chassis().children("place")) {
            all += (all.empty() ? "" : ", ") + std::string(place.attribute("name").value());
        }
        return all;
    }

    void finish() {
        for (const pugi::xml_node place : made_->chassis().children("place")) {
            substitute(sources_, place, variables_[place.attribute("name").value()]);
            fill_lists(sources_, place);
        }
        validate_form(*made_);
        validate_families(*made_);
        validate_devices(*made_);
    }

    const board_choice &choice_;
    std::unique_ptr<description> made_;
    source_set &sources_;
    pugi::xml_node root_;
    pugi::xml_node own_;
    std::string own_place_;
    board_files *files_of_ = nullptr;
    std::map<size_t, fs::path> files_;
    std::map<std::string, variable_map> variables_;
};

} // namespace

std::unique_ptr<description> read_chassis(const board_choice &choice) {
    return chassis_maker(choice).make();
}

} // namespace kestro_sim
