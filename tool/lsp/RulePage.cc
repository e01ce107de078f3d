#include "tool/lsp/RulePage.hh"

#include "tool/lsp/Uri.hh"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

/// Looks beside the program: where it is installed, and where it was built.
std::string installedPage() {
    std::error_code none;
    const fs::path program = fs::read_symlink("/proc/self/exe", none);
    for (const char *folder : {"../share/rtifed", "share/rtifed"}) {
        const fs::path page = (program.parent_path() / folder / "rules.md").lexically_normal();
        // unreached: only where there is no /proc
        if (!program.empty() && fs::is_regular_file(page, none))
            return uriOfPath(page.string());
    }
    return "";
}

} // namespace

std::string pageOfRule(const Rule &rule, const std::string &page) {
    static const std::string installed = installedPage();
    const std::string &base = page.empty() ? installed : page;
    return base.empty() ? "" : base + '#' + rule.id;
}
