#include "infrastructure/parser/RtiFedReader.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

using Kind = RtiFedToken::Kind;

namespace {
constexpr std::size_t kBytesEach = 64; // of the text for an attribute, in texts full of them
}

RtiFedReader::RtiFedReader(const RtiFedText &text) : _text(text), _lexer(text, text.begin()) {
    if (text.bytes().size() > kMaxTextSize)
        stop(Problem::textTooLong, text.begin());
    else
        openFed();
    if (!_stopped)
        declarations.objects.members.reserve(text.bytes().size() / kBytesEach);
    while (!_stopped && (!_open.empty() || behindFed()))
        step();
    spacesKnown = spacesKnown && (_spacesRead || !_stopped);
    std::stable_sort(errors.begin(), errors.end(),
                     [](const RtiFedSyntaxError &a, const RtiFedSyntaxError &b) { return a.at < b.at; });
}

void RtiFedReader::advance() {
    _lexer.next(_token);
    _behindClose = false;
    if (_token.behindStrayQuote())
        fail(Problem::strayQuote, _token.strayQuote);
}

void RtiFedReader::openFed() {
    advance();
    if (_token.kind == Kind::open) {
        fed = _token.begin;
        advance();
        if (_token.kind == Kind::name && !_token.quoted && isKeywordOf(RtiFedClause::fed, _text.at(_token.text))) {
            _open.push_back({{RtiFedClause::fed, fed, _token.text}});
            return advance();
        }
    }
    stop(Problem::expectedFed, _token.begin);
}

void RtiFedReader::step() {
    switch (_token.kind) {
    case Kind::open:
        return readPlainMembers() || readPlainClass() ? void() : readClause();
    case Kind::close:
        return closeClause();
    case Kind::name:
        return readStrayNames();
    case Kind::nul:
        return stop(Problem::nulByte, _token.begin);
    case Kind::end:
        return leaveAllOpen();
    }
}

/// Reads attributes, parameters or dimensions in one go as long as nothing about them is out of the ordinary; they are
/// most of a text. Returns whether there were any. At all others, the grammar is followed word by word.
bool RtiFedReader::readPlainMembers() {
    Open &owner = _open.back();
    const RtiFedClause kind = memberOf(owner.name.kind);
    if (kind == RtiFedClause::unknown)
        return false;
    RtiFedLexer ahead = _lexer;
    RtiFedClauseName member{kind, _token.begin, {}}, last;
    RtiFedArguments words;
    while (readPlainWords(ahead, kind, words) && ahead.nextClose()) {
        declareMember(kind, owner.declaration, words);
        last = member;
        last.label = words[0];
        _lexer = ahead;
        if (!ahead.nextOpen(member.begin))
            break;
    }
    if (last.kind != kind)
        return false;
    owner.hasClauses = true;
    _lastClosed = {last};
    _lastClose = _lexer.at() - 1;
    advance();
    _behindClose = true;
    return true;
}

/// The same for a class, up to the clauses in it.
bool RtiFedReader::readPlainClass() {
    const RtiFedClause kind = classIn(_open.back().name.kind);
    RtiFedLexer ahead = _lexer;
    RtiFedArguments words;
    if (kind == RtiFedClause::unknown || !readPlainWords(ahead, kind, words))
        return false;
    _open.back().hasClauses = true;
    _open.push_back({{kind, _token.begin, words[0]}});
    _lexer = ahead;
    advance();
    declareOrSkip(words);
    return true;
}

/// Reads the keyword and the arguments of a clause, if they are all there and nothing but plain words.
bool RtiFedReader::readPlainWords(RtiFedLexer &ahead, RtiFedClause kind, RtiFedArguments &words) const {
    const RtiFedClauseForm &form = formOf(kind);
    words = {};
    const std::size_t count = ahead.nextPlainWords(form.keyword, words, kMaxNameLength);
    if (!form.maySpace || count != form.numArguments + 1)
        return count == form.numArguments;
    // Else the last is perhaps no space, but the next clause without its "(".
    return childOf(_open.back().name.kind, _text.at(words[count - 1])) == RtiFedClause::unknown &&
           childOf(kind, _text.at(words[count - 1])) == RtiFedClause::unknown;
}

