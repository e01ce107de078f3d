#pragma once

#include "fed/RtiFedDatabaseConstructorArg.hh"
#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedInteractionClass.hh"
#include "fed/RtiFedObjectClass.hh"
#include "fed/RtiFedSpace.hh"
#include "fed/storage/RtiFedClassTree.hh"
#include "infrastructure/RtiAttributeHandleSet.hh"
#include "infrastructure/RtiDottedClassname.hh"

#include <cstdio>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

/// The federation object model of one federation execution: object classes with their attributes, interaction classes
/// with their parameters, routing spaces with their dimensions, and for each its handle, transportation, ordering and
/// space.
///
/// Use: construct it from a FED file, then ask it. A file must hold the complete Management Object Model (MOM). Names
/// are matched in any letter case and come back as declared; class names are full dotted names, with or without
/// "ObjectRoot." or "InteractionRoot." in front. Handles are numbered from 1 in the order of the file, kind by kind
/// (dimensions from 0, space by space); 0 means none. The records are in RtiFedObjectClass.hh,
/// RtiFedInteractionClass.hh and RtiFedSpace.hh; docs/fed-format.md describes the file.
///
/// Lifetime: the database owns all that it hands out by pointer; it lives as long as the database.
/// Threads: every const member may run on any number of threads at once; building needs the database to itself.
/// Failures: a lookup throws and changes nothing; its message begins with the place where it was raised. Any member may
/// throw std::bad_alloc; a building call then has changed nothing, but for the handle it used up.
class RTIFED_EXPORT RtiFedDatabase : public RtiSaveableType {
public:
    static constexpr const char *_thisClassName = "RtiFedDatabase";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr const char *_momDefaultSpace = "HLAMomDefaultSpace"; ///< The space of MOM classes that name none.

    /// Builds from the FED file, or stays empty if `arg` says so: then no file is touched, and there is no space for
    /// the MOM either. Throws RTI::CouldNotOpenFED (the message is the file name) and what buildFromFed throws;
    /// failures to open and to parse are also reported on _rtiErrorStream.
    explicit RtiFedDatabase(const RtiFedDatabaseConstructorArg &arg);
    /// Rebuilds the database that was saved into the buffer. Reads no file and verifies no MOM: the image holds it all.
    /// Throws what restore throws.
    explicit RtiFedDatabase(RtiBuffer &buffer);
    ~RtiFedDatabase() override;
    RtiFedDatabase(const RtiFedDatabase &) = delete;
    RtiFedDatabase &operator=(const RtiFedDatabase &) = delete;

    RTI_bool save(RtiBuffer &buffer) const override;
    /// Replaces the whole content. Throws RtiBufferUnderflow, and RTI::RTIinternalError for an image that no sound
    /// database has, saying what is wrong at which byte; the database then holds no class, space or attribute.
    void restore(RtiBuffer &buffer) override;
    /// Writes a line for each of the database's own fields.
    void dump(std::ostream &os) const override;
    /// Compares the database's own fields with those of an image; records are not compared one by one.
    void diff(RtiBuffer &buffer, std::ostream &os) const override;

    /// A 32-bit checksum over the model, by which two processes tell whether they hold the same. The file name does not
    /// enter. Throws RTI::RTIinternalError if a handle is wider than 32 bits.
    unsigned long getChecksum() const;

    // ---- Building: only before the first query.

    /// Builds an empty database from an open FED file, which the parser closes. Verifies the MOM and gives it its
    /// default space. Throws RTI::ErrorReadingFED if the text cannot be parsed (the message is the file name; the
    /// reason goes to _rtiErrorStream), declares something twice, or lacks a part of the MOM; RTI::NameNotFound for an
    /// unknown space, transportation or ordering; RTI::RTIinternalError. The database is then partly built.
    void buildFromFed(std::FILE *file);

    void setFederateName(std::string name);
    void setFederateVersion(std::string version);

    /// Each hands out the next handle of its kind, from 1.
    RtiSpaceHandle createSpaceHandle();
    RtiObjectClassHandle createObjectClassHandle();
    RtiAttributeHandle createAttributeHandle();
    RtiInteractionClassHandle createInteractionClassHandle();
    RtiParameterHandle createParameterHandle();

