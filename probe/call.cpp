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

uint64_t number_of(const call &made, int32_t index) {
    const auto at = static_cast<size_t>(index);
    const parameter &size = parameter_at(made, at);
    const value given = read_value(shape_of(size), place_of(made, at), 0);
    const bool negative = is_signed(size.type) && static_cast<int64_t>(given.number) < 0;
    const auto most = static_cast<uint64_t>(std::numeric_limits<ptrdiff_t>::max());
    return negative ? 0 : std::min(given.number, most);
}

size_t area_size(const call &made, size_t index) {
    const extent &size = parameter_at(made, index).size;
    return size.size_at < 0 ? size.fixed_size : static_cast<size_t>(number_of(made, size.size_at));
}

size_t longest_shown(const parameter &described) {
    return is_array(described.direction) ? longest_shown_area / stride_of(element_of(shape_of(described)))
                                         : longest_shown_area;
}

// A size that is passed by address may have come back smaller: that much was written.
size_t shown_size(const call &made, size_t index, bool written) {
    const parameter &area = parameter_at(made, index);
    const size_t size = std::min({made.capacities[index], area_size(made, index), longest_shown(area)});
    const int32_t filled = area.size.filled_at;
    return written && filled >= 0 && place_of(made, static_cast<size_t>(filled)) != nullptr
               ? static_cast<size_t>(std::min<uint64_t>(size, number_of(made, filled)))
               : size;
}

value read_parameter(const call &made, size_t index, bool written) {
    const parameter &wanted = parameter_at(made, index);
    const void *place = place_of(made, index);
    size_t capacity = 0;
    if (wanted.direction == mark::in_text && place != nullptr) {
        capacity = strlen(static_cast<const char *>(place));
    } else if (is_sized(wanted.direction)) {
        capacity = shown_size(made, index, written);
    }
    return read_value(shape_of(wanted, written), place, capacity);
}

template <typename Wanted> std::vector<named_value> read_parameters(const call &made, bool written, Wanted wanted) {
    std::vector<named_value> found;
    for (uint32_t i = 0; i < operations[made.operation].parameters.size(); ++i) {
        if (wanted(parameter_at(made, i))) {
            found.push_back({i, read_parameter(made, i, written)});
        }
    }
    return found;
}

std::string misfit(const parameter &output, const void *place, size_t capacity) {
    if (place == nullptr) {
        return std::string("the call gives no area for ") + output.name;
    }
    const std::string name = output.name;
    if (output.layout != nullptr && !is_array(output.direction)) {
        return name + " is longer than its record; it was cut";
    }
    const std::string unit = is_array(output.direction) ? " elements" : " bytes";
    return name + " is longer than its area of " + std::to_string(capacity) + unit + "; it was cut";
}

} // namespace

call make_call(uint32_t operation, void *const *arguments, uint32_t thread) {
    call made{operation, arguments, thread, {}};
    for (size_t i = 0; i < operations[operation].parameters.size(); ++i) {
        made.capacities.push_back(is_sized(parameter_at(made, i).direction) ? area_size(made, i) : 0);
    }
    return made;
}

std::vector<named_value> shown_inputs(const call &made) {
    return read_parameters(made, false, [](const parameter &p) { return is_input(p.direction) && !p.hidden; });
}

std::vector<named_value> read_outputs(const call &made) {
    return read_parameters(made, true, [](const parameter &p) { return is_output(p.direction); });
}

bool matches(const rule &wanted, const call &made) {
    return wanted.operation == made.operation &&
           std::all_of(wanted.inputs.begin(), wanted.inputs.end(), [&](const named_value &input) {
               return matches(shape_of(parameter_at(made, input.parameter)), input.content,
                              read_parameter(made, input.parameter, false));
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
    for (size_t i = 0; i < made.capacities.size(); ++i) {
        if (is_sized(parameter_at(made, i).direction) && made.capacities[i] > longest_shown(parameter_at(made, i))) {
            return true;
        }
    }
    return false;
}

} // namespace kestro_probe
