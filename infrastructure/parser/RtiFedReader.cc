#include "infrastructure/parser/RtiFedReader.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

using Kind = RtiFedToken::Kind;

namespace {
// Of a large text, in which most clauses are attributes. equivalent: only speed
constexpr std::size_t kBytesPerAttribute = 80;
} // namespace

RtiFedReader::RtiFedReader(const RtiFedText &text, RtiFedRepair repair)
    : nesting(std::move(repair)), _text(text), _lexer(text, text.begin()) {
    openFed();
    while (!nesting.stopped && (nesting.depth() > 0 || readAfterFed()))
        step();
    spacesKnown = spacesKnown && (_spacesRead || !nesting.stopped);
    std::stable_sort(nesting.errors.begin(), nesting.errors.end(),
                     [](const RtiFedSyntaxError &a, const RtiFedSyntaxError &b) { return a.place() < b.place(); });
}

void RtiFedReader::advance() {
    do {
        _lastEnd = _lexer.at();
        if (nesting.repair.isJudging() && insertSuspectedClose())
            return;
        _lexer.next(_token, &_foreign);
        _afterClose = false;
        reportForeign();
        if (_token.afterStrayQuote())
            nesting.addError(Problem::strayQuote, _token.strayQuote);
    } while (nesting.repair.isJudging() && dropSuspected());
}

void RtiFedReader::reportForeign() {
    for (const RtiFedOffset at : _foreign) {
        const bool comment = commentMarkAt(_text.bytes().substr(at)) != RtiFedCommentMark::none;
        nesting.addError(comment ? Problem::foreignComment : Problem::foreignBlank, at);
    }
    _foreign.clear();
}

void RtiFedReader::openFed() {
    // unreached: takes gigabytes
    if (_text.bytes().size() > kMaxTextSize)
        // unreached: takes gigabytes
        return nesting.stop(Problem::textTooLong, _text.begin());
    advance();
    if (foreignFormatOf(_text.bytes().substr(_text.begin())))
        return nesting.stop(Problem::expectedFed, _text.begin());
    rereadForeign();
    if (_token.kind == Kind::open) {
        nesting.fed = _token.begin;
        advance();
        rereadForeign();
        nesting.fedKeyword = _token.text;
        if (isKeywordOf(RtiFedClause::fed, wordOf(_token))) {
            nesting.open({RtiFedClause::fed, nesting.fed, _token.text});
            // equivalent: only speed
            declarations.objects.members.reserve(_text.bytes().size() / kBytesPerAttribute);
            return advance();
        }
    }
    nesting.stop(Problem::expectedFed, _token.begin);
}

void RtiFedReader::step() {
    switch (_token.kind) {
    case Kind::open:
        return !nesting.repair.isJudging() && (readPlainMembers() || readPlainClass()) ? void() : readClause();
    case Kind::close:
        return closeClause();
    default:
        return stopAtEnd() ? void() : readStrayWords();
    }
}

/// Most clauses of a text are attributes, parameters and dimensions of plain words: no quotes, no comments, nothing
/// missing. This reads a run of them without making tokens, and declares them as readClause() would. It stops before
/// the first clause that is not of this form, which readClause() then reads. Returns whether anything was read.
bool RtiFedReader::readPlainMembers() {
    RtiFedNesting::Clause &owner = nesting.innermost();
    const RtiFedClause kind = memberOf(owner.name.kind);
    if (kind == RtiFedClause::unknown) // equivalent: only speed
        return false;
    RtiFedLexer ahead = _lexer;
    RtiFedOffset begin = _token.begin, end = 0; // of the current member, and of the last one
    RtiFedClauseName last;
    for (RtiFedArguments words; readPlainWords(ahead, kind, words) && ahead.nextClose();) {
        declarations.add(kind, owner.declaration, words);
        last = {kind, begin, words[0]};
        end = ahead.at();
        // equivalent: where no "(" is, no words are found either
        if (!ahead.nextOpen(begin))
            break; // equivalent: likewise
    }
    if (end == 0)
        return false;
    ahead.goBack(end);
    _lexer = ahead;
    owner.hasClauses = true;
    nesting.open(last);
    nesting.close(_lexer.at() - 1);
    advance();
    _afterClose = true;
    return true;
}

