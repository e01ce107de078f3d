#pragma once

#include "tool/language/ClauseForm.hh"
#include "tool/lsp/OpenDocument.hh"
#include "tool/lsp/PositionedText.hh"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

class Session;

/// A declaration in a file of the workspace.
struct FileSymbol {
    ClauseKind kind;
    std::string name, container; ///< `container` is the dotted name of what it is in, or empty.
    TextPosition begin, end;     ///< Of the name.
};

/// What is kept of a file of the workspace: the answers about it, not its text.
struct WorkspaceFile {
    std::string uri;
    std::optional<std::int64_t> version; ///< If it is open.
    std::vector<FileSymbol> symbols;
    Json diagnostics;
};

/// The FED files in the folders of the workspace. Each is read when it is first asked for, and again once its size or
/// time of change differs. A file that is open is what the editor has of it.
class WorkspaceFiles {
public:
    /// Calls `visit` with each file, while `progress` is told how many of how many are done. A file that cannot be
    /// read, and a saved image, are left out.
    void forEach(Session &session, const std::function<void(std::size_t done, std::size_t of)> &progress,
                 const std::function<void(const WorkspaceFile &)> &visit);

    /// Says that files were created or removed, or that the folders are others.
    void forgetNames() { _names.clear(); }
    /// Says that the findings may be others, since a configuration is.
    void forgetContents() { _known.clear(); }

private:
    struct Known {
        std::filesystem::file_time_type changed;
        std::uintmax_t size;
        WorkspaceFile file;
    };

    const WorkspaceFile *read(Session &session, const std::string &path);

    std::vector<std::string> _names; // empty if unknown
    std::map<std::string, Known> _known;
};
