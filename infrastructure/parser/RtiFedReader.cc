#include "infrastructure/parser/RtiFedReader.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

using Kind = RtiFedToken::Kind;

namespace {
constexpr std::size_t kBytesPerAttribute = 64; // of a large text, in which most clauses are attributes
}

RtiFedReader::RtiFedReader(const RtiFedText &text)
    : _text(text), _lexer(text, text.begin()), _repair(text), _nesting(_repair) {
    if (text.bytes().size() > kMaxTextSize)
        _nesting.stop(Problem::textTooLong, text.begin());
    else
        openFed();
    if (!_nesting.stopped)
        declarations.objects.members.reserve(text.bytes().size() / kBytesPerAttribute);
    while (!_nesting.stopped && (_nesting.depth() > 0 || readAfterFed()))
        step();
    spacesKnown = spacesKnown && (_spacesRead || !_nesting.stopped);
    nestingKnown = _nesting.known;
    fed = _nesting.fed;
    errors = std::move(_nesting.errors);
    std::stable_sort(errors.begin(), errors.end(),
                     [](const RtiFedSyntaxError &a, const RtiFedSyntaxError &b) { return a.at < b.at; });
}

void RtiFedReader::advance() {
    _lexer.next(_token);
    _afterClose = false;
    if (_token.afterStrayQuote())
        _nesting.addError(Problem::strayQuote, _token.strayQuote);
}

void RtiFedReader::openFed() {
    advance();
    if (_token.kind == Kind::open) {
        _nesting.fed = _token.begin;
        advance();
        if (isKeywordOf(RtiFedClause::fed, wordOf(_token))) {
            _nesting.open({RtiFedClause::fed, _nesting.fed, _token.text});
            return advance();
        }
    }
    _nesting.stop(Problem::expectedFed, _token.begin);
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
        return _nesting.stop(Problem::nulByte, _token.begin);
    case Kind::end:
        return _nesting.reportLeftOpen(_token.begin);
    }
}

/// Most clauses of a text are attributes, parameters and dimensions of plain words: no quotes, no comments, nothing
/// missing. This reads a run of them without making tokens, and declares them as readClause() would. It stops before
/// the first clause that is not of this form, which readClause() then reads. Returns whether anything was read.
bool RtiFedReader::readPlainMembers() {
    RtiFedNesting::Clause &owner = _nesting.innermost();
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
    _nesting.closedWhole({last}, _lexer.at() - 1);
    advance();
    _afterClose = true;
    return true;
}

