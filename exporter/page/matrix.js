// matrix.js - which port is in which VLAN.  61,410 squares: rows with the same letters are copies of one, and the
// browser lays out only the blocks in sight.

const kRowsOfBlock = 64;

const wantedVlans = (model) => {
  const text = byId("filter-vlan").value.trim().toLowerCase();
  const port = byId("filter-port").value;
  const kind = byId("filter-kind").value;
  const ranges = rangesOf(text);
  const isWanted = (vlan) => ranges ? ranges.some(([first, last]) => first <= vlan.id && vlan.id <= last)
    || vlan.name === text : vlan.name.toLowerCase().includes(text);
  const hasKind = (vlan) => {
    const letters = port === "" ? vlan.letters : vlan.letters[Number(port)];
    return kind === "" ? port === "" || letters !== "-" : letters.includes(kind);
  };
  return model.vlans.filter((vlan) => (text === "" || isWanted(vlan)) && hasKind(vlan));
};

const blockOf = (vlans, columns, rowOf) => {
  const head = make("tr", null, make("th", { scope: "col" }, "VLAN"), make("th", { scope: "col" }, "Name"),
    columns.map((port) => make("th", { scope: "col" }, port.port)));
  return make("div", { class: "block" }, make("table", { "aria-label": "VLANs " + vlans[0].id + " to "
    + vlans.at(-1).id },
    make("colgroup", null, make("col", { class: "id" }), make("col", { class: "name" }), columns.map(() => make("col",
      { class: "port" }))),
    make("thead", null, head), make("tbody", null, vlans.map(rowOf))));
};

const drawMatrix = (model) => {
  const chosen = byId("filter-port").value;
  const columns = chosen === "" ? model.shown : model.shown.filter((port) => String(port.index) === chosen);
  const patterns = new Map();
  const rowOf = (vlan) => {
    if (!patterns.has(vlan.letters)) {
      patterns.set(vlan.letters, make("tr", null, make("th", { scope: "row" }), make("th", null, make("bdi")),
        columns.map((port) => {
        const letter = vlan.letters[port.index];
        return letter === "-" ? make("td") : make("td", { class: letter, title: port.port + " " + kKinds[letter] },
          letter.toUpperCase());
      })));
    }
    const row = patterns.get(vlan.letters).cloneNode(true);
    row.firstChild.textContent = vlan.id;
    row.children[1].firstChild.textContent = vlan.name;
    row.children[1].title = vlan.name;
    return row;
  };
  const wanted = wantedVlans(model);
  const blocks = [];
  for (let i = 0; i < wanted.length; i += kRowsOfBlock) {
    blocks.push(blockOf(wanted.slice(i, i + kRowsOfBlock), columns, rowOf));
  }
  byId("filter-count").textContent = grouped(wanted.length) + " of " + counted(model.vlans.length, "VLAN", "VLANs");
  byId("matrix-body").replaceChildren(
    make("p", { class: "faint" }, make("span", { class: "key t" }, "T"), "tagged", make("span", { class: "key u" },
      "U"), "untagged",
      make("span", { class: "key o" }, "O"), "another membership value"),
    make("div", { class: "scroll", tabindex: "0", role: "group", "aria-label": "Matrix of VLANs and ports" }, blocks),
    wanted.length === 0 ? make("p", null, model.vlans.length === 0 ? "The node has no VLANs."
      : "No VLAN is like that.") : "",
    onDemand("matrix-list", "The same as a list", () => table(["VLAN", "Name", "Tagged", "Untagged", "Other"],
      wanted.map((vlan) => [vlan.id, named(vlan.name), ...Object.keys(kKinds).map((kind) =>
        model.shown.filter((port) => vlan.letters[port.index] === kind).map((port) => port.port).join(" ") || "-")]))));
};

// The ports to choose from; the choice stays.
const fillFilter = (model) => {
  const select = byId("filter-port");
  const chosen = select.value;
  select.replaceChildren(make("option", { value: "" }, "all ports"),
    ...model.shown.map((port) => make("option", { value: port.index }, port.port)));
  select.value = model.shown.some((port) => String(port.index) === chosen) ? chosen : "";
};
