#include "fed/RtiFedDatabaseConstructorArg.hh"

RtiFedDatabaseConstructorArg::RtiFedDatabaseConstructorArg(const std::string &name, RTI_bool build)
    : _name(name), _build(build) {}

RtiFedDatabaseConstructorArg::~RtiFedDatabaseConstructorArg() = default;
