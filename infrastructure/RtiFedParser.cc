#include "infrastructure/RtiFedParser.hh"

#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "infrastructure/parser/RtiFedPrintable.hh"
#include "infrastructure/parser/RtiFedReader.hh"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace {

/// Replaces a dot in the name of a class, so that the rest is not taken for a subclass: a character that looks alike.
constexpr std::string_view kDotInName = "\xE2\x80\xA4";

bool lessInAnyCase(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return RtiStringUtility::toupper(x) < RtiStringUtility::toupper(y);
    });
}

/// The number of bytes from the current position to the end of the file, at most kMaxTextSize; 0 if unknown, as for a
/// pipe.
// unreached in this function: what tells its position can seek, and the tests' files do not shrink at that moment
// equivalent in this function: the number is only that of bytes to allocate at once
std::size_t bytesLeft(std::FILE *file) {
    const long position = std::ftell(file);
    if (position < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return 0;
    const long end = std::ftell(file);
    if (std::fseek(file, position, SEEK_SET) != 0)
        throw "the file cannot be read: " + std::generic_category().message(errno);
    return end > position ? std::min(static_cast<std::size_t>(end - position), std::size_t(kMaxTextSize)) : 0;
}

} // namespace

struct RtiFedParser::Contents {
    explicit Contents(std::string bytes) : text(std::move(bytes)), read(RtiFedReader::read(text)) {
        std::sort(read.skippedNames.begin(), read.skippedNames.end(),
                  [](const auto &a, const auto &b) { return lessInAnyCase(a.name, b.name); });
    }

    /// Calls `onClass` with the full name of each class and its number of members, and `onMember` for each member.
    /// Their words are those of the current declaration.
    template <class OnClass, class OnMember>
    void deliver(const RtiFedDeclarations::Tree &tree, OnClass onClass, OnMember onMember) {
        std::string path;
        std::vector<std::size_t> ends; // of the full names of the superclasses in `path`, by level
        for (const RtiFedDeclarations::Class &declared : tree.classes) {
            current = declared.arguments;
            ends.resize(declared.level - 1);
            path.resize(ends.empty() ? 0 : ends.back());
            path += ends.empty() ? "" : ".";
            const std::size_t name = path.size();
            path += word(0);
            for (std::size_t dot = path.find('.', name); dot != std::string::npos; dot = path.find('.', dot))
                path.replace(dot, 1, kDotInName); // only in a text with errors
            ends.push_back(path.size());
            onClass(path, declared.numMembers);
            for (auto i = declared.firstMember; i != RtiFedDeclarations::kNone; i = tree.members[i].next) {
                current = tree.members[i].arguments;
                onMember();
            }
        }
    }

    /// The places at which a name was skipped.
    auto skipped(std::string_view name) const {
        return std::equal_range(read.skippedNames.begin(), read.skippedNames.end(), RtiFedReader::Skipped{name, 0},
                                [](const auto &a, const auto &b) { return lessInAnyCase(a.name, b.name); });
    }

    /// A word of the current declaration.
    std::string_view word(std::size_t index) const {
        return {text.bytes().data() + current[index].begin, current[index].length}; // which the lexer cut from the text
    }

    RtiFedText text;
    RtiFedReader read;
    RtiFedArguments current; // of the declaration that is being delivered
};

RtiFedParser::RtiFedParser(std::string text) : _contents(std::make_unique<Contents>(std::move(text))) {}

RtiFedParser::~RtiFedParser() = default;

std::string RtiFedParser::readText(std::FILE *file) {
    constexpr std::size_t kChunk = 65536;
    std::string text;
    for (bool more = true; more;) {
        const std::size_t before = text.size();
        text.resize(before + kChunk);
        const std::size_t size = std::fread(&text[before], 1, kChunk, file);
        text.resize(before + size);
        // unreached: too long a text takes gigabytes
        more = size > 0 && !std::memchr(&text[before], '\0', size) && text.size() <= kMaxTextSize;
        // A long text: allocate once, if the file knows its size.
        // equivalent: only speed
        if (more && size == kChunk && before == 0)
            text.reserve(bytesLeft(file) + 2 * kChunk); // equivalent: only speed
    }
    if (std::ferror(file))
        throw "the file cannot be read: " + std::generic_category().message(errno);
    return text;
}

std::size_t RtiFedParser::numErrors() const {
    return _contents->read.nesting.errors.size();
}

RtiFedParser::Error RtiFedParser::error(std::size_t index) const {
    return _contents->read.nesting.errors[index].resolve(_contents->text);
}

void RtiFedParser::deliver(RtiFedParserCodegen &codegen) {
    deliverObjects(codegen);
    deliverInteractions(codegen);
}

void RtiFedParser::deliverOnce(RtiFedParserCodegen &codegen) {
    deliverObjects(codegen);
    _contents->read.declarations.objects = {};
    deliverInteractions(codegen);
}

