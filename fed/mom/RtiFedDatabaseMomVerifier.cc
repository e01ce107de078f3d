#include "fed/mom/RtiFedDatabaseMomVerifier.hh"

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedReport.hh"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace {

using Verifier = RtiFedDatabaseMomVerifier;

// The message about this class lacks two words that all others have: callers compare it whole.
constexpr std::string_view kReportInteractionsSent = "Manager.Federate.Report.ReportInteractionsSent";

struct Row {
    const char *className = nullptr;
    std::initializer_list<const char *> members;
};

// In the order in which the classes are checked. docs/fed-format.md lists them too; a test compares both.

const Row kObjectClasses[] = {
    {"Manager", {}},
    {"Manager.Federate",
     {"FederateHandle",
      "FederateType",
      "FederateHost",
      "RTIversion",
      "FEDid",
      "TimeConstrained",
      "TimeRegulating",
      "AsynchronousDelivery",
      "Federatestate",
      "TimeManagerState",
      "FederateTime",
      "Lookahead",
      "LBTS",
      "MinNextEventTime",
      "ROlength",
      "TSOlength",
      "ReflectionsReceived",
      "UpdatesSent",
      "InteractionsReceived",
      "InteractionsSent",
      "ObjectsOwned",
      "ObjectsUpdated",
      "ObjectsReflected"}},
    {"Manager.Federation",
     {"FederationName", "FederatesInFederation", "RTIversion", "FEDid", "LastSaveName", "LastSaveTime", "NextSaveName",
      "NextSaveTime"}},
};

