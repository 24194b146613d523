// live.js - draws what it has; a page without data of its own asks its server every second and draws what has changed.

const kEvery = 1000; // milliseconds

let model = null;
const drawn = {}; // the data of each part, as text

const draws = {
  node: () => { drawGlance(model); fillFilter(model); drawMatrix(model); drawEdge(model); drawQinQ(model); },
  history: () => { drawGlance(model); drawHistory(model); },
  findings: () => { drawGlance(model); drawFindings(model); },
};

const show = (data) => {
  const start = performance.now();
  model = modelOf(data);
  byId("name").replaceChildren(named(model.node.name || "Node without a name"));
  document.title = (model.node.name || "Node") + " - piovios";
  for (const [part, drawPart] of Object.entries(draws)) {
    const text = JSON.stringify(data[part]);
    if (text !== drawn[part]) {
      drawPart();
      drawn[part] = text;
    }
  }
  document.body.dataset.drawn = Math.round(performance.now() - start);
};

const tell = (text, kind) => {
  const state = byId("state");
  if (state.textContent !== text) {
    state.replaceChildren(make("span", { class: kind }, text));
    document.body.dataset.state = kind;
  }
};

let tag = null;
let lost = null; // since when there is nothing new

const clock = () => new Date().toLocaleTimeString();
const fail = (text) => {
  lost = lost || clock();
  tell(text + " since " + lost + (model ? "; below is what was there before." : "."), "warning");
};

const ask = async () => {
  try {
    const answer = await fetch("data.json", { headers: tag ? { "If-None-Match": tag } : {}, cache: "no-store",
      signal: AbortSignal.timeout(10 * kEvery) });
    if (answer.status === 200) {
      show(await answer.json());
      tag = answer.headers.get("ETag");
      tell(lost ? "Back since " + clock() + ", after it was gone at " + lost + "; follows the node."
        : "Follows the node; last change at " + clock() + ".", "good");
      lost = null;
    } else if (answer.status === 304) {
      if (lost) {
        tell("Back since " + clock() + ", after it was gone at " + lost + "; follows the node.", "good");
        lost = null;
      }
    } else {
      tag = null;
      fail("The node is gone (" + (await answer.json()).error.message + ")");
    }
  } catch (error) {
    fail("The exporter does not answer");
  }
  setTimeout(ask, kEvery);
};

for (const id of ["filter-vlan", "filter-port", "filter-kind"]) {
  byId(id).addEventListener("input", () => model && drawMatrix(model));
}
byId("counter").addEventListener("input", () => model && drawHistory(model));
for (const form of document.forms) {
  form.addEventListener("submit", (event) => event.preventDefault());
}
const data = JSON.parse(byId("data").textContent);
if (data) {
  show(data);
  tell("As it was on " + timeText(data.time) + ".", "faint");
  byId("source").textContent = "Written by piovios " + data.version + " of region " + data.node.region + ".";
} else {
  ask();
}
