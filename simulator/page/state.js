// The view of the state: collections, their documents, one of them as text to edit.

import { get, getText, path, post, put, remove } from "./api.js";
import { $, attempt, confirmed, debounced, h, many, say, throttled } from "./dom.js";
import { parse, print } from "./json.js";
import { Rows } from "./rows.js";

const kPage = 100;

let collections = [];
let collection = "";
let total = 0;
let pages = new Map(); ///< By number: null while it is on its way, then its documents.
let at = -1;           ///< Chosen row.
let key = null;        ///< Of the open document; null: none, "": a new one.
let saved = "";        ///< Its text as it was loaded.
let rows;
let went;

const dirty = () => key !== null && $("editor-text").value !== saved;
const shows = pane => $("state-columns").dataset.pane = pane;
const isShown = () => !$("view-state").hidden;

/** True when nothing would be lost, or may be. */
const mayLeave = async () =>
    !dirty() || confirmed("Discard the changes?", `"${key || "The new document"}" was changed and not saved.`, "Discard");

// ---- Collections ----

function drawCollections() {
    const wanted = $("collection-filter").value.trim().toLowerCase();
    const modules = new Map();
    for (const each of collections) {
        if (`${each.module} ${each.collection}`.toLowerCase().includes(wanted)) {
            modules.set(each.module, [...(modules.get(each.module) ?? []), each]);
        }
    }
    const box = $("collections");
    const scroll = box.scrollTop;
    // By module; what belongs to none comes last.
    const inOrder = [...modules].sort(([a], [b]) => (a === "") - (b === "") || a.localeCompare(b));
    box.replaceChildren(...inOrder.flatMap(([module, list]) => [
        h("div", { class: "group-name", role: "presentation" }, module || "of the platform itself"),
        ...list.map(each => {
            const row = h("div", {
                class: "row", role: "option", id: `c-${each.collection}`, "aria-selected": String(each.collection === collection),
                onclick: () => openCollection(each.collection),
            }, h("span", null, each.collection), h("span", { class: "count" }, each.count.toLocaleString("en")));
            row.collection = each.collection;
            return row;
        }),
    ]));
    box.scrollTop = scroll;
    const active = box.querySelector("[aria-selected=true]");
    active ? box.setAttribute("aria-activedescendant", active.id) : box.removeAttribute("aria-activedescendant");
}

async function loadCollections() {
    collections = await attempt(() => get("state")) ?? collections;
    drawCollections();
}

async function openCollection(name, document) {
    if (name !== collection) {
        if (!await mayLeave()) {
            return;
        }
        collection = name;
        $("document-filter").value = "";
        $("document-new").disabled = false;
        closeDocument();
        reload();
    }
    shows("documents");
    drawCollections();
    if (document === undefined) {
        went("state", collection);
    } else {
        await openDocument(document);
    }
}

// ---- Documents ----

function reload() {
    pages = new Map();
    total = 0;
    at = -1;
    load(0, true);
}

/** @param fresh  what is shown stays until the new rows are there */
async function load(page, fresh = false) {
    const here = pages;
    here.set(page, here.get(page) ?? null);
    const text = $("document-filter").value.trim();
    const wanted = `state/${path(collection)}?offset=${page * kPage}&limit=${kPage}&text=${encodeURIComponent(text)}`;
    const found = await attempt(() => get(wanted));
    if (!found || here !== pages) {
        return;
    }
    here.set(page, found.documents);
    total = found.total;
    $("document-count").textContent = `${many(total, "document")}${text === "" ? "" : " with this text"}`;
    $("documents-empty").hidden = total > 0;
    $("documents-empty").textContent = text === "" ? "Nothing in here." : "No document has this text.";
    if (fresh) {
        rows.box.scrollTop = 0;
    }
    rows.refresh();
}

/** What a person would call a document: its first member that is a name. */
const nameOf = document => Object.entries(document ?? {})
    .find(([member, value]) => /^(name|title|.*Name)$/.test(member) && typeof value === "string" && value !== "")?.[1] ?? "";

