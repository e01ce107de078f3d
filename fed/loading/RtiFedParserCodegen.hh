#pragma once

#include "fed/RtiFedExport.hh"

#include <string>
#include <string_view>

/// The callbacks through which the FED parser delivers the declarations of a file. A derived class overrides what it
/// wants to know; each body here prints the call as a line of source text to standard output.
///
/// Sequence: the federation and the version once each, before all else; each space followed by its dimensions; each
/// object class, after its superclass, followed by its own attributes; each interaction class likewise, followed by its
/// own parameters. So a member belongs to the class, and a dimension to the space, that was delivered last.
///
/// An exception thrown by a callback ends the parse and passes through the parser unchanged.
/// Threads: callbacks run on the thread that called the parser, one at a time.
class RTIFED_EXPORT RtiFedParserCodegen {
public:
    virtual ~RtiFedParserCodegen();

    /// The name of the federation.
    virtual void setFederate(std::string name);
    /// The text of the FED version, which is not judged.
    virtual void setFederateVersion(std::string version);
    virtual void addSpace(std::string name);
    virtual void addDimension(std::string name);
    /// `name` is the class's full dotted name from its root, such as ObjectRoot.Manager.Federate.
    virtual void addObjectClass(std::string name);
    /// Transportation, ordering and space are as written in the file; the space is empty if the attribute names none.
    virtual void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                         std::string space);
    /// As addObjectClass, with the class's transportation, ordering and space as for an attribute.
    virtual void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                     std::string space);
    virtual void addParameter(std::string name);

    /// The parser delivers classes and members through these four. Each body here calls the callback above, so that who
    /// overrides that need not know of them; to override these instead spares the strings. A view holds during the
    /// call. The numbers say how many members follow.
    virtual void declareObjectClass(std::string_view name, std::size_t numAttributes);
    virtual void declareObjectClassAttribute(std::string_view name, std::string_view transportation,
                                             std::string_view ordering, std::string_view space);
    virtual void declareInteractionClass(std::string_view name, std::string_view transportation,
                                         std::string_view ordering, std::string_view space, std::size_t numParameters);
    virtual void declareParameter(std::string_view name);
};
