#pragma once

// How an image keeps a plain model of the federation database.

#include "infrastructure/RtiBuffer.hh"
#include "tests/model/PlainDatabase.hh"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace plain {

/// Writes what it is called with to a buffer, or reads it.
class Image {
public:
    Image(RtiBuffer &buffer, bool reads) : _buffer(buffer), _reads(reads) {}

    void operator()(Database &all) {
        (*this)(all.name);
        (*this)(all.version);
        for (Tree *tree : {&all.objects, &all.interactions, &all.spaces}) {
            table(*tree, tree->kind, tree->byName);
            if (_reads)
                linkParents(*tree);
        }
        std::vector<std::pair<Number, Number>> pairs(all.objects.declaring.begin(), all.objects.declaring.end());
        list(pairs, [this](auto &pair) { (*this)(pair.first), (*this)(pair.second); });
        all.objects.declaring = {pairs.begin(), pairs.end()};
        for (Number *counter : {&all.spaces.last, &all.objects.last, &all.objects.lastMember, &all.interactions.last,
                                &all.interactions.lastMember})
            (*this)(*counter);
        (*this)(all.fileName);
    }
    void operator()(Record &record) {
        const Kind &kind = record.kind;
        (*this)(record.name);
        if (kind.isClass())
            table(record.subclasses, kind, record.subclasses.byHandle);
        if (kind.members)
            table(record.members, *kind.members, record.members.byIndex);
        if (kind.isClass())
            list(record.children, *this);
        if (&kind == &kObject)
            list(record.descendants, *this);
        if (kind.hasDelivery)
            (*this)(record.transport), (*this)(record.ordering), (*this)(record.space);
        (*this)(record.handle);
        if (kind.isClass())
            (*this)(record.parentHandle);
        if (&kind == &kSpace)
            (*this)(record.nextDimension);
    }
    template <class Value>
    void operator()(Value &number) {
        _reads ? _buffer.get(&number, 1) : _buffer.put(number);
    }
    void operator()(std::string &text) {
        _reads ? void(text = RtiStringUtility::getString(_buffer)) : RtiStringUtility::putString(text, _buffer);
    }

private:
    template <class Items, class Each>
    void list(Items &items, Each each) {
        std::vector<typename Items::value_type> all(items.begin(), items.end());
        Number count = all.size();
        (*this)(count);
        all.resize(count);
        for (auto &item : all)
            each(item);
        items = Items(all.begin(), all.end());
    }
    /// Writes the records in the order of a map, or reads them.
    template <class Key>
    void table(Table<Record> &records, const Kind &kind, const std::map<Key, Table<Record>::Owner> &inOrder) {
        std::vector<Table<Record>::Owner> ordered;
        for (const auto &[key, record] : inOrder)
            if (record)
                ordered.push_back(record);
        list(ordered, [&](Table<Record>::Owner &record) {
            record = _reads ? std::make_shared<Record>(kind) : record;
            (*this)(*record);
            if (_reads)
                records.add(record);
        });
    }
    static void linkParents(Tree &tree) {
        for (const auto &[index, node] : tree.byIndex) {
            node->parent = tree.find(node->parentHandle);
            node->forEachOwned([](Record &owner, Record &owned) { owned.parent = &owner; });
        }
    }

    RtiBuffer &_buffer;
    const bool _reads;
};

inline std::unique_ptr<Database> restored(RtiBuffer &buffer) {
    auto made = std::make_unique<Database>();
    Image(buffer, true)(*made);
    return made;
}

} // namespace plain