const Row kInteractionClasses[] = {
    {"Manager", {}},
    {"Manager.Federate", {"Federate"}},
    {"Manager.Federate.Adjust", {}},
    {"Manager.Federate.Adjust.SetTiming", {"ReportPeriod"}},
    {"Manager.Federate.Adjust.ModifyAttributeState", {"ObjectInstance", "Attribute", "AttributeState"}},
    {"Manager.Federate.Adjust.SetServiceReporting", {"ReportingState"}},
    {"Manager.Federate.Adjust.SetExceptionLogging", {"LoggingState"}},
    {"Manager.Federate.Request", {}},
    {"Manager.Federate.Request.RequestPublications", {}},
    {"Manager.Federate.Request.RequestSubscriptions", {}},
    {"Manager.Federate.Request.RequestObjectsOwned", {}},
    {"Manager.Federate.Request.RequestObjectsUpdated", {}},
    {"Manager.Federate.Request.RequestObjectsReflected", {}},
    {"Manager.Federate.Request.RequestUpdatesSent", {}},
    {"Manager.Federate.Request.RequestInteractionsSent", {}},
    {"Manager.Federate.Request.RequestReflectionsReceived", {}},
    {"Manager.Federate.Request.RequestInteractionsReceived", {}},
    {"Manager.Federate.Request.RequestObjectInformation", {"ObjectInstance"}},
    {"Manager.Federate.Report", {}},
    {"Manager.Federate.Report.ReportObjectPublication", {"NumberOfClasses", "ObjectClass", "AttributeList"}},
    {"Manager.Federate.Report.ReportInteractionPublication", {"InteractionClassList"}},
    {"Manager.Federate.Report.ReportObjectSubscription", {"NumberOfClasses", "ObjectClass", "AttributeList", "Active"}},
    {"Manager.Federate.Report.ReportInteractionSubscription", {"InteractionClassList"}},
    {"Manager.Federate.Report.ReportObjectsOwned", {"ObjectCounts"}},
    {"Manager.Federate.Report.ReportObjectsUpdated", {"ObjectCounts"}},
    {"Manager.Federate.Report.ReportObjectsReflected", {"ObjectCounts"}},
    {"Manager.Federate.Report.ReportUpdatesSent", {"TransportationType", "UpdateCounts"}},
    {"Manager.Federate.Report.ReportReflectionsReceived", {"TransportationType", "ReflectCounts"}},
    {"Manager.Federate.Report.ReportInteractionsSent", {"TransportationType", "InteractionCounts"}},
    {"Manager.Federate.Report.ReportInteractionsReceived", {"TransportationType", "InteractionCounts"}},
    {"Manager.Federate.Report.ReportObjectInformation",
     {"ObjectInstance", "OwnedAttributeList", "RegisteredClass", "KnownClass"}},
    {"Manager.Federate.Report.Alert", {"AlertSeverity", "AlertDescription", "AlertID"}},
    {"Manager.Federate.Report.ReportServiceInvocation",
     {"Service", "Initiator", "SuccessIndicator", "SuppliedArgument1", "SuppliedArgument2", "SuppliedArgument3",
      "SuppliedArgument4", "SuppliedArgument5", "ReturnedArgument", "ExceptionDescription", "ExceptionID"}},
    {"Manager.Federate.Service", {}},
    {"Manager.Federate.Service.ResignFederationExecution", {"ResignAction"}},
    {"Manager.Federate.Service.SynchronizationPointAchieved", {"Label"}},
    {"Manager.Federate.Service.FederateSaveBegun", {}},
    {"Manager.Federate.Service.FederateSaveComplete", {"SuccessIndicator"}},
    {"Manager.Federate.Service.FederateRestoreComplete", {"SuccessIndicator"}},
    {"Manager.Federate.Service.PublishObjectClass", {"ObjectClass", "AttributeList"}},
    {"Manager.Federate.Service.UnpublishObjectClass", {"ObjectClass"}},
    {"Manager.Federate.Service.PublishInteractionClass", {"InteractionClass"}},
    {"Manager.Federate.Service.UnpublishInteractionClass", {"InteractionClass"}},
    {"Manager.Federate.Service.SubscribeObjectClassAttributes", {"ObjectClass", "AttributeList", "Active"}},
    {"Manager.Federate.Service.UnsubscribeObjectClass", {"ObjectClass"}},
    {"Manager.Federate.Service.SubscribeInteractionClass", {"InteractionClass", "Active"}},
    {"Manager.Federate.Service.UnsubscribeInteractionClass", {"InteractionClass"}},
    {"Manager.Federate.Service.DeleteObjectInstance", {"ObjectInstance", "FederationTime", "Tag"}},
    {"Manager.Federate.Service.LocalDeleteObjectInstance", {"ObjectInstance"}},
    {"Manager.Federate.Service.ChangeAttributeTransportationType",
     {"ObjectInstance", "AttributeList", "TransportationType"}},
    {"Manager.Federate.Service.ChangeAttributeOrderType", {"ObjectInstance", "AttributeList", "OrderingType"}},
    {"Manager.Federate.Service.ChangeInteractionTransportationType", {"InteractionClass", "TransportationType"}},
    {"Manager.Federate.Service.ChangeInteractionOrderType", {"InteractionClass", "OrderingType"}},
    {"Manager.Federate.Service.UnconditionalAttributeOwnershipDivestiture", {"ObjectInstance", "AttributeList"}},
    {"Manager.Federate.Service.EnableTimeRegulation", {"FederationTime", "Lookahead"}},
    {"Manager.Federate.Service.DisableTimeRegulation", {}},
    {"Manager.Federate.Service.EnableTimeConstrained", {}},
    {"Manager.Federate.Service.DisableTimeConstrained", {}},
    {"Manager.Federate.Service.EnableAsynchronousDelivery", {}},
    {"Manager.Federate.Service.DisableAsynchronousDelivery", {}},
    {"Manager.Federate.Service.ModifyLookahead", {"Lookahead"}},
    {"Manager.Federate.Service.TimeAdvanceRequest", {"FederationTime"}},
    {"Manager.Federate.Service.TimeAdvanceRequestAvailable", {"FederationTime"}},
    {"Manager.Federate.Service.NextEventRequest", {"FederationTime"}},
    {"Manager.Federate.Service.NextEventRequestAvailable", {"FederationTime"}},
    {"Manager.Federate.Service.FlushQueueRequest", {"FederationTime"}},
};

/// Access to one of the two class trees.
struct ObjectClasses {
    static constexpr const char *kind = "object";
    static constexpr const char *member = " object attribute: ";
    static constexpr const auto &rows = kObjectClasses;

    static bool exists(const RtiFedDatabase &db, const std::string &name) { return db.objectClassExists(name); }
    static auto handleOf(const RtiFedDatabase &db, const std::string &name) { return db.getObjectClassHandle(name); }
    static void find(const RtiFedDatabase &db, const std::string &attribute, RtiObjectClassHandle objectClass) {
        db.getAttributeHandle(attribute, objectClass);
    }
};

