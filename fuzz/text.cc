// A FED text: parses and checks it, builds a database as far as possible, and loads it.

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "fuzz/Fuzz.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Checker.hh"
#include "tool/check/Warnings.hh"

namespace {

/// Returns whether the library loads the text.
bool loads(std::string text) {
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    std::FILE *file = fmemopen(text.data(), text.size(), "r");
    if (!file || isRefused([&] { database.buildFromFed(file); })) // no file for an empty text
        return false;
    checkThatItReturns(database);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    _rtiErrorStream.disable();
    const std::string text = textOf(data, size);
    RtiFedParser parser(text);
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    RtiFedDatabaseCodegen codegen(&database);
    isRefused([&] { parser.deliver(codegen); }); // without the MOM check, which few texts would pass
    checkThatItReturns(database);

    const Checker checker(text);
    for (const Finding &warning : warningsOf(checker))
        FUZZ_CHECK(warning.span && warning.span->begin + warning.span->length <= size);
    checker.forEachFinding([size](const Finding &finding) {
        FUZZ_CHECK(finding.span && finding.span->begin + finding.span->length <= size);
        return true;
    });
    if (text.find('\0') == std::string::npos) // a file is only read up to a NUL byte
        FUZZ_CHECK(loads(text) == checker.findsNoError());
    return 0;
}
