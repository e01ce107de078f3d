#include "tool/lsp/WorkspaceFiles.hh"

#include "tool/console/Text.hh"
#include "tool/input/FedFiles.hh"
#include "tool/input/Input.hh"
#include "tool/language/DocumentSymbols.hh"
#include "tool/lsp/Session.hh"
#include "tool/lsp/Uri.hh"
#include "tool/lsp/methods/Diagnostics.hh"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

bool isDeclaration(ClauseKind kind) {
    return isClass(kind) || isMember(kind) || kind == ClauseKind::space || kind == ClauseKind::federation;
}

std::vector<FileSymbol> symbolsIn(const OpenDocument &document) {
    const std::vector<DocumentSymbol> symbols = documentSymbols(document.document());
    std::vector<std::string> paths(symbols.size()); // the dotted names of classes and spaces
    std::vector<FileSymbol> found;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const DocumentSymbol &symbol = symbols[i];
        const std::string container = symbol.parent == DocumentSymbol::kNone ? "" : paths[symbol.parent];
        if (isClass(symbol.kind) || symbol.kind == ClauseKind::space)
            paths[i] = (container.empty() ? "" : container + '.') + symbol.name;
        if (isDeclaration(symbol.kind))
            found.push_back({symbol.kind, symbol.name, container, document.text().positionAt(symbol.nameSpan.begin),
                             document.text().positionAt(symbol.nameSpan.begin + symbol.nameSpan.length)});
    }
    return found;
}

WorkspaceFile contentsOf(const Session &session, const OpenDocument &document) {
    return {document.uri(), document.version, symbolsIn(document), diagnosticsOf(session, document)};
}

bool isInFolder(const Session &session, const std::string &path) {
    const auto &folders = session.client.folders;
    return std::any_of(folders.begin(), folders.end(),
                       [&path](const std::string &folder) { return beginsWith(path, folder + '/'); });
}

} // namespace

void WorkspaceFiles::forEach(Session &session, const std::function<void(std::size_t, std::size_t)> &progress,
                             const std::function<void(const WorkspaceFile &)> &visit) {
    if (_names.empty() && !session.client.folders.empty()) // equivalent: only speed
        for (const FileToRead &file : withoutFolders(session.client.folders))
            if (file.failure.empty()) // unreached: who runs the tests may read any folder
                _names.push_back(file.name);
    // Folders may be in each other.
    std::sort(_names.begin(), _names.end());
    _names.erase(std::unique(_names.begin(), _names.end()), _names.end());
    const std::vector<std::string> names = _names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        session.checkCancelled();
        progress(i, names.size());
        const OpenDocument *open = session.find(uriOfPath(names[i]));
        if (open)
            visit(contentsOf(session, *open));
        else if (const WorkspaceFile *file = read(session, names[i]))
            visit(*file);
    }
    for (const auto &[uri, document] : session.documents()) // those that were never saved
        if (!std::binary_search(names.begin(), names.end(), document.path()) && isInFolder(session, document.path()))
            visit(contentsOf(session, document));
    if (!session.client.watchesFiles)
        forgetNames();
}

const WorkspaceFile *WorkspaceFiles::read(Session &session, const std::string &path) {
    std::error_code gone;
    const fs::file_time_type changed = fs::last_write_time(path, gone);
    const std::uintmax_t size = gone ? 0 : fs::file_size(path, gone); // equivalent: of what is gone, no size is used
    const auto known = _known.find(path);
    if (!gone && known != _known.end() && known->second.changed == changed && known->second.size == size)
        return &known->second.file;
    if (known != _known.end())
        _known.erase(known);
    if (gone || size > kMaxOpenText) // equivalent: nobody minds a byte
        return nullptr;
    try {
        Input input = readInput(path, "-");
        if (input.isImage())
            return nullptr;
        const OpenDocument document(uriOfPath(path), std::move(input.contents), session.client.encoding,
                                    session.settingsFor(path));
        return &_known.emplace(path, Known{changed, size, contentsOf(session, document)}).first->second.file;
    } catch (const CannotWork &) { // unreached: who runs the tests may read any file
        return nullptr;
    }
}
