#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// Stands between a stream and a terminal as long as it lives: what a terminal could take for a command is shown as
/// \xNN. So no name of a file or model, whoever wrote it, can paint over what was shown before, or type for the person
/// who reads. Only the program's own colours pass. Text is passed on by lines, and when the stream is flushed.
class TerminalBuffer : public std::streambuf {
public:
    explicit TerminalBuffer(std::ostream &stream) : _stream(stream), _terminal(stream.rdbuf(this)) {}
    ~TerminalBuffer() override;
    TerminalBuffer(const TerminalBuffer &) = delete;
    TerminalBuffer &operator=(const TerminalBuffer &) = delete;

    /// Passes an escape code on as it is.
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

/// A text behind the escape code of a colour, and before that which ends it; without these if `color` is null.
struct Colored {
    const char *color;
    std::string text;
};
std::ostream &operator<<(std::ostream &os, const Colored &colored);
