#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Line.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"

#include <unordered_map>
#include <unordered_set>

namespace {

constexpr std::size_t kFew = 5; // classes of a list are shown by default

/// A class, attribute, parameter, space or dimension of a model.
struct Declaration {
    const char *kind;
    std::string path; // its name, after that of its class or space and a dot
    std::size_t ownNameSize;
    std::string handle;
    std::optional<RtiFedPosition> place;
    const TreeKind *tree;          // null for a space or dimension
    const Outline::Class *node;    // the class, or that of the member; null for a space or dimension
    const Outline::Member *member; // or dimension; null for a class or space
    const Outline::Space *space;   // null for anything else

    std::string_view ownName() const { return std::string_view(path).substr(path.size() - ownNameSize); }
    bool isMember() const { return member && tree; }
    bool isClass() const { return !member && tree; }
};

/// Calls `visit` with each declaration of the model.
template <class Visit>
void forEachDeclaration(const Outline &outline, Visit visit) {
    const auto visitMember = [&](const char *kind, const std::string &owner, const Outline::Member &member,
                                 const TreeKind *tree, const Outline::Class *node) {
        visit(Declaration{kind, owner + '.' + member.name, member.name.size(), std::to_string(member.handle),
                          member.place, tree, node, &member, nullptr});
    };
    for (const Outline::Space &space : outline.spaces) {
        visit(Declaration{"space", space.name, space.name.size(), std::to_string(space.handle), space.place, nullptr,
                          nullptr, nullptr, &space});
        for (const Outline::Member &dimension : space.dimensions)
            visitMember("dimension", space.name, dimension, nullptr, nullptr);
    }
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : outline.classes(*tree)) {
            visit(Declaration{tree->className, node.name, lastComponent(node.name).size(), std::to_string(node.handle),
                              node.place, tree, &node, nullptr, nullptr});
            for (const Outline::Member &member : node.members)
                visitMember(tree->memberName, node.name, member, tree, &node);
        }
}

/// Finds the declarations of a name; if there are none, the inherited member that the name may mean.
class Finder {
public:
    Finder(const Outline &outline, const NamePattern &name) : _outline(outline), _name(name) {
        collect([&](const Declaration &declaration) {
            const std::string_view end = endLike(declaration.path, name.text());
            return end.size() >= declaration.ownNameSize && name.matches(end);
        });
        if (hits.empty())
            collectInherited();
    }

    std::vector<Declaration> hits;

    /// A similar name, for a name without declarations.
    std::string suggestion() const {
        std::vector<std::string> near;
        forEachDeclaration(_outline, [&](const Declaration &declaration) {
            near.emplace_back(endLike(declaration.path, _name.text()));
        });
        return suggestionFor(_name.text(), near);
    }

private:
    template <class IsWanted>
    void collect(IsWanted isWanted) {
        forEachDeclaration(_outline, [&](const Declaration &declaration) {
            if (isWanted(declaration))
                hits.push_back(declaration);
        });
    }

    /// Reads the name as CLASS.MEMBER, with a member that the class inherits.
    ///
    /// The idea: collect the classes that declare a member of this name, then walk up from each class that CLASS may
    /// mean to the first of them, or to the root. Names of classes are compared only once a class, whatever the number
    /// of members.
    void collectInherited() {
        const std::size_t dot = _name.text().rfind('.');
        if (dot == std::string::npos)
            return; // equivalent: only speed, since a class of the name would have been found
        const NamePattern className(_name.text().substr(0, dot), _name.isGlob());
        const NamePattern memberName(_name.text().substr(dot + 1), _name.isGlob());
        const auto hasMemberName = [&](const Declaration &declaration) {
            return declaration.isMember() && memberName.matches(declaration.ownName());
        };
        std::unordered_set<const Outline::Class *> declaring, inherited;
        forEachDeclaration(_outline, [&](const Declaration &declaration) {
            if (hasMemberName(declaration))
                declaring.insert(declaration.node);
        });
        for (const TreeKind *tree : kTreeKinds) {
            const Outline::Classes &classes = _outline.classes(*tree);
            for (const Outline::Class &node : classes) {
                const Outline::Class *ancestor = &node;
                if (className.matchesEnd(node.name))
                    while (ancestor->parent != Outline::kNone && declaring.count(ancestor) == 0)
                        ancestor = &classes[ancestor->parent];
                if (ancestor != &node)
                    inherited.insert(ancestor);
            }
        }
        collect([&](const Declaration &declaration) {
            return hasMemberName(declaration) && inherited.count(declaration.node) > 0;
        });
    }

