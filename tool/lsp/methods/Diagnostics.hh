#pragma once

#include "tool/lsp/Session.hh"

/// Returns a finding as the protocol has it.
Json diagnosticOf(const Session &session, const OpenDocument &document, const Finding &finding);

/// Returns what `check` reports of a text: all errors, then all warnings. After very many, the last one says how many
/// are left out.
Json diagnosticsOf(const Session &session, const OpenDocument &document);

/// Sends the diagnostics of a text to the client.
void publishDiagnostics(Session &session, const OpenDocument &document);

/// Returns diagnostics as the answer to a request for them; if they are those of the last answer, whose name the client
/// gives, only that.
Json diagnosticReport(Json diagnostics, const std::string &previousId);
