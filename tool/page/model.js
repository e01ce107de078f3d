var data = JSON.parse(document.getElementById("data").textContent);
var main = document.querySelector("main");

function add(tag, text) {
    var element = document.createElement(tag);
    element.textContent = text;
    main.appendChild(element);
}

add("h1", data.model.federation || data.model.file);
data.findings.forEach(function (finding) { add("p", finding.severity + ": " + finding.text); });
data.model.objectClasses.concat(data.model.interactionClasses).forEach(function (node) { add("div", node.name); });
document.documentElement.dataset.ready = String(Math.round(performance.now()));
