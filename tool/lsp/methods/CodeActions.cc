#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"
#include "tool/control/AllowComments.hh"
#include "tool/lsp/TextEdits.hh"
#include "tool/lsp/methods/Diagnostics.hh"
#include "tool/lsp/methods/Methods.hh"

#include <algorithm>

namespace {

/// The reason in a comment that allows a rule, which the author shall replace.
constexpr const char *kReason = "TODO: say why";

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
        return wanted.empty() || kind == wanted || kind.compare(0, wanted.size() + 1, wanted + '.') == 0;
    });
}

std::string titleOf(const OpenDocument &document, const Fix &fix) {
    std::string title = fix.description(document.document().text());
    title[0] = static_cast<char>(RtiStringUtility::toupper(title[0]));
    return title;
}

class Actions {
public:
    Actions(const Session &session, const OpenDocument &document) : _session(session), _document(document) {}

    void addFix(const Finding &finding) {
        Json action = make(titleOf(_document, finding.fix), finding, finding.fix.edits);
        action["isPreferred"] = finding.fix.isSafe;
        _actions.push_back(std::move(action));
    }

    void addAllow(const Finding &finding) {
        const AllowedText allowed = addAllowComments(_document.document().checker(), {finding}, kReason);
        if (allowed.numComments > 0)
            _actions.push_back(make("Allow " + std::string(finding.rule->id) + " here", finding,
                                    differences(_document.text().text(), allowed.text)));
    }

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
    if (!wants(params, "quickfix"))
        return Json::array();
    for (const Finding &finding : document.document().findings()) {
        if (finding.suppression || !touches(finding.span.value_or(RtiFedSpan()), range))
            continue;
        if (!finding.fix.empty())
            actions.addFix(finding);
        actions.addAllow(finding);
    }
    return std::move(actions).actions();
}
