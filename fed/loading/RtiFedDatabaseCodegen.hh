#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedParserCodegen.hh"

/// The callbacks that turn each declaration of a FED file into a building call on a database. An object is used for one
/// parse and owns nothing. A member or dimension is added to the class or space that was added last, so the order of
/// the callbacks matters; restoring the database in between counts as having added none.
///
/// Each callback throws what the building call throws. An unknown space is also reported on _rtiErrorStream.
/// Threads: as for building the database.
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
    // The work of the callbacks above, without a string for each name.
    void loadObjectClass(std::string_view name, std::size_t numAttributes);
    void loadObjectClassAttribute(std::string_view name, std::string_view transportation, std::string_view ordering,
                                  std::string_view space);
    void loadInteractionClass(std::string_view name, std::string_view transportation, std::string_view ordering,
                              std::string_view space, std::size_t numParameters);
    void loadParameter(std::string_view name);
    void reserve(const RtiFedDeclarationCounts &counts);

private:
    RtiSpaceHandle spaceHandle(std::string_view space, const char *position) const;
    void forgetReplacedRecords();

    RtiFedDatabase *_database;
    // The records that were added last, in the generation of the database that they belong to.
    RtiFedSpace *_space = nullptr;
    RtiFedObjectClass *_objectClass = nullptr;
    RtiFedInteractionClass *_interactionClass = nullptr;
    unsigned long _generation = 0;
};
