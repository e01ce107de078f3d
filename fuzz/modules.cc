// FED texts separated by NUL bytes: merges them, extracts classes, and writes their names as constants.

#include "fuzz/Modules.hh"
#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"
#include "tool/console/Text.hh"

namespace {

void require(const std::string &fault) {
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::size_t kMostExtracts = 20; // of a text; the MOM is in each
    std::vector<std::string> texts = split(textOf(data, size), '\0');
    texts.resize(std::min<std::size_t>(texts.size(), 3));
    if (!texts.empty())
        require(faultOfMerge(texts));
    for (const std::string &text : texts) {
        require(faultOfExtracts(text, kMostExtracts));
        require(faultOfConstants(text));
    }
    return 0;
}
