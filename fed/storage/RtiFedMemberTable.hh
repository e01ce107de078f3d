#pragma once

#include "fed/image/RtiFedChecksum.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/storage/RtiFedArena.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "fed/storage/RtiFedNameMap.hh"
#include "fed/storage/RtiFedStoredName.hh"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

/// The records declared in a class or space: its attributes, parameters or dimensions. It owns them, keeps them in the
/// order of addition, and finds them by handle and by name in any letter case.
///
/// Most classes declare a handful of members, whose handles ascend since a counter issues them. Such a table is one
/// array of entries: a lookup by handle computes the index, or searches for it; a lookup by name compares the hashes of
/// the entries. Most lookups by name ask a class for what one of its ancestors declares, so a Bloom filter
/// of 64 bits, one bit for each name, answers nearly all of these misses at once. Only a table of more than kFew
/// names, or with a handle that does not ascend, has a name map or a handle map beside the array (Extra).
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

    /// Lets the records be allocated in a shared arena. Call it while there are none; the arena must outlive the table.
    void useArena(RtiFedArena &arena) { _arena = &arena; }

    /// Allocates entries for `capacity` records, but not the records themselves. Throws std::bad_alloc.
    void reserve(std::size_t capacity) {
        if (capacity <= _capacity) // equivalent: only memory
            return;
        // unreached: takes gigabytes
        if (capacity > std::min<std::size_t>(UINT32_MAX, SIZE_MAX / 2 / sizeof(Entry)))
            // unreached: takes gigabytes
            throw std::bad_alloc();
        auto *entries = static_cast<Entry *>(arena().allocate(capacity * sizeof(Entry), alignof(Entry)));
        std::uninitialized_copy(_entries, _entries + _size, entries);
        _entries = entries;
        _capacity = static_cast<std::uint32_t>(capacity);
    }

    /// Makes a record of a handle, a name and what else it takes, adds it, and returns it. If its name or handle is in
    /// use, lookups by it still return the earlier record. Throws std::bad_alloc, leaving the table unchanged.
    template <class... Arguments>
    Record *add(const Handle &handle, const RtiFedName &name, const Arguments &...arguments) {
        return adopt(make(handle, store(name), arguments...), name.hash(), has(name));
    }
    /// The same for a name that is known to be unused.
    template <class... Arguments>
    Record *addNew(const Handle &handle, const RtiFedName &name, const Arguments &...arguments) {
        return adopt(make(handle, store(name), arguments...), name.hash(), false);
    }

    /// Whether there is a record of this name.
    bool has(const RtiFedName &name) const { return mayContain(name) && find(name); }
    Record *find(const RtiFedName &name) const {
        if (!mayContain(name))
            return nullptr;
        if (_extra && _extra->names)
            return _extra->names->find(name);
        for (const Entry *entry = _entries; entry != _entries + _size; ++entry)
            if (entry->hash == hashOf(name) && RtiFedName::equal(entry->record->nameText(), name.text()))
                return entry->record;
        return nullptr;
    }
    /// Like find, but a name with a lower-case letter is never found.
    Record *findIfUpperCase(const RtiFedName &name) const {
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
        // equivalent: only speed
        const std::uint32_t guess = number - _entries[0].handle; // right if they are consecutive
        if (guess < _size && _entries[guess].handle == number)
            return _entries[guess].record;
        const Entry *place = std::lower_bound(_entries, _entries + _size, number,
                                              [](const Entry &entry, std::uint32_t n) { return entry.handle < n; });
        return place != _entries + _size && place->handle == number ? place->record : nullptr;
    }

    /// The record at `index` in the order of addition, from 0; null if there are fewer.
    Record *at(unsigned long index) const { return index < _size ? _entries[index].record : nullptr; }
    std::size_t size() const { return _size; }
    std::size_t numNames() const { return _size - (_extra ? _extra->numDuplicateNames : 0); }
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

    unsigned long checksum() const {
        unsigned long checksum = 0;
        for (const Record &record : *this)
            checksum ^= checksumOf(record);
        return checksum;
    }

    /// Writes the image: the number of records, then each in the order of addition.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_size));
        for (Record &record : *this)
            buffer.put(record);
    }
    /// Replaces the records by those of an image; `members` is the word for them in messages. A duplicate name or
    /// handle is accepted, as in add.
    void restore(RtiFedImageReader &reader, const char *members) {
        clear();
        unsigned long count = reader.count(Record::_numImageValues, members);
        reserve(reader.countToReserve(count));
        for (; count > 0; --count) {
            const RtiFedName name = reader.string();
            adopt(make(store(name), reader), name.hash(), has(name));
        }
    }

