#include "tool/fom/import/FomReader.hh"

#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Text.hh"
#include "tool/fom/import/FomElements.hh"
#include "tool/fom/import/FomTreeReader.hh"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

namespace {

constexpr const char *kRootElement = "objectModel";

/// Sections whose children FED cannot hold, and how a summary names them.
constexpr std::pair<const char *, const char *> kLostSections[] = {{"synchronizations", "synchronization points"},
                                                                   {"tags", "tags"},
                                                                   {"switches", "switches"},
                                                                   {"updateRates", "update rates"},
                                                                   {"time", "the representation of time"}};

std::size_t numElements(pugi::xml_node element) {
    const auto children = element.children();
    return static_cast<std::size_t>(std::count_if(children.begin(), children.end(),
                                                  [&](pugi::xml_node child) { return isOfModel(child, element); }));
}

std::string namespaceOf(pugi::xml_node root) {
    const std::string_view name = root.name();
    const std::size_t prefix = name.size() - localName(root).size();
    // equivalent: a prefix has a colon and at least one letter
    return root.attribute(prefix > 0 ? ("xmlns:" + std::string(name.substr(0, prefix - 1))).c_str() : "xmlns").value();
}

/// Whether the model is in the form of IEEE 1516-2000, which has attributes in place of elements and no namespace.
bool isOlderForm(pugi::xml_node root) {
    return root.attribute("DTDversion") || root.attribute("name") ||
           childOf(childOf(root, kFomObjects.section), kFomObjects.classElement).attribute("name");
}

/// Reads modules in two passes: the tables first, which the class trees of all modules refer to.
class ModelReader {
public:
    explicit ModelReader(FomModules &modules) : _modules(modules) {}

    FomModel read() {
        for (std::size_t module = 0; module < _modules.all().size(); ++module)
            if (const pugi::xml_node root = text(module).root(); root && isModel(module, root))
                _roots.emplace_back(module, root);
        _model.isUnderstood = _roots.size() == _modules.all().size();
        for (const auto &[module, root] : _roots)
            readTables(module, root);
        for (const FomTree *tree : kFomTrees) {
            FomTreeReader reader(_modules, _model, _tables, *tree);
            for (const auto &[module, root] : _roots)
                forEachChild(root, tree->section,
                             [&, module = module](pugi::xml_node section) { reader.read(module, section); });
            reader.finish();
        }
        return std::move(_model);
    }

private:
    using Notes = std::unordered_map<std::string, std::string>; // the texts by their labels

    const XmlText &text(std::size_t module) const { return *_modules.all()[module].text; }

    /// Whether a module can be read. A model without namespace is reported and read, so that all that is wrong with it
    /// is known at once.
    bool isModel(std::size_t module, pugi::xml_node root) {
        const std::string space = namespaceOf(root);
        const bool isNamed = localName(root) == kRootElement;
        if (isNamed && (space == kFomNamespace || space == kOlderFomNamespace))
            return true;
        const bool hasNoSpace = isNamed && space.empty() && !isOlderForm(root);
        const std::string found = !isNamed        ? "the element " + inQuotes(std::string(root.name()))
                                  : hasNoSpace    ? "no namespace"
                                  : space.empty() ? "one of IEEE 1516-2000"
                                  : space.find("1516-20") != std::string::npos
                                      ? "one of IEEE " + space.substr(space.find("1516-20"), 9)
                                      : "the namespace " + inQuotes(space);
        _modules.add(RuleId::notAnObjectModel, {module, text(module).nameOf(root)},
                     hasNoSpace ? std::string("expected the namespace \"") + kFomNamespace + "\", found none"
                                : "expected an object model of IEEE 1516-2010, found " + found);
        return hasNoSpace;
    }

    void readTables(std::size_t module, pugi::xml_node root) {
        std::vector<std::string> sections = {"modelIdentification", "serviceUtilization", "objects",   "interactions",
                                             "dimensions",          "transportations",    "dataTypes", "notes"};
        for (const auto &[section, loss] : kLostSections) {
            sections.emplace_back(section);
            if (const std::size_t lost = numElements(childOf(root, section)); lost > 0)
                _model.losses[loss] += section == std::string("time") ? 1 : lost;
        }
        checkChildren(_modules, module, root, {{}, sections});
        readIdentification(module, childOf(root, "modelIdentification"));
        const Notes notes = notesOf(text(module), childOf(root, "notes"));
        forEachChild(root, "dimensions", [&](pugi::xml_node section) { readDimensions(module, section, notes); });
        forEachChild(root, "transportations", [&](pugi::xml_node section) { readTransportations(module, section); });
        for (const pugi::xml_node kind : childOf(root, "dataTypes").children())
            if (const std::size_t lost = numElements(kind); lost > 0)
                _model.losses["data types"] += lost;
    }

