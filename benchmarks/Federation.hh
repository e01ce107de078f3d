#pragma once

#include <cstddef>
#include <string>
#include <vector>

class RtiFedDatabase;

/// The declarations of a federation in file order, from which files of all formats are written.
struct Federation {
    struct Delivery {
        std::string transportation, ordering, space; // as in a FED text; the space may be empty
    };
    struct Member {
        std::string name;
        Delivery delivery; // of an attribute
    };
    struct Class {
        std::string name;  // its own, without those of its superclasses
        unsigned level;    // 1 for a root; the superclass is the last class before it with a smaller level
        Delivery delivery; // of an interaction class
        std::vector<Member> members;
    };
    struct Space {
        std::string name;
        std::vector<std::string> dimensions;
    };

    std::vector<Space> spaces;
    std::vector<Class> objects, interactions;

    std::size_t numDeclarations() const;
};

/// Calls `open`, `member` and `close` in the order of the text: `open` before the members of a class, `close` after its
/// subclasses.
template <class Open, class MemberLine, class Close>
void forEachLine(const std::vector<Federation::Class> &classes, Open open, MemberLine member, Close close) {
    std::vector<const Federation::Class *> opened;
    const auto closeTo = [&](unsigned level) {
        for (; opened.size() > level; opened.pop_back())
            close(*opened.back());
    };
    for (const Federation::Class &c : classes) {
        closeTo(c.level - 1);
        open(c);
        for (const Federation::Member &m : c.members)
            member(c, m);
        opened.push_back(&c);
    }
    closeTo(0);
}

/// A federation with the declarations of `start` and about the given number more: 15 % object classes at level 3 to 8
/// with full names of 30 to 60 bytes, 65 % attributes, 5 % interaction classes, 15 % parameters, and a few spaces.
/// Deterministic.
Federation generateFederation(const RtiFedDatabase &start, std::size_t declarations);

std::string toFed(const Federation &federation);
/// Classes are nested as in the FED text; an element has one attribute for each word after its name.
std::string toXml(const Federation &federation);
/// Classes are messages nested as in the FED text, their members fields; spaces are messages too, their dimensions
/// fields. A field is optional if its attribute is reliable, else repeated; its number is odd for timestamp; its type
/// is the space, which has to be looked up as in the other formats. The delivery of interaction classes is omitted.
std::string toProto(const Federation &federation);
