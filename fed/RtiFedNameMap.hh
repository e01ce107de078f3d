#pragma once

#include "infrastructure/RtiStringUtility.hh"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>

/// A look-up from names to values in any letter case, without a copy of the name that is looked for. Every name map of
/// the model is one of these, so that this place decides how names are matched and how fast.
///
/// Iteration is in the order of the upper-cased names, byte by byte; its elements are pairs of key and value.
/// Threads: const members on any number of threads at once.
template <class Value>
class RtiFedNameMap {
    /// A name in two pieces, so that a prefix need not be joined with the name behind it.
    struct Joined {
        std::string_view head, tail;
        std::size_t size() const { return head.size() + tail.size(); }
        char operator[](std::size_t i) const { return i < head.size() ? head[i] : tail[i - head.size()]; }
    };

    struct Less {
        using is_transparent = void;

        /// How many bytes at the beginning are the same to the letter, block by block: full class names begin alike.
        static std::size_t commonBlocks(std::string_view a, std::string_view b) {
            constexpr std::size_t kBlock = 32;
            std::size_t i = 0;
            while (i + kBlock <= a.size() && i + kBlock <= b.size() && a.compare(i, kBlock, b, i, kBlock) == 0)
                i += kBlock;
            return i;
        }

        template <class A, class B>
        bool operator()(const A &a, const B &b) const {
            const std::size_t common = a.size() < b.size() ? a.size() : b.size();
            std::size_t i = 0;
            if constexpr (!std::is_same_v<A, Joined> && !std::is_same_v<B, Joined>)
                i = commonBlocks(a, b);
            for (; i < common; ++i) {
                const unsigned char x = RtiStringUtility::toupper(a[i]), y = RtiStringUtility::toupper(b[i]);
                if (x != y)
                    return x < y;
            }
            return a.size() < b.size();
        }
    };

    using Map = std::map<std::string, Value, Less>;

public:
    /// The value of a name, or null. The pointer holds until the entry is erased or the map cleared.
    const Value *find(std::string_view name) const { return valueAt(_map.find(name)); }
    /// The value of `prefix` followed by `name`, or null.
    const Value *find(std::string_view prefix, std::string_view name) const {
        return valueAt(_map.find(Joined{prefix, name}));
    }
    /// The value of a name that is given in upper case, or null: here a spelling in any other case is not found.
    const Value *findUpperCase(std::string_view name) const {
        for (const char c : name)
            if (RtiStringUtility::toupper(c) != static_cast<unsigned char>(c))
                return nullptr;
        return find(name);
    }

    /// Adds an entry and returns true; a name that is taken keeps its value, and false is returned.
    bool insert(std::string_view name, Value value) { return _map.emplace(name, std::move(value)).second; }
    void erase(std::string_view name) {
        const auto place = _map.find(name);
        if (place != _map.end())
            _map.erase(place);
    }
    void clear() { _map.clear(); }

    std::size_t size() const { return _map.size(); }
    auto begin() const { return _map.begin(); }
    auto end() const { return _map.end(); }

private:
    const Value *valueAt(typename Map::const_iterator place) const {
        return place == _map.end() ? nullptr : &place->second;
    }

    Map _map;
};
