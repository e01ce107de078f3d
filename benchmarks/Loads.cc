#include "benchmarks/Loads.hh"

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"

#include <google/protobuf/compiler/parser.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/io/tokenizer.h>
#include <google/protobuf/io/zero_copy_stream_impl.h>
#include <pugixml.hpp>

#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace {

class Database : public Model {
public:
    explicit Database(const std::string &fileName) : _database(RtiFedDatabaseConstructorArg(fileName, RTI_true)) {}
    explicit Database(RtiBuffer &image) : _database(image) {}

    const RtiFedDatabase &get() const { return _database; }

    void list(Listing &listing) const override {
        for (long handle = 1; const RtiFedSpace *space = _database.find(RtiSpaceHandle(handle)); ++handle) {
            if (listing.detail() == Listing::namesOnly && space->getName() == "HLAMomDefaultSpace")
                continue;
            listing.declare("space", space->getName(),
                            {static_cast<unsigned long>(_database.getRoutingSpaceHandle(space->getName())._value)});
            for (unsigned long i = 0; i < space->getNumberOfDimensions(); ++i) {
                const std::string &dimension = space->getDimension(i)->getName();
                listing.declare("dimension", dimension, {space->getDimensionHandle(dimension)._value});
            }
        }
        for (const RtiObjectClassHandle &handle : _database.getObjectClassHandleSet()) {
            const RtiFedObjectClass &node = *_database.find(handle);
            listing.declare(
                "class", node.getName(),
                {_database.getObjectClassHandle(node.getName())._value, node.getParentClassHandle()._value});
            for (unsigned long i = 0; i < node.getNumberOfAttributes(); ++i) {
                const RtiFedAttribute &attribute = *node.getAttribute(i);
                listing.declare("attribute", attribute.getName(),
                                {node.getAttributeHandle(attribute.getName())._value, attribute.getTransport()._value,
                                 attribute.getOrdering()._value,
                                 static_cast<unsigned long>(attribute.getSpace()._value),
                                 _database.getRealObjectClassHandle(handle, attribute.getHandle())._value});
            }
        }
        for (const RtiInteractionClassHandle &handle : _database.getInteractionClassHandleSet()) {
            const RtiFedInteractionClass &node = *_database.find(handle);
            listing.declare("interaction", node.getName(),
                            {_database.getInteractionClassHandle(node.getName())._value,
                             node.getParentClassHandle()._value, node.getDefaultTransport()._value,
                             node.getDefaultOrdering()._value,
                             static_cast<unsigned long>(node.getDefaultSpace()._value)});
            for (unsigned long i = 0; i < node.getNumberOfParameters(); ++i) {
                const std::string &parameter = node.getParameter(i)->getName();
                listing.declare("parameter", parameter, {node.getParameterHandle(parameter)._value});
            }
        }
    }

private:
    RtiFedDatabase _database;
};

class XmlTree : public Model {
public:
    explicit XmlTree(const std::string &fileName) {
        if (const pugi::xml_parse_result result = _document.load_file(fileName.c_str()); !result)
            throw std::runtime_error(fileName + ": " + result.description());
    }

    void list(Listing &listing) const override {
        const pugi::xml_node fed = _document.child("fed");
        for (const pugi::xml_node &space : fed.child("spaces")) {
            listing.declare("space", space.attribute("name").value());
            for (const pugi::xml_node &dimension : space)
                listing.declare("dimension", dimension.attribute("name").value());
        }
        listClasses(listing, "class", fed.child("objects"), "");
        listClasses(listing, "interaction", fed.child("interactions"), "");
    }

private:
    static void listClasses(Listing &listing, const char *kind, const pugi::xml_node &in, const std::string &prefix) {
        for (const pugi::xml_node &element : in) {
            const std::string name = element.attribute("name").value();
            if (std::string_view(element.name()) == "class") {
                listing.declare(kind, prefix + name);
                listClasses(listing, kind, element, prefix + name + ".");
            } else {
                listing.declare(element.name(), name);
            }
        }
    }

    pugi::xml_document _document;
};

class Descriptors : public Model {
public:
    explicit Descriptors(const std::string &fileName) {
        using namespace google::protobuf;
        struct : io::ErrorCollector, DescriptorPool::ErrorCollector {
            void AddError(int line, io::ColumnNumber, const std::string &text) override {
                throw std::runtime_error("line " + std::to_string(line + 1) + ": " + text);
            }
            void AddError(const std::string &, const std::string &element, const Message *, ErrorLocation,
                          const std::string &text) override {
                throw std::runtime_error(element + ": " + text);
            }
        } errors;
        const int opened = open(fileName.c_str(), O_RDONLY);
        if (opened < 0)
            throw std::runtime_error("cannot open " + fileName);
        io::FileInputStream input(opened);
        input.SetCloseOnDelete(true);
        io::Tokenizer tokenizer(&input, &errors);
        FileDescriptorProto proto;
        compiler::Parser parser;
        parser.RecordErrorsTo(&errors);
        if (!parser.Parse(&tokenizer, &proto))
            throw std::runtime_error("cannot parse " + fileName);
        proto.set_name("federation");
        _file = _pool.BuildFileCollectingErrors(proto, &errors);
        if (!_file)
            throw std::runtime_error("cannot build " + fileName);
    }

    void list(Listing &listing) const override {
        for (int i = 0; i < _file->message_type_count(); ++i) {
            const auto &message = *_file->message_type(i);
            if (message.name() == "ObjectRoot")
                list(listing, message, "class", "attribute");
            else if (message.name() == "InteractionRoot")
                list(listing, message, "interaction", "parameter");
            else
                list(listing, message, "space", "dimension");
        }
    }

private:
    static void list(Listing &listing, const google::protobuf::Descriptor &message, const char *kind,
                     const char *fieldKind) {
        listing.declare(kind, message.full_name());
        for (int i = 0; i < message.field_count(); ++i) {
            const std::string &name = message.field(i)->name();
            listing.declare(fieldKind, std::string_view(name).substr(0, name.size() - 1));
        }
        for (int i = 0; i < message.nested_type_count(); ++i)
            list(listing, *message.nested_type(i), kind, fieldKind);
    }

    google::protobuf::DescriptorPool _pool;
    const google::protobuf::FileDescriptor *_file = nullptr;
};

} // namespace

Load loadOf(const std::string &contender, const std::string &stem) {
    const std::string fed = stem + ".fed", xml = stem + ".xml", proto = stem + ".proto";
    if (contender == "text")
        return {[=] { return std::make_unique<Database>(fed); }, Listing::all};
    if (contender == "plain")
        return {[=] { return loadPlainly(fed); }, Listing::all};
    if (contender == "maps")
        return {[=] { return loadIntoHashMaps(xml); }, Listing::all};
    if (contender == "tree")
        return {[=] { return std::make_unique<XmlTree>(xml); }, Listing::namesOnly};
    if (contender == "descriptors")
        return {[=] { return std::make_unique<Descriptors>(proto); }, Listing::namesOnly};
    if (contender != "image")
        throw std::runtime_error("no contender " + contender);
    const auto image = std::make_shared<RtiBuffer>();
    Database(fed).get().save(*image);
    return {[=] {
                image->rewind();
                return std::make_unique<Database>(*image);
            },
            Listing::all};
}
