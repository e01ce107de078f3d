#include "tool/modules/Merge.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"
#include "tool/model/TreeKind.hh"

#include <algorithm>
#include <list>
#include <map>
#include <unordered_set>

namespace {

using Index = Module::Index;
using Kind = SyntaxTree::Kind;

/// Returns the name of a child in its clause for lookups, in order for each child of a clause.
///
/// Names match in any letter case. Spaces of one name are told apart by their order, since a file may have several;
/// dimensions are only told apart by their order, which regions refer to.
class Keys {
public:
    std::string keyOf(ClauseKind kind, std::string_view name) {
        // equivalent: the letter is as distinct if it is there again
        std::string prefix(1, static_cast<char>('A' + static_cast<int>(kind)));
        if (kind == ClauseKind::dimension)
            return prefix + std::to_string(++_numDimensions);
        if (kind == ClauseKind::federate)
            return prefix + std::string(name);
        if (kind == ClauseKind::federation || kind == ClauseKind::version)
            return prefix;
        const std::string upper = prefix + RtiStringUtility::toupper(name);
        return kind == ClauseKind::space ? upper + ' ' + std::to_string(++_numSpaces[upper]) : upper;
    }

private:
    std::size_t _numDimensions = 0; // equivalent: of both clauses they are counted from the same number on
    std::map<std::string, std::size_t> _numSpaces;
};

/// Children with a lower rank come first.
int rankOf(ClauseKind kind) {
    switch (kind) {
    case ClauseKind::federation:
    case ClauseKind::secLevel:
        return 0; // equivalent: 1; each file has a federation, and a level that only one has is a conflict
    case ClauseKind::version:
    case ClauseKind::attribute:
    case ClauseKind::parameter:
        return 1;
    case ClauseKind::federate:
    case ClauseKind::objectClass:
    case ClauseKind::interactionClass:
        return 2;
    case ClauseKind::spaces:
        return 3;
    case ClauseKind::objects:
        return 4;
    default:
        return 5; // equivalent: any rank after the others
    }
}

/// Returns where new children of a rank are inserted if none that both modules have follows them: after the last child
/// of the rank, and before those of higher ranks that follow it.
ModuleNode::Children::iterator endOfRank(ModuleNode::Children &children, int rank) {
    auto at = children.end();
    while (at != children.begin() && rankOf(std::prev(at)->kind()) > rank)
        --at;
    return at;
}

/// Returns the comments among some tokens, as paragraphs: without empty lines within.
std::vector<std::string> paragraphsIn(const SyntaxTree &tree, Index begin, Index end) {
    std::vector<std::string> paragraphs;
    std::size_t numLineEnds = 2;                    // equivalent: any number but 0 and 1
    for (Index token = begin; token < end; ++token) // equivalent: the token at the end is no comment
        if (tree.kind(token) == Kind::lineEnd) {
            ++numLineEnds;
        } else if (tree.kind(token) == Kind::comment) {
            if (numLineEnds > 1)
                paragraphs.emplace_back(tree.bytes(token));
            else
                paragraphs.back() += '\n' + std::string(tree.bytes(token));
            numLineEnds = 0;
        }
    return paragraphs;
}

/// Paragraphs that a clause has, in which others are looked for.
///
/// Paragraphs that were put below each other, when files were merged before, are one. So a paragraph is also found if
/// it is some of the lines of a longer one. A hash table has the places of each line in the longer ones, and the lines
/// are compared only at the places of the line that has the fewest. This takes time in proportion to the number of
/// these places: it is slow only for paragraphs that have no line of their own, but the same few lines in other orders.
class Paragraphs {
public:
    void add(const std::vector<std::string> &paragraphs) {
        for (const std::string &paragraph : paragraphs)
            add(paragraph);
    }

