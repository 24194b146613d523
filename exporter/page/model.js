// model.js - the data of the page (tools/page/page_data.cpp writes it) as objects.

const kKinds = { t: "tagged", u: "untagged", o: "other" };

// "10-19,30" as [[10, 19], [30, 30]]; also of a single number.  Null when it is no such list.
const rangesOf = (list) => {
  const parts = String(list).split(",").map((part) => /^\s*(\d{1,4})(?:\s*-\s*(\d{1,4}))?\s*$/.exec(part));
  return parts.every((part) => part) ? parts.map((part) => [Number(part[1]), Number(part[2] || part[1])]) : null;
};
const sum = (list, value) => list.reduce((total, item) => total + value(item), 0);
const sizeOf = (ranges) => sum(ranges, ([first, last]) => last - first + 1);

const modelOf = (data) => {
  const node = data.node;
  const vlans = node.vlans.map(([id, name, letters]) => ({ id, name, letters }));
  const vlanOf = new Map(vlans.map((vlan) => [vlan.id, vlan]));
  const ports = node.ports.map((port, index) => ({
    ...port,
    index,
    type: port.type === undefined ? "none" : String(port.type),
    peps: port.providerEdgePorts || [],
    registrations: (port.cVidRegistrations || []).map((group) => ({ ...group, ranges: rangesOf(group.cVids) })),
    // Relay VID to the lowest local VID that is translated to it, and how many there are in all.
    localOf: new Map(),
    nrOfTranslations: 0,
    count: { t: 0, u: 0, o: 0 },
  }));
  for (const port of ports) {
    for (const [first, , relays] of port.translations) {
      port.nrOfTranslations += relays.length;
      relays.forEach((relay, i) => port.localOf.has(relay) || port.localOf.set(relay, first + i));
    }
  }
  for (const vlan of vlans) {
    for (const port of ports) {
      const letter = vlan.letters[port.index];
      if (letter !== "-") {
        ++port.count[letter];
      }
    }
  }
  // Ports that are there, and those that are still members of a VLAN.
  const shown = ports.filter((port) => port.exists || port.count.t + port.count.u + port.count.o > 0);
  return { ...data, node, ports, shown, vlans, vlanOf, mode: String(node.switch.mode) };
};

const vlanText = (model, id) => {
  const vlan = model.vlanOf.get(id);
  return vlan ? id + " " + vlan.name : id + " (no such VLAN)";
};

// What a queue has dropped is told by the counters whose names say so; frames are not added to octets.
const dropCounters = (history) => {
  const drops = history.counters.map((title, i) => [String(i + 1), title]).filter(([,
    title]) => /drop|discard|lost/i.test(title));
  const ofFrames = drops.filter(([, title]) => !/octet|byte/i.test(title));
  return (ofFrames.length > 0 ? ofFrames : drops).map(([counter]) => counter);
};
const queuesOf = (history, ring, port) => history[ring].filter((queue) => queue.queue.startsWith(port + "/"));
const countOf = (queue, counters, period) => sum(counters, (counter) => (queue.counters[counter] || [])[period] || 0);
const totalOf = (queue, counters) => sum(counters, (counter) => sum(queue.counters[counter] || [], (count) => count));
