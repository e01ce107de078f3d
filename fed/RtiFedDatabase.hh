/// The federation database of an HLA 1.3 Run-Time Infrastructure: the object model of one federation execution, read
/// from a FED (Federation Execution Data) file.
///
///     const RtiFedDatabase database(RtiFedDatabaseConstructorArg("harbour.fed", RTI_true));
///     const RtiObjectClassHandle tug = database.getObjectClassHandle("Craft.ServiceCraft.Tug");
///     const RtiAttributeHandle position = database.getAttributeHandle("Position", tug); // declared or inherited
///     const RtiAttributeHandleSet *all = database.getAvailableAttributeHandles(tug, 0);
///
/// A second process builds the same model from the image, without the file:
///
///     RtiBuffer image;
///     database.save(image); // ... send the bytes ...
///     const RtiFedDatabase copy(image);
///     assert(copy.getChecksum() == database.getChecksum());
///
/// The database holds object classes with attributes, interaction classes with parameters, and routing spaces with
/// dimensions. Each has a name and a handle; attributes and interaction classes also have a transportation, an ordering
/// and a routing space. The records are in RtiFedObjectClass.hh, RtiFedInteractionClass.hh and RtiFedSpace.hh.
///
/// Order of use: construct, query, destroy. A FED file must declare the complete Management Object Model (MOM), or it
/// is refused with a message that names what is missing; docs/fed-format.md describes the file. Without a file,
/// construct an empty database and call the building operations.
///
/// Names match in any letter case and are returned as declared. A class name is the full dotted name; "ObjectRoot." and
/// "InteractionRoot." may be omitted. Handles are numbered from 1 in the order of the file, separately for each kind;
/// dimensions are numbered from 0 in each space. 0 means no handle.
///
/// A failed lookup throws an exception of RtiFedExceptions.hh and changes nothing. Its message begins with a fixed
/// prefix that callers may compare, such as `"RtiFedDatabase", line 1342: `. The number is not a line of today's
/// source.
///
/// docs/embedding.md is the guide for programs that use the library.
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

/// The object model of one federation execution; the guide is at the top of this file.
///
/// Lifetime: the database owns every record that it returns by pointer; the record lives as long as the database, or
/// until restore.
/// Threads: every const member may run on any number of threads at once; building and restoring need exclusive access.
/// Failures: any member may throw std::bad_alloc; a building operation then has changed nothing, except that the handle
/// it issued is used up.
class RTIFED_EXPORT RtiFedDatabase : public RtiFedSaveable {
public:
    static constexpr const char *_thisClassName = "RtiFedDatabase";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr const char *_momDefaultSpace =
        "HLAMomDefaultSpace"; ///< The space of MOM classes that declare none.

    /// Builds the database from the FED file, or leaves it empty if `arg` says so; then no file is opened and no MOM
    /// default space made. Throws RTI::CouldNotOpenFED (the message is the file name) and what buildFromFed throws.
    /// Failures to open and to parse are also reported on _rtiErrorStream.
    explicit RtiFedDatabase(const RtiFedDatabaseConstructorArg &arg);
    /// Rebuilds the database that was saved into the buffer. No file is opened and no MOM verified. Throws what restore
    /// throws.
    explicit RtiFedDatabase(RtiBuffer &buffer);
    ~RtiFedDatabase() override;
    RtiFedDatabase(const RtiFedDatabase &) = delete;
    RtiFedDatabase &operator=(const RtiFedDatabase &) = delete;

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    /// Appends the image of the whole model. Routing spaces whose name was in use are left out.
    RTI_bool save(RtiBuffer &buffer) override;
    /// Replaces the whole content. Accepts every image that save can write, unless the child handles of its classes
    /// form a cycle. Throws RtiBufferUnderflow, and RTI::RTIinternalError for an unsafe image, with the byte and the
    /// reason; the database is then empty and keeps only its file name.
    void restore(RtiBuffer &buffer) override;
    /// Writes one line for each of the database's own fields.
    void dump(std::ostream &os) override;
    /// Compares the database's own fields with those of an image. Records are not compared one by one.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

    /// Returns a 32-bit checksum over the model, so that processes can compare their models. The file name has no
    /// influence. Throws RTI::RTIinternalError if a handle does not fit into 32 bits.
    unsigned long getChecksum() const;

    // ---- Building. Finish it before the first query: the sets of available attributes are computed once.

