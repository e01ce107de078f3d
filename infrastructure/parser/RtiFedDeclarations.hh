#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <array>
#include <cstdint>
#include <vector>

/// What a declaration says: name, transportation, ordering, space, as far as its kind has them.
using RtiFedArguments = std::array<RtiFedSpan, 4>;

/// What a FED text declares, as spans of the text, in the order in which it stands there.
struct RtiFedDeclarations {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct Space {
        RtiFedSpan name;
        std::uint32_t numDimensions = 0; ///< Its dimensions follow those of the spaces before it.
    };

    struct Class {
        RtiFedArguments arguments;
        std::uint32_t level = 1; ///< 1 for a class that stands in no other.
        std::uint32_t firstMember = kNone;
        std::uint32_t lastMember = kNone;
        std::uint32_t numMembers = 0;
    };

    /// An attribute or parameter. The members of a class are a list, since classes may stand between them.
    struct Member {
        RtiFedArguments arguments;
        std::uint32_t next = kNone;
    };

    /// Classes of one kind, each before the classes in it.
    struct Tree {
        std::vector<Class> classes;
        std::vector<Member> members;

        void addMember(std::uint32_t classIndex, const RtiFedArguments &arguments);
    };

    RtiFedSpan federation, version; ///< Beginning at 0, where no name can stand, if there is none.
    std::vector<Space> spaces;
    std::vector<RtiFedSpan> dimensions;
    Tree objects, interactions;
};
