// dom.js - elements.  Text only ever becomes text: nothing here reads markup, and the page's policy forbids it too.

const byId = (id) => document.getElementById(id);

// Attributes that are null are left out; children are elements, texts, numbers or lists of those.
const fill = (element, attributes, children) => {
  for (const [name, value] of Object.entries(attributes || {})) {
    if (value !== null && value !== undefined && value !== false) {
      element.setAttribute(name, value);
    }
  }
  element.append(...children.flat(Infinity).filter((child) => child !== null).map((child) => child instanceof Node
    ? child : String(child)));
  return element;
};
const make = (tag, attributes, ...children) => fill(document.createElement(tag), attributes, children);
const draw = (tag, attributes, ...children) =>
  fill(document.createElementNS("http://www.w3.org/2000/svg", tag), attributes, children);

// A name of the region, kept apart from the text around it whatever its script.
const named = (name) => make("bdi", null, name);

const table = (titles, rows, caption) => make("div", { class: "scroll" }, make("table", null,
  caption ? make("caption", null, caption) : null,
  make("thead", null, make("tr", null, titles.map((title) => make("th", { scope: "col" }, title)))),
  make("tbody", null, rows.map((cells) => make("tr", null, cells.map((cell, i) =>
    make(i === 0 ? "th" : "td", { scope: i === 0 ? "row" : null, class: typeof cell === "number" || cell === "-"
      ? "number" : null },
      cell)))))));

// What stands behind a line to open is made when it is opened for the first time, and stays open over a new drawing.
const opened = new Set();
const onDemand = (id, title, content) => {
  const details = make("details", { id, open: opened.has(id) ? "" : null }, make("summary", null, title));
  const toggle = () => {
    if (details.open && details.childElementCount === 1) {
      details.append(content());
    }
    opened[details.open ? "add" : "delete"](id);
  };
  details.addEventListener("toggle", toggle);
  if (details.open) {
    toggle();
  }
  return details;
};

const grouped = (number) => number.toLocaleString("en");
const counted = (number, one, many) => grouped(number) + " " + (number === 1 ? one : many);
// 12,345,678 is "12.3 M"
const short = (number) => {
  const step = [[1e18, "E"], [1e15, "P"], [1e12, "T"], [1e9, "G"], [1e6, "M"], [1e3,
    "k"]].find(([size]) => number >= size * 0.9995);
  return step ? (number / step[0]).toPrecision(3) + " " + step[1] : String(number);
};
const timeText = (seconds) => new Date(seconds * 1000).toISOString().replace("T", " ").replace(/\..*/, " UTC");