    /// Fills an empty database from an open FED file, which the parser closes. Verifies the MOM and gives it its
    /// default space. Throws RTI::ErrorReadingFED if the text cannot be parsed (the message is the file name; the
    /// reason goes to _rtiErrorStream), has a duplicate declaration, or lacks a part of the MOM; RTI::NameNotFound for
    /// an unknown space, transportation or ordering; RTI::RTIinternalError. The database is then partly built.
    void buildFromFed(std::FILE *file);

    void setFederateName(std::string name);
    void setFederateVersion(std::string version);

    /// Each issues the next handle of its kind, from 1.
    RtiSpaceHandle createSpaceHandle();
    RtiObjectClassHandle createObjectClassHandle();
    RtiAttributeHandle createAttributeHandle();
    RtiInteractionClassHandle createInteractionClassHandle();
    RtiParameterHandle createParameterHandle();

    /// Adds an object class by its full dotted name. Throws RTI::ErrorReadingFED if it exists and RTI::NameNotFound if
    /// its superclass does not exist. Throws RTI::RTIinternalError, and uses up a handle, if the class would be nested
    /// deeper than kMaxClassNesting levels or no handle is left.
    RtiFedObjectClass *addObjectClass(std::string name);
    RtiFedObjectClass *addObjectClass(const RtiDottedClassname &name);
    /// Adds an attribute. Throws RTI::RTIinternalError if the class is null. Throws RTI::ErrorReadingFED, and uses up a
    /// handle, if the class declares or inherits an attribute of that name.
    void addObjectClassAttribute(RtiFedObjectClass *objectClass, std::string name,
                                 RtiTransportationHandle transportation, RtiOrderingHandle ordering,
                                 RtiSpaceHandle space);
    /// Adds an interaction class. Throws like addObjectClass.
    RtiFedInteractionClass *addInteractionClass(std::string name, RtiTransportationHandle transportation,
                                                RtiOrderingHandle ordering, RtiSpaceHandle space);
    /// Adds a routing space. If the name is in use, lookups by it still return the earlier space, and the new one is
    /// found by its handle only.
    RtiFedSpace *addSpace(std::string name);
    /// Adds a dimension. Throws RTI::RTIinternalError if the space is null, and what RtiFedSpace::addDimension throws.
    void addSpaceDimension(RtiFedSpace *space, std::string name);

    /// Adds the routing space "HLAMomDefaultSpace". If the file declares one of that name, lookups still return the
    /// file's space, which setMomDefaultSpace then uses.
    void createMomDefaultSpace();
    /// Gives the space "HLAMomDefaultSpace" to every MOM attribute and MOM interaction class that has no space. Throws
    /// RTI::NameNotFound if that space or one of the two Manager classes is missing.
    void setMomDefaultSpace();
    /// Gives `space` to those attributes or interaction classes of one class and its descendants that have no space.
    void setMomDefaultSpaceForAttributes(const RtiFedObjectClass *objectClass, RtiSpaceHandle space);
    void setMomDefaultSpaceForInteractionClasses(RtiFedInteractionClass *interactionClass, RtiSpaceHandle space);

    /// Whether all MOM classes and their members exist. If not, the first reason is appended to `message`.
    RTI_bool verifyMomObjectClasses(std::string &message) const;
    RTI_bool verifyMomInteractionClasses(std::string &message) const;

    // ---- The database as a whole.

    std::string getFederateName() const { return _fedName; }
    std::string getFederateVersion() const { return _fedVersion; }
    const std::string &getFileName() const { return _fileName; }
    /// The number of names of each kind. A routing space whose name was in use is not counted.
    unsigned long numObjectClasses() const;
    unsigned long numInteractionClasses() const;
    unsigned long numSpaces() const;

    /// Writes the readable listing of the model. Throws what the lookups throw if a record refers to an unknown space,
    /// transportation or ordering.
    void dumpDatabase(std::ostream *os) const;

    // ---- Names and handles. The comment of an operation that implements an HLA 1.3 ancillary service begins with the
    // name of the service.

    RTI_bool objectClassExists(RtiObjectClassHandle handle) const;
    RTI_bool objectClassExists(std::string_view name) const;
    RTI_bool interactionClassExists(RtiInteractionClassHandle handle) const;
    RTI_bool interactionClassExists(std::string_view name) const;

    /// The record of a handle, or null.
    RtiFedSpace *find(RtiSpaceHandle handle) const;
    RtiFedInteractionClass *find(RtiInteractionClassHandle handle) const;
    RtiFedObjectClass *find(RtiObjectClassHandle handle) const;

