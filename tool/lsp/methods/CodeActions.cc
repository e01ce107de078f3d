#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"
#include "tool/control/AllowComments.hh"
#include "tool/fix/Fixing.hh"
#include "tool/lsp/TextEdits.hh"
#include "tool/lsp/methods/Diagnostics.hh"
#include "tool/lsp/methods/Methods.hh"

#include <algorithm>

namespace {

/// The reason in a comment that allows a rule, which the author shall replace.
constexpr const char *kReason = "TODO: say why";

/// An action on the whole text.
struct SourceAction {
    const char *kind = "", *title = "";
    FixSelection selection;
};

const SourceAction &sourceAction(const std::string &kind) {
    static const SourceAction fixAll{"source.fixAll.rtifed", "Fix all that can be fixed safely", {}};
    static const SourceAction addMom{
        "source.addMom.rtifed", "Add what is missing of the MOM", {false, {&ruleOf(RuleId::momIncomplete)}}};
    return kind == addMom.kind ? addMom : fixAll;
}

bool touches(RtiFedSpan a, RtiFedSpan b) {
    return a.begin <= b.begin + b.length && b.begin <= a.begin + a.length;
}

/// Whether the client wants actions of this kind: all, unless it says which, and then those below them, too.
bool wants(const Params &params, const std::string &kind) {
    const auto only = params["context"].find("only");
    if (!only)
        return true;
    const std::vector<Params> kinds = only->items();
    return std::any_of(kinds.begin(), kinds.end(), [&](const Params &each) {
        const std::string wanted = each.string();
        return wanted.empty() || kind == wanted || beginsWith(kind, wanted + '.');
    });
}

std::string capitalized(const std::string &text) {
    return RtiStringUtility::toupper(text.substr(0, 1)) + text.substr(1);
}

class Actions {
public:
    Actions(const Session &session, const OpenDocument &document) : _session(session), _document(document) {}

    void addFix(const Finding &finding) {
        const std::string title = capitalized(finding.fix.description(_document.document().text()));
        Json action = make(title, finding, finding.fix.edits);
        if (finding.fix.isSafe)
            action["isPreferred"] = true;
        _actions.push_back(std::move(action));
    }

    void addAllow(const Finding &finding) {
        const AllowedText allowed = addAllowComments(_document.document().checker(), {finding}, kReason);
        if (allowed.numComments > 0)
            _actions.push_back(make("Allow " + std::string(finding.rule->id) + " here", finding,
                                    differences(_document.text().text(), allowed.text)));
    }

    /// Adds an action on the whole text if it would do something. Its edit takes longer than a client asks for actions,
    /// so one that can ask for it when it is wanted does.
    void addSourceAction(const SourceAction &source) {
        if (inputOf(_document).isImage())
            return;
        const std::vector<Finding> &findings = _document.document().findings();
        if (std::none_of(findings.begin(), findings.end(),
                         [&](const Finding &finding) { return source.selection.takes(finding); }))
            return;
        Json action = {{"title", source.title}, {"kind", source.kind}, {"data", {{"uri", _document.uri()}}}};
        if (!_session.client.resolvesCodeActions)
            action["edit"] = editOf(_session, _document, source);
        _actions.push_back(std::move(action));
    }

    static Json editOf(const Session &session, const OpenDocument &document, const SourceAction &source) {
        const Document &text = document.document();
        const FixedText fixed = withFixes(inputOf(document), text.settings(), source.selection);
        return workspaceEdit(session.client, document, differences(text.text(), fixed.text.text()));
    }

    /// The text as `rtifed fix` reads it. One that begins with a NUL byte would be a saved image there.
    static Input inputOf(const OpenDocument &document) { return {document.path(), document.text().text()}; }

    Json actions() && { return std::move(_actions); }

private:
    Json make(const std::string &title, const Finding &finding, const std::vector<Replacement> &edits) const {
        return {{"title", title},
                {"kind", "quickfix"},
                {"diagnostics", Json::array({diagnosticOf(_session, _document, finding)})},
                {"edit", workspaceEdit(_session.client, _document, edits)}};
    }

    const Session &_session;
    const OpenDocument &_document;
    Json _actions = Json::array();
};

} // namespace

Json codeActions(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const RtiFedSpan range = document.span(params["range"]);
    Actions actions(session, document);
    if (wants(params, "quickfix"))
        for (const Finding &finding : document.document().findings()) {
            if (finding.suppression || !touches(finding.span.value_or(RtiFedSpan()), range))
                continue;
            if (!finding.fix.empty())
                actions.addFix(finding);
            actions.addAllow(finding);
        }
    for (const char *kind : {"source.fixAll.rtifed", "source.addMom.rtifed"})
        if (wants(params, kind))
            actions.addSourceAction(sourceAction(kind));
    return std::move(actions).actions();
}

Json resolveCodeAction(Session &session, const Params &params) {
    Json action(params.value());
    if (const auto data = params.find("data")) {
        const std::string uri = (*data)["uri"].string();
        const OpenDocument *document = session.find(uri);
        if (!document)
            throw ProtocolError(ErrorCode::invalidParams, "the document " + inQuotes(uri, kTextLimit) + " is not open");
        if (Actions::inputOf(*document).isImage())
            throw ProtocolError(ErrorCode::requestFailed, "expected FED text, found a NUL byte");
        action["edit"] = Actions::editOf(session, *document, sourceAction(params["kind"].string()));
    }
    return action;
}