    /// Adds an object class by its full dotted name. Throws RTI::ErrorReadingFED if it exists, RTI::NameNotFound if its
    /// superclass does not, RTI::RTIinternalError beyond kMaxClassNesting levels or when no handle is left (one is used
    /// up then).
    RtiFedObjectClass *addObjectClass(std::string name);
    RtiFedObjectClass *addObjectClass(const RtiDottedClassname &name);
    /// Adds an attribute. Throws RTI::RTIinternalError without a class, RTI::ErrorReadingFED if the class has or
    /// inherits an attribute of that name; a handle is used up then.
    void addObjectClassAttribute(RtiFedObjectClass *objectClass, std::string name,
                                 RtiTransportationHandle transportation, RtiOrderingHandle ordering,
                                 RtiSpaceHandle space);
    /// Adds an interaction class. Throws as addObjectClass.
    RtiFedInteractionClass *addInteractionClass(std::string name, RtiTransportationHandle transportation,
                                                RtiOrderingHandle ordering, RtiSpaceHandle space);
    /// Adds a routing space. One whose name is taken is found by its handle only.
    RtiFedSpace *addSpace(std::string name);
    /// Adds a dimension. Throws RTI::RTIinternalError without a space, and as RtiFedSpace::addDimension.
    void addSpaceDimension(RtiFedSpace *space, std::string name);

    /// Adds the routing space "HLAMomDefaultSpace", whether or not the file declares one of that name.
    void createMomDefaultSpace();
    /// Gives the space "HLAMomDefaultSpace" to every MOM attribute and MOM interaction class that is in none. Throws
    /// RTI::NameNotFound without that space or the two Manager classes.
    void setMomDefaultSpace();
    /// The same for one class and all below it.
    void setMomDefaultSpaceForAttributes(const RtiFedObjectClass *objectClass, RtiSpaceHandle space);
    void setMomDefaultSpaceForInteractionClasses(RtiFedInteractionClass *interactionClass, RtiSpaceHandle space);

    /// Whether the MOM classes and their members are there. If not, the reason is appended to `message`.
    RTI_bool verifyMomObjectClasses(std::string &message) const;
    RTI_bool verifyMomInteractionClasses(std::string &message) const;

    // ---- The database as a whole.

    std::string getFederateName() const { return _fedName; }
    std::string getFederateVersion() const { return _fedVersion; }
    const std::string &getFileName() const { return _fileName; }
    /// How many names of each kind there are; a routing space whose name is taken does not count.
    unsigned long numObjectClasses() const;
    unsigned long numInteractionClasses() const;
    unsigned long numSpaces() const;

    /// Writes the readable listing of the model. Throws what the lookups throw if a record refers to a space,
    /// transportation or ordering that does not exist.
    void dumpDatabase(std::ostream *os) const;

    // ---- Names and handles. Each names the HLA 1.3 ancillary service that it stands for.

    RTI_bool objectClassExists(RtiObjectClassHandle handle) const;
    RTI_bool objectClassExists(std::string_view name) const;
    RTI_bool interactionClassExists(RtiInteractionClassHandle handle) const;
    RTI_bool interactionClassExists(std::string_view name) const;

    /// The record of a handle; null if there is none.
    RtiFedSpace *find(RtiSpaceHandle handle) const;
    RtiFedInteractionClass *find(RtiInteractionClassHandle handle) const;
    RtiFedObjectClass *find(RtiObjectClassHandle handle) const;

