// A FED text: through the parser and the checker, into a database as far as it goes, and through the whole load.

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "fuzz/Fuzz.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/Checker.hh"
#include "tool/Warnings.hh"

namespace {

/// Whether the library loads the text.
bool loads(std::string text) {
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    std::FILE *file = fmemopen(text.data(), text.size(), "r");
    if (!file || isRefused([&] { database.buildFromFed(file); })) // none for an empty text
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
    isRefused([&] { parser.deliver(codegen); }); // without the MOM, of which few texts have all
    checkThatItReturns(database);

    const Checker checker(text);
    for (const Finding &warning : warningsOf(checker))
        FUZZ_CHECK(warning.span && warning.span->begin + warning.span->length <= size);
    checker.forEachFinding([size](const Finding &finding) {
        FUZZ_CHECK(finding.span && finding.span->begin + finding.span->length <= size);
        return true;
    });
    if (text.find('\0') == std::string::npos) // where a file is read no farther
        FUZZ_CHECK(loads(text) == checker.findsNoError());
    return 0;
}
