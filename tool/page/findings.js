// The findings of the check, by the declarations that they are about.

const SEVERITIES = ["error", "warning"];

/** A finding at each of its places: a mistake that is repeated is one finding, but shown at each declaration that it is about. */
function atEachPlace(finding) {
    const further = finding.furtherPlaces.map(({text, place}, index) =>
        Object.assign({}, finding, {text, place, of: finding.furtherOf[index]}));
    return [finding, ...further];
}

/** Turns the references of the data, such as ["object", 3, 0], into keys. */
function keyOfReference(reference) {
    return reference.join("/");
}

function indexByReference(items) {
    const index = new Map();
    for (const item of items) {
        if (!item.of) continue;
        const key = keyOfReference(item.of);
        if (!index.has(key)) index.set(key, []);
        index.get(key).push(item);
    }
    return index;
}

/** Of several comments about the same, one after the other. */
function textOfComments(comments) {
    return comments.map(item => item.text).join("\n");
}

/** The findings and comments of each declaration. Removed declarations have none. */
class Remarks {
    constructor(data) {
        this.findings = indexByReference(joined(data.findings.map(atEachPlace)));
        this.documentation = indexByReference(data.documentation);
        this.documentationOfFile = textOfComments(data.documentation.filter(item => item.of === null));
        this.severity = this.gravestPerNode();
        this.below = new Map();
    }

    /** Notes for each class the gravest severity below it, so that a closed class can show it. */
    spread(model) {
        for (const forest of forestsOf(model)) {
            for (const node of forest.nodes) {
                const severity = this.severityOf(node);
                for (let above = node.parent; severity !== "" && above; above = above.parent) {
                    const known = this.below.get(above);
                    if (known === severity || known === "error") break; // then it is known further up too
                    this.below.set(above, severity);
                }
            }
        }
    }

    findingsOf(node, memberIndex) {
        return node.removed ? [] : this.findings.get(keyOf(node, memberIndex)) || [];
    }

    documentationOf(node, memberIndex) {
        const texts = node.removed ? [] : this.documentation.get(keyOf(node, memberIndex)) || [];
        return textOfComments(texts);
    }

    /** The comments about all classes or spaces of a kind. */
    documentationOfKind(kind) {
        return textOfComments(this.documentation.get(kind) || []);
    }

    gravestPerNode() {
        const gravest = new Map();
        for (const [key, findings] of this.findings) {
            const node = key.split("/").slice(0, 2).join("/");
            for (const finding of findings) {
                if (gravest.get(node) !== "error") gravest.set(node, finding.severity);
            }
        }
        return gravest;
    }

    /** "error", "warning" or "" for all below a class. */
    severityBelow(node) {
        return this.below.get(node) || "";
    }

    /** "error", "warning" or "" for a class or space with its members. */
    severityOf(node) {
        return node.removed ? "" : this.severity.get(node.kind + "/" + node.index) || "";
    }
}

function keyOf(node, memberIndex) {
    return node.kind + "/" + node.index + (memberIndex === undefined ? "" : "/" + memberIndex);
}

function countSeverity(findings, severity) {
    return findings.filter(finding => finding.severity === severity).length;
}

/** "2 errors, 1 warning", or "no findings". */
function summaryOf(findings) {
    const counts = SEVERITIES.map(severity => [countSeverity(findings, severity), severity]).filter(([count]) => count > 0);
    return counts.map(([count, severity]) => counted(count, severity)).join(", ") || "no findings";
}

/** Findings grouped by rule: errors first, then in the order of the check. */
function groupByRule(findings) {
    const groups = new Map();
    for (const severity of SEVERITIES) {
        for (const finding of findings) {
            if (finding.severity !== severity) continue;
            const key = severity + "/" + finding.rule;
            if (!groups.has(key)) groups.set(key, {rule: finding.rule, severity, findings: []});
            groups.get(key).findings.push(finding);
        }
    }
    return [...groups.values()];
}