const source = {
    count: () => total,
    item: index => pages.get(Math.floor(index / kPage))?.[index % kPage],
    chosen: each => each.key === key,
    make: () => h("div", { role: "option" }, h("span"), h("span"), h("span")),
    fill(row, each) {
        row.children[0].textContent = each?.key ?? "…";
        row.children[1].textContent = nameOf(each?.document);
        row.children[2].textContent = each ? JSON.stringify(each.document).slice(0, 300) : "";
    },
    choose: index => at = index,
    open: index => openAt(index),
    seen(first, last) {
        for (let page = Math.floor(first / kPage); page <= Math.floor(Math.max(first, last - 1) / kPage); ++page) {
            if (!pages.has(page) && total > 0) {
                load(page);
            }
        }
    },
};

async function openAt(index) {
    const each = source.item(index);
    if (each && (each.key === key || await mayLeave())) {
        at = index;
        rows.show(index);
        await openDocument(each.key, true);
    }
}

// ---- One document ----

function edit(newKey, text) {
    key = newKey;
    saved = text;
    $("editor").classList.remove("none");
    $("editor-empty").hidden = true;
    $("editor-key").value = newKey;
    $("editor-key").readOnly = newKey !== "";
    $("editor-delete").hidden = newKey === "";
    $("editor-text").value = text;
    $("editor-text").scrollTop = 0;
    $("editor-changed").hidden = true;
    check();
    rows.refresh();
}

function closeDocument() {
    key = null;
    saved = "";
    $("editor").classList.add("none");
    $("editor-empty").hidden = false;
    $("editor-text").value = "";
    rows.refresh();
}

// Through the text: its numbers keep their digits.
const fetchDocument = async name => print(parse(await getText(`state/${path(collection, name)}`)));

async function openDocument(name, leaving = false) {
    if (!leaving && name !== key && !await mayLeave()) {
        return;
    }
    const text = await attempt(() => fetchDocument(name));
    if (text !== undefined) {
        edit(name, text);
        shows("editor");
        went("state", `${collection}/${name}`);
    }
}

function check() {
    const message = $("editor-message");
    let wrong = "";
    try {
        const node = parse($("editor-text").value);
        wrong = node.kind === "object" ? "" : "A document is an object: { … }";
    } catch (error) {
        wrong = error.message;
    }
    if (wrong === "" && key === "" && $("editor-key").value.trim() === "") {
        wrong = "The document needs a key";
    }
    message.textContent = wrong || (dirty() ? "Changed, not saved" : "Saved");
    message.classList.toggle("error", wrong !== "");
    $("editor-text").setAttribute("aria-invalid", wrong !== "");
    $("editor-save").disabled = wrong !== "" || (!dirty() && key !== "");
    $("editor-revert").disabled = !dirty();
    return wrong === "";
}

async function save() {
    if (key === null || !check()) {
        return;
    }
    const name = key || $("editor-key").value.trim();
    const text = $("editor-text").value;
    await attempt(async () => {
        await put(`state/${path(collection, name)}`, text);
        say("Saved");
        // As the platform has it now.
        edit(name, await fetchDocument(name));
        went("state", `${collection}/${name}`);
        await Promise.all([load(Math.max(0, Math.floor(at / kPage))), loadCollections()]);
    });
}

async function erase() {
    if (key && await confirmed("Delete the document?", `${collection} / ${key}`, "Delete")) {
        await attempt(async () => {
            await remove(`state/${path(collection, key)}`);
            say("Deleted");
            closeDocument();
            shows("documents");
            went("state", collection);
            reload();
            await loadCollections();
        });
    }
}

// ---- From outside ----

const touched = new Set();
const refresh = throttled(400, async () => {
    const mine = touched.has(collection) || touched.has("");
    touched.clear();
    if (!isShown()) {
        stale = true;
        return;
    }
    await loadCollections();
    if (!mine || collection === "") {
        return;
    }
    pages.forEach((documents, page) => load(page));
    if (key) {
        let text;
        try {
            text = await fetchDocument(key);
        } catch {
            text = undefined;
        }
        if (text === undefined || text === saved) {
            return;
        }
        if (dirty()) {
            $("editor-changed").hidden = false;
        } else {
            edit(key, text);
        }
    }
});
let stale = true;

