#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedParserCodegen.hh"

/// Turns each declaration of a FED file into a building call on a database. It lives for one parse and owns nothing.
///
/// Each callback throws what the building call throws; an unknown space is also reported on _rtiErrorStream.
class RTIFED_EXPORT RtiFedDatabaseCodegen : public RtiFedParserCodegen {
public:
    /// The database must outlive this object.
    explicit RtiFedDatabaseCodegen(RtiFedDatabase *database);
    ~RtiFedDatabaseCodegen() override;

    void setFederate(std::string name) override;
    void setFederateVersion(std::string version) override;
    void addSpace(std::string name) override;
    void addDimension(std::string name) override;
    void addObjectClass(std::string name) override;
    void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                 std::string space) override;
    void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                             std::string space) override;
    /// Throws RTI::RTIinternalError before the first interaction class.
    void addParameter(std::string name) override;

protected:
    // What the callbacks do, without a string for each name.
    void buildObjectClass(std::string_view name, std::size_t numAttributes);
    void buildObjectClassAttribute(std::string_view name, std::string_view transportation, std::string_view ordering,
                                   std::string_view space);
    void buildInteractionClass(std::string_view name, std::string_view transportation, std::string_view ordering,
                               std::string_view space, std::size_t numParameters);
    void buildParameter(std::string_view name);

private:
    RtiSpaceHandle spaceHandle(std::string_view space, const char *position) const;

    RtiFedDatabase *_database;
    RtiFedSpace *_space = nullptr; // the last that was added, as below
    RtiFedObjectClass *_objectClass = nullptr;
    RtiFedInteractionClass *_interactionClass = nullptr;
};
