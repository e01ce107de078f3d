// Two FED texts separated by a NUL byte: compares their models.

#include "fuzz/FedWords.hh"
#include "fuzz/Fuzz.hh"
#include "fuzz/MomClauses.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/comparison/Comparison.hh"

#include <algorithm>

namespace {

/// Returns whether each opening parenthesis seems to have its closing one.
bool seemsBalanced(const std::string &text) {
    return std::count(text.begin(), text.end(), '(') == std::count(text.begin(), text.end(), ')');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string both = textOf(data, size);
    const std::size_t middle = std::min(both.find('\0'), both.size());
    const Input first{"old.fed", withMomClauses(both.substr(0, middle))};
    const Input second{"new.fed", withMomClauses(middle < both.size() ? both.substr(middle + 1) : "")};
    // To read a text that is out of balance takes much longer, as its repair is searched for, and the target of texts
    // does so: such models are compared rarely.
    if (size % 16 != 0 && !(seemsBalanced(first.contents) && seemsBalanced(second.contents)))
        return 0;
    if (first.isImage() || second.isImage())
        return 0;
    const Outline before = readOutline(first), after = readOutline(second);
    using Verdict = Comparison::Verdict;
    const Comparison there(before, after, false), back(after, before, false), none(before, before, true);
    FUZZ_CHECK(none.changes().empty() && none.verdict() == Verdict::identical);
    FUZZ_CHECK((there.verdict() == Verdict::same) == (back.verdict() == Verdict::same) ||
               before.loads != after.loads); // a file that no longer loads is a change, one that loads again is none
    FUZZ_CHECK(there.verdict() != Verdict::additions || back.verdict() == Verdict::incompatible);
    if (before.loads && after.loads && there.verdict() < Verdict::relabelled)
        FUZZ_CHECK(before.objects.size() == after.objects.size() &&
                   before.interactions.size() == after.interactions.size());
    return 0;
}
