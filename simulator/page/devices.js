// The view of the devices: switches, and alarms to provoke.

import { get, path, post, put } from "./api.js";
import { $, attempt, h, say, throttled } from "./dom.js";

let devices = [];
let drawn = "";
const unfolded = new Set(); ///< Devices whose sources are shown.

function flip(device, changes) {
    return attempt(async () => {
        device.switches = { ...device.switches, ...changes };
        await put(`devices/${path(device.guid)}`, device.switches);
        await load();
    });
}

function provoke(device, source) {
    return attempt(async () => {
        await post(`devices/${path(device.guid)}/alarm`, { source: source.guid, event: source.event });
        say(`Alarm at ${source.name}`);
    });
}

const sourceRow = (device, source) => h("tr", null,
    h("td", null, source.name),
    h("td", { class: "note" }, source.kind),
    h("td", null, source.event),
    h("td", { class: "acts" }, h("button", {
        type: "button", "aria-label": `Provoke ${source.event} at ${source.name}`, onclick: () => provoke(device, source),
    }, "Provoke")));

function card(device) {
    const { switches } = device;
    const sources = device.sources ?? [];
    const open = unfolded.has(device.guid);
    const check = (name, label, explain) => h("label", { title: explain },
        h("input", {
            type: "checkbox", class: "switch", role: "switch", checked: switches[name],
            id: `${name}-${device.guid}`, onchange: event => flip(device, { [name]: event.target.checked }),
        }), label);
    return h("div", { class: "card", "data-guid": device.guid },
        h("div", { class: "line" },
            h("span", { class: "dot", role: "img", "data-online": String(device.online), "aria-label": device.online ? "online" : "offline", title: device.online ? "online" : "offline" }),
            h("span", { class: "name" }, device.name),
            h("span", { class: "guid mono" }, device.guid),
            h("span", { class: "kind" }, device.kind),
            check("offline", "offline", "Out of the platform's reach"),
            check("refusing", "refusing", "Answers, and does nothing"),
            h("label", { class: "slow", title: "Takes so much longer for everything" }, "slow by",
                h("input", {
                    type: "number", min: 0, max: 600000, step: 100, value: switches.slowMs ?? 0, id: `slow-${device.guid}`,
                    "aria-label": `Delay of ${device.name} in milliseconds`,
                    onchange: event => event.target.reportValidity() && flip(device, { slowMs: Number(event.target.value) }),
                }), "ms"),
            h("button", {
                type: "button", "aria-expanded": String(open), disabled: sources.length === 0, id: `alarms-${device.guid}`,
                onclick: () => {
                    unfolded.delete(device.guid) || unfolded.add(device.guid);
                    draw();
                },
            }, "Alarm…")),
        open ? h("div", { class: "sources" }, h("table", null, sources.map(each => sourceRow(device, each)))) : null);
}

function draw() {
    const focused = document.activeElement?.id;
    $("device-list").replaceChildren(...(devices.length > 0 ? devices.map(card) : [h("p", { class: "blank" }, "There are no devices.")]));
    if (focused && $("device-list").querySelector(`[id="${CSS.escape(focused)}"]`)) {
        $(focused).focus();
    }
}

async function load() {
    const found = await attempt(() => get("devices"));
    // While somebody types, the field stays.
    const typing = document.activeElement?.matches("#device-list input[type=number]");
    const text = JSON.stringify(found);
    if (found && text !== drawn && !typing) {
        devices = found;
        drawn = text;
        draw();
    }
}

export const changed = throttled(500, () => {
    if (!$("view-devices").hidden) {
        load();
    }
});

export async function show(guid) {
    if (guid !== "") {
        unfolded.add(guid);
    }
    drawn = "";
    await load();
    if (guid !== "") {
        document.querySelector(`[data-guid="${CSS.escape(guid)}"]`)?.scrollIntoView({ block: "center" });
    }
}
