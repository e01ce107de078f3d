#pragma once

#include "fed/RtiFedParameter.hh"
#include "fed/storage/RtiFedClassNode.hh"

/// An interaction class: a node of the interaction class tree, with its transportation, ordering and routing space and
/// the parameters declared on it. The space handle is 0 if the class has no space. Unlike an object class, it lists its
/// children but not its other descendants.
///
/// It owns its parameters and the subclasses that its own addInteractionClass made.
/// Its image is name, subclasses (each whole, by ascending handle), parameters, children, transportation, ordering,
/// space, handle, parent's handle.
/// Lifetime: a returned record lives as long as the class.
/// Threads: const members on any number of threads at once; all others need exclusive access.
class RTIFED_EXPORT RtiFedInteractionClass
    : public RtiFedClassNode<RtiFedInteractionClass, RtiInteractionClassHandle, RtiFedParameter> {
public:
    static constexpr const char *_thisClassName = "RtiFedInteractionClass";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = kNumSharedValues + 5; ///< The shared part and five handles.
    static constexpr const char *_membersAre = "parameters";
    static constexpr std::string_view _rootPrefix = "INTERACTIONROOT.";

    /// `parent` is null for a root and is not owned. Throws RTI::RTIinternalError beyond kMaxClassNesting levels.
    RtiFedInteractionClass(RtiInteractionClassHandle handle, std::string name, RtiFedInteractionClass *parent,
                           RtiTransportationHandle transport, RtiOrderingHandle ordering, RtiSpaceHandle space);
    RtiFedInteractionClass(RtiInteractionClassHandle handle, RtiFedLetters name, RtiFedInteractionClass *parent,
                           RtiTransportationHandle transport, RtiOrderingHandle ordering, RtiSpaceHandle space);
    /// Restores itself from the buffer. Throws what restore throws.
    explicit RtiFedInteractionClass(RtiBuffer &buffer);

    /// Makes a subclass that this node owns, and returns it. It inherits no transportation, ordering or space. It is
    /// not added to the children: the database does that itself. Throws like the constructor.
    RtiFedInteractionClass *addInteractionClass(RtiInteractionClassHandle handle, std::string name,
                                                RtiTransportationHandle transport, RtiOrderingHandle ordering,
                                                RtiSpaceHandle space);

    /// Declares a parameter and returns it. Throws RTI::ErrorReadingFED if this class or an ancestor declares a
    /// parameter of that name, in any letter case.
    RtiFedParameter *addParameter(RtiParameterHandle handle, std::string name);
    RtiFedParameter *addParameter(const RtiParameterHandle &handle, const RtiFedName &name);

    /// The handle of a parameter declared here, by its name in any letter case. Throws RTI::NameNotFound.
    RtiParameterHandle getParameterHandle(std::string_view name) const;
    /// The name of a parameter declared here, as declared. Throws RTI::InteractionParameterNotDefined.
    std::string getParameterName(RtiParameterHandle handle) const;
    /// Whether this class itself declares the parameter.
    RTI_bool parameterExists(std::string_view name) const;
    /// Whether an ancestor declares it.
    RTI_bool parameterIsInherited(std::string_view name) const;
    /// A parameter declared here, by name in any letter case or by handle; null if there is none.
    RtiFedParameter *findParameter(std::string_view name) const;
    RtiFedParameter *find(RtiParameterHandle handle) const;
    /// The parameter declared here at `index`, from 0. Throws RTI::RTIinternalError.
    RtiFedParameter *getParameter(unsigned long index) const;
    unsigned long getNumberOfParameters() const;

    RtiTransportationHandle getDefaultTransport() const { return _defaultTransport; }
    RtiOrderingHandle getDefaultOrdering() const { return _defaultOrdering; }
    RtiSpaceHandle getDefaultSpace() const { return _defaultSpace; }
    void setDefaultSpace(RtiSpaceHandle space) { _defaultSpace = space; }

    /// Returns a 32-bit checksum over names, handles, defaults and parameters of this class and the subclasses it owns.
    /// Throws RTI::RTIinternalError if a handle does not fit into 32 bits.
    unsigned long getChecksum() const;

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    /// Frees what the class owned. Throws RtiBufferUnderflow, and RTI::RTIinternalError for a duplicate member name, a
    /// duplicate subclass handle, or subclasses beyond kMaxClassNesting levels. The class is then partly restored.
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares handles, defaults and the numbers of elements.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

private:
    friend RtiFedClassNode;
    friend RtiFedArena;
    friend RtiFedClassTree<RtiFedInteractionClass>;
    static const RtiFedField<RtiFedInteractionClass> _fields[10];
    static constexpr auto imageHandles();

    RtiFedInteractionClass() = default;
    explicit RtiFedInteractionClass(RtiFedLetters name) : RtiFedClassNode(name) {}
    void restoreAfterName(RtiFedImageReader &reader);

    RtiFedStoredHandle<RtiTransportationHandle> _defaultTransport;
    RtiFedStoredHandle<RtiOrderingHandle> _defaultOrdering;
    RtiFedStoredHandle<RtiSpaceHandle> _defaultSpace;
};
