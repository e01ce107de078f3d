// A FED text: parses and checks it, builds a database as far as possible, and loads it.

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"
#include "fuzz/MomClauses.hh"
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

/// Builds a database up to the first declaration that it refuses, without the MOM check, which few texts would pass.
void build(const std::string &text) {
    RtiFedParser parser(text);
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    RtiFedDatabaseCodegen codegen(&database);
    isRefused([&] { parser.deliver(codegen); });
    checkThatItReturns(database);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    _rtiErrorStream.disable();
    const std::string text = withMomClauses(textOf(data, size));
    const auto isInText = [&text](const Finding &finding) {
        return finding.span && finding.span->begin + finding.span->length <= text.size();
    };
    const Checker checker(text);
    for (const Finding &warning : warningsOf(checker))
        FUZZ_CHECK(isInText(warning));
    checker.forEachFinding([&](const Finding &finding) {
        FUZZ_CHECK(isInText(finding));
        return true;
    });
    // To read a text with syntax errors takes much longer than one without, as its repair is searched for, and gives
    // the same each time: it is read again rarely.
    if (checker.parser().numErrors() > 0 && size % 16 != 0)
        return 0;
    build(text);
    if (text.find('\0') == std::string::npos) // a file is only read up to a NUL byte
        FUZZ_CHECK(loads(text) == checker.findsNoError());
    return 0;
}
