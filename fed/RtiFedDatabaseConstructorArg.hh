#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <string>

/// The argument of the database's constructor: the name of the FED file, and whether to read it.
class RTIFED_EXPORT RtiFedDatabaseConstructorArg {
public:
    /// Refers to the caller's string, which must outlive this record. If `build` is false, the database stays empty.
    RtiFedDatabaseConstructorArg(const std::string &name, RTI_bool build);
    virtual ~RtiFedDatabaseConstructorArg();

    const std::string &fedDatabaseName() const { return _name; }
    RTI_bool buildFromFileOrLeaveEmpty() const { return _build; }

private:
    const std::string &_name;
    RTI_bool _build;
};
