#pragma once

#include "fed/image/RtiFedChecksum.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/storage/RtiFedArena.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "fed/storage/RtiFedNameMap.hh"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
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
        Record *record; // in the arena
        std::uint32_t hash;
        std::uint32_t handle;
    };

public:
    using Handle = decltype(std::declval<const Record &>().getHandle());

    RtiFedMemberTable() = default;
    ~RtiFedMemberTable() { destroyRecords(); }
    RtiFedMemberTable(const RtiFedMemberTable &) = delete;
    RtiFedMemberTable &operator=(const RtiFedMemberTable &) = delete;

    /// Puts the records into an arena that others share; an empty table's only. It must outlive the table.
    void share(RtiFedArena &arena) { _arena = &arena; }

    /// Takes the memory for so many records, but not for the records themselves.
    void reserve(std::size_t capacity) {
        if (capacity <= _capacity)
            return;
        if (capacity > std::min<std::size_t>(UINT32_MAX, SIZE_MAX / 2 / sizeof(Entry)))
            throw std::bad_alloc();
        auto *entries = static_cast<Entry *>(arena().take(capacity * sizeof(Entry), alignof(Entry)));
        std::uninitialized_copy(_entries, _entries + _size, entries);
        _entries = entries;
        _capacity = static_cast<std::uint32_t>(capacity);
    }

    /// Makes a record, adds it, and returns it. One whose name or handle is taken is not found by it. `hashed` is its
    /// name, which need not live on. Either the record is added or, if memory runs out, nothing has changed.
    template <class... Arguments>
    Record *add(const RtiFedName &hashed, Arguments &&...arguments) {
        return adopt(make(std::forward<Arguments>(arguments)...), hashed.hash());
    }

    /// Whether there is a record of this name. Nearly always there is none, and the filter says so without a call.
    bool has(const RtiFedName &name) const { return passes(name) && find(name); }
    Record *find(const RtiFedName &name) const {
        if (!passes(name))
            return nullptr;
        if (_extra && _extra->names)
            return _extra->names->find(name);
        for (const Entry *entry = _entries; entry != _entries + _size; ++entry)
            if (entry->hash == hashOf(name) && RtiFedName::equal(entry->record->RtiFedElement::getName(), name.text()))
                return entry->record;
        return nullptr;
    }
    /// Finds a name that is given in upper case: here a spelling in any other case is not found.
    Record *findUpperCase(const RtiFedName &name) const {
        for (const char c : name.text())
            if (RtiFedName::upper(c) != c)
                return nullptr;
        return find(name);
    }
    Record *find(const Handle &handle) const {
        if (_extra && _extra->handles) {
            Record *const *found = _extra->handles->find(handle);
            return found ? *found : nullptr;
        }
        if (_size == 0 || !fits(handle))
            return nullptr;
        const auto number = static_cast<std::uint32_t>(handle._value);
        const std::uint32_t guess = number - _entries[0].handle; // right if they are consecutive
        if (guess < _size && _entries[guess].handle == number)
            return _entries[guess].record;
        const Entry *place = std::lower_bound(_entries, _entries + _size, number,
                                              [](const Entry &entry, std::uint32_t n) { return entry.handle < n; });
        return place != _entries + _size && place->handle == number ? place->record : nullptr;
    }

    /// The record added at this place, counted from 0, or null behind the last.
    Record *at(unsigned long index) const { return index < _size ? _entries[index].record : nullptr; }
    std::size_t size() const { return _size; }
    std::size_t numNames() const { return _size - (_extra ? _extra->numNameless : 0); }
    std::size_t numHandles() const { return _extra && _extra->handles ? _extra->handles->size() : _size; }

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
    Iterator begin() const { return Iterator(_entries); }
    Iterator end() const { return Iterator(_entries + _size); }

    /// Calls `visit` with the handle of each record. Nearly always, none of them is read for that.
    template <class Visit>
    void forEachHandle(Visit visit) const {
        for (const Entry *entry = _entries; entry != _entries + _size; ++entry)
            visit(_extra && _extra->handles ? entry->record->getHandle() : Handle(entry->handle));
    }

    unsigned long checksum() const {
        unsigned long checksum = 0;
        for (const Record &record : *this)
            checksum ^= checksumOf(record);
        return checksum;
    }

    /// The image: how many there are, then each in the order of addition.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_size));
        for (const Record &record : *this)
            buffer.put(record);
    }
    /// Throws RTI::RTIinternalError for a handle that stands twice; `what` is what the records are called there.
    void restore(RtiBuffer &buffer, const char *what) {
        clear();
        unsigned long count = readCount(buffer, Record::_numImageValues, what);
        reserve(atOnce(buffer, count));
        for (; count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            Owner record = make(buffer);
            const std::uint64_t hash = nameOf(*record).hash();
            const Record *added = adopt(std::move(record), hash);
            if (find(added->getHandle()) != added)
                refuseImage(byte, "the handle ", toString(added->getHandle()._value), " stands twice among the ", what);
        }
    }

