// The platform's clock, and how to push it on.

import { get, post } from "./api.js";
import { $, attempt, clockTime, dayAndTime, say } from "./dom.js";

let nowMs = 0;
let scale = 1;
let readAt = 0;

function draw() {
    if (readAt === 0) {
        return;
    }
    const now = nowMs + (performance.now() - readAt) * scale;
    $("clock-text").textContent = clockTime(now, false) + (scale === 1 ? "" : ` ×${+scale.toFixed(2)}`);
    $("clock-now").textContent = dayAndTime(now, false);
}

export async function load() {
    const found = await attempt(() => get("clock"));
    if (found) {
        ({ nowMs, scale } = found);
        readAt = performance.now();
        if (document.activeElement !== $("clock-scale")) {
            $("clock-scale").value = scale;
        }
        draw();
    }
}

/** @param moved  called after the clock was pushed on */
export function start(moved) {
    const change = (body, text) => attempt(async () => {
        await post("clock", body);
        say(text);
        await load();
        moved();
    });
    $("clock-steps").addEventListener("click", event => {
        const ms = Number(event.target.dataset.ms);
        if (ms) {
            change({ advanceMs: ms }, `${event.target.textContent} on`);
        }
    });
    $("clock-form").addEventListener("submit", event => {
        event.preventDefault();
        change({ scale: Number($("clock-scale").value) }, `Speed ${$("clock-scale").value}`);
    });
    $("clock-panel").addEventListener("toggle", event => event.newState === "open" && load());
    setInterval(draw, 1000);
}