void RtiFedReader::readClause() {
    const RtiFedOffset begin = _token.begin;
    const bool behindClose = _behindClose;
    advance();
    const bool surplusOpen = (_token.kind == Kind::open || _token.kind == Kind::close) && missing() > 0;
    const bool surplusClose = _token.kind == Kind::close && peek().kind == Kind::name && missing() < 0;
    if (surplusOpen || surplusClose)
        fail(isLeaf(_open.back().name.kind) ? Problem::expectedClose : Problem::expectedClause, _token.begin);
    if (surplusOpen) { // one "(" too many, or a row of them
        for (++_supplied; _token.kind == Kind::open && peek().kind == Kind::open && missing() > 0; ++_supplied)
            advance();
        return;
    }
    if (surplusClose) {
        --_supplied;
        advance();
    }
    readClauseAt(begin, behindClose);
}

/// Reads a clause from its keyword, the current token. `begin` is its "(", or its keyword if that was forgotten.
void RtiFedReader::readClauseAt(RtiFedOffset begin, bool behindClose) {
    RtiFedClause kind = childHere(_token);
    if (kind == RtiFedClause::unknown && _token.kind == Kind::name && !_token.quoted) {
        supplyForgottenCloses(begin);
        if (behindClose && childOf(_lastClosed->name.kind, _text.at(_token.text)) != RtiFedClause::unknown)
            reopenLastClosed(Problem::expectedClause, _token.begin);
        kind = childHere(_token);
    }
    if (kind == RtiFedClause::unknown && _token.kind == Kind::name && !isCut(_token) && peek().kind != Kind::name &&
        missing() > 0) { // a "(" too many in front of a word
        ++_supplied;
        return readStrayNames();
    }
    if (kind == RtiFedClause::unknown || (kind == RtiFedClause::secLevel && _open.back().hasClauses))
        return refuseClause(begin);
    _open.back().hasClauses = true;
    _open.push_back({{kind, begin, {}}});
    if (refuseSecond())
        return skipClause(0);
    advance();
    readArguments();
}

void RtiFedReader::refuseClause(RtiFedOffset begin) {
    const bool ends = _token.kind == Kind::end || _token.kind == Kind::nul || isCut(_token);
    if (!ends && isLeaf(_open.back().name.kind))
        fail(Problem::expectedClose, begin);
    else if (!ends)
        fail(Problem::expectedClause, _token.begin);
    _open.push_back({{RtiFedClause::unknown, begin, _token.kind == Kind::name ? _token.text : RtiFedSpan()}});
    if (isCut(_token))
        advance();
    skipClause(0);
}

/// Refuses the second of a clause that may stand once: all in the FED clause but the federates.
bool RtiFedReader::refuseSecond() {
    const RtiFedClauseName &clause = _open.back().name;
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
    const RtiFedClauseForm &form = formOf(_open.back().name.kind);
    RtiFedArguments arguments;
    std::size_t count = 0;
    while (count < form.numArguments + (form.maySpace ? 1 : 0) && readArgument(count, arguments))
        ++count;
    if (_stopped)
        return;
    if (_open.back().doubtful)
        std::fill(arguments.begin() + 1, arguments.end(), RtiFedSpan());
    if (count < form.numArguments) { // the word that is missing may be the name
        ++lostNames;
        classesKnown = classesKnown && !isClass(_open.back().name.kind);
    }
    if (count == 0 && form.numArguments > 0) { // with a name, a declaration counts as made
        spacesKnown = spacesKnown && _open.back().name.kind != RtiFedClause::space;
        return skipClause(1);
    }
    declareOrSkip(arguments);
}

void RtiFedReader::declareOrSkip(const RtiFedArguments &arguments) {
    if (!declare(arguments)) {
        skippedNames.push_back(arguments[0]);
        skipClause(2);
    }
}