    const Outline &_outline;
    const NamePattern &_name;
};

/// The attributes and interaction classes in each space, counted once for all spaces.
class SpaceUses {
public:
    explicit SpaceUses(const Outline &outline) {
        for (const Outline::Class &node : outline.objects)
            for (const Outline::Member &attribute : node.members)
                ++_attributes[keyOf(attribute.properties.space)];
        for (const Outline::Class &node : outline.interactions)
            ++_interactions[keyOf(node.properties.space)];
    }

    std::string of(const std::string &space) {
        return "used by " + counted(_attributes[keyOf(space)], "attribute") + " and " +
               counted(_interactions[keyOf(space)], "interaction class");
    }

    static std::string keyOf(const std::string &space) { return RtiStringUtility::toupper(space); }

private:
    std::unordered_map<std::string, std::size_t> _attributes, _interactions;
};

class HitPrinter {
public:
    HitPrinter(const FindOptions &options, const std::string &fileName, const Outline &outline, const Console &console)
        : _options(options), _fileName(fileName), _outline(outline), _console(console) {}

    void print(const Declaration &hit) {
        Line line;
        line.add(textOf(_fileName, hit.place) + ": ").add(hit.kind).add(" ").add(shown(hit.path), Line::strong);
        if (_outline.loads)
            line.add(", handle " + hit.handle);
        const std::string description = describe(hit);
        if (!description.empty())
            line.add(": " + description);
        print(line);
        if (hit.isMember()) {
            printLaterPlaces(hit.member->laterPlaces);
            printInheriting(_outline.classes(*hit.tree), *hit.node);
        }
    }

private:
    std::string describe(const Declaration &hit) {
        if (hit.space)
            return describeSpace(*hit.space);
        if (hit.isClass())
            return describeClass(*hit.node, *hit.tree);
        return hit.isMember() ? describe(hit.member->properties) : std::string();
    }

    static std::string describe(const Outline::Properties &properties) {
        std::string words;
        for (const std::string *word : {&properties.transportation, &properties.ordering, &properties.space})
            if (!word->empty())
                words += (words.empty() ? "" : word == &properties.space ? ", space " : " ") + shown(*word);
        return words;
    }

    std::string describeClass(const Outline::Class &node, const TreeKind &tree) const {
        const Outline::Classes &classes = _outline.classes(tree);
        std::size_t inherited = 0;
        for (std::size_t ancestor = node.parent; ancestor != Outline::kNone; ancestor = classes[ancestor].parent)
            inherited += classes[ancestor].members.size();
        std::string words = describe(node.properties);
        words += words.empty() ? "" : ", ";
        words += counted(node.members.size(), tree.memberName);
        if (inherited > 0)
            words += ", " + std::to_string(inherited) + " inherited";
        if (node.numDescendants > 0)
            words += ", " + counted(node.numDescendants, "class") + " below";
        return words;
    }

    std::string describeSpace(const Outline::Space &space) {
        const std::string dimensions = counted(space.dimensions.size(), "dimension") + ", ";
        if (!_spacesSeen.insert(SpaceUses::keyOf(space.name)).second)
            return dimensions + "found by its handle only, because an earlier space has its name";
        if (!_spaceUses)
            _spaceUses.emplace(_outline);
        return dimensions + _spaceUses->of(space.name);
    }

    void printLaterPlaces(const std::vector<RtiFedPosition> &places) const {
        for (const RtiFedPosition &place : places)
            print(Line().add("    declared again, which the library refuses, at " + textOf(place)));
    }

