// Object models in XML, separated by NUL bytes as modules: what is imported without errors is formatted FED text that
// loads and is the same model as the outline that diff compares.

#include "fuzz/Import.hh"
#include "fuzz/Fuzz.hh"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text = textOf(data, size);
    std::vector<Input> modules;
    for (std::size_t begin = 0; begin <= text.size() && modules.size() < 4;) {
        const std::size_t end = std::min(text.find('\0', begin), text.size());
        modules.push_back({"module" + std::to_string(modules.size()) + ".xml", text.substr(begin, end - begin)});
        begin = end + 1;
    }
    const std::string fault = faultOfImport(modules);
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