/// The same for the keyword and words of one class.
bool RtiFedReader::readPlainClass() {
    const RtiFedClause kind = classIn(_nesting.kind());
    RtiFedLexer ahead = _lexer;
    RtiFedArguments words;
    if (kind == RtiFedClause::unknown || !readPlainWords(ahead, kind, words))
        return false;
    _nesting.innermost().hasClauses = true;
    _nesting.open({kind, _token.begin, words[0]});
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
    return childOf(_nesting.kind(), _text.at(words[count - 1])) == RtiFedClause::unknown &&
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
            _nesting.addError(isLeaf(_nesting.kind()) ? Problem::expectedClose : Problem::expectedClause, _token.begin);
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
/// `afterClose` says whether it directly follows the ")" of another clause.
void RtiFedReader::readFromKeyword(RtiFedOffset begin, bool afterClose) {
    if (childHere(_token) == RtiFedClause::unknown)
        moveToParent(begin, afterClose);
    const RtiFedClause kind = childHere(_token);
    if (kind == RtiFedClause::unknown && _token.kind == Kind::name && !isCut(_token) && peek().kind != Kind::name &&
        _repair.mayDropOpen()) { // a superfluous "(" before a word
        _repair.dropOpen();
        return readStrayWords();
    }
    if (kind == RtiFedClause::unknown || (kind == RtiFedClause::secLevel && _nesting.innermost().hasClauses))
        return refuseClause(begin);
    _nesting.innermost().hasClauses = true;
    _nesting.open({kind, begin, {}});
    if (refuseSecond())
        return skipClause(0);
    advance();
    readArguments();
}

/// Reports a clause that is not allowed here, and skips it.
void RtiFedReader::refuseClause(RtiFedOffset begin) {
    const bool ends = _token.kind == Kind::end || _token.kind == Kind::nul || isCut(_token);
    if (!ends && isLeaf(_nesting.kind()))
        _nesting.addError(Problem::expectedClose, begin);
    else if (!ends)
        _nesting.addError(Problem::expectedClause, _token.begin);
    _nesting.open({RtiFedClause::unknown, begin, _token.kind == Kind::name ? _token.text : RtiFedSpan()});
    if (isCut(_token))
        advance();
    skipClause(0);
}

/// Reports the innermost clause if it is the second of a kind that is allowed once: all in the FED clause except
/// federates. Returns whether it is.
bool RtiFedReader::refuseSecond() {
    const RtiFedClauseName &clause = _nesting.innermost().name;
    if (_nesting.depth() != 2 || clause.kind == RtiFedClause::federate)
        return false;
    RtiFedOffset &first = _firstOf[static_cast<std::size_t>(clause.kind)];
    if (first == 0) {
        first = clause.begin;
        return false;
    }
    _nesting.addError(Problem::secondClause, clause.begin).firstClause = first;
    return true;
}

void RtiFedReader::readArguments() {
    const RtiFedClauseForm &form = formOf(_nesting.kind());
    RtiFedArguments arguments;
    std::size_t count = 0;
    while (count < form.numArguments + (form.maySpace ? 1 : 0) && readArgument(count, arguments))
        ++count;
    if (_nesting.stopped)
        return;
    if (_nesting.innermost().hasStrayQuote)
        std::fill(arguments.begin() + 1, arguments.end(), RtiFedSpan());
    if (count < form.numArguments) { // the missing word may be the name
        ++lostNames;
        classesKnown = classesKnown && !isClass(_nesting.kind());
    }
    if (count == 0 && form.numArguments > 0) { // with a name, it is declared nevertheless
        spacesKnown = spacesKnown && _nesting.kind() != RtiFedClause::space;
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
    const bool required = index < formOf(_nesting.kind()).numArguments;
    if (_token.kind != Kind::name && (!required || !dropBeforeArgument(index)))
        return false;
    if (isCut(_token)) {
        advance();
        _nesting.reportLeftOpen(_token.begin);
        return false;
    }
    if (!required && _nesting.isKeywordNearby(wordOf(_token)) && _repair.mayInsertOpen()) // the next clause's keyword
        return false;
    if (_token.text.length > kMaxNameLength)
        _nesting.addError(Problem::nameTooLong, _token.begin).nameLength = _token.text.length;
    arguments[index] = _token.text;
    if (index == 0 && formOf(_nesting.kind()).named)
        _nesting.innermost().name.label = _token.text;
    if (_token.afterStrayQuote())
        _nesting.innermost().hasStrayQuote = true;
    advance();
    return true;
}

/// Declares the innermost clause. Returns false if it is beyond a limit, so that the clauses in it cannot be read.
bool RtiFedReader::declare(const RtiFedArguments &arguments) {
    const auto isTooLong = [](RtiFedSpan span) { return span.length > kMaxNameLength; };
    if (std::any_of(arguments.begin(), arguments.end(), isTooLong))
        return false;
    const RtiFedClause kind = _nesting.kind();
    if (isClass(kind))
        return declareClass(kind == RtiFedClause::objectClass ? declarations.objects : declarations.interactions,
                            arguments);
    declarations.add(kind, _nesting.parent().declaration, arguments);
    return true;
}

bool RtiFedReader::declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments) {
    RtiFedNesting::Clause &clause = _nesting.innermost();
    const RtiFedNesting::Clause &outer = _nesting.parent();
    const RtiFedSpan name = arguments[0];
    clause.level = outer.level + 1;
    clause.fullNameLength = outer.fullNameLength + (outer.level > 0 ? 1 : 0) + name.length;
    if (clause.level > kMaxClassNesting) {
        _nesting.addError(Problem::nestedTooDeeply, clause.name.begin);
        return false;
    }
    if (clause.fullNameLength > kMaxNameLength) {
        _nesting.addError(Problem::fullNameTooLong, _text.withQuotes(name).begin).nameLength = clause.fullNameLength;
        return false;
    }
    _fullNames += clause.fullNameLength;
    if (_fullNames > kMaxFullNames) {
        _nesting.stop(Problem::namesTooLong, clause.name.begin);
        return true;
    }
    if (_text.at(name).find('.') != std::string_view::npos)
        _nesting.addError(Problem::dotInClassName, _text.withQuotes(name).begin);
    clause.declaration = static_cast<std::uint32_t>(tree.classes.size());
    tree.classes.push_back({arguments, clause.level});
    return true;
}

void RtiFedReader::closeClause() {
    _spacesRead = _spacesRead || _nesting.kind() == RtiFedClause::spaces;
    _nesting.close(_token.begin);
    advance();
    _afterClose = true;
}

/// Reads words where a clause or a ")" is expected: the keyword of a clause whose "(" was forgotten, further words of
/// the clause closed just before, or superfluous words.
void RtiFedReader::readStrayWords() {
    if (isCut(_token)) {
        advance();
        return _nesting.reportLeftOpen(_token.begin);
    }
    if (childHere(_token) != RtiFedClause::unknown && _repair.mayInsertOpen()) {
        _nesting.addError(Problem::expectedClose, _token.begin);
        _repair.insertOpen();
        return readFromKeyword(_token.begin, false);
    }
    const bool reopened = _afterClose && formOf(_nesting.lastClosed()).numArguments > 0 &&
                          _nesting.reopenLastClosed(Problem::expectedClose, _token.begin);
    if (!reopened && !_nesting.innermost().hasStrayQuote) {
        _nesting.addError(Problem::expectedClose, _token.begin);
        forgetArguments();
    }
    skipStrayWords();
}

/// Skips words up to the next parenthesis or to a keyword whose "(" may be inserted.
void RtiFedReader::skipStrayWords() {
    const RtiFedNesting::Clause &clause = _nesting.innermost();
    skippedNames.push_back(_token.text);
    if (isClass(clause.name.kind) && !clause.hasClauses) // a stray word may be the name that was meant
        classesKnown = false;
    while (_token.kind == Kind::name && (childHere(_token) == RtiFedClause::unknown || !_repair.mayInsertOpen()))
        advance();
}

/// If a clause has a superfluous word, it may be any of them. Forgets all words of the innermost one but its name.
void RtiFedReader::forgetArguments() {
    const RtiFedNesting::Clause &clause = _nesting.innermost();
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
    if (_nesting.depth() == 2)
        _skippedInFed = true;
    std::size_t depth = 1, words = wordsRead;
    for (; depth > 0 && !_nesting.stopped; advance()) {
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
            return _nesting.stop(Problem::nulByte, _token.begin);
        case Kind::end:
            return _nesting.reportLeftOpen(_token.begin);
        }
    }
    _nesting.drop();
}