/// The same for the keyword and words of one class.
bool RtiFedReader::readPlainClass() {
    const RtiFedClause kind = classIn(nesting.kind());
    RtiFedLexer ahead = _lexer;
    RtiFedArguments words;
    if (kind == RtiFedClause::unknown || !readPlainWords(ahead, kind, words)) // equivalent: only speed
        return false;
    nesting.innermost().hasClauses = true;
    nesting.open({kind, _token.begin, words[0]});
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
    return childOf(nesting.kind(), _text.at(words[count - 1])) == RtiFedClause::unknown &&
           childOf(kind, _text.at(words[count - 1])) == RtiFedClause::unknown;
}

/// Reads a clause from its "(", the current token.
void RtiFedReader::readClause() {
    const RtiFedOffset begin = _token.begin;
    const bool afterClose = _afterClose;
    advance();
    if (_token.kind == Kind::open || _token.kind == Kind::close) {
        const bool surplusOpen = nesting.repair.mayDropOpen(); // and perhaps those directly after it
        const bool surplusClose =
            _token.kind == Kind::close && peek().kind == Kind::name && nesting.repair.mayDropClose();
        if (surplusOpen || surplusClose)
            nesting.addError(isLeaf(nesting.kind()) ? Problem::expectedClose : Problem::expectedClause, _token.begin);
        if (surplusOpen) {
            nesting.repair.dropOpen();
            for (; _token.kind == Kind::open && peek().kind == Kind::open && nesting.repair.mayDropOpen(); advance())
                nesting.repair.dropOpen();
            return;
        }
        if (surplusClose) {
            nesting.repair.dropClose();
            advance();
        }
    }
    readFromKeyword(begin, afterClose);
}

/// Reads a clause from its keyword, the current token. `begin` is its "(", or its keyword if the "(" was forgotten;
/// `afterClose` says whether it directly follows the ")" of another clause. If the innermost clause does not allow it,
/// the nesting is repaired so that it does, if an enclosing clause does or the one closed just before.
void RtiFedReader::readFromKeyword(RtiFedOffset begin, bool afterClose) {
    if (childHere() == RtiFedClause::unknown && !rereadForeign()) {
        nesting.insertForgottenCloses(wordOf(_token), begin);
        if (afterClose && childOf(nesting.lastClosed.name.kind, wordOf(_token)) != RtiFedClause::unknown)
            nesting.reopenLastClosed(Problem::expectedClause, _token.begin);
    }
    const RtiFedClause kind = childHere();
    if (kind == RtiFedClause::unknown && _token.kind == Kind::name && !isCut() && peek().kind != Kind::name &&
        nesting.repair.mayDropOpen()) { // a superfluous "(" before a word
        nesting.repair.dropOpen();
        return readStrayWords();
    }
    if (kind == RtiFedClause::unknown || (kind == RtiFedClause::secLevel && nesting.innermost().hasClauses))
        return refuseClause(begin);
    nesting.innermost().hasClauses = true;
    nesting.open({kind, begin, {}});
    if (refuseSecond())
        return skipClause(0); // equivalent: how many words may have been names is a guess
    advance();
    readArguments();
}

/// Reports a clause that is not allowed here, and skips it.
void RtiFedReader::refuseClause(RtiFedOffset begin) {
    const bool ends = _token.kind == Kind::end || _token.kind == Kind::nul || isCut();
    const bool leaf = isLeaf(nesting.kind());
    if (!ends)
        nesting.addError(leaf ? Problem::expectedClose : Problem::expectedClause, leaf ? begin : _token.begin);
    nesting.open({RtiFedClause::unknown, begin, _token.kind == Kind::name ? _token.text : RtiFedSpan()});
    if (!stopAtEnd())
        skipClause(0);
}

/// Reports a NUL byte or the end of the text, which may cut a word, if the current token is that. Returns whether the
/// text is not read any further.
bool RtiFedReader::stopAtEnd() {
    if (isCut() && _token.quoted) {
        nesting.stop(Problem::strayQuote, _token.begin);
        return true;
    }
    if (isCut())
        advance();
    if (_token.kind == Kind::nul)
        nesting.stop(Problem::nulByte, _token.begin);
    else if (_token.kind == Kind::end)
        nesting.stop(Problem::leftOpen, _token.begin);
    return nesting.stopped;
}

