// The page with all findings, by rule.

function ruleSection(page, group) {
    const rule = page.data.rules[group.rule] || {title: group.rule, text: ""};
    const count = group.findings.length;
    return make("section", {class: "rule"},
        countedHeading(rule.title, count),
        make("p", {class: "note"}, make("span", {class: "severity " + group.severity}, group.severity), " ",
            make("code", null, group.rule)),
        rule.text.split("\n").map(paragraph => paragraph === "" ? null : make("p", {class: "explanation"}, paragraph)),
        longList(make("div"), group.findings, finding => findingBox(page, finding, {withSubject: true}), 100));
}

function findingsPage(page) {
    const {findings, model} = page.data;
    return {
        title: "Findings",
        content: [
            make("h1", {tabindex: "-1"}, "Findings"),
            make("p", null, findings.length === 0 ? "The check found no errors and no warnings in this file."
                : "The check of " + fileName(model.file) + " reports " + summaryOf(findings) + "."),
            groupByRule(findings).map(group => ruleSection(page, group))
        ]
    };
}
