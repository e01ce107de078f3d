#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <map>
#include <string>
#include <vector>

class RtiFedDatabase;

/// Checks that a database holds the Management Object Model (MOM) of HLA 1.3: the classes, attributes and parameters by
/// which the RTI reports on the federation and is steered. It keeps no state.
///
/// Threads: every function may run on any number of threads at once.
class RTIFED_EXPORT RtiFedDatabaseMomVerifier {
public:
    /// What is missing of one class of the MOM.
    struct Requirement {
        std::string className;            ///< Its dotted name without the root.
        bool classMissing;                ///< The class is not there; then all its members are listed.
        std::vector<std::string> members; ///< The members that are missing.
    };

    /// Whether every object class of the MOM is there, with its attributes, inherited ones counting. If not, the first
    /// thing missing is appended to `message`; what it held before stays, and nothing is put between.
    static RTI_bool verifyMomObjectClasses(const RtiFedDatabase &db, std::string &message);
    /// The same for interaction classes and their parameters.
    static RTI_bool verifyMomInteractionClasses(const RtiFedDatabase &db, std::string &message);

    /// All that is missing. Empty exactly if the verification above finds nothing.
    static std::vector<Requirement> missingObjectClasses(const RtiFedDatabase &db);
    static std::vector<Requirement> missingInteractionClasses(const RtiFedDatabase &db);

    static void string_append(std::string &message, const char *text);
    static void string_append(std::string &message, const std::string &text);
    /// Enters a required member under its class; a class that requires none has one empty member.
    static void insert_into_map(std::multimap<std::string, std::string> &required, const std::string &className,
                                const std::string &memberName);
};
