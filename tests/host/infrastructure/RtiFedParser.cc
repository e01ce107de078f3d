#include "infrastructure/RtiFedParser.hh"

#include "fed/loading/RtiFedParserCodegen.hh"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Clause {
    std::string word(std::size_t i) const { return i < words.size() ? words[i] : ""; }

    std::vector<std::string> words;
    std::vector<Clause> clauses;
};

/// Reads the next byte; a comment reads as the end of its line.
int nextByte(std::FILE *file) {
    int c = std::getc(file);
    if (c == ';')
        while (c != '\n' && c != EOF)
            c = std::getc(file);
    return c;
}

/// Reads the rest of a clause, after its "(".
Clause readClause(std::FILE *file, unsigned level) {
    if (level > kMaxClassNesting + 2)
        throw "nested too deeply";
    Clause clause;
    bool inWord = false;
    for (int c = nextByte(file); c != ')'; c = nextByte(file)) {
        if (c == EOF)
            throw "a parenthesis is missing";
        const bool isWord = c > 0 && !std::strchr(" \t\r\n(", c);
        if (isWord && !inWord)
            clause.words.emplace_back();
        if (isWord)
            clause.words.back() += static_cast<char>(c);
        if (c == '(')
            clause.clauses.push_back(readClause(file, level + 1));
        inWord = isWord;
    }
    return clause;
}

template <class OnClass, class OnMember>
void forEachClass(const Clause &parent, const std::string &prefix, OnClass onClass, OnMember onMember) {
    for (const Clause &inner : parent.clauses) {
        if (inner.word(0) != "class")
            continue;
        const std::string name = prefix + inner.word(1);
        onClass(name, inner);
        for (const Clause &member : inner.clauses)
            if (member.word(0) != "class")
                onMember(member);
        forEachClass(inner, name + ".", onClass, onMember);
    }
}

void deliver(const Clause &section, RtiFedParserCodegen &to) {
    const std::string keyword = section.word(0);
    if (keyword == "Federation") {
        to.setFederate(section.word(1));
    } else if (keyword == "FEDversion") {
        to.setFederateVersion(section.word(1));
    } else if (keyword == "spaces") {
        for (const Clause &space : section.clauses) {
            to.addSpace(space.word(1));
            for (const Clause &dimension : space.clauses)
                to.addDimension(dimension.word(1));
        }
    } else if (keyword == "objects") {
        forEachClass(
            section, "", [&to](const std::string &name, const Clause &) { to.addObjectClass(name); },
            [&to](const Clause &a) { to.addObjectClassAttribute(a.word(1), a.word(2), a.word(3), a.word(4)); });
    } else if (keyword == "interactions") {
        forEachClass(
            section, "",
            [&to](const std::string &name, const Clause &c) {
                to.addInteractionClass(name, c.word(2), c.word(3), c.word(4));
            },
            [&to](const Clause &parameter) { to.addParameter(parameter.word(1)); });
    } else {
        throw "an unknown section";
    }
}

} // namespace

int RtiFedParser_Class_main(std::FILE *file, RtiFedParserCodegen *codegen) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> closer(file, &std::fclose);
    for (int c = nextByte(file); c != '('; c = nextByte(file))
        if (c == EOF)
            throw "no clause";
    for (const Clause &section : readClause(file, 1).clauses)
        deliver(section, *codegen);
    return 0;
}
