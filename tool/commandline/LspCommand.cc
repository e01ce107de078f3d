#include "tool/commandline/CommandLine.hh"

void CommandLine::addLsp() {
    addCommand("lsp", "Serve an editor: diagnostics, completion, navigation, formatting while typing",
               "Speaks the Language Server Protocol 3.17 over standard input and output. An editor starts it; a person "
               "has no use for\n"
               "it on the command line. editors.md of the documentation says how to set editors up.\n\n"
               "The exit status is 0 if the editor sent shutdown and then exit, otherwise 1.",
               [this] { return lsp(_console); });
}
