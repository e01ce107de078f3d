// What concerns all files of the workspace folders.

#include "infrastructure/RtiStringUtility.hh"
#include "tool/lsp/SymbolKind.hh"
#include "tool/lsp/Uri.hh"
#include "tool/lsp/methods/Diagnostics.hh"
#include "tool/lsp/methods/Methods.hh"

#include <chrono>
#include <map>

namespace {

constexpr std::size_t kMostSymbols = 1000; // in one answer; a person types more of the name then

/// Reports the progress of a request that has asked for it, at most ten times a second.
class ProgressReport {
public:
    ProgressReport(Session &session, const Params &params, const char *title) : _session(session) {
        if (const auto token = params.find("workDoneToken")) {
            _token = Json(token->value());
            send({{"kind", "begin"}, {"title", title}, {"cancellable", true}, {"percentage", 0}});
        }
    }
    ProgressReport(const ProgressReport &) = delete;
    ProgressReport &operator=(const ProgressReport &) = delete;
    ~ProgressReport() { // also of a request that fails
        try {
            send({{"kind", "end"}});
        } catch (const std::exception &) { // NOLINT(bugprone-empty-catch): the same output fails for the answer next
        }
    }

    void operator()(std::size_t done, std::size_t of) {
        const Clock::time_point now = Clock::now();
        // equivalent: no test measures time as exactly
        if (now - _last < std::chrono::milliseconds(100))
            return;
        _last = now; // equivalent: likewise
        send({{"kind", "report"},
              {"message", std::to_string(done) + " of " + std::to_string(of) + " files"},
              {"percentage", 100 * done / of}});
    }

private:
    using Clock = std::chrono::steady_clock;

    void send(Json value) {
        if (!_token.is_null())
            _session.notify("$/progress", {{"token", _token}, {"value", std::move(value)}});
    }

    Session &_session;
    Json _token;
    Clock::time_point _last = Clock::now();
};

bool contains(const std::string &name, const std::string &upperQuery) {
    return RtiStringUtility::toupper(name).find(upperQuery) != std::string::npos;
}

Json jsonOf(TextPosition position) {
    return {{"line", position.line}, {"character", position.character}};
}

Json jsonOf(const WorkspaceFile &file, const FileSymbol &symbol) {
    const Json range = {{"start", jsonOf(symbol.begin)}, {"end", jsonOf(symbol.end)}};
    Json json = {{"name", symbol.name},
                 {"kind", symbolKindOf(symbol.kind)},
                 {"location", {{"uri", file.uri}, {"range", range}}}};
    if (!symbol.container.empty())
        json["containerName"] = symbol.container;
    return json;
}

} // namespace

/// Matches any part of a name, in any letter case; with a dot in it, of the full name.
Json findSymbols(Session &session, const Params &params) {
    const std::string query = RtiStringUtility::toupper(params["query"].string());
    const bool isPath = query.find('.') != std::string::npos;
    Json symbols = Json::array();
    ProgressReport progress(session, params, "Reading FED files");
    session.files.forEach(session, std::ref(progress), [&](const WorkspaceFile &file) {
        for (const FileSymbol &symbol : file.symbols) {
            if (symbols.size() == kMostSymbols)
                return;
            if (contains(isPath ? symbol.container + '.' + symbol.name : symbol.name, query))
                symbols.push_back(jsonOf(file, symbol));
        }
    });
    return symbols;
}

Json diagnoseWorkspace(Session &session, const Params &params) {
    std::map<std::string, std::string> previous; // the names of the last diagnostics, by URI
    for (const Params &each : params["previousResultIds"].items())
        previous[each["uri"].string()] = each["value"].string();
    Json reports = Json::array();
    ProgressReport progress(session, params, "Checking FED files");
    session.files.forEach(session, std::ref(progress), [&](const WorkspaceFile &file) {
        Json report = diagnosticReport(file.diagnostics, previous[file.uri]);
        report["uri"] = file.uri;
        report["version"] = file.version ? Json(*file.version) : Json();
        reports.push_back(std::move(report));
        previous.erase(file.uri);
    });
    for (const auto &[uri, id] : previous) // of files that are gone
        if (!id.empty())
            reports.push_back({{"kind", "full"}, {"items", Json::array()}, {"uri", uri}, {"version", nullptr}});
    return {{"items", std::move(reports)}};
}

Json changeFiles(Session &session, const Params &params) {
    enum Changes { changed = 2 };
    bool configurations = false, others = false;
    for (const Params &change : params["changes"].items()) {
        const std::string uri = change["uri"].string();
        const std::string path = pathOfUri(uri).value_or("");
        configurations = configurations || path.substr(path.rfind('/') + 1) == kConfigurationName;
        others = others || !session.find(uri);
        if (change["type"].number() != Changes::changed)
            session.files.forgetNames();
    }
    if (configurations)
        session.reload();
    else if (others)
        session.refreshDiagnostics();
    return nullptr;
}
