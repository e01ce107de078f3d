#include "tool/report/json/ModelJson.hh"

#include "tool/model/Model.hh"
#include "tool/report/json/JsonPlace.hh"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

namespace {

constexpr int kModelVersion = 1; // to be raised when a key is removed or changes its meaning

std::optional<std::string_view> orNull(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

/// Writes a model as docs/model.schema.json describes it.
class ModelWriter {
public:
    ModelWriter(JsonWriter &json, const Outline &outline, bool effective)
        : _json(json), _outline(outline), _effective(effective) {}

    void write(const std::string &fileName, const RtiFedDatabase *database) {
        _json.beginObject();
        _json.member("formatVersion", kModelVersion);
        _json.member("file", fileName);
        _json.member("loads", _outline.loads);
        _json.member("checksum", database ? Json(checksumText(_outline.checksum)) : Json());
        _json.member("sha256", database ? Json(fingerprint(*database)) : Json());
        _json.member("federation", _outline.federation);
        _json.member("version", _outline.version);
        writeArray("spaces", _outline.spaces, [&](const Outline::Space &space) {
            writeDeclaration(space);
            writeArray("dimensions", space.dimensions,
                       [&](const Outline::Member &dimension) { writeDeclaration(dimension); });
        });
        for (const TreeKind *tree : kTreeKinds)
            writeClasses(*tree, _outline.classes(*tree));
        _json.endObject();
    }

private:
    template <class Element, class WriteElement>
    void writeArray(const char *key, const std::vector<Element> &elements, WriteElement writeElement) {
        _json.key(key).beginArray();
        for (const Element &element : elements) {
            _json.beginObject();
            writeElement(element);
            _json.endObject();
        }
        _json.endArray();
    }

    void writeClasses(const TreeKind &tree, const Outline::Classes &classes) {
        writeArray(tree.classesKey, classes, [&](const Outline::Class &node) {
            writeDeclaration(node);
            _json.member("parent", node.parent == Outline::kNone
                                       ? std::nullopt
                                       : std::optional<std::string_view>(classes[node.parent].name));
            if (!tree.membersHaveProperties)
                writeProperties(node.properties);
            writeArray(tree.membersKey, node.members, [&](const Outline::Member &member) {
                writeDeclaration(member);
                if (tree.membersHaveProperties)
                    writeProperties(member.properties);
            });
            writeInheritance(tree, classes, static_cast<std::size_t>(&node - classes.data()));
        });
    }

    void writeInheritance(const TreeKind &tree, const Outline::Classes &classes, std::size_t index) {
        std::vector<std::size_t> from; // the class and its ancestors, as far as they declare members
        for (std::size_t declaring = index; declaring != Outline::kNone; declaring = classes[declaring].parent)
            if (!classes[declaring].members.empty())
                from.push_back(declaring);
        std::reverse(from.begin(), from.end());
        _json.key(tree.membersFromKey).beginArray();
        for (const std::size_t declaring : from)
            _json.value(declaring);
        _json.endArray();
        if (!_effective)
            return;
        _json.key(tree.effectiveMembersKey).beginArray();
        for (const std::size_t declaring : from)
            for (const Outline::Member &member : classes[declaring].members) {
                _json.beginObject();
                _json.member("name", member.name);
                _json.member("declaredBy", classes[declaring].name);
                _json.endObject();
            }
        _json.endArray();
    }

    /// Writes what every declaration has: name, handle and place.
    template <class Declared>
    void writeDeclaration(const Declared &declared) {
        _json.member("name", declared.name);
        _json.member("handle", _outline.loads ? std::optional(declared.handle) : std::nullopt);
        writePlace(_json.key("place"), declared.place);
    }

    void writeProperties(const Outline::Properties &properties) {
        _json.member("transportation", orNull(properties.transportation));
        _json.member("ordering", orNull(properties.ordering));
        _json.member("space", orNull(properties.space));
    }

    JsonWriter &_json;
    const Outline &_outline;
    bool _effective;
};

} // namespace

void writeModel(JsonWriter &json, const ShownModel &model, bool effective) {
    ModelWriter(json, model.outline, effective).write(model.fileName, model.database);
}