    void add(const std::string &paragraph) {
        // equivalent: only speed; what is known or has one line is found before its lines are looked up
        if (!_known.insert(paragraph).second || paragraph.find('\n') == std::string::npos)
            return; // equivalent: likewise
        const std::string &whole = *_long.insert(_long.end(), '\n' + paragraph + '\n');
        for (std::size_t begin = 1; begin < whole.size(); begin = whole.find('\n', begin) + 1)
            _lines[whole.substr(begin, whole.find('\n', begin) - begin)].push_back({&whole, begin - 1});
    }

    bool has(const std::string &paragraph) const {
        if (_known.count(paragraph) > 0)
            return true;
        const std::string lines = '\n' + paragraph + '\n';
        const std::vector<Place> *rarest = nullptr;
        std::size_t begin = 1;  // of a line
        std::size_t offset = 0; // of the line end before the rarest line; equivalent: the first line sets it
        do {
            const auto found = _lines.find(lines.substr(begin, lines.find('\n', begin) - begin));
            if (found == _lines.end())
                return false;
            // equivalent: of equally rare lines, any will do
            if (rarest == nullptr || found->second.size() < rarest->size()) {
                rarest = &found->second;
                offset = begin - 1;
            }
            begin = lines.find('\n', begin) + 1;
        } while (begin < lines.size());
        return std::any_of(rarest->begin(), rarest->end(), [&lines, offset](const Place &place) {
            return place.offset >= offset && place.text->compare(place.offset - offset, lines.size(), lines) == 0;
        });
    }

private:
    struct Place {
        const std::string *text;
        std::size_t offset; // of the line end before the line
    };

    std::unordered_set<std::string> _known;
    std::list<std::string> _long; // those of several lines, between line ends
    std::unordered_map<std::string, std::vector<Place>> _lines;
};

/// The comments of a clause, without those of the clauses in it.
struct ClauseComments {
    std::vector<std::string> above, beside, atEnd;

    ClauseComments(const Module &module, Index clause) {
        const SyntaxTree &tree = module.tree();
        const auto [open, close, parent, end] = tree.clauses()[clause];
        const Module::Extent &extent = module.extent(clause);
        above = paragraphsIn(tree, extent.begin, open);
        beside = paragraphsIn(tree, open, extent.headEnd);
        const auto afterwards = paragraphsIn(tree, close, extent.end);
        beside.insert(beside.end(), afterwards.begin(), afterwards.end());
        atEnd = paragraphsIn(tree, extent.tail, close);
    }
};

std::string nounOf(ClauseKind kind) {
    return formOf(kind).noun;
}

/// Whether a module has both clauses. That both are there then is no conflict between modules.
bool areInOneModule(const ModuleNode &one, const ModuleNode &other) {
    const auto has = [](const ModuleNode &node, const Module *module) {
        return node.module == module ||
               std::find(node.otherModules.begin(), node.otherModules.end(), module) != node.otherModules.end();
    };
    return has(other, one.module) || std::any_of(one.otherModules.begin(), one.otherModules.end(),
                                                 [&](const Module *module) { return has(other, module); });
}

} // namespace

void Merge::add(const Module &module) {
    if (!_fed)
        _fed.emplace(ModuleNode{&module, 0});
    else
        joinComments(*_fed, module, 0);
    joinChildren(*_fed, module, 0, {});
}

/// Joins a clause with one of the same path.
void Merge::join(ModuleNode &node, const Module &module, Index clause, const Path &path) {
    compareNames(node, module, clause);
    compareDimensions(node, module, clause, path);
    compareProperties(node, module, clause, path);
    node.otherModules.push_back(&module);
    joinComments(node, module, clause);
    joinChildren(node, module, clause, path);
}

