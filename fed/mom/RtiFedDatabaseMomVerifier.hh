#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <map>
#include <string>
#include <vector>

class RtiFedDatabase;

/// Checks that a database has the complete Management Object Model (MOM) of HLA 1.3: the classes, attributes and
/// parameters through which the RTI reports on the federation and is controlled. It has no state.
///
/// Threads: every function may run on any number of threads at once.
class RTIFED_EXPORT RtiFedDatabaseMomVerifier {
public:
    /// What one class of the MOM lacks.
    struct Requirement {
        std::string className;            ///< Its dotted name without the root.
        bool classMissing;                ///< Whether the class is missing; then all its members are listed.
        std::vector<std::string> members; ///< The members that are missing.
    };

    /// Whether every object class of the MOM exists and declares or inherits its attributes. If not, a text about the
    /// first that is missing is appended to `message`, without a separator.
    static RTI_bool verifyMomObjectClasses(const RtiFedDatabase &db, std::string &message);
    /// The same for interaction classes and their parameters.
    static RTI_bool verifyMomInteractionClasses(const RtiFedDatabase &db, std::string &message);

    /// Everything that is missing; empty if and only if the verification succeeds.
    static std::vector<Requirement> missingObjectClasses(const RtiFedDatabase &db);
    static std::vector<Requirement> missingInteractionClasses(const RtiFedDatabase &db);

    static void string_append(std::string &message, const char *text);
    static void string_append(std::string &message, const std::string &text);
    /// Adds a required member to its class. A class without members has one empty member.
    static void insert_into_map(std::multimap<std::string, std::string> &required, const std::string &className,
                                const std::string &memberName);
};
