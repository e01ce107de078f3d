#include "tool/commands/Commands.hh"
#include "tool/console/Progress.hh"
#include "tool/lsp/Server.hh"

#include <unistd.h>

Status lsp(const Console &console) {
    Progress::stop();
    return serve(STDIN_FILENO, console.out) == 0 ? done : wrong;
}