/// Delivers the object classes and everything before them: federation, version and spaces.
void RtiFedParser::deliverObjects(RtiFedParserCodegen &codegen) {
    Contents &contents = *_contents;
    const RtiFedDeclarations &declared = contents.read.declarations;
    const auto enter = [&contents](RtiFedSpan name) {
        contents.current = {name};
        return std::string(contents.word(0));
    };
    const auto countsOf = [](const RtiFedDeclarations::Tree &tree) {
        return RtiFedDeclarationCounts::Classes{tree.classes.size(), tree.numLetters, tree.members.size()};
    };
    codegen.expectDeclarations({countsOf(declared.objects), countsOf(declared.interactions)});
    if (declared.federation.begin)
        codegen.setFederate(enter(declared.federation));
    if (declared.version.begin)
        codegen.setFederateVersion(enter(declared.version));
    auto dimension = declared.dimensions.begin();
    for (const RtiFedDeclarations::Space &space : declared.spaces) {
        codegen.addSpace(enter(space.name));
        for (std::uint32_t i = 0; i < space.numDimensions; ++i)
            codegen.addDimension(enter(*dimension++));
    }
    const auto onClass = [&](std::string_view name, std::size_t members) { codegen.declareObjectClass(name, members); };
    contents.deliver(declared.objects, onClass, [&] {
        codegen.declareObjectClassAttribute(contents.word(0), contents.word(1), contents.word(2), contents.word(3));
    });
}

void RtiFedParser::deliverInteractions(RtiFedParserCodegen &codegen) {
    Contents &contents = *_contents;
    const auto onClass = [&](std::string_view name, std::size_t members) {
        codegen.declareInteractionClass(name, contents.word(1), contents.word(2), contents.word(3), members);
    };
    contents.deliver(contents.read.declarations.interactions, onClass,
                     [&] { codegen.declareParameter(contents.word(0)); });
    contents.current = {};
}

RtiFedPosition RtiFedParser::position(std::size_t argument) const {
    return positionAt(span(argument).begin);
}

RtiFedSpan RtiFedParser::span(std::size_t argument) const {
    return given(argument) ? withQuotes(_contents->text, _contents->current, argument)
                           : RtiFedSpan{_contents->read.nesting.fed, 1};
}

std::string_view RtiFedParser::text() const {
    return _contents->text.bytes();
}

RtiFedPosition RtiFedParser::positionAt(std::uint32_t offset) const {
    return _contents->text.position(offset);
}

RtiFedPiece RtiFedParser::pieceAt(std::uint32_t offset) const {
    const RtiFedOffset begin = _contents->text.begin();
    if (offset < begin)
        return {RtiFedPiece::Kind::byteOrderMark, {0, begin}};
    return RtiFedLexer(_contents->text, offset).nextPiece();
}

std::string_view RtiFedParser::keyword(std::string_view word) {
    return keywordOf(word);
}

bool RtiFedParser::given(std::size_t argument) const {
    return _contents->current.at(argument).begin > 0;
}

RtiFedSpan RtiFedParser::section(std::string_view keyword) const {
    const RtiFedOffset begin = _contents->read.firstOf(childOf(RtiFedClause::fed, keyword));
    if (begin == 0)
        return _contents->read.nesting.fedKeyword;
    RtiFedLexer lexer(_contents->text, begin);
    const RtiFedToken open = lexer.next();
    return open.kind == RtiFedToken::Kind::open ? lexer.next().text : open.text; // its "(" may have been forgotten
}

bool RtiFedParser::nestingKnown() const {
    return _contents->read.nesting.known && !_contents->read.nesting.stopped;
}

bool RtiFedParser::spacesKnown() const {
    return _contents->read.spacesKnown;
}

bool RtiFedParser::classesKnown() const {
    return _contents->read.classesKnown;
}

std::size_t RtiFedParser::numLostNames() const {
    return _contents->read.ownersOfLostNames.size();
}

std::size_t RtiFedParser::numLostNames(std::uint32_t owner) const {
    const auto &owners = _contents->read.ownersOfLostNames;
    return static_cast<std::size_t>(std::count(owners.begin(), owners.end(), owner));
}

bool RtiFedParser::skipped(std::string_view name) const {
    const auto [begin, end] = _contents->skipped(name);
    return begin != end;
}

bool RtiFedParser::skipped(std::string_view name, std::uint32_t owner) const {
    const auto [begin, end] = _contents->skipped(name);
    return std::any_of(begin, end, [owner](const RtiFedReader::Skipped &skipped) { return skipped.owner == owner; });
}

std::string RtiFedParser::blankLookalikeIn(std::string_view word) {
    const std::size_t blank = findForeignBlank(word);
    return blank == std::string_view::npos ? std::string() : nameOfForeignBlank(word.substr(blank));
}

std::string_view RtiFedParser::foreignCommentMark(std::string_view word) {
    const RtiFedCommentMark mark = commentMarkAt(word);
    return mark == RtiFedCommentMark::none ? std::string_view() : textOf(mark);
}

std::size_t RtiFedParser::printableSize(std::string_view bytes) {
    return ::printableSize(bytes);
}

std::string RtiFedParser::printable(std::string_view bytes, std::size_t limit) {
    return ::printable(bytes, limit);
}

int RtiFedParser_Class_main(std::FILE *file, RtiFedParserCodegen *codegen) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> closer(file, &std::fclose);
    RtiFedParser parser(RtiFedParser::readText(file));
    if (parser.numErrors() > 0) {
        const RtiFedParser::Error error = parser.error(0);
        throw "line " + std::to_string(error.position.line) + ", column " + std::to_string(error.position.column) +
            ": " + error.text;
    }
    parser.deliverOnce(*codegen);
    return 0;
}
