// page.mjs NEXWIRE CHROMIUM [TEXT]: clicks through the page of a local platform, in a Chromium without a window; with TEXT
// only the tests that have it in their names. page.mjs NEXWIRE CHROMIUM --picture FILE makes the picture for the README
// (pngquant makes it small).

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import path from "node:path";

import { Browser } from "./browser.mjs";
import { Platform } from "./platform.mjs";

const [nexwire, chromium, only = "", picture] = process.argv.slice(2);
const platform = new Platform(path.resolve(nexwire));
await platform.start();
const browser = new Browser(chromium);
const page = await browser.page();
await browser.ask("Browser.grantPermissions", { permissions: ["clipboardReadWrite", "clipboardSanitizedWrite"] });

const kRows = "#list .row:not(.head):not([hidden])";
const kViews = ["exchanges", "state", "devices", "jobs", "faults", "expectations"];
const kController = "AC000000000000000000000000000001";

// ---- What the tests share ----

const rowWith = (...texts) => page.waitFor((rows, wanted) => [...document.querySelectorAll(rows)]
    .map(row => [...row.children].map(cell => cell.textContent).join(" | ")).find(row => wanted.every(text => row.includes(text))),
kRows, texts);
const onlyRows = (column, text) => page.waitFor((rows, cell, wanted) => {
    const texts = [...document.querySelectorAll(rows)].map(row => row.children[cell].textContent);
    return texts.length > 0 && texts.every(each => each === wanted);
}, kRows, column, text);
const openRow = async (...texts) => {
    await rowWith(...texts);
    // The last of them: older ones may be from tests before.
    const id = await page.run((rows, wanted) => [...document.querySelectorAll(rows)]
        .filter(row => wanted.every(text => row.textContent.includes(text))).sort((a, b) => a.index - b.index).at(-1).id, kRows, texts);
    await page.click(`#${id}`);
};
const detailHas = text => page.waitFor(wanted => document.querySelector("#detail").textContent.includes(wanted), text);
async function count(wanted) {
    const counted = () => page.text("#list-count");
    await page.waitFor(text => document.querySelector("#list-count").textContent.startsWith(text), wanted)
        .catch(async () => assert.fail(`"${await counted()}" in place of "${wanted}"`));
}
const shows = view => page.waitFor(each => !document.querySelector(`#view-${each}`).hidden, view);

async function fresh(fragment = "") {
    await page.goto(platform.page + fragment);
    await page.waitFor(() => document.querySelector("#link-state").dataset.state === "live");
}

async function addGroup(name, ...rest) {
    return platform.call("addAccessGroup", `accessGroupAddParam=${JSON.stringify({ name })}`, ...rest);
}

/** A group with persons on two devices, which are told: {guid}. */
async function download() {
    const persons = [1, 2, 3].map(n => ({ personnelGuid: `9E${String(n).padStart(30, "0")}`, personnelNo: String(n), personnelName: `Person ${n}` }));
    const { text } = await platform.send("GET", "/_workbench/devices");
    const device = JSON.parse(text).find(each => each.guid === kController);
    const door = device.sources.find(each => each.kind === "door");
    const objects = [{ deviceGuid: device.guid, objectGuid: door.guid, objectName: door.name, objectNo: 1, objectType: 1 }];
    const added = await platform.call("addAccessGroup", `accessGroupAddParam=${JSON.stringify(
        { name: "Late shift", personnelAddList: persons, objectAddList: objects })}`);
    assert.equal(added.code, 0, added.err);
    const guid = /[0-9A-F]{32}/.exec(added.out)[0];
    const ordered = await platform.call("downloadAccessGroups", `groupGuids=["${guid}"]`, "deleteGroup=false", "downloadMode=0");
    assert.equal(ordered.code, 0, ordered.err);
    return guid;
}

/** Contrast of texts with what is behind them, below 4.5 only. */
const faintTexts = () => page.run(() => {
    const parts = text => text.match(/[\d.]+/g).map(Number);
    const light = ([r, g, b]) => [r, g, b].map(v => v / 255).map(v => v <= 0.03928 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4)
        .reduce((sum, v, i) => sum + v * [0.2126, 0.7152, 0.0722][i], 0);
    const behind = element => {
        for (let at = element; at; at = at.parentElement) {
            const color = parts(getComputedStyle(at).backgroundColor);
            if (color.length === 3 || color[3] > 0.5) {
                return color;
            }
        }
        return [255, 255, 255];
    };
    const faint = new Set();
    for (const element of document.querySelectorAll("body *")) {
        const own = [...element.childNodes].some(node => node.nodeType === Node.TEXT_NODE && node.data.trim() !== "");
        if (own && element.checkVisibility({ opacityProperty: true }) && !element.closest("option, :disabled")) {
            const [a, b] = [light(parts(getComputedStyle(element).color)), light(behind(element))];
            const contrast = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
            if (contrast < 4.5) {
                faint.add(`${element.tagName}.${element.className} ${contrast.toFixed(1)}`);
            }
        }
    }
    return [...faint];
});