/// Reports the innermost clause if it is the second of a kind that is allowed once: all in the FED clause except
/// federates. Returns whether it is.
bool RtiFedReader::refuseSecond() {
    const RtiFedClauseName &clause = nesting.innermost().name;
    if (nesting.depth() != 2 || clause.kind == RtiFedClause::federate)
        return false;
    RtiFedOffset &first = _firstOf[static_cast<std::size_t>(clause.kind)];
    if (first == 0) {
        first = clause.begin;
        return false;
    }
    nesting.addError(Problem::secondClause, clause.begin).earlier = first;
    return true;
}

void RtiFedReader::readArguments() {
    const RtiFedClauseForm &form = formOf(nesting.kind());
    RtiFedArguments arguments;
    std::size_t count = 0;
    const std::size_t most = form.numArguments + (form.maySpace ? 1 : 0);
    for (;;) {
        const bool isWord = _token.kind == Kind::name;
        const bool wrong = count < form.numArguments ? !isWord : count == most && isWord;
        if (wrong && rereadForeign(arguments, count))
            continue;
        if (count == most || !readArgument(count, arguments))
            break;
        ++count;
    }
    if (nesting.stopped)
        return;
    if (nesting.innermost().hasStrayQuote)
        std::fill(arguments.begin() + 1, arguments.end(), RtiFedSpan());
    if (count < form.numArguments) { // the missing word may be the name
        nesting.errors.back().numMissing = form.numArguments - count;
        ownersOfLostNames.push_back(nesting.ownerOfInnermost());
        classesKnown = classesKnown && !isClass(nesting.kind());
    }
    if (count == 0 && form.numArguments > 0) { // with a name, it is declared nevertheless
        spacesKnown = spacesKnown && nesting.kind() != RtiFedClause::space;
        return skipClause(1); // equivalent: how many words may have been names is a guess
    }
    declareOrSkip(arguments);
}

void RtiFedReader::declareOrSkip(const RtiFedArguments &arguments) {
    if (!declare(arguments)) {
        addSkipped(arguments[0]);
        skipClause(2); // equivalent: likewise a guess
    }
}

/// Reads one argument of the innermost clause. Returns whether there is one.
bool RtiFedReader::readArgument(std::size_t index, RtiFedArguments &arguments) {
    const bool required = index < formOf(nesting.kind()).numArguments;
    if (_token.kind != Kind::name && (!required || !dropBeforeArgument(index)))
        return false;
    if (stopAtEnd())
        return false;
    if (!required && nesting.isKeywordNearby(wordOf(_token)) && nesting.repair.mayInsertOpen())
        return false; // the next clause's keyword
    if (_token.text.length > kMaxNameLength)
        nesting.addError(Problem::nameTooLong, _token.begin).nameLength = _token.text.length;
    arguments[index] = _token.text;
    if (index == 0 && formOf(nesting.kind()).named)
        nesting.innermost().name.label = _token.text;
    if (_token.afterStrayQuote())
        nesting.innermost().hasStrayQuote = true;
    advance();
    return true;
}

/// If an argument of the innermost clause or the current token has something in it that other languages write, lets the
/// lexer skip that from now on, and reads again from there: then `count` arguments are left. Returns whether it did.
bool RtiFedReader::rereadForeign(RtiFedArguments &arguments, std::size_t &count) {
    for (std::size_t i = 0; i < count && !nesting.innermost().hasStrayQuote; ++i) {
        const bool quoted = withQuotes(_text, arguments, i).begin < arguments[i].begin;
        const bool mayBeComment = i > 0; // a name may begin with any of the marks
        if (quoted || !learnForeign(_text.at(arguments[i]), mayBeComment))
            continue;
        _lexer = RtiFedLexer(_text, arguments[i].begin);
        std::fill(arguments.begin() + static_cast<std::ptrdiff_t>(i), arguments.end(), RtiFedSpan());
        count = i;
        advance();
        return true;
    }
    return rereadForeign();
}

bool RtiFedReader::rereadForeign() {
    if (!learnForeign(wordOf(_token), true))
        return false;
    const bool afterClose = _afterClose;
    _lexer = RtiFedLexer(_text, _token.begin);
    advance();
    _afterClose = afterClose;
    return true;
}