bool RtiFedReader::readArgument(std::size_t index, RtiFedArguments &arguments) {
    const bool required = index < formOf(_open.back().name.kind).numArguments;
    while (_token.kind != Kind::name) {
        if (!required)
            return false;
        // A parenthesis too many in front of the word that is expected is taken as not there.
        const RtiFedToken behind = peek();
        const bool surplusClose = _token.kind == Kind::close && behind.kind == Kind::name && missing() < 0;
        const bool surplusOpen =
            _token.kind == Kind::open && behind.kind == Kind::name && !isClauseAround(behind) && missing() > 0;
        if (!expected(Problem::expectedArgument, index) || !(surplusClose || surplusOpen))
            return false;
        _supplied += surplusOpen ? 1 : -1;
        advance();
    }
    if (isCut(_token)) {
        advance();
        leaveAllOpen();
        return false;
    }
    if (!required && isClauseAround(_token) && missing() < 0) // its "(" was forgotten
        return false;
    if (_token.text.length > kMaxNameLength)
        fail(Problem::nameTooLong, _token.begin).number = _token.text.length;
    arguments[index] = _token.text;
    if (index == 0 && formOf(_open.back().name.kind).named)
        _open.back().name.label = _token.text;
    _open.back().doubtful = _open.back().doubtful || _token.behindStrayQuote();
    advance();
    return true;
}

bool RtiFedReader::declare(const RtiFedArguments &arguments) {
    const auto isTooLong = [](RtiFedSpan span) { return span.length > kMaxNameLength; };
    if (std::any_of(arguments.begin(), arguments.end(), isTooLong))
        return false;
    const RtiFedClause kind = _open.back().name.kind;
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
    case RtiFedClause::objectClass:
        return declareClass(declarations.objects, arguments);
    case RtiFedClause::interactionClass:
        return declareClass(declarations.interactions, arguments);
    default:
        declareMember(kind, _open[_open.size() - 2].declaration, arguments);
        return true;
    }
}

void RtiFedReader::declareMember(RtiFedClause kind, std::uint32_t owner, const RtiFedArguments &arguments) {
    switch (kind) {
    case RtiFedClause::dimension:
        declarations.dimensions.push_back(arguments[0]);
        ++declarations.spaces.back().numDimensions;
        return;
    case RtiFedClause::attribute:
        return declarations.objects.addMember(owner, arguments);
    case RtiFedClause::parameter:
        return declarations.interactions.addMember(owner, arguments);
    default: // federates, sections and security levels declare nothing
        return;
    }
}

bool RtiFedReader::declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments) {
    Open &clause = _open.back();
    const Open &outer = _open[_open.size() - 2];
    const RtiFedSpan name = arguments[0];
    clause.level = outer.level + 1;
    clause.fullName = outer.fullName + (outer.level > 0 ? 1 : 0) + name.length;
    if (clause.level > kMaxClassNesting) {
        fail(Problem::nestedTooDeeply, clause.name.begin);
        return false;
    }
    if (clause.fullName > kMaxNameLength) {
        fail(Problem::fullNameTooLong, _text.withQuotes(name).begin).number =
            static_cast<RtiFedOffset>(clause.fullName);
        return false;
    }
    _fullNames += clause.fullName;
    if (_fullNames > kMaxFullNames) {
        stop(Problem::namesTooLong, clause.name.begin);
        return true;
    }
    if (_text.at(name).find('.') != std::string_view::npos)
        fail(Problem::dotInClassName, _text.withQuotes(name).begin);
    clause.declaration = static_cast<std::uint32_t>(tree.classes.size());
    tree.classes.push_back({arguments, clause.level});
    return true;
}

void RtiFedReader::closeClause() {
    _spacesRead = _spacesRead || _open.back().name.kind == RtiFedClause::spaces;
    _lastClosed = _open.back();
    _lastClose = _token.begin;
    _open.pop_back();
    advance();
    _behindClose = true;
}

