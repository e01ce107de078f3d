#include "tool/fom/export/FomExport.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tool/console/Console.hh"
#include "tool/console/Text.hh"
#include "tool/fom/export/FomWriter.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace {

using Class = Outline::Class;
using Member = Outline::Member;
using Properties = Outline::Properties;

constexpr const char *kSwitches[] = {"autoProvide",
                                     "conveyRegionDesignatorSets",
                                     "conveyProducingFederate",
                                     "attributeScopeAdvisory",
                                     "attributeRelevanceAdvisory",
                                     "objectClassRelevanceAdvisory",
                                     "interactionRelevanceAdvisory",
                                     "serviceReporting",
                                     "exceptionReporting",
                                     "delaySubscriptionEvaluation"};

/// What IEEE 1516 says of the attribute that every federation has in its root object class.
const FomFacts::Known kFactsOfPrivilege = {{FomFact::dataType, "HLAtoken"},
                                           {FomFact::updateType, "Static"},
                                           {FomFact::ownership, "DivestAcquire"},
                                           {FomFact::sharing, "PublishSubscribe"}};

/// The transportation and the order that both roots have in IEEE 1516, in the words of FED.
constexpr const char *kRootTransportation = "reliable", *kRootOrder = "timestamp";

constexpr std::uint32_t narrow(std::size_t index) {
    return static_cast<std::uint32_t>(index);
}

/// Whether a text has bytes that an XML document cannot have.
bool hasIllegal(std::string text) {
    constexpr std::string_view kEscaped = "&<>\"'"; // which are legal
    text.erase(std::remove_if(text.begin(), text.end(),
                              [&](char byte) { return kEscaped.find(byte) != std::string_view::npos; }),
               text.end());
    return xml(text) != text;
}

class Exporter {
public:
    Exporter(const Outline &outline, const FomFacts &facts, FomForm form, std::vector<ExportNote> &notes)
        : _outline(outline), _facts(facts), _form(form), _notes(notes), _plan(outline, notes) {}

    std::string write(const std::string &description) {
        const std::string schema =
            _form == FomForm::fdd ? "1516.1-2010/IEEE1516-FDD-2010.xsd" : "1516.2-2010/IEEE1516-DIF-2010.xsd";
        const std::string name = kFomNamespace;
        _writer.open("objectModel", "xmlns=\"" + name +
                                        "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                                        "xsi:schemaLocation=\"" +
                                        name + " http://standards.ieee.org/downloads/1516/" + schema + '"');
        writeIdentification(description);
        writeTree(kFomObjects);
        writeTree(kFomInteractions);
        writeDimensions();
        if (_form != FomForm::module)
            writeTransportations();
        if (_form == FomForm::fdd)
            writeSwitches();
        writeNotes();
        _writer.close();
        return _writer.take();
    }

private:
    bool isModule() const { return _form == FomForm::module; }

    void writeIdentification(const std::string &description) {
        _writer.open("modelIdentification");
        _writer.leafUnlessEmpty("name", _outline.federation);
        if (hasIllegal(_outline.federation))
            _notes.push_back({{},
                              "the name " + inQuotes(_outline.federation) +
                                  " of the federation has characters that XML does not have; exported as \\xNN"});
        _writer.leaf("type", "FOM");
        _writer.leafUnlessEmpty("description", description);
        if (!_outline.version.empty() && _outline.version != kUsualFedVersion)
            _writer.leaf("other", std::string(kFedVersionInOther) + _outline.version);
        _writer.close();
    }

    void writeTree(const FomTree &tree) {
        const ExportPlan::Tree &plan = _plan.tree(tree);
        static const Class kNoRoot;
        const Class &root = plan.root == Outline::kNone ? kNoRoot : _outline.classes(tree.kind)[plan.root];
        if (isModule() && plan.top.empty() && isStandardRoot(tree, root))
            return;
        _writer.open(tree.section);
        writeRoot(tree, root, plan);
        _writer.close();
    }

    /// Whether a root class has nothing but what it has in every federation.
    bool isStandardRoot(const FomTree &tree, const Class &root) const {
        return std::all_of(root.members.begin(), root.members.end(),
                           [&](const Member &member) { return isStandardPrivilege(tree, root, member); }) &&
               (tree.kind.membersHaveProperties || isOfRoot(rootProperties(root.properties)));
    }

