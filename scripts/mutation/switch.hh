// What scripts/mutate writes into a source whose mutants are all compiled at once: mutant N is switched on by
// RTIFED_MUTANT=N in the environment; without it the code does what it did. An operator keeps its place and precedence:
// `a < b` becomes `a < Less<N>() < b`, whose first half holds `a` until the second compares.

#pragma once

#include <cstdlib>
#include <type_traits>
#include <utility>

namespace rtifedMutant {

inline int number = 0;

// Before the constructors of static objects, which may contain mutants.
__attribute__((constructor(101))) inline void readNumber() {
    if (const char *text = std::getenv("RTIFED_MUTANT"))
        number = std::atoi(text);
}

__attribute__((always_inline)) constexpr bool on(int mutant) {
    return number == mutant;
}

#define RTIFED_TURN(Name, op, turned)                                                                                  \
    template <int N>                                                                                                   \
    struct Name {};                                                                                                    \
    template <int N, class Left>                                                                                       \
    struct Name##Left {                                                                                                \
        Left &&left;                                                                                                   \
    };                                                                                                                 \
    template <class Left, class Right, class = void>                                                                   \
    struct Name##Turns : std::false_type {};                                                                           \
    template <class Left, class Right>                                                                                 \
    struct Name##Turns<Left, Right, std::void_t<decltype(std::declval<Left>() turned std::declval<Right>())>>          \
        : std::true_type {};                                                                                           \
    template <int N, class Left>                                                                                       \
    constexpr Name##Left<N, Left> operator op(Left &&left, Name<N>) {                                                  \
        return {std::forward<Left>(left)};                                                                             \
    }                                                                                                                  \
    template <int N, class Left, class Right>                                                                          \
    constexpr auto operator op(Name##Left<N, Left> left, Right &&right) {                                              \
        static_assert(Name##Turns<Left, Right>::value, "the mutant does not compile");                                 \
        return on(N) ? std::forward<Left>(left.left) turned std::forward<Right>(right)                                 \
                     : std::forward<Left>(left.left) op std::forward<Right>(right);                                    \
    }

RTIFED_TURN(Less, <, <=)
RTIFED_TURN(LessEqual, <=, <)
RTIFED_TURN(Greater, >, >=)
RTIFED_TURN(GreaterEqual, >=, >)
RTIFED_TURN(Equal, ==, !=)
RTIFED_TURN(Unequal, !=, ==)
RTIFED_TURN(Plus, +, -)
RTIFED_TURN(Minus, -, +)

// Assignments associate to the right: `a += Add<N>() += b`.
#define RTIFED_TURN_ASSIGNMENT(Name, op, turned)                                                                       \
    template <int N>                                                                                                   \
    struct Name {};                                                                                                    \
    template <int N, class Right>                                                                                      \
    struct Name##Right {                                                                                               \
        Right &&right;                                                                                                 \
    };                                                                                                                 \
    template <class Left, class Right, class = void>                                                                   \
    struct Name##Turns : std::false_type {};                                                                           \
    template <class Left, class Right>                                                                                 \
    struct Name##Turns<Left, Right, std::void_t<decltype(std::declval<Left &>() turned std::declval<Right>())>>        \
        : std::true_type {};                                                                                           \
    template <int N, class Right>                                                                                      \
    constexpr Name##Right<N, Right> operator op(Name<N>, Right &&right) {                                              \
        return {std::forward<Right>(right)};                                                                           \
    }                                                                                                                  \
    template <class Left, int N, class Right>                                                                          \
    constexpr Left &operator op(Left &left, Name##Right<N, Right> right) {                                             \
        static_assert(Name##Turns<Left, Right>::value, "the mutant does not compile");                                 \
        if (on(N))                                                                                                     \
            left turned std::forward<Right>(right.right);                                                              \
        else                                                                                                           \
            left op std::forward<Right>(right.right);                                                                  \
        return left;                                                                                                   \
    }

RTIFED_TURN_ASSIGNMENT(Add, +=, -=)
RTIFED_TURN_ASSIGNMENT(Subtract, -=, +=)

template <int N, class Right>
constexpr bool both(bool left, const Right &right) {
    return on(N) ? left || right() : left && right();
}
template <int N, class Right>
constexpr bool either(bool left, const Right &right) {
    return on(N) ? left && right() : left || right();
}

} // namespace rtifedMutant
