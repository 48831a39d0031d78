// browse-reference.cjs FOLDER BROWSER NEXWIRE: opens the reference that NEXWIRE writes in a browser, driven by the program in
// FOLDER/node_modules: search, arrow keys, every page, the width of a phone, and no scripts at all.
"use strict";
const { execFileSync } = require("node:child_process");
const { createRequire } = require("node:module");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const { pathToFileURL } = require("node:url");

const [folder, executablePath, nexwire] = process.argv.slice(2);
const puppeteer = createRequire(path.join(path.resolve(folder), "x.js"))("puppeteer-core");
let failed = 0;
function expect(good, what) {
    if (!good) {
        ++failed;
        console.error(`not so: ${what}`);
    }
}

(async () => {
    const work = fs.mkdtempSync(path.join(os.tmpdir(), "nexwire-reference-"));
    const file = path.join(work, "reference.html");
    execFileSync(nexwire, ["reference", "--html", file]);
    const address = pathToFileURL(file).href;
    const browser = await (puppeteer.launch ?? puppeteer.default.launch).call(puppeteer.default ?? puppeteer,
        { executablePath, headless: true, args: ["--no-sandbox"] });
    try {
        const page = await browser.newPage();
        page.on("pageerror", error => expect(false, `no error in scripts: ${error}`));
        await page.goto(address);
        const rows = () => page.$$eval("main a.row", all => all.map(row => row.getAttribute("href")));
        const search = async text => {
            await page.$eval("#search", field => { field.value = ""; });
            await page.type("#search", text);
        };

        // A member, a word of a comment, a value.
        for (const [text, name] of [["oddbeginbit", "CSetWiegand::request"], ["parity range", "CSetWiegand::request"],
            ["manufacturer code", "CSetWiegand::request"]]) {
            await search(text);
            expect((await rows()).includes("#" + encodeURIComponent(name)), `"${text}" finds ${name}`);
        }

        await search("wiegand");
        const found = await rows();
        for (const key of ["ArrowDown", "ArrowDown", "ArrowDown", "ArrowUp", "Enter"]) await page.keyboard.press(key);
        await page.waitForFunction(hash => location.hash === hash, { timeout: 5000 }, found[1])
            .catch(() => expect(false, "the arrows and Enter open the second row"));

        // Every page can be shown, and says what to include and how to call.
        const bad = await page.evaluate(() => {
            const names = [];
            for (const name of [...data.functions.map(f => f.name), ...Object.keys(data.structures), ...data.modules]) {
                try {
                    location.hash = link(name);
                    show();
                } catch (error) {
                    names.push(`${name}: ${error}`);
                }
                if (byName.has(name) && !/#include <nexwire\/[^>]+>[^]*Example[^]*nexwire::/.test(main.textContent)) names.push(name);
            }
            return names;
        });
        expect(bad.length === 0, `every page shows: ${bad.join("; ")}`);

        // On a phone nothing runs over the edge, and from a function one gets to its module and to all modules.
        await page.setViewport({ width: 375, height: 740, isMobile: true, hasTouch: true });
        for (const hash of ["", "#CSetWiegand%3A%3Arequest", "#AccessController"]) {
            await page.goto("about:blank");
            await page.goto(address + hash);
            const width = await page.evaluate(() => document.documentElement.scrollWidth);
            expect(width <= 375, `${hash || "the first page"} fits a phone: ${width}`);
        }
        expect((await rows()).length > 10 && await page.$('main a[href="#"]'), "a module has its functions and a way back");
        await page.goto(address);
        expect(await page.$eval("nav summary", summary => summary.getBoundingClientRect().height > 0), "modules on a phone");

        const plain = await browser.newPage();
        await plain.setJavaScriptEnabled(false);
        await plain.goto(address);
        const text = await plain.evaluate(() => document.body.innerText).catch(() => "");
        const still = text || fs.readFileSync(file, "utf8").split("<script")[0];
        for (const word of ["CSetWiegand::request", "nexwire/AccessController/Wiegand.h", "oddBeginBit"])
            expect(still.includes(word), `${word} without scripts`);
    } finally {
        await browser.close();
        fs.rmSync(work, { recursive: true });
    }
    process.exitCode = failed ? 1 : 0;
})().catch(error => {
    console.error(error);
    process.exitCode = 1;
});
