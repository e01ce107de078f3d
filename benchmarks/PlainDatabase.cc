#include "benchmarks/Loads.hh"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

struct Space {
    std::string name;
    unsigned handle;
    std::vector<std::string> dimensions;
    std::map<std::string, unsigned> dimensionHandles;
};

struct Delivery {
    unsigned transportation = 0, ordering = 0, space = 0;
};

struct Member {
    std::string name;
    unsigned handle;
    Delivery delivery; // of an attribute
};

struct Class {
    std::string name;
    unsigned handle;
    Class *parent;
    Delivery delivery; // of an interaction class
    std::vector<Class *> children;
    std::vector<std::unique_ptr<Member>> members;
    std::map<std::string, Member *> membersByName;
};

struct Tree {
    std::map<std::string, std::unique_ptr<Class>> classes;
    std::map<unsigned, Class *> classesByHandle;
    std::map<unsigned, Class *> classesByMember;
};

std::string upper(std::string text) {
    for (char &c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

[[noreturn]] void refuseDuplicate(const std::string &name) {
    throw std::runtime_error("duplicate name " + name);
}

class PlainDatabase : public Model {
public:
    Space *addSpace(const std::string &name) {
        auto &space = _spaces[upper(name)];
        if (space)
            refuseDuplicate(name);
        const auto handle = static_cast<unsigned>(_spaces.size());
        space = std::make_unique<Space>(Space{name, handle, {}, {}});
        _spacesByHandle[handle] = space.get();
        return space.get();
    }
    static void addDimension(Space *space, const std::string &name) {
        if (!space->dimensionHandles.emplace(upper(name), space->dimensions.size()).second)
            refuseDuplicate(name);
        space->dimensions.push_back(name);
    }
    unsigned spaceHandle(const std::string &name) const { return _spaces.at(upper(name))->handle; }

    static Class *addClass(Tree &tree, Class *parent, const std::string &name, const Delivery &delivery) {
        const std::string fullName = parent ? parent->name + "." + name : name;
        auto &node = tree.classes[upper(fullName)];
        if (node)
            refuseDuplicate(fullName);
        const auto handle = static_cast<unsigned>(tree.classes.size());
        node = std::make_unique<Class>(Class{fullName, handle, parent, delivery, {}, {}, {}});
        tree.classesByHandle[handle] = node.get();
        if (parent)
            parent->children.push_back(node.get());
        return node.get();
    }
    static void addMember(Tree &tree, Class *declaredIn, const std::string &name, const Delivery &delivery) {
        const std::string key = upper(name);
        for (const Class *node = declaredIn; node; node = node->parent)
            if (node->membersByName.count(key) > 0)
                refuseDuplicate(name);
        const auto handle = static_cast<unsigned>(tree.classesByMember.size()) + 1;
        declaredIn->members.push_back(std::make_unique<Member>(Member{name, handle, delivery}));
        declaredIn->membersByName[key] = declaredIn->members.back().get();
        tree.classesByMember[handle] = declaredIn;
    }

    void setMomDefaultSpace() {
        _momSpace = addSpace("HLAMomDefaultSpace")->handle;
        setMomDefaultSpace(*objects.classes.at("OBJECTROOT.MANAGER"));
        setMomDefaultSpace(*interactions.classes.at("INTERACTIONROOT.MANAGER"));
    }

    void list(Listing &listing) const override {
        for (const auto &[handle, space] : _spacesByHandle) {
            listing.declare("space", space->name, {handle});
            for (const std::string &dimension : space->dimensions)
                listing.declare("dimension", dimension, {space->dimensionHandles.at(upper(dimension))});
        }
        for (const auto &[handle, node] : objects.classesByHandle) {
            listing.declare("class", node->name, {handle, node->parent ? node->parent->handle : 0});
            for (const auto &member : node->members)
                listing.declare("attribute", member->name,
                                {node->membersByName.at(upper(member->name))->handle, member->delivery.transportation,
                                 member->delivery.ordering, member->delivery.space,
                                 objects.classesByMember.at(member->handle)->handle});
        }
        for (const auto &[handle, node] : interactions.classesByHandle) {
            listing.declare("interaction", node->name,
                            {handle, node->parent ? node->parent->handle : 0, node->delivery.transportation,
                             node->delivery.ordering, node->delivery.space});
            for (const auto &member : node->members)
                listing.declare("parameter", member->name, {node->membersByName.at(upper(member->name))->handle});
        }
    }

    Tree objects, interactions;

private:
    /// Object classes and parameters have no delivery; what they get is not read.
    void setMomDefaultSpace(Class &node) {
        if (node.delivery.space == 0)
            node.delivery.space = _momSpace;
        for (const auto &member : node.members)
            if (member->delivery.space == 0)
                member->delivery.space = _momSpace;
        for (Class *child : node.children)
            setMomDefaultSpace(*child);
    }

    std::map<std::string, std::unique_ptr<Space>> _spaces;
    std::map<unsigned, Space *> _spacesByHandle;
    unsigned _momSpace = 0;
};

/// Reads a text into a database. Each clause of the grammar has a member function, called after the clause's keyword.
class PlainReader {
public:
    PlainReader(std::string text, PlainDatabase &database) : _text(std::move(text)), _database(database) { next(); }

    void read() {
        expect("(");
        expect("FED");
        clauses([this](const std::string &keyword) {
            if (keyword == "SPACES")
                clauses([this](const std::string &) { space(); });
            else if (keyword == "OBJECTS")
                clauses([this](const std::string &) { objectClass(nullptr); });
            else if (keyword == "INTERACTIONS")
                clauses([this](const std::string &) { interactionClass(nullptr); });
            else
                skipWords();
        });
        expect(")");
        _database.setMomDefaultSpace();
    }

private:
    void space() {
        Space *added = _database.addSpace(word());
        clauses([&](const std::string &) { _database.addDimension(added, word()); });
    }
    void objectClass(Class *parent) {
        Class *added = _database.addClass(_database.objects, parent, word(), {});
        clauses([&](const std::string &keyword) {
            if (keyword == "ATTRIBUTE") {
                const std::string name = word();
                _database.addMember(_database.objects, added, name, delivery());
            } else if (keyword == "CLASS") {
                objectClass(added);
            } else {
                skipWords();
            }
        });
    }
    void interactionClass(Class *parent) {
        const std::string name = word();
        Class *added = _database.addClass(_database.interactions, parent, name, delivery());
        clauses([&](const std::string &keyword) {
            if (keyword == "PARAMETER")
                _database.addMember(_database.interactions, added, word(), {});
            else if (keyword == "CLASS")
                interactionClass(added);
            else
                skipWords();
        });
    }
    Delivery delivery() {
        const auto oneOf = [this](const std::string &second, const std::string &first) {
            const std::string value = upper(word());
            if (value != second && value != first)
                throw std::runtime_error("expected " + second + " or " + first + ", found " + value);
            return value == second ? 2u : 1u;
        };
        Delivery read;
        read.transportation = oneOf("RELIABLE", "BEST_EFFORT");
        read.ordering = oneOf("TIMESTAMP", "RECEIVE");
        if (_token != "(" && _token != ")")
            read.space = _database.spaceHandle(word());
        return read;
    }

    /// Calls `read` with the keyword of each clause at this position.
    template <class Read>
    void clauses(Read read) {
        while (_token == "(") {
            next();
            read(upper(word()));
            expect(")");
        }
    }
    void skipWords() {
        while (_token != "(" && _token != ")")
            word();
    }
    std::string word() {
        if (_token.empty() || _token == "(" || _token == ")")
            throw std::runtime_error("expected a word, found " + _token);
        std::string read = _token;
        next();
        return read;
    }
    void expect(const std::string &token) {
        if (upper(_token) != token)
            throw std::runtime_error("expected " + token + ", found " + _token);
        next();
    }
    void next() {
        while (_position < _text.size() && (std::isspace(static_cast<unsigned char>(_text[_position])) || atComment()))
            _position = atComment() ? std::min(_text.find('\n', _position), _text.size()) : _position + 1;
        const std::size_t begin = _position;
        if (begin == _text.size()) {
            _token.clear();
        } else if (_text[begin] == '(' || _text[begin] == ')') {
            _token = _text[_position++];
        } else if (_text[begin] == '"') {
            const std::size_t end = _text.find('"', begin + 1);
            if (end == std::string::npos)
                throw std::runtime_error("a quote is not closed");
            _token = _text.substr(begin + 1, end - begin - 1);
            _position = end + 1;
        } else {
            _position = std::min(_text.find_first_of(" \t\v\f\r\n()\";", begin), _text.size());
            _token = _text.substr(begin, _position - begin);
        }
    }
    bool atComment() const { return _text[_position] == ';'; }

    std::string _text;
    PlainDatabase &_database;
    std::size_t _position = 0;
    std::string _token; // the next one; empty at the end
};

} // namespace

std::unique_ptr<Model> loadPlainly(const std::string &fedFile) {
    std::ifstream file(fedFile, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot open " + fedFile);
    std::ostringstream text;
    text << file.rdbuf();
    auto database = std::make_unique<PlainDatabase>();
    PlainReader(text.str(), *database).read();
    return database;
}
