#include "tool/report/Identity.hh"

#include "tool/console/Digest.hh"

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Returns a text without the numbers of positions, LINE:COLUMN.
std::string withoutPositions(const std::string &text) {
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        if (end > at && end + 1 < text.size() && text[end] == ':' && isDigit(text[end + 1])) {
            for (++end; end < text.size() && isDigit(text[end]);)
                ++end;
            at = end;
        } else {
            end = end > at ? end : end + 1;
            kept.append(text, at, end - at);
            at = end;
        }
    }
    return kept;
}

} // namespace

std::string Identities::next(const std::string &fileName, const Finding &finding) {
    std::string mistake = finding.rule->id + ('\0' + withoutPositions(finding.text));
    mistake = fileName + '\0' + mistake + '\0' + std::to_string(_count[mistake]++);
    return sha256(mistake);
}
