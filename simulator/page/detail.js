// One exchange in full.

import { get } from "./api.js";
import { copy, dayAndTime, h, icon, size, took } from "./dom.js";
import { parse } from "./json.js";
import { tree } from "./tree.js";

/** Which sections stand open; as the user left them. */
const open = { request: true, answer: true, device: true, headers: false, lines: false };

function section(name, title, note, actions, body) {
    const box = h("details", { open: open[name] },
        h("summary", null, title, h("span", { class: "note" }, note), h("span", { class: "grow" }), actions),
        h("div", { class: "body" }, body));
    box.addEventListener("toggle", () => open[name] = box.open);
    return box;
}

/** A button in a summary, which must not fold it. */
const small = (text, run) => h("button", {
    type: "button",
    onclick: event => {
        event.preventDefault();
        run(event.currentTarget);
    },
}, text);

function code(text, what) {
    return h("div", { class: "code-box" },
        h("pre", { class: "code", tabindex: 0 }, text),
        h("button", { type: "button", class: "quiet", "aria-label": `Copy ${what}`, title: "Copy", onclick: () => copy(text, what) }, icon("copy")));
}

/** The first bytes of a body that is no text, sixteen a line. */
function bytes(base64) {
    const raw = atob(base64);
    const rows = [];
    for (let at = 0; at < raw.length; at += 16) {
        const row = raw.slice(at, at + 16);
        const digits = [...row].map(c => c.charCodeAt(0).toString(16).padStart(2, "0")).join(" ");
        rows.push(`${at.toString(16).padStart(4, "0")}  ${digits.padEnd(47)}  ${row.replace(/[^\x20-\x7e]/g, ".")}`);
    }
    return rows.join("\n");
}

function parsed(text) {
    try {
        return parse(text);
    } catch {
        return null;
    }
}

function body(name, title, content) {
    if (!content || (content.bytes === 0 && !content.text)) {
        return section(name, title, "no body", null, null);
    }
    const note = [content.type, size(content.bytes), content.cut && "cut", content.gone && "no longer kept"]
        .filter(Boolean).join(" · ");
    if (content.text === undefined) {
        return section(name, title, note, null, content.base64 ? h("pre", { class: "code" }, bytes(content.base64)) : null);
    }
    const node = parsed(content.text);
    const copying = small("Copy", () => copy(content.text, title));
    if (node === null) {
        return section(name, title, note, copying, h("pre", { class: "code" }, content.text));
    }
    const asTree = tree(node, title);
    const asText = h("pre", { class: "code", hidden: true }, content.text);
    const folding = [small("Unfold", () => asTree.unfold()), small("Fold", () => asTree.fold())];
    const both = small("As sent", button => {
        asTree.hidden = !asTree.hidden;
        asText.hidden = !asText.hidden;
        button.textContent = asTree.hidden ? "Tree" : "As sent";
        folding.forEach(each => each.hidden = asTree.hidden);
    });
    return section(name, title, note, [...folding, both, copying], [asTree, asText]);
}

const headerList = headers => h("dl", { class: "headers" },
    Object.entries(headers ?? {}).map(([name, value]) => [h("dt", null, name), h("dd", null, value)]));

function device(content) {
    if (!content) {
        return null;
    }
    const part = (title, value) => {
        if (value === undefined || value === null || value === "") {
            return null;
        }
        const node = parsed(typeof value === "string" ? value : JSON.stringify(value));
        return [h("h3", null, title), node?.entries ? tree(node, title) : h("pre", { class: "code" }, value)];
    };
    // Conditions are a number most times.
    const plain = typeof content.condition !== "object" && content.condition !== "";
    const note = [content.command === undefined ? null : `command ${content.command}`,
                  content.condition === undefined || !plain ? null : `condition ${content.condition}`].filter(Boolean).join(" · ");
    return section("device", "Text for the device", note,
        content.request === undefined ? null : small("Copy", () => copy(
            typeof content.request === "string" ? content.request : JSON.stringify(content.request, null, 2), "Text for the device")),
        [part("Condition", plain ? null : content.condition), part("Sent", content.request), part("Answered", content.answer), part("Status", content.status)]
            .filter(Boolean));
}

