#pragma once

// What is true of the import of any object model, for the fuzz target and the tests.

#include "tool/check/Checker.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/comparison/Comparison.hh"
#include "tool/fom/import/FomOutline.hh"
#include "tool/fom/import/Import.hh"
#include "tool/format/Format.hh"

#include <string>
#include <vector>

/// Returns what is wrong with the import of these modules, or nothing.
inline std::string faultOfImport(const std::vector<Input> &modules) {
    const Import import(modules);
    for (const FomModules::Module &module : import.modules())
        for (const Finding &finding : module.findings)
            if (finding.span->begin + std::size_t(finding.span->length) > module.text->text().size())
                return "a finding beyond the end: " + finding.text;
    Outline expected = import.outline({});
    if (!import.succeeds())
        return "";
    const std::string text = import.text();
    const Checker checker(text);
    if (!checker.findsNoError())
        return "it does not load:\n" + text;
    if (formatted(checker.tree()) != text)
        return "it is not formatted:\n" + text;
    Outline loaded = outlineOf(checker);
    removeWhatXmlLacks(loaded, expected);
    const Comparison comparison(expected, loaded, false);
    return comparison.verdict() == Comparison::Verdict::same ? "" : "another model than that of the outline:\n" + text;
}
