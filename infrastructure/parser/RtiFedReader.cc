#include "infrastructure/parser/RtiFedReader.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

using Kind = RtiFedToken::Kind;

namespace {
constexpr std::size_t kBytesPerAttribute = 64; // of a large text, in which most clauses are attributes
}

RtiFedReader::RtiFedReader(const RtiFedText &text) : _text(text), _lexer(text, text.begin()), _repair(text) {
    if (text.bytes().size() > kMaxTextSize)
        stop(Problem::textTooLong, text.begin());
    else
        openFed();
    if (!_stopped)
        declarations.objects.members.reserve(text.bytes().size() / kBytesPerAttribute);
    while (!_stopped && (!_open.empty() || readAfterFed()))
        step();
    spacesKnown = spacesKnown && (_spacesRead || !_stopped);
    std::stable_sort(errors.begin(), errors.end(),
                     [](const RtiFedSyntaxError &a, const RtiFedSyntaxError &b) { return a.at < b.at; });
}

void RtiFedReader::advance() {
    _lexer.next(_token);
    _afterClose = false;
    if (_token.afterStrayQuote())
        addError(Problem::strayQuote, _token.strayQuote);
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
        return readStrayWords();
    case Kind::nul:
        return stop(Problem::nulByte, _token.begin);
    case Kind::end:
        return reportLeftOpen();
    }
}

