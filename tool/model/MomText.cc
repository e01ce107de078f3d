#include "tool/model/MomText.hh"

#include "tool/console/Text.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <vector>

namespace {

using Requirement = RtiFedDatabaseMomVerifier::Requirement;

constexpr const char *kDelivery = " reliable receive";

void append(std::string &text, std::size_t depth, const std::string &clause) {
    text += (text.empty() ? "" : "\n") + std::string(2 * depth, ' ') + clause;
}

/// Returns a clause for a place one level further in.
std::string indented(const std::string &clause) {
    std::string text;
    for (const char c : clause)
        text += c == '\n' ? "\n  " : std::string(1, c);
    return text;
}

} // namespace

const std::vector<Requirement> &momRequirements(const TreeKind &tree) {
    const auto nothing = [] { return RtiFedDatabase(RtiFedDatabaseConstructorArg("", RTI_false)); };
    static const std::vector<Requirement> objects = Objects::missing(nothing());
    static const std::vector<Requirement> interactions = Interactions::missing(nothing());
    return &tree == &kObjectTree ? objects : interactions;
}

std::string rootClass(const TreeKind &tree) {
    const std::string delivery = tree.membersHaveProperties ? "" : " reliable timestamp";
    std::string text = std::string("(class ") + tree.root + delivery;
    if (tree.membersHaveProperties)
        append(text, 1, "(attribute privilegeToDelete reliable timestamp)");
    append(text, 1, "(class RTIprivate" + delivery + ')');
    append(text, 1, indented(momClass(tree, "Manager")));
    append(text, 0, ")");
    return text;
}

std::string momMemberName(const std::string &name) {
    return name == "Federatestate" ? "FederateState" : name; // the letter case is free
}

std::string momMember(const TreeKind &tree, const std::string &name, std::size_t width) {
    std::string usual = momMemberName(name);
    if (tree.membersHaveProperties)
        usual.resize(std::max(width, usual.size()), ' ');
    return tree.membersHaveProperties ? "(attribute " + usual + kDelivery + ')' : "(parameter " + usual + ')';
}

/// The requirements are in the order of a depth-first walk, so that a class ends where the next one is not in it.
std::string momClass(const TreeKind &tree, const std::string &className) {
    const auto depthOf = [](const std::string &name) {
        return static_cast<std::size_t>(std::count(name.begin(), name.end(), '.'));
    };
    const std::size_t outermost = depthOf(className);
    std::string text;
    std::size_t open = 0; // the number of classes whose ")" is to come
    const auto closeTo = [&](std::size_t depth) {
        for (; open > depth; --open)
            append(text, open - 1, ")");
    };
    const std::vector<Requirement> &all = momRequirements(tree);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::string &name = all[i].className;
        if (name != className && !beginsWith(name, className + '.'))
            continue;
        const std::size_t depth = depthOf(name) - outermost;
        closeTo(depth);
        const std::string head =
            "(class " + std::string(lastComponent(name)) + (tree.membersHaveProperties ? "" : kDelivery);
        const bool hasClasses = i + 1 < all.size() && depthOf(all[i + 1].className) > depthOf(name);
        if (all[i].members.empty() && !hasClasses) {
            append(text, depth, head + ')');
            continue;
        }
        append(text, depth, head);
        open = depth + 1;
        std::size_t width = 0;
        for (const std::string &member : all[i].members)
            width = std::max(width, member.size());
        for (const std::string &member : all[i].members)
            append(text, open, momMember(tree, member, width));
    }
    closeTo(0);
    return text;
}
