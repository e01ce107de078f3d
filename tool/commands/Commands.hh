#pragma once

#include "tool/commands/Rewriting.hh"
#include "tool/comparison/Comparison.hh"
#include "tool/console/Console.hh"
#include "tool/console/Progress.hh"
#include "tool/console/Text.hh"
#include "tool/constants/Constants.hh"
#include "tool/control/Configurations.hh"
#include "tool/fix/Fixing.hh"
#include "tool/fom/export/FomExport.hh"
#include "tool/format/Format.hh"
#include "tool/input/FedFiles.hh"
#include "tool/input/Input.hh"
#include "tool/report/FileFindings.hh"
#include "tool/report/Loading.hh"
#include "tool/report/Report.hh"

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <vector>

/// The commands of the program. Each writes its result to `console.out` and its complaints to `console.err`. A command
/// throws CannotWork if it cannot do its work at all.

struct TreeOptions {
    enum Format { text, dot, svg, mermaid };

    std::string fileName;
    std::string className;    ///< The class to show with its descendants; empty for the whole model.
    bool inherited = false;   ///< Whether classes are shown with the members that they inherit; only of text.
    bool classesOnly = false; ///< Whether no members are shown; only of text.
    std::size_t depth = 0;    ///< The number of levels of classes to show, 0 for all.
    Format format = text;
    bool members = false; ///< Whether a picture shows the members of each class.
};

struct FindOptions {
    std::vector<std::string> files; ///< Or folders.
    std::string name;
    bool all = false;   ///< Whether long lists are shown in full.
    bool quiet = false; ///< Whether nothing is printed.
    bool glob = false;  ///< Whether * and ? in the name match other characters.
};

struct JsonOptions {
    std::string fileName;
    bool effective = false; ///< Whether each class lists its inherited members as well.
};

struct HtmlOptions {
    std::string fileName;     ///< Or a folder, of whose files pages and an index are made.
    std::string output = "-"; ///< The file to write, - for standard output; the folder to write to, for a folder.
    std::string against;      ///< The old file, REV:PATH or REV; for a folder, the old one or REV. Empty for none.
    ConfigurationOptions configuration;
};

struct ExportOptions {
    std::string fileName;
    std::string output = "-"; ///< The file to write, - for standard output.
    FomForm form = FomForm::interchange;
    std::string types;          ///< The file of types to read; empty for none.
    bool typesTemplate = false; ///< Whether a file of types is written, not XML.
};

struct ChecksumOptions {
    std::vector<std::string> fileNames; ///< Or folders.
    bool sha256 = false;
    bool check = false;  ///< Whether the files are manifests, for which the following options are.
    bool quiet = false;  ///< Whether matching files are not named.
    bool silent = false; ///< Whether nothing is printed.
    bool ignoreMissing = false;
    bool strict = false; ///< Whether a malformed line is a failure.
};

struct CheckOptions {
    std::vector<std::string> files; ///< Or folders.
    ConfigurationOptions configuration;
    std::string baseline;      ///< The file of known findings; empty for none.
    std::string writeBaseline; ///< The file to write them to in place of a report; empty for none.
    std::string addAllow;      ///< The reason to allow all findings for, in place of a report; empty for none.
    bool showSettings = false; ///< Whether to show what holds for the files, in place of a report.
    ReportMaker *format = textReport;
    std::optional<std::size_t> maxFindings; ///< Of each file; 0 for all. If absent, the format decides.
    bool statistics = false;                ///< Whether the findings are counted by rule, not shown.
    Severity failOn = Severity::error;      ///< The least severity that gives exit status 1.
    bool quiet = false;                     ///< Whether nothing is printed.
};

struct ExplainOptions {
    std::string rule;      ///< Empty for the list of all rules.
    bool markdown = false; ///< Whether to print docs/rules.md.
};

