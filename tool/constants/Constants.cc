#include "tool/constants/Constants.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

/// Identifiers that a scope may have besides those of its names. They are reserved in all languages, with and without
/// handles, so that the other identifiers are the same in all cases.
constexpr std::string_view kOfFile[] = {"federation", "spaces",    "handles", "fingerprint",
                                        "holdsFor",   "holds_for", "digits",  "digit"};
constexpr const char *kHandles = "handles";
constexpr const char *kSpaces = "spaces";
constexpr std::string_view kOfClass[] = {"className", "classHandle"}, kOfSpace[] = {"spaceName", "spaceHandle"};

template <class Words>
Identifiers identifiersWithout(const Words &words, const Keywords &keywords) {
    Identifiers identifiers(keywords);
    for (const std::string_view word : words)
        identifiers.reserve(std::string(word));
    return identifiers;
}

std::string capitalised(std::string text) {
    text[0] = RtiFedName::upper(text[0]);
    return text;
}

class ConstantsReader {
public:
    ConstantsReader(const Outline &model, const Documentation &documentation, const ConstantLanguage &language,
                    const std::vector<std::string> &path, bool handles)
        : _model(model), _documentation(documentation), _language(language), _enclosing(path), _handles(handles) {
        _enclosing.emplace_back(kHandles); // also of names, so that these have the identifiers of their handles
    }

    ConstantScope read() {
        ConstantScope scope;
        Identifiers identifiers = withReserved(kOfFile);
        if (!_model.spaces.empty())
            scope.scopes.push_back(readSpaces());
        for (const TreeKind *tree : kTreeKinds) {
            const Outline::Classes &classes = _model.classes(*tree);
            for (const std::size_t root : rootsOf(classes))
                scope.scopes.push_back(readClass(*tree, root, identifiers, {}));
        }
        return scope;
    }

private:
    template <class Words>
    Identifiers withReserved(const Words &words) const {
        return identifiersWithout(words, _language.keywords);
    }

    /// Returns an identifier that differs from those of the enclosing scopes too: Java demands that of a class.
    std::string addScope(Identifiers &identifiers, std::string_view name) const {
        std::string identifier = identifiers.add(name);
        while (std::find(_enclosing.begin(), _enclosing.end(), identifier) != _enclosing.end())
            identifier = identifiers.add(name);
        return identifier;
    }

    template <class Handle>
    Constant constant(std::string identifier, const std::string &name, Handle handle,
                      const std::string &documentation = {}) const {
        if (_handles)
            return {std::move(identifier), static_cast<unsigned long>(handle), ""};
        return {std::move(identifier), name, documentation};
    }

    /// Returns what comments say about a class or space, or about its member; of handles, nothing.
    std::string documentationOf(ClauseKind kind, std::size_t owner, std::size_t member = DeclarationRef::kNone) const {
        if (_handles)
            return {};
        const auto found = _documentation.find(
            DeclarationRef{kind, static_cast<std::uint32_t>(owner), static_cast<std::uint32_t>(member)});
        return found == _documentation.end() ? std::string() : found->second;
    }

    ConstantScope readSpaces() {
        ConstantScope all{kSpaces, "The routing spaces", ""};
        _enclosing.emplace_back(kSpaces);
        Identifiers identifiers(_language.keywords);
        for (std::size_t index = 0; index < _model.spaces.size(); ++index) {
            const Outline::Space &space = _model.spaces[index];
            ConstantScope scope{addScope(identifiers, space.name), "Routing space " + shown(space.name),
                                documentationOf(ClauseKind::space, index)};
            scope.constants.push_back(constant(_handles ? "spaceHandle" : "spaceName", space.name, space.handle));
            Identifiers ofDimensions = withReserved(kOfSpace);
            for (std::size_t i = 0; i < space.dimensions.size(); ++i) {
                const Outline::Member &dimension = space.dimensions[i];
                scope.constants.push_back(constant(ofDimensions.add(dimension.name), dimension.name, dimension.handle,
                                                   documentationOf(ClauseKind::dimension, index, i)));
            }
            all.scopes.push_back(std::move(scope));
        }
        _enclosing.pop_back();
        return all;
    }

