// Finds the values of a driver call where its arguments say they are.
#include "probe/call.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace kestro_probe {

namespace {

const parameter &parameter_at(const call &made, size_t index) {
    return operations[made.operation].parameters[index];
}

// Where the value of a parameter stands: the argument itself, or what it points to.
void *place_of(const call &made, size_t index) {
    void *argument = made.arguments[index];
    if (parameter_at(made, index).direction == mark::value) {
        return argument;
    }
    void *pointer = nullptr;
    memcpy(&pointer, argument, sizeof(pointer));
    return pointer;
}

bool is_area(mark direction) {
    return direction == mark::in_bytes || direction == mark::out_bytes || direction == mark::out_text ||
           direction == mark::inout_text;
}

size_t area_size(const call &made, size_t index) {
    const parameter &area = parameter_at(made, index);
    if (area.size_parameter < 0) {
        return area.fixed_size;
    }
    const auto at = static_cast<size_t>(area.size_parameter);
    const parameter &size = parameter_at(made, at);
    const value given = read_value(shape_of(size), place_of(made, at), 0);
    const bool negative = is_signed(size.type) && static_cast<int64_t>(given.number) < 0;
    const auto most = static_cast<uint64_t>(std::numeric_limits<ptrdiff_t>::max());
    return negative ? 0 : static_cast<size_t>(std::min(given.number, most));
}

value read_parameter(const call &made, size_t index) {
    const parameter &wanted = parameter_at(made, index);
    const void *place = place_of(made, index);
    size_t capacity = 0;
    if (wanted.direction == mark::in_text && place != nullptr) {
        capacity = strlen(static_cast<const char *>(place));
    } else if (is_area(wanted.direction)) {
        // A size that is passed by address may have come back smaller: that much was written.
        capacity = std::min({made.capacities[index], area_size(made, index), longest_shown_area});
    }
    return read_value(shape_of(wanted), place, capacity);
}

template <typename Wanted> std::vector<named_value> read_parameters(const call &made, Wanted wanted) {
    std::vector<named_value> found;
    for (uint32_t i = 0; i < operations[made.operation].parameters.size(); ++i) {
        if (wanted(parameter_at(made, i))) {
            found.push_back({i, read_parameter(made, i)});
        }
    }
    return found;
}

std::string misfit(const parameter &output, const void *place, size_t capacity) {
    if (place == nullptr) {
        return std::string("the call gives no area for ") + output.name;
    }
    const bool area = is_area(output.direction);
    return std::string(output.name) + " is longer than " +
           (area ? "its area of " + std::to_string(capacity) + " bytes" : std::string("its record")) + "; it was cut";
}

} // namespace

call make_call(uint32_t operation, void *const *arguments) {
    call made{operation, arguments, {}};
    for (size_t i = 0; i < operations[operation].parameters.size(); ++i) {
        made.capacities.push_back(is_area(parameter_at(made, i).direction) ? area_size(made, i) : 0);
    }
    return made;
}

std::vector<named_value> shown_inputs(const call &made) {
    return read_parameters(made, [](const parameter &p) { return is_input(p.direction) && !p.hidden; });
}

std::vector<named_value> read_outputs(const call &made) {
    return read_parameters(made, [](const parameter &p) { return is_output(p.direction); });
}

bool matches(const rule &wanted, const call &made) {
    return wanted.operation == made.operation &&
           std::all_of(wanted.inputs.begin(), wanted.inputs.end(), [&](const named_value &input) {
               return matches(shape_of(parameter_at(made, input.parameter)), input.content,
                              read_parameter(made, input.parameter));
           });
}

std::vector<std::string> write_outputs(const rule &answering, const call &made) {
    std::vector<std::string> misfits;
    for (const named_value &output : answering.outputs) {
        const parameter &written = parameter_at(made, output.parameter);
        void *place = place_of(made, output.parameter);
        const size_t capacity = made.capacities[output.parameter];
        if (!write_value(shape_of(written), output.content, place, capacity)) {
            misfits.push_back(misfit(written, place, capacity));
        }
    }
    return misfits;
}

bool shown_in_part(const call &made) {
    return std::any_of(made.capacities.begin(), made.capacities.end(),
                       [](size_t capacity) { return capacity > longest_shown_area; });
}

} // namespace kestro_probe
