// The view of the exchanges: filters, list, detail.

import { get, lines, remove } from "./api.js";
import * as detail from "./detail.js";
import { $, attempt, clockTime, debounced, h, isTyping, many, size, throttled, took } from "./dom.js";
import { kKept, Log } from "./log.js";
import { Rows } from "./rows.js";

const kFetchAfter = 60; ///< ms: whoever runs through the list does not load every exchange.
const kDrawAfter = 100; ///< ms: what comes is drawn together; what the user does is drawn at once.

const log = new Log();
const filter = { outcomes: new Set(), function: "", text: "" };
let rows;
let follow = true;
let chosen = 0;     ///< Identifier; 0: none.
let opened = 0;
let secrets = false;
let gone = 0;       ///< Rows that left the top since the last drawing.
let missed = 0;
let loading = null; ///< AbortController of the detail.
let searched = 0;   ///< The bodies up to this exchange were searched.
let went;           ///< (view, rest): the address changes.
let addFault;

// ---- The list ----

const columns = [
    each => clockTime(each.timeMs, false),
    each => each.verb,
    each => each.module || (each.wall ? "video wall" : ""),
    each => (each.functions ?? []).join(", ") || "–",
    each => each.path + (each.query ? `?${each.query}` : ""),
    each => each.code || (each.status ? String(each.status) : ""), // Without an envelope HTTP's word counts.
    each => each.outcome ?? "",
    each => took(each.ms),
    each => size(each.requestBytes),
    each => size(each.answerBytes),
];

const source = {
    count: () => log.shown.length,
    item: index => log.shown[index],
    chosen: each => each.id === chosen,
    make() {
        const row = h("div", { role: "row" }, columns.map(() => h("span", { role: "gridcell" }, "")));
        // Narrow lists leave the fraction of the second out.
        row.firstChild.append(h("span", { class: "fine" }));
        return row;
    },
    fill(row, each) {
        columns.forEach((text, index) => {
            const cell = row.children[index].firstChild;
            const shown = text(each);
            if (cell.data !== shown) {
                cell.data = shown;
            }
        });
        row.firstChild.lastChild.textContent = `.${String(each.timeMs % 1000).padStart(3, "0")}`;
        row.children[3].title = (each.functions ?? []).join(", ");
        row.children[4].title = each.path;
        row.children[6].className = each.outcome ?? "";
        row.children[6].title = each.msg ?? "";
    },
    choose: index => choose(index),
    open: index => open(log.shown[index].id),
    moved() {
        // Whoever scrolls away from the end wants to read, and back at the end to go on.
        setFollow(rows.atEnd);
    },
    drawing() {
        if (follow) {
            rows.toEnd();
        } else if (gone > 0) {
            rows.box.scrollTop -= gone * 24;
        }
        gone = 0;
    },
};

function setFollow(on) {
    if (follow !== on) {
        follow = on;
        $("follow").setAttribute("aria-pressed", on);
        rows.refresh();
    }
}

function setPaused(on) {
    gone += log.hold(on);
    $("pause").setAttribute("aria-pressed", on);
    tell();
    rows.refresh();
}

function choose(index) {
    chosen = log.shown[index].id;
    setFollow(index === log.shown.length - 1 && follow);
    rows.show(index);
    rows.draw();
    if (opened !== 0) {
        open(chosen);
    }
}

function tell() {
    const waiting = log.waiting?.length ?? 0;
    const all = many(log.all.length, "exchange");
    $("list-count").textContent = log.isFiltered ? `${log.shown.length.toLocaleString("en")} of ${all}` : all;
    $("pause").lastChild.textContent = log.waiting === null ? "Pause" : waiting > 0 ? `Go on · ${waiting.toLocaleString("en")}` : "Go on";
    $("list-empty").hidden = log.shown.length > 0;
    if (log.shown.length === 0) {
        $("list-empty").replaceChildren(...(log.all.length > 0 ? ["Nothing passes the filters."] :
            ["Nothing has come yet. Try  ", h("code", null, `nexwire call queryAccessGroups --server ${location.origin}`)]));
    }
    $("lost").hidden = missed === 0;
    $("lost").textContent = `${many(missed, "exchange")} went by too fast; load what is kept`;
}

