#pragma once

// What is true of the fixes of any text, for the fuzz target and the tests.

#include "fuzz/Syntax.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/comparison/Comparison.hh"
#include "tool/fix/Fixing.hh"

#include <algorithm>

/// The comments of a text, in any order, without those that allow findings, which a fix may remove.
inline std::vector<std::string> keptComments(const Checker &text) {
    std::vector<std::string> comments = Contents(text.tree()).comments;
    const auto allows = [](const std::string &comment) { return comment.find("rtifed:") != std::string::npos; };
    comments.erase(std::remove_if(comments.begin(), comments.end(), allows), comments.end());
    std::sort(comments.begin(), comments.end());
    return comments;
}

/// Returns what is wrong with the fixes of a text without NUL bytes, or nothing.
inline std::string faultOfFixes(const std::string &text, const FixSelection &selection) {
    const FixedText fixed = withFixes({"a.fed", text}, {}, selection);
    const FixedText again = withFixes({"a.fed", fixed.text.text()}, {}, selection);
    if (!again.made.empty() || again.text.text() != fixed.text.text())
        return "not the same when fixed twice: " + again.made.front().text;
    if (fixed.made.empty() != (fixed.text.text() == text))
        return "a fix that changes nothing, or a change without a fix";
    const Checker before(text), after(fixed.text.text());
    if (before.parser().numErrors() > 0)
        return "";
    if (after.parser().numErrors() > 0)
        return "it no longer parses";
    if (keptComments(after) != keptComments(before))
        return "comments changed";
    if (before.numErrors() > 0)
        return "";
    if (after.numErrors() > 0)
        return "it no longer loads";
    const Outline old = readOutline({"a.fed", text}), now = readOutline({"a.fed", fixed.text.text()});
    const Comparison::Verdict verdict = Comparison(old, now, false).verdict();
    return verdict > Comparison::Verdict::additions && !selection.unsafe ? "the model lost something" : "";
}
