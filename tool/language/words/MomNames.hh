#pragma once

#include "tool/model/TreeKind.hh"

#include <string>
#include <string_view>
#include <vector>

/// A class that the RTI uses in every federation: a root, `RTIprivate`, or a class of the Management Object Model
/// (MOM).
struct MomClass {
    std::string name;                 ///< The last component of its full name.
    std::string path;                 ///< Its dotted name without the root; empty for a root.
    const char *explanation;          ///< One sentence.
    std::vector<std::string> members; ///< Its attributes or parameters.
    std::vector<MomClass> children;

    /// Returns null if there is none. Names match in any letter case.
    const MomClass *child(std::string_view childName) const;
    bool hasMember(std::string_view member) const;
};

/// The root of a tree, with all in it.
const MomClass &momRoot(const TreeKind &tree);