void RtiFedReader::readStrayNames() {
    if (isCut(_token)) {
        advance();
        return leaveAllOpen();
    }
    if (childHere(_token) != RtiFedClause::unknown && missing() < 0) { // its "(" was forgotten
        fail(Problem::expectedClose, _token.begin);
        --_supplied;
        return readClauseAt(_token.begin, false);
    }
    const bool reopened = _behindClose && formOf(_lastClosed->name.kind).numArguments > 0 &&
                          reopenLastClosed(Problem::expectedClose, _token.begin);
    if (!reopened && !_open.back().doubtful) {
        fail(Problem::expectedClose, _token.begin);
        forgetArguments();
    }
    skippedNames.push_back(_token.text);
    classesKnown =
        classesKnown && (_open.back().hasClauses || !isClass(_open.back().name.kind)); // else it may be the name
    while (_token.kind == Kind::name && (childHere(_token) == RtiFedClause::unknown || missing() >= 0))
        advance();
}

/// Behind a word too many, it is not known which of the innermost clause's words is the one too many.
void RtiFedReader::forgetArguments() {
    const Open &clause = _open.back();
    RtiFedArguments *arguments = nullptr;
    if (clause.name.kind == RtiFedClause::attribute)
        arguments = &declarations.objects.members.back().arguments;
    else if (clause.name.kind == RtiFedClause::interactionClass && !clause.hasClauses)
        arguments = &declarations.interactions.classes[clause.declaration].arguments;
    if (!arguments)
        return;
    skippedNames.push_back((*arguments)[1]);
    std::fill(arguments->begin() + 1, arguments->end(), RtiFedSpan());
}

/// Goes behind the parenthesis that closes the innermost clause, whatever stands before it. `wordsRead` words of that
/// clause were read already.
void RtiFedReader::skipClause(std::size_t wordsRead) {
    if (_open.size() == 2)
        _skippedInFed = true;
    std::size_t depth = 1, words = wordsRead;
    for (; depth > 0 && !_stopped; advance()) {
        switch (_token.kind) {
        case Kind::open:
            ++depth;
            words = 0;
            break;
        case Kind::close:
            --depth;
            break;
        case Kind::name:
            if (words++ < 3)
                skippedNames.push_back(_token.text);
            break;
        case Kind::nul:
            return stop(Problem::nulByte, _token.begin);
        case Kind::end:
            return leaveAllOpen();
        }
    }
    _open.pop_back();
}

/// What follows the FED clause: nothing, or sections if that was closed too early. Returns whether to go on.
bool RtiFedReader::behindFed() {
    if (_token.kind == Kind::nul) {
        stop(Problem::nulByte, _token.begin);
        return false;
    }
    if (_token.kind == Kind::end) {
        for (const RtiFedClause kind : {RtiFedClause::federation, RtiFedClause::version})
            if (_firstOf[static_cast<std::size_t>(kind)] == 0 && !_skippedInFed)
                fail(Problem::missingClause, _lastClose).number = static_cast<RtiFedOffset>(kind);
        return false;
    }
    const RtiFedToken behind = peek();
    const bool goesOn = _token.kind == Kind::open && behind.kind == Kind::name && !behind.quoted &&
                        childOf(RtiFedClause::fed, _text.at(behind.text)) != RtiFedClause::unknown && missing() < 0;
    RtiFedSyntaxError &error = fail(Problem::trailingText, _token.begin);
    error.other = _lastClose;
    takeSuspect(error);
    nestingKnown = false;
    if (goesOn) {
        _open.push_back(*_lastClosed);
        --_supplied;
        return true;
    }
    spacesKnown = spacesKnown && _spacesRead;
    return false;
}

/// The kind of clause that this word would begin in the innermost one.
RtiFedClause RtiFedReader::childHere(const RtiFedToken &token) const {
    if (token.kind != Kind::name || token.quoted)
        return RtiFedClause::unknown;
    return childOf(_open.back().name.kind, _text.at(token.text));
}