/** What can be operated and has no name for those who do not see it. */
async function nameless() {
    const { nodes } = await page.ask("Accessibility.getFullAXTree");
    const kOperated = ["button", "textbox", "searchbox", "combobox", "checkbox", "switch", "spinbutton", "link", "listbox", "grid", "tree", "dialog", "progressbar"];
    return nodes.filter(node => !node.ignored && kOperated.includes(node.role?.value) && !node.name?.value)
        .map(node => `${node.role.value} ${JSON.stringify(node.properties ?? [])}`);
}

// ---- The tests ----

const tests = {
    async "exchanges appear as they happen, with what came of them"() {
        await fresh();
        assert.equal((await addGroup("Night shift")).code, 0);
        assert.match(await rowWith("CAccessGroupComm::addAccessGroup", "0-0"), /\| PUT \| .*\/accessGroups \| 0-0 \| ok \|/);
        assert.notEqual((await addGroup("Night shift")).code, 0);
        await rowWith("CAccessGroupComm::addAccessGroup", "refused");
    },

    async "an exchange is opened by key, folds, is copied, and has an address"() {
        await fresh();
        await rowWith("refused");
        await page.press("End");
        await page.press("k");
        await page.press("Enter");
        await detailHas('"Night shift"');
        const hash = await page.run(() => location.hash);
        assert.match(hash, /^#exchange=\d+$/);
        await page.press("Tab"); // From the article to its first button, and on to the tree by hand.
        await page.run(() => document.querySelector("#detail .tree li").focus());
        await page.press("ArrowLeft");
        assert.equal(await page.run(() => document.querySelector("#detail .tree li").getAttribute("aria-expanded")), "false");
        await page.press("ArrowRight");
        await page.press("ArrowDown");
        assert.match(await page.run(() => document.activeElement.textContent), /^accessGroupAddParam/);

        // The line that is copied does the same again.
        await page.click('#detail [data-line="call"]');
        await page.waitFor(() => document.querySelector("#toasts").textContent.includes("copied"));
        const line = await page.run(() => navigator.clipboard.readText());
        assert.match(line, /^nexwire call /);
        const env = { ...process.env, PATH: `${path.dirname(platform.nexwire)}:${process.env.PATH}` };
        assert.throws(() => execFileSync("sh", ["-c", line], { env, stdio: "pipe" }), error => error.status === 4 && /refused|taken|exists|in use/i.test(error.stderr));

        await fresh(hash);
        await detailHas('"Night shift"');
        await page.press("Escape");
        assert.equal(await page.run(() => document.querySelector("#detail").hidden), true);
        await fresh("#exchange=999999");
        await detailHas("no longer kept");
    },

    async "texts for devices are opened up"() {
        await fresh();
        const called = await platform.call("AcsParamConfig::getAcsDoorParamRequest", `deviceGuid=${kController}`, "doorNo=1");
        assert.equal(called.code, 0, called.err);
        await openRow("AcsParamConfig::getAcsDoorParamRequest");
        await detailHas("Text for the device");
        await detailHas("2102");
        await detailHas("openDuration");
    },

    async "filters narrow by function, outcome, and text in bodies"() {
        await fresh();
        await addGroup("Zebra crossing");
        assert.notEqual((await addGroup("Zebra crossing")).code, 0);
        await rowWith("CAccessGroupComm::addAccessGroup", "refused");
        await page.press("/");
        await page.type("zebra CROSSING"); // Stands in bodies only.
        await count("2 of ");
        await page.enter("#filter-text", "");
        await page.enter("#filter-function", "accessgroupcomm::add");
        await onlyRows(3, "CAccessGroupComm::addAccessGroup");
        await page.enter("#filter-function", "");
        await page.click('#filter-outcome [data-outcome="refused"]');
        await onlyRows(6, "refused");
        await page.click('#filter-outcome [data-outcome="refused"]');
    },

    async "secrets are shown when asked for, and only then"() {
        await platform.send("PUT", "/7730/v1/accessController/accessGroups",
            JSON.stringify({ accessGroupAddParam: { name: "x", password: "hunter-two" } }), { Authorization: "Bearer top-secret" });
        await fresh();
        await openRow("addAccessGroup", "3-9");
        await detailHas("password");
        await page.run(() => document.querySelectorAll("#detail details").forEach(each => each.open = true));
        const leak = () => page.run(() => ["hunter-two", "top-secret"].filter(each => document.documentElement.outerHTML.includes(each)));
        assert.deepEqual(await leak(), []);
        await page.press("s");
        await detailHas("hunter-two");
        await detailHas("top-secret");
        await page.press("s");
        await page.waitFor(() => document.querySelector("#secrets")?.getAttribute("aria-pressed") === "false" &&
            document.querySelector("#detail .tree") && !document.documentElement.outerHTML.includes("hunter-two"));
        assert.deepEqual(await leak(), []);
    },

    async "documents are edited, and the platform answers with them"() {
        await fresh("#state=accessGroups");
        await page.click("#documents .row:not([hidden])");
        await page.waitFor(() => document.querySelector("#editor-text").value.includes("Night shift"));
        await page.run(() => {
            const area = document.querySelector("#editor-text");
            area.focus();
            area.setSelectionRange(area.value.indexOf("Night shift"), area.value.indexOf("Night shift") + 11);
        });
        await page.type('Day" shift');
        await page.waitFor(() => /line \d+, column \d+/.test(document.querySelector("#editor-message").textContent));
        assert.equal(await page.run(() => document.querySelector("#editor-save").disabled), true);
        await page.run(() => {
            const area = document.querySelector("#editor-text");
            area.setSelectionRange(area.value.indexOf('Day" shift'), area.value.indexOf('Day" shift') + 10);
        });
        await page.type("Sunday shift");
        await page.press("s", 2);
        await page.waitFor(() => document.querySelector("#editor-message").textContent === "Saved");
        assert.match((await platform.call("queryAccessGroups")).out, /"Sunday shift"/);

        // Somebody else changes it while it is being edited.
        await page.click("#editor-text");
        await page.type(" ");
        const key = await page.run(() => document.querySelector("#editor-key").value);
        const renamed = await platform.call("modifyAccessGroupName", `groupGuid=${key}`, "name=Other shift");
        assert.equal(renamed.code, 0, renamed.err);
        await page.click("#editor-load");
        await page.waitFor(() => document.querySelector("#editor-text").value.includes("Other shift"));

        await page.click("#editor-delete");
        await page.click("#confirm-yes");
        await page.waitFor(() => document.querySelector("#editor").classList.contains("none"));
        assert.doesNotMatch((await platform.call("queryAccessGroups")).out, /Other shift/);
    },

    async "a device is switched off, and an alarm provoked"() {
        await fresh("#devices");
        await page.click(`[id="offline-${kController}"]`);
        await page.waitFor(guid => document.querySelector(`[data-guid="${guid}"] .dot`).dataset.online === "false", kController);
        const unreachable = await platform.call("AcsParamConfig::getAcsDoorParamRequest", `deviceGuid=${kController}`, "doorNo=1");
        assert.notEqual(unreachable.code, 0);
        await page.click(`[id="offline-${kController}"]`);
        await page.waitFor(guid => document.querySelector(`[data-guid="${guid}"] .dot`).dataset.online === "true", kController);

        const alarms = async () => JSON.parse((await platform.call("CGetAlarmLogs::request", "condition={}", "--compact")).out);
        const before = JSON.stringify(await alarms());
        await page.click(`[id="alarms-${kController}"]`);
        await page.click(`[data-guid="${kController}"] .sources button`);
        await page.waitFor(() => document.querySelector("#toasts").textContent.includes("Alarm at"));
        assert.ok(JSON.stringify(await alarms()).length > before.length);
    },

    async "jobs move, and the clock brings them to their end"() {
        await fresh("#jobs");
        await download();
        await page.waitFor(() => document.querySelector("#job-list progress")?.value < 100);
        await page.click("#clock-button");
        await page.click('#clock-steps [data-ms="60000"]');
        await page.waitFor(() => [...document.querySelectorAll("#job-list progress")].every(bar => bar.value === 100));
        await page.press("Escape");
    },

    async "a fault that is switched on is met by a client"() {
        await fresh("#faults");
        await page.click("#fault-new");
        await page.enter("[name=name]", "busy");
        await page.enter("[name=function]", "CAccessGroupComm::query*");
        await page.run(() => {
            const select = document.querySelector("[name=fault]");
            select.value = "status";
            select.dispatchEvent(new Event("change", { bubbles: true }));
        });
        await page.enter("[name=status]", "503");
        await page.press("Enter");
        await page.waitFor(() => document.querySelector('[data-name="busy"]'));
        const struck = await platform.call("queryAccessGroups");
        assert.notEqual(struck.code, 0);
        assert.match(struck.err, /503/);
        await page.waitFor(() => document.querySelector('[data-name="busy"] .number').textContent === "1");
        await page.click('[data-name="busy"] .switch');
        await page.waitFor(() => document.querySelector("#faults-badge").hidden);
        assert.equal((await platform.call("queryAccessGroups")).code, 0);
        await page.click('[data-name="busy"] .number a');
        await rowWith("CAccessGroupComm::queryAccessGroups", "fault");
        await page.press("5");
        await page.click('[data-name="busy"] .danger');
        await page.waitFor(() => document.querySelector("#fault-list .blank"));
    },

    async "expectations say what was not met, and what came nearest"() {
        await platform.own("POST", "expectations", { function: "CAccessGroupComm::addAccessGroup", times: 1, body: { accessGroupAddParam: { name: "Expected" } } });
        await fresh("#expectations");
        await addGroup("Unexpected");
        await page.waitFor(() => document.querySelector("#expectation-list a")?.hash.startsWith("#exchange="));
        assert.equal(await page.text("#expectations-verdict"), "1 not met");
        await addGroup("Expected");
        await page.waitFor(() => document.querySelector("#expectations-verdict").textContent === "all met");
    },

    async "pause holds the list, and going on brings what came"() {
        await fresh();
        const before = await page.text("#list-count");
        await page.press("p");
        await platform.flood(5);
        await page.waitFor(() => document.querySelector("#pause").textContent.includes("5"));
        assert.equal(await page.text("#list-count"), before);
        await page.press("p");
        await page.waitFor(old => document.querySelector("#list-count").textContent !== old, before);
    },

    async "10,000 exchanges stay light, and keys are answered while more come"() {
        await fresh();
        await platform.flood(10500);
        await count("10,000 exchanges");
        assert.ok(await page.run(() => document.querySelectorAll("#list *").length) < 2000);
        await page.run(() => {
            globalThis.slowest = 0;
            new PerformanceObserver(list => list.getEntries().forEach(each => globalThis.slowest = Math.max(globalThis.slowest, each.duration)))
                .observe({ type: "event", durationThreshold: 16 });
        });
        // What a key costs the page is measured in processor time: a machine that has other work answers later, but that is
        // not the page's doing.
        await page.ask("Performance.enable", { timeDomain: "threadTicks" });
        const busy = async () => (await page.ask("Performance.getMetrics")).metrics.find(each => each.name === "TaskDuration").value * 1000;
        const costs = [];
        const press = async key => {
            const before = await busy();
            await page.press(key);
            await page.run(() => new Promise(resolve => requestAnimationFrame(() => setTimeout(resolve))));
            costs.push(await busy() - before);
        };
        const keys = [..."kkkkkkkkkkjjjjj", "Home", "End", ..."kkkkk", "Escape", "/", ..."accessgr"];
        await page.press("End");
        await page.press("Enter"); // With the details open, every step loads an exchange, too.
        for (const key of keys) {
            await press(key);
        }
        const quiet = await page.run(() => globalThis.slowest);
        await page.enter("#filter-text", "");
        await page.press("Escape");

        const before = await busy();
        const flood = platform.flood(3000);
        for (const key of keys) {
            await page.press(key);
        }
        await flood;
        const ingested = await busy() - before;
        const slowest = await page.run(() => globalThis.slowest);
        await page.ask("HeapProfiler.collectGarbage");
        const { usedSize } = await page.ask("Runtime.getHeapUsage");
        const dearest = Math.max(...costs);
        console.log(`    ${costs.length} keys, at most ${dearest.toFixed(1)} ms of the processor each, answered within ${quiet} ms, ` +
            `while 3,000 exchanges came ${slowest} ms; those cost ${ingested.toFixed(0)} ms; heap ${(usedSize / 1e6).toFixed(1)} MB`);
        assert.ok(dearest <= 80, `a key cost ${dearest} ms`);
        assert.ok(ingested <= 3000, `3,000 exchanges and the keys cost ${ingested} ms`);
        assert.ok(usedSize < 40e6, `the heap has ${usedSize} bytes`);
        await page.enter("#filter-text", "");
    },

    async "views are reached by key and by link, in light and dark, and everything has a name"() {
        for (const scheme of ["light", "dark"]) {
            await page.scheme(scheme);
            await fresh();
            const background = await page.run(() => getComputedStyle(document.querySelector("header")).backgroundColor);
            assert.equal(Number(/\d+/.exec(background)[0]) > 128, scheme === "light", background);
            await page.press("Home");
            await page.press("Enter");
            await detailHas("Request");
            for (const [index, view] of kViews.entries()) {
                await page.press(String(index + 1));
                await shows(view);
                assert.deepEqual(await faintTexts(), [], `${view}, ${scheme}`);
                assert.deepEqual(await nameless(), [], view);
            }
        }
        await page.click("#theme-button"); // Light, whatever the system says.
        assert.equal(await page.run(() => getComputedStyle(document.documentElement).colorScheme), "light");
        await page.press("?");
        await page.waitFor(() => document.querySelector("#help-dialog").open);
        await page.press("Escape");
        await page.waitFor(() => !document.querySelector("#help-dialog").open);
        await page.run(() => localStorage.clear());
    },

    async "nothing is cut off in a narrow window"() {
        await page.size(390, 800);
        await fresh();
        for (const view of kViews) {
            await page.click(`nav a[data-view="${view}"]`);
            await shows(view);
            assert.ok(await page.run(() => document.documentElement.scrollWidth <= innerWidth), view);
        }
        await page.click('nav a[data-view="exchanges"]');
        await shows("exchanges");
        await page.press("End");
        await page.click(`${kRows}[aria-selected="true"]`);
        await detailHas("Request");
        assert.equal(await page.run(() => document.querySelector(".list-pane").checkVisibility()), false);
        await page.click('#detail [aria-label="Close"]');
        await page.waitFor(() => document.querySelector(".list-pane").checkVisibility());
        await page.size(1280, 800);
    },

    async "reset asks first, and brings the first day back"() {
        await fresh("#state");
        await page.click("#reset");
        await page.click("#confirm-no");
        assert.match((await platform.call("queryAccessGroups")).out, /"Expected"/);
        await page.click("#reset");
        await page.click("#confirm-yes");
        await page.waitFor(() => document.querySelector("#toasts").textContent.includes("first day"));
        assert.doesNotMatch((await platform.call("queryAccessGroups")).out, /"Expected"/);
    },

    async "nothing went wrong in the page, and nothing came from outside"() {
        // That one exchange is not kept is asked for above.
        assert.deepEqual(page.errors.filter(each => !each.includes("exchanges/999999")), []);
        assert.deepEqual(page.outside, []);
    },

    async "a platform that comes back is found again"() {
        await fresh();
        await platform.stop();
        await page.waitFor(() => document.querySelector("#link-state").dataset.state === "away");
        await platform.start();
        await page.waitFor(() => document.querySelector("#link-state").dataset.state === "live");
        await addGroup("After the break");
        await count("1 exchange");
        await rowWith("CAccessGroupComm::addAccessGroup", "ok");
    },
};

// ---- A picture for those who read about it ----

async function draw() {
    await page.size(1240, 660);
    await page.scheme("light");
    await fresh();
    const read = (name, ...values) => platform.call(name, ...values);
    const onDevice = `deviceGuid=${kController}`;
    await read("CGetAllDevicesInfo::request", "--body", "/dev/null");
    await download();
    await read("queryAccessGroups");
    await addGroup("Night shift");
    await addGroup("Night shift");
    await read("CGetWiegands::request");
    await platform.own("POST", "faults", { name: "busy", function: "CAccessGroupComm::query*", fault: "status", status: 503, times: 1 });
    await read("queryAccessGroups");
    await read("queryAccessGroups");
    await read("AcsParamConfig::getAcsDoorParamRequest", onDevice, "doorNo=1");
    await read("CGetAlarmLogs::request", 'condition={"pageNo": 1, "pageSize": 20}');
    await read("CGetSingleDevicesComm::request", onDevice);
    await read("AcsDeviceStateConfig::getAcsDeviceStateRequest", onDevice);
    await read("GetOrganizationComm::request", "condition={}");
    await addGroup("Sunday shift");
    await read("queryAccessGroups");
    await openRow("getAcsDoorParamRequest");
    await detailHas("openDuration");
    await page.run(() => {
        document.querySelectorAll("#detail details")[0].open = false;
        document.querySelectorAll("#detail details")[1].open = false;
    });
    await new Promise(resolve => setTimeout(resolve, 2500));
    await page.picture(picture);
}

let failed = 0;
try {
    await page.size(1280, 800);
    if (picture) {
        await draw();
    } else {
        for (const [name, run] of Object.entries(tests).filter(([each]) => new RegExp(only).test(each))) {
            try {
                await run();
                console.log(`ok  ${name}`);
            } catch (error) {
                ++failed;
                console.log(`FAILED  ${name}\n${error.stack}`);
            }
        }
    }
} finally {
    await browser.close();
    await platform.stop();
}
process.exitCode = failed > 0 ? 1 : 0;
