#include "tool/comparison/Renames.hh"

#include "fed/storage/RtiFedNameMap.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

using Change = Comparison::Change;
using Element = Comparison::Element;

std::string upper(std::string_view name) {
    return RtiStringUtility::toupper(name);
}

void pair(Change &removed, Change &added, Change::Likelihood likelihood) {
    removed.rename = Change::Rename{added.after->name, likelihood};
    added.rename = Change::Rename{removed.before->name, likelihood};
}

/// A class or space that was removed or added.
struct Candidate {
    Change *change;
    /// Its members and everything below it: the hash of each name, relative to the class and in upper case. Equal
    /// hashes of different names would only lead to a wrong hint.
    std::vector<std::uint64_t> parts;
    std::uint64_t sum = 0; ///< Of the parts.

    explicit Candidate(Change &of) : change(&of) {
        const std::size_t ownLength = of.element().fullName().size();
        std::string_view owner;
        std::uint64_t ownerHash = 0; // equivalent: the first owner gives another
        for (const Element &content : of.contents) {
            if (owner.data() != content.owner.data() || owner.size() != content.owner.size()) { // hash long paths once
                owner = content.owner;
                ownerHash = hashOf(owner.substr(std::min(ownLength, owner.size())));
            }
            parts.push_back(spread((ownerHash * 31 + hashOf(content.name)) * 2 + (content.isClass() ? 1 : 0)));
            sum += parts.back();
        }
    }

private:
    static std::uint64_t hashOf(std::string_view name) { return std::hash<std::string>()(upper(name)); }
    /// Without this, the sum would be the same if members only changed places with others.
    static std::uint64_t spread(std::uint64_t hash) {
        hash = (hash ^ (hash >> 32)) * 0x9E3779B97F4A7C15U; // equivalent: any large odd number
        return hash ^ (hash >> 29);                         // equivalent: any bits of it
    }
};

/// The classes of one superclass, or the spaces, that were removed and added.
///
/// First, those with equal contents are paired, then those that have more than half of all their contents in common.
/// The second step counts common parts through an index of the parts of added classes. A part of very many classes
/// identifies none of them and is not counted, so that the time stays linear in the number of parts. A pair must be
/// better than any other pair of both of its classes.
class Siblings {
public:
    void add(Change &change) {
        if (!change.contents.empty())
            (change.kind == Change::Kind::removed ? _removed : _added).emplace_back(change);
    }

    void pairRenamed() {
        if (_removed.empty() || _added.empty())
            return;
        pairEqual();
        pairSimilar();
    }

private:
    static constexpr std::size_t kMaxClassesOfPart = 32;
    static constexpr std::size_t kFewestCommonParts = 2; // one name, such as Position, may be common by chance

    /// The common parts of a removed and an added class, and the sum of their numbers of parts.
    struct Similarity {
        std::size_t common = 0, all = 1;

        bool operator<(const Similarity &other) const { return common * other.all < other.common * all; }
    };

    /// The best partner of a class; none if there are several.
    struct Best {
        Candidate *partner = nullptr;
        Similarity similarity;

        void offer(Candidate &candidate, const Similarity &offered) {
            if (similarity < offered)
                *this = {&candidate, offered};
            else if (!(offered < similarity))
                partner = nullptr;
        }
    };

    void pairEqual() {
        using Key = std::pair<std::size_t, std::uint64_t>;
        std::map<Key, std::pair<std::vector<Candidate *>, std::vector<Candidate *>>> equal;
        for (Candidate &candidate : _removed)
            equal[Key(candidate.parts.size(), candidate.sum)].first.push_back(&candidate);
        for (Candidate &candidate : _added)
            equal[Key(candidate.parts.size(), candidate.sum)].second.push_back(&candidate);
        for (const auto &[key, candidates] : equal)
            if (candidates.first.size() == 1 && candidates.second.size() == 1)
                pair(*candidates.first.front()->change, *candidates.second.front()->change,
                     Change::Likelihood::probable);
    }

    void pairSimilar() {
        std::unordered_map<std::uint64_t, std::vector<Candidate *>> withPart;
        for (Candidate &candidate : _added)
            for (const std::uint64_t part : candidate.parts)
                if (!candidate.change->rename && withPart[part].size() <= kMaxClassesOfPart)
                    withPart[part].push_back(&candidate);
        std::unordered_map<const Candidate *, Best> best;
        for (Candidate &candidate : _removed)
            if (!candidate.change->rename)
                compare(candidate, withPart, best);
        for (Candidate &candidate : _removed) {
            Candidate *partner = best[&candidate].partner;
            if (partner && best[partner].partner == &candidate)
                pair(*candidate.change, *partner->change, Change::Likelihood::possible);
        }
    }

