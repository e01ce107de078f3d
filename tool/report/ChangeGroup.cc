#include "tool/report/ChangeGroup.hh"

#include "tool/console/Text.hh"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace {

using Change = Comparison::Change;
using Element = Comparison::Element;

/// Changes with the same key belong to one group.
using Key = std::tuple<Change::Kind, Element::Kind, std::string, std::string>;

Key keyOf(const Change &change) {
    const Element &element = change.element();
    const auto of = [&](std::string what, std::string value = {}) {
        return Key(change.kind, element.kind, std::move(what), std::move(value));
    };
    switch (change.kind) {
    case Change::Kind::added:
    case Change::Kind::removed:
        return of(element.hasMembers() ? element.fullName() : std::string(element.owner));
    case Change::Kind::unclear:
        return of(change.before ? "old" : "new"); // equivalent: any two words
    case Change::Kind::movedUp:
        return of(change.after->fullName());
    case Change::Kind::reordered:
        return of(std::string(element.owner));
    case Change::Kind::transportation:
    case Change::Kind::ordering:
    case Change::Kind::space:
        return of(change.value(*change.before), change.value(*change.after));
    default:
        return of({});
    }
}

std::string shownName(std::string_view name) {
    return name.empty() ? "\"\"" : shown(name, kTextLimit);
}

std::string shownValues(const Change &change) {
    const auto value = [&](const Element &element) {
        const std::string text = change.value(element);
        return text.empty() ? "none" : shownName(text);
    };
    return value(*change.before) + " -> " + value(*change.after);
}

/// What was added or removed with an element, or where it moved to.
std::string shownContents(const Change &change) {
    const std::vector<Element> &contents = change.contents;
    if (contents.empty())
        return {};
    if (!change.element().hasMembers())
        return ", moved down to " +
               (contents.size() == 1 ? shownName(contents.front().owner) : counted(contents.size(), "class"));
    const auto isMember = [](const Element &content) { return !content.isClass(); };
    const auto member = std::find_if(contents.begin(), contents.end(), isMember);
    const auto numMembers = static_cast<std::size_t>(std::count_if(contents.begin(), contents.end(), isMember));
    std::string text = ", with ";
    if (numMembers > 0)
        text += counted(numMembers, Comparison::nameOf(member->kind));
    if (numMembers > 0 && numMembers < contents.size())
        text += " and ";
    if (numMembers < contents.size())
        text += counted(contents.size() - numMembers, "class") + " below";
    return text;
}

/// The hint that a removed or added element may have been renamed.
std::string shownRename(const Change &change) {
    return std::string(change.rename->likelihood == Change::Likelihood::probable ? "probably" : "perhaps") +
           (change.kind == Change::Kind::removed ? " renamed to " : " renamed from ") + shownName(change.rename->name);
}

} // namespace

std::string shownFullName(const Element &element) {
    return shownName(element.fullName());
}

std::vector<ChangeGroup> ChangeGroup::groupsOf(const Comparison &comparison) {
    std::vector<ChangeGroup> groups;
    std::map<Key, std::size_t> index;
    for (const Change &change : comparison.changes()) {
        const auto [known, isNew] = index.emplace(keyOf(change), groups.size());
        if (isNew)
            groups.emplace_back();
        groups[known->second]._changes.push_back(&change);
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const ChangeGroup &a, const ChangeGroup &b) { return a.meaning() > b.meaning(); });
    return groups;
}

char ChangeGroup::sign() const {
    switch (first().kind) {
    case Change::Kind::added:
    case Change::Kind::movedUp:
        return '+';
    case Change::Kind::removed:
        return '-';
    default:
        return '~';
    }
}

std::string ChangeGroup::headline() const {
    const Element &element = first().element();
    const std::string noun = Comparison::nameOf(element.kind);
    const bool one = size() == 1;
    const std::string what = one ? noun + ' ' + item(0) : counted(size(), noun);
    switch (first().kind) {
    case Change::Kind::added:
    case Change::Kind::removed:
        return one ? noun + ' ' + shownFullName(element) + shownContents(first()) +
                         (first().rename ? ", " + shownRename(first()) : "")
                   : what + " of " + shownName(element.owner);
    case Change::Kind::movedUp:
        return noun + ' ' + shownFullName(*first().after) + ", moved up from " +
               (one ? item(0) : counted(size(), "class"));
    case Change::Kind::renamed:
        return (element.kind <= Element::Kind::version ? "" : "letter case: ") + what;
    case Change::Kind::renumbered:
        return one ? "handle: " + what : "handles: " + what + " moved by " + offsets();
    case Change::Kind::superclass:
        return "superclass: " + what;
    case Change::Kind::refused:
        return "the new file does not load";
    case Change::Kind::unclear:
        return std::string("the ") + (first().before ? "old" : "new") +
               " file was not understood completely, there may be more changes; first problem";
    case Change::Kind::reordered:
        return "order in the space " + shownName(element.owner) + ": " + what;
    case Change::Kind::transportation:
    case Change::Kind::ordering:
    case Change::Kind::space:
        break; // equivalent: these are the last ones
    }
    return std::string(Comparison::nameOf(first().kind)) + ' ' + shownValues(first()) + ": " + what;
}

std::string ChangeGroup::item(std::size_t index) const {
    const Change &change = *_changes[index];
    const Element &element = change.element();
    switch (change.kind) {
    case Change::Kind::added:
    case Change::Kind::removed:
        return shownName(element.name) + shownContents(change) +
               (change.rename ? " (" + shownRename(change) + ')' : "");
    case Change::Kind::movedUp:
        return shownName(change.before->owner);
    case Change::Kind::renamed:
        return shownFullName(*change.before) + " -> " + shownName(element.name);
    case Change::Kind::renumbered:
    case Change::Kind::superclass:
        return shownFullName(element) + ' ' + shownValues(change);
    case Change::Kind::reordered:
        return shownName(element.name) + ' ' + shownValues(change);
    default:
        return shownFullName(element);
    }
}

/// The distance by which the handles moved: one number, or the least and the greatest.
std::string ChangeGroup::offsets() const {
    const auto offset = [](const Change *change) { return change->after->handle - change->before->handle; };
    // equivalent: none moved by 0
    const auto signedNumber = [](long number) { return (number > 0 ? "+" : "") + std::to_string(number); };
    const auto [least, greatest] = std::minmax_element(
        // equivalent: any of those that moved as far
        _changes.begin(), _changes.end(), [&](const Change *a, const Change *b) { return offset(a) < offset(b); });
    return signedNumber(offset(*least)) +
           (offset(*least) == offset(*greatest) ? "" : " to " + signedNumber(offset(*greatest)));
}
