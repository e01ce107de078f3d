// A FED text as a tree: nothing is lost, and the parser reads the same clauses.

#include "fuzz/Syntax.hh"
#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string fault = faultOfTree(textOf(data, size));
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
