#include "tool/lsp/methods/Methods.hh"

#include <algorithm>
#include <iterator>

namespace {

constexpr bool kRequest = true, kNotification = false;

constexpr Method kMethods[] = {
    {"initialize", kRequest, initialize},
    {"initialized", kNotification, initialized},
    {"shutdown", kRequest, shutDown},
    {"workspace/didChangeConfiguration", kNotification, changeConfiguration},
    {"workspace/didChangeWorkspaceFolders", kNotification, changeFolders},
    {"textDocument/didOpen", kNotification, openText},
    {"textDocument/didChange", kNotification, changeText},
    {"textDocument/didClose", kNotification, closeText},
    {"textDocument/didSave", kNotification, saveText},
    {"textDocument/willSave", kNotification, ignoreNote},
    {"$/setTrace", kNotification, ignoreNote},
    {"textDocument/diagnostic", kRequest, diagnoseText},
    {"textDocument/formatting", kRequest, formatText},
    {"textDocument/rangeFormatting", kRequest, formatRange},
    {"textDocument/onTypeFormatting", kRequest, formatNewLine},
    {"textDocument/codeAction", kRequest, codeActions},
    {"codeAction/resolve", kRequest, resolveCodeAction},
    {"textDocument/documentSymbol", kRequest, symbolsOfText},
    {"textDocument/foldingRange", kRequest, foldText},
    {"textDocument/selectionRange", kRequest, selectText},
    {"textDocument/semanticTokens/full", kRequest, colourText},
    {"textDocument/semanticTokens/range", kRequest, colourText},
    {"textDocument/hover", kRequest, hoverName},
    {"textDocument/definition", kRequest, findDefinition},
    {"textDocument/declaration", kRequest, findDefinition},
    {"textDocument/references", kRequest, findReferences},
    {"textDocument/documentHighlight", kRequest, highlightName},
    {"textDocument/prepareTypeHierarchy", kRequest, prepareHierarchy},
    {"typeHierarchy/supertypes", kRequest, findSupertypes},
    {"typeHierarchy/subtypes", kRequest, findSubtypes},
    {"textDocument/completion", kRequest, completeText},
    {"textDocument/prepareRename", kRequest, prepareRename},
    {"textDocument/rename", kRequest, renameName},
    {"textDocument/inlayHint", kRequest, hintText},
    {"textDocument/codeLens", kRequest, lensText},
    {"workspace/symbol", kRequest, findSymbols},
    {"workspace/diagnostic", kRequest, diagnoseWorkspace},
    {"workspace/didChangeWatchedFiles", kNotification, changeFiles},
};

} // namespace

const Method *findMethod(std::string_view name) {
    const auto *const found =
        std::find_if(std::begin(kMethods), std::end(kMethods), [&](const Method &each) { return each.name == name; });
    return found == std::end(kMethods) ? nullptr : found;
}
