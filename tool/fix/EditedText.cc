#include "tool/fix/EditedText.hh"

#include <algorithm>
#include <iterator>

bool EditedText::add(const std::vector<Replacement> &edits) {
    if (!std::all_of(edits.begin(), edits.end(), [this](const Replacement &edit) { return isFree(edit); }))
        return false;
    for (const Replacement &edit : edits)
        _planned.emplace(edit.span.begin, edit);
    return true;
}

/// Two insertions at one place are no conflict, nor is one beside a replaced part. Planned edits do not overlap, so
/// that only the neighbours can be touched.
bool EditedText::isFree(const Replacement &edit) const {
    const std::uint32_t begin = edit.span.begin, end = begin + edit.span.length;
    const auto after = _planned.lower_bound(begin);
    if (after != _planned.end() && (after->first < end || (after->first == begin && after->second.span.length > 0)))
        return false;
    if (after == _planned.begin())
        return true;
    const RtiFedSpan before = std::prev(after)->second.span;
    return before.begin + before.length <= begin;
}

void EditedText::makeEdits() {
    std::string text;
    std::vector<Change> changes;
    std::uint32_t at = 0;
    for (const auto &[begin, edit] : _planned) {
        text.append(_text, at, begin - at);
        const auto newBegin = static_cast<std::uint32_t>(text.size());
        text += edit.text;
        at = begin + edit.span.length;
        changes.push_back({newBegin, static_cast<std::uint32_t>(text.size()), begin, at});
    }
    text.append(_text, at, std::string::npos);
    _text = std::move(text);
    _planned.clear();
    _rounds.push_back(std::move(changes));
}

std::uint32_t EditedText::originalOffset(std::uint32_t offset) const {
    for (auto round = _rounds.rbegin(); round != _rounds.rend(); ++round) {
        const auto after =
            std::upper_bound(round->begin(), round->end(), offset,
                             [](std::uint32_t at, const Change &change) { return at < change.newBegin; });
        if (after == round->begin())
            continue;
        const Change &change = *std::prev(after);
        offset = offset < change.newEnd ? change.oldBegin : change.oldEnd + (offset - change.newEnd);
    }
    return offset;
}
