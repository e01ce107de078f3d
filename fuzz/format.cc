// A FED text in canonical layout: the same model and comments, and the same text when it is formatted again. The first
// two bytes choose the indentation and the lines that are formatted alone.

#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"
#include "fuzz/Syntax.hh"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size < 2)
        return 0;
    const std::string text = textOf(data + 2, size - 2);
    const std::size_t indentation = data[0] % kMaxIndentation + 1, line = data[1];
    for (const FormatOptions &options :
         {FormatOptions{indentation, {}}, FormatOptions{indentation, LineRange{line, line + 3}}}) {
        const std::string fault = faultOfFormat(text, options);
        if (!fault.empty())
            std::fprintf(stderr, "%s\n", fault.c_str());
        FUZZ_CHECK(fault.empty());
    }
    return 0;
}