/// Keeps the comments that a clause has only in a later module; equal ones, such as those of the MOM, once.
void Merge::joinComments(ModuleNode &node, const Module &module, Index clause) {
    const ClauseComments added(module, clause);
    if (added.above.empty() && added.beside.empty() && added.atEnd.empty())
        return; // equivalent: only speed
    const ClauseComments own(*node.module, node.clause);
    Paragraphs known;
    for (const auto *paragraphs : {&own.above, &own.beside, &own.atEnd})
        known.add(*paragraphs);
    const auto addTo = [&known](std::vector<std::string> &comments, const auto &...lists) {
        Paragraphs further;
        further.add(comments);
        const auto addNew = [&](const std::vector<std::string> &paragraphs) {
            for (const std::string &paragraph : paragraphs)
                if (!known.has(paragraph) && !further.has(paragraph)) {
                    comments.push_back(paragraph);
                    further.add(paragraph);
                }
        };
        (addNew(lists), ...);
    };
    addTo(node.commentsAbove, added.above, added.beside);
    addTo(node.commentsAtEnd, added.atEnd);
}

/// Joins what both clauses contain, and inserts the rest.
///
/// Children are inserted when the next one that both have is found, or at the end; until then they wait, by rank,
/// except that those of a new clause stay in their order. They can be looked up only by the next module: what one
/// module has twice, and the library refuses, stays twice. Where the first MOM holds, it also decides that there is no
/// security level.
void Merge::joinChildren(ModuleNode &node, const Module &module, Index clause, const Path &path) {
    Keys keys;
    const bool isNew = node.children.empty();
    const bool isFirst = node.module == &module && node.clause == clause;
    std::map<int, ModuleNode::Children> waiting;
    std::vector<std::pair<std::string, ModuleNode::Children::iterator>> added;
    module.forEachChild(clause, [&](Index child) {
        const ClauseKind kind = module.clauses()[child].kind;
        const std::string_view name = module.clauses().name(child);
        Path inside;
        if (isClass(kind)) {
            inside.className = path.className.empty() ? std::string(name) : path.className + '.' + std::string(name);
            inside.isMom = path.isMom || isMomClass(inside.className);
        } else {
            inside = path;
        }
        if (kind == ClauseKind::space)
            inside.className = name;
        std::string key = keys.keyOf(kind, name);
        const auto known = node.childrenByKey.find(key);
        if (kind == ClauseKind::secLevel && path.isMom && _firstMom && !isFirst && known == node.childrenByKey.end())
            return;
        // equivalent: those of a new clause wait together at any number
        ModuleNode::Children &waitingHere = waiting[isNew ? 0 : rankOf(kind)];
        if (known != node.childrenByKey.end()) {
            node.children.splice(known->second, waitingHere);
            join(*known->second, module, child, inside);
        } else {
            joinChildren(waitingHere.emplace_back(ModuleNode{&module, child}), module, child, inside);
            added.emplace_back(std::move(key), std::prev(waitingHere.end()));
        }
    });
    for (auto &[rank, children] : waiting)
        node.children.splice(endOfRank(node.children, rank), children);
    node.childrenByKey.insert(added.begin(), added.end());
}

/// Notes that the federation or its version has another name.
void Merge::compareNames(const ModuleNode &node, const Module &module, Index clause) {
    const ClauseKind kind = node.kind();
    if (kind != ClauseKind::federation && kind != ClauseKind::version)
        return;
    const auto nameIn = [](const Module &in, Index at) {
        return wordOf(in.tree(), in.tree().words(at).at(1)); // the word of a version is no name of a declaration
    };
    const std::string_view here = nameIn(module, clause), taken = nameIn(*node.module, node.clause);
    if (here != taken)
        _notes.push_back({module.placeOf(clause), nounOf(kind) + ' ' + inQuotes(here) + " is not taken; " +
                                                      node.module->placeOf(node.clause) + " has " + inQuotes(taken)});
}

void Merge::compareDimensions(const ModuleNode &node, const Module &module, Index clause, const Path &path) {
    if (node.kind() != ClauseKind::dimension)
        return;
    const std::string_view here = module.clauses().name(clause);
    if (RtiStringUtility::toupper(here) != RtiStringUtility::toupper(node.name()))
        _conflicts.push_back({module.placeOf(clause), "dimension " + inQuotes(here) + " of space " +
                                                          inQuotes(path.className) + " has the place of dimension " +
                                                          inQuotes(node.name()) + " at " +
                                                          node.module->placeOf(node.clause)});
}