/// Whether this word begins a clause that may stand in the innermost one or beside it.
bool RtiFedReader::isClauseAround(const RtiFedToken &token) const {
    return !token.quoted && std::any_of(_open.end() - 2, _open.end(), [&](const Open &open) {
        return childOf(open.name.kind, _text.at(token.text)) != RtiFedClause::unknown;
    });
}

/// Whether the text ends within this word, or just behind it: it may lack letters.
bool RtiFedReader::isCut(const RtiFedToken &token) const {
    return token.kind == Kind::name && token.text.begin + token.text.length == _text.bytes().size();
}

long RtiFedReader::missing() {
    if (!_balance)
        _balance.emplace(_text);
    return _balance->missing - _supplied;
}

/// If a clause cannot stand here but can farther out, and as many ")" are missing, then here.
void RtiFedReader::supplyForgottenCloses(RtiFedOffset at) {
    const auto holds = [this](const Open &open) {
        const RtiFedClause child = childOf(open.name.kind, _text.at(_token.text));
        return child != RtiFedClause::unknown && child != RtiFedClause::secLevel;
    };
    const auto holder = std::find_if(_open.rbegin(), _open.rend(), holds);
    const auto forgotten = holder - _open.rbegin();
    if (holder == _open.rend() || missing() < forgotten)
        return;
    takeSuspect(fail(Problem::leftOpen, at));
    if (!isLeaf(_open.back().name.kind) || forgotten > 1)
        nestingKnown = false;
    _supplied += forgotten;
    _open.erase(holder.base(), _open.end());
}

/// If the text has a ")" too many, takes the last one as not there.
bool RtiFedReader::reopenLastClosed(Problem problem, RtiFedOffset at) {
    if (missing() >= 0)
        return false;
    takeSuspect(fail(problem, at));
    nestingKnown = false;
    _open.push_back(*_lastClosed);
    --_supplied;
    return true;
}

RtiFedSyntaxError &RtiFedReader::fail(Problem problem, RtiFedOffset at) {
    if (errors.size() > kMaxErrors)
        return errors.back();
    if (errors.size() == kMaxErrors) {
        problem = Problem::tooManyErrors;
        _stopped = true;
        nestingKnown = false;
    }
    RtiFedSyntaxError error;
    error.problem = problem;
    error.at = at;
    error.clause = _open.empty() ? RtiFedClauseName{RtiFedClause::fed, fed, {}} : _open.back().name;
    error.afterFirst = !_open.empty() && _open.back().hasClauses;
    errors.push_back(error);
    return errors.back();
}

bool RtiFedReader::expected(Problem problem, std::size_t number) {
    if (_token.kind == Kind::end)
        leaveAllOpen();
    else if (_token.kind == Kind::nul)
        stop(Problem::nulByte, _token.begin);
    else
        fail(problem, _token.begin).number = static_cast<RtiFedOffset>(number);
    return !_stopped;
}

/// The text ends here: names the innermost clause, and each that was left open by its look.
void RtiFedReader::leaveAllOpen() {
    const long open = missing();
    nestingKnown = false;
    _stopped = true;
    takeSuspect(fail(Problem::leftOpen, _token.begin));
    for (long more = 1; more < open && _nextSuspect < _balance->suspects.size(); ++more)
        takeSuspect(fail(Problem::leftOpen, _token.begin));
}

void RtiFedReader::stop(Problem problem, RtiFedOffset at) {
    fail(problem, at);
    nestingKnown = false;
    _stopped = true;
}

/// Gives an error the next place where the look of the text contradicts its parentheses, if there is one before it.
void RtiFedReader::takeSuspect(RtiFedSyntaxError &error) {
    const bool trusted = missing() > 0 || _balance->suspects.size() == static_cast<std::size_t>(-_balance->missing);
    if (trusted && _nextSuspect < _balance->suspects.size() && _balance->suspects[_nextSuspect].at < error.at)
        error.suspect = _balance->suspects[_nextSuspect++];
}