/** Documents of a collection changed; "" stands for all. */
export function changed(name) {
    touched.add(name ?? "");
    refresh();
}

/** @param rest  "", a collection, or collection/key */
export async function show(rest) {
    if (stale) {
        stale = false;
        await loadCollections();
    }
    const cut = rest.indexOf("/");
    const name = cut < 0 ? rest : rest.slice(0, cut);
    if (name !== "" && collections.some(each => each.collection === name)) {
        await openCollection(name, cut < 0 ? undefined : rest.slice(cut + 1));
    } else if (collection !== "") {
        went("state", key ? `${collection}/${key}` : collection);
    }
}

export function focus() {
    $(collection === "" ? "collections" : "documents").focus();
}

export async function reset() {
    if (await confirmed("Reset the platform?", "Every document goes, and the building is as on its first day. Faults and expectations stay.", "Reset")) {
        await attempt(async () => {
            await post("reset");
            say("The platform is as on its first day.");
            if (key !== null) {
                closeDocument();
            }
            changed("");
            if (collection !== "") {
                reload();
            }
        });
    }
}

export function pressed(event) {
    const focused = document.activeElement;
    if (event.key === "/") {
        $(focused?.closest(".documents, .editor") ? "document-filter" : "collection-filter").focus();
        return true;
    }
    if (event.key === "Escape") {
        if (focused === $("editor-text") || focused === $("document-filter")) {
            $("documents").focus();
        } else if (focused === $("documents") || focused === $("collection-filter")) {
            $("collections").focus();
            shows("collections");
        }
        return true;
    }
    if (focused?.closest("button")) {
        return false;
    }
    if (focused === $("collections")) {
        const all = [...focused.querySelectorAll(".row")];
        const index = all.findIndex(each => each.collection === collection);
        const step = { ArrowDown: 1, j: 1, ArrowUp: -1, k: -1 }[event.key];
        const to = step ? Math.min(all.length - 1, Math.max(0, index + step)) : { Home: 0, End: all.length - 1 }[event.key];
        if (to !== undefined && all[to]) {
            openCollection(all[to].collection).then(() => $(`c-${collection}`)?.scrollIntoView({ block: "nearest" }));
            return true;
        }
        if (event.key === "Enter" && collection !== "") {
            $("documents").focus();
            return true;
        }
        return false;
    }
    if (event.key === "Enter" && key !== null && focused === $("documents")) {
        $("editor-text").focus();
        return true;
    }
    const to = rows.target(event.key, at);
    if (to === undefined) {
        return false;
    }
    openAt(to);
    return true;
}

export function start(on) {
    went = on.went;
    rows = new Rows($("documents"), source);
    $("editor").classList.add("none");
    $("collection-filter").addEventListener("input", drawCollections);
    $("document-filter").addEventListener("input", debounced(200, () => collection !== "" && reload()));
    $("document-new").addEventListener("click", async () => {
        if (await mayLeave()) {
            edit("", "{\n  \n}");
            shows("editor");
            $("editor-key").focus();
        }
    });
    $("editor-text").addEventListener("input", check);
    $("editor-key").addEventListener("input", check);
    $("editor-revert").addEventListener("click", () => {
        $("editor-text").value = saved;
        check();
    });
    $("editor-load").addEventListener("click", () => attempt(async () => edit(key, await fetchDocument(key))));
    $("editor-delete").addEventListener("click", erase);
    $("editor").addEventListener("submit", event => {
        event.preventDefault();
        save();
    });
    $("editor").addEventListener("keydown", event => {
        if (event.key === "s" && (event.ctrlKey || event.metaKey)) {
            event.preventDefault();
            save();
        }
    });
    $("reset").addEventListener("click", reset);
    document.querySelectorAll("[data-back]").forEach(button =>
        button.addEventListener("click", () => shows(button.dataset.back)));
    addEventListener("beforeunload", event => {
        if (dirty()) {
            event.preventDefault();
        }
    });
}