void Merge::compareProperties(const ModuleNode &node, const Module &module, Index clause, const Path &path) {
    const ModuleProperties known(*node.module, node.clause), here(module, clause);
    if (known == here)
        return;
    const ClauseKind kind = node.kind();
    std::string text =
        nounOf(kind) + ' ' +
        (isClass(kind)
             ? inQuotes(path.className, kTextLimit)
             : inQuotes(node.name()) + (path.className.empty() ? "" : " of " + inQuotes(path.className, kTextLimit)));
    text += " is " + here.descriptionBeside(known) + " here, and " + known.descriptionBeside(here) + " at " +
            node.module->placeOf(node.clause);
    if (path.isMom && _firstMom)
        _notes.push_back({module.placeOf(clause), text + ", which is taken"});
    else
        _conflicts.push_back({module.placeOf(clause), text});
}

void Merge::checkInheritance() {
    if (!_fed)
        return;
    for (const ModuleNode &section : _fed->children) {
        if (section.kind() != ClauseKind::objects && section.kind() != ClauseKind::interactions)
            continue; // equivalent: only speed, since the other sections have no classes
        checkOutermost(section);
        std::unordered_map<std::string, std::vector<const ModuleNode *>> inherited;
        for (const ModuleNode &root : section.children)
            checkMembers(root, std::string(root.name()), inherited);
    }
}

/// `inherited` has the declarations of each name in the superclasses, in upper case.
void Merge::checkMembers(const ModuleNode &node, const std::string &className,
                         std::unordered_map<std::string, std::vector<const ModuleNode *>> &inherited) {
    std::vector<std::string> names;
    for (const ModuleNode &child : node.children) {
        if (!isMember(child.kind()))
            continue;
        names.push_back(RtiStringUtility::toupper(child.name()));
        std::vector<const ModuleNode *> &declarations = inherited[names.back()];
        if (!declarations.empty() && !areInOneModule(*declarations.back(), child))
            _conflicts.push_back({child.module->placeOf(child.clause),
                                  nounOf(child.kind()) + ' ' + inQuotes(child.name()) + " of " +
                                      inQuotes(className, kTextLimit) +
                                      " is inherited as well: a superclass declares it at " +
                                      declarations.back()->module->placeOf(declarations.back()->clause)});
        declarations.push_back(&child);
    }
    for (const ModuleNode &child : node.children)
        if (isClass(child.kind()))
            checkMembers(child, className + '.' + std::string(child.name()), inherited);
    for (const std::string &name : names)
        inherited[name].pop_back();
}

/// A lookup may leave out the root, so an outermost class may not have the name of a class directly below the root.
void Merge::checkOutermost(const ModuleNode &section) {
    const bool isObjects = section.kind() == ClauseKind::objects;
    const ClauseKind kind = isObjects ? ClauseKind::objectClass : ClauseKind::interactionClass;
    const auto root = section.childrenByKey.find(Keys().keyOf(kind, (isObjects ? kObjectTree : kInteractionTree).root));
    if (root == section.childrenByKey.end())
        return;
    for (const ModuleNode &outermost : section.children) {
        const auto found = root->second->childrenByKey.find(Keys().keyOf(kind, outermost.name()));
        if (found == root->second->childrenByKey.end() || areInOneModule(*found->second, outermost))
            continue;
        _conflicts.push_back(
            {outermost.module->placeOf(outermost.clause),
             nounOf(kind) + ' ' + inQuotes(outermost.name()) + " has the name by which lookups find the class below " +
                 inQuotes(root->second->name()) + " at " + found->second->module->placeOf(found->second->clause)});
    }
}
