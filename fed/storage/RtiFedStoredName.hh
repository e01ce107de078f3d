#pragma once

#include "fed/storage/RtiFedArena.hh"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// The name of a record, in one word.
///
/// Records hand out their names as strings, but most names are only ever compared. So the letters of a name are kept in
/// the arena of its record, after their number, and the string is made when it is first asked for. From then on it
/// holds the name; it is owned here and stays where it is, whatever is assigned. A name without an arena is a string
/// from the beginning.
///
/// Several threads may each make the string; an atomic compare-and-exchange keeps the first. The letters are never
/// changed, so views of them stay valid beside the string.
/// Threads: const members on any number of threads at once; assign needs exclusive access.
class RtiFedStoredName {
public:
    RtiFedStoredName() = default;
    explicit RtiFedStoredName(std::string name) : _word(tagged(new std::string(std::move(name)))) {}
    /// Stores the letters in an arena, which must outlive this object.
    RtiFedStoredName(std::string_view name, RtiFedArena &arena) {
        if (name.size() > std::numeric_limits<std::uint32_t>::max())
            _word = tagged(new std::string(name));
        else if (!name.empty())
            _word = reinterpret_cast<Word>(store(name, arena));
    }
    /// A copy may outlive the arena, so it has a string of its own.
    RtiFedStoredName(const RtiFedStoredName &other) : RtiFedStoredName(std::string(other.text())) {}
    RtiFedStoredName(RtiFedStoredName &&other) noexcept : _word(other._word.load(std::memory_order_relaxed)) {
        other._word.store(0, std::memory_order_relaxed); // not exchanged, which is slower: `other` is not shared
    }
    RtiFedStoredName &operator=(const RtiFedStoredName &other) {
        assign(other.text());
        return *this;
    }
    ~RtiFedStoredName() { delete asString(_word.load(std::memory_order_relaxed)); }

    /// The name. The view is valid until assign.
    std::string_view text() const {
        const Word word = _word.load(std::memory_order_acquire);
        if (const std::string *string = asString(word))
            return *string;
        return word == 0 ? std::string_view() : lettersAt(reinterpret_cast<const char *>(word));
    }

    /// The name as a string. The reference stays valid and shows a later assign. Throws std::bad_alloc.
    const std::string &string() const {
        const Word word = _word.load(std::memory_order_acquire);
        const std::string *string = asString(word);
        return string ? *string : publish(word);
    }

    /// Replaces the name. Throws std::bad_alloc, leaving it unchanged.
    void assign(std::string_view name) {
        const Word word = _word.load(std::memory_order_relaxed);
        if (std::string *string = asString(word))
            string->assign(name);
        else
            _word.store(tagged(new std::string(name)), std::memory_order_relaxed);
    }

private:
    // 0 for an empty name; the address of a string, plus 1; or that of the letters, which is even.
    using Word = std::uintptr_t;
    static_assert(alignof(std::string) >= 2);

    // The number of letters is one byte, or kLong and four bytes: nearly all names are short.
    static constexpr unsigned char kLong = 0xFF;

    static Word tagged(const std::string *string) { return reinterpret_cast<Word>(string) + 1; }
    static std::string *asString(Word word) {
        return word & 1 ? reinterpret_cast<std::string *>(word - 1) : nullptr; // NOLINT(performance-no-int-to-ptr)
    }

    static const char *store(std::string_view name, RtiFedArena &arena) {
        const auto size = static_cast<std::uint32_t>(name.size());
        const std::size_t head = size < kLong ? 1 : 1 + sizeof size;
        auto *const letters = static_cast<char *>(arena.allocate(head + size, 2));
        if (size < kLong) {
            letters[0] = static_cast<char>(size);
        } else {
            letters[0] = static_cast<char>(kLong);
            std::memcpy(letters + 1, &size, sizeof size);
        }
        std::memcpy(letters + head, name.data(), size);
        return letters;
    }

    static std::string_view lettersAt(const char *letters) {
        std::uint32_t size = static_cast<unsigned char>(letters[0]);
        if (size < kLong)
            return {letters + 1, size};
        std::memcpy(&size, letters + 1, sizeof size);
        return {letters + 1 + sizeof size, size};
    }

    const std::string &publish(Word letters) const {
        auto made = std::make_unique<std::string>(text());
        if (_word.compare_exchange_strong(letters, tagged(made.get()), std::memory_order_acq_rel,
                                          std::memory_order_acquire))
            return *made.release();
        return *asString(letters); // another thread was first
    }

    mutable std::atomic<Word> _word{0};
};
