#pragma once

#include "fed/RtiFedChecksum.hh"
#include "fed/RtiFedHandleMap.hh"
#include "fed/RtiFedImage.hh"
#include "fed/RtiFedNameMap.hh"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

/// The records declared in a class or space: its attributes, parameters or dimensions. It owns them, keeps them in the
/// order in which they were added, and finds them by name in any letter case and by handle.
///
/// Threads: const members on any number of threads at once.
template <class Record>
class RtiFedMemberTable {
public:
    using Handle = decltype(std::declval<const Record &>().getHandle());

    /// Adds a record and returns it. One whose name or handle is taken is not found by it. Either the record is added
    /// or, if memory runs out, nothing has changed.
    Record *add(std::unique_ptr<Record> record) {
        Record *added = record.get();
        if (_ascending && !_vector.empty() && !(_vector.back()->getHandle() < added->getHandle()))
            mapHandles();
        _vector.push_back(std::move(record));
        bool named = false;
        try {
            named = _nameMap.insert(added->getName(), added);
            if (!_ascending)
                _handleMap.insert(added->getHandle(), added);
        } catch (...) {
            if (named)
                _nameMap.erase(added->getName());
            _vector.pop_back();
            throw;
        }
        return added;
    }

    Record *find(std::string_view name) const { return valueOf(_nameMap.find(name)); }
    Record *findUpperCase(std::string_view name) const { return valueOf(_nameMap.findUpperCase(name)); }
    Record *find(Handle handle) const {
        if (!_ascending)
            return valueOf(_handleMap.find(handle));
        const auto place =
            std::lower_bound(_vector.begin(), _vector.end(), handle,
                             [](const auto &record, const Handle &h) { return record->getHandle() < h; });
        return place != _vector.end() && (*place)->getHandle() == handle ? place->get() : nullptr;
    }

    /// The record added at this place, counted from 0, or null behind the last.
    Record *at(unsigned long index) const { return index < _vector.size() ? _vector[index].get() : nullptr; }
    std::size_t size() const { return _vector.size(); }
    std::size_t numNames() const { return _nameMap.size(); }
    std::size_t numHandles() const { return _ascending ? _vector.size() : _handleMap.size(); }

    unsigned long checksum() const {
        unsigned long checksum = 0;
        for (const auto &record : _vector)
            checksum ^= checksumOf(*record);
        return checksum;
    }

    /// The image: how many there are, then each in the order of addition.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_vector.size()));
        for (const auto &record : _vector)
            buffer.put(*record);
    }
    /// Throws RTI::RTIinternalError for a handle that stands twice; `what` is what the records are called there.
    void restore(RtiBuffer &buffer, const char *what) {
        clear();
        for (unsigned long count = readCount(buffer, Record::_leastImageSize, what); count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            const Record *added = add(std::make_unique<Record>(buffer));
            if (find(added->getHandle()) != added)
                refuseImage(byte, "the handle ", toString(added->getHandle()._value), " stands twice among the ", what);
        }
    }

    auto begin() const { return _vector.begin(); }
    auto end() const { return _vector.end(); }

private:
    static Record *valueOf(Record *const *found) { return found ? *found : nullptr; }

    /// From now on the handles are looked up in a map: they no longer ascend.
    void mapHandles() {
        RtiFedHandleMap<Handle, Record *> handleMap;
        for (const auto &record : _vector)
            handleMap.insert(record->getHandle(), record.get());
        _handleMap = std::move(handleMap);
        _ascending = false;
    }

    void clear() {
        _ascending = true;
        _nameMap.clear();
        _handleMap.clear();
        _vector.clear();
    }

    RtiFedNameMap<Record *> _nameMap;
    bool _ascending = true;                       // the handles ascend with the vector, as a counter makes them
    RtiFedHandleMap<Handle, Record *> _handleMap; // of all records if they do not, else empty
    std::vector<std::unique_ptr<Record>> _vector;
};
