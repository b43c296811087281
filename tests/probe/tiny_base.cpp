// A library below the tiny driver library: has the second definition of a symbol that both have.
extern "C" int tiny_marker() {
    return 2;
}
