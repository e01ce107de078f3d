#include "tool/fom/export/TypesFile.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/InputFile.hh"
#include "tool/control/TomlReader.hh"
#include "tool/fom/export/TypesNames.hh"

#include <unordered_map>

namespace {

constexpr std::size_t kLongest = 1 << 26; // bytes. equivalent: far more than a model needs

class TypesReader : private TomlReader {
public:
    TypesReader(const std::string &name, const std::string &text, const Outline &outline, const ExportPlan &plan)
        : TomlReader(name, text), _outline(outline), _plan(plan) {}

    FomFacts read() {
        const toml::table document = parse();
        std::vector<std::string> keys;
        keys.reserve(kTypesSections.size()); // equivalent: only for speed
        for (const TypesSection &section : kTypesSections)
            keys.emplace_back(section.key);
        forEachKey(document, keys, [this](const std::string &key, const toml::node &value) {
            for (const TypesSection &section : kTypesSections)
                if (key == section.key)
                    readSection(section, value);
        });
        throwIfFaulty();
        return std::move(_facts);
    }

private:
    /// Names with their indices in a list, in upper case.
    class Names {
    public:
        void add(const std::string &name, std::size_t index) {
            _byName.emplace(RtiFedName::upper(name), index);
            _names.push_back(name);
        }
        std::optional<std::size_t> find(std::string_view name) const {
            const auto found = _byName.find(RtiFedName::upper(name));
            return found == _byName.end() ? std::nullopt : std::optional(found->second);
        }
        const std::vector<std::string> &all() const { return _names; }

    private:
        std::unordered_map<std::string, std::size_t> _byName;
        std::vector<std::string> _names;
    };

    void readSection(const TypesSection &section, const toml::node &node) {
        const std::vector<TypesOwner> owners = typesOwners(section, _outline, _plan);
        const std::string root = rootPrefix(section);
        Names names;
        for (std::size_t i = 0; i < owners.size(); ++i)
            names.add(owners[i].name, i);
        forEachName(formOf(section.kind).noun, names, root, node,
                    [&](std::size_t index, const toml::node &value) { readOwner(section, owners[index], value); });
    }

    void readOwner(const TypesSection &section, const TypesOwner &owner, const toml::node &node) {
        const auto readMembers = [&](const toml::node &members) {
            Names names;
            for (std::size_t i = 0; i < owner.members.size(); ++i)
                names.add(owner.members[i], i);
            forEachName(formOf(section.memberKind).noun, names, "", members,
                        [&](std::size_t index, const toml::node &value) {
                            readFacts(section.memberKind, owner.member(section.memberKind, index), value, nullptr, {});
                        });
        };
        readFacts(section.kind, owner.ref, node, section.membersKey, readMembers);
    }

    /// Calls `visit` with the index of each name of a table and its value, and reports names that are unknown or
    /// there in two spellings.
    template <class Visit>
    void forEachName(const std::string &noun, const Names &names, const std::string &root, const toml::node &node,
                     Visit visit) {
        const toml::table *table = node.as_table();
        if (!table)
            return expected("a table", node);
        std::unordered_map<std::size_t, const toml::key *> visited; // which the table has in the order of names
        for (const auto &[key, value] : *table) {
            std::string_view name = key.str();
            auto index = names.find(name);
            if (!index && !root.empty() && RtiFedName::equal(name.substr(0, root.size()), root))
                index = names.find(name.substr(root.size()));
            if (index) {
                const auto [other, isFirst] = visited.emplace(*index, &key);
                if (!isFirst)
                    faultOfSpellings(noun, *other->second, key);
                visit(*index, value);
            } else {
                fault(key.source().begin,
                      "the export has no " + noun + ' ' + inQuotes(name) +
                          (showsFurtherFault() ? didYouMean(suggestionFor(name, names.all())) : ""));
            }
        }
    }

    /// Reports two keys that are the same name in different spellings, at the second.
    void faultOfSpellings(const std::string &noun, const toml::key &a, const toml::key &b) {
        const bool isInOrder = a.source().begin < b.source().begin; // equivalent: no two keys are at one place
        const toml::key &first = isInOrder ? a : b, &second = isInOrder ? b : a;
        fault(second.source().begin,
              "the " + noun + ' ' + inQuotes(second.str()) + " is here already as " + inQuotes(first.str()));
    }

    /// Reads the facts of a declaration. A class or space also has a key for its members.
    void readFacts(ClauseKind kind, const DeclarationRef &ref, const toml::node &node, const char *membersKey,
                   const std::function<void(const toml::node &)> &readMembers) {
        std::vector<std::string> keys;
        for (const FomFact fact : factsOf(kind))
            keys.emplace_back(formOf(fact).name);
        if (membersKey)
            keys.emplace_back(membersKey);
        forEachKey(node, keys, [&](const std::string &key, const toml::node &value) {
            if (membersKey && key == membersKey)
                return readMembers(value);
            for (const FomFact fact : factsOf(kind))
                if (key == formOf(fact).name)
                    readFact(ref, fact, value);
        });
    }

    /// Reads a fact; an empty text, as the template has it, means that it is not known.
    void readFact(const DeclarationRef &ref, FomFact fact, const toml::node &value) {
        const FomFactForm &form = formOf(fact);
        auto text = value.value_exact<std::string>();
        if (text && text->empty())
            return;
        if (const auto number = value.value_exact<std::int64_t>(); number && form.isLegal)
            text = std::to_string(*number);
        else if (!form.choices.empty())
            text = readChoice(value, form.choices);
        else if (!text)
            return expected("a string", value);
        if (text && form.isLegal && !form.isLegal(*text))
            return fault(value.source().begin, std::string("expected ") + form.expected + ", found " + inQuotes(*text));
        _facts.set(ref, fact, text.value_or(""));
    }

    const Outline &_outline;
    const ExportPlan &_plan;
    FomFacts _facts;
};

} // namespace

FomFacts readTypes(const std::string &fileName, const Outline &outline, const ExportPlan &plan) {
    const std::string text = readSmallFile(fileName, fileName, kLongest);
    return TypesReader(fileName, text, outline, plan).read();
}
