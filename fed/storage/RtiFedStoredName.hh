#pragma once

#include "fed/storage/RtiFedArena.hh"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// The letters of a name in an arena, after their number.
class RtiFedLetters {
public:
    /// Copies a name into an arena, which must outlive the letters. Throws std::bad_alloc.
    RtiFedLetters(std::string_view name, RtiFedArena &arena) {
        const std::size_t size = name.size(), head = size < kLong ? 1 : 1 + sizeof size;
        char *letters = arena.allocateLetters(head + size);
        _address = letters;
        *letters = static_cast<char>(std::min<std::size_t>(size, kLong));
        if (size >= kLong)
            std::memcpy(letters + 1, &size, sizeof size);
        std::copy(name.begin(), name.end(), letters + head);
    }
    explicit RtiFedLetters(const char *address) : _address(address) {}

    /// An even address.
    const char *address() const { return _address; }
    std::string_view text() const {
        std::size_t size = static_cast<unsigned char>(*_address);
        if (size < kLong)
            return {_address + 1, size};
        std::memcpy(&size, _address + 1, sizeof size);
        return {_address + 1 + sizeof size, size};
    }

private:
    // The number is one byte, or kLong and a std::size_t: nearly all names are short.
    static constexpr unsigned char kLong = 0xFF;

    const char *_address;
};

/// The name of a record, in one word.
///
/// Records hand out their names as strings, but most names are only ever compared. So the name of a record in an arena
/// is kept as letters there, and the string is made when it is first asked for. From then on the string holds the name;
/// it is owned here and stays where it is, whatever is assigned. A name without an arena is a string from the
/// beginning.
///
/// Several threads may each make the string; an atomic compare-and-exchange keeps the first. The letters are never
/// changed, so views of them stay valid beside the string.
/// Threads: const members on any number of threads at once; assign needs exclusive access.
class RtiFedStoredName {
public:
    RtiFedStoredName() = default;
    explicit RtiFedStoredName(std::string name) : _word(wordOf(new std::string(std::move(name)))) {}
    explicit RtiFedStoredName(RtiFedLetters letters) : _word(reinterpret_cast<Word>(letters.address())) {}
    /// A copy may outlive the arena, so it has a string of its own.
    RtiFedStoredName(const RtiFedStoredName &other) : RtiFedStoredName(std::string(other.text())) {}
    RtiFedStoredName &operator=(const RtiFedStoredName &other) {
        if (this != &other)
            assign(other.text());
        return *this;
    }
    ~RtiFedStoredName() { delete asString(_word.load(std::memory_order_relaxed)); }

    /// The name. The view is valid until assign.
    std::string_view text() const {
        const Word word = _word.load(std::memory_order_acquire);
        if (const std::string *string = asString(word))
            return *string;
        return word == 0 ? std::string_view() : asLetters(word).text();
    }

    /// The name as a string. The reference stays valid and shows a later assign. Throws std::bad_alloc.
    const std::string &string() const {
        const Word word = _word.load(std::memory_order_acquire);
        const std::string *string = asString(word);
        return string ? *string : publish(word);
    }

    /// Replaces the name. Throws std::bad_alloc, leaving it unchanged.
    void assign(std::string_view name) {
        if (std::string *string = asString(_word.load(std::memory_order_relaxed)))
            string->assign(name);
        else
            _word.store(wordOf(new std::string(name)), std::memory_order_relaxed);
    }

private:
    // 0 for an empty name; the address of a string, plus 1; or that of letters, which is even.
    using Word = std::uintptr_t;
    static_assert(alignof(std::string) % 2 == 0);

    static Word wordOf(const std::string *string) { return reinterpret_cast<Word>(string) + 1; }
    // NOLINTBEGIN(performance-no-int-to-ptr): the word is one of two kinds of address
    static std::string *asString(Word word) { return word & 1 ? reinterpret_cast<std::string *>(word - 1) : nullptr; }
    static RtiFedLetters asLetters(Word word) { return RtiFedLetters(reinterpret_cast<const char *>(word)); }
    // NOLINTEND(performance-no-int-to-ptr)

    const std::string &publish(Word before) const {
        auto made = std::make_unique<std::string>(text());
        if (_word.compare_exchange_strong(before, wordOf(made.get()), std::memory_order_acq_rel,
                                          std::memory_order_acquire))
            return *made.release();
        return *asString(before); // another thread was first
    }

    mutable std::atomic<Word> _word{0};
};
