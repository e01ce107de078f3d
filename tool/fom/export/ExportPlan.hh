#pragma once

#include "tool/fom/FomNames.hh"
#include "tool/model/Outline.hh"

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// Something that an export cannot say as the file does, for the person who exports it.
struct ExportNote {
    std::optional<RtiFedPosition> place;
    std::string text;
};

/// Gives different names to the elements of one list, also if only letter case tells them apart.
class DistinctNames {
public:
    /// Returns the name, or if it is taken the first of NAME_2, NAME_3 and so on that is not.
    std::string distinct(const std::string &name);

private:
    // By name in upper case: the number that was appended to it last; 1 for none. Very many equal names take no long
    // search each.
    std::unordered_map<std::string, std::size_t> _numbers;
};

/// Which part of a model is exported, and under which names.
///
/// The Management Object Model and RTIprivate are left out: those of IEEE 1516 are others, and each federation has
/// them. FED may have outermost classes next to the root; the export has one outermost class in each tree, so that the
/// others become subclasses of the root.
class ExportPlan {
public:
    struct Tree {
        std::size_t root = Outline::kNone; ///< The index of the root class; kNone if the file has none.
        std::vector<std::size_t> top;      ///< The direct subclasses of the root in the export.
        std::vector<bool> isLeftOut;       ///< By class.
    };
    struct Space {
        bool isLeftOut = false;
        std::string name;                    ///< In XML.
        std::vector<std::string> dimensions; ///< In XML; that of an empty space is the space's name.
    };

    /// `notes` gets what is left out that has no counterpart, and what is renamed.
    ExportPlan(const Outline &outline, std::vector<ExportNote> &notes);

    const Tree &tree(const FomTree &tree) const { return &tree == &kFomObjects ? _objects : _interactions; }
    /// By index in the outline.
    const std::vector<Space> &spaces() const { return _spaces; }
    bool hasNoSpaces() const { return _spaceNames.empty(); }
    /// The space of a name in FED, or null.
    const Space *spaceNamed(const std::string &name) const;

private:
    bool isUsed(const Outline &outline, const std::string &space) const;
    void planSpaces(const Outline &outline);
    void noteName(const std::string &noun, const std::string &name, const std::string &escaped,
                  const std::string &exported, const std::optional<RtiFedPosition> &place);
    void planTree(const FomTree &tree, const Outline::Classes &classes, Tree &plan);
    void leaveOut(const FomTree &tree, const Outline::Classes &classes, std::size_t index, Tree &plan);
    void noteRedeclared(const FomTree &tree, const Outline::Classes &classes, const Tree &plan);

    std::vector<ExportNote> &_notes;
    Tree _objects, _interactions;
    std::vector<Space> _spaces;
    std::unordered_map<std::string, std::size_t> _spaceNames; // of FED, in upper case; the first of each name
};
