// The frame: views and their addresses, keys, colours, the connection.

import { listen } from "./api.js";
import * as clock from "./clock.js";
import * as devices from "./devices.js";
import { $, isTyping } from "./dom.js";
import * as exchanges from "./exchanges.js";
import * as expectations from "./expectations.js";
import * as faults from "./faults.js";
import * as jobs from "./jobs.js";
import * as state from "./state.js";

const kViews = ["exchanges", "state", "devices", "jobs", "faults", "expectations"];
const modules = { exchanges, state, devices, jobs, faults, expectations };
let view = "";

// ---- Addresses: #view, #view=rest, #exchange=ID ----

function went(name, rest = "") {
    const hash = rest === "" ? `#${name}` : `#${name}=${String(rest).split("/").map(encodeURIComponent).join("/")}`;
    if (location.hash !== hash) {
        // No entry of its own: "back" leads to the view before, not through every row that was looked at.
        history.replaceState(null, "", hash);
    }
    document.querySelector(`nav a[data-view="${view}"]`).hash = hash;
}

function route() {
    const [name, ...parts] = location.hash.slice(1).split("=");
    const rest = decodeURIComponent(parts.join("="));
    const next = name === "exchange" ? "exchanges" : kViews.includes(name) ? name : "exchanges";
    for (const each of kViews) {
        $(`view-${each}`).hidden = each !== next;
        const link = document.querySelector(`nav a[data-view="${each}"]`);
        each === next ? link.setAttribute("aria-current", "page") : link.removeAttribute("aria-current");
    }
    document.querySelector("nav a[aria-current]").scrollIntoView({ inline: "nearest", block: "nearest" });
    const moved = view !== next;
    view = next;
    document.title = `${next[0].toUpperCase()}${next.slice(1)} · nexwire workbench`;
    if (name === "exchange") {
        exchanges.open(Number(rest));
    } else {
        modules[next].show?.(rest);
    }
    if (moved) {
        modules[next].focus?.();
    }
}

// ---- Keys ----

function pressed(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || document.querySelector("dialog[open]")) {
        return;
    }
    if (isTyping(document.activeElement) && event.key !== "Escape") {
        return;
    }
    if (event.key === "Escape" && $("clock-panel").matches(":popover-open")) {
        return;
    }
    const number = Number(event.key);
    if (number >= 1 && number <= kViews.length) {
        document.querySelector(`nav a[data-view="${kViews[number - 1]}"]`).click();
    } else if (event.key === "?") {
        $("help-dialog").showModal();
    } else if (!modules[view].pressed?.(event)) {
        return;
    }
    event.preventDefault();
}

// ---- Colours ----

const kThemes = { auto: "as the system", light: "light", dark: "dark" };

function showTheme(theme) {
    document.documentElement.dataset.theme = theme;
    localStorage.setItem("theme", theme);
    $("theme-button").setAttribute("aria-label", `Colours: ${kThemes[theme]}`);
    $("theme-button").title = `Colours: ${kThemes[theme]}`;
}

function nextTheme() {
    const names = Object.keys(kThemes);
    showTheme(names[(names.indexOf(document.documentElement.dataset.theme) + 1) % names.length]);
}

// ---- All together ----

const kLinks = { live: "live", away: "platform away" };

if (location.search !== "") {
    // A token has become a cookie by now; it is not to stand in the history, nor in links that are passed on.
    history.replaceState(null, "", location.pathname + location.hash);
}
showTheme(document.documentElement.dataset.theme);
exchanges.start({
    went: (name, rest) => view === "exchanges" && went(name, rest),
    fault: name => faults.edit({ function: name }),
});
state.start({ went: (name, rest) => view === "state" && went(name, rest) });
faults.start();
expectations.start();
clock.start(jobs.changed);
addEventListener("hashchange", route);
addEventListener("keydown", pressed);
$("theme-button").addEventListener("click", nextTheme);
$("help-button").addEventListener("click", () => $("help-dialog").showModal());
route();

function refreshAll() {
    clock.load();
    state.changed("");
    [jobs, devices, faults, expectations].forEach(each => each.changed());
}

listen({
    async restarted(health) {
        $("help-about").textContent = `nexwire ${health.version} · ${health.database || "state in memory"} · ${location.host}`;
        await exchanges.restarted();
        refreshAll();
    },
    async catchUp() {
        await exchanges.catchUp();
        refreshAll();
    },
    after: exchanges.after,
    exchange(batch) {
        exchanges.came(batch);
        expectations.changed();
        if (batch.some(each => each.outcome === "fault")) {
            faults.changed();
        }
    },
    lost: exchanges.lost,
    state(collection) {
        state.changed(collection);
        devices.changed();
    },
    jobs: jobs.changed,
    link(now) {
        $("link-state").dataset.state = now;
        $("link-state").lastChild.textContent = kLinks[now];
    },
});
