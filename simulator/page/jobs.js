// The view of the jobs.

import { get } from "./api.js";
import { $, attempt, h, throttled } from "./dom.js";

let timer = 0;

const isRunning = job => !["done", "failed", "stopped"].includes(job.state);
const kinds = { done: "ok", failed: "error", stopped: "refused" };

function draw(jobs) {
    const running = jobs.filter(isRunning).length;
    $("jobs-badge").hidden = running === 0;
    $("jobs-badge").textContent = running;
    if ($("view-jobs").hidden) {
        return running;
    }
    $("job-list").replaceChildren(jobs.length === 0
        ? h("p", { class: "blank" }, "No job yet. A download of an access group makes one, for example.")
        : h("div", { class: "table" }, h("table", null,
            h("thead", null, h("tr", null, ["Kind", "Device", "State", "Progress", "", "Job"].map(text => h("th", null, text)))),
            h("tbody", null, jobs.map(job => h("tr", null,
                h("td", null, job.kind),
                h("td", null, job.device ? h("a", { href: `#devices=${job.device}`, class: "mono" }, job.device) : ""),
                h("td", null, h("span", { class: kinds[job.state] ?? "" }, job.state)),
                h("td", { class: "wide" }, h("progress", { max: 100, value: job.percent ?? 0, "aria-label": `Progress of ${job.kind}` })),
                h("td", { class: "number" }, `${job.done ?? 0} of ${job.total ?? 0} · ${Math.floor(job.percent ?? 0)} %`),
                h("td", null, h("span", { class: "mono" }, job.job))))))));
    return running;
}

async function load() {
    clearTimeout(timer);
    const jobs = await attempt(() => get("jobs"));
    // Jobs go by the platform's clock: nobody tells when one has moved.
    if (jobs && draw(jobs) > 0) {
        timer = setTimeout(load, $("view-jobs").hidden ? 3000 : 700);
    }
}

export const changed = throttled(200, load);
export const show = load;
