#pragma once

#include "benchmarks/Federation.hh"
#include "benchmarks/Random.hh"
#include "fed/RtiFedDatabase.hh"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

/// Changes something that may no longer load in the classes after the first `numMom`, which stay complete.
inline void spoil(std::vector<Federation::Class> &classes, std::size_t numMom, Random &random) {
    const std::size_t place = random.between(numMom, classes.size() - 1);
    Federation::Class &node = classes[place];
    const Federation::Class &other = classes[random.below(classes.size())];
    Federation::Member member{other.name, {"reliable", "receive", ""}};
    if (!other.members.empty())
        member.name = other.members.front().name;
    member.name[0] = static_cast<char>(std::tolower(member.name[0]));
    static const char *const kWords[] = {"relaible", "timestamp", "RTI_RELIABLE", "airspace", "hlamomdefaultspace", ""};
    const char *const word = kWords[random.below(std::size(kWords))];
    switch (random.below(6)) {
    case 0:
        node.name = other.name;
        break;
    case 1:
        node.level = static_cast<unsigned>(random.between(1, node.level));
        for (std::size_t next = place + 1; next < classes.size(); ++next)
            classes[next].level = std::min(classes[next].level, classes[next - 1].level + 1);
        break;
    case 2:
        node.members.push_back(member);
        break;
    case 3:
        node.delivery = {"best_effort", word[0] == '\0' ? "rti_receive_ordering" : word, ""};
        break;
    case 4:
        node.delivery.space = word;
        break;
    default:
        for (Federation::Member &each : node.members)
            each.delivery.space = word;
    }
}

/// A generated federation that has the declarations of a minimal one; about a quarter has no faults.
inline Federation spoiledFederation(const RtiFedDatabase &minimal, Random &random) {
    Federation federation = generateFederation(minimal, 100 * random.between(1, 3));
    for (std::size_t faults = random.below(4); faults > 0; --faults) {
        spoil(federation.objects, minimal.numObjectClasses(), random);
        spoil(federation.interactions, minimal.numInteractionClasses(), random);
    }
    return federation;
}