    void printInheriting(const Outline::Classes &classes, const Outline::Class &declaring) const {
        const std::size_t number = declaring.numDescendants;
        if (number == 0)
            return;
        print(Line().add("    inherited by " + counted(number, "class") + ":"));
        const std::size_t most = _options.all || number <= kFew + 1 ? number : kFew;
        std::vector<std::size_t> waiting(declaring.children.rbegin(), declaring.children.rend());
        for (std::size_t printed = 0; printed < most; ++printed) { // there are as many descendants
            const Outline::Class &node = classes[waiting.back()];
            waiting.pop_back();
            waiting.insert(waiting.end(), node.children.rbegin(), node.children.rend());
            print(Line().add("        " + shown(node.name)));
        }
        if (number > most)
            print(Line().add("        ... and " + std::to_string(number - most) + " more (--all)"));
    }

    /// Lines are not cut to the width of the terminal: their ends hold results.
    void print(const Line &line) const {
        Console unlimited = _console;
        unlimited.width = 0;
        line.print(unlimited);
    }

    const FindOptions &_options;
    const std::string &_fileName;
    const Outline &_outline;
    const Console &_console;
    std::unordered_set<std::string> _spacesSeen;
    std::optional<SpaceUses> _spaceUses;
};

/// Looks for a name in one file after another.
class Search {
public:
    Search(const FindOptions &options, const Console &console)
        : _options(options), _console(console), _name(options.name, options.glob) {}

    /// Returns false for a file that cannot be searched at all.
    bool look(const Input &input) {
        TextStream complaint;
        const auto outline = outlineToShow(input, complaint);
        if (!outline) {
            tell(complaint.str());
            return false;
        }
        ++_numFiles;
        _fileName = input.name;
        const Finder finder(*outline, _name);
        if (finder.hits.empty()) {
            miss(finder, *outline, complaint.str());
            return true;
        }
        _isFound = true;
        tell(complaint.str());
        HitPrinter printer(_options, input.name, *outline, _console);
        if (!_options.quiet)
            for (const Declaration &hit : finder.hits)
                printer.print(hit);
        return true;
    }

    /// Returns the status of the search, and says if nothing was found.
    Status finish() const {
        if (_isFound)
            return done;
        if (_numFiles > 0)
            tell(_doubts + nothingFound());
        return _isUnsure ? cannotWork : wrong;
    }

private:
    void miss(const Finder &finder, const Outline &outline, const std::string &complaint) {
        if (_suggestion.empty() && !_options.glob && !_options.quiet)
            _suggestion = finder.suggestion();
        if (outline.hasAllNames)
            return;
        _isUnsure = true;
        _doubts += complaint;
    }

    void tell(const std::string &text) const {
        if (!_options.quiet)
            _console.err << text;
    }

    std::string nothingFound() const {
        std::string text = (_numFiles == 1 ? _fileName : "rtifed") + ": nothing is called " +
                           inQuotes(_options.name, std::string::npos);
        if (_isUnsure)
            text += " in what can be understood";
        if (_numFiles > 1)
            text += (_isUnsure ? " of " : " in ") + counted(_numFiles, "file");
        text += didYouMean(_suggestion);
        if (!_options.glob && _options.name.find_first_of("*?") != std::string::npos)
            text += "; with --glob, * and ? stand for other characters";
        return text + '\n';
    }

    const FindOptions &_options;
    const Console &_console;
    const NamePattern _name;
    std::size_t _numFiles = 0;
    std::string _fileName;   // of the last file
    std::string _suggestion; // the first of all files
    bool _isFound = false;
    bool _isUnsure = false; // whether a file may declare the name where it was not understood
    std::string _doubts;    // what was not understood; of no interest if the name is found elsewhere
};

} // namespace

Status find(const FindOptions &options, const Console &console) {
    Search search(options, console);
    const auto look = [&search](const Input &input) { return search.look(input); };
    const Status read =
        forEachFile(withoutFolders(options.files), console, look, [](const std::string &, const std::string &) {});
    return std::max(search.finish(), read == done ? done : cannotWork);
}