export const outcomeText = each => each.outcome === "fault" && each.fault ? `fault: ${each.fault}` : each.outcome ?? "";

/**
 * @param summary  an exchange, in full or as the list knows it; what is not there yet is left out
 * @param hooks    {close(), secrets(shown), fault(function)}, secrets: whether they are shown
 */
export function fill(box, summary, hooks, secrets) {
    const names = summary.functions ?? [];
    const address = new URL(`#exchange=${summary.id}`, location.href).href;
    const lines = summary.lines ?? {};
    const button = (name, label, run, rest) => h("button", { type: "button", onclick: run, ...rest }, name && icon(name), label);
    const copyLine = (label, key, what) => lines[key] ? button("copy", label, () => copy(lines[key], what), { "data-line": key }) : null;
    const scroll = box.scrollTop;
    box.setAttribute("aria-label", `Exchange ${summary.id}`);
    box.replaceChildren(...[
        h("div", { class: "detail-head" },
            h("div", { class: "line" },
                h("h1", null, names.length > 0 ? names.join(", ") : `${summary.verb} ${summary.path}`),
                h("button", { type: "button", class: "quiet", "aria-label": "Close", title: "Close (Esc)", onclick: hooks.close }, icon("close"))),
            h("div", { class: "where mono" }, `${summary.verb} ${summary.path}${summary.query ? `?${summary.query}` : ""}`),
            h("div", { class: "facts" },
                h("span", { class: summary.outcome }, `${summary.code ?? ""} ${outcomeText(summary)}`.trim()),
                h("span", null, summary.msg ?? ""),
                h("span", { class: "note" }, summary.status ? `HTTP ${summary.status}` : "no answer"),
                h("span", { class: "note" }, took(summary.ms)),
                h("span", { class: "note" }, `${size(summary.requestBytes)} → ${size(summary.answerBytes)}`),
                h("span", { class: "note" }, dayAndTime(summary.timeMs)),
                h("span", { class: "note" }, [summary.wall ? "video wall" : summary.module, summary.method === undefined ? null : `method ${summary.method}`].filter(Boolean).join(" · "))),
            h("div", { class: "acts" },
                button("link", "Link", () => copy(address, "Link")),
                copyLine("curl", "curl", "curl line"),
                copyLine("nexwire call", "call", "Call line"),
                copyLine("C++", "cpp", "C++ call"),
                button("eye", secrets ? "Hide secrets" : "Show secrets", () => hooks.secrets(!secrets),
                    { "aria-pressed": String(secrets), id: "secrets", title: "Passwords, tokens, card numbers, keys (s)" }),
                names.length > 0 ? button(null, "Add a fault…", () => hooks.fault(names[0])) : null)),
        ...(summary.requestHeaders === undefined ? [] : [
            body("request", "Request", summary.request),
            body("answer", "Answer", summary.answer),
            device(summary.device),
            section("headers", "Headers", "", null,
                [h("h3", null, "Request"), headerList(summary.requestHeaders), h("h3", null, "Answer"), headerList(summary.answerHeaders)]),
            Object.keys(lines).length === 0 ? null : section("lines", "As a line", "", null, [
                lines.curl && [h("h3", null, "curl"), code(lines.curl, "curl line")],
                lines.call && [h("h3", null, "Command line"), code(lines.call, "Call line")],
                lines.cpp && [h("h3", null, "C++"), code(lines.cpp, "C++ call")],
            ].flat().filter(Boolean)),
        ]),
    ].filter(Boolean));
    box.scrollTop = scroll;
}

export const load = (id, secrets, signal) => get(`exchanges/${id}${secrets ? "?secrets=1" : ""}`, signal);
