#include "tool/console/TerminalBuffer.hh"

#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Progress.hh"

#include <algorithm>
#include <sys/ioctl.h>

std::size_t terminalWidth(int file) {
    winsize size{};
    // unreached: only terminals are asked
    return ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

TerminalBuffer::~TerminalBuffer() {
    passLine();
    _stream.rdbuf(_terminal);
}

void TerminalBuffer::putCode(std::string_view code) {
    passLine();
    _terminal->sputn(code.data(), static_cast<std::streamsize>(code.size()));
}

TerminalBuffer::int_type TerminalBuffer::overflow(int_type byte) {
    _line += traits_type::to_char_type(byte); // no stream passes the end of a file
    // unreached: whoever closes the terminal ends the program
    return _line.back() != '\n' || passLine() ? byte : traits_type::eof();
}

int TerminalBuffer::sync() {
    // unreached: as above
    return passLine() && _terminal->pubsync() == 0 ? 0 : -1;
}

bool TerminalBuffer::passLine() {
    std::string shown;
    for (std::size_t at = 0; at < _line.size();) {
        const std::string_view rest = std::string_view(_line).substr(at);
        const bool blank = rest.front() == '\n' || rest.front() == '\t';
        const std::size_t fit = blank ? 1 : RtiFedParser::printableSize(rest);
        shown += fit > 0 ? std::string(rest.substr(0, fit)) : RtiFedParser::printable(rest.substr(0, 1));
        at += std::max<std::size_t>(fit, 1);
    }
    _line.clear();
    if (shown.empty())
        return true;
    const bool progress = Progress::erase();
    const auto size = static_cast<std::streamsize>(shown.size());
    // What is written later, from a buffer, would follow a progress line that is drawn by then. unreached: as above
    return _terminal->sputn(shown.data(), size) == size && (!progress || _terminal->pubsync() == 0);
}

std::ostream &operator<<(std::ostream &os, const Colored &colored) {
    if (!colored.color)
        return os << colored.text;
    auto *terminal = dynamic_cast<TerminalBuffer *>(os.rdbuf());
    const auto put = [&](const char *code) { terminal ? terminal->putCode(code) : void(os << code); };
    put(colored.color);
    os << colored.text;
    put("\033[0m");
    return os;
}
