// Runs on a board whose driver libraries are at fault. Each is a start of its own, so the slow builds make a part of
// them.
//
// A library that lacks an operation is a copy of the simulated one in whose table of names the operation has another.
// In the text that is expected, "<system>" stands for any text of errno, "<loader>" for the loader's text, which must
// name the library's file and the operation that is missing, "<handle>" for a handle other than 0 in hexadecimal.
#pragma once

#include <string>

namespace kestro_tests {

struct library_fault {
    enum class kind { missing, lacking, no_library, crashing } what;
    std::string library;   // "drv_mng_eth"
    std::string operation; // that it lacks
};

library_fault missing(const std::string &library);
library_fault lacking(const std::string &library, const std::string &operation);
// A file of its name that is none.
library_fault no_library(const std::string &library);
// It dies of SIGSEGV while it is loaded.
library_fault crashing(const std::string &library);

// As expect_run of command.h. The run must also close what it opened.
void expect_run_with(const library_fault &fault, const std::string &line, const std::string &script,
                     const std::string &output, int status);

// As expect_failure.
void expect_failure_with(const library_fault &fault, const std::string &line, const std::string &script,
                         const std::string &body);

// How often a run opened and closed a library that boards may lack, and whether it asked that it is never unloaded.
struct library_use {
    int opened = 0;
    int closed = 0;
    bool stays = false;
};

// Of a run without a fault, whose output is expect_run's matter.
library_use library_used(const std::string &library, const std::string &line, const std::string &script);

} // namespace kestro_tests