    void writeRoot(const FomTree &tree, const Class &root, const ExportPlan::Tree &plan) {
        const FomFacts::Known &known = _facts.of({classKind(tree), narrow(plan.root)});
        _writer.open(tree.classElement);
        _writer.leaf("name", tree.root);
        writeFact(FomFact::sharing, known);
        if (const Properties properties = rootProperties(root.properties);
            !tree.kind.membersHaveProperties && !(isModule() && isOfRoot(properties)))
            writeDelivery(properties, root.place, root.name);
        writeFact(FomFact::semantics, known);
        writeContents(tree, root, plan.root, plan.top);
        _writer.close();
    }

    void writeClass(const FomTree &tree, std::size_t index, DistinctNames &siblings) {
        const Class &node = _outline.classes(tree.kind)[index];
        const FomFacts::Known &known = _facts.of({classKind(tree), narrow(index)});
        _writer.open(tree.classElement);
        writeName(nameInXml(lastComponent(node.name), node.place), tree.kind.className, node.place, siblings);
        writeFact(FomFact::sharing, known);
        if (!tree.kind.membersHaveProperties)
            writeDelivery(node.properties, node.place, node.name);
        if (looksLikeScaffold(tree, node, known))
            _writer.leaf("semantics", formOf(FomFact::semantics).unknown);
        else
            writeFact(FomFact::semantics, known);
        writeContents(tree, node, index, node.children);
        _writer.close();
    }

    /// Whether a module would give nothing of an object class but its name and subclasses. A merge of modules takes
    /// such a class for one that another module defines, unless it has semantics.
    bool looksLikeScaffold(const FomTree &tree, const Class &node, const FomFacts::Known &known) const {
        return isModule() && tree.kind.membersHaveProperties && node.members.empty() && !node.children.empty() &&
               known.empty();
    }

    /// Writes the members of a class and the subclasses that it has in the export.
    void writeContents(const FomTree &tree, const Class &node, std::size_t index,
                       const std::vector<std::size_t> &children) {
        DistinctNames members, subclasses;
        const bool moved = isMoved(tree, index);
        for (const Member &member : node.members)
            if (!(isModule() && isStandardPrivilege(tree, node, member)) && !(moved && rootHas(tree, member)))
                writeMember(
                    tree, node, member,
                    {memberKind(tree), narrow(index), narrow(static_cast<std::size_t>(&member - node.members.data()))},
                    members);
        for (const std::size_t child : children)
            writeClass(tree, child, subclasses);
    }

    /// Whether a class becomes a descendant of the root by the export.
    bool isMoved(const FomTree &tree, std::size_t index) const {
        const Outline::Classes &classes = _outline.classes(tree.kind);
        const std::size_t root = _plan.tree(tree).root;
        while (index != Outline::kNone && classes[index].parent != Outline::kNone)
            index = classes[index].parent;
        return root != Outline::kNone && index != root;
    }

    /// Whether the root has a member of this name, which a class that is moved inherits then. If so, notes that the
    /// member of the class is left out.
    bool rootHas(const FomTree &tree, const Member &member) {
        std::unordered_set<std::string> &names = _rootMembers[&tree];
        if (names.empty())
            for (const Member &other : _outline.classes(tree.kind)[_plan.tree(tree).root].members)
                names.insert(RtiFedName::upper(other.name));
        if (names.count(RtiFedName::upper(member.name)) == 0)
            return false;
        _notes.push_back({member.place, std::string(tree.kind.memberName) + ' ' + inQuotes(member.name) +
                                            " is left out, because the export has it in " + tree.root});
        return true;
    }

    void writeMember(const FomTree &tree, const Class &owner, const Member &member, const DeclarationRef &ref,
                     DistinctNames &siblings) {
        const bool isPrivilege = isRootPrivilege(tree, owner, member);
        const FomFacts::Known &given = _facts.of(ref), &standard = isPrivilege ? kFactsOfPrivilege : given;
        const auto writeFacts = [&](std::initializer_list<FomFact> facts) {
            for (const FomFact fact : facts)
                writeFact(fact, FomFacts::find(given, fact) ? given : standard);
        };
        _writer.open(tree.memberElement);
        writeName(isPrivilege ? kPrivilegeInFom : nameInXml(member.name, member.place), tree.kind.memberName,
                  member.place, siblings);
        writeFacts({FomFact::dataType});
        if (tree.kind.membersHaveProperties) {
            writeFacts({FomFact::updateType, FomFact::updateCondition, FomFact::ownership, FomFact::sharing});
            writeDelivery(member.properties, member.place, owner.name + '.' + member.name);
        }
        writeFacts({FomFact::semantics});
        _writer.close();
    }

