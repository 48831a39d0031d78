// mock-openapi.cjs FOLDER NEXWIRE [MODULE...]: starts the mock server in FOLDER/node_modules on the document that NEXWIRE
// writes, and calls all functions of the modules. Each must be done and its result filled: the server knows nothing but
// the document. Requests that do not fit the document are refused by the server.
"use strict";
const { execFileSync, spawn, spawnSync } = require("node:child_process");
const fs = require("node:fs");
const net = require("node:net");
const os = require("node:os");
const path = require("node:path");

const [folder, nexwire, ...named] = process.argv.slice(2);
const modules = named.length ? named : ["VideoWall", "Attendance"];
const mock = path.join(path.resolve(folder), "node_modules", "@stoplight", "prism-cli", "dist", "index.js");

const json = words => JSON.parse(execFileSync(nexwire, words, { maxBuffer: 1 << 28 }));
const document = json(["openapi"]);

// The body that the document shows for a function, by the function's name.
const bodies = new Map();
const answers = new Set();
for (const item of Object.values(document.paths)) {
    for (const operation of Object.values(item)) {
        for (const media of Object.values(operation.requestBody?.content ?? {}))
            for (const [id, example] of Object.entries(media.examples ?? {})) bodies.set(id, example.value);
        for (const media of Object.values(operation.responses?.["200"].content ?? {}))
            for (const id of Object.keys(media.examples ?? {})) answers.add(id);
    }
}
const idOf = name => name.replace(/::|[(,]/g, ".").replace(/[) ]/g, "");

// What of an example a structure has, and identifiers where it has none.
function keep(value, structure, structures) {
    if (Array.isArray(value)) return value.map(each => keep(each, structure, structures));
    if (!value || typeof value !== "object") return value;
    const known = structures.find(each => each.structure === structure);
    const kept = {};
    for (const member of known?.members ?? []) {
        if (!(member.key in value)) continue;
        let text = keep(value[member.key], member.type.replace(/^list of /, ""), structures);
        // The wire has objects around some texts.
        if (member.type === "list of texts") text = value[member.key].map(each => typeof each === "object" ? Object.values(each)[0] : each);
        kept[member.key] = text === "" && /guid$/i.test(member.key) ? identifier : text;
    }
    return kept;
}

// Calls a function with what the document shows of its body; other arguments get a value of their type.
const identifier = "0123456789abcdef0123456789abcdef";
function call(name, page, server) {
    let body = bodies.get(idOf(name)) ?? {};
    const words = ["call", name, "--json", "--server", server];
    // Operations that many functions share have an example of the answer for each.
    if (answers.has(idOf(name))) words.push("--header", `Prefer=example=${idOf(name)}`);
    if (page.bodyStructure) body = Object.values(body)[0];
    let input = "";
    const lists = Object.values(body).filter(Array.isArray);
    for (const argument of page.arguments.filter(each => each.input)) {
        const [, list, element] = argument.type.match(/^(?:std::)?(vector<|set<)?([\w:]+)/);
        const structure = page.structures.find(each => each.structure === element);
        let value = /string/.test(element) ? identifier : /bool/.test(element) ? true : 1000;
        if (structure && list) value = keep(lists.shift() ?? [{}], element, page.structures);
        else if (structure && !input) {
            // Not on the command line: it may hold secrets.
            input = JSON.stringify(keep(body, element, page.structures));
            words.push("--body", "-");
            continue;
        } else if (structure) value = keep(body, element, page.structures);
        else if (!argument.required) continue;
        else if (/file|path/i.test(argument.name) && value === identifier) value = __filename;
        else if (list) value = [value];
        words.push(`${argument.name}=${typeof value === "object" ? JSON.stringify(value) : value}`);
    }
    const run = spawnSync(nexwire, words, { input, encoding: "utf8", maxBuffer: 1 << 28 });
    const answer = run.stdout ? JSON.parse(run.stdout) : { outcome: run.stderr };
    return { ...answer, words };
}

// Texts and lists that an answer has by its schema, each with the member that it stands in. Where the result is a list,
// what stands in its elements stands in nothing.
function promised(schema, listed, names = new Set(), parent = "") {
    for (const part of schema.allOf ?? []) promised(part, listed, names, parent);
    for (const [key, member] of Object.entries(schema.properties ?? {})) {
        const own = key === "data" && !parent;
        if (!own && (member.type === "string" || member.type === "array")) names.add(`${parent}.${key}`);
        promised(member.items ?? member, listed, names, own || (listed && !parent) ? "" : key);
    }
    return names;
}

// Where a result holds nothing. Records of the video wall come back with what they were sent with, besides: of these
// only what the answer promises counts. The text of an error is empty as long as there is none.
function holes(value, only, listed, at = "") {
    const names = at.replace(/\[[0-9]*\]/g, "").split(".");
    const parent = listed && names.length === 3 ? "" : names.at(-2) ?? "";
    const counts = names.at(-1) !== "errorText" && (!only || only.has(`${parent}.${names.at(-1)}`));
    if (Array.isArray(value)) {
        if (!value.length) return counts || (listed && names.length === 2) ? [at] : [];
        return value.flatMap((each, i) => holes(each, only, listed, `${at}[${i}]`));
    }
    if (value && typeof value === "object")
        return Object.entries(value).flatMap(([name, each]) => holes(each, only, listed, `${at}.${name}`));
    return counts && (value === "" || value === null || value === undefined) ? [at] : [];
}

const freePort = () => new Promise(resolve => {
    const probe = net.createServer().listen(0, "127.0.0.1", () => {
        const { port } = probe.address();
        probe.close(() => resolve(port));
    });
});

(async () => {
    const work = fs.mkdtempSync(path.join(os.tmpdir(), "nexwire-mock-"));
    const file = path.join(work, "openapi.json");
    fs.writeFileSync(file, JSON.stringify(document));
    const port = await freePort();
    const server = spawn(process.execPath, [mock, "mock", "--host", "127.0.0.1", "--port", String(port), file]);
    let said = "";
    server.stdout.on("data", text => { said += text; });
    server.stderr.on("data", text => { said += text; });
    let failed = 0, called = 0;
    try {
        for (let waited = 0; !/listening on/.test(said); ++waited) {
            if (waited > 600 || server.exitCode !== null) throw new Error(`the mock server does not start: ${said}`);
            await new Promise(resolve => setTimeout(resolve, 100));
        }
        for (const item of Object.values(document.paths)) {
            for (const operation of Object.values(item)) {
                if (!operation.tags?.some(tag => modules.includes(tag))) continue;
                for (const name of operation["x-nexwire-functions"]) {
                    const page = json(["describe", name, "--json"]);
                    if (!modules.includes(page.module)) continue;
                    ++called;
                    const answer = call(name, page, `http://127.0.0.1:${port}`);
                    const only = page.videoWall ? promised(operation.responses["200"].content["application/json"].schema, page.resultIsList) : null;
                    const empty = holes(answer.result, only, page.resultIsList);
                    if (answer.outcome !== "done" || empty.length) {
                        ++failed;
                        console.error(`${name}: ${answer.outcome} ${answer.message ?? ""} ${empty.join(" ")}\n  ${answer.words.join(" ")}`);
                    }
                }
            }
        }
    } finally {
        server.kill();
        fs.rmSync(work, { recursive: true });
    }
    console.log(`${modules.join(", ")}: ${called} functions, ${failed} failed`);
    process.exitCode = failed || !called ? 1 : 0;
})().catch(error => {
    console.error(error);
    process.exitCode = 1;
});
