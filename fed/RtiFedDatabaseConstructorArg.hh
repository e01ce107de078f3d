#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <string>

/// What a database is made from: the name of the FED file, and whether to read it.
class RTIFED_EXPORT RtiFedDatabaseConstructorArg {
public:
    /// Refers to the caller's string, which must outlive this record. `build` true means build from the file, false
    /// leave the database empty.
    RtiFedDatabaseConstructorArg(const std::string &name, RTI_bool build);
    virtual ~RtiFedDatabaseConstructorArg();

    const std::string &fedDatabaseName() const { return _name; }
    RTI_bool buildFromFileOrLeaveEmpty() const { return _build; }

private:
    const std::string &_name;
    RTI_bool _build;
};