private:
    // equivalent: only speed
    static constexpr std::size_t kFew = 16;          // beyond this number a name map is faster than the array
    static constexpr std::size_t kFirstCapacity = 4; // equivalent: only speed

    using Names = RtiFedNameMap<Record *>;
    using Handles = RtiFedHandleMap<Handle, Record *>;
    /// What few tables need.
    struct Extra {
        std::unique_ptr<RtiFedArena> arena;  // if none is shared
        std::unique_ptr<Names> names;        // from the first name beyond kFew
        std::unique_ptr<Handles> handles;    // from the first handle that does not ascend
        std::uint32_t numDuplicateNames = 0; // records whose name was in use
    };
    using Owner = std::unique_ptr<Record, RtiFedDestroy>;

    static RtiFedName nameOf(const Record &record) { return record.nameText(); }
    static std::uint32_t hashOf(const RtiFedName &name) { return static_cast<std::uint32_t>(name.hash()); }
    // equivalent: any bit of the hash
    static std::uint64_t bitOf(const RtiFedName &name) { return std::uint64_t(1) << (name.hash() >> 32 & 63); }

    bool mayContain(const RtiFedName &name) const { return _filter & bitOf(name); }

    // equivalent: other handles are kept elsewhere
    static bool fits(const Handle &handle) { return handle._value <= UINT32_MAX; }
    bool ascendsTo(const Handle &handle) const {
        return fits(handle) && (_size == 0 || _entries[_size - 1].handle < handle._value);
    }

    RtiFedArena &arena() { return _arena ? *_arena : makeArena(); }
    [[gnu::noinline]] RtiFedArena &makeArena() {
        ensureExtra().arena = std::make_unique<RtiFedArena>();
        return *(_arena = _extra->arena.get());
    }
    RtiFedLetters store(const RtiFedName &name) { return {name.text(), arena()}; }
    Extra &ensureExtra() {
        if (!_extra)
            _extra = std::make_unique<Extra>();
        return *_extra;
    }

    template <class... Arguments>
    Owner make(Arguments &&...arguments) {
        return Owner(arena().template make<Record>(std::forward<Arguments>(arguments)...));
    }

    Record *adopt(Owner record, std::uint64_t hash, bool isDuplicateName) {
        const Handle handle = record->getHandle();
        const RtiFedName name(record->nameText(), hash);
        if (_size == _capacity)
            reserve(_capacity == 0 ? kFirstCapacity : std::size_t(2) * _capacity); // equivalent: only speed
        if (_extra || isDuplicateName || _size >= kFew || !ascendsTo(handle))
            enterInExtra(*record, handle, name, isDuplicateName);
        _filter |= bitOf(name);
        new (_entries + _size) Entry{record.get(), hashOf(name), static_cast<std::uint32_t>(handle._value)};
        ++_size;
        return record.release();
    }

    /// Enters the next record into the maps, which are made when the array alone no longer finds every record. Throws
    /// std::bad_alloc; the maps then hold the same entries as before.
    void enterInExtra(Record &record, const Handle &handle, const RtiFedName &name, bool isDuplicateName) {
        Extra &extra = ensureExtra();
        if (!extra.handles && !ascendsTo(handle))
            extra.handles = makeHandleMap();
        if (!extra.names && !isDuplicateName && _size >= kFew)
            extra.names = makeNameMap();

        const bool handleAdded = extra.handles && extra.handles->insert(handle, &record);
        try {
            if (extra.names && !isDuplicateName)
                extra.names->insert(name, &record);
        } catch (...) {
            if (handleAdded)
                extra.handles->erase(handle);
            throw;
        }
        extra.numDuplicateNames += isDuplicateName ? 1 : 0;
    }

    std::unique_ptr<Handles> makeHandleMap() const {
        auto handles = std::make_unique<Handles>();
        for (Record &record : *this)
            handles->insert(record.getHandle(), &record);
        return handles;
    }
    std::unique_ptr<Names> makeNameMap() const {
        auto names = std::make_unique<Names>();
        for (Record &record : *this) // a duplicate name keeps its first record
            names->insert(nameOf(record), &record);
        return names;
    }

    void destroyRecords() {
        for (Record &record : *this)
            record.~Record();
    }

    /// Empties the table for a restore. It stops using the shared arena, where the freed memory would be lost; the next
    /// records are allocated in an arena of this table.
    void clear() {
        if (_capacity == 0)
            return;
        destroyRecords();
        _filter = 0; // equivalent: a bit too many only costs speed
        _entries = nullptr;
        _size = _capacity = 0;
        _arena = nullptr;
        _extra.reset();
    }

    std::uint64_t _filter = 0; // one bit for each name, chosen by its hash. equivalent: a bit too many only costs speed
    Entry *_entries = nullptr; // in the arena
    std::uint32_t _size = 0;
    std::uint32_t _capacity = 0;
    RtiFedArena *_arena = nullptr; // shared, or the one in _extra
    std::unique_ptr<Extra> _extra;
};
