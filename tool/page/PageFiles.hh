#pragma once

#include <string_view>

/// The template, style and script of a page: the files of this folder that files.cmake lists, embedded byte by byte
/// when the program is built.
struct PageFiles {
    std::string_view html, style, script;
};

extern const PageFiles kModelPage; ///< Of one model.
extern const PageFiles kIndexPage; ///< Of the models in a folder.
