#include "tool/model/Model.hh"

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "tool/console/Digest.hh"
#include "tool/console/Text.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Adds the declarations to a database as the library does when it loads a file: without a string for each name.
class Loader final : public RtiFedDatabaseCodegen {
public:
    explicit Loader(RtiFedDatabase &database) : RtiFedDatabaseCodegen(&database), _database(database) {}

    void declareObjectClass(std::string_view name, std::size_t numAttributes) override {
        loadObjectClass(name, numAttributes);
    }
    void declareObjectClassAttribute(std::string_view name, std::string_view transportation, std::string_view ordering,
                                     std::string_view space) override {
        checkSpace(space);
        loadObjectClassAttribute(name, transportation, ordering, space);
    }
    void declareInteractionClass(std::string_view name, std::string_view transportation, std::string_view ordering,
                                 std::string_view space, std::size_t numParameters) override {
        checkSpace(space);
        loadInteractionClass(name, transportation, ordering, space, numParameters);
    }
    void declareParameter(std::string_view name) override { loadParameter(name); }
    void expectDeclarations(const RtiFedDeclarationCounts &counts) override { reserve(counts); }

private:
    /// Throws for an unknown space, as loading does; but that also reports it on the error stream of the library.
    void checkSpace(std::string_view space) const {
        if (!space.empty())
            static_cast<void>(_database.getRoutingSpaceHandle(space));
    }

    const RtiFedDatabase &_database;
};

} // namespace

std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    auto database = std::make_unique<RtiFedDatabase>(buffer);
    if (buffer.remaining() > 0)
        throw RTI::RTIinternalError(("image byte " + std::to_string(buffer.size() - buffer.remaining()) + ": " +
                                     std::to_string(buffer.remaining()) + " bytes follow the image")
                                        .c_str());
    return database;
}

std::unique_ptr<RtiFedDatabase> buildModel(RtiFedParser &text, const std::string &fileName) {
    if (text.numErrors() > 0)
        return nullptr;
    try {
        auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
        Loader loader(*database);
        text.deliver(loader);
        std::string reason;
        if (!database->verifyMomObjectClasses(reason) || !database->verifyMomInteractionClasses(reason))
            return nullptr;
        database->createMomDefaultSpace();
        database->setMomDefaultSpace();
        return database;
    } catch (const RTI::Exception &) {
        return nullptr;
    }
}

std::unique_ptr<RtiFedDatabase> buildModel(const Input &input) {
    if (input.isImage())
        return restoreImage(input.contents);
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(input.name, RTI_false));
    // The stream only reads, though its interface would let it write.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    std::FILE *text = fmemopen(const_cast<char *>(input.contents.data()), input.contents.size(), "r");
    if (!text) // unreached: fmemopen fails only if memory runs out
        throw CannotWork(input.name + ": " + std::strerror(errno));
    database->buildFromFed(text);
    return database;
}

bool writeListing(const RtiFedDatabase &model, std::ostream &os) {
    try {
        model.dumpDatabase(&os);
        return true;
    } catch (const RTI::Exception &) {
        return false;
    }
}

std::string checksumText(unsigned long checksum) {
    std::string digits;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        digits += hexDigits(static_cast<unsigned char>(checksum >> shift & 0xFF));
    return digits;
}

std::string fingerprint(const RtiFedDatabase &database) {
    RtiBuffer image;
    database.save(image);
    const std::size_t lengthSize = 4; // before the bytes of a string
    const std::size_t size = image.size() - lengthSize - database.getFileName().size();
    return sha256({reinterpret_cast<const char *>(image.data()), size});
}
