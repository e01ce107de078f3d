#pragma once

#include "tool/model/Outline.hh"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What changed from one model to another, and what that means for a federation. It refers to the two outlines.
///
/// Names are matched as look-ups match them: classes by their full names, members within them, in any letter case. What
/// counts for a member is where it is available, not where it is declared: one that moved up to a superclass still is,
/// in the class that had it, and others only gained it, so that this is an addition. One that moved down to subclasses
/// is gone from the class that had it. The numbers of dimensions are part of their space, since regions are made by
/// them; all other handles are compared only if the library accepts both files. Of a file that was not understood as a
/// whole nobody can say that another is compatible with it.
class Comparison {
public:
    /// What all changes together mean, the least first.
    enum class Verdict {
        identical,    ///< The files are the same bytes.
        same,         ///< The models are the same.
        relabelled,   ///< Letter case, or the name of the federation or version: look-ups find all as before.
        renumbered,   ///< All names are there as before, with other handles.
        additions,    ///< All of the old model is there as before, and more.
        incompatible, ///< Something of the old model is gone or different.
    };

    struct Element {
        enum class Kind { federation, version, space, dimension, objectClass, attribute, interactionClass, parameter };

        Kind kind;
        std::string_view owner; ///< The full name of the class or space that it stands in; empty if there is none.
        std::string_view name;  ///< Its own, behind that of the owner.
        long handle = 0;
        const Outline::Properties *properties = nullptr;
        std::optional<RtiFedPosition> place = {};

        std::string fullName() const;
        bool isClass() const { return kind == Kind::objectClass || kind == Kind::interactionClass; }
        bool hasMembers() const { return isClass() || kind == Kind::space; }
    };

    struct Change {
        enum class Kind {
            renamed, ///< In letter case only, but for federation and version.
            renumbered,
            added,
            movedUp, ///< To a class above, where the class that declared it inherits it from.
            removed,
            superclass,
            transportation,
            ordering,
            space,
            reordered, ///< A dimension, within its space.
            refused,   ///< The federation: the library accepted the file, and does not any more.
            unclear,   ///< The federation: not all of the two files was understood, so there may be more.
        };

        Kind kind;
        std::optional<Element> before; ///< Absent if it was added.
        std::optional<Element> after;  ///< Absent if it was removed.
        /// Of a class or space that was added or removed: all that went with it. Of a removed member: those that are
        /// declared in subclasses in its place.
        std::vector<Element> contents = {};

        /// What changed: the element as it is now if it still is. Of a member that moved up or down, the lower of its
        /// places, where it is available in both models.
        const Element &element() const;
        /// Of one of the two, what the change is about: its name, owner, property or handle; empty for what was added
        /// or removed.
        std::string value(const Element &of) const;
    };

    static const char *nameOf(Verdict verdict);
    static const char *nameOf(Element::Kind kind);
    static const char *nameOf(Change::Kind kind);

    /// `sameBytes` says whether the files of the two are equal.
    Comparison(const Outline &before, const Outline &after, bool sameBytes);

    /// The changes of the whole first, then those of spaces, those of object classes, then those of interaction
    /// classes. A class that was added or removed with its superclass is among the contents of that one.
    const std::vector<Change> &changes() const { return _changes; }
    bool handlesCompared() const { return _handlesCompared; }

    /// What a change means on its own.
    static Verdict meaning(Change::Kind kind);
    /// The greatest of what the changes mean.
    Verdict verdict() const;

private:
    class ClassTreeComparison;

    void compareSpaces(const Outline &before, const Outline &after);
    void compareDimensions(const Outline::Space &before, const Outline::Space &after);
    void compareElements(const Element &before, const Element &after);
    void compareProperties(const Element &before, const Element &after);
    void change(Change::Kind kind, std::optional<Element> before, std::optional<Element> after);

    bool _sameBytes;
    bool _handlesCompared;
    std::vector<Change> _changes;
};