struct InteractionClasses {
    static constexpr const char *kind = "interaction";
    static constexpr const char *member = " interaction parameter: ";
    static constexpr const auto &rows = kInteractionClasses;

    static bool exists(const RtiFedDatabase &db, const std::string &name) { return db.interactionClassExists(name); }
    static auto handleOf(const RtiFedDatabase &db, const std::string &name) {
        return db.getInteractionClassHandle(name);
    }
    static void find(const RtiFedDatabase &db, const std::string &parameter, RtiInteractionClassHandle interaction) {
        db.getParameterHandle(parameter, interaction);
    }
};

template <class Tree, class Handle>
bool hasMember(const RtiFedDatabase &db, const std::string &member, Handle handle) {
    try {
        Tree::find(db, member, handle);
        return true;
    } catch (const RTI::NameNotFound &) {
        return false;
    }
}

template <class Tree>
RTI_bool verify(const RtiFedDatabase &db, std::string &message) {
    using Handle = decltype(Tree::handleOf(db, std::string()));
    const std::string classIs = std::string(Tree::kind) + " class: ";
    for (const Row &row : Tree::rows) {
        if (Tree::exists(db, RtiFedName::upper(row.className)))
            continue;
        Verifier::string_append(message, classIs + row.className);
        if (std::string_view(row.className) != kReportInteractionsSent)
            Verifier::string_append(message, " doesn't exist");
        return RTI_false;
    }

    std::multimap<std::string, std::string> required;
    std::map<std::string, Handle> handles;
    for (const Row &row : Tree::rows) {
        const std::string className = RtiFedName::upper(row.className);
        handles.emplace(className, Tree::handleOf(db, className));
        if (row.members.size() == 0)
            Verifier::insert_into_map(required, className, "");
        for (const char *member : row.members)
            Verifier::insert_into_map(required, className, member);
    }

    for (const auto &[className, member] : required) {
        const auto handle = handles.find(className);
        // unreached in this function: both come from the same rows
        if (handle == handles.end()) {
            rtiFedReport(RTI_G_high,
                         "\"RtiFedDatabaseMomVerifier\", line 125: YIKES! Unexpected classname: " + className);
            continue;
        }
        if (member.empty() || hasMember<Tree>(db, member, handle->second))
            continue;
        Verifier::string_append(message, classIs + className + Tree::member + member);
        return RTI_false;
    }
    return RTI_true;
}

template <class Tree>
std::vector<Verifier::Requirement> missing(const RtiFedDatabase &db) {
    std::vector<Verifier::Requirement> all;
    for (const Row &row : Tree::rows) {
        const bool exists = Tree::exists(db, row.className);
        Verifier::Requirement lacking{row.className, !exists, {}};
        for (const char *member : row.members)
            if (!exists || !hasMember<Tree>(db, member, Tree::handleOf(db, row.className)))
                lacking.members.emplace_back(member);
        if (!exists || !lacking.members.empty())
            all.push_back(std::move(lacking));
    }
    return all;
}

} // namespace

RTI_bool RtiFedDatabaseMomVerifier::verifyMomObjectClasses(const RtiFedDatabase &db, std::string &message) {
    return verify<ObjectClasses>(db, message);
}

RTI_bool RtiFedDatabaseMomVerifier::verifyMomInteractionClasses(const RtiFedDatabase &db, std::string &message) {
    return verify<InteractionClasses>(db, message);
}

std::vector<RtiFedDatabaseMomVerifier::Requirement>
RtiFedDatabaseMomVerifier::missingObjectClasses(const RtiFedDatabase &db) {
    return missing<ObjectClasses>(db);
}

std::vector<RtiFedDatabaseMomVerifier::Requirement>
RtiFedDatabaseMomVerifier::missingInteractionClasses(const RtiFedDatabase &db) {
    return missing<InteractionClasses>(db);
}

void RtiFedDatabaseMomVerifier::string_append(std::string &message, const char *text) {
    message += text;
}

void RtiFedDatabaseMomVerifier::string_append(std::string &message, const std::string &text) {
    message += text;
}

void RtiFedDatabaseMomVerifier::insert_into_map(std::multimap<std::string, std::string> &required,
                                                const std::string &className, const std::string &memberName) {
    required.emplace(className, memberName);
}
