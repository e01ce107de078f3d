#pragma once

#include "tool/model/Outline.hh"

#include <cstddef>
#include <string>
#include <vector>

/// What a picture of class trees shows, whatever its format. All names are visible and cut to a sensible length.
struct ClassPicture {
    struct Node {
        std::string name;     ///< Its own; of a class without a superclass in the picture, the full name.
        std::string note;     ///< Follows the name: how many classes are folded into this one. Empty if none are.
        std::string fullName; ///< The full dotted one.
        std::vector<std::string> members;
        std::size_t parent = Outline::kNone; ///< The index of the superclass, smaller than that of the class.
        bool isFoldedMom = false;            ///< Whether it is the one box of the Management Object Model (MOM).
    };

    struct Tree {
        const TreeKind *kind;
        std::vector<Node> nodes; ///< In depth-first order: each class is followed by its descendants.
        std::size_t numFolded;   ///< The number of classes without a node, which the notes of their superclasses count.

        std::size_t numEdges() const;
    };

    std::string federation, version;
    std::vector<Tree> trees; ///< Without empty ones.

    struct Options {
        std::size_t depth = 0; ///< The number of levels of classes to show, 0 for all.
        bool members = false;  ///< Whether the nodes list their own members.
    };

    /// A class to show with its descendants.
    struct Start {
        const TreeKind *kind;
        std::size_t index;
    };

    /// The picture of these classes; of both trees if `starts` is empty.
    ClassPicture(const Outline &outline, const std::vector<Start> &starts, Options options);

    /// The name and version of the federation.
    std::string title() const;
};
