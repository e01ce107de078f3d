#pragma once

#include "tool/model/Outline.hh"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The changes from one model to another, and their meaning for a federation. It refers to the two outlines.
///
/// Names match as in lookups: classes by their full names, members within their class, in any letter case. For a member
/// it counts where it is available, not where it is declared: a member that moved up to a superclass is still available
/// in the class that declared it, so that this is an addition for other classes. A member that moved down to subclasses
/// is removed from the class that declared it. Dimensions have a fixed order, because regions refer to their numbers;
/// all other handles are compared only if the library accepts both files. If a file was not understood completely, no
/// other file counts as compatible with it.
class Comparison {
public:
    /// The meaning of all changes together, from the mildest.
    enum class Verdict {
        identical,    ///< The files are the same bytes.
        same,         ///< The models are the same.
        relabelled,   ///< Letter case, or the name of the federation or version: lookups give the same answers.
        renumbered,   ///< Every name is still there, some with other handles.
        additions,    ///< Everything in the old model is still there, and more.
        incompatible, ///< Something in the old model was removed or changed.
    };

    struct Element {
        enum class Kind { federation, version, space, dimension, objectClass, attribute, interactionClass, parameter };

        Kind kind;
        std::string_view owner; ///< The full name of its superclass, class or space; empty if it has none.
        std::string_view name;  ///< Its own name, without that of the owner.
        long handle = 0;
        const Outline::Properties *properties = nullptr;
        std::optional<RtiFedPosition> place = {};

        std::string fullName() const;
        bool isClass() const { return kind == Kind::objectClass || kind == Kind::interactionClass; }
        bool hasMembers() const { return isClass() || kind == Kind::space; }
    };

    struct Change {
        enum class Kind {
            renamed, ///< In letter case only, except for federation and version.
            renumbered,
            added,
            movedUp, ///< To a superclass, from which the class that declared it now inherits it.
            removed,
            superclass,
            transportation,
            ordering,
            space,
            reordered, ///< A dimension, within its space.
            refused,   ///< The federation: the library accepts the old file but not the new one.
            unclear,   ///< The federation: a file was not understood completely, so there may be more changes. Only
                       ///< its element is present; its place is that of the first part that was not understood.
        };

        enum class Likelihood {
            possible, ///< Most of its contents are the same; or a member has the same neighbours and properties.
            probable, ///< All its contents are the same.
        };

        /// A hint that a removed and an added element may be one that was renamed.
        struct Rename {
            std::string_view name; ///< The name of the other element; both have the same owner.
            Likelihood likelihood;
        };

        Kind kind;
        std::optional<Element> before; ///< Absent if it was added.
        std::optional<Element> after;  ///< Absent if it was removed.
        /// For an added or removed class or space: everything in it. For a removed member: the members of its name that
        /// subclasses now declare.
        std::vector<Element> contents = {};
        std::optional<Rename> rename = {}; ///< Only of an added or removed element.

        /// The element that changed, as it is now, or as it was if it was removed. For a member that moved up or down,
        /// the element in the lower class, where it is available in both models.
        const Element &element() const;
        /// The value that changed (name, owner, property or handle) of `before` or `after`; empty for an addition or
        /// removal.
        std::string value(const Element &of) const;
    };

    static const char *nameOf(Verdict verdict);
    static const char *descriptionOf(Verdict verdict);
    static const char *nameOf(Element::Kind kind);
    static const char *nameOf(Change::Kind kind);
    static const char *nameOf(Change::Likelihood likelihood);

    /// `sameBytes` is whether the two files are equal.
    Comparison(const Outline &before, const Outline &after, bool sameBytes);

    /// Changes of the federation and version first, then of spaces, object classes and interaction classes. A class
    /// that was added or removed with its superclass is among the contents of that change.
    const std::vector<Change> &changes() const { return _changes; }
    bool handlesCompared() const { return _handlesCompared; }

    /// The meaning of one change on its own.
    static Verdict meaning(Change::Kind kind);
    /// The gravest meaning among the changes.
    Verdict verdict() const;

private:
    class ClassTreeComparison;

    void noteUnclear(const Outline &before, const Outline &after);
    void compareSpaces(const Outline &before, const Outline &after);
    void compareDimensions(const Outline::Space &before, const Outline::Space &after);
    void compareElements(const Element &before, const Element &after);
    void compareProperties(const Element &before, const Element &after);
    void change(Change::Kind kind, std::optional<Element> before, std::optional<Element> after);
    /// Adds the change of an element that was added or removed.
    void changeExistence(Change::Kind kind, const Element &element);

    bool _sameBytes;
    bool _handlesCompared;
    std::vector<Change> _changes;
};
