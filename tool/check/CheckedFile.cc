#include "tool/check/CheckedFile.hh"

#include "tool/check/Warnings.hh"
#include "tool/check/fixes/Fixes.hh"
#include "tool/model/Model.hh"

namespace {

/// Returns the one finding that an image may have: the library checks all else when it restores the image.
std::vector<Finding> findingsOfImage(const Input &input, Severity least) {
    try {
        const auto model = restoreImage(input.contents);
        std::ostream nowhere(nullptr);
        // unreached: only a host can save such an image; the test of the listing has one
        if (least == Severity::warning && !writeListing(*model, nowhere))
            return {{&ruleOf(RuleId::danglingReference), {}, kDanglingReference}};
        return {};
    } catch (const RTI::Exception &refused) {
        return {{&ruleOf(RuleId::damagedImage), {}, reasonOf(refused)}};
    }
}

} // namespace

std::vector<Finding> findingsOfText(const Checker &text, Severity least) {
    std::vector<Finding> findings;
    text.forEachFinding([&](const Finding &error) {
        findings.push_back(error);
        return true;
    });
    if (least == Severity::warning)
        for (Finding &warning : warningsOf(text))
            findings.push_back(std::move(warning));
    return findings;
}

CheckedFile checkFile(Input input, Severity least) {
    if (input.isImage())
        return {input.name, nullptr, findingsOfImage(input, least)};
    auto text = std::make_unique<Checker>(std::move(input.contents), input.name);
    return checkText(std::move(input.name), std::move(text), least);
}

CheckedFile checkText(std::string name, std::unique_ptr<Checker> text, Severity least) {
    CheckedFile file{std::move(name), std::move(text), {}};
    file.findings = findingsOfText(*file.text, least);
    addFixes(file);
    return file;
}
