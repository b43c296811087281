// Writes the register tables into a file, between its markers: document FILE.
#include "sim/core/register_table.h"

#include <fstream>
#include <iostream>
#include <iterator>

int main(int count, char **arguments) {
    if (count != 2) {
        std::cerr << "document: no file; right is document FILE\n";
        return 2;
    }
    std::ifstream file(arguments[1]);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string begin = kestro_sim::table_begin;
    const size_t from = text.find(begin);
    const size_t to = text.find(kestro_sim::table_end);
    if (!file || from == std::string::npos || to == std::string::npos || to < from) {
        std::cerr << arguments[1] << ": has no place for the register tables; right are the lines " << begin << " and "
                  << kestro_sim::table_end;
        return 2;
    }
    text.replace(from + begin.size(), to - from - begin.size(), kestro_sim::register_tables());
    std::ofstream written(arguments[1]);
    if (!(written << text << std::flush)) {
        std::cerr << arguments[1] << ": cannot be written; give a file that can\n";
        return 2;
    }
    return 0;
}
