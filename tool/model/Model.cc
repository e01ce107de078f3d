#include "tool/model/Model.hh"

#include "tool/console/Digest.hh"
#include "tool/console/Text.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>

std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    auto database = std::make_unique<RtiFedDatabase>(buffer);
    if (buffer.remaining() > 0)
        throw RTI::RTIinternalError(("image byte " + std::to_string(buffer.size() - buffer.remaining()) + ": " +
                                     std::to_string(buffer.remaining()) + " bytes follow the image")
                                        .c_str());
    return database;
}

std::unique_ptr<RtiFedDatabase> buildModel(const Input &input) {
    if (input.isImage())
        return restoreImage(input.contents);
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(input.name, RTI_false));
    // The stream only reads, though its interface would let it write.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    std::FILE *text = fmemopen(const_cast<char *>(input.contents.data()), input.contents.size(), "r");
    if (!text)
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

std::string checksumText(const RtiFedDatabase &database) {
    const unsigned long checksum = database.getChecksum();
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
