#include "tool/commands/HtmlFolder.hh"

#include "tool/console/Text.hh"
#include "tool/input/Revision.hh"
#include "tool/page/IndexPage.hh"
#include "tool/page/OutputFolder.hh"
#include "tool/page/Page.hh"
#include "tool/report/Summary.hh"

#include <filesystem>
#include <set>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// Returns the path of a file in a folder that it was found in.
std::string pathIn(const std::string &folder, const std::string &file) {
    return fs::path(file).lexically_normal().lexically_relative(fs::path(folder).lexically_normal()).string();
}

/// Throws CannotWork if a page is to be where another one needs a folder, as for `a.fed` and `a.fed.html/b.fed`.
void checkForClashes(const std::set<std::string> &paths) {
    std::set<std::string> pages;
    for (const std::string &path : paths)
        pages.insert(pageOf(path));
    for (const std::string &path : paths)
        for (std::size_t slash = 0; (slash = path.find('/', slash)) != std::string::npos; ++slash)
            if (const std::string folder = path.substr(0, slash); pages.count(folder) > 0)
                throw CannotWork(path + ": its page needs a folder " + folder + ", which is the name of another page");
}

/// The old versions of the files in a folder.
class OldFiles {
public:
    /// `old` is a folder, or a revision in git of `folder`; empty for none. Throws CannotWork.
    OldFiles(const std::string &old, const std::string &folder) : _old(old) {
        std::error_code none;
        if (old.empty())
            return;
        if (fs::is_directory(old, none)) {
            for (const FileToRead &file : withoutFolders({old})) {
                if (!file.failure.empty())
                    throw CannotWork(file.failure);
                _paths.insert(pathIn(old, file.name));
            }
        } else if (fs::exists(old, none)) {
            throw CannotWork(old + ": expected a folder, as " + folder + " is one, found a file");
        } else {
            _revision.emplace(old, folder);
            _paths.insert(_revision->paths().begin(), _revision->paths().end());
        }
    }

    const std::set<std::string> &paths() const { return _paths; }
    bool has(const std::string &path) const { return _paths.count(path) > 0; }

    /// Readers of the pages know the file by its path in the folder, as they know the new one.
    ComparedFile read(const std::string &path) const {
        if (_revision)
            return loadForComparison(_revision->read(path));
        Input input = readInput((fs::path(_old) / path).string(), "");
        input.name = (fs::canonical(_old).filename() / path).string();
        return loadForComparison(std::move(input));
    }

private:
    std::string _old;
    std::optional<FolderAtRevision> _revision; // unless it is a folder
    std::set<std::string> _paths;
};

/// Makes the pages of a folder, and keeps a row of the index for each.
class FolderPages {
public:
    FolderPages(const HtmlOptions &options, const Console &console)
        : _options(options), _console(console), _configurations(options.configuration),
          _old(options.against, options.fileName) {}

    Status write() {
        const std::vector<FileToRead> files = withoutFolders({_options.fileName});
        if (files.front().name == _options.fileName)
            throw CannotWork(files.front().failure);
        std::set<std::string> paths;
        for (const FileToRead &file : files) {
            _configurations.settingsFor(file.name); // one that cannot be used is reported before any page is written
            paths.insert(pathIn(_options.fileName, file.name));
        }
        checkForClashes(paths);
        _output.emplace(_options.output);
        const auto writeOne = [this](Input input) { return writePageOf(std::move(input)); };
        const auto failFile = [this](const std::string &name, const std::string &reason) {
            _summary.addFailure();
            _rows.push_back({pathIn(_options.fileName, name), IndexRow::State::unreadable, withoutName(reason, name)});
        };
        Status status = std::max(forEachFile(files, _console, writeOne, failFile), _status);
        for (const std::string &path : _old.paths())
            if (paths.count(path) == 0) {
                _rows.push_back({path});
                _rows.back().verdict = "removed";
            }
        writeIndex();
        return status;
    }

private:
    bool writePageOf(Input input) {
        const Settings settings = _configurations.settingsFor(input.name);
        input.name = pathIn(_options.fileName, input.name); // which readers of the pages know
        const std::string path = input.name;
        ModelToShow model(std::move(input), settings);
        IndexRow row = IndexRow::of(path, model);
        const std::optional<ComparedFile> old = oldOf(model, row);
        std::optional<Difference> difference;
        if (old) {
            difference.emplace(*old, model.file);
            row.isCompared = true;
            row.verdict = Comparison::nameOf(difference->comparison.verdict());
            row.meaning = explanationOf(*difference);
        }
        std::string index = kIndexName;
        for (const char c : path)
            index.insert(0, c == '/' ? "../" : "");
        TextStream page;
        const Tally tally = writeModelPage(model, {difference ? &*difference : nullptr, index}, page);
        writePageFile(_output->fileAt(pageOf(path)), page.str());
        row.errors = tally.errors;
        row.warnings = tally.warnings;
        _summary.addFile(tally);
        _rows.push_back(std::move(row));
        return tally.gravest == nullptr;
    }

    /// Returns the old version of a model; nothing if there is none, for which `row` gives the reason.
    std::optional<ComparedFile> oldOf(const ModelToShow &model, IndexRow &row) {
        if (_options.against.empty())
            return {};
        if (!_old.has(row.path)) {
            row.verdict = "new";
            return {};
        }
        try {
            if (model.isDamagedImage())
                throw CannotWork(row.path + ": the image cannot be restored, so it is not compared");
            return _old.read(row.path);
        } catch (const CannotWork &why) {
            _console.err << "rtifed: " << why.what() << '\n';
            _status = cannotWork;
            row.verdict = "unknown";
            row.meaning = why.what();
            return {};
        }
    }

    void writeIndex() {
        TextStream index;
        const std::string name = fs::canonical(_options.fileName).filename().string();
        writeIndexPage("Models" + (name.empty() ? "" : " in " + name), _rows, _options.against, index);
        const std::string file = _output->fileAt(kIndexName);
        writePageFile(file, index.str());
        _console.out << shown(file) << ": " << _summary.text() << '\n';
    }

    const HtmlOptions &_options;
    const Console &_console;
    Configurations _configurations;
    OldFiles _old;
    std::optional<OutputFolder> _output;
    std::vector<IndexRow> _rows;
    Summary _summary;
    Status _status = done;
};

} // namespace

Status htmlOfFolder(const HtmlOptions &options, const Console &console) {
    if (options.output == "-")
        throw CannotWork(options.fileName + ": expected -o FOLDER for the pages of a folder");
    return FolderPages(options, console).write();
}