    /// The first module that has a name gives it to the federation. The descriptions are joined.
    void readIdentification(std::size_t module, pugi::xml_node identification) {
        const pugi::xml_node name = childOf(identification, "name");
        if (_model.federation.empty()) {
            _model.federation = text(module).contentOf(name);
            reportEntity(_modules, _model.federation, {module, text(module).contentSpan(name)});
        }
        const std::string description = knownContent(text(module), childOf(identification, "description"));
        if (!description.empty() && _descriptions.insert(description).second)
            _model.description += (_model.description.empty() ? "" : "\n\n") + description;
        forEachChild(identification, "other", [&](pugi::xml_node child) {
            const std::string other = text(module).contentOf(child);
            if (beginsWith(other, kFedVersionInOther))
                _model.version = other.substr(kFedVersionInOther.size());
        });
    }

    void readDimensions(std::size_t module, pugi::xml_node section, const Notes &notes) {
        checkChildren(_modules, module, section, {{}, {"dimension"}});
        forEachChild(section, "dimension", [&](pugi::xml_node element) {
            const pugi::xml_node child = childOf(element, "name");
            const std::string name = text(module).contentOf(child);
            if (name.empty()) {
                const FomPlace nameless{module, text(module).nameOf(element)};
                _modules.add(RuleId::undefinedClass, nameless, "the dimension has no name");
                _modules.addLoss(nameless);
                return;
            }
            const FomPlace place{module, text(module).contentSpan(child)};
            usableName(_modules, name, place); // a bad one stays known, so that its uses are not reported as well
            FomModel::Dimension dimension{{name, place}, false, "", ""};
            for (const std::string &label : split(element.attribute("notes").value(), ' '))
                addNote(label, notes, dimension);
            compareDimension(dimension.name, element);
            if (_tables.dimensions.emplace(name, _model.dimensions.size()).second)
                _model.dimensions.push_back(std::move(dimension));
        });
    }

    /// Compares a dimension with that of another module. FED has no room for these properties, but they must agree.
    void compareDimension(const FomText &name, pugi::xml_node element) {
        for (const auto &[property, what] :
             {std::pair("dataType", "data type"), std::pair("upperBound", "upper bound")}) {
            const std::string content = knownContent(text(name.place.module), childOf(element, property));
            if (content.empty())
                continue;
            const auto [known, isNew] = _dimensionProperties[property].emplace(name.text, FomText{content, name.place});
            if (!isNew && known->second.text != content)
                _modules.add(RuleId::conflictingModules, name.place,
                             "the dimension " + inQuotes(name.text) + " has the " + what + ' ' + inQuotes(content) +
                                 " here and " + inQuotes(known->second.text) + " in another place",
                             known->second.place, "that is");
        }
    }

    /// Adds what a note says, whose label an export makes of the name of a space or dimension.
    static void addNote(const std::string &label, const Notes &notes, FomModel::Dimension &dimension) {
        const auto note = notes.find(label);
        const std::string &name = dimension.name.text;
        if (label == kEmptySpaceNote)
            dimension.isEmptySpace = true;
        else if (note != notes.end() && label == name)
            dimension.semantics = note->second;
        else if (note != notes.end() && beginsWith(name, label + '.'))
            dimension.spaceSemantics = note->second;
    }

    static Notes notesOf(const XmlText &text, pugi::xml_node section) {
        Notes notes;
        forEachChild(section, "note", [&](pugi::xml_node note) {
            notes.emplace(text.contentOf(childOf(note, "label")), knownContent(text, childOf(note, "semantics")));
        });
        return notes;
    }

    /// Other transportations than those of the standard are as good as their reliability.
    void readTransportations(std::size_t module, pugi::xml_node section) {
        forEachChild(section, "transportation", [&](pugi::xml_node element) {
            const pugi::xml_node child = childOf(element, "name");
            const std::string name = text(module).contentOf(child);
            if (name.empty() || fedWord(kFomTransportations, name))
                return;
            const std::string reliable = text(module).contentOf(childOf(element, "reliable"));
            const FomText word{kFomTransportations[reliable == "Yes" ? 0 : 1].fed,
                               {module, text(module).contentSpan(child)}};
            const auto [known, isNew] = _tables.transportations.emplace(name, word);
            if (isNew)
                ++_model.losses["transportations besides HLAreliable and HLAbestEffort"];
            else if (known->second.text != word.text)
                _modules.add(RuleId::conflictingModules, word.place,
                             "the transportation " + inQuotes(name) + " is " + word.text + " here and " +
                                 known->second.text + " in another place",
                             known->second.place, "that is");
        });
    }

    FomModules &_modules;
    FomModel _model;
    FomTables _tables;
    std::set<std::string> _descriptions;                                                  // that the model has
    std::map<std::string, std::unordered_map<std::string, FomText>> _dimensionProperties; // first, by their dimensions
    std::vector<std::pair<std::size_t, pugi::xml_node>> _roots; // of the modules that can be read
};

} // namespace

FomModel readModel(FomModules &modules) {
    FomModel model = ModelReader(modules).read();
    modules.sort();
    return model;
}
