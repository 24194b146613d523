// glance.js - the node on one screen, its QinQ ports and the audit.

const cardsOf = (model) => {
  const there = model.ports.filter((port) => port.exists);
  const ofType = (type) => there.filter((port) => port.type === type).length;
  const cards = [
    ["ports", there.length], ["customer edge ports", ofType("cep")], ["network ports", ofType("pnp") + ofType("cnp")],
    ["VLANs", model.vlans.length],
    ["VLAN members", sum(model.ports, (port) => port.count.t + port.count.u + port.count.o)],
    ["provider edge ports", sum(model.ports, (port) => port.peps.length)],
    ["C-VID registrations", sum(model.ports, (port) => sum(port.registrations, (group) => sizeOf(group.ranges)))],
    ["VID translations", sum(model.ports, (port) => port.nrOfTranslations)],
    ["QinQ ports", model.ports.filter((port) => port.qinq).length], ["audit findings", model.findings.length],
  ];
  return make("dl", { class: "cards" }, cards.map(([title, number]) =>
    make("div", { "data-card": title }, make("dt", null, title), make("dd", null, grouped(number)))));
};

const drawGlance = (model) => {
  const node = model.node;
  const drops = dropCounters(model.history);
  const droppedOf = (port) => sum(queuesOf(model.history, "15m", port.port), (queue) => totalOf(queue, drops));
  const rows = model.shown.map((port) => {
    const dropped = droppedOf(port);
    return [port.exists ? port.port : port.port + " (no port)", port.type, port.pvid, port.count.t, port.count.u,
      port.count.o || "-", port.peps.length || "-", port.nrOfTranslations || "-",
      port.qinq ? (port.qinq.enabled ? "VID " + port.qinq.providerVid : "off") : "-",
      drops.length === 0 ? "-" : dropped === 0 ? "none" : make("span", { class: "warning" }, short(dropped))];
  });
  byId("glance-body").replaceChildren(
    make("p", null, "Mode ", model.mode, ", bridge MAC ", node.switch.bridgeMac, ", MAC ageing ",
      node.switch.ageingTime,
      " s. Region ", node.region, node.created ? ", created " + timeText(node.created) : "", "."),
    cardsOf(model),
    table(["Port", "Type", "PVID", "Tagged", "Untagged", "Other", "PEPs", "Translations", "QinQ", "Drops, 24 h"], rows,
      "Ports: VLANs that they are members of, and what stands on them"));
};

const drawQinQ = (model) => {
  const rows = model.ports.filter((port) => port.qinq).map(({ port, qinq }) => [port, qinq.enabled === true ? "yes"
    : "no",
    qinq.providerVid === "none" ? "none" : vlanText(model, qinq.providerVid), qinq.priority ?? 0,
      qinq.etherType ?? "0x0000",
    qinq.tunnelControlProtocols ? "yes" : "no", qinq.tunnelMac ?? 0]);
  byId("qinq-body").replaceChildren(...(rows.length === 0 ? [make("p", { class: "faint" },
    "No port has QinQ settings.")] : [
    model.mode === "qinq" ? "" : make("p", { class: "doubt" }, "Not in force: the switch mode is " + model.mode + "."),
    table(["Port", "Enabled", "Outer tag's VLAN", "Priority", "Ether type", "Control frames tunnelled", "Tunnel MAC"],
      rows)]));
};

const drawFindings = (model) => {
  const text = (value) => value === null ? "-" : typeof value === "string" ? value : JSON.stringify(value);
  byId("findings-body").replaceChildren(model.findings.length === 0 ? make("p", { class: "good" }, "No findings.") :
    table(["Kind", "Object", "Field", "Stored", "Right", "What it means"], model.findings.map((finding) =>
      [finding.kind, finding.object, finding.field ?? "-", text(finding.stored), text(finding.right), finding.message]),
    counted(model.findings.length, "finding", "findings")));
};
