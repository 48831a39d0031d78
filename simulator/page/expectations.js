// The view of the expectations.

import { get, remove } from "./api.js";
import { $, attempt, confirmed, h, many, throttled } from "./dom.js";

function wanted(each) {
    if (each.atLeast === each.atMost) {
        return each.atLeast === 0 ? "never" : many(each.atLeast, "time");
    }
    return [each.atLeast > 0 && `at least ${each.atLeast}`, each.atMost !== undefined && `at most ${each.atMost}`]
        .filter(Boolean).join(", ");
}

const row = each => h("tr", null,
    h("td", null, h("span", { class: `verdict ${each.met ? "ok" : "error"}` }, each.met ? "met" : "not met")),
    h("td", { class: "mono" }, [each.function, each.path].filter(Boolean).join("  ")),
    h("td", { class: "mono" }, each.body === undefined ? "" : JSON.stringify(each.body)),
    h("td", null, wanted(each)),
    h("td", { class: "number" }, String(each.seen ?? 0)),
    h("td", null, each.nearest ? [h("a", { href: `#exchange=${each.nearest.id}` }, `Exchange ${each.nearest.id}`), ` ${each.nearest.why ?? ""}`] : ""));

function draw(found) {
    const list = found.expectations ?? [];
    $("expectations-verdict").className = list.length === 0 ? "" : `verdict ${found.met ? "ok" : "error"}`;
    $("expectations-verdict").textContent = list.length === 0 ? "" : found.met ? "all met" : `${list.filter(each => !each.met).length} not met`;
    $("expectations-clear").disabled = list.length === 0;
    $("expectation-list").replaceChildren(list.length === 0
        ? h("p", { class: "blank" }, "None. A test posts them to ", h("code", null, `${location.origin}${location.pathname}expectations`), ".")
        : h("div", { class: "table" }, h("table", null,
            h("thead", null, h("tr", null, ["", "What", "With", "How often"].map(text => h("th", null, text)),
                h("th", { class: "number" }, "Seen"), h("th", null, "Nearest"))),
            h("tbody", null, list.map(row)))));
}

async function load() {
    if (!$("view-expectations").hidden) {
        const found = await attempt(() => get("expectations"));
        if (found) {
            draw(found);
        }
    }
}

export const changed = throttled(700, load);
export const show = load;

export function start() {
    $("expectations-clear").addEventListener("click", async () => {
        if (await confirmed("Remove all expectations?", "A test that asks for them at its end would find none.", "Remove")) {
            await attempt(() => remove("expectations"));
            await load();
        }
    });
}