    /// Reads a class with its subclasses. `superclasses` are those of the class, the outermost first.
    ///
    /// Inherited members get their identifiers first, so that they have the same as in the superclass.
    ConstantScope readClass(const TreeKind &tree, std::size_t index, Identifiers &around,
                            std::vector<std::size_t> superclasses) {
        const Outline::Classes &classes = _model.classes(tree);
        const Outline::Class &node = classes[index];
        const bool isObjects = &tree == &kObjectTree;
        ConstantScope scope{addScope(around, lastComponent(node.name)),
                            capitalised(tree.className) + ' ' + shown(node.name),
                            documentationOf(isObjects ? ClauseKind::objectClass : ClauseKind::interactionClass, index)};
        scope.constants.push_back(constant(_handles ? "classHandle" : "className", node.name, node.handle));
        Identifiers identifiers = withReserved(kOfClass);
        std::vector<Constant> inherited;
        for (const std::size_t superclass : superclasses)
            for (const Outline::Member &member : classes[superclass].members) {
                inherited.push_back(constant(identifiers.add(member.name), member.name, member.handle));
                if (&member == &classes[superclass].members.front())
                    inherited.back().superclass = &classes[superclass].name;
            }
        for (std::size_t i = 0; i < node.members.size(); ++i) {
            const Outline::Member &member = node.members[i];
            scope.constants.push_back(
                constant(identifiers.add(member.name), member.name, member.handle,
                         documentationOf(isObjects ? ClauseKind::attribute : ClauseKind::parameter, index, i)));
        }
        scope.constants.insert(scope.constants.end(), std::make_move_iterator(inherited.begin()),
                               std::make_move_iterator(inherited.end()));
        superclasses.push_back(index);
        _enclosing.push_back(scope.identifier);
        for (const std::size_t child : node.children)
            scope.scopes.push_back(readClass(tree, child, identifiers, superclasses));
        _enclosing.pop_back();
        return scope;
    }

    const Outline &_model;
    const Documentation &_documentation;
    const ConstantLanguage &_language;
    std::vector<std::string> _enclosing; // the identifiers of the scopes around the current one
    const bool _handles;
};

} // namespace

std::string scopeFor(const std::string &federation, const ConstantLanguage &language) {
    Identifiers identifiers = identifiersWithout(kOfFile, language.keywords);
    for (const std::string &name : language.global)
        identifiers.reserve(name);
    std::string name = identifierFor(federation, Keywords());
    if (language.isCapitalised && std::none_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
        name = capitalised(name);
    return identifiers.add(name);
}

bool areScopes(const std::vector<std::string> &path, const ConstantLanguage &language, std::string &fault) {
    const auto isScope = [&](const std::string &name) {
        const bool isOutermost = &name == &path.front(), isInnermost = &name == &path.back();
        if (language.packages == nullptr)
            return identifierFor(name, language.keywords) == name && !(isOutermost && language.global.count(name) > 0);
        if (isInnermost)
            return scopeFor(name, language) == name;
        return isIdentifier(name) && name != "_" &&
               (language.keywords.count(name) == 0 || language.packages->count(name) > 0);
    };
    const auto found = std::find_if_not(path.begin(), path.end(), isScope);
    if (found != path.end())
        fault = *found;
    return found == path.end();
}

ConstantsSize sizeOfConstants(const Outline &model) {
    constexpr std::size_t kOfEach = 40, kOfLevel = 4; // bytes of a constant besides its names, and of its indentation
    ConstantsSize size;
    for (const TreeKind *tree : kTreeKinds) {
        struct Available {
            std::size_t members = 0, bytes = 0, depth = 1; // bytes of their names
        };
        const Outline::Classes &classes = model.classes(*tree);
        std::vector<Available> available(classes.size());
        for (std::size_t i = 0; i < classes.size(); ++i) {
            Available &here = available[i];
            if (classes[i].parent != Outline::kNone) {
                here = available[classes[i].parent];
                ++here.depth;
            }
            here.members += classes[i].members.size();
            for (const Outline::Member &member : classes[i].members)
                here.bytes += member.name.size();
            size.constants += 1 + here.members;
            size.bytes +=
                (1 + here.members) * (kOfEach + kOfLevel * here.depth) + 2 * here.bytes + classes[i].name.size();
        }
    }
    return size;
}

std::size_t depthBelow(const ConstantScope &scope) {
    std::size_t depth = 0;
    for (const ConstantScope &inner : scope.scopes)
        depth = std::max(depth, 1 + depthBelow(inner));
    return depth;
}

ConstantScope constantsOf(const Outline &model, const Documentation &documentation, const ConstantLanguage &language,
                          const ConstantFile &file) {
    ConstantScope scope = ConstantsReader(model, documentation, language, file.path, false).read();
    scope.constants.push_back({"federation", model.federation, "The name of the federation."});
    if (!file.fingerprint.empty()) {
        scope.constants.push_back(
            {"fingerprint", file.fingerprint, "The SHA-256 fingerprint of the model to which the handles belong."});
        ConstantScope handles = ConstantsReader(model, documentation, language, file.path, true).read();
        handles.identifier = kHandles;
        handles.title = "The handles, in the same scopes as the names";
        scope.scopes.push_back(std::move(handles));
    }
    return scope;
}
