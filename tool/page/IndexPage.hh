#pragma once

#include "tool/page/ModelPage.hh"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// A row of the index of a folder: a model, or why there is none.
struct IndexRow {
    enum class State { loads, refused, unreadable, removed };

    std::string path; ///< Of the file in the folder.
    State state = State::removed;
    std::string failure = {}; ///< Why there is no page; only if unreadable.
    std::string federation = {}, checksum = {}, fingerprint = {};
    std::size_t errors = 0, warnings = 0;
    std::size_t objectClasses = 0, attributes = 0, interactionClasses = 0, parameters = 0, spaces = 0;
    bool isCompared = false;  ///< Whether its page has a difference.
    std::string verdict = {}; ///< In one word.
    std::string meaning = {}; ///< What the verdict means, or why there is none.

    /// Describes a model, without its findings and the verdict.
    static IndexRow of(const std::string &path, const ModelToShow &model);
};

/// The path of the page of a file, in the folder of all pages.
inline std::string pageOf(const std::string &path) {
    return path + ".html";
}
inline constexpr const char *kIndexName = "index.html";

/// Writes the index. `old` is what the models are compared with, as the user named it; empty if they are not.
void writeIndexPage(const std::string &title, const std::vector<IndexRow> &rows, const std::string &old,
                    std::ostream &out);