    /// Writes a fact, or the value that says that it is not known, if there is one.
    void writeFact(FomFact fact, const FomFacts::Known &known) {
        const FomFactForm &form = formOf(fact);
        if (const std::string *text = FomFacts::find(known, fact))
            _writer.leaf(form.name, *text);
        else if (form.unknown && !isModule())
            _writer.leaf(form.name, form.unknown);
    }

    void writeDelivery(const Properties &properties, const std::optional<RtiFedPosition> &place,
                       const std::string &path) {
        if (const ExportPlan::Space *space = _plan.spaceNamed(properties.space)) {
            _writer.open("dimensions");
            for (const std::string &dimension : space->dimensions)
                _writer.leaf("dimension", dimension);
            _writer.close();
            // Many attributes in a space of many dimensions make an export of any length of a short file.
            if (_writer.size() > kMaxTextSize) // unreached: an export of more than a gigabyte
                throw CannotWork("the export is longer than " + std::to_string(kMaxTextSize) +
                                 " bytes, because each attribute names all dimensions of its space");
        } else if (!properties.space.empty()) {
            note(place, path, "space", properties.space, nullptr);
        }
        writeWord("transportation", kFomTransportations, properties.transportation, kRootTransportation, place, path);
        writeWord("order", kFomOrders, properties.ordering, kRootOrder, place, path);
    }

    /// Writes a transportation or order. Only the schema FDD requires one, so that a word that is not understood need
    /// not be guessed for the other forms.
    void writeWord(const char *element, const FomWords &words, const std::string &word, const char *usual,
                   const std::optional<RtiFedPosition> &place, const std::string &path) {
        const char *written = fomWord(words, word);
        if (!written) {
            if (_form == FomForm::fdd)
                written = fomWord(words, usual);
            note(place, path, element, word, written);
        }
        if (written)
            _writer.leaf(element, written);
    }

    void note(const std::optional<RtiFedPosition> &place, const std::string &path, const std::string &what,
              const std::string &word, const char *instead) {
        _notes.push_back({place, what + " of " + inQuotes(path) +
                                     (word.empty() ? " is not known" : " is unknown: " + inQuotes(word)) +
                                     (instead ? std::string("; exported as ") + instead : "; left out")});
    }

    /// Returns a name of FED as a name in XML, and notes if it is escaped.
    std::string nameInXml(std::string_view name, const std::optional<RtiFedPosition> &place) {
        std::string legal = fomName(name);
        if (legal != name)
            _notes.push_back({place, "the name " + inQuotes(name) + " is not legal in XML; exported as " +
                                         shown(legal, kNameLimit)});
        return legal;
    }

    /// Writes a name that no sibling has, and notes if it is another one therefore.
    void writeName(const std::string &name, const std::string &noun, const std::optional<RtiFedPosition> &place,
                   DistinctNames &siblings) {
        const std::string free = siblings.distinct(name);
        if (free != name)
            _notes.push_back({place, "the name " + inQuotes(name) + " is taken in the export by another " + noun +
                                         "; exported as " + shown(free, kNameLimit)});
        _writer.leaf("name", free);
    }

    void writeDimensions() {
        if (_plan.hasNoSpaces()) {
            if (_form == FomForm::fdd)
                _writer.empty("dimensions");
            return;
        }
        _writer.open("dimensions");
        forEachSpace([this](std::size_t index, const Outline::Space &space, const ExportPlan::Space &plan) {
            for (std::size_t i = 0; i < plan.dimensions.size(); ++i)
                writeDimension(index, i, space, plan);
        });
        _writer.close();
    }

    void writeDimension(std::size_t space, std::size_t dimension, const Outline::Space &declared,
                        const ExportPlan::Space &plan) {
        std::vector<std::string> labels;
        if (declared.dimensions.empty())
            labels.emplace_back(kEmptySpaceNote);
        if (commentOf({ClauseKind::space, narrow(space)}))
            labels.push_back(plan.name);
        const DeclarationRef ref{ClauseKind::dimension, narrow(space), narrow(dimension)};
        if (commentOf(ref))
            labels.push_back(plan.dimensions[dimension]);
        _writer.open("dimension", labels.empty() ? "" : "notes=\"" + joined(labels, " ") + '"');
        _writer.leaf("name", plan.dimensions[dimension]);
        const FomFacts::Known &known = _facts.of(ref);
        for (const FomFact fact : {FomFact::dataType, FomFact::upperBound, FomFact::normalization, FomFact::value})
            if (FomFacts::find(known, fact))
                writeFact(fact, known);
        _writer.close();
    }