const drawSoon = throttled(kDrawAfter, () => rows.refresh());

const recent = []; ///< [time, how many] of the last seconds.

function rate() {
    const now = performance.now();
    while (recent.length > 0 && recent[0][0] < now - 3000) {
        recent.shift();
    }
    const each = recent.reduce((sum, [, count]) => sum + count, 0) / 3;
    $("list-rate").textContent = each < 0.5 ? "" : `${Math.round(each).toLocaleString("en")}/s`;
    tell();
}

// ---- Filters ----

function applyFilter() {
    log.filter(filter);
    searched = 0;
    tell();
    const index = log.indexOf(chosen);
    if (!follow && index >= 0) {
        rows.refresh();
        requestAnimationFrame(() => rows.show(index));
    }
    rows.refresh();
    searchBodies();
}

/** The list has no bodies: the platform searches them. */
const searchBodies = debounced(250, async () => {
    const text = filter.text.trim();
    if (text === "" || log.lastId === searched) {
        return;
    }
    const upTo = log.lastId;
    const found = await attempt(() => lines(`exchanges?after=${searched}&text=${encodeURIComponent(text)}`));
    if (found && filter.text.trim() === text) {
        searched = upTo;
        log.found(found.map(each => each.id));
        tell();
        rows.refresh();
    }
});

// ---- Detail ----

export async function open(id) {
    if (opened === 0) {
        $("detail").scrollTop = 0;
    }
    opened = id;
    chosen = id;
    $("detail").hidden = false;
    $("splitter").hidden = false;
    $("split").classList.add("open");
    went("exchange", id);
    rows.refresh();
    loading?.abort();
    const summary = log.all.find(each => each.id === id);
    if (summary) {
        detail.fill($("detail"), summary, hooks, secrets);
    }
    loading = new AbortController();
    const { signal } = loading;
    await new Promise(resolve => setTimeout(resolve, summary ? kFetchAfter : 0));
    if (signal.aborted) {
        return;
    }
    try {
        const full = await detail.load(id, secrets, signal);
        if (!signal.aborted) {
            detail.fill($("detail"), full, hooks, secrets);
        }
    } catch (error) {
        if (signal.aborted) {
            return;
        }
        const text = error.status === 404 ? `Exchange ${id} is no longer kept.` : error.message;
        if (summary) {
            $("detail").append(h("p", { class: "blank" }, text));
        } else {
            $("detail").replaceChildren(h("p", { class: "blank" }, text, " ",
                h("button", { type: "button", class: "text", onclick: close }, "Close")));
        }
    }
}

export function close() {
    if (opened === 0) {
        return;
    }
    loading?.abort();
    opened = 0;
    $("detail").hidden = true;
    $("detail").replaceChildren();
    $("splitter").hidden = true;
    $("split").classList.remove("open");
    $("list").focus();
    went("exchanges");
}

const hooks = {
    close,
    secrets(shown) {
        secrets = shown;
        open(opened).then(() => $("secrets")?.focus());
    },
    fault: name => addFault(name),
};

function splitter() {
    const bar = $("splitter");
    const box = $("detail");
    const set = share => {
        const part = Math.min(80, Math.max(20, share));
        box.style.width = `${part}%`;
        bar.setAttribute("aria-valuenow", Math.round(part));
        localStorage.setItem("detail", part);
    };
    bar.setAttribute("aria-valuemin", 20);
    bar.setAttribute("aria-valuemax", 80);
    set(Number(localStorage.getItem("detail")) || 46);
    bar.addEventListener("pointerdown", event => bar.setPointerCapture(event.pointerId));
    bar.addEventListener("pointermove", event => {
        if (bar.hasPointerCapture(event.pointerId)) {
            const area = $("split").getBoundingClientRect();
            set((area.right - event.clientX) / area.width * 100);
        }
    });
    bar.addEventListener("keydown", event => {
        const step = { ArrowLeft: 3, ArrowRight: -3 }[event.key];
        if (step) {
            set(Number(bar.getAttribute("aria-valuenow")) + step);
            event.preventDefault();
        }
    });
}

