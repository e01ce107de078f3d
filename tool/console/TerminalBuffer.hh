#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// The columns of the terminal that is open as this file; 80 if it does not know them.
std::size_t terminalWidth(int file);

/// Filters what a stream writes to a terminal, during its lifetime: bytes that a terminal may take for a command are
/// written as \xNN. So a hostile name in a file cannot overwrite earlier output or feed input to the shell. Only the
/// program's own colours pass. Text is passed on line by line, and when the stream is flushed.
class TerminalBuffer : public std::streambuf {
public:
    explicit TerminalBuffer(std::ostream &stream) : _stream(stream), _terminal(stream.rdbuf(this)) {}
    ~TerminalBuffer() override;
    TerminalBuffer(const TerminalBuffer &) = delete;
    TerminalBuffer &operator=(const TerminalBuffer &) = delete;

    /// Writes an escape code unfiltered.
    void putCode(std::string_view code);

protected:
    int_type overflow(int_type byte) override;
    int sync() override;

private:
    bool passLine();

    std::ostream &_stream;
    std::streambuf *_terminal;
    std::string _line;
};

/// A text in a colour, given as its escape code; without escape codes if `color` is null.
struct Colored {
    const char *color;
    std::string text;
};
std::ostream &operator<<(std::ostream &os, const Colored &colored);