    /// Get Object Class Handle. Throws RTI::NameNotFound.
    RtiObjectClassHandle getObjectClassHandle(std::string_view name) const;
    /// Get Object Class Name: the full dotted name. Throws RTI::ObjectClassNotDefined.
    std::string getObjectClassName(RtiObjectClassHandle handle) const;
    /// Get Attribute Handle, including inherited attributes. Throws RTI::ObjectClassNotDefined, RTI::NameNotFound.
    RtiAttributeHandle getAttributeHandle(std::string_view name, RtiObjectClassHandle objectClass) const;
    /// Get Attribute Name, including inherited attributes. Throws RTI::ObjectClassNotDefined, RTI::AttributeNotDefined.
    std::string getAttributeName(RtiAttributeHandle handle, RtiObjectClassHandle objectClass) const;
    /// Get Interaction Class Handle. Throws RTI::NameNotFound.
    RtiInteractionClassHandle getInteractionClassHandle(std::string_view name) const;
    /// Get Interaction Class Name: the full dotted name. Throws RTI::InteractionClassNotDefined.
    std::string getInteractionClassName(RtiInteractionClassHandle handle) const;
    /// Get Parameter Handle, including inherited parameters. Throws RTI::InteractionClassNotDefined, RTI::NameNotFound.
    RtiParameterHandle getParameterHandle(std::string_view name, RtiInteractionClassHandle interactionClass) const;
    /// Get Parameter Name, including inherited parameters. Throws RTI::InteractionClassNotDefined,
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
    /// Get Attribute Routing Space Handle; 0 for an attribute without a space. Throws RTI::ObjectClassNotDefined,
    /// RTI::AttributeNotDefined.
    RtiSpaceHandle getAttributeRoutingSpaceHandle(RtiAttributeHandle attribute, RtiObjectClassHandle objectClass) const;
    /// Get Interaction Routing Space Handle; 0 for a class without a space. Throws RTI::InteractionClassNotDefined.
    RtiSpaceHandle getInteractionRoutingSpaceHandle(RtiInteractionClassHandle interactionClass) const;

    /// Get Transportation Handle: 2 for "RTI_RELIABLE" or "RELIABLE", 1 for "RTI_BEST_EFFORT" or "BEST_EFFORT", in any
    /// letter case. Throws RTI::NameNotFound.
    RtiTransportationHandle getTransportationHandle(std::string_view name) const;
    /// Get Transportation Name: the long one. Throws RTI::InvalidTransportationHandle.
    std::string getTransportationName(RtiTransportationHandle handle) const;
    /// Get Ordering Handle: 2 for "RTI_TIME_STAMP_ORDERING" or "TIMESTAMP", 1 for "RTI_RECEIVE_ORDERING" or "RECEIVE",
    /// in any letter case. Throws RTI::NameNotFound.
    RtiOrderingHandle getOrderingHandle(std::string_view name) const;
    /// Get Ordering Name: the long one. Throws RTI::InvalidOrderingHandle.
    std::string getOrderingName(RtiOrderingHandle handle) const;

    // ---- Handle sets and derivation.

    std::set<RtiObjectClassHandle> getObjectClassHandleSet() const;
    /// The handles of all attributes that classes of the database declare.
    std::set<RtiAttributeHandle> getAttributeHandleSet() const;
    std::set<RtiInteractionClassHandle> getInteractionClassHandleSet() const;
    std::set<RtiSpaceHandle> getRoutingSpaceHandleSet() const;

    /// The class that declares the attribute, or 0. `objectClass` is ignored.
    RtiObjectClassHandle getRealObjectClassHandle(RtiObjectClassHandle objectClass, RtiAttributeHandle attribute) const;

