#pragma once

#include "fed/RtiFedClassNesting.hh" // the nesting limit is part of this contract
#include "fed/RtiFedExport.hh"

#include <cstddef>
#include <string>
#include <string_view>

/// How much a file declares.
struct RtiFedDeclarationCounts {
    struct Classes {
        std::size_t number = 0;
        std::size_t numLetters = 0; ///< Of their full names.
        std::size_t numMembers = 0;
    };
    Classes objects, interactions;
};

/// The callbacks through which the FED parser delivers the declarations of a file. A derived class overrides those it
/// needs. The default bodies print each call as a line of source text to standard output.
///
/// Sequence: the federation and the version once each, before everything else; each space, followed by its dimensions;
/// each object class, after its superclass and followed by its own attributes; each interaction class, after its
/// superclass and followed by its own parameters. So a member belongs to the class, and a dimension to the space, that
/// was delivered last. Classes nest up to kMaxClassNesting levels.
///
/// An exception thrown by a callback ends the parse and passes through the parser unchanged.
/// Threads: callbacks run on the thread that called the parser, one at a time.
class RTIFED_EXPORT RtiFedParserCodegen {
public:
    virtual ~RtiFedParserCodegen();

    /// The name of the federation.
    virtual void setFederate(std::string name);
    /// The text of the FED version, which may be anything.
    virtual void setFederateVersion(std::string version);
    virtual void addSpace(std::string name);
    virtual void addDimension(std::string name);
    /// `name` is the class's full dotted name from its root, such as ObjectRoot.Manager.Federate.
    virtual void addObjectClass(std::string name);
    /// Transportation, ordering and space are spelled as in the file; the space is empty if the attribute names none.
    virtual void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                         std::string space);
    /// `name` as for addObjectClass; transportation, ordering and space as for an attribute.
    virtual void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                     std::string space);
    virtual void addParameter(std::string name);

    /// The parser that comes with rtifed delivers classes and members through these four. Their default bodies call the
    /// callbacks above, so most classes override only those; overriding these instead avoids a string for each name. A
    /// view is valid during the call only. The numbers are those of the members that follow.
    virtual void declareObjectClass(std::string_view name, std::size_t numAttributes);
    virtual void declareObjectClassAttribute(std::string_view name, std::string_view transportation,
                                             std::string_view ordering, std::string_view space);
    virtual void declareInteractionClass(std::string_view name, std::string_view transportation,
                                         std::string_view ordering, std::string_view space, std::size_t numParameters);
    virtual void declareParameter(std::string_view name);
    /// Called by that parser before all others, so that the receiver can allocate once what it needs. The default body
    /// does nothing.
    virtual void expectDeclarations(const RtiFedDeclarationCounts &counts);
};