/// Reads what follows the FED clause: nothing, or sections if the FED clause was closed too early. Returns whether that
/// clause was reopened.
bool RtiFedReader::readAfterFed() {
    if (_token.kind == Kind::nul) {
        _nesting.stop(Problem::nulByte, _token.begin);
        return false;
    }
    if (_token.kind == Kind::end) {
        reportMissingClauses();
        return false;
    }
    const bool sectionFollows =
        _token.kind == Kind::open && childOf(RtiFedClause::fed, wordOf(peek())) != RtiFedClause::unknown;
    const bool reopened = sectionFollows && _nesting.reopenLastClosed(Problem::trailingText, _token.begin);
    if (!reopened) {
        _nesting.addErrorWithSuspect(Problem::trailingText, _token.begin);
        _nesting.known = false;
        spacesKnown = spacesKnown && _spacesRead;
    }
    _nesting.errors.back().fedClose = _nesting.lastClose();
    return reopened;
}

/// Drops the "(" that was just read and those directly after it, as far as there are too many.
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
        _nesting.reportLeftOpen(_token.begin);
    else if (_token.kind == Kind::nul)
        _nesting.stop(Problem::nulByte, _token.begin);
    else
        _nesting.addError(Problem::expectedArgument, _token.begin).argument = index;
    const RtiFedToken next = peek();
    if (_nesting.stopped || next.kind != Kind::name)
        return false;
    if (_token.kind == Kind::close && _repair.mayDropClose())
        _repair.dropClose();
    else if (_token.kind == Kind::open && !_nesting.isKeywordNearby(wordOf(next)) && _repair.mayDropOpen())
        _repair.dropOpen();
    else
        return false;
    advance();
    return true;
}

/// Repairs the nesting so that the innermost clause allows the clause that the current token begins, if an enclosing
/// one does or the one closed just before.
void RtiFedReader::moveToParent(RtiFedOffset begin, bool afterClose) {
    _nesting.insertForgottenCloses(wordOf(_token), begin);
    if (afterClose && childOf(_nesting.lastClosed(), wordOf(_token)) != RtiFedClause::unknown)
        _nesting.reopenLastClosed(Problem::expectedClause, _token.begin);
}

/// The text of a word that may be a keyword: of a name without quotes; of other tokens none.
std::string_view RtiFedReader::wordOf(const RtiFedToken &token) const {
    return token.kind == Kind::name && !token.quoted ? _text.at(token.text) : std::string_view();
}

/// The kind of clause that this word begins in the innermost one.
RtiFedClause RtiFedReader::childHere(const RtiFedToken &token) const {
    return childOf(_nesting.kind(), wordOf(token));
}

/// Whether the text ends in or directly after this word, so that letters may be missing.
bool RtiFedReader::isCut(const RtiFedToken &token) const {
    return token.kind == Kind::name && token.text.begin + token.text.length == _text.bytes().size();
}

void RtiFedReader::reportMissingClauses() {
    for (const RtiFedClause kind : {RtiFedClause::federation, RtiFedClause::version})
        if (_firstOf[static_cast<std::size_t>(kind)] == 0 && !_skippedInFed)
            _nesting.addError(Problem::missingClause, _nesting.lastClose()).missing = kind;
}