Status check(const CheckOptions &options, const Console &console);
Status writeBaseline(const CheckOptions &options, const Console &console);
Status addAllowComments(const CheckOptions &options, const Console &console);
Status showSettings(const CheckOptions &options, const Console &console);
Status explain(const ExplainOptions &options, const Console &console);
Status lsp(const Console &console);
Status list(const std::string &fileName, const Console &console);
Status calls(const std::string &fileName, const Console &console);
Status tree(const TreeOptions &options, const Console &console);
Status find(const FindOptions &options, const Console &console);
Status html(const HtmlOptions &options, const Console &console);
Status json(const JsonOptions &options, const Console &console);
Status exportModel(const ExportOptions &options, const Console &console);
Status checksum(const ChecksumOptions &options, const Console &console);
Status save(const std::string &fileName, const std::string &imageName, const Console &console);

struct DiffOptions {
    std::string oldName; ///< Unless `against` is given. This and the new name may be REV:PATH.
    std::string newName;
    bool all = false;   ///< Whether every change is listed, not only the first few of each group.
    bool quiet = false; ///< Whether nothing is printed.
    bool json = false;  ///< Whether the output is JSON, else text.
    Comparison::Verdict failOn = Comparison::Verdict::relabelled; ///< The mildest that gives exit status 1.
    std::string against = {}; ///< A revision in git of the new file, or REV:PATH, which is the old file.
};
Status diff(const DiffOptions &options, const Console &console);

struct FmtOptions {
    RewriteOptions rewrite;
    FormatOptions format;
};
Status fmt(const FmtOptions &options, const Console &console);

struct NewOptions {
    std::string name; ///< Of the federation.
    bool withMom = true;
    std::string fileName = "-"; ///< The file to write, which must not exist; - for standard output.
};
Status newFile(const NewOptions &options, const Console &console);

struct MergeOptions {
    std::vector<std::string> files; ///< Or folders.
    std::string output = "-";       ///< The file to write, - for standard output.
    bool firstMom = false;          ///< Whether the first file decides where the MOM differs.
};
Status merge(const MergeOptions &options, const Console &console);

struct ExtractOptions {
    std::string fileName;
    std::vector<std::string> classNames;
    std::string output = "-"; ///< The file to write, - for standard output.
    bool subclasses = false;  ///< Whether the subclasses of these classes are extracted as well.
};
Status extract(const ExtractOptions &options, const Console &console);

struct ConstantsOptions {
    std::string fileName;
    const ConstantLanguage *language = nullptr;
    std::string scope;        ///< Dotted identifiers of the scopes around the constants; empty for the default.
    std::string output = "-"; ///< The file to write, - for standard output.
    bool handles = false;     ///< Whether the handles are written as well.
};
Status constants(const ConstantsOptions &options, const Console &console);

struct ImportOptions {
    std::vector<std::string> files; ///< The modules of one object model.
    std::string output = "-";       ///< The file to write; - for standard output.
};
Status importModel(const ImportOptions &options, const Console &console);

struct FixOptions {
    RewriteOptions rewrite;
    ConfigurationOptions configuration;
    FixSelection selection;
    bool list = false; ///< Whether what could be fixed is listed, and nothing is rewritten.
};
Status fix(const FixOptions &options, const Console &console);

/// Returns why a file cannot be read without its name, which such reasons begin with.
inline std::string withoutName(const std::string &failure, const std::string &name) {
    return beginsWith(failure, name + ": ") ? failure.substr(name.size() + 2) : failure;
}

/// Calls `work`, which returns false for a file with errors, on each file. A file that cannot be read stops no other:
/// its reason is written to `console.err`, and `fail` is called with its name and the reason.
template <class Work, class Fail>
Status forEachFile(const std::vector<FileToRead> &files, const Console &console, Work work, Fail fail) {
    Status status = done;
    for (const FileToRead &file : files) {
        const std::string &name = file.name == "-" ? console.stdinName : file.name;
        const auto failWith = [&](const std::string &reason) {
            console.err << "rtifed: " << reason << '\n';
            fail(name, reason);
            status = cannotWork;
        };
        Progress::count(static_cast<std::size_t>(&file - files.data()) + 1, files.size());
        try {
            if (!file.failure.empty())
                throw CannotWork(file.failure);
            if (!work(readInput(file.name, console.stdinName)))
                status = std::max(status, wrong);
        } catch (const CannotWork &why) {
            failWith(why.what());
        } catch (const std::bad_alloc &) {
            failWith(name + ": " + kOutOfMemory);
        }
    }
    return status;
}