    /// Offers a removed class and each added class that is similar to each other.
    static void compare(Candidate &removed, const std::unordered_map<std::uint64_t, std::vector<Candidate *>> &withPart,
                        std::unordered_map<const Candidate *, Best> &best) {
        std::unordered_map<Candidate *, std::size_t> common;
        for (const std::uint64_t part : removed.parts) {
            const auto found = withPart.find(part);
            if (found != withPart.end() && found->second.size() <= kMaxClassesOfPart)
                for (Candidate *added : found->second)
                    ++common[added];
        }
        for (const auto &[added, count] : common) {
            const std::size_t all = removed.parts.size() + added->parts.size();
            if (count < kFewestCommonParts || 3 * count <= all) // of n different parts, count is more than n / 2
                continue;
            best[&removed].offer(*added, {count, all});
            best[added].offer(removed, {count, all});
        }
    }

    std::vector<Candidate> _removed, _added;
};

void findRenamedClasses(std::vector<Change> &changes) {
    std::map<std::pair<Element::Kind, std::string>, Siblings> groups;
    for (Change &change : changes)
        if ((change.kind == Change::Kind::removed || change.kind == Change::Kind::added) &&
            change.element().hasMembers())
            groups[{change.element().kind, upper(change.element().owner)}].add(change);
    for (auto &[key, siblings] : groups)
        siblings.pairRenamed();
}

/// Pairs members by their place: if between the same two neighbours one member was removed and one was added, with the
/// same properties, it is the same member, or one that replaces it.
class MemberPairing {
public:
    explicit MemberPairing(std::vector<Change> &changes) {
        for (Change &change : changes)
            if (!change.element().hasMembers() && change.contents.empty()) { // with contents it moved down
                if (change.kind == Change::Kind::removed)
                    _removal[change.before->name.data()] = &change;
                else if (change.kind == Change::Kind::added)
                    _addition[change.after->name.data()] = &change;
            }
    }

    bool possible() const { return !_removal.empty() && !_addition.empty(); }

    /// Compares the members of a class or space in the order of the files.
    void pairRenamed(const std::vector<Outline::Member> &before, const std::vector<Outline::Member> &after) const {
        std::map<Neighbours, Gap> removed = gapsOf(before, _removal);
        if (removed.empty())
            return;
        for (const auto &[neighbours, added] : gapsOf(after, _addition)) {
            const auto match = removed.find(neighbours);
            if (match == removed.end() || match->second.count != 1 || added.count != 1)
                continue;
            Change &then = *match->second.change, &now = *added.change;
            if (sameProperties(*then.before->properties, *now.after->properties))
                pair(then, now, Change::Likelihood::possible);
        }
    }

private:
    /// The changes by the names of their members, which the outlines hold: each name has an address of its own.
    using Index = std::unordered_map<const char *, Change *>;
    /// The names before and after a gap; empty at the ends of the list.
    using Neighbours = std::pair<std::string, std::string>;
    /// A run of members that the other model lacks.
    struct Gap {
        std::size_t count = 0;
        Change *change = nullptr;
    };

    static std::map<Neighbours, Gap> gapsOf(const std::vector<Outline::Member> &members, const Index &changes) {
        std::map<Neighbours, Gap> gaps;
        std::string_view previous;
        Gap gap;
        const auto close = [&](std::string_view next) {
            if (gap.count > 0)
                gaps[{upper(previous), upper(next)}] = gap;
            gap = {};
            previous = next;
        };
        for (const Outline::Member &member : members) {
            const auto change = changes.find(member.name.data());
            if (change == changes.end())
                close(member.name);
            else
                gap = {gap.count + 1, change->second};
        }
        close({});
        return gaps;
    }

    static bool sameProperties(const Outline::Properties &a, const Outline::Properties &b) {
        return a.transportation == b.transportation && a.ordering == b.ordering && upper(a.space) == upper(b.space);
    }

    Index _removal, _addition;
};

/// Compares the members of all classes, or of all spaces, that both models have.
template <class Owner>
void findRenamedMembers(const MemberPairing &pairing, const std::vector<Owner> &before, const std::vector<Owner> &after,
                        std::vector<Outline::Member> Owner::*members) {
    RtiFedNameMap<const Owner *> byName;
    for (const Owner &owner : after)
        byName.insert(owner.name, &owner);
    for (const Owner &owner : before)
        if (const Owner *match = byName.find(owner.name))
            pairing.pairRenamed(owner.*members, match->*members);
}

} // namespace

void findRenames(std::vector<Comparison::Change> &changes, const Outline &before, const Outline &after) {
    findRenamedClasses(changes);
    const MemberPairing pairing(changes);
    if (!pairing.possible())
        return;
    for (const TreeKind *kind : kTreeKinds)
        findRenamedMembers(pairing, before.classes(*kind), after.classes(*kind), &Outline::Class::members);
    findRenamedMembers(pairing, before.spaces, after.spaces, &Outline::Space::dimensions);
}
