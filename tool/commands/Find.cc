#include "fed/storage/RtiFedName.hh"
#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Line.hh"
#include "tool/model/Names.hh"
#include "tool/model/Outline.hh"

#include <unordered_set>

namespace {

constexpr std::size_t kFew = 5; // of a list are shown unless all are wanted

std::string count(std::size_t number, const char *one, const char *many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

/// Something that a model declares.
struct Declaration {
    const char *kind;
    std::string path;        // its name behind that of its class or space
    std::size_t ownNameSize; // how much of that is its own name
    std::string handle;
    std::optional<RtiFedPosition> place;
    const Outline::Classes *classes = nullptr; // for a class or its member, the tree
    std::size_t classIndex = 0;
    const Outline::Member *member = nullptr;
    const Outline::Space *space = nullptr;

    std::string_view ownName() const { return std::string_view(path).substr(path.size() - ownNameSize); }
    bool isMember() const { return member && classes; }
    bool isClass() const { return !member && classes; }
};

/// Calls `visit` with each declaration of the model.
template <class Visit>
void forEachDeclaration(const Outline &outline, Visit visit) {
    const auto visitMember = [&](const char *kind, const std::string &owner, const Outline::Member &member,
                                 const Outline::Classes *classes, std::size_t index) {
        visit(Declaration{kind, owner + '.' + member.name, member.name.size(), std::to_string(member.handle),
                          member.place, classes, index, &member, nullptr});
    };
    for (const Outline::Space &space : outline.spaces) {
        visit(Declaration{"space", space.name, space.name.size(), std::to_string(space.handle), space.place, nullptr, 0,
                          nullptr, &space});
        for (const Outline::Member &dimension : space.dimensions)
            visitMember("dimension", space.name, dimension, nullptr, 0);
    }
    const auto visitClasses = [&](const char *kind, const char *memberKind, const Outline::Classes &classes) {
        for (std::size_t i = 0; i < classes.size(); ++i) {
            const Outline::Class &node = classes[i];
            visit(Declaration{kind, node.name, lastComponent(node.name).size(), std::to_string(node.handle), node.place,
                              &classes, i, nullptr, nullptr});
            for (const Outline::Member &member : node.members)
                visitMember(memberKind, node.name, member, &classes, i);
        }
    };
    visitClasses("object class", "attribute", outline.objects);
    visitClasses("interaction class", "parameter", outline.interactions);
}

/// The declarations of a name: those that are called so, or else the members that a class of that name inherits.
class Finder {
public:
    Finder(const Outline &outline, const std::string &name) : _outline(outline), _name(name) {
        collect([&](const Declaration &declaration) {
            return name.size() >= declaration.ownNameSize && endsIn(declaration.path, name);
        });
        if (hits.empty())
            collectInherited();
    }

    std::vector<Declaration> hits;

    /// What may have been meant if there are none.
    std::string suggestion() const {
        std::vector<std::string> near;
        forEachDeclaration(
            _outline, [&](const Declaration &declaration) { near.emplace_back(endLike(declaration.path, _name)); });
        return suggestionFor(_name, near);
    }

private:
    template <class IsWanted>
    void collect(IsWanted isWanted) {
        forEachDeclaration(_outline, [&](const Declaration &declaration) {
            if (isWanted(declaration))
                hits.push_back(declaration);
        });
    }

    /// Takes the name as that of a class and a member that it inherits.
    void collectInherited() {
        const std::size_t dot = _name.rfind('.');
        if (dot == std::string::npos)
            return;
        const std::string_view name(_name), className = name.substr(0, dot), memberName = name.substr(dot + 1);
        const auto isSo = [&](const Declaration &declaration) {
            return declaration.isMember() && RtiFedName::equal(declaration.ownName(), memberName);
        };
        std::unordered_set<const Outline::Class *> declaring, wanted;
        forEachDeclaration(_outline, [&](const Declaration &declaration) {
            if (isSo(declaration))
                declaring.insert(&declaration.classes->at(declaration.classIndex));
        });
        for (const Outline::Classes *classes : {&_outline.objects, &_outline.interactions})
            for (const Outline::Class &node : *classes) {
                const Outline::Class *above = &node;
                if (endsIn(node.name, className))
                    while (above->parent != Outline::kNone && declaring.count(above) == 0)
                        above = &classes->at(above->parent);
                if (above != &node && declaring.count(above) > 0)
                    wanted.insert(above);
            }
        collect([&](const Declaration &declaration) {
            return isSo(declaration) && wanted.count(&declaration.classes->at(declaration.classIndex)) > 0;
        });
    }

    const Outline &_outline;
    const std::string &_name;
};

/// How many attributes and interaction classes are in a space.
std::string usesOf(const std::string &space, const Outline &outline) {
    std::size_t attributes = 0, interactions = 0;
    const auto isIn = [&](const Outline::Properties &properties) { return RtiFedName::equal(properties.space, space); };
    for (const Outline::Class &node : outline.objects)
        for (const Outline::Member &attribute : node.members)
            attributes += isIn(attribute.properties) ? 1 : 0;
    for (const Outline::Class &node : outline.interactions)
        interactions += isIn(node.properties) ? 1 : 0;
    return "used by " + count(attributes, "attribute", "attributes") + " and " +
           count(interactions, "interaction class", "interaction classes");
}

class HitPrinter {
public:
    HitPrinter(const FindOptions &options, const std::string &fileName, const Outline &outline, const Console &console)
        : _options(options), _fileName(fileName), _outline(outline), _console(console) {}

    void print(const Declaration &hit) {
        std::string place = _fileName + ": ";
        if (hit.place)
            place = _fileName + ':' + std::to_string(hit.place->line) + ':' + std::to_string(hit.place->column) + ": ";
        Line line;
        line.add(place).add(hit.kind).add(" ").add(shown(hit.path), Line::strong);
        if (_outline.loads)
            line.add(", handle " + hit.handle);
        const std::string description = describe(hit);
        if (!description.empty())
            line.add(": " + description);
        print(line);
        if (hit.isMember()) {
            printLaterPlaces(hit.member->laterPlaces);
            printInheriting(*hit.classes, hit.classIndex);
        }
    }

private:
    std::string describe(const Declaration &hit) {
        if (hit.space)
            return describeSpace(*hit.space);
        if (hit.isClass())
            return describeClass(hit);
        return hit.isMember() ? describe(hit.member->properties) : std::string();
    }

    static std::string describe(const Outline::Properties &properties) {
        std::string words;
        for (const std::string *word : {&properties.transportation, &properties.ordering, &properties.space})
            if (!word->empty())
                words += (words.empty() ? "" : word == &properties.space ? ", space " : " ") + shown(*word);
        return words;
    }

    static std::string describeClass(const Declaration &hit) {
        const Outline::Class &node = hit.classes->at(hit.classIndex);
        std::size_t inherited = 0;
        for (std::size_t above = node.parent; above != Outline::kNone; above = hit.classes->at(above).parent)
            inherited += hit.classes->at(above).members.size();
        std::string words = describe(node.properties);
        words += words.empty() ? "" : ", ";
        words += std::string_view(hit.kind) == "object class" ? count(node.members.size(), "attribute", "attributes")
                                                              : count(node.members.size(), "parameter", "parameters");
        if (inherited > 0)
            words += ", " + std::to_string(inherited) + " inherited";
        if (node.numBelow > 0)
            words += ", " + count(node.numBelow, "class", "classes") + " below";
        return words;
    }

    std::string describeSpace(const Outline::Space &space) {
        const std::string dimensions = count(space.dimensions.size(), "dimension", "dimensions") + ", ";
        if (_spaceSeen) // all hits have one name
            return dimensions + "found by its handle only, since its name is taken";
        _spaceSeen = true;
        return dimensions + usesOf(space.name, _outline);
    }

    void printLaterPlaces(const std::vector<RtiFedPosition> &places) const {
        for (const RtiFedPosition &place : places) {
            Line line;
            line.add("    declared again, which the library refuses, at " + std::to_string(place.line) + ':' +
                     std::to_string(place.column));
            print(line);
        }
    }

    void printInheriting(const Outline::Classes &classes, std::size_t declaring) const {
        const std::size_t number = classes[declaring].numBelow;
        if (number == 0)
            return;
        print(Line().add("    inherited by " + count(number, "class", "classes") + ":"));
        const std::size_t most = _options.all || number == kFew + 1 ? number : kFew;
        std::size_t printed = 0;
        std::vector<std::size_t> waiting{declaring};
        while (!waiting.empty() && printed <= most) {
            const std::size_t index = waiting.back();
            waiting.pop_back();
            waiting.insert(waiting.end(), classes[index].children.rbegin(), classes[index].children.rend());
            if (index != declaring && printed++ < most)
                print(Line().add("        " + shown(classes[index].name)));
        }
        if (number > most)
            print(Line().add("        ... and " + std::to_string(number - most) + " more (--all)"));
    }

    /// Lines are not cut: what stands at their end is the result.
    void print(const Line &line) const {
        Console unlimited = _console;
        unlimited.width = 0;
        line.print(unlimited);
    }

    const FindOptions &_options;
    const std::string &_fileName;
    const Outline &_outline;
    const Console &_console;
    bool _spaceSeen = false;
};

} // namespace

Status find(const FindOptions &options, const Console &console) {
    const Input input = readInput(options.fileName, console.stdinName);
    std::ostream nowhere(nullptr);
    const auto outline = outlineToShow(input, options.quiet ? nowhere : console.err);
    if (!outline)
        return wrong;
    const Finder finder(*outline, options.name);
    const Status status = !finder.hits.empty() && outline->loads ? done : wrong;
    if (options.quiet)
        return status;
    if (finder.hits.empty())
        console.err << input.name << ": nothing is called \"" << shown(options.name) << '"'
                    << didYouMean(finder.suggestion()) << '\n';
    HitPrinter printer(options, input.name, *outline, console);
    for (const Declaration &hit : finder.hits)
        printer.print(hit);
    return status;
}
