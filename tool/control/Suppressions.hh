#pragma once

#include "tool/check/Finding.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The comments of a FED text that allow rules, such as `;; rtifed: allow letter-case, unused-space REASON`.
///
/// Such a comment before the FED clause holds for the whole file; one at the end of a line, after a clause or a part of
/// one, for that line; any other for the next clause with everything in it.
class Suppressions {
public:
    explicit Suppressions(const RtiFedParser &text);

    /// Returns why a finding at this offset is allowed, if a comment allows its rule; of several, the innermost counts
    /// as used.
    std::optional<Suppression> find(const Rule &rule, std::uint32_t offset);

    /// Calls `visit` with the place of each comment and what it allows, such as `letter-case in this clause: REASON`.
    void forEach(const std::function<void(RtiFedSpan, const std::string &)> &visit) const;

    /// The findings about comments that cannot be understood.
    const std::vector<Finding> &bad() const { return _bad; }

    /// Returns a finding for each comment that allows rules which were not used. Only those count for which
    /// `wasChecked` is true.
    std::vector<Finding> unused(const std::function<bool(const Rule &)> &wasChecked) const;

private:
    /// Where a comment holds.
    struct Scope {
        std::uint32_t begin, end;
        const char *name; ///< As in "in this clause".
    };
    struct Comment {
        RtiFedSpan whole; ///< What to remove with it: its line if there is nothing else, else the blanks before it.
        RtiFedSpan list;  ///< The rules in it.
        std::string reason;
        Scope scope{};
        std::vector<const Rule *> rules;
        std::vector<bool> used; ///< By the index of the rule in `rules`.
    };
    using Index = SyntaxTree::Index;
    static constexpr Scope kWholeFile{0, 0xFFFFFFFF, "in this file"};

    void read(const SyntaxTree &tree);
    void readComment(const SyntaxTree &tree, Index token, const std::optional<Scope> &scope, bool alone);
    bool readRules(std::string_view text, std::size_t at, std::uint32_t offset, Comment &comment);
    void report(std::uint32_t begin, std::size_t length, std::string text);

    std::vector<Comment> _comments;
    std::map<const Rule *, std::vector<std::pair<std::size_t, std::size_t>>> _byRule; // comment, rule in it; by scope
    std::vector<Finding> _bad;
};

/// Returns the comment that allows these rules.
std::string allowComment(const std::vector<const Rule *> &rules, const std::string &reason);

/// Why a reason cannot be written into such a comment; empty if it can.
std::string faultOfReason(const std::string &reason);