private:
    static constexpr std::size_t kFew = 16;      // a look-up by name among more of them is worth a table
    static constexpr std::size_t kFirstRoom = 4; // entries

    using Names = RtiFedNameMap<Record *>;
    using Handles = RtiFedHandleMap<Handle, Record *>;
    /// What few tables need.
    struct Extra {
        std::unique_ptr<RtiFedArena> arena; // its own
        std::unique_ptr<Names> names;       // from the first name beyond a few
        std::unique_ptr<Handles> handles;   // from the first handle that does not ascend
        std::uint32_t numNameless = 0;      // records whose name was taken
    };
    using Owner = std::unique_ptr<Record, RtiFedDestroy>;

    static RtiFedName nameOf(const Record &record) { return record.RtiFedElement::getName(); }
    static std::uint32_t hashOf(const RtiFedName &name) { return static_cast<std::uint32_t>(name.hash()); }
    static std::uint64_t bitOf(const RtiFedName &name) { return std::uint64_t(1) << (name.hash() >> 32 & 63); }

    bool passes(const RtiFedName &name) const { return _filter & bitOf(name); }

    static bool fits(const Handle &handle) { return handle._value <= UINT32_MAX; }
    bool ascendsTo(const Handle &handle) const {
        return fits(handle) && (_size == 0 || _entries[_size - 1].handle < handle._value);
    }

    RtiFedArena &arena() {
        if (!_arena) {
            extra().arena = std::make_unique<RtiFedArena>();
            _arena = _extra->arena.get();
        }
        return *_arena;
    }
    Extra &extra() {
        if (!_extra)
            _extra = std::make_unique<Extra>();
        return *_extra;
    }

    template <class... Arguments>
    Owner make(Arguments &&...arguments) {
        return Owner(arena().template make<Record>(std::forward<Arguments>(arguments)...));
    }

    Record *adopt(Owner record, std::uint64_t hash) {
        const Handle handle = record->getHandle();
        const RtiFedName name(record->RtiFedElement::getName(), hash);
        if (_size == _capacity)
            reserve(_capacity == 0 ? kFirstRoom : std::size_t(2) * _capacity);
        const bool isNew = !has(name);
        if (_extra || !isNew || _size >= kFew || !ascendsTo(handle))
            index(*record, handle, name, isNew);
        _filter |= bitOf(name);
        new (_entries + _size) Entry{record.get(), hashOf(name), static_cast<std::uint32_t>(handle._value)};
        ++_size;
        return record.release();
    }

    /// Enters the next record into the tables that a large or unusual set of members has.
    void index(Record &record, const Handle &handle, const RtiFedName &name, bool isNew) {
        if (!extra().handles && !ascendsTo(handle))
            _extra->handles = allHandles();
        if (!_extra->names && isNew && _size >= kFew)
            _extra->names = allNames();
        const bool handled = _extra->handles && _extra->handles->insert(handle, &record);
        try {
            if (_extra->names && isNew)
                _extra->names->insert(name, &record);
        } catch (...) {
            if (handled)
                _extra->handles->erase(handle);
            throw;
        }
        _extra->numNameless += isNew ? 0 : 1;
    }

    std::unique_ptr<Handles> allHandles() const {
        auto handles = std::make_unique<Handles>();
        for (Record &record : *this)
            handles->insert(record.getHandle(), &record);
        return handles;
    }
    std::unique_ptr<Names> allNames() const {
        auto names = std::make_unique<Names>();
        for (Record &record : *this) // a name that is taken keeps its first record
            names->insert(nameOf(record), &record);
        return names;
    }

    void destroyRecords() {
        for (Record &record : *this)
            record.~Record();
    }

    /// Empties a table to be filled again. It leaves an arena that it shares, since that takes nothing back.
    void clear() {
        if (_capacity == 0)
            return;
        destroyRecords();
        _filter = 0;
        _entries = nullptr;
        _size = _capacity = 0;
        _arena = nullptr;
        _extra.reset();
    }

    std::uint64_t _filter = 0; // a bit for each name, chosen by its hash
    Entry *_entries = nullptr; // in the arena
    std::uint32_t _size = 0;
    std::uint32_t _capacity = 0;
    RtiFedArena *_arena = nullptr; // shared with others, or its own
    std::unique_ptr<Extra> _extra;
};
