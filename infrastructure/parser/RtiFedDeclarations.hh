#pragma once

#include "infrastructure/parser/RtiFedGrammar.hh"
#include "infrastructure/parser/RtiFedText.hh"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The words of a declaration: name, transportation, ordering, space, as far as its kind has them.
using RtiFedArguments = std::array<RtiFedSpan, 4>;

/// A word with its quotes, if it is in quotes.
RtiFedSpan withQuotes(const RtiFedText &text, const RtiFedArguments &arguments, std::size_t index);

/// What a FED text declares, as spans of the text, in the order of the text.
struct RtiFedDeclarations {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct Space {
        RtiFedSpan name;
        std::uint32_t numDimensions = 0; ///< Its dimensions follow those of the spaces before it.
    };

    struct Class {
        RtiFedArguments arguments;
        std::uint32_t level = 1; ///< 1 for a class without a superclass.
        std::uint32_t firstMember = kNone;
        std::uint32_t lastMember = kNone;
        std::uint32_t numMembers = 0;
    };

    /// An attribute or parameter. The members of a class are a linked list, since its subclasses may be declared
    /// between them.
    struct Member {
        RtiFedArguments arguments;
        std::uint32_t next = kNone;
    };

    /// Classes of one kind, each before its subclasses.
    struct Tree {
        std::vector<Class> classes;
        std::vector<Member> members;
        std::size_t numLetters = 0; ///< Of the full names of all classes.

        void addMember(std::uint32_t classIndex, const RtiFedArguments &arguments) {
            const auto index = static_cast<std::uint32_t>(members.size());
            members.push_back({arguments, kNone});
            Class &owner = classes[classIndex];
            (owner.firstMember == kNone ? owner.firstMember : members[owner.lastMember].next) = index;
            owner.lastMember = index;
            ++owner.numMembers;
        }
    };

    /// Adds anything but a class; kinds that declare nothing are ignored. `owner` is the index of a member's class.
    void add(RtiFedClause kind, std::uint32_t owner, const RtiFedArguments &arguments) {
        if (kind == RtiFedClause::attribute)
            objects.addMember(owner, arguments);
        else if (kind == RtiFedClause::parameter)
            interactions.addMember(owner, arguments);
        else
            addOther(kind, arguments);
    }

    RtiFedSpan federation, version; ///< Absent if it begins at 0, where no name can be.
    std::vector<Space> spaces;
    std::vector<RtiFedSpan> dimensions;
    Tree objects, interactions;

private:
    void addOther(RtiFedClause kind, const RtiFedArguments &arguments);
};
