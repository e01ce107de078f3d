#pragma once

#include "tool/model/TreeKind.hh"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// The vocabulary of IEEE 1516-2010 object models in XML, and how FED says the same.

/// The namespace of object models, and an older one that some files still have.
inline constexpr const char *kFomNamespace = "http://standards.ieee.org/IEEE1516-2010";
inline constexpr const char *kOlderFomNamespace = "http://www.sisostds.org/schemas/IEEE1516-2010";

/// How the two kinds of class trees are written.
struct FomTree {
    const TreeKind &kind;
    const char *section;       ///< The element that has the tree.
    const char *classElement;  ///< Of each class.
    const char *memberElement; ///< Of each member.
    const char *root;          ///< The name of the root class, which is the root of `kind` in FED.
};
inline constexpr FomTree kFomObjects = {kObjectTree, "objects", "objectClass", "attribute", "HLAobjectRoot"};
inline constexpr FomTree kFomInteractions = {kInteractionTree, "interactions", "interactionClass", "parameter",
                                             "HLAinteractionRoot"};
inline constexpr std::array<const FomTree *, 2> kFomTrees = {&kFomObjects, &kFomInteractions};

/// The attribute of the root object class that every model has.
inline constexpr const char *kPrivilegeInFed = "privilegeToDelete", *kPrivilegeInFom = "HLAprivilegeToDeleteObject";

/// Classes directly below a root of FED, in any letter case, that object models in XML do not have.
inline constexpr const char *kPrivateClass = "RTIprivate", *kMomClass = "Manager";
/// The class of the Management Object Model below either root in XML.
inline constexpr const char *kStandardMomClass = "HLAmanager";

/// A transportation or order in both languages.
struct FomWord {
    const char *fed, *fom;
};
using FomWords = std::array<FomWord, 2>;
inline constexpr FomWords kFomTransportations = {{{"reliable", "HLAreliable"}, {"best_effort", "HLAbestEffort"}}};
inline constexpr FomWords kFomOrders = {{{"receive", "Receive"}, {"timestamp", "TimeStamp"}}};

/// The beginning of the comment after an attribute or parameter in which an import keeps the data type, which follows.
inline constexpr std::string_view kDataTypeInComment = "dataType ";

/// Returns the other word for a word of FED in its short form or of XML, or null.
const char *fomWord(const FomWords &words, std::string_view fed);
const char *fedWord(const FomWords &words, std::string_view fom);

/// The label of the note that marks the dimension that an export makes of a space without dimensions. Other labels are
/// names of spaces and dimensions, which have at most one dot.
inline constexpr const char *kEmptySpaceNote = "FED.space.empty";

/// The beginning of the text of the element `other` of a model's identification in which an export keeps an unusual
/// version of the FED; the version follows. kUsualFedVersion is not written.
inline constexpr std::string_view kFedVersionInOther = "FEDversion ", kUsualFedVersion = "v1.3";

/// Returns a name of FED as a name in XML. A legal name stays as it is. In others, each illegal character becomes
/// _xHHHH_, or _xHHHHHH_ if its code point needs more than four hexadecimal digits; a byte that is not UTF-8 counts as
/// the code point DC00 and its value. An underscore that would begin such an escape is itself escaped, and an empty
/// name is _x0000_, so that different names stay different.
std::string fomName(std::string_view fed);

/// Returns the name of FED that fomName makes this of; a name that it makes of no other one is returned as it is. The
/// result may have a dot, if `fom` has one, but no quotes and no line ends.
std::string fedName(std::string_view fom);

/// Whether FED text can have this name: it has no quotes, line ends or NULs.
bool fitsFed(std::string_view name);

/// Returns SPACE.DIMENSION as a name in XML. Dots in the two names are escaped.
std::string fomDimension(std::string_view space, std::string_view dimension);

/// Returns the name in XML of the one dimension to which a space without dimensions is exported. Dots are escaped.
std::string fomEmptySpace(std::string_view space);

/// Returns the space and the dimension in FED of a name that fomDimension makes; nothing for others, such as those with
/// no dot or with two.
std::optional<std::pair<std::string, std::string>> fedDimension(std::string_view fom);

/// Returns the space in FED of a name that fomEmptySpace makes; nothing for others.
std::optional<std::string> fedEmptySpace(std::string_view fom);
