// history.js - the queue counters as charts: all queues of a port together, on one scale, newest period on the right.

const kBar = 7;      // width of a period, in pixels
const kHeight = 30;  // of the bars of a queue
const kDropRow = 6;  // above them: a mark for each period with drops

const stateTitles = { o: "", s: ", suspect", m: ", no record" };
const periodTitle = (queue, period) => (period === 0 ? "current period" : counted(period, "period", "periods")
  + " ago") +
  (queue.times && queue.times[period] ? ", " + timeText(queue.times[period]) : "") + stateTitles[queue.states[period]];

const barTitle = (queue, period, counter, drops) => {
  const dropped = countOf(queue, drops, period);
  return periodTitle(queue, period) + (queue.states[period] === "m" ? "" : ": " + grouped(countOf(queue, [counter],
    period))
    + (dropped > 0 ? ", dropped: " + grouped(dropped) : ""));
};
const titleOf = (picture) => picture.querySelector("title") || picture.appendChild(draw("title"));

// One queue: a bar for each period that the ring has, and its gaps; a missing period keeps its place.
const queueBars = (model, ring, queue, counter, drops, most) => {
  const length = Math.max(...model.history[ring].map((one) => one.states.length), 1);
  const parts = [draw("path", { class: "axis", d: `M0 ${kDropRow + kHeight}.5H${length * kBar}` })];
  [...queue.states].forEach((state, period) => {
    const x = (length - 1 - period) * kBar;
    const count = countOf(queue, [counter], period);
    const dropped = countOf(queue, drops, period);
    const height = state === "m" ? kHeight : Math.max(count === 0 ? 1 : 2, Math.round((kHeight * count) / (most || 1)));
    const kind = state === "m" ? " missing" : (period === 0 ? " current" : "") + (state === "s" ? " suspect" : "");
    parts.push(draw("rect", { class: "bar" + kind, x, y: kDropRow + kHeight - height, width: kBar - 1, height }));
    if (state === "s") {
      parts.push(draw("path", { class: "mark", d: `M${x + 3} ${kDropRow + kHeight + 2}l3 5h-6z` }));
    }
    if (dropped > 0) {
      parts.push(draw("rect", { class: "drop", x, y: 0, width: kBar - 1, height: kDropRow - 1 }));
    }
  });
  const height = kDropRow + kHeight + 8;
  const picture = draw("svg", { viewBox: `0 0 ${length * kBar} ${height}`, width: length * kBar, height, role: "img",
    "data-ring": ring, "data-queue": queue.queue,
    "aria-label": `Queue ${queue.queue}, ${ring}: ${counted(queue.states.length, "period", "periods")}, dropped: ` +
      grouped(totalOf(queue, drops)) }, parts);
  // Thousands of titles would double the page: a bar gets its own when somebody points at it.
  picture.addEventListener("pointermove", (event) => {
    const period = length - 1 - Math.floor((event.offsetX / picture.clientWidth) * length);
    titleOf(picture).textContent = period < 0 || period >= queue.states.length ? ""
      : barTitle(queue, period, counter, drops);
  });
  return picture;
};

const historyTable = (model, ring, queues, counter) => {
  const length = Math.max(...queues.map((queue) => queue.states.length));
  return table(["Period", ...queues.map((queue) => queue.queue)], Array.from({ length }, (_, period) => [period === 0
    ? "current" : "-" + period,
    ...queues.map((queue) => period >= queue.states.length || queue.states[period] === "m" ? "no record"
      : grouped(countOf(queue, [counter], period)) + (queue.states[period] === "s" ? " suspect" : ""))]),
  model.history.counters[counter - 1] + ", ring of " + ring);
};

const portFigure = (model, port, counter, drops) => {
  const rings = Object.fromEntries(["15m", "24h"].map((ring) => [ring, queuesOf(model.history, ring, port.port)]));
  const mostOf = (ring) => Math.max(...rings[ring].map((queue) => Math.max(0, ...(queue.counters[counter] || []))));
  const most = { "15m": mostOf("15m"), "24h": mostOf("24h") };
  const rows = rings["15m"].map((queue, i) => {
    const dropped = totalOf(queue, drops);
    return [queue.queue, queueBars(model, "15m", queue, counter, drops, most["15m"]), queueBars(model, "24h",
      rings["24h"][i], counter, drops, most["24h"]),
      drops.length === 0 ? "-" : dropped === 0 ? "none" : make("span", { class: "warning" }, short(dropped))];
  });
  return make("figure", null, make("figcaption", null, "Port " + port.port, make("span", { class: "faint" },
    " highest: " + short(most["15m"]) + " in 15 minutes, " + short(most["24h"]) + " in 24 hours")),
  table(["Queue", "15 minutes, a day back", "24 h", "Dropped"], rows),
  ["15m", "24h"].map((ring) => onDemand("history-" + ring + "-" + port.port, "Port " + port.port + " as a table, "
    + ring,
    () => historyTable(model, ring, rings[ring], counter))));
};

const drawHistory = (model) => {
  const select = byId("counter");
  const used = model.history.counters.map((title, i) => [String(i + 1), title])
    .filter(([counter]) => ["15m", "24h"].some((ring) => model.history[ring].some((queue) => queue.counters[counter])));
  const chosen = select.value;
  select.replaceChildren(...used.map(([counter, title]) => make("option", { value: counter }, title)));
  if (used.length > 0) {
    select.value = used.some(([counter]) => counter === chosen) ? chosen : used[0][0];
  }
  const drops = dropCounters(model.history);
  const ports = model.ports.filter((port) => ["15m", "24h"].some((ring) => queuesOf(model.history, ring,
    port.port).some((queue) =>
    Object.keys(queue.counters).length > 0 || queue.states.length > 1)));
  byId("choose").hidden = used.length === 0;
  byId("history-body").replaceChildren(...(ports.length === 0 ? [make("p", { class: "faint" },
    "No queue has counted anything.")] : [
    make("p", { class: "faint" },
      "All queues of a port are on one scale; the newest period is on the right and paler, for it still counts.",
      make("span", { class: "key drop" }, "\u00a0"), "dropped", make("span", { class: "key suspect" }, "\u25b2"),
        "suspect", make("span", { class: "key missing" }, "\u00a0"), "no record"),
    drops.length === 0 ? make("p", { class: "faint" },
      "No counter is known to count drops: name the counters with --names.") : "",
    ...ports.map((port) => portFigure(model, port, select.value || "1", drops))]));
};
