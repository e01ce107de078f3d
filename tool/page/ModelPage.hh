#pragma once

#include "tool/check/CheckedFile.hh"
#include "tool/control/Settings.hh"
#include "tool/report/DiffReport.hh"
#include "tool/report/Report.hh"

#include <memory>
#include <ostream>
#include <string>

class RtiFedDatabase;

/// A file as its page shows it.
struct ModelToShow {
    ComparedFile file; ///< The outline is empty for an image that cannot be restored.
    CheckedFile checked;
    std::unique_ptr<RtiFedDatabase> restored; ///< Of an image; null if it cannot be restored.
    std::string complaint;                    ///< The line that says that the library refuses the file; empty if not.

    /// Reads a file whose findings `settings` decide about, as `check` does.
    ModelToShow(Input input, const Settings &settings);
    ModelToShow(const ModelToShow &) = delete; // a difference refers to the file
    ModelToShow &operator=(const ModelToShow &) = delete;

    bool isDamagedImage() const { return file.input.isImage() && !restored; }
    /// The database; null if the library refuses the file.
    const RtiFedDatabase *database() const;
};

/// What else a page needs.
struct ModelPageOptions {
    const Difference *difference = nullptr; ///< From an old file to the one of the page, if that is shown.
    std::string index;                      ///< The relative URI of the index; empty if there is none.
};

/// Writes the page of a model. Uses up its findings, whose number it returns.
Tally writeModelPage(ModelToShow &model, const ModelPageOptions &options, std::ostream &out);
