#include "fed/loading/RtiFedParserCodegen.hh"

#include <cstdio>

RtiFedParserCodegen::~RtiFedParserCodegen() = default;

void RtiFedParserCodegen::setFederate(std::string name) {
    std::printf("setFederate(\"%s\");\n", name.c_str());
}

void RtiFedParserCodegen::setFederateVersion(std::string version) {
    std::printf("setFederateVersion(\"%s\");\n", version.c_str());
}

// An empty line separates the block of each space and class from the one before.

void RtiFedParserCodegen::addSpace(std::string name) {
    std::printf("\naddSpace(\"%s\");\n", name.c_str());
}

void RtiFedParserCodegen::addDimension(std::string name) {
    std::printf("addDimension(\"%s\");\n", name.c_str());
}

void RtiFedParserCodegen::addObjectClass(std::string name) {
    std::printf("\naddObjectClass(\"%s\");\n", name.c_str());
}

void RtiFedParserCodegen::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                                  std::string space) {
    std::printf("addObjectClassAttribute(\"%s\", \"%s\", \"%s\", \"%s\");\n", name.c_str(), transportation.c_str(),
                ordering.c_str(), space.c_str());
}

void RtiFedParserCodegen::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                              std::string space) {
    std::printf("\naddInteractionClass(\"%s\", \"%s\", \"%s\", \"%s\");\n", name.c_str(), transportation.c_str(),
                ordering.c_str(), space.c_str());
}

void RtiFedParserCodegen::addParameter(std::string name) {
    std::printf("addParameter(\"%s\");\n", name.c_str());
}

void RtiFedParserCodegen::declareObjectClass(std::string_view name, std::size_t /*numAttributes*/) {
    addObjectClass(std::string(name));
}

void RtiFedParserCodegen::declareObjectClassAttribute(std::string_view name, std::string_view transportation,
                                                      std::string_view ordering, std::string_view space) {
    addObjectClassAttribute(std::string(name), std::string(transportation), std::string(ordering), std::string(space));
}

void RtiFedParserCodegen::declareInteractionClass(std::string_view name, std::string_view transportation,
                                                  std::string_view ordering, std::string_view space,
                                                  std::size_t /*numParameters*/) {
    addInteractionClass(std::string(name), std::string(transportation), std::string(ordering), std::string(space));
}

void RtiFedParserCodegen::declareParameter(std::string_view name) {
    addParameter(std::string(name));
}

void RtiFedParserCodegen::expectDeclarations(const RtiFedDeclarationCounts & /*counts*/) {}