/// Most clauses of a text are attributes, parameters and dimensions of plain words: no quotes, no comments, nothing
/// missing. This reads a run of them without making tokens, and declares them as the functions below would. Where a
/// clause is not of this form it is left unread, for those functions. Returns whether anything was read.
bool RtiFedReader::readPlainMembers() {
    OpenClause &owner = _open.back();
    const RtiFedClause kind = memberOf(owner.name.kind);
    if (kind == RtiFedClause::unknown)
        return false;
    RtiFedLexer ahead = _lexer;
    RtiFedClauseName member{kind, _token.begin, {}}, last;
    RtiFedArguments words;
    while (readPlainWords(ahead, kind, words) && ahead.nextClose()) {
        declarations.add(kind, owner.declaration, words);
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
    _afterClose = true;
    return true;
}

/// The same for the keyword and words of one class.
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

/// Reads the keyword and arguments of a clause. Returns whether they are complete and plain words.
bool RtiFedReader::readPlainWords(RtiFedLexer &ahead, RtiFedClause kind, RtiFedArguments &words) const {
    const RtiFedClauseForm &form = formOf(kind);
    words = {};
    const std::size_t count = ahead.nextPlainWords(form.keyword, words, kMaxNameLength);
    if (!form.maySpace || count != form.numArguments + 1)
        return count == form.numArguments;
    // Otherwise the last word may be no space, but the keyword of a clause without its "(".
    return childOf(_open.back().name.kind, _text.at(words[count - 1])) == RtiFedClause::unknown &&
           childOf(kind, _text.at(words[count - 1])) == RtiFedClause::unknown;
}

/// Reads a clause from its "(", the current token.
void RtiFedReader::readClause() {
    const RtiFedOffset begin = _token.begin;
    const bool afterClose = _afterClose;
    advance();
    if (_token.kind == Kind::open || _token.kind == Kind::close) {
        const bool surplusOpen = _repair.mayDropOpen();
        const bool surplusClose = _token.kind == Kind::close && peek().kind == Kind::name && _repair.mayDropClose();
        if (surplusOpen || surplusClose)
            addError(isLeaf(_open.back().name.kind) ? Problem::expectedClose : Problem::expectedClause, _token.begin);
        if (surplusOpen)
            return dropOpens();
        if (surplusClose) {
            _repair.dropClose();
            advance();
        }
    }
    readFromKeyword(begin, afterClose);
}

/// Reads a clause from its keyword, the current token. `begin` is its "(", or its keyword if the "(" was forgotten;
/// `afterClose` tells whether that directly follows the ")" of another clause.
void RtiFedReader::readFromKeyword(RtiFedOffset begin, bool afterClose) {
    if (_token.kind == Kind::name && !_token.quoted && childHere(_token) == RtiFedClause::unknown)
        moveToParent(begin, afterClose);
    const RtiFedClause kind = childHere(_token);
    if (kind == RtiFedClause::unknown && _token.kind == Kind::name && !isCut(_token) && peek().kind != Kind::name &&
        _repair.mayDropOpen()) { // a "(" too many before a word
        _repair.dropOpen();
        return readStrayWords();
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

/// Reports a clause that is not allowed here, and skips it.
void RtiFedReader::refuseClause(RtiFedOffset begin) {
    const bool ends = _token.kind == Kind::end || _token.kind == Kind::nul || isCut(_token);
    if (!ends && isLeaf(_open.back().name.kind))
        addError(Problem::expectedClose, begin);
    else if (!ends)
        addError(Problem::expectedClause, _token.begin);
    _open.push_back({{RtiFedClause::unknown, begin, _token.kind == Kind::name ? _token.text : RtiFedSpan()}});
    if (isCut(_token))
        advance();
    skipClause(0);
}

/// Reports the innermost clause if it is the second of a kind that is allowed once: all in the FED clause except
/// federates. Returns whether it is.
bool RtiFedReader::refuseSecond() {
    const RtiFedClauseName &clause = _open.back().name;
    if (_open.size() != 2 || clause.kind == RtiFedClause::federate)
        return false;
    RtiFedOffset &first = _firstOf[static_cast<std::size_t>(clause.kind)];
    if (first == 0) {
        first = clause.begin;
        return false;
    }
    addError(Problem::secondClause, clause.begin).firstClause = first;
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
    if (_open.back().hasStrayQuote)
        std::fill(arguments.begin() + 1, arguments.end(), RtiFedSpan());
    if (count < form.numArguments) { // the missing word may be the name
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

/// Reads one argument of the innermost clause. Returns whether there is one.
bool RtiFedReader::readArgument(std::size_t index, RtiFedArguments &arguments) {
    const bool required = index < formOf(_open.back().name.kind).numArguments;
    if (_token.kind != Kind::name && (!required || !dropBeforeArgument(index)))
        return false;
    if (isCut(_token)) {
        advance();
        reportLeftOpen();
        return false;
    }
    if (!required && isKeywordNearby(_token) && _repair.mayInsertOpen()) // the next clause, its "(" was forgotten
        return false;
    if (_token.text.length > kMaxNameLength)
        addError(Problem::nameTooLong, _token.begin).nameLength = _token.text.length;
    arguments[index] = _token.text;
    if (index == 0 && formOf(_open.back().name.kind).named)
        _open.back().name.label = _token.text;
    _open.back().hasStrayQuote = _open.back().hasStrayQuote || _token.afterStrayQuote();
    advance();
    return true;
}

/// Returns whether a declaration with these arguments is within the limits.
bool RtiFedReader::declare(const RtiFedArguments &arguments) {
    const auto isTooLong = [](RtiFedSpan span) { return span.length > kMaxNameLength; };
    if (std::any_of(arguments.begin(), arguments.end(), isTooLong))
        return false;
    const RtiFedClause kind = _open.back().name.kind;
    if (isClass(kind))
        return declareClass(kind == RtiFedClause::objectClass ? declarations.objects : declarations.interactions,
                            arguments);
    declarations.add(kind, _open[_open.size() - 2].declaration, arguments);
    return true;
}

bool RtiFedReader::declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments) {
    OpenClause &clause = _open.back();
    const OpenClause &outer = _open[_open.size() - 2];
    const RtiFedSpan name = arguments[0];
    clause.level = outer.level + 1;
    clause.fullNameLength = outer.fullNameLength + (outer.level > 0 ? 1 : 0) + name.length;
    if (clause.level > kMaxClassNesting) {
        addError(Problem::nestedTooDeeply, clause.name.begin);
        return false;
    }
    if (clause.fullNameLength > kMaxNameLength) {
        addError(Problem::fullNameTooLong, _text.withQuotes(name).begin).nameLength = clause.fullNameLength;
        return false;
    }
    _fullNames += clause.fullNameLength;
    if (_fullNames > kMaxFullNames) {
        stop(Problem::namesTooLong, clause.name.begin);
        return true;
    }
    if (_text.at(name).find('.') != std::string_view::npos)
        addError(Problem::dotInClassName, _text.withQuotes(name).begin);
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
    _afterClose = true;
}

/// Reads words where a clause or a ")" is expected. They are the keyword of a clause whose "(" was forgotten, further
/// words of the clause closed just before, or words too many.
void RtiFedReader::readStrayWords() {
    if (isCut(_token)) {
        advance();
        return reportLeftOpen();
    }
    if (childHere(_token) != RtiFedClause::unknown && _repair.mayInsertOpen()) {
        addError(Problem::expectedClose, _token.begin);
        _repair.insertOpen();
        return readFromKeyword(_token.begin, false);
    }
    const bool reopened = _afterClose && formOf(_lastClosed->name.kind).numArguments > 0 &&
                          reopenLastClosed(Problem::expectedClose, _token.begin);
    if (!reopened && !_open.back().hasStrayQuote) {
        addError(Problem::expectedClose, _token.begin);
        forgetArguments();
    }
    skipStrayWords();
}

/// Skips words up to the next parenthesis or to a keyword whose "(" may be inserted.
void RtiFedReader::skipStrayWords() {
    const OpenClause &clause = _open.back();
    skippedNames.push_back(_token.text);
    if (isClass(clause.name.kind) && !clause.hasClauses) // a stray word may be the name that was meant
        classesKnown = false;
    while (_token.kind == Kind::name && (childHere(_token) == RtiFedClause::unknown || !_repair.mayInsertOpen()))
        advance();
}

/// If the innermost clause has a word too many, any of its words may be the surplus one: only its name is kept.
void RtiFedReader::forgetArguments() {
    const OpenClause &clause = _open.back();
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

/// Skips the rest of the innermost clause, its ")" included. `wordsRead` words of that clause were read already.
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
            return reportLeftOpen();
        }
    }
    _open.pop_back();
}

/// Reads what follows the FED clause: nothing, or sections if the FED clause was closed too early. Returns whether that
/// clause was reopened.
bool RtiFedReader::readAfterFed() {
    if (_token.kind == Kind::nul) {
        stop(Problem::nulByte, _token.begin);
        return false;
    }
    if (_token.kind == Kind::end) {
        reportMissingClauses();
        return false;
    }
    const RtiFedToken next = peek();
    const bool sectionFollows = _token.kind == Kind::open && next.kind == Kind::name && !next.quoted &&
                                childOf(RtiFedClause::fed, _text.at(next.text)) != RtiFedClause::unknown;
    const bool closedTooEarly = sectionFollows && _repair.mayDropClose();
    addErrorWithSuspect(Problem::trailingText, _token.begin).fedClose = _lastClose;
    nestingKnown = false;
    if (closedTooEarly) {
        _open.push_back(*_lastClosed);
        _repair.dropClose();
    } else {
        spacesKnown = spacesKnown && _spacesRead;
    }
    return closedTooEarly;
}

/// Drops the "(" that was just read, and those directly after it as long as too many are left.
void RtiFedReader::dropOpens() {
    _repair.dropOpen();
    while (_token.kind == Kind::open && peek().kind == Kind::open && _repair.mayDropOpen()) {
        _repair.dropOpen();
        advance();
    }
}

/// Reports that a word was expected. If it follows a surplus parenthesis, drops that. Returns whether it did.
bool RtiFedReader::dropBeforeArgument(std::size_t index) {
    if (_token.kind == Kind::end)
        reportLeftOpen();
    else if (_token.kind == Kind::nul)
        stop(Problem::nulByte, _token.begin);
    else
        addError(Problem::expectedArgument, _token.begin).argument = index;
    const RtiFedToken next = peek();
    if (_stopped || next.kind != Kind::name)
        return false;
    if (_token.kind == Kind::close && _repair.mayDropClose())
        _repair.dropClose();
    else if (_token.kind == Kind::open && !isKeywordNearby(next) && _repair.mayDropOpen())
        _repair.dropOpen();
    else
        return false;
    advance();
    return true;
}

/// Repairs the nesting so that the innermost clause allows the clause that the current token begins, if an enclosing
/// one does or the one closed just before.
void RtiFedReader::moveToParent(RtiFedOffset begin, bool afterClose) {
    insertForgottenCloses(begin);
    if (afterClose && childOf(_lastClosed->name.kind, _text.at(_token.text)) != RtiFedClause::unknown)
        reopenLastClosed(Problem::expectedClause, _token.begin);
}

/// Closes the clauses inside of the nearest that allows the current keyword, provided that as many ")" are missing.
void RtiFedReader::insertForgottenCloses(RtiFedOffset begin) {
    const auto allows = [this](const OpenClause &open) {
        const RtiFedClause child = childOf(open.name.kind, _text.at(_token.text));
        return child != RtiFedClause::unknown && child != RtiFedClause::secLevel;
    };
    const auto parent = std::find_if(_open.rbegin(), _open.rend(), allows);
    const auto forgotten = parent - _open.rbegin();
    if (parent == _open.rend() || !_repair.mayInsertClose(forgotten))
        return;
    addErrorWithSuspect(Problem::leftOpen, begin);
    if (!isLeaf(_open.back().name.kind) || forgotten > 1)
        nestingKnown = false;
    _repair.insertClose(forgotten);
    _open.erase(parent.base(), _open.end());
}

/// Takes the last ")" as not there, if there are too many. Returns whether it did.
bool RtiFedReader::reopenLastClosed(Problem problem, RtiFedOffset at) {
    if (!_repair.mayDropClose())
        return false;
    addErrorWithSuspect(problem, at);
    nestingKnown = false;
    _open.push_back(*_lastClosed);
    _repair.dropClose();
    return true;
}

/// The kind of clause that this word would begin in the innermost one.
RtiFedClause RtiFedReader::childHere(const RtiFedToken &token) const {
    if (token.kind != Kind::name || token.quoted)
        return RtiFedClause::unknown;
    return childOf(_open.back().name.kind, _text.at(token.text));
}

/// Whether this word begins a clause that is allowed in the innermost one or beside it.
bool RtiFedReader::isKeywordNearby(const RtiFedToken &token) const {
    return !token.quoted && std::any_of(_open.end() - 2, _open.end(), [&](const OpenClause &open) {
        return childOf(open.name.kind, _text.at(token.text)) != RtiFedClause::unknown;
    });
}

/// Whether the text ends in or directly after this word, so that letters may be missing.
bool RtiFedReader::isCut(const RtiFedToken &token) const {
    return token.kind == Kind::name && token.text.begin + token.text.length == _text.bytes().size();
}

RtiFedSyntaxError &RtiFedReader::addError(Problem problem, RtiFedOffset at) {
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

/// Adds an error that a parenthesis too many or too few may have caused, with the next place where the indentation
/// contradicts the parentheses.
RtiFedSyntaxError &RtiFedReader::addErrorWithSuspect(Problem problem, RtiFedOffset at) {
    RtiFedSyntaxError &error = addError(problem, at);
    if (const auto suspect = _repair.takeSuspect(error.at))
        error.suspect = suspect;
    return error;
}

void RtiFedReader::reportMissingClauses() {
    for (const RtiFedClause kind : {RtiFedClause::federation, RtiFedClause::version})
        if (_firstOf[static_cast<std::size_t>(kind)] == 0 && !_skippedInFed)
            addError(Problem::missingClause, _lastClose).missing = kind;
}

/// Reports, at the end of the text, the innermost clause, and each further one that the indentation shows to be left
/// open.
void RtiFedReader::reportLeftOpen() {
    nestingKnown = false;
    _stopped = true;
    do {
        addErrorWithSuspect(Problem::leftOpen, _token.begin);
        _repair.insertClose();
    } while (_repair.mayInsertClose() && _repair.hasSuspect());
}

/// Reports an error after which the text is not read any further.
void RtiFedReader::stop(Problem problem, RtiFedOffset at) {
    addError(problem, at);
    nestingKnown = false;
    _stopped = true;
}
