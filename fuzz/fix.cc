// A FED text and its fixes: the same when it is fixed again, and what loads still does. The first byte chooses whether
// the unsafe fixes are made too.

#include "fuzz/Fix.hh"
#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"
#include "fuzz/MomClauses.hh"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string text = withMomClauses(textOf(data + 1, size - 1));
    if (text.find('\0') != std::string::npos)
        return 0;
    const std::string fault = faultOfFixes(text, {data[0] % 2 == 1});
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
