#include "tool/language/words/MomNames.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/language/words/Clauses.hh"
#include "tool/model/MomText.hh"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char *kRtiPrivate = "RTIprivate", *kPrivilege = "privilegeToDelete";
constexpr const char *kService = "Manager.Federate.Service.";

struct Explanation {
    const char *path; ///< Without the root; empty for the root.
    const char *text;
};

// clang-format off
constexpr Explanation kObjectClasses[] = {
    {"", "The superclass of all object classes. Its attribute privilegeToDelete belongs to the federate that may delete "
         "an object."},
    {"RTIprivate", "Reserved for the RTI; federates do not use it."},
    {"Manager", "The object classes of the Management Object Model (MOM), by which the RTI describes the federation."},
    {"Manager.Federate", "The RTI has one object of this class for each joined federate, and updates it."},
    {"Manager.Federation", "The RTI has one object of this class for the federation execution."},
};

constexpr Explanation kInteractionClasses[] = {
    {"", "The superclass of all interaction classes."},
    {"RTIprivate", "Reserved for the RTI; federates do not use it."},
    {"Manager", "The interaction classes of the Management Object Model (MOM), by which federates observe and control "
                "each other through the RTI."},
    {"Manager.Federate", "The interactions that concern one federate, which its parameter Federate names."},
    {"Manager.Federate.Adjust", "Changes how the RTI treats the federate."},
    {"Manager.Federate.Adjust.SetTiming", "Sets how often the RTI updates the MOM object of the federate."},
    {"Manager.Federate.Adjust.ModifyAttributeState", "Changes whether the federate owns an attribute of an object."},
    {"Manager.Federate.Adjust.SetServiceReporting", "Turns reports of each service call of the federate on or off."},
    {"Manager.Federate.Adjust.SetExceptionLogging", "Turns logging of the federate's exceptions on or off."},
    {"Manager.Federate.Request", "Asks the RTI for a report about the federate."},
    {"Manager.Federate.Request.RequestPublications", "Asks what the federate publishes."},
    {"Manager.Federate.Request.RequestSubscriptions", "Asks what the federate subscribes to."},
    {"Manager.Federate.Request.RequestObjectsOwned", "Asks how many objects of each class the federate owns."},
    {"Manager.Federate.Request.RequestObjectsUpdated", "Asks how many objects of each class the federate has updated."},
    {"Manager.Federate.Request.RequestObjectsReflected",
     "Asks how many objects of each class the federate has received updates of."},
    {"Manager.Federate.Request.RequestUpdatesSent", "Asks how many updates the federate has sent."},
    {"Manager.Federate.Request.RequestInteractionsSent", "Asks how many interactions the federate has sent."},
    {"Manager.Federate.Request.RequestReflectionsReceived", "Asks how many updates the federate has received."},
    {"Manager.Federate.Request.RequestInteractionsReceived", "Asks how many interactions the federate has received."},
    {"Manager.Federate.Request.RequestObjectInformation", "Asks what the federate knows of an object."},
    {"Manager.Federate.Report", "The RTI's reports about the federate."},
    {"Manager.Federate.Report.ReportObjectPublication", "An object class that the federate publishes."},
    {"Manager.Federate.Report.ReportInteractionPublication", "The interaction classes that the federate publishes."},
    {"Manager.Federate.Report.ReportObjectSubscription", "An object class that the federate subscribes to."},
    {"Manager.Federate.Report.ReportInteractionSubscription",
     "The interaction classes that the federate subscribes to."},
    {"Manager.Federate.Report.ReportObjectsOwned", "The number of objects of each class that the federate owns."},
    {"Manager.Federate.Report.ReportObjectsUpdated",
     "The number of objects of each class that the federate has updated."},
    {"Manager.Federate.Report.ReportObjectsReflected",
     "The number of objects of each class that the federate has received updates of."},
    {"Manager.Federate.Report.ReportUpdatesSent", "The number of updates of each class that the federate has sent."},
    {"Manager.Federate.Report.ReportReflectionsReceived",
     "The number of updates of each class that the federate has received."},
    {"Manager.Federate.Report.ReportInteractionsSent",
     "The number of interactions of each class that the federate has sent."},
    {"Manager.Federate.Report.ReportInteractionsReceived",
     "The number of interactions of each class that the federate has received."},
    {"Manager.Federate.Report.ReportObjectInformation",
     "What the federate knows of an object: its class, and the attributes that it owns."},
    {"Manager.Federate.Report.Alert", "An exception that the federate was given."},
    {"Manager.Federate.Report.ReportServiceInvocation",
     "A service call of the federate, with its arguments and its result."},
    {"Manager.Federate.Service", "Calls a service on behalf of the federate."},
};
// clang-format on

const char *explanationOf(const TreeKind &tree, const std::string &path) {
    const bool ofObjects = &tree == &kObjectTree;
    const auto *begin = ofObjects ? std::begin(kObjectClasses) : std::begin(kInteractionClasses);
    const auto *end = ofObjects ? std::end(kObjectClasses) : std::end(kInteractionClasses);
    const auto *found = std::find_if(begin, end, [&path](const Explanation &e) { return path == e.path; });
    return found != end ? found->text : "Calls the service of this name on behalf of the federate.";
}

/// Reads the clauses of the MOM, in which each class comes before what is in it.
MomClass readClass(const SyntaxTree &text, SyntaxTree::Index clause, const TreeKind &tree, const std::string &owner) {
    const auto nameOf = [&text](SyntaxTree::Index named) { return std::string(text.bytes(text.words(named)[1])); };
    MomClass read{nameOf(clause), owner + nameOf(clause), "", {}, {}};
    read.explanation = explanationOf(tree, read.path);
    for (SyntaxTree::Index in = clause + 1; in < text.clauses()[clause].end; in = text.clauses()[in].end) {
        if (text.keyword(in) == formOf(ClauseKind::objectClass).keyword)
            read.children.push_back(readClass(text, in, tree, read.path + '.'));
        else
            read.members.push_back(nameOf(in));
    }
    return read;
}

MomClass readTree(const TreeKind &tree) {
    const RtiFedParser parser(momClass(tree, "Manager"));
    MomClass root{tree.root, "", explanationOf(tree, ""), {}, {}};
    root.children = {{kRtiPrivate, kRtiPrivate, explanationOf(tree, kRtiPrivate), {}, {}},
                     readClass(SyntaxTree(parser), 0, tree, "")};
    if (&tree == &kObjectTree)
        root.members = {kPrivilege};
    return root;
}

} // namespace

const MomClass *MomClass::child(std::string_view childName) const {
    const auto found = std::find_if(children.begin(), children.end(), [childName](const MomClass &other) {
        return RtiFedName::equal(other.name, childName);
    });
    return found == children.end() ? nullptr : &*found;
}

bool MomClass::hasMember(std::string_view member) const {
    return std::any_of(members.begin(), members.end(),
                       [member](const std::string &other) { return RtiFedName::equal(other, member); });
}

const MomClass &momRoot(const TreeKind &tree) {
    static const MomClass objects = readTree(kObjectTree), interactions = readTree(kInteractionTree);
    return &tree == &kObjectTree ? objects : interactions;
}
