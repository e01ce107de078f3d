#include "tool/console/Terminal.hh"

#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

std::string variable(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// Whether the locale's characters are UTF-8, by the first of the variables that is set.
bool localeIsUtf8() {
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const std::string locale = variable(name);
        if (!locale.empty())
            return locale.find("UTF-8") != std::string::npos || locale.find("utf8") != std::string::npos ||
                   locale.find("utf-8") != std::string::npos;
    }
    return false;
}

} // namespace

Console consoleHere() {
    Console console{std::cout, std::clog};
    console.terminal = isatty(STDOUT_FILENO) != 0;
    if (!console.terminal)
        return console;
    const bool dumb = variable("TERM").empty() || variable("TERM") == "dumb";
    console.color = !dumb && variable("NO_COLOR").empty();
    console.unicode = !dumb && localeIsUtf8();
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0)
        console.width = size.ws_col;
    return console;
}
