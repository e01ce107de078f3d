#include "tool/control/Baseline.hh"

#include "tool/console/Console.hh"
#include "tool/console/InputFile.hh"
#include "tool/console/JsonWriter.hh"

#include <limits>
#include <numeric>

namespace {

constexpr int kFormatVersion = 1;
constexpr std::size_t kLongestBaseline = std::size_t(64) << 20; // bytes of a baseline

/// Reads the entries of a document. Throws Json exceptions, or a std::string that says what is wrong.
template <class Add>
void forEachEntry(const Json &document, Add add) {
    if (!document.is_object() || !document.contains("formatVersion") || !document.contains("findings"))
        throw std::string("expected an object with \"formatVersion\" and \"findings\"");
    if (document["formatVersion"] != kFormatVersion)
        throw "expected formatVersion " + std::to_string(kFormatVersion) + ", found " +
            document["formatVersion"].dump();
    for (const Json &entry : document["findings"]) {
        const auto count = entry.at("count").get<std::uint64_t>();
        if (!entry.at("count").is_number_unsigned() || count == 0 || count > std::numeric_limits<std::uint32_t>::max())
            throw "expected a count from 1 on, found " + entry.at("count").dump();
        add({entry.at("file"), entry.at("rule"), entry.at("text")}, count);
    }
}

} // namespace

Baseline::Baseline(const std::string &fileName)
    : _folder(std::filesystem::absolute(fileName).lexically_normal().parent_path()) {}

Baseline Baseline::read(const std::string &fileName) {
    Baseline baseline(fileName);
    const std::string text = readSmallFile(fileName, fileName, kLongestBaseline);
    try {
        forEachEntry(Json::parse(text), [&](Key key, std::size_t count) { baseline._counts[std::move(key)] += count; });
    } catch (const Json::exception &error) {
        const std::string reason = error.what(); // begins with an identifier in brackets
        throw CannotWork(fileName +
                         ": this is not a baseline: " + shown(reason.substr(reason.find("] ") + 2), kTextLimit));
    } catch (const std::string &error) {
        throw CannotWork(fileName + ": this is not a baseline: " + shown(error, kTextLimit));
    }
    return baseline;
}

void Baseline::beginFile(const std::string &fileName) {
    const auto path = std::filesystem::absolute(fileName).lexically_normal().lexically_relative(_folder);
    _file = shown(path.generic_string(), std::numeric_limits<std::size_t>::max());
    _begun.insert(_file);
}

bool Baseline::take(const Finding &finding) {
    const auto entry = _counts.find(keyOf(finding));
    if (entry == _counts.end() || entry->second == 0)
        return false;
    --entry->second;
    return true;
}

std::size_t Baseline::numLeft() const {
    return std::accumulate(_counts.begin(), _counts.end(), std::size_t(0), [this](std::size_t sum, const auto &entry) {
        return sum + (_begun.count(std::get<0>(entry.first)) > 0 ? entry.second : 0);
    });
}

std::size_t Baseline::size() const {
    return std::accumulate(_counts.begin(), _counts.end(), std::size_t(0),
                           [](std::size_t sum, const auto &entry) { return sum + entry.second; });
}

std::string Baseline::text() const {
    TextStream text;
    JsonWriter json(text, JsonWriter::Layout::compact);
    json.beginObject().member("formatVersion", kFormatVersion).key("findings").beginArray();
    for (const auto &[key, count] : _counts) {
        const auto &[file, rule, what] = key;
        json.breakLine().value(Json{{"file", file}, {"rule", rule}, {"text", what}, {"count", count}});
    }
    json.breakLine().endArray().endObject();
    return text.str();
}

Baseline::Key Baseline::keyOf(const Finding &finding) const {
    std::string text = finding.lastingText();
    for (const std::string &detail : finding.details)
        text += '\n' + detail;
    return {_file, finding.rule->id, std::move(text)};
}
