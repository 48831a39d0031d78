// Elements, formats, clipboard, messages.

export const $ = id => document.getElementById(id);

/** h("a", {class: "x", href: "#", onclick: f, "aria-label": "y", value: 1}, children...); children that are null stay away. */
export function h(tag, properties, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(properties ?? {})) {
        if (value === null || value === undefined || value === false) {
            continue;
        }
        if (name.startsWith("on")) {
            element.addEventListener(name.slice(2), value);
        } else if (name === "value" || name === "checked" || name === "text") {
            element[name === "text" ? "textContent" : name] = value;
        } else {
            element.setAttribute(name, value === true ? "" : value);
        }
    }
    element.append(...children.flat(Infinity).filter(child => child !== null && child !== undefined && child !== false));
    return element;
}

export function icon(name) {
    const svg = document.createElementNS("http://www.w3.org/2000/svg", "svg");
    const use = document.createElementNS("http://www.w3.org/2000/svg", "use");
    use.setAttribute("href", `#i-${name}`);
    svg.setAttribute("aria-hidden", "true");
    svg.append(use);
    return svg;
}

const pad = (number, digits = 2) => String(number).padStart(digits, "0");

export function clockTime(ms, withMs = true) {
    const at = new Date(ms);
    const text = `${pad(at.getHours())}:${pad(at.getMinutes())}:${pad(at.getSeconds())}`;
    return withMs ? `${text}.${pad(at.getMilliseconds(), 3)}` : text;
}

export function dayAndTime(ms, withMs = true) {
    const at = new Date(ms);
    return `${at.getFullYear()}-${pad(at.getMonth() + 1)}-${pad(at.getDate())} ${clockTime(ms, withMs)}`;
}

export function size(bytes) {
    if (bytes === undefined || bytes === null) {
        return "";
    }
    if (bytes < 1000) {
        return `${bytes} B`;
    }
    const [value, unit] = bytes < 1e6 ? [bytes / 1e3, "kB"] : [bytes / 1e6, "MB"];
    return `${value.toFixed(value < 100 ? 1 : 0)} ${unit}`;
}

export function took(ms) {
    return ms < 10 ? `${ms.toFixed(1)} ms` : ms < 10000 ? `${Math.round(ms)} ms` : `${(ms / 1000).toFixed(1)} s`;
}

export const many = (count, one, more = `${one}s`) => `${count.toLocaleString("en")} ${count === 1 ? one : more}`;

export function debounced(ms, run) {
    let timer = 0;
    return (...values) => {
        clearTimeout(timer);
        timer = setTimeout(run, ms, ...values);
    };
}

/** Like debounced, but calls that keep coming do not put it off: it runs at most once in `ms`. */
export function throttled(ms, run) {
    let timer = 0;
    return () => {
        timer ||= setTimeout(() => {
            timer = 0;
            run();
        }, ms);
    };
}

// ---- Messages ----

export function say(text, kind = "") {
    const toast = h("div", { class: kind, role: kind === "error" ? "alert" : null }, text);
    $("toasts").append(toast);
    while ($("toasts").childElementCount > 4) {
        $("toasts").firstChild.remove();
    }
    setTimeout(() => toast.remove(), kind === "error" ? 8000 : 2200);
}

/** Runs what talks to the platform; what goes wrong is said. */
export async function attempt(run) {
    try {
        return await run();
    } catch (error) {
        if (error.name !== "AbortError") {
            say(error.message, "error");
        }
        return undefined;
    }
}

export async function copy(text, what) {
    try {
        await navigator.clipboard.writeText(text);
    } catch {
        // Browsers keep their clipboard from pages that come over plain HTTP from another machine.
        const area = h("textarea", { value: text, "aria-hidden": "true" });
        (document.querySelector("dialog[open]") ?? document.body).append(area);
        const before = document.activeElement;
        area.select();
        const done = document.execCommand("copy");
        area.remove();
        before?.focus();
        if (!done) {
            say("The browser did not let the page copy.", "error");
            return;
        }
    }
    say(`${what} copied`);
}

export function confirmed(title, text, yes) {
    $("confirm-title").textContent = title;
    $("confirm-text").textContent = text;
    $("confirm-yes").textContent = yes;
    const dialog = $("confirm-dialog");
    dialog.returnValue = "";
    dialog.showModal();
    $("confirm-no").focus();
    return new Promise(resolve => {
        dialog.addEventListener("close", () => resolve(dialog.returnValue === "yes"), { once: true });
    });
}

export const isTyping = element => element instanceof Element && element.matches("input:not([type=checkbox]), textarea, select");
