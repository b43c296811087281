// The probe's place between the program, the driver libraries and the headers.
#include "tests/probe/run_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

using namespace kestro_tests;

namespace {

std::vector<std::string> generator() {
    return {PYTHON_PROGRAM, source_dir() + "/probe/generate_wrappers.py"};
}

process_result generate(const std::string &header) {
    std::vector<std::string> argv = generator();
    argv.push_back(scratch_file("wrong.h", header));
    return run_process(argv);
}

void expect_refused(const std::string &declaration, const std::string &why) {
    const process_result run = generate("/* A header. */\n\n" + declaration + "\n");
    EXPECT_NE(run.err.find("wrong.h:3: " + why), std::string::npos) << run.err;
    EXPECT_EQ(run.status, 2) << declaration;
}

// The operations of include/, found without the generator: every declaration starts its line with the result type.
std::set<std::string> declared_operations() {
    const process_result found =
        run_process({"/bin/sh", "-c", "grep -rhoE '^u?int32_t [a-z0-9_]+' " + source_dir() + "/include"});
    std::set<std::string> names;
    std::istringstream lines(found.out);
    for (std::string type, name; lines >> type >> name;) {
        names.insert(name);
    }
    return names;
}

std::set<std::string> exported_names() {
    const process_result found =
        run_process({NM_PROGRAM, "-D", "--defined-only", build_dir() + "/probe/libkestro_probe.so"});
    std::set<std::string> names;
    std::istringstream lines(found.out);
    for (std::string address, kind, name; lines >> address >> kind >> name;) {
        names.insert(name);
    }
    return names;
}

} // namespace

TEST(LinkageTest, TheProbeExportsEveryOperationAndItsTwoHooksAndNothingElse) {
    std::set<std::string> expected = declared_operations();
    EXPECT_GT(expected.size(), 100U);
    expected.insert({"dlsym", "pthread_create"});
    EXPECT_EQ(exported_names(), expected);
}

