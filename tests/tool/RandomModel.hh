#pragma once

#include "tests/Support.hh"

#include <algorithm>
#include <functional>
#include <list>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// A class of a random model with its members, or a space with its dimensions. A tail is the rest of its words after
/// the name.
struct RandomNode {
    std::string name, tail;
    std::list<std::pair<std::string, std::string>> members;
    std::vector<RandomNode> children;

    std::string text(const std::string &kind, const std::string &member) const {
        std::string all = "(" + kind + " " + name + tail;
        for (const auto &[memberName, memberTail] : members)
            all += " (" + member + " " + memberName + memberTail + ")";
        for (const RandomNode &child : children)
            all += "\n" + child.text(kind, member);
        return all + ")";
    }
};

/// Models that are made and changed by chance, but always load.
class RandomModel {
public:
    explicit RandomModel(unsigned seed) : _random(seed) {
        for (int i = 0; i < 16; ++i)
            add(any(i % 2 ? _objects : _interactions), i % 2);
    }

    std::string text() const {
        const std::string text = withMom(_objects.text("class", "attribute"), _interactions.text("class", "parameter"),
                                         _space.text("space", "dimension") + "(space T)");
        return _comment + replaced(text, "(Federation ", "(Federation " + _federation);
    }

    void edit() {
        const bool ofObjects = pick(2);
        RandomNode &node = any(ofObjects ? _objects : _interactions);
        RandomNode *child = node.children.empty() ? &node : &node.children.front();
        const std::function<void()> edits[] = {[&] { _comment += ";; a comment\n"; },
                                               [&] { _federation += "F"; },
                                               [&] { add(node, ofObjects); },
                                               [&] { node.children.resize(node.children.size() / 2); },
                                               [&] { node.members.resize(node.members.size() / 2); },
                                               [&] { std::reverse(node.children.begin(), node.children.end()); },
                                               [&] { std::reverse(node.members.begin(), node.members.end()); },
                                               [&] { node.name[0] ^= 0x20; },
                                               [&] { node.tail = ofObjects ? "" : tail(); },
                                               [&] {
                                                   for (auto &member : node.members)
                                                       member.second = ofObjects ? tail() : "";
                                               },
                                               [&] { child->members.splice(child->members.end(), node.members); },
                                               [&] { node.members.splice(node.members.end(), child->members); },
                                               [&] { _space.members.emplace_back(newName("d"), ""); },
                                               [&] { std::reverse(_space.members.begin(), _space.members.end()); }};
        edits[pick(std::size(edits))]();
    }

private:
    std::size_t pick(std::size_t below) { return _random() % below; }
    std::string newName(const char *kind) { return kind + std::to_string(++_names); }
    std::string tail() {
        const char *spaces[] = {"", " S", " T"};
        return std::string(pick(2) ? " reliable" : " best_effort") + (pick(2) ? " receive" : " timestamp") +
               spaces[pick(3)];
    }
    RandomNode &any(RandomNode &root) {
        RandomNode *node = &root;
        while (!node->children.empty() && pick(3))
            node = &node->children[pick(node->children.size())];
        return *node;
    }
    void add(RandomNode &node, bool ofObjects) {
        if (pick(2))
            node.members.emplace_back(newName("m"), ofObjects ? tail() : "");
        else
            node.children.push_back({newName("C"), ofObjects ? "" : tail(), {}, {}});
    }

    std::mt19937 _random;
    int _names = 0;
    std::string _comment, _federation;
    RandomNode _objects{"A", "", {}, {}}, _interactions{"I", " reliable receive", {}, {}},
        _space{"S", "", {{"x", ""}, {"y", ""}}, {}};
};
