// The view of the faults.

import { get, post, put, remove } from "./api.js";
import { $, attempt, confirmed, h, say, throttled } from "./dom.js";

let rules = [];
let editing = -1; ///< Which rule the dialog changes; -1: a new one.

const form = () => $("fault-form");
const field = name => form().elements[name];

function what(rule) {
    switch (rule.fault) {
    case "delay": return `${rule.ms ?? 0} ms late`;
    case "drip": return `drips over ${rule.ms ?? 0} ms`;
    case "resetBefore": return "reset before anything is done";
    case "resetAfter": return "reset after it was done";
    case "torn": return "body torn off";
    case "empty": return "empty body";
    case "refuse": return `refused with ${rule.code ?? "a code"}`;
    case "status": return `HTTP ${rule.status ?? ""}`;
    default: return rule.fault;
    }
}

const exchangesOf = rule => `#exchanges=${encodeURIComponent(rule.function ?? "")}`;

const store = list => attempt(async () => {
    await put("faults", list);
    await load();
});

function row(rule, index) {
    const chance = rule.probability === undefined || rule.probability >= 1 ? "always" : `${+(rule.probability * 100).toFixed(2)} %`;
    return h("tr", { "data-name": rule.name },
        h("td", null, h("label", null, h("input", {
            type: "checkbox", class: "switch", role: "switch", checked: rule.enabled !== false, "aria-label": `Rule ${rule.name}`,
            onchange: event => store(rules.map((each, at) => at === index ? { ...each, enabled: event.target.checked } : each)),
        }))),
        h("td", null, h("b", null, rule.name)),
        h("td", { class: "mono" }, [rule.function, rule.path].filter(Boolean).join("  ") || "everything"),
        h("td", null, what(rule)),
        h("td", null, rule.times ? `${chance}, ${rule.times} times` : chance),
        h("td", { class: "number" }, rule.struck ? h("a", { href: exchangesOf(rule) }, String(rule.struck)) : "0"),
        h("td", { class: "acts" },
            h("button", { type: "button", "aria-label": `Change ${rule.name}`, onclick: () => edit(rule, index) }, "Change…"), " ",
            h("button", { type: "button", class: "danger", "aria-label": `Remove ${rule.name}`, onclick: () => store(rules.filter((_, at) => at !== index)) }, "Remove")));
}

function draw() {
    const active = rules.filter(rule => rule.enabled !== false).length;
    $("faults-badge").hidden = active === 0;
    $("faults-badge").textContent = active;
    $("faults-clear").disabled = rules.length === 0;
    $("fault-list").replaceChildren(rules.length === 0
        ? h("p", { class: "blank" }, "No faults: every exchange takes its course.")
        : h("div", { class: "table" }, h("table", null,
            h("thead", null, h("tr", null, ["On", "Name", "Where", "What", "How often"].map(text => h("th", null, text)),
                h("th", { class: "number" }, "Struck"), h("th"))),
            h("tbody", null, rules.map(row)))));
}

async function load() {
    const found = await attempt(() => get("faults"));
    if (found) {
        rules = Array.isArray(found) ? found : found.rules ?? [];
        draw();
    }
}

function fit() {
    const kind = field("fault").value;
    form().querySelectorAll("[data-for]").forEach(label => {
        label.hidden = !label.dataset.for.split(" ").includes(kind);
        label.querySelector("input").disabled = label.hidden;
    });
}

export function edit(rule, index = -1) {
    editing = index;
    form().reset();
    for (const [name, value] of Object.entries(rule)) {
        if (field(name)) {
            field(name).value = value;
        }
    }
    if (index < 0 && !rule.name) {
        let number = rules.length + 1;
        while (rules.some(each => each.name === `fault ${number}`)) {
            ++number;
        }
        field("name").value = `fault ${number}`;
    }
    $("fault-title").textContent = index < 0 ? "Add a fault" : `Change "${rule.name}"`;
    $("fault-error").textContent = "";
    fit();
    $("fault-dialog").showModal();
    field(rule.function ? "fault" : "function").focus();
}

/** What the form says, without the fields that do not belong to the kind of fault. */
function said() {
    const rule = { enabled: editing < 0 ? true : rules[editing].enabled !== false };
    for (const input of form().elements) {
        if (input.name && !input.disabled && input.value.trim() !== "") {
            rule[input.name] = input.type === "number" ? Number(input.value) : input.value.trim();
        }
    }
    return rule;
}

async function save(event) {
    event.preventDefault();
    const rule = said();
    const taken = rules.some((each, at) => at !== editing && each.name === rule.name);
    if (taken) {
        $("fault-error").textContent = `There is a rule "${rule.name}" already.`;
        return;
    }
    try {
        if (editing < 0) {
            await post("faults", rule);
        } else {
            await put("faults", rules.map((each, at) => at === editing ? rule : each));
        }
    } catch (error) {
        $("fault-error").textContent = error.message;
        return;
    }
    $("fault-dialog").close();
    say(`"${rule.name}" is set`);
    await load();
}

export const changed = throttled(700, load);
export const show = load;

export function start() {
    form().addEventListener("submit", save);
    form().querySelector("[data-close]").addEventListener("click", () => $("fault-dialog").close());
    field("fault").addEventListener("change", fit);
    $("fault-new").addEventListener("click", () => edit({}));
    $("faults-clear").addEventListener("click", async () => {
        if (await confirmed("Remove all faults?", `There are ${rules.length}.`, "Remove")) {
            await attempt(() => remove("faults"));
            await load();
        }
    });
    load();
}