    /// Get Object Class Handle. Throws RTI::NameNotFound.
    RtiObjectClassHandle getObjectClassHandle(std::string_view name) const;
    /// Get Object Class Name: the full dotted name. Throws RTI::ObjectClassNotDefined.
    std::string getObjectClassName(RtiObjectClassHandle handle) const;
    /// Get Attribute Handle, inherited attributes included. Throws RTI::ObjectClassNotDefined, RTI::NameNotFound.
    RtiAttributeHandle getAttributeHandle(std::string_view name, RtiObjectClassHandle objectClass) const;
    /// Get Attribute Name, inherited attributes included. Throws RTI::ObjectClassNotDefined, RTI::AttributeNotDefined.
    std::string getAttributeName(RtiAttributeHandle handle, RtiObjectClassHandle objectClass) const;
    /// Get Interaction Class Handle. Throws RTI::NameNotFound.
    RtiInteractionClassHandle getInteractionClassHandle(std::string_view name) const;
    /// Get Interaction Class Name: the full dotted name. Throws RTI::InteractionClassNotDefined.
    std::string getInteractionClassName(RtiInteractionClassHandle handle) const;
    /// Get Parameter Handle, inherited parameters included. Throws RTI::InteractionClassNotDefined, RTI::NameNotFound.
    RtiParameterHandle getParameterHandle(std::string_view name, RtiInteractionClassHandle interactionClass) const;
    /// Get Parameter Name, inherited parameters included. Throws RTI::InteractionClassNotDefined,
    /// RTI::InteractionParameterNotDefined.
    std::string getParameterName(RtiParameterHandle handle, RtiInteractionClassHandle interactionClass) const;
    /// Get Routing Space Handle. Throws RTI::NameNotFound.
    RtiSpaceHandle getRoutingSpaceHandle(std::string_view name) const;
    /// Get Routing Space Name. Throws RTI::SpaceNotDefined.
    std::string getRoutingSpaceName(RtiSpaceHandle handle) const;
    /// Get Dimension Handle. Throws RTI::SpaceNotDefined, RTI::NameNotFound.
    RtiDimensionHandle getDimensionHandle(std::string_view name, RtiSpaceHandle space) const;
    /// Get Dimension Name. Throws RTI::SpaceNotDefined, RTI::DimensionNotDefined.
    std::string getDimensionName(RtiDimensionHandle handle, RtiSpaceHandle space) const;
    /// Get Attribute Routing Space Handle; 0 for an attribute in none. Throws RTI::ObjectClassNotDefined,
    /// RTI::AttributeNotDefined.
    RtiSpaceHandle getAttributeRoutingSpaceHandle(RtiAttributeHandle attribute, RtiObjectClassHandle objectClass) const;
    /// Get Interaction Routing Space Handle; 0 for a class in none. Throws RTI::InteractionClassNotDefined.
    RtiSpaceHandle getInteractionRoutingSpaceHandle(RtiInteractionClassHandle interactionClass) const;

    /// Get Transportation Handle: 2 for "RTI_RELIABLE" or "RELIABLE", 1 for "RTI_BEST_EFFORT" or "BEST_EFFORT", in any
    /// letter case. Throws RTI::NameNotFound.
    RtiTransportationHandle getTransportationHandle(std::string_view name) const;
    /// Get Transportation Name: always the long one. Throws RTI::InvalidTransportationHandle.
    std::string getTransportationName(RtiTransportationHandle handle) const;
    /// Get Ordering Handle: 2 for "RTI_TIME_STAMP_ORDERING" or "TIMESTAMP", 1 for "RTI_RECEIVE_ORDERING" or "RECEIVE",
    /// in any letter case. Throws RTI::NameNotFound.
    RtiOrderingHandle getOrderingHandle(std::string_view name) const;
    /// Get Ordering Name: always the long one. Throws RTI::InvalidOrderingHandle.
    std::string getOrderingName(RtiOrderingHandle handle) const;

    // ---- Handle sets and derivation.

    std::set<RtiObjectClassHandle> getObjectClassHandleSet() const;
    /// Every attribute, once each.
    std::set<RtiAttributeHandle> getAttributeHandleSet() const;
    std::set<RtiInteractionClassHandle> getInteractionClassHandleSet() const;
    std::set<RtiSpaceHandle> getRoutingSpaceHandleSet() const;

    /// The class that declares the attribute, whatever class is passed; 0 if none does.
    RtiObjectClassHandle getRealObjectClassHandle(RtiObjectClassHandle objectClass, RtiAttributeHandle attribute) const;