/// Notes what a word has in it that other languages write, if that is new. Returns whether it is.
bool RtiFedReader::learnForeign(std::string_view word, bool mayBeComment) {
    RtiFedHabits &known = _text.habits;
    const RtiFedCommentMark mark = commentMarkAt(word);
    if (mayBeComment && mark != RtiFedCommentMark::none && !known.has(mark)) {
        known.add(mark);
        return true;
    }
    if (known.blanks || findForeignBlank(word) == std::string_view::npos)
        return false;
    return known.blanks = true;
}

/// Declares the innermost clause. Returns false if it is beyond a limit, so that the clauses in it cannot be read.
bool RtiFedReader::declare(const RtiFedArguments &arguments) {
    const auto isTooLong = [](RtiFedSpan span) { return span.length > kMaxNameLength; };
    if (std::any_of(arguments.begin(), arguments.end(), isTooLong))
        return false;
    const RtiFedClause kind = nesting.kind();
    if (isClass(kind))
        return declareClass(kind == RtiFedClause::objectClass ? declarations.objects : declarations.interactions,
                            arguments);
    declarations.add(kind, nesting.parent().declaration, arguments);
    return true;
}

bool RtiFedReader::declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments) {
    RtiFedNesting::Clause &clause = nesting.innermost();
    const RtiFedSpan name = arguments[0];
    const auto level = static_cast<std::uint32_t>(nesting.depth() - 2); // below the FED clause and its section
    clause.fullNameLength = nesting.parent().fullNameLength + (level > 1 ? 1 : 0) + name.length;
    if (level > kMaxClassNesting) {
        nesting.addError(Problem::nestedTooDeeply, clause.name.begin);
        return false;
    }
    if (clause.fullNameLength > kMaxNameLength) {
        nesting.addError(Problem::fullNameTooLong, _text.withQuotes(name).begin).nameLength = clause.fullNameLength;
        return false;
    }
    _fullNames += clause.fullNameLength;
    if (_fullNames > kMaxFullNames) {
        nesting.stop(Problem::namesTooLong, clause.name.begin);
        return true;
    }
    if (_text.at(name).find('.') != std::string_view::npos)
        nesting.addError(Problem::dotInClassName, _text.withQuotes(name).begin);
    clause.declaration = static_cast<std::uint32_t>(tree.classes.size());
    tree.classes.push_back({arguments, level});
    tree.numLetters += clause.fullNameLength;
    return true;
}

void RtiFedReader::closeClause() {
    _spacesRead = _spacesRead || nesting.kind() == RtiFedClause::spaces;
    nesting.close(_token.begin);
    advance();
    _afterClose = true;
}

/// Reads words where a clause or a ")" is expected: the keyword of a clause whose "(" was forgotten, further words of
/// the clause closed just before, or superfluous words. Skips all but the keyword, up to the next parenthesis or to a
/// keyword whose "(" may be inserted.
void RtiFedReader::readStrayWords() {
    if (rereadForeign())
        return;
    if (childHere() != RtiFedClause::unknown && nesting.repair.mayInsertOpen()) {
        nesting.addError(Problem::expectedClose, _token.begin);
        nesting.repair.insertOpen();
        return readFromKeyword(_token.begin, false);
    }
    const bool reopened = _afterClose && formOf(nesting.lastClosed.name.kind).numArguments > 0 &&
                          nesting.reopenLastClosed(Problem::expectedClose, _token.begin);
    if (!reopened && !nesting.innermost().hasStrayQuote) {
        nesting.addError(Problem::expectedClose, _token.begin);
        forgetArguments();
    }
    const RtiFedNesting::Clause &clause = nesting.innermost();
    addSkipped(_token.text);
    if (isClass(clause.name.kind) && !clause.hasClauses) // a stray word may be the name that was meant
        classesKnown = false;
    while (_token.kind == Kind::name && (childHere() == RtiFedClause::unknown || !nesting.repair.mayInsertOpen()))
        if (!rereadForeign())
            advance();
}

