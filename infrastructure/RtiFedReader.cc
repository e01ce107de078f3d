#include "infrastructure/RtiFedReader.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

RtiFedReader::RtiFedReader(const RtiFedText &text) : _text(text), _lexer(text, text.begin()) {
    if (text.bytes().size() > kMaxTextSize) {
        stop(Problem::textTooLong);
        return;
    }
    advance();
    openFed();
    while (!_stopped && !_open.empty())
        step();
    if (!_stopped)
        behindFed();
}

void RtiFedReader::advance() {
    _token = _lexer.next();
    if (_token.unterminated)
        fail(Problem::unterminatedQuote, _token.begin);
}

void RtiFedReader::openFed() {
    if (_token.kind == RtiFedToken::Kind::open) {
        fed = _token.begin;
        advance();
        if (_token.kind == RtiFedToken::Kind::name && !_token.quoted &&
            isKeywordOf(RtiFedClause::fed, _text.at(_token.text))) {
            _open.push_back({RtiFedClause::fed, fed});
            return advance();
        }
    }
    stop(Problem::expectedFed);
}

void RtiFedReader::step() {
    switch (_token.kind) {
    case RtiFedToken::Kind::open:
        return readClause();
    case RtiFedToken::Kind::close:
        return closeClause();
    case RtiFedToken::Kind::name:
        return skipStrayNames();
    case RtiFedToken::Kind::nul:
        return stop(Problem::nulByte);
    case RtiFedToken::Kind::end:
        return leftOpen(_token.begin);
    }
}

void RtiFedReader::readClause() {
    const RtiFedOffset begin = _token.begin;
    advance();
    auto kind = RtiFedClause::unknown;
    if (_token.kind == RtiFedToken::Kind::name && !_token.quoted) {
        const std::string_view keyword = _text.at(_token.text);
        supplyForgotten(keyword, begin);
        kind = childOf(_open.back().kind, keyword);
    }
    if (kind == RtiFedClause::unknown && _token.text.length > 0 &&
        _token.text.begin + _token.text.length == _text.bytes().size()) {
        _open.push_back({kind, begin}); // its keyword is cut short by the end of the text
        advance();
        return leftOpen(_token.begin);
    }
    const bool tooLate = kind == RtiFedClause::secLevel && _open.back().hasClauses;
    if (kind == RtiFedClause::unknown || tooLate) {
        if (isLeaf(_open.back().kind) && _token.kind != RtiFedToken::Kind::end)
            fail(Problem::expectedClose, begin);
        else if (!expected(Problem::expectedClause))
            return;
        _open.push_back({RtiFedClause::unknown, begin});
        return skipClause();
    }
    _open.back().hasClauses = true;
    _open.push_back({kind, begin});
    if (refuseSecond())
        return skipClause();
    advance();
    readArguments();
}

/// Refuses the second of a clause that may stand once: all in the FED clause but the federates.
bool RtiFedReader::refuseSecond() {
    const Open &clause = _open.back();
    if (_open.size() != 2 || clause.kind == RtiFedClause::federate)
        return false;
    RtiFedOffset &first = _firstOf[static_cast<std::size_t>(clause.kind)];
    if (first == 0) {
        first = clause.begin;
        return false;
    }
    fail(Problem::secondClause, clause.begin).other = first;
    return true;
}

void RtiFedReader::readArguments() {
    const RtiFedClauseForm &form = formOf(_open.back().kind);
    RtiFedArguments arguments;
    bool understood = true;
    for (std::size_t i = 0; i < form.numArguments + (form.maySpace ? 1 : 0); ++i) {
        if (_token.kind != RtiFedToken::Kind::name) {
            if (i == form.numArguments)
                break;
            if (!expected(Problem::expectedArgument, static_cast<RtiFedOffset>(i)))
                return;
            understood = i > 0; // with its name, a declaration counts as made
            break;
        }
        arguments[i] = _token.text;
        if (_token.text.length > kMaxNameLength) {
            fail(Problem::nameTooLong, _token.begin).number = _token.text.length;
            understood = false;
        }
        advance();
    }
    if (!understood || !declare(arguments))
        skipClause();
}

bool RtiFedReader::declare(const RtiFedArguments &arguments) {
    const RtiFedClause kind = _open.back().kind;
    const std::uint32_t owner = _open[_open.size() - 2].declaration;
    switch (kind) {
    case RtiFedClause::federation:
        declarations.federation = arguments[0];
        return true;
    case RtiFedClause::version:
        declarations.version = arguments[0];
        return true;
    case RtiFedClause::space:
        declarations.spaces.push_back({arguments[0]});
        return true;
    case RtiFedClause::dimension:
        declarations.dimensions.push_back(arguments[0]);
        ++declarations.spaces.back().numDimensions;
        return true;
    case RtiFedClause::objectClass:
        return declareClass(declarations.objects, arguments);
    case RtiFedClause::interactionClass:
        return declareClass(declarations.interactions, arguments);
    case RtiFedClause::attribute:
        declarations.objects.addMember(owner, arguments);
        return true;
    case RtiFedClause::parameter:
        declarations.interactions.addMember(owner, arguments);
        return true;
    default: // federates, sections and security levels declare nothing
        return true;
    }
}