    /// Adds the class and all its descendants to `derived`; nothing for an unknown class.
    void getDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                        std::set<RtiObjectClassHandle> &derived) const;
    void getDerivedInteractionClassHandleSet(RtiInteractionClassHandle interactionClass,
                                             std::set<RtiInteractionClassHandle> &derived) const;
    /// Adds a class without children itself; of one with children, all its descendants, inner classes included, but not
    /// itself.
    void getChildlessDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                 std::set<RtiObjectClassHandle> &derived) const;

    /// The *parameters* of the interaction class, inherited ones included; none for an unknown class.
    std::set<RtiParameterHandle> getAvailableInteractionClassHandles(RtiInteractionClassHandle interactionClass) const;

    /// The attributes of the class, inherited ones included. Made at the first call for a class and kept: the set
    /// belongs to the class and must be neither changed nor freed. The number is ignored. Throws
    /// RTI::ObjectClassNotDefined for an unknown class or a null pointer.
    std::set<RtiFedAttribute *> *getAvailableFedAttributes(const RtiFedObjectClass *objectClass, int ignored) const;
    std::set<RtiFedAttribute *> *getAvailableFedAttributes(const RtiObjectClassHandle &objectClass, int ignored) const;
    RtiAttributeHandleSet *getAvailableAttributeHandles(const RtiFedObjectClass *objectClass, int ignored) const;
    RtiAttributeHandleSet *getAvailableAttributeHandles(const RtiObjectClassHandle &objectClass, int ignored) const;

    /// Whether each of the attributes is one of the class, inherited ones included; true for an empty set. Throws
    /// RTI::ObjectClassNotDefined.
    RTI_bool verifyAvailableAttributes(const RtiObjectClassHandle &objectClass, RtiAttributeHandleSet attributes) const;

private:
    static const RtiFedField<RtiFedDatabase> _fields[14];

    using AttributeClasses = RtiFedHandleMap<RtiAttributeHandle, unsigned long>; // the declaring class's handle

    friend class RtiFedDatabaseCodegen;
    // As the operations that add, without a string for each name. `last` is the class that was added last, if that is
    // known: the one above is most often that or above it.
    RtiFedObjectClass *declareObjectClass(std::string_view name, RtiFedObjectClass *last);
    void declareObjectClassAttribute(RtiFedObjectClass *objectClass, const RtiFedName &name,
                                     const RtiTransportationHandle &transportation, const RtiOrderingHandle &ordering,
                                     const RtiSpaceHandle &space);
    RtiFedInteractionClass *declareInteractionClass(std::string_view name,
                                                    const RtiTransportationHandle &transportation,
                                                    const RtiOrderingHandle &ordering, const RtiSpaceHandle &space,
                                                    RtiFedInteractionClass *last);
    void parse(std::FILE *file);
    RtiFedSpace *own(std::unique_ptr<RtiFedSpace> space);
    template <class Handle>
    Handle unused(const Handle &handle) const;
    void restoreContents(RtiBuffer &buffer);
    AttributeClasses restoreObjectClasses(RtiBuffer &buffer);
    RtiParameterHandle restoreInteractionClasses(RtiBuffer &buffer);
    void restoreSpaces(RtiBuffer &buffer);
    void restoreAttributeClasses(RtiBuffer &buffer, AttributeClasses declared);
    void clear();
    /// Throws RTI::ErrorReadingFED after two lines on the error stream.
    [[noreturn]] void couldNotParse(const char *atFile, const char *atReason, const std::string &reason) const;
    static const RtiFedObjectClass &defined(const RtiFedObjectClass *objectClass);
    template <class Visit>
    void forEachAvailable(const RtiFedObjectClass &objectClass, Visit visit) const;
    template <class Database, class Visit>
    static void visitCounters(Database &database, Visit visit);

    std::string _fedName;
    std::string _fedVersion;
    RtiFedClassTree<RtiFedObjectClass> _objectClasses;
    RtiFedClassTree<RtiFedInteractionClass> _interactionClasses;
    RtiFedNameMap<RtiFedSpace *> _spaceNameMap;
    RtiFedHandleMap<RtiSpaceHandle, std::unique_ptr<RtiFedSpace>> _spaceHandleMap;
    AttributeClasses _attributeObjectClassMap;
    // The last handle of each kind that was handed out.
    RtiSpaceHandle _nextSpaceHandle;
    RtiObjectClassHandle _nextObjectClassHandle;
    RtiAttributeHandle _nextAttributeHandle;
    RtiInteractionClassHandle _nextInteractionClassHandle;
    RtiParameterHandle _nextParameterHandle;
    std::string _fileName;
};
