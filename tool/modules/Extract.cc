#include "tool/modules/Extract.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/model/TreeKind.hh"
#include "tool/modules/ModuleNode.hh"

#include <tuple>

namespace {

using Index = Module::Index;

class Extraction {
public:
    Extraction(const Module &module, const ExtractedClasses &classes) : _module(module), _classes(classes) {}

    std::string run() {
        ModuleNode fed = nodeOf(_module, 0);
        for (ModuleNode &section : fed.children)
            for (const auto &[kind, wanted, root] :
                 {std::tuple(ClauseKind::objects, &_classes.objects, kObjectTree.root),
                  std::tuple(ClauseKind::interactions, &_classes.interactions, kInteractionTree.root)})
                if (section.kind() == kind) {
                    _root = RtiStringUtility::toupper(root);
                    keepClasses(section, *wanted);
                }
        for (ModuleNode &section : fed.children)
            if (section.kind() == ClauseKind::spaces)
                section.children.remove_if([this](const ModuleNode &space) {
                    const std::string name = RtiStringUtility::toupper(space.name());
                    return _otherUses.count(name) > 0 && _uses.count(name) == 0;
                });
        return textOf(fed);
    }

private:
    /// Removes the classes of a section that are not wanted.
    void keepClasses(ModuleNode &section, const std::unordered_set<std::string> &wanted) {
        section.children.remove_if([&](ModuleNode &outermost) {
            const std::string name = RtiStringUtility::toupper(outermost.name());
            const bool isKept = keep(outermost, name, wanted, false) || name == _root;
            return !noteUses(outermost, isKept);
        });
    }

    /// Removes what is not wanted below a class. Returns whether the class is kept: for itself, or as a superclass.
    bool keep(ModuleNode &node, const std::string &fullName, const std::unordered_set<std::string> &wanted,
              bool isInWanted) {
        const bool isWanted = isInWanted || wanted.count(fullName) > 0 || isNeededByAll(fullName);
        const bool keepsAll = isInWanted || (isWanted && (_classes.subclasses || isNeededByAll(fullName)));
        bool isKept = isWanted;
        node.children.remove_if([&](ModuleNode &child) {
            if (!isClass(child.kind()))
                return false;
            const bool isChildKept =
                keep(child, fullName + '.' + RtiStringUtility::toupper(child.name()), wanted, keepsAll);
            isKept = isKept || isChildKept;
            return !noteUses(child, isChildKept);
        });
        return isKept;
    }

    /// Whether every model has the class.
    bool isNeededByAll(const std::string &fullName) const {
        return isMomClass(fullName) || fullName == _root + ".RTIPRIVATE";
    }

    /// Records the spaces of a class and of its own members as used, or as used by what is left out. Returns `isKept`.
    bool noteUses(const ModuleNode &node, bool isKept) {
        const auto note = [this, isKept](Index clause) {
            const std::string_view space = ModuleProperties(_module, clause).space;
            if (!space.empty())
                (isKept ? _uses : _otherUses).insert(RtiStringUtility::toupper(space));
        };
        note(node.clause);
        _module.forEachChild(node.clause, [&](Index child) {
            if (!isClass(_module.clauses()[child].kind))
                note(child);
        });
        return isKept;
    }

    const Module &_module;
    const ExtractedClasses &_classes;
    std::string _root;                                 // of the tree, in upper case
    std::unordered_set<std::string> _uses, _otherUses; // of spaces, in upper case
};

} // namespace

std::string extracted(const Module &module, const ExtractedClasses &classes) {
    return Extraction(module, classes).run();
}