    /// The element of a dimension has no place for semantics, so that comments about spaces and dimensions become
    /// notes.
    void writeNotes() {
        bool hasEmptySpace = false;
        std::vector<std::pair<std::string, const std::string *>> notes;
        forEachSpace([&](std::size_t index, const Outline::Space &space, const ExportPlan::Space &plan) {
            hasEmptySpace = hasEmptySpace || space.dimensions.empty();
            if (const std::string *text = commentOf({ClauseKind::space, narrow(index)}))
                notes.emplace_back(plan.name, text);
            // equivalent: there are no comments about more
            for (std::size_t i = 0; i < space.dimensions.size(); ++i)
                if (const std::string *text = commentOf({ClauseKind::dimension, narrow(index), narrow(i)}))
                    notes.emplace_back(plan.dimensions[i], text);
        });
        static const std::string kAboutEmptySpace = "A routing space that has no dimensions in the FED.";
        if (hasEmptySpace)
            notes.emplace_back(kEmptySpaceNote, &kAboutEmptySpace);
        if (notes.empty())
            return;
        _writer.open("notes");
        for (const auto &[label, text] : notes) {
            _writer.open("note");
            _writer.leaf("label", label);
            _writer.leaf("semantics", *text);
            _writer.close();
        }
        _writer.close();
    }

    template <class Visit>
    void forEachSpace(Visit visit) {
        for (std::size_t i = 0; i < _outline.spaces.size(); ++i)
            if (!_plan.spaces()[i].isLeftOut)
                visit(i, _outline.spaces[i], _plan.spaces()[i]);
    }

    const std::string *commentOf(const DeclarationRef &ref) const {
        return FomFacts::find(_facts.of(ref), FomFact::semantics);
    }

    void writeTransportations() {
        _writer.open("transportations");
        for (const FomWord &word : kFomTransportations) {
            _writer.open("transportation");
            _writer.leaf("name", word.fom);
            _writer.leaf("reliable", std::string_view(word.fed) == "reliable" ? "Yes" : "No");
            _writer.close();
        }
        _writer.close();
    }

    /// FED does not have switches; all are off, which is the default of the schemas.
    void writeSwitches() {
        _writer.open("switches");
        for (const char *name : kSwitches)
            _writer.empty(name, "isEnabled=\"false\"");
        _writer.close();
    }

    static ClauseKind classKind(const FomTree &tree) {
        return tree.kind.membersHaveProperties ? ClauseKind::objectClass : ClauseKind::interactionClass;
    }
    static ClauseKind memberKind(const FomTree &tree) {
        return tree.kind.membersHaveProperties ? ClauseKind::attribute : ClauseKind::parameter;
    }

    static bool isOfRoot(const Properties &properties) {
        return properties.transportation == kRootTransportation && properties.ordering == kRootOrder &&
               properties.space.empty();
    }

    /// The properties of the root of the interactions, if the file has none.
    static Properties rootProperties(const Properties &properties) {
        return properties.any() ? properties : Properties{kRootTransportation, kRootOrder, ""};
    }

    bool isRootPrivilege(const FomTree &tree, const Class &owner, const Member &member) const {
        const std::size_t root = _plan.tree(tree).root;
        // equivalent: no interaction class is one of the object classes
        return &tree == &kFomObjects && root != Outline::kNone && &owner == &_outline.objects[root] &&
               RtiFedName::equal(member.name, kPrivilegeInFed);
    }
    bool isStandardPrivilege(const FomTree &tree, const Class &owner, const Member &member) const {
        return isRootPrivilege(tree, owner, member) && isOfRoot(member.properties);
    }

    const Outline &_outline;
    const FomFacts &_facts;
    const FomForm _form;
    std::vector<ExportNote> &_notes;
    const ExportPlan _plan;
    std::map<const FomTree *, std::unordered_set<std::string>> _rootMembers; // in upper case; filled when needed
    FomWriter _writer;
};

} // namespace

std::string exportedModel(const Outline &outline, const FomFacts &facts, const std::string &description, FomForm form,
                          std::vector<ExportNote> &notes) {
    return Exporter(outline, facts, form, notes).write(description);
}
