// JSON as a tree that folds. Branches are made when they are opened, long lists in parts.

import { copy, h, icon } from "./dom.js";
import { parse, print } from "./json.js";

const kPart = 100;        ///< Elements of a long list in one branch.
const kOpenAtOnce = 1500; ///< Lines that "unfold" makes.
const kLongText = 2000;   ///< Characters of a text that are shown; pictures travel as texts. It is copied whole.

function gist(node) {
    if (node.kind === "object") {
        const keys = node.entries.slice(0, 4).map(([key]) => key).join(", ");
        return node.entries.length === 0 ? "{}" : `{ ${keys}${node.entries.length > 4 ? ", …" : ""} }`;
    }
    return node.entries.length === 0 ? "[]" : `[ ${node.entries.length} ]`;
}

/** What a branch holds; a text that is JSON itself holds that. */
function inside(node) {
    if (node.kind === "text" && /^\s*[{[]/.test(node.value)) {
        try {
            node.inner ??= parse(node.value);
            return node.inner.entries;
        } catch {
            return [];
        }
    }
    const entries = node.entries ?? [];
    if (entries.length <= kPart * 1.5 || node.part) {
        return entries;
    }
    const parts = [];
    for (let from = 0; from < entries.length; from += kPart) {
        const slice = entries.slice(from, from + kPart);
        parts.push([`${from} … ${from + slice.length - 1}`, { kind: "list", entries: slice, part: true }]);
    }
    return parts;
}

const shortened = text =>
    text.length <= kLongText ? text : `${text.slice(0, kLongText)}… (${text.length.toLocaleString("en")} characters)`;

const lines = node => 1 + (node.entries ?? []).reduce((sum, [, child]) => sum + lines(child), 0);

function line(key, node) {
    const children = inside(node);
    const name = key === null ? null : h("span", { class: "key", title: String(key) }, String(key));
    const shown = node.entries && !node.inner ? h("span", { class: "gist" }, gist(node))
                                              : h("span", { class: node.kind }, shortened(node.text));
    const button = h("button", { type: "button", tabindex: -1, "aria-label": "Copy this value", title: "Copy" }, icon("copy"));
    const item = h("li", { role: "treeitem", tabindex: -1, "aria-expanded": children.length > 0 ? "false" : null },
        h("div", { class: children.length > 0 ? "leaf fold" : "leaf" }, name, shown, button));
    item.node = node;
    item.children_ = children;
    return item;
}

function setOpen(item, open) {
    if (!item.hasAttribute("aria-expanded") || (item.getAttribute("aria-expanded") === "true") === open) {
        return;
    }
    item.setAttribute("aria-expanded", open);
    const group = item.querySelector(":scope > ul");
    if (open && group === null) {
        item.append(h("ul", { role: "group" }, item.children_.map(([key, child]) => line(key, child))));
    } else if (group !== null) {
        group.hidden = !open;
    }
}

/** Opens level after level while there is room. */
function unfold(root, room, deep = Infinity) {
    let level = [root];
    for (let depth = 0; level.length > 0 && depth < deep; ++depth) {
        const next = [];
        for (const item of level) {
            room -= item.children_.length;
            if (room < 0) {
                return;
            }
            // Texts that are JSON themselves are opened by hand.
            if (item.node.kind !== "text") {
                setOpen(item, true);
                next.push(...item.querySelectorAll(":scope > ul > li"));
            }
        }
        level = next;
    }
}

/** The tree of a parsed text; `label` names it for screen readers. */
export function tree(node, label) {
    const root = line(null, node);
    root.tabIndex = 0;
    const box = h("ul", { class: "tree", role: "tree", "aria-label": label }, root);
    unfold(root, kOpenAtOnce, lines(node) <= 150 ? Infinity : 2);

    const move = to => {
        if (to) {
            box.querySelector('[tabindex="0"]')?.setAttribute("tabindex", "-1");
            to.tabIndex = 0;
            to.focus();
        }
    };
    const visible = () => [...box.querySelectorAll("li")].filter(item => item.offsetParent !== null);
    box.addEventListener("click", event => {
        const item = event.target.closest("li");
        if (event.target.closest("button")) {
            copy(item.node.kind === "text" ? item.node.value : print(item.node), "Value");
        } else if (item && !getSelection().toString()) {
            setOpen(item, item.getAttribute("aria-expanded") !== "true");
            move(item);
        }
    });
    box.addEventListener("keydown", event => {
        const item = event.target.closest("li");
        if (!item || event.ctrlKey || event.metaKey || event.altKey) {
            return;
        }
        const open = item.getAttribute("aria-expanded");
        const all = ["ArrowDown", "ArrowUp", "Home", "End"].includes(event.key) ? visible() : [];
        switch (event.key) {
        case "ArrowRight":
            open === "false" ? setOpen(item, true) : move(item.querySelector("li"));
            break;
        case "ArrowLeft":
            open === "true" ? setOpen(item, false) : move(item.parentElement.closest("li"));
            break;
        case "ArrowDown": move(all[all.indexOf(item) + 1]); break;
        case "ArrowUp": move(all[all.indexOf(item) - 1]); break;
        case "Home": move(all[0]); break;
        case "End": move(all.at(-1)); break;
        case "Enter":
        case " ": setOpen(item, open !== "true"); break;
        case "c": copy(item.node.kind === "text" ? item.node.value : print(item.node), "Value"); break;
        default: return;
        }
        event.preventDefault();
        event.stopPropagation();
    });
    box.unfold = () => unfold(root, kOpenAtOnce);
    box.fold = () => root.querySelectorAll("li").forEach(item => setOpen(item, false));
    return box;
}
