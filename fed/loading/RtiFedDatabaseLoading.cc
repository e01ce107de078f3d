// Building an RtiFedDatabase from a FED file.

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "fed/loading/RtiFedReport.hh"
#include "infrastructure/RtiFedParser.hh"

namespace {

/// The callbacks of a load. It takes the parser's views directly; RtiFedDatabaseCodegen itself must not, since a host
/// may derive from it and override the callbacks that take strings.
class Loader final : public RtiFedDatabaseCodegen {
public:
    using RtiFedDatabaseCodegen::RtiFedDatabaseCodegen;

    void declareObjectClass(std::string_view name, std::size_t numAttributes) override {
        loadObjectClass(name, numAttributes);
    }
    void declareObjectClassAttribute(std::string_view name, std::string_view transportation, std::string_view ordering,
                                     std::string_view space) override {
        loadObjectClassAttribute(name, transportation, ordering, space);
    }
    void declareInteractionClass(std::string_view name, std::string_view transportation, std::string_view ordering,
                                 std::string_view space, std::size_t numParameters) override {
        loadInteractionClass(name, transportation, ordering, space, numParameters);
    }
    void declareParameter(std::string_view name) override { loadParameter(name); }
    // equivalent: only speed
    void expectDeclarations(const RtiFedDeclarationCounts &counts) override { reserve(counts); }
};

} // namespace

RtiFedDatabase::RtiFedDatabase(const RtiFedDatabaseConstructorArg &arg) : _fileName(arg.fedDatabaseName()) {
    if (!arg.buildFromFileOrLeaveEmpty())
        return;
    std::FILE *file = std::fopen(_fileName.c_str(), "r");
    if (!file) {
        rtiFedReport(RTI_G_high, "\"RtiFedDatabase\", line 60: \nCould not open FED file " + _fileName);
        throw RTI::CouldNotOpenFED(_fileName.c_str());
    }
    buildFromFed(file);
}

void RtiFedDatabase::buildFromFed(std::FILE *file) {
    parse(file);
    std::string reason;
    if (!verifyMomObjectClasses(reason))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 89:  MOM error: ", reason);
    if (!verifyMomInteractionClasses(reason))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 95:  MOM error: ", reason);
    createMomDefaultSpace();
    setMomDefaultSpace();
}

void RtiFedDatabase::parse(std::FILE *file) {
    Loader loader(this);
    // A parser reports a syntax error by throwing a text. Exceptions of the callbacks pass through.
    try {
        RtiFedParser_Class_main(file, &loader); // closes the file
    } catch (const std::string &reason) {
        couldNotParse("\"RtiFedDatabase\", line 73: ", "\"RtiFedDatabase\", line 75: ", reason);
    } catch (const char *reason) {
        // unreached: this parser throws strings, a host's may throw these
        couldNotParse("\"RtiFedDatabase\", line 80: ", "\"RtiFedDatabase\", line 82: ", reason);
    }
}

void RtiFedDatabase::couldNotParse(const char *filePosition, const char *reasonPosition,
                                   const std::string &reason) const {
    rtiFedReport(RTI_G_high,
                 filePosition + ("\nCould not parse FED file " + _fileName) + "\n" + reasonPosition + reason);
    throw RTI::ErrorReadingFED(_fileName.c_str());
}
