#pragma once

#include "fed/RtiFedChecksum.hh"
#include "fed/RtiFedHandleMap.hh"
#include "fed/RtiFedImage.hh"
#include "fed/RtiFedNameMap.hh"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// The records declared in a class or space: its attributes, parameters or dimensions. It owns them, keeps them in the
/// order in which they were added, and finds them by name in any letter case and by handle.
///
/// Most classes declare a handful, whose handles ascend as a counter makes them: these are found by their place among
/// the others, without any further table. And most look-ups by name ask a class for what a class above it declares: a
/// filter of one word answers these.
/// Threads: const members on any number of threads at once.
template <class Record>
class RtiFedMemberTable {
    struct Entry {
        std::unique_ptr<Record> record;
        std::uint32_t hash;
        std::uint32_t handle;
    };

public:
    using Handle = decltype(std::declval<const Record &>().getHandle());

    /// Adds a record and returns it. One whose name or handle is taken is not found by it. Either the record is added
    /// or, if memory runs out, nothing has changed.
    Record *add(std::unique_ptr<Record> record) {
        const RtiFedName name = nameOf(*record);
        return add(std::move(record), name);
    }
    /// The same for a record whose name was hashed already.
    Record *add(std::unique_ptr<Record> record, const RtiFedName &hashed) {
        Record *added = record.get();
        const Handle handle = added->getHandle();
        const RtiFedName name = hashed.movedTo(added->RtiFedElement::getName());
        const bool isNew = !find(name);
        if (!_handles && !ascendsTo(handle))
            indexHandles();
        if (!_names && isNew && _entries.size() >= kFew)
            indexNames();
        _entries.push_back({std::move(record), hashOf(name), static_cast<std::uint32_t>(handle._value)});
        bool handled = false;
        try {
            handled = _handles && _handles->insert(handle, added);
            if (_names && isNew)
                _names->insert(name, added);
        } catch (...) {
            if (handled)
                _handles->erase(handle);
            _entries.pop_back();
            throw;
        }
        _filter |= bitOf(name);
        _numNames += isNew ? 1 : 0;
        return added;
    }

    Record *find(const RtiFedName &name) const {
        if (!(_filter & bitOf(name)))
            return nullptr;
        if (_names)
            return _names->find(name);
        for (const Entry &entry : _entries)
            if (entry.hash == hashOf(name) && RtiFedName::equal(entry.record->RtiFedElement::getName(), name.text()))
                return entry.record.get();
        return nullptr;
    }
    /// Finds a name that is given in upper case: here a spelling in any other case is not found.
    Record *findUpperCase(std::string_view name) const {
        for (const char c : name)
            if (RtiStringUtility::toupper(c) != static_cast<unsigned char>(c))
                return nullptr;
        return find(name);
    }
    Record *find(Handle handle) const {
        if (_handles) {
            Record *const *found = _handles->find(handle);
            return found ? *found : nullptr;
        }
        if (_entries.empty() || !fits(handle))
            return nullptr;
        const auto number = static_cast<std::uint32_t>(handle._value);
        const std::uint32_t guess = number - _entries.front().handle; // right if they are consecutive
        if (guess < _entries.size() && _entries[guess].handle == number)
            return _entries[guess].record.get();
        const auto place = std::lower_bound(_entries.begin(), _entries.end(), number,
                                            [](const Entry &entry, std::uint32_t n) { return entry.handle < n; });
        return place != _entries.end() && place->handle == number ? place->record.get() : nullptr;
    }

    /// The record added at this place, counted from 0, or null behind the last.
    Record *at(unsigned long index) const { return index < _entries.size() ? _entries[index].record.get() : nullptr; }
    std::size_t size() const { return _entries.size(); }
    std::size_t numNames() const { return _numNames; }
    std::size_t numHandles() const { return _handles ? _handles->size() : _entries.size(); }

    /// Iterates over the records, in the order of addition.
    class Iterator {
    public:
        Record &operator*() const { return *_entry->record; }
        Iterator &operator++() {
            ++_entry;
            return *this;
        }
        bool operator!=(const Iterator &other) const { return _entry != other._entry; }

    private:
        friend RtiFedMemberTable;
        explicit Iterator(const Entry *entry) : _entry(entry) {}
        const Entry *_entry;
    };
    Iterator begin() const { return Iterator(_entries.data()); }
    Iterator end() const { return Iterator(_entries.data() + _entries.size()); }

    unsigned long checksum() const {
        unsigned long checksum = 0;
        for (const Record &record : *this)
            checksum ^= checksumOf(record);
        return checksum;
    }

    /// The image: how many there are, then each in the order of addition.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_entries.size()));
        for (const Record &record : *this)
            buffer.put(record);
    }
    /// Throws RTI::RTIinternalError for a handle that stands twice; `what` is what the records are called there.
    void restore(RtiBuffer &buffer, const char *what) {
        *this = RtiFedMemberTable();
        unsigned long count = readCount(buffer, Record::_leastImageSize, what);
        _entries.reserve(count);
        for (; count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            const Record *added = add(std::make_unique<Record>(buffer));
            if (find(added->getHandle()) != added)
                refuseImage(byte, "the handle ", toString(added->getHandle()._value), " stands twice among the ", what);
        }
    }

private:
    static constexpr std::size_t kFew = 8; // a look-up by name among more of them is worth a table

    static RtiFedName nameOf(const Record &record) { return std::string_view(record.RtiFedElement::getName()); }
    static std::uint32_t hashOf(const RtiFedName &name) { return static_cast<std::uint32_t>(name.hash()); }
    static std::uint64_t bitOf(const RtiFedName &name) { return std::uint64_t(1) << (name.hash() >> 32 & 63); }

    static bool fits(Handle handle) { return handle._value <= UINT32_MAX; }
    bool ascendsTo(Handle handle) const {
        return fits(handle) && (_entries.empty() || _entries.back().handle < handle._value);
    }

    void indexHandles() {
        auto handles = std::make_unique<RtiFedHandleMap<Handle, Record *>>();
        for (const Entry &entry : _entries)
            handles->insert(entry.record->getHandle(), entry.record.get());
        _handles = std::move(handles);
    }
    void indexNames() {
        auto names = std::make_unique<RtiFedNameMap<Record *>>();
        for (const Entry &entry : _entries) // a name that is taken keeps its first record
            names->insert(nameOf(*entry.record), entry.record.get());
        _names = std::move(names);
    }

    std::uint64_t _filter = 0; // a bit for each name, chosen by its hash
    std::vector<Entry> _entries;
    std::uint32_t _numNames = 0;
    std::unique_ptr<RtiFedNameMap<Record *>> _names;             // from the first name beyond a few
    std::unique_ptr<RtiFedHandleMap<Handle, Record *>> _handles; // from the first handle that does not ascend
};
