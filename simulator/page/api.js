// The platform's own paths: requests, and events as they happen.

const kBase = new URL(".", import.meta.url).pathname;

export const path = (...parts) => parts.map(encodeURIComponent).join("/");

async function request(method, where, body, signal) {
    let response;
    try {
        response = await fetch(kBase + where, {
            method, signal,
            headers: body === undefined ? {} : { "Content-Type": "application/json" },
            body: body === undefined ? undefined : typeof body === "string" ? body : JSON.stringify(body),
        });
    } catch (error) {
        throw error.name === "AbortError" ? error : new Error("The platform does not answer.");
    }
    if (!response.ok) {
        const told = await response.text();
        let text = `HTTP ${response.status}`;
        try {
            text = JSON.parse(told).error ?? text;
        } catch {
            // Not from the workbench; the status says enough.
        }
        throw Object.assign(new Error(text), { status: response.status });
    }
    return response;
}

async function json(method, where, body, signal) {
    const text = await (await request(method, where, body, signal)).text();
    return text === "" ? undefined : JSON.parse(text);
}

export const get = (where, signal) => json("GET", where, undefined, signal);
export const getText = async where => (await request("GET", where)).text();
export const put = (where, body) => json("PUT", where, body);
export const post = (where, body) => json("POST", where, body);
export const remove = where => json("DELETE", where);

export async function lines(where, signal) {
    const all = await (await request("GET", where, undefined, signal)).text();
    return all.split("\n").filter(line => line !== "").map(line => JSON.parse(line));
}

/**
 * Keeps an event stream open while the page is looked at: a browser has six connections for all pages of one server, and
 * those in the background would use them up. `hooks`: restarted(health) before the first connection and whenever another
 * run of the platform answers, catchUp() before every other one, after() the last exchange known, exchange(list),
 * lost(count), state(collection), jobs(), link(state).
 */
export function listen(hooks) {
    let started = null;
    let wait = 500;
    let timer = 0;
    let source = null;
    let attempts = 0; ///< Whoever finds another number has been overtaken.

    function stop() {
        ++attempts;
        clearTimeout(timer);
        source?.close();
        source = null;
    }

    async function connect() {
        stop();
        const mine = attempts;
        try {
            const health = await get("health");
            const now = Date.now() - health.uptimeMs;
            // Uptimes are measured to some milliseconds; no platform starts twice in two seconds.
            if (started === null || Math.abs(now - started) > 2000) {
                await hooks.restarted(health);
            } else {
                await hooks.catchUp();
            }
            started = now;
        } catch {
            if (mine === attempts) {
                retry();
            }
            return;
        }
        if (mine !== attempts) {
            return;
        }
        source = new EventSource(`${kBase}events?after=${hooks.after()}`);
        source.onopen = () => {
            wait = 500;
            hooks.link("live");
        };
        // The browser would repeat the same address, and with it what came since.
        source.onerror = retry;
        source.addEventListener("exchange", event => hooks.exchange(JSON.parse(event.data)));
        source.addEventListener("lost", event => hooks.lost(JSON.parse(event.data).count));
        source.addEventListener("state", event => hooks.state(JSON.parse(event.data).collection));
        source.addEventListener("jobs", () => hooks.jobs());
    }

    function retry() {
        stop();
        hooks.link("away");
        timer = setTimeout(connect, wait);
        wait = Math.min(wait * 1.5, 5000);
    }

    const look = () => document.hidden ? stop() : connect();
    document.addEventListener("visibilitychange", look);
    // A page that the browser keeps for "back" is not looked at either.
    addEventListener("pagehide", stop);
    addEventListener("pageshow", event => event.persisted && look());
    look();
}
