// edge.js - each customer edge port as a picture: C-VIDs, provider edge ports, S-VLANs, and where those leave the node.

const kLine = 17;  // of text, in pixels
const kPad = 8;
const kColumns = { cVids: [0, 250], pep: [310, 210], sVlan: [580, 230], exits: [870, 270] }; // left edge and width

const cut = (text, width) => {
  const characters = Math.floor((width - 2 * kPad) / 7);
  const all = [...text];
  return all.length <= characters ? text : all.slice(0, characters - 1).join("") + "\u2026";
};

const groupLines = (group) => {
  const size = sizeOf(group.ranges);
  return [group.cVids + (size > 1 ? " (" + size + " C-VIDs)" : ""), [group.untaggedCep ? "untagged at the CEP" : "",
    group.untaggedPep ? "C-tag taken off" : "", group.relay && group.relayCVid ? "relayed as " + group.relayCVid
      : ""].filter(Boolean).join(", ")].filter(Boolean);
};

// Priorities 1 to 8, and what they become.
const priorityText = (pep) => {
  const changed = (pep.priorityRegeneration || []).map((to, i) => to === i + 1 ? null : i + 1 + "\u2192"
    + to).filter(Boolean);
  return changed.length === 0 ? "priorities kept" : "priority " + changed.join(" ");
};

// The ports that frames of an S-VLAN leave through.
const exitLines = (model, cep, sVid) => {
  const vlan = model.vlanOf.get(sVid);
  const lines = [];
  for (const port of model.shown.filter((other) => other !== cep)) {
    const pep = port.type === "cep" ? port.peps.find((one) => one.sVid === sVid) : null;
    const letter = vlan ? vlan.letters[port.index] : "-";
    const isNetwork = port.type === "pnp" || port.type === "cnp";
    const local = isNetwork ? port.localOf.get(sVid) : undefined;
    if (pep) {
      lines.push(port.port + " cep, PEP " + pep.index);
    } else if (letter === "t") {
      lines.push(port.port + " " + (isNetwork ? port.type + " " : "") + "VID " + (local ? local + ", translated"
        : sVid));
    } else if (letter !== "-") {
      lines.push(port.port + " " + kKinds[letter]);
    }
  }
  return lines;
};

// A row for each PEP, and one for the C-VIDs that lead to none.
const edgeRows = (model, cep) => {
  const rows = cep.peps.map((pep) => ({ pep, sVid: pep.sVid, groups: [] }));
  const add = (sVid, group) => {
    const row = rows.find((one) => one.sVid === sVid) || rows[rows.push({ pep: null, sVid, groups: [] }) - 1];
    row.groups.push(group);
  };
  cep.registrations.forEach((group) => add(group.sVid, groupLines(group)));
  const other = cep.defaultCVidRegistration;
  if (other && typeof other.sVid === "number" && other.sVid > 0) {
    add(other.sVid, ["all other C-VIDs", other.untaggedPep === true ? "default, C-tag taken off" : "default"]);
  }
  return rows.map((row) => ({ ...row, exits: exitLines(model, cep, row.sVid), isVlan: model.vlanOf.has(row.sVid) }));
};

const box = (kind, column, top, height, lines) => {
  const [left, width] = kColumns[column];
  return draw("g", { class: column + "-box" },
    draw("title", null, lines.join(", ")),
    draw("rect", { class: kind, x: left + 1, y: top, width, height, rx: 5 }),
    lines.map((line, i) => draw("text", { x: left + kPad, y: top + kPad + 10 + i * kLine, class: i > 0
      && column !== "exits" ? "small" : null }, cut(line, width))));
};
const heightOf = (lines) => 2 * kPad + lines.length * kLine - 3;
const link = (from, fromY, to, toY) => {
  const start = kColumns[from][0] + kColumns[from][1] + 1;
  const end = kColumns[to][0] + 1;
  const middle = (start + end) / 2;
  return draw("path", { class: "link", d: `M${start} ${fromY}C${middle} ${fromY} ${middle} ${toY} ${end} ${toY}` });
};

const edgeRow = (model, row, top) => {
  const groupHeights = row.groups.map(heightOf);
  const left = Math.max(0, sum(groupHeights, (height) => height + 6) - 6);
  const pepLines = row.pep ? ["PEP " + row.pep.index, priorityText(row.pep)] : ["no provider edge port"];
  const vlanLines = [vlanText(model, row.sVid)];
  const exitText = row.exits.length === 0 ? ["no way out"] : row.exits;
  const height = Math.max(left, heightOf(pepLines), heightOf(exitText));
  const middle = top + height / 2;
  const parts = [];
  let at = top + (height - left) / 2;
  row.groups.forEach((lines, i) => {
    parts.push(box("box", "cVids", at, groupHeights[i], lines), link("cVids", at + groupHeights[i] / 2, "pep", middle));
    at += groupHeights[i] + 6;
  });
  const centred = (kind, column, lines) => box(kind, column, middle - heightOf(lines) / 2, heightOf(lines), lines);
  parts.push(centred(row.pep ? "pep" : "box bad", "pep", pepLines), link("pep", middle, "sVlan", middle),
    centred(row.isVlan ? "box" : "box bad", "sVlan", vlanLines), link("sVlan", middle, "exits", middle),
    centred(row.exits.length === 0 ? "box bad" : "box", "exits", exitText));
  return { parts, height };
};

const edgePicture = (model, cep, rows) => {
  let top = 22;
  const heads = { cVids: "C-VIDs at the customer", pep: "Provider edge port", sVlan: "S-VLAN",
    exits: "Other ports of the S-VLAN" };
  const parts = Object.entries(heads).map(([column, title]) => draw("text", { x: kColumns[column][0] + kPad, y: 12,
    class: "small" }, title));
  for (const row of rows) {
    const { parts: drawn, height } = edgeRow(model, row, top);
    parts.push(drawn);
    top += height + 12;
  }
  return draw("svg", { viewBox: "0 0 1142 " + top, width: 1142, height: top, role: "img", "data-port": cep.port,
    "aria-label": "Customer edge port " + cep.port + ": " + counted(cep.peps.length, "provider edge port",
      "provider edge ports") }, parts);
};

const drawEdge = (model) => {
  const ceps = model.shown.filter((port) => port.type === "cep");
  byId("edge-body").replaceChildren(
    ceps.length > 0 && model.mode !== "provider-bridge" ? make("p", { class: "doubt" },
      "Not in force: the switch mode is " + model.mode + ".") : "",
    ceps.length === 0 ? make("p", { class: "faint" }, "The node has no customer edge port.") : "",
    ...ceps.map((cep) => {
      const rows = edgeRows(model, cep);
      return make("figure", null, make("figcaption", null, "Port " + cep.port + ", PVID " + cep.pvid), make("div",
        { class: "scroll" }, edgePicture(model, cep, rows)),
        onDemand("edge-" + cep.port, "Port " + cep.port + " as a table", () => table(["C-VIDs", "Provider edge port",
          "Priorities", "S-VLAN", "Other ports"],
          rows.map((row) => [row.groups.map((lines) => lines.join(": ")).join("; ") || "-", row.pep ? row.pep.index
            : "none",
            row.pep ? priorityText(row.pep) : "-", vlanText(model, row.sVid), row.exits.join("; ") || "-"]))));
    }));
};