    /// Adds the class and all its descendants to `derived`, or nothing if the class is unknown.
    void getDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                        std::set<RtiObjectClassHandle> &derived) const;
    void getDerivedInteractionClassHandleSet(RtiInteractionClassHandle interactionClass,
                                             std::set<RtiInteractionClassHandle> &derived) const;
    /// Despite its name: if the class has no children, adds the class itself; otherwise adds all its descendants,
    /// including those with children, but not the class.
    void getChildlessDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                 std::set<RtiObjectClassHandle> &derived) const;

    /// Despite its name: the handles of the *parameters* of the interaction class, including inherited ones; none for
    /// an unknown class.
    std::set<RtiParameterHandle> getAvailableInteractionClassHandles(RtiInteractionClassHandle interactionClass) const;

    /// The attributes of the class, including inherited ones. The set is made by the first call for a class and kept.
    /// It is owned by the class; do not change or free it. The number is ignored. Throws RTI::ObjectClassNotDefined for
    /// an unknown class or a null pointer.
    std::set<RtiFedAttribute *> *getAvailableFedAttributes(const RtiFedObjectClass *objectClass, int ignored) const;
    std::set<RtiFedAttribute *> *getAvailableFedAttributes(const RtiObjectClassHandle &objectClass, int ignored) const;
    RtiAttributeHandleSet *getAvailableAttributeHandles(const RtiFedObjectClass *objectClass, int ignored) const;
    RtiAttributeHandleSet *getAvailableAttributeHandles(const RtiObjectClassHandle &objectClass, int ignored) const;

    /// Whether the class declares or inherits each of the attributes; true for an empty set. Throws
    /// RTI::ObjectClassNotDefined.
    RTI_bool verifyAvailableAttributes(const RtiObjectClassHandle &objectClass, RtiAttributeHandleSet attributes) const;

private:
    static const RtiFedField<RtiFedDatabase> _fields[14];

    // Like the public add operations, but without a string for each name. `last` is a hint where to
    // search for the superclass: the class that was added before, or null.
    friend class RtiFedDatabaseCodegen;
    RtiFedObjectClass *addObjectClass(std::string_view name, RtiFedObjectClass *last);
    void addObjectClassAttribute(RtiFedObjectClass *objectClass, const RtiFedName &name,
                                 const RtiTransportationHandle &transportation, const RtiOrderingHandle &ordering,
                                 const RtiSpaceHandle &space);
    RtiFedInteractionClass *addInteractionClass(std::string_view name, const RtiTransportationHandle &transportation,
                                                const RtiOrderingHandle &ordering, const RtiSpaceHandle &space,
                                                RtiFedInteractionClass *last);
    struct ObjectClassKind;
    struct InteractionClassKind;
    template <class Kind, class... Defaults>
    typename Kind::Node *addClass(std::string_view name, typename Kind::Node *last, const Defaults &...defaults);
    RtiFedSpace *insertSpace(std::unique_ptr<RtiFedSpace> space);
    template <class Handle>
    Handle requireUnused(const Handle &handle) const;

    void parse(std::FILE *file);
    /// Reports the reason on the error stream and throws RTI::ErrorReadingFED.
    [[noreturn]] void couldNotParse(const char *filePosition, const char *reasonPosition,
                                    const std::string &reason) const;

    void restoreContents(RtiFedImageReader &reader);
    void restoreSpaces(RtiFedImageReader &reader);
    void restoreAttributeClasses(RtiFedImageReader &reader);
    void clear();
    template <class Visit>
    void forEachCounter(Visit visit);

    RtiAttributeHandle findAttribute(const RtiFedName &name, const RtiObjectClassHandle &objectClass) const;

    static const RtiFedObjectClass &requireDefined(const RtiFedObjectClass *objectClass);
    RTI_bool verifyInSet(const RtiObjectClassHandle &objectClass, const RtiAttributeHandleSet &attributes) const;
    template <class Visit>
    void forEachAvailable(const RtiFedObjectClass &objectClass, Visit visit) const;

    std::string _fedName;
    std::string _fedVersion;
    RtiFedClassTree<RtiFedObjectClass> _objectClasses;
    RtiFedClassTree<RtiFedInteractionClass> _interactionClasses;
    RtiFedNameMap<RtiFedSpace *> _spaceNameMap;
    RtiFedHandleMap<RtiSpaceHandle, std::unique_ptr<RtiFedSpace>> _spaceHandleMap;
    RtiFedHandleMap<RtiAttributeHandle, unsigned long> _attributeObjectClassMap; // to the declaring class's handle
    // The last handle of each kind that was issued.
    RtiSpaceHandle _nextSpaceHandle;
    RtiObjectClassHandle _nextObjectClassHandle;
    RtiAttributeHandle _nextAttributeHandle;
    RtiInteractionClassHandle _nextInteractionClassHandle;
    RtiParameterHandle _nextParameterHandle;
    std::string _fileName;
    unsigned long _generation = 0; // increases whenever all records are freed; RtiFedDatabaseCodegen compares it
};