// ---- From outside ----

export const after = () => log.lastId;

/** The platform began anew, or the page did. */
export async function restarted() {
    log.restart();
    missed = 0;
    searched = 0;
    log.add(await lines(`exchanges?limit=${kKept}`));
    tell();
    rows.refresh();
}

/** What came while nobody listened. */
export const catchUp = async () => came(await lines(`exchanges?after=${log.lastId}`));

export function came(batch) {
    recent.push([performance.now(), batch.length]);
    gone += log.add(batch);
    if (log.shown.length <= batch.length || recent.length === 1) {
        tell();
    }
    drawSoon();
}

export function lost(count) {
    missed += count;
    tell();
}

export function focus() {
    $("list").focus();
}

/** @param named  what to filter functions by, a pattern with stars as well; "": as it is */
export function show(named) {
    if (named !== "") {
        $("filter-function").value = named.replaceAll("*", "");
        filter.function = $("filter-function").value;
        applyFilter();
        went("exchanges");
    }
}

/** True when the key was for this view. */
export function pressed(event) {
    switch (event.key) {
    case "p":
        setPaused(log.waiting === null);
        return true;
    case "f":
        setFollow(!follow);
        return true;
    case "s":
        if (opened !== 0) {
            hooks.secrets(!secrets);
        }
        return true;
    case "/":
        $("filter-text").focus();
        $("filter-text").select();
        return true;
    case "Escape":
        if (document.activeElement?.closest("#view-exchanges .tools") && isTyping(document.activeElement)) {
            document.activeElement.blur();
            $("list").focus();
        } else {
            close();
        }
        return true;
    case "Enter":
        // Buttons and links have an Enter of their own.
        if (log.indexOf(chosen) >= 0 && (document.activeElement === $("list") || document.activeElement === document.body)) {
            open(chosen).then(() => $("detail").focus());
            return true;
        }
        return false;
    default: {
        // Within the details these keys scroll.
        const reading = $("detail").contains(document.activeElement) && !["j", "k"].includes(event.key);
        const from = chosen === 0 ? -1 : log.indexOf(chosen);
        const to = reading ? undefined
                           : rows.target(event.key, from < 0 && chosen !== 0 ? log.nearest(chosen) - 1 : from);
        if (to === undefined) {
            return false;
        }
        choose(to);
        return true;
    }
    }
}

/** @param on  {went(view, rest), fault(function)} */
export function start(on) {
    went = on.went;
    addFault = on.fault;
    rows = new Rows($("list"), source);
    splitter();
    setInterval(rate, 1000);

    const changed = debounced(30, applyFilter);
    $("filter-text").addEventListener("input", event => {
        filter.text = event.target.value;
        changed();
    });
    $("filter-function").addEventListener("input", event => {
        filter.function = event.target.value;
        changed();
    });
    $("filter-outcome").addEventListener("click", event => {
        const outcome = event.target.dataset.outcome;
        if (outcome) {
            if (!filter.outcomes.delete(outcome)) {
                filter.outcomes.add(outcome);
            }
            event.target.setAttribute("aria-pressed", filter.outcomes.has(outcome));
            applyFilter();
        }
    });
    setInterval(searchBodies, 1500);
    $("pause").addEventListener("click", () => setPaused(log.waiting === null));
    $("follow").addEventListener("click", () => setFollow(!follow));
    $("lost").addEventListener("click", () => attempt(restarted));
    $("forget").addEventListener("click", () => attempt(async () => {
        await remove("exchanges");
        const last = log.lastId;
        log.restart();
        log.lastId = last;
        chosen = 0;
        close();
        tell();
        rows.refresh();
    }));
    attempt(async () => {
        const names = new Set();
        for (const each of await get("functions")) {
            names.add(each.name);
        }
        $("functions").replaceChildren(...[...names].sort().map(name => h("option", { value: name })));
    });
}
