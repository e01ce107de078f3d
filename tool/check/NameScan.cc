#include "tool/check/NameScan.hh"

namespace {

/// Whether a text has a byte with which a blank that is not ASCII may begin.
bool hasForeignBytes(std::string_view text) {
    bool any = false;            // equivalent: only speed
    for (const char byte : text) // without an early end, so that the compiler uses vector instructions
        any |= static_cast<signed char>(byte) < 0 || byte == '\x1A';
    return any;
}

} // namespace

NameScan::NameScan(RtiFedParser &text)
    : _parser(text), _text(text.text()), _hasForeignBytes(hasForeignBytes(_text)), _used(1) {
    text.deliver(*this);
}

void NameScan::addSpace(std::string name) {
    ++_numSpaces;
    if (_spaces.insert(name, {_used.size(), ownName().data()}))
        _used.push_back(false);
}

std::string_view NameScan::ownName() const {
    const RtiFedSpan span = _parser.span();
    const std::string_view word = _text.substr(span.begin, span.length);
    return word.front() == '"' ? word.substr(1, word.size() - 2) : word;
}

void NameScan::add(Kind kind, std::string_view name) {
    Spellings &known = _spellings[kind];
    if (4 * (known.size + 1) > 3 * known.slots.size()) // equivalent: only speed
        grow(known);
    const std::uint64_t hash = RtiFedName(name).hash();
    const auto tag = static_cast<std::uint32_t>(hash >> 32); // equivalent: any bits of it
    const std::size_t mask = known.slots.size() - 1;
    std::size_t at = tag & mask;
    // equivalent: no name begins at the first byte or the second
    for (; known.slots[at].offset > 0; at = (at + 1) & mask) {
        if (known.slots[at].hash != tag)
            continue; // equivalent: only speed
        const std::string_view earlier = _text.substr(known.slots[at].offset, name.size());
        if (earlier == name)
            return;
        // unreached: no two names with the same half of a hash are in one test
        if (RtiFedName::equal(earlier, name)) {
            known.varied.insert(hash);
            return;
        }
    }
    known.slots[at] = {tag, static_cast<std::uint32_t>(name.data() - _text.data())};
    ++known.size;
}

void NameScan::grow(Spellings &spellings) {
    std::vector<Spellings::Slot> old(spellings.slots.empty() ? 64 : 2 * spellings.slots.size());
    old.swap(spellings.slots);
    const std::size_t mask = spellings.slots.size() - 1;
    for (const Spellings::Slot &slot : old) {
        std::size_t at = slot.hash & mask;
        while (spellings.slots[at].offset > 0) // equivalent: likewise
            at = (at + 1) & mask;
        if (slot.offset > 0) // equivalent: likewise
            spellings.slots[at] = slot;
    }
}

void NameScan::use(std::string_view space) {
    if (space.empty())
        return;
    const Space known = _spaces.find(space);
    _used[known.number] = true;
    _spaceSpellingsVary |= known.number == 0 || space.compare(0, space.npos, known.declared, space.size()) != 0;
}
