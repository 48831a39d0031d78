// Chromium without a window, driven over its debugging pipe: real clicks and keys, nothing to install beside it.

import { spawn } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import path from "node:path";

const kPatience = 15000; ///< ms until something that should happen counts as missing.

const kKeys = {
    Enter: { code: "Enter", keyCode: 13, text: "\r" },
    Escape: { code: "Escape", keyCode: 27 },
    Tab: { code: "Tab", keyCode: 9 },
    ArrowUp: { code: "ArrowUp", keyCode: 38 },
    ArrowDown: { code: "ArrowDown", keyCode: 40 },
    ArrowLeft: { code: "ArrowLeft", keyCode: 37 },
    ArrowRight: { code: "ArrowRight", keyCode: 39 },
    Home: { code: "Home", keyCode: 36 },
    End: { code: "End", keyCode: 35 },
    Backspace: { code: "Backspace", keyCode: 8 },
};

export class Browser {
    #process;
    #folder = mkdtempSync(path.join(tmpdir(), "nexwire-page-"));
    #last = 0;
    #asked = new Map();
    #rest = "";
    #hear = () => {};

    constructor(executable) {
        const options = ["--headless=new", "--remote-debugging-pipe", `--user-data-dir=${this.#folder}`, "--no-first-run",
            "--disable-gpu", "--disable-background-networking", "--disable-component-update", "--disable-extensions",
            "--hide-scrollbars", "--force-device-scale-factor=1", "--disable-dev-shm-usage"];
        if (process.getuid?.() === 0) {
            options.push("--no-sandbox"); // Root has no sandbox to be in.
        }
        this.#process = spawn(executable, options, { stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"] });
        this.#process.stdio[4].setEncoding("utf8").on("data", data => {
            const messages = (this.#rest + data).split("\0");
            this.#rest = messages.pop();
            messages.forEach(text => this.#take(JSON.parse(text)));
        });
        this.#process.on("exit", code => {
            this.#asked.forEach(({ reject }) => reject(new Error(`the browser ended (${code})`)));
            this.#asked.clear();
        });
        this.#process.on("error", error => this.#asked.forEach(({ reject }) => reject(error)));
    }

    #take(message) {
        const asked = this.#asked.get(message.id);
        if (asked) {
            this.#asked.delete(message.id);
            message.error ? asked.reject(new Error(message.error.message)) : asked.resolve(message.result);
        } else if (message.method) {
            this.#hear(message);
        }
    }

    ask(method, params = {}, sessionId = undefined) {
        return new Promise((resolve, reject) => {
            const id = ++this.#last;
            this.#asked.set(id, { resolve, reject });
            this.#process.stdio[3].write(`${JSON.stringify({ id, method, params, sessionId })}\0`);
        });
    }

    async page() {
        const { targetId } = await this.ask("Target.createTarget", { url: "about:blank" });
        const { sessionId } = await this.ask("Target.attachToTarget", { targetId, flatten: true });
        const page = new Page((method, params) => this.ask(method, params, sessionId));
        this.#hear = message => message.sessionId === sessionId && page.heard(message);
        await Promise.all(["Page", "Runtime", "Log", "Network"].map(domain => page.ask(`${domain}.enable`)));
        return page;
    }

    async close() {
        const ended = new Promise(resolve => this.#process.once("exit", resolve));
        this.ask("Browser.close").catch(() => {});
        const timer = setTimeout(() => this.#process.kill("SIGKILL"), 3000);
        await ended;
        clearTimeout(timer);
        rmSync(this.#folder, { recursive: true, force: true, maxRetries: 5 });
    }
}

class Page {
    errors = []; ///< What the page reported: exceptions, refused sources, failed requests.
    outside = []; ///< Addresses it asked for that are not the platform's.
    host = "";

    constructor(ask) {
        this.ask = ask;
    }

    heard({ method, params }) {
        if (method === "Runtime.exceptionThrown") {
            this.errors.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
        } else if (method === "Log.entryAdded" && params.entry.level === "error") {
            this.errors.push(`${params.entry.text} ${params.entry.url ?? ""}`);
        } else if (method === "Network.requestWillBeSent") {
            const url = new URL(params.request.url);
            if (this.host !== "" && url.protocol !== "data:" && url.host !== this.host) {
                this.outside.push(url.href);
            }
        }
    }

    async goto(url) {
        this.host = new URL(url).host;
        // Another fragment alone loads nothing.
        await this.ask("Page.navigate", { url: "about:blank" });
        await this.ask("Page.navigate", { url });
        await this.waitFor(() => document.readyState === "complete" && location.href !== "about:blank");
    }

    /** Runs a function in the page. */
    async run(what, ...values) {
        const expression = `(${what})(${values.map(value => JSON.stringify(value)).join(", ")})`;
        const { result, exceptionDetails } =
            await this.ask("Runtime.evaluate", { expression, awaitPromise: true, returnByValue: true, userGesture: true });
        if (exceptionDetails) {
            throw new Error(`${exceptionDetails.exception?.description ?? exceptionDetails.text}\n  in ${expression}`);
        }
        return result.value;
    }

    /** Until the function returns something that counts as true; returns that. */
    async waitFor(what, ...values) {
        const end = Date.now() + kPatience;
        let last;
        do {
            try {
                last = await this.run(what, ...values);
                if (last) {
                    return last;
                }
            } catch (error) {
                last = error.message; // The page may be on its way from one document to the next.
            }
            await new Promise(resolve => setTimeout(resolve, 30));
        } while (Date.now() < end);
        throw new Error(`did not happen: ${what} ${JSON.stringify(values)}; last: ${last}`);
    }

    text = selector => this.run(each => document.querySelector(each)?.textContent, selector);

    /** With the mouse, in the middle of what the selector finds; it must be what is on top there. */
    async click(selector) {
        const at = await this.waitFor(each => {
            const element = document.querySelector(each);
            element?.scrollIntoView({ block: "nearest" });
            const box = element?.getBoundingClientRect();
            if (!box || box.width === 0) {
                return null;
            }
            const [x, y] = [box.x + box.width / 2, box.y + box.height / 2];
            const top = document.elementFromPoint(x, y);
            return top && (element.contains(top) || top.contains(element)) ? { x, y } : null;
        }, selector);
        for (const type of ["mouseMoved", "mousePressed", "mouseReleased"]) {
            await this.ask("Input.dispatchMouseEvent", { type, ...at, button: "left", clickCount: 1, buttons: type === "mousePressed" ? 1 : 0 });
        }
    }

    async press(key, modifiers = 0) {
        const known = kKeys[key] ?? { code: `Key${key.toUpperCase()}`, keyCode: key.toUpperCase().charCodeAt(0), text: key };
        const event = { key, code: known.code, windowsVirtualKeyCode: known.keyCode, modifiers, text: modifiers ? undefined : known.text };
        await this.ask("Input.dispatchKeyEvent", { type: event.text ? "keyDown" : "rawKeyDown", ...event });
        await this.ask("Input.dispatchKeyEvent", { type: "keyUp", ...event, text: undefined });
    }

    type = text => this.ask("Input.insertText", { text });

    /** Empties the field and types. */
    async enter(selector, text) {
        await this.click(selector);
        await this.run(each => document.querySelector(each).select(), selector);
        await (text === "" ? this.press("Backspace") : this.type(text));
    }

    size = (width, height) => this.ask("Emulation.setDeviceMetricsOverride", { width, height, deviceScaleFactor: 1, mobile: false });

    scheme = value => this.ask("Emulation.setEmulatedMedia", { features: [{ name: "prefers-color-scheme", value }] });

    async picture(file) {
        const { data } = await this.ask("Page.captureScreenshot", { format: "png" });
        writeFileSync(file, Buffer.from(data, "base64"));
    }
}