TEST(LinkageTest, WithoutSettingsCallsGoStraightThrough) {
    const process_result run =
        run_tiny({"num", "num9", "addrs", "log", "code", "in_out", "late", "late_missing", "in_child"});
    EXPECT_EQ(run.out, "num: 0x0 4\nnum: 0x811101a4 77\n"
                       "addrs: 0x0 40 41 42 43 44 45 46 47 48 49 4a 4b ee ee\n"
                       "driver log: chip 3 of \"lpu\": 0x1122334455667788 100%\nlog: 0x0\n"
                       "code: 0x0 0x811101a4 2031 12 30\nboard 5 1: 8\nin_out: 0x0 8 0x1\n"
                       "late: 0x0 41\nlate: not found\nnum: 0x811101a4 77\nin_child: 0\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 3);
}

TEST(LinkageTest, ALibraryThatLooksBehindItselfFindsWhatItFindsWithoutTheProbe) {
    EXPECT_EQ(run_tiny({"next"}).out, "next: 0x0 2\n");
    EXPECT_EQ(record({"next"}).run.out, "next: 0x0 2\n");
}

TEST(LinkageTest, ProgramsThatTheProgramStartsRunWithoutTheProbe) {
    EXPECT_EQ(run_tiny({"environment"}).out, "environment: 1\n");
    EXPECT_EQ(run_tiny({"environment"}, {"KESTRO_PROBE_TRACE=" + new_scratch_dir() + "/t", "KESTRO_PROBE_STRICT=0",
                                         "KESTRO_PROBE_FAIL_CALL=9"})
                  .out,
              "environment: 1\n");
}

TEST(LinkageTest, TheGeneratorRefusesWhatItDoesNotUnderstand) {
    expect_refused("uint32_t op(uint32_t *value);",
                   "pointer parameter 'uint32_t *value' has no fitting direction mark");
    expect_refused("int op(void);", "not an operation, record or callback type");
    expect_refused("uint32_t op(DRV_OUT_BYTES(size) uint8_t *area);", "size 'size' of 'area' names no parameter");
    expect_refused("uint32_t op(DRV_OUT_BYTES(size) uint8_t *area, DRV_OUT uint32_t *size);",
                   "size 'size' of 'area' is no number that is passed in");
    expect_refused("uint32_t op(DRV_OUT const uint32_t *value);",
                   "parameter 'DRV_OUT const uint32_t *value' is written and const at once");
    expect_refused("uint32_t op(uint32_t a, uint32_t a);", "two parameters have the same name");
    expect_refused("uint32_t op(uint32_t level, ...);", "a variadic operation ends in a DRV_IN_TEXT format");
    expect_refused("struct odd {\n    char *pointer;\n};",
                   "pointer field 'char *pointer' has no fitting direction mark");
    expect_refused("struct odd {\n    long number;\n};", "field 'long number' is not understood");
    expect_refused("struct odd {\n    struct other inner;\n};", "field 'struct other inner' is not understood");
    expect_refused("struct odd {\n    char text[SIZE];\n};",
                   "'SIZE' is neither a number nor a constant with a plain number");
    expect_refused("struct odd {\n    char text[2][3][4];\n};",
                   "field 'char text[2][3][4]' has more than two dimensions or an empty one");
    expect_refused("struct odd {\n    DRV_OUT_BYTES(length) uint8_t *data;\n};",
                   "size 'length' of 'data' names no field");
    expect_refused("uint32_t op(DRV_OUT_ARRAY(4) uint8_t *data);",
                   "parameter 'DRV_OUT_ARRAY(4) uint8_t *data' is an area of bytes; write DRV_OUT_BYTES");
    expect_refused("uint32_t op(DRV_IN_ARRAY(n) const uint16_t *data, float n);",
                   "size 'n' of 'data' is no number that is passed in");
    expect_refused("uint32_t op(DRV_OUT_ARRAY(4, n) uint16_t *data, uint32_t n);",
                   "size 'n' of 'data' is no number that is written");
    expect_refused("enum { A = B };", "'B' is neither a number nor a constant with a plain number");
    expect_refused("uint32_t op(void)", "declaration without an end");
}

TEST(LinkageTest, ARecordWithPointersIsPassedBothWays) {
    const std::string record = "struct one {\n    uint32_t n;\n    DRV_OUT_BYTES(n) uint8_t *data;\n};\n";
    const auto says = [&](const std::string &operation) { return generate(record + operation).err; };
    EXPECT_EQ(says("uint32_t op(DRV_INOUT struct one *request);"), "");
    EXPECT_NE(says("uint32_t op(DRV_IN const struct one *request);")
                  .find("wrong.h:5: what 'request' points to is written; write it DRV_INOUT"),
              std::string::npos);
    EXPECT_NE(says("uint32_t op(DRV_OUT struct one *request);")
                  .find("wrong.h:5: 'request' holds pointers, so it is read as well; write it DRV_INOUT"),
              std::string::npos);
    EXPECT_NE(says("uint32_t op(struct one request);")
                  .find("wrong.h:5: parameter 'struct one request' is a record that is passed by value"),
              std::string::npos);
}

TEST(LinkageTest, ACallbackThatFillsAnAreaSaysHowLongThatIs) {
    const auto says = [](const std::string &parameters) {
        std::vector<std::string> argv = generator();
        argv.insert(argv.end(),
                    {"--callbacks", new_scratch_dir() + "/callbacks.cpp",
                     scratch_file("fills.h", "typedef void (*fill)(" + parameters + ");\nuint32_t op(fill hook);\n")});
        return run_process(argv).err;
    };
    EXPECT_EQ(says("DRV_OUT_TEXT(size) char *output, uint32_t size"), "");
    EXPECT_EQ(says("DRV_OUT_TEXT(length) char *output, uint32_t size"),
              "generate_wrappers: callback fill: size 'length' names no number that is passed in\n");
    EXPECT_EQ(says("DRV_OUT_TEXT(size) const char *output, uint32_t size"),
              "generate_wrappers: callback fill: parameter 'DRV_OUT_TEXT(size) const char *output' is not "
              "understood\n");
    EXPECT_EQ(says("DRV_OUT_BYTES(size) char *output, uint32_t size"),
              "generate_wrappers: callback fill: parameter 'DRV_OUT_BYTES(size) char *output' is not understood\n");
}

TEST(LinkageTest, ANewOperationNeedsOnlyItsDeclaration) {
    const std::string header = scratch_file("new.h", "uint32_t drv_new(uint32_t a);\nuint32_t drv_alpha(void);\n");
    std::vector<std::string> argv = generator();
    argv.insert(argv.end(), {"--names", header});
    const process_result run = run_process(argv);
    EXPECT_EQ(run.out, "drv_alpha\ndrv_new\n");
    EXPECT_EQ(run.status, 0);
}