/// Notes a word of the innermost clause that was not understood.
void RtiFedReader::addSkipped(RtiFedSpan name) {
    skippedNames.push_back({_text.at(name), nesting.ownerOfInnermost()});
}

/// If a clause has a superfluous word, it may be any of them. Forgets all words of the innermost one but its name.
void RtiFedReader::forgetArguments() {
    const RtiFedNesting::Clause &clause = nesting.innermost();
    RtiFedArguments *arguments = nullptr;
    if (clause.name.kind == RtiFedClause::attribute)
        arguments = &declarations.objects.members.back().arguments;
    else if (clause.name.kind == RtiFedClause::interactionClass && !clause.hasClauses)
        arguments = &declarations.interactions.classes[clause.declaration].arguments;
    if (!arguments)
        return;
    addSkipped((*arguments)[1]);
    std::fill(arguments->begin() + 1, arguments->end(), RtiFedSpan());
}

/// Skips the rest of the innermost clause, its ")" included. `wordsRead` words of that clause were read already.
void RtiFedReader::skipClause(std::size_t wordsRead) {
    if (nesting.depth() == 2)
        _skippedInFed = true;
    std::size_t depth = 1, words = wordsRead;
    for (; depth > 0 && !nesting.stopped; advance()) {
        switch (_token.kind) {
        case Kind::open:
            ++depth;
            words = 0;
            break;
        case Kind::close:
            --depth;
            break;
        case Kind::name:
            if (words++ < 3) // equivalent: likewise a guess
                addSkipped(_token.text);
            break;
        default:
            return void(stopAtEnd());
        }
    }
    nesting.drop();
}

/// Reads what follows the FED clause: nothing, or sections if the FED clause was closed too early. Returns whether that
/// clause was reopened. If it was not, and nothing follows, reports the clauses that it lacks.
bool RtiFedReader::readAfterFed() {
    rereadForeign();
    if (_token.kind == Kind::nul)
        return !stopAtEnd();
    if (_token.kind == Kind::end) {
        for (const RtiFedClause kind : {RtiFedClause::federation, RtiFedClause::version})
            if (_firstOf[static_cast<std::size_t>(kind)] == 0 && !_skippedInFed)
                nesting.addError(Problem::missingClause, nesting.lastClose).missing = kind;
        return false;
    }
    const bool sectionFollows =
        _token.kind == Kind::open && childOf(RtiFedClause::fed, wordOf(peek())) != RtiFedClause::unknown;
    const bool reopened = sectionFollows && nesting.reopenLastClosed(Problem::trailingText, _token.begin);
    if (!reopened) {
        nesting.addError(Problem::trailingText, _token.begin);
        nesting.known = false;
        spacesKnown = spacesKnown && _spacesRead;
    }
    nesting.errors.back().earlier = nesting.lastClose;
    return reopened;
}

/// Reports that a word was expected. If it follows a surplus parenthesis, drops that. Returns whether it did.
bool RtiFedReader::dropBeforeArgument(std::size_t index) {
    if (!stopAtEnd()) {
        const std::string_view gap = _text.bytes().substr(_lastEnd, _token.begin - _lastEnd);
        RtiFedSyntaxError &error = nesting.addError(Problem::expectedArgument, _token.begin);
        error.argument = index;
        error.wordsEnd = gap.find_first_of("\r\n") == std::string_view::npos ? 0 : _lastEnd;
    }
    const RtiFedToken next = peek();
    if (nesting.stopped || next.kind != Kind::name)
        return false;
    if (_token.kind == Kind::close && nesting.repair.mayDropClose())
        nesting.repair.dropClose();
    else if (_token.kind == Kind::open && !nesting.isKeywordNearby(wordOf(next)) && nesting.repair.mayDropOpen())
        nesting.repair.dropOpen();
    else
        return false;
    advance();
    return true;
}

/// The text of a word that may be a keyword: of a name without quotes; of other tokens none.
std::string_view RtiFedReader::wordOf(const RtiFedToken &token) const {
    return token.kind == Kind::name && !token.quoted ? _text.at(token.text) : std::string_view();
}

/// Whether the text ends in or directly after the current word, so that letters may be missing.
bool RtiFedReader::isCut() const {
    return _token.kind == Kind::name && _token.text.begin + _token.text.length == _text.bytes().size();
}
