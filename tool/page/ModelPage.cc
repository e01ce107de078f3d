#include "tool/page/ModelPage.hh"

#include "tool/check/ReadOutline.hh"
#include "tool/console/JsonWriter.hh"
#include "tool/console/Text.hh"
#include "tool/control/Decision.hh"
#include "tool/model/Model.hh"
#include "tool/page/DeclarationRefs.hh"
#include "tool/page/Page.hh"
#include "tool/page/ScriptData.hh"
#include "tool/report/ChangeGroup.hh"
#include "tool/report/FileFindings.hh"
#include "tool/report/Loading.hh"
#include "tool/report/json/DiffJson.hh"
#include "tool/report/json/FindingJson.hh"
#include "tool/report/json/ModelJson.hh"

#include <optional>
#include <set>
#include <utility>

namespace {

std::unique_ptr<RtiFedDatabase> restoredFrom(const Input &input) {
    try {
        return input.isImage() ? restoreImage(input.contents) : nullptr;
    } catch (const RTI::Exception &) {
        return nullptr; // what is wrong with it is a finding
    }
}

Outline outlineOfFile(const CheckedFile &checked, const RtiFedDatabase *restored) {
    return checked.text ? outlineOf(*checked.text) : restored ? Outline(*restored, nullptr, true) : Outline();
}

/// Writes the findings as a member, and keeps their rules.
class FindingsWriter : public Report {
public:
    FindingsWriter(JsonWriter &json, const DeclarationRefs *refs) : _json(json), _refs(refs) {}

    void beginFile(const Source &, const Tally &) override { _json.breakLine().key("findings").beginArray(); }
    void add(const Source &source, const Finding &finding) override {
        _rules.insert(finding.rule);
        _json.breakLine().beginObject();
        writeMembers(_json, source, finding);
        _json.member("of", finding.span ? refAt(*finding.span) : Json()).key("furtherOf").beginArray();
        for (const FurtherPlace &further : finding.furtherPlaces)
            _json.value(refAt(further.span));
        _json.endArray().endObject();
    }
    void endFile(const Source &, const Tally &) override { _json.endArray(); }

    void writeRules() {
        _json.breakLine().key("rules").beginObject();
        for (const Rule *rule : _rules)
            _json.member(rule->id, {{"title", rule->title}, {"text", std::string(rule->why) + '\n' + rule->fix}});
        _json.endObject();
    }

private:
    Json refAt(const RtiFedSpan &span) const { return _refs->at(span.begin); }

    JsonWriter &_json;
    const DeclarationRefs *_refs; // null for an image, whose findings have no places
    std::set<const Rule *> _rules;
};

/// Writes what the script of the page reads, as data.schema.json describes it.
class DataWriter {
public:
    DataWriter(ModelToShow &model, const ModelPageOptions &options, std::ostream &out)
        : _model(model), _options(options), _json(out, JsonWriter::Layout::compact) {
        if (model.checked.text)
            _refs.emplace(*model.checked.text);
    }

    Tally write() {
        const Outline &outline = _model.file.outline;
        _json.beginObject().member("program", "rtifed " RTIFED_VERSION);
        _json.member("index", _options.index.empty() ? Json() : Json(_options.index));
        _json.breakLine().key("model");
        writeModel(_json, {_model.file.input.name, outline, _model.database()}, false);
        _json.breakLine().member("complete", !_model.isDamagedImage() && outline.hasAllNames);
        writeDocumentation();
        writeDifferences();
        FindingsWriter findings(_json, _refs ? &*_refs : nullptr);
        Tally tally = reportFindings(std::move(_model.checked), kAllShown, findings);
        findings.writeRules();
        _json.breakLine().endObject();
        return tally;
    }

private:
    void writeDocumentation() {
        _json.breakLine().key("documentation").beginArray();
        if (_refs)
            _refs->forEachDocumentation([this](const Json &ref, const std::string &text) {
                _json.breakLine().beginObject().member("of", ref).member("text", text).endObject();
            });
        _json.endArray();
    }

    void writeDifferences() {
        const Difference *difference = _options.difference;
        if (!difference) {
            for (const char *key : {"difference", "wording", "before"})
                _json.breakLine().member(key, {});
            return;
        }
        _json.breakLine().key("difference");
        writeDifference(_json, *difference);
        writeWording(*difference);
        const auto &[input, outline] = difference->before;
        const auto database = outline.loads ? buildModel(input) : nullptr;
        _json.breakLine().key("before");
        writeModel(_json, {input.name, outline, database.get()}, false);
    }

    /// Writes the words of `diff` for the changes, which are numbered as in the difference.
    void writeWording(const Difference &difference) {
        _json.breakLine().key("wording").beginObject().member("explanation", explanationOf(difference));
        _json.key("groups").beginArray();
        for (const ChangeGroup &group : ChangeGroup::groupsOf(difference.comparison)) {
            _json.breakLine().beginObject().member("sign", std::string(1, group.sign()));
            _json.member("meaning", Comparison::nameOf(group.meaning())).member("headline", group.headline());
            _json.key("changes").beginArray();
            for (std::size_t i = 0; i < group.size(); ++i) {
                const std::ptrdiff_t number = &group[i] - difference.comparison.changes().data();
                _json.value({{"text", group.item(i)}, {"change", number}});
            }
            _json.endArray().endObject();
        }
        _json.endArray().endObject();
    }

    ModelToShow &_model;
    const ModelPageOptions &_options;
    JsonWriter _json;
    std::optional<DeclarationRefs> _refs; // of a text
};

std::string titleOf(const ComparedFile &file) {
    const std::string &federation = file.outline.federation;
    return federation.empty() ? file.input.name : federation + " (" + file.input.name + ')';
}

} // namespace

ModelToShow::ModelToShow(Input input, const Settings &settings)
    : file{std::move(input), Outline()}, checked(checkFile(file.input, Severity::warning)),
      restored(restoredFrom(file.input)) {
    file.outline = outlineOfFile(checked, restored.get());
    if (!file.outline.loads)
        complaint = complaintAbout(checked, isDamagedImage() ? "" : kOnlyUnderstood);
    decide(checked, settings, nullptr);
}

const RtiFedDatabase *ModelToShow::database() const {
    if (!file.outline.loads)
        return nullptr;
    return checked.text ? &checked.text->database() : restored.get();
}

Tally writeModelPage(ModelToShow &model, const ModelPageOptions &options, std::ostream &out) {
    Tally tally{0, 0, kAllShown};
    const auto writeData = [&](std::ostream &page) {
        ScriptData buffer(page);
        std::ostream data(&buffer);
        data.exceptions(std::ios::badbit); // stop early when the page cannot be written
        tally = DataWriter(model, options, data).write();
    };
    writePage(kModelPage, titleOf(model.file), writeData, out);
    return tally;
}