bool RtiFedReader::declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments) {
    Open &clause = _open.back();
    const Open &outer = _open[_open.size() - 2];
    const RtiFedSpan name = arguments[0];
    clause.level = outer.level + 1;
    clause.fullName = outer.fullName + (outer.level > 0 ? 1 : 0) + name.length;
    if (clause.level > kMaxClassNesting) {
        fail(Problem::nestedTooDeeply, clause.begin);
        skippedNames.push_back(name);
        return false;
    }
    if (clause.fullName > kMaxNameLength) {
        fail(Problem::fullNameTooLong, name.begin).number = static_cast<RtiFedOffset>(clause.fullName);
        return false;
    }
    _fullNames += clause.fullName;
    if (_fullNames > kMaxFullNames) {
        stop(Problem::namesTooLong);
        return true;
    }
    if (_text.at(name).find('.') != std::string_view::npos)
        fail(Problem::dotInClassName, name.begin);
    clause.declaration = static_cast<std::uint32_t>(tree.classes.size());
    tree.classes.push_back({arguments, clause.level});
    return true;
}

void RtiFedReader::closeClause() {
    _fedClose = _token.begin;
    _open.pop_back();
    advance();
}

void RtiFedReader::skipStrayNames() {
    fail(Problem::expectedClose, _token.begin);
    for (; _token.kind == RtiFedToken::Kind::name; advance())
        skippedNames.push_back(_token.text);
}

/// Goes behind the parenthesis that closes the innermost clause, whatever stands before it.
void RtiFedReader::skipClause() {
    if (_open.size() == 2)
        _skippedInFed = true;
    for (std::size_t depth = 1; depth > 0; advance()) {
        switch (_token.kind) {
        case RtiFedToken::Kind::open:
            ++depth;
            break;
        case RtiFedToken::Kind::close:
            --depth;
            break;
        case RtiFedToken::Kind::name:
            skippedNames.push_back(_token.text);
            break;
        case RtiFedToken::Kind::nul:
            return stop(Problem::nulByte);
        case RtiFedToken::Kind::end:
            return leftOpen(_token.begin);
        }
    }
    _open.pop_back();
}

/// If a clause cannot stand here but can farther out, and the text has too few ")", then they are missing here.
void RtiFedReader::supplyForgotten(std::string_view keyword, RtiFedOffset at) {
    const auto holds = [keyword](const Open &open) {
        const RtiFedClause child = childOf(open.kind, keyword);
        return child != RtiFedClause::unknown && child != RtiFedClause::secLevel;
    };
    const auto holder = std::find_if(_open.rbegin(), _open.rend(), holds);
    const auto forgotten = static_cast<std::size_t>(holder - _open.rbegin());
    if (forgotten == 0 || holder == _open.rend() || isKeywordOf(RtiFedClause::secLevel, keyword))
        return;
    if (!balance)
        balance.emplace(_text);
    if (balance->missing - _supplied < static_cast<long>(forgotten))
        return;
    fail(Problem::leftOpen, at);
    if (!isLeaf(_open.back().kind) || forgotten > 1)
        nestingKnown = false;
    _supplied += static_cast<long>(forgotten);
    _open.resize(_open.size() - forgotten);
}

void RtiFedReader::behindFed() {
    if (_token.kind == RtiFedToken::Kind::nul)
        return stop(Problem::nulByte);
    if (_token.kind == RtiFedToken::Kind::end) {
        for (const RtiFedClause kind : {RtiFedClause::federation, RtiFedClause::version})
            if (_firstOf[static_cast<std::size_t>(kind)] == 0 && !_skippedInFed)
                fail(Problem::missingClause, _fedClose).kind = kind;
        return;
    }
    fail(Problem::trailingText, _token.begin).other = _fedClose;
    nestingKnown = false;
    for (; _token.kind != RtiFedToken::Kind::end && _token.kind != RtiFedToken::Kind::nul; _token = _lexer.next())
        if (_token.kind == RtiFedToken::Kind::name)
            skippedNames.push_back(_token.text);
}

RtiFedSyntaxError &RtiFedReader::fail(Problem problem, RtiFedOffset at) {
    RtiFedSyntaxError error;
    error.problem = problem;
    error.at = at;
    error.kind = _open.empty() ? RtiFedClause::fed : _open.back().kind;
    error.clause = _open.empty() ? fed : _open.back().begin;
    error.afterFirst = !_open.empty() && _open.back().hasClauses;
    errors.push_back(error);
    return errors.back();
}

bool RtiFedReader::expected(Problem problem, RtiFedOffset number) {
    if (_token.kind == RtiFedToken::Kind::end)
        leftOpen(_token.begin);
    else if (_token.kind == RtiFedToken::Kind::nul)
        stop(Problem::nulByte);
    else
        fail(problem, _token.begin).number = number;
    return !_stopped;
}

void RtiFedReader::leftOpen(RtiFedOffset at) {
    if (!balance)
        balance.emplace(_text);
    fail(Problem::leftOpen, at);
    nestingKnown = false;
    _stopped = true;
}

void RtiFedReader::stop(Problem problem) {
    fail(problem, problem == Problem::namesTooLong ? _open.back().begin : _token.begin);
    nestingKnown = false;
    _stopped = true;
}
